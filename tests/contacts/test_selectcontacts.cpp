#include "assessments/Candidates.h"
#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/manager/frmSelectContacts.h"
#include "courses/events/EventPeople.h"
#include "courses/record/CoursePeople.h"
#include "support/RightsTable.h"
#include "support/TestTable.h"

#include <QAction>

using Mode = frmSelectContacts::Mode;
using StoreOf = PeopleStore (*)();

namespace
{
const QString leftOut = "Another user has deleted these meanwhile, and they are left out:\n    ";

QStringList RowsOf(const ListModel &list)
{
    QStringList rows;
    for (int row = 0; row < list.Count(); ++row)
        rows.append((QStringList(list.At(row).text) + list.At(row).subItems).join('|'));
    return rows;
}

/// The people of those keys join the selected ones.
void Pick(QWidget &form, const QStringList &keys)
{
    List(form, "ContactList").SelectKeys(keys);
    Press(form, "AddCBtn");
}

QString Enrolled()
{
    return TestDatabase::Rows("SELECT ContactRef FROM StudentsEnrolled WHERE CourseRef = 1 ORDER BY "
                              "ContactRef")
        .join(' ');
}

} // namespace

class TestSelectContacts final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }

    void PickingPeople();
    void NewAndViewedContacts();
    void SubsetsAndRefresh();
    void HandsOver_data();
    void HandsOver();
    void JoinsTheBranchesOfATree();
    void FollowsWhatOthersStore_data();
    void FollowsWhatOthersStore();
    void EnrolsAndRemoves();
    void StudentsAreNeverDroppedUnseen();

private:
    std::unique_ptr<ContactFixture> m;
    ListModel m_target;
};

/// The people get the references 2 to 5, after the sentinel: Dora lives in a town that is gone.
void TestSelectContacts::init()
{
    m = std::make_unique<ContactFixture>();
    m_target.Clear();
    const auto person = [](const QString &surname, const QString &forename, int city) {
        ContactRecord record = Person(forename, surname);
        record.city = city;
        record.postcode = "PO1";
        Contact_Add(record);
    };
    const int leeds = Contact_AddItem(ContactSection::Cities, "Leeds", "");
    person("Adams", "Ann", leeds);
    person("O'Neil", "Ben", 1);
    person("Smith", "Carl", leeds);
    person("Smythe", "Dora", 99);
    Concession_Add("Pensioner", 10, 0, "");
    Sql("INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (4,1)");
    Sql("INSERT INTO Courses (Title,Description,Fee,Limit,ReferenceID) VALUES ('Welding','',100,2,'')");
}

void TestSelectContacts::PickingPeople()
{
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    ListModel &available = List(form, "ContactList");
    ListModel &selected = List(form, "SelectedList");
    QCOMPARE(Texts(available), QStringList({"Adams, Ann", "O'Neil, Ben", "Smith, Carl", "Smythe, Dora"}));
    for (const char *name : {"AddCBtn", "RemCBtn", "ClearCBtn"})
        QVERIFY2(!Find<QPushButton>(form, name)->isEnabled(), name);

    Pick(form, {"?4", "?3"});
    QCOMPARE(RowsOf(selected),
             QStringList({"O'Neil, Ben|1 Mill Lane||PO1", "Smith, Carl|1 Mill Lane|Leeds|PO1"}));
    QVERIFY(available.SelectedRows().empty());
    Pick(form, {"?4"});
    QCOMPARE(selected.Count(), 2);

    // Somebody else deletes two of them meanwhile: one picked already, one about to be.
    Sql("DELETE FROM Contacts WHERE ContactRef IN (2, 4)");
    Pick(form, {"?2", "?4"});
    QCOMPARE(Keys(available), QStringList({"?3", "?5"}));
    QCOMPARE(Keys(selected), QStringList("?3"));

    // A read that fails is asked about once, and takes nobody away.
    Sql("ALTER TABLE Contacts RENAME TO Away");
    available.SelectAll();
    m->dialogs.Expect(FailureTitle(), engineFailure);
    Press(form, "AddCBtn");
    Sql("ALTER TABLE Away RENAME TO Contacts");
    QCOMPARE(available.SelectedRows().size(), size_t(2));
    QCOMPARE(Keys(selected), QStringList("?3"));
    selected.SelectAll();
    Press(form, "RemCBtn");
    QVERIFY(selected.IsEmpty());
}

/// A new person is chosen in the list, and shown like any row that was chosen last.
void TestSelectContacts::NewAndViewedContacts()
{
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    QVERIFY(!Find<QPushButton>(form, "ViewBtn")->isEnabled());
    m->driver.Expect("frmAddContact", [](QDialog &record) {
        TypeName(record, "Eve", "Brown");
        Press(record, "OKBtn");
        Press(record, "ExitBtn");
    });
    Press(form, "AddBtn");
    QCOMPARE(gDialogResult, 0);
    m->driver.Expect("frmAddContact", [](QDialog &record) {
        QCOMPARE(Find<QLineEdit>(record, "Surname")->text(), "Brown");
        Press(record, "ExitBtn");
    });
    Press(form, "AddCBtn");
    Press(form, "ViewBtn");
    QVERIFY(form.isVisible());

    gUserRights = RightsWith(23, 1);
    frmSelectContacts reader;
    QVERIFY(!Find<QPushButton>(reader, "AddBtn")->isEnabled());
    QVERIFY(!Find<QAction>(reader, "ID_New")->isEnabled());
}

void TestSelectContacts::SubsetsAndRefresh()
{
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    QCOMPARE(Chosen(form, "ConcessionList"), QString());
    Choose(form, "ConcessionList", "Pensioner");
    QCOMPARE(Keys(List(form, "ContactList")), QStringList("?4"));
    Pick(form, {"?4"});

    Sql("UPDATE Contacts SET Cust_Surname = 'Jones', Cust_Addr1 = '2 Mill Lane' WHERE ContactRef = 4");
    Concession_Add("Member", 5, 0, "");
    Sql("INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (3,1)");
    Press(form, "RefBtn");
    QCOMPARE(Find<ComboBox>(form, "ConcessionList")->count(), 3);
    QCOMPARE(Chosen(form, "ConcessionList"), "Pensioner");
    QCOMPARE(List(form, "ContactList").Count(), 2);
    QCOMPARE(RowsOf(List(form, "SelectedList")), QStringList("Jones, Carl|2 Mill Lane|Leeds|PO1"));
    Sql("DELETE FROM Contacts WHERE ContactRef = 4");
    Press(form, "RefBtn");
    QVERIFY(List(form, "SelectedList").IsEmpty());
    Choose(form, "ConcessionList", {});
    QCOMPARE(List(form, "ContactList").Count(), 3);
}

/// The target holds Ben and Dora; Ann, Ben and Carl are picked, and Carl is deleted before it is left.
void TestSelectContacts::HandsOver_data()
{
    const TestTable<Mode, QStringList, QStringList> row{"mode", "startsWith", "target"};
    const QString ben = "Ben as the caller has him";
    row("joins", Mode::AddToList, {}, {ben, "Smythe, Dora", "Adams, Ann"});
    row("replaces", Mode::ReplaceList, {"?3", "?5"}, {ben, "Smythe, Dora", "Adams, Ann|1 Mill Lane|Leeds"});
}

void TestSelectContacts::HandsOver()
{
    QFETCH(const Mode, mode);
    m_target.Fill({{"?3", "Ben as the caller has him"}, {"?5", "Smythe, Dora"}});
    m->dialogs.Expect("Select Contacts", leftOut % u"Smith, Carl");
    frmSelectContacts form;
    form.Configure(mode, m_target);
    form.show();
    QTEST(Keys(List(form, "SelectedList")), "startsWith");
    Pick(form, {"?2", "?3", "?4"});
    Sql("DELETE FROM Contacts WHERE ContactRef = 4");
    Press(form, "ExitBtn");
    QCOMPARE(gDialogResult, 1);
    QTEST(RowsOf(m_target), "target");
    QCOMPARE(m_target.At(0).key, "?3");
}

/// Events 1 and 3 are chosen, one by its branch and one by somebody who attends it.
void TestSelectContacts::JoinsTheBranchesOfATree()
{
    TreeModel tree;
    for (const char *branch : {"A1", "A2", "A3"})
        tree.Add({}, {branch, branch});
    tree.Add("A1", {"A3;1", "O'Neil, Ben"});
    tree.Add("A3", {"A5;3", "Smythe, Dora"});
    for (const char *node : {"A1", "A5;3"})
        tree.Selection()->select(tree.IndexOf(tree.Find(node)), QItemSelectionModel::Select);
    frmSelectContacts form;
    form.Configure(Mode::AddToTree, tree);
    form.show();
    Pick(form, {"?2", "?3"});
    Press(form, "ExitBtn");
    QStringList nodes;
    for (const TreeNode *node : tree.Nodes())
        nodes.append(node->key % u'=' % node->text % u' ' % node->image);
    QCOMPARE(nodes,
             QStringList({"A1=A1 ", "A3;1=O'Neil, Ben ", "A2;1=Adams, Ann [not enrolled] user", "A2=A2 ",
                          "A3=A3 ", "A5;3=Smythe, Dora ", "A2;3=Adams, Ann [not enrolled] user",
                          "A3;3=O'Neil, Ben [not enrolled] user"}));
}

/// Ann and Ben are stored and the picker leaves Ben and takes Dora. Meanwhile others remove Ben and add Carl.
void TestSelectContacts::FollowsWhatOthersStore_data()
{
    const TestTable<Mode, StoreOf, QString, QString, QString> row{"mode", "storeOf", "columns", "values",
                                                                  "added"};
    row(
        "attendance", Mode::Attendance, [] { return EventPeople::Attendees(CourseRef(1), EventRef(7)); },
        "AttendanceRecord (CourseRef,EventNo,ContactRef)", "(1,7,", "EventNo = 7");
    row(
        "candidates", Mode::Candidates, [] { return Candidates(CourseRef(1), ExamRef(7)); },
        "StudentExams (CourseRef,ExamRef,ExamResult,ResultFormat,ContactRef)", "(1,7,60,'%',",
        "ExamResult = 0 AND ResultFormat = '%''s'");
    row(
        "students", Mode::EnrolOnCourse, [] { return CoursePeople::Students(CourseRef(1), 0); },
        "StudentsEnrolled (CourseRef,ContactRef,BasicFee)", "(1,", "BasicFee = 100");
}

void TestSelectContacts::FollowsWhatOthersStore()
{
    QFETCH(const Mode, mode);
    QFETCH(const StoreOf, storeOf);
    QFETCH(const QString, columns);
    QFETCH(const QString, values);
    QFETCH(const QString, added);
    const QString table = columns.section(u' ', 0, 0);
    const auto store = [&](const QString &person) {
        const QString fee = mode == Mode::EnrolOnCourse ? u",50)"_qs : u")"_qs;
        Sql(u"INSERT INTO " % columns % u" VALUES " % values % person % fee);
    };
    store("2");
    store("3");
    Sql("INSERT INTO CourseEvents (EventRef,CourseRef,EventNo,EDate,TimeFrom,TimeTo) VALUES "
        "(7,1,1,20270301,900,1030)");
    Sql("INSERT INTO Exam (ExamRef,ExamName,ResultFormat) VALUES (7,'Welding','%''s')");
    m_target.Fill({{"?2", "Adams, Ann"}, {"?3", "O'Neil, Ben"}});
    frmSelectContacts form;
    form.Configure(mode, m_target, storeOf());
    form.show();
    QCOMPARE(Keys(List(form, "SelectedList")), QStringList({"?2", "?3"}));
    List(form, "SelectedList").SelectKeys({"?2"});
    Press(form, "RemCBtn");
    Pick(form, {"?5"});
    store("4");
    Sql(u"DELETE FROM " % table % u" WHERE ContactRef = 3");
    m->dialogs.Expect("Select Contacts",
                      "Another user has added these meanwhile, and they stay:\n    Smith, Carl");
    m->dialogs.Expect("Select Contacts",
                      "Another user has removed these meanwhile, and they are left out:\n    O'Neil, Ben");
    Press(form, "ExitBtn");
    QVERIFY(!form.isVisible() && m->dialogs.AllCame());
    QCOMPARE(TestDatabase::Rows(u"SELECT ContactRef FROM " % table % u" ORDER BY ContactRef"),
             QStringList({"4", "5"}));
    QCOMPARE(Rows(table % u" WHERE ContactRef = 5 AND " % added), 1);
}

void TestSelectContacts::EnrolsAndRemoves()
{
    const auto open = [this](frmSelectContacts &form, int limit) {
        form.Configure(Mode::EnrolOnCourse, m_target, CoursePeople::Students(CourseRef(1), limit));
        form.show();
    };
    {
        frmSelectContacts form;
        open(form, 2);
        Pick(form, {"?2", "?4", "?5"});
        m->dialogs.Expect("Course Enrollment",
                          "This Course has a max limit of 2 enrollments.\nPlease remove some and try again.");
        Press(form, "ExitBtn");
        QVERIFY(form.isVisible());
        QCOMPARE(Enrolled(), "");
        List(form, "SelectedList").SelectKeys({"?5"});
        Press(form, "RemCBtn");
        Press(form, "ExitBtn");
    }
    QCOMPARE(Enrolled(), "2 4");
    QCOMPARE(gDialogResult, 1);
    QCOMPARE(TestDatabase::Value("SELECT Discount FROM StudentsEnrolled WHERE ContactRef = 4"), "10");
    Sql("UPDATE StudentsEnrolled SET AmountPaid = 50 WHERE ContactRef = 4");

    frmSelectContacts form;
    open(form, 0);
    List(form, "SelectedList").SelectKeys({"?2"});
    Press(form, "RemCBtn");
    Pick(form, {"?3"});
    Press(form, "ExitBtn");
    QCOMPARE(Enrolled(), "3 4");
    QCOMPARE(TestDatabase::Value("SELECT AmountPaid FROM StudentsEnrolled WHERE ContactRef = 4"), "50");

    // Who has paid goes only after a question.
    frmSelectContacts asked;
    open(asked, 0);
    List(asked, "SelectedList").SelectKeys({"?4"});
    Press(asked, "RemCBtn");
    m->dialogs.Expect("Remove Students",
                      "Smith, Carl has paid 50.00.\nOkay to remove from the course? The payments stay in the "
                      "log alone.",
                      Dialogs::Answer::No);
    Press(asked, "ExitBtn");
    QVERIFY(asked.isVisible());
    QCOMPARE(Enrolled(), "3 4");

    // Left without Exit, nothing changes, and what would be lost is named first.
    frmSelectContacts left;
    open(left, 0);
    const auto says = [&left](const QString &text) { return Find<QLabel>(left, "ExitText")->text() == text; };
    QVERIFY(says("Exit changes nothing"));
    Press(left, "ClearCBtn");
    Pick(left, {"?3", "?5"});
    const QString change = "1 person will be enrolled, 1 person will be taken off the course";
    QVERIFY(says(change));
    for (const auto answer : {Dialogs::Answer::No, Dialogs::Answer::Yes}) {
        m->dialogs.Expect("Select Contacts", "Leave without this?\n\n" % change, answer);
        QTest::keyClick(&left, Qt::Key_Escape);
        QCOMPARE(left.isVisible(), answer == Dialogs::Answer::No);
    }
    QCOMPARE(gDialogResult, 0);
    QCOMPARE(Enrolled(), "3 4");
}

void TestSelectContacts::StudentsAreNeverDroppedUnseen()
{
    // A student whose town is missing from its table has no row of the four columns.
    for (const int student : {2, 5})
        Sql(u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee) VALUES (1," % SqlNumber(student) %
            u",100)");
    {
        frmSelectContacts form;
        form.Configure(Mode::EnrolOnCourse, m_target, CoursePeople::Students(CourseRef(1), 0));
        form.show();
        Press(form, "RefBtn");
        Press(form, "ExitBtn");
    }
    QCOMPARE(Enrolled(), "2 5");

    // A read that fails must not look like a course without students, nor like people who are gone.
    m_target.Fill({{"?2", "Adams, Ann"}, {"?5", "Smythe, Dora"}});
    for (const auto &[name, failures] : {std::pair("StudentsEnrolled", 3), std::pair("Contacts", 3)}) {
        const QString table = name;
        frmSelectContacts form;
        Sql(u"ALTER TABLE " % table % u" RENAME TO Away");
        for (int box = 0; box < failures; ++box)
            m->dialogs.Expect(FailureTitle(), engineFailure);
        form.Configure(Mode::EnrolOnCourse, m_target, CoursePeople::Students(CourseRef(1), 0));
        form.show();
        Press(form, "ExitBtn");
        QVERIFY(form.isVisible() && m->dialogs.AllCame());
        Sql(u"ALTER TABLE Away RENAME TO " % table);
        Press(form, "ExitBtn");
        QCOMPARE(Enrolled(), "2 5");
    }
}

QTEST_MAIN(TestSelectContacts)
#include "test_selectcontacts.moc"
