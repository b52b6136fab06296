#include "contacts/frmSelectContacts.h"
#include "controls/TreeModel.h"
#include "core/Session.h"
#include "database/MiscODBC.h"
#include "database/Security.h"
#include "forms/ListView.h"
#include "platform/Connection.h"
#include "support/ModalDriver.h"
#include "support/RightsTable.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using Mode = frmSelectContacts::Mode;

namespace
{
ListModel &Available(QWidget &form)
{
    return Find<ListView>(form, u"ContactList"_qs)->Model();
}

ListModel &Selected(QWidget &form)
{
    return Find<ListView>(form, u"SelectedList"_qs)->Model();
}

QStringList Texts(const ListModel &list)
{
    QStringList texts;
    for (int row = 0; row < list.Count(); ++row)
        texts.append((QStringList(list.At(row).text) + list.At(row).subItems).join(u'|'));
    return texts;
}

void Choose(QWidget &form, const QStringList &names)
{
    ListModel &list = Available(form);
    list.ClearSelection();
    for (int row = 0; row < list.Count(); ++row) {
        if (names.contains(list.At(row).text))
            list.Select(row);
    }
}

QStringList Enrolled()
{
    return TestDatabase::Rows(
        u"SELECT ContactRef FROM StudentsEnrolled WHERE CourseRef = 1 ORDER BY ContactRef"_qs);
}
} // namespace

class TestSelectContacts final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_database.reset(); }

    void PickingPeople();
    void NewAndViewedContacts();
    void SubsetsAndRefresh();
    void JoinsTheTarget();
    void ReplacesTheTarget();
    void JoinsTheBranchesOfATree();
    void EnrolsAndRemoves();
    void CancelsByEscape();
    void LimitOfACourse_data();
    void LimitOfACourse();
    void LeavingWithoutExitChangesNothing();
    void StudentsAreNeverDroppedUnseen();
    void TenThousandContacts();

private:
    std::unique_ptr<TestDatabase> m_database;
    ListModel m_target;
};

void TestSelectContacts::init()
{
    m_database = std::make_unique<TestDatabase>();
    gUserRights = RightsBlank();
    m_target.Clear();
    const auto person = [](const QString &surname, const QString &forename, int city) -> QString {
        return u"INSERT INTO Contacts "
               u"(Cust_Surname,Cust_Forename,Cust_Addr1,Cust_Postcode,ReferenceID,Cust_City)"
               u" VALUES ('" %
               surname % u"','" % forename % u"','1 High Street','PO1','','" % QString::number(city) % u"')";
    };
    // The people get the references 2 to 5, behind the sentinel.
    TestDatabase::Run(
        {u"INSERT INTO City (City,ReferenceID) VALUES ('Leeds','')"_qs, person(u"Adams"_qs, u"Ann"_qs, 2),
         person(u"O''Neil"_qs, u"Ben"_qs, 1), person(u"Smith"_qs, u"Carl"_qs, 2),
         person(u"Smythe"_qs, u"Dora"_qs, 99),
         u"INSERT INTO Concessions (ReferenceID,Name,Percentage,HardDiscount) VALUES ('','Pensioner',10,0)"_qs,
         u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (4,1)"_qs,
         u"INSERT INTO Courses (Title,Description,Fee,Limit,ReferenceID) VALUES ('Welding','',100,2,'')"_qs});
}

void TestSelectContacts::PickingPeople()
{
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    QCOMPARE(Texts(Available(form)),
             QStringList({u"Adams, Ann"_qs, u"O'Neil, Ben"_qs, u"Smith, Carl"_qs, u"Smythe, Dora"_qs}));
    for (const auto *name : {"AddCBtn", "RemCBtn", "ClearCBtn"})
        QVERIFY2(!Find<QPushButton>(form, QString::fromLatin1(name))->isEnabled(), name);

    Choose(form, {u"Smith, Carl"_qs, u"O'Neil, Ben"_qs});
    Press(form, u"AddCBtn"_qs);
    QCOMPARE(Texts(Selected(form)),
             QStringList({u"O'Neil, Ben|1 High Street||PO1"_qs, u"Smith, Carl|1 High Street|Leeds|PO1"_qs}));
    QVERIFY(Available(form).SelectedRows().empty());
    Choose(form, {u"Smith, Carl"_qs});
    Press(form, u"AddCBtn"_qs);
    QCOMPARE(Selected(form).Count(), 2);

    // Somebody else deletes two of them meanwhile: one picked already, one about to be.
    TestDatabase::Run({u"DELETE FROM Contacts WHERE ContactRef IN (2, 4)"_qs});
    Choose(form, {u"Adams, Ann"_qs, u"Smith, Carl"_qs});
    Press(form, u"AddCBtn"_qs);
    QCOMPARE(Texts(Available(form)), QStringList({u"O'Neil, Ben"_qs, u"Smythe, Dora"_qs}));
    QCOMPARE(Selected(form).Count(), 1);

    Selected(form).SelectAll();
    Press(form, u"RemCBtn"_qs);
    QVERIFY(Selected(form).IsEmpty());
    QCOMPARE(Available(form).Count(), 2);
}

void TestSelectContacts::NewAndViewedContacts()
{
    ModalDriver driver;
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    QVERIFY(!Find<QPushButton>(form, u"ViewBtn"_qs)->isEnabled());
    driver.Expect(u"frmAddContact"_qs, [](QDialog &record) {
        TypeInto(record, u"Forname"_qs, u"Eve"_qs);
        TypeInto(record, u"Surname"_qs, u"Brown"_qs);
        Press(record, u"OKBtn"_qs);
        Press(record, u"ExitBtn"_qs);
    });
    Press(form, u"AddBtn"_qs);
    QCOMPARE(Available(form).At(Available(form).CurrentRow()).text, u"Brown, Eve"_qs);
    QCOMPARE(gDialogResult, 0);

    const auto view = [&](const QString &surname) {
        driver.Expect(u"frmAddContact"_qs, [surname](QDialog &record) {
            QCOMPARE(Find<QLineEdit>(record, u"Surname"_qs)->text(), surname);
            Press(record, u"ExitBtn"_qs);
        });
        Press(form, u"ViewBtn"_qs);
    };
    Press(form, u"AddCBtn"_qs);
    view(u"Brown"_qs);
    Choose(form, {u"Adams, Ann"_qs});
    view(u"Adams"_qs);
    QVERIFY(form.isVisible());

    gUserRights = RightsWith(23, 1);
    frmSelectContacts reader;
    QVERIFY(!Find<QPushButton>(reader, u"AddBtn"_qs)->isEnabled());
    QVERIFY(!Find<QAction>(reader, u"ID_New"_qs)->isEnabled());
}

void TestSelectContacts::SubsetsAndRefresh()
{
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    auto *subsets = Find<QComboBox>(form, u"ConcessionList"_qs);
    QCOMPARE(subsets->itemText(0), QString());
    subsets->setCurrentIndex(1);
    QCOMPARE(Texts(Available(form)), QStringList{u"Smith, Carl"_qs});
    Choose(form, {u"Smith, Carl"_qs});
    Press(form, u"AddCBtn"_qs);

    TestDatabase::Run(
        {u"UPDATE Contacts SET Cust_Surname = 'Jones', Cust_Addr1 = '2 Mill Lane' WHERE ContactRef = 4"_qs,
         u"INSERT INTO Concessions (ReferenceID,Name,Percentage,HardDiscount) VALUES ('','Member',5,0)"_qs,
         u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (3,1)"_qs});
    Press(form, u"RefBtn"_qs);
    QCOMPARE(subsets->count(), 3);
    QCOMPARE(subsets->currentText(), u"Pensioner"_qs);
    QCOMPARE(Available(form).Count(), 2);
    QCOMPARE(Texts(Selected(form)), QStringList{u"Jones, Carl|2 Mill Lane|Leeds|PO1"_qs});
    TestDatabase::Run({u"DELETE FROM Contacts WHERE ContactRef = 4"_qs});
    Press(form, u"RefBtn"_qs);
    QVERIFY(Selected(form).IsEmpty());
    subsets->setCurrentIndex(0);
    QCOMPARE(Available(form).Count(), 3);
}

void TestSelectContacts::JoinsTheTarget()
{
    m_target.Add({u"?3"_qs, u"as the caller has it"_qs});
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    QVERIFY(Selected(form).IsEmpty());
    Choose(form, {u"Adams, Ann"_qs, u"O'Neil, Ben"_qs});
    Press(form, u"AddCBtn"_qs);
    Press(form, u"ExitBtn"_qs);
    QCOMPARE(gDialogResult, 1);
    QCOMPARE(Texts(m_target), QStringList({u"as the caller has it"_qs, u"Adams, Ann"_qs}));
    QCOMPARE(m_target.At(1).key, u"?2"_qs);
}

/// It starts with what the list holds, and leaves names, addresses and towns there.
void TestSelectContacts::ReplacesTheTarget()
{
    m_target.Fill({{u"?3"_qs, u"as the caller has it"_qs}, {u"?5"_qs, u"Smythe, Dora"_qs}});
    frmSelectContacts form;
    form.Configure(Mode::ReplaceList, m_target);
    form.show();
    QCOMPARE(Selected(form).Count(), 2);
    Selected(form).SelectOnly(1);
    Press(form, u"RemCBtn"_qs);
    Choose(form, {u"Adams, Ann"_qs, u"O'Neil, Ben"_qs});
    Press(form, u"AddCBtn"_qs);
    Press(form, u"ExitBtn"_qs);
    QCOMPARE(Texts(m_target),
             QStringList({u"as the caller has it"_qs, u"Adams, Ann|1 High Street|Leeds"_qs}));
}

void TestSelectContacts::JoinsTheBranchesOfATree()
{
    TreeModel tree;
    for (const auto *branch : {"E1", "E2", "E3"})
        tree.Add({}, {QString::fromLatin1(branch), QString::fromLatin1(branch)});
    tree.Add(u"E1"_qs, {u"E1A3"_qs, u"O'Neil, Ben"_qs});
    for (const auto *branch : {"E1", "E3"})
        tree.Selection()->select(tree.IndexOf(tree.Find(QString::fromLatin1(branch))),
                                 QItemSelectionModel::Select);
    frmSelectContacts form;
    form.Configure(Mode::AddToTree, tree);
    form.show();
    Choose(form, {u"Adams, Ann"_qs, u"O'Neil, Ben"_qs});
    Press(form, u"AddCBtn"_qs);
    Press(form, u"ExitBtn"_qs);
    QStringList nodes;
    for (const TreeNode *node : tree.Nodes())
        nodes.append(node->key % u'=' % node->text % u' ' % node->image);
    QCOMPARE(nodes,
             QStringList({u"E1=E1 "_qs, u"E1A3=O'Neil, Ben "_qs, u"E1A2=Adams, Ann [not enrolled] user"_qs,
                          u"E2=E2 "_qs, u"E3=E3 "_qs, u"E3A2=Adams, Ann [not enrolled] user"_qs,
                          u"E3A3=O'Neil, Ben [not enrolled] user"_qs}));
}

void TestSelectContacts::EnrolsAndRemoves()
{
    {
        frmSelectContacts form;
        form.Configure(Mode::EnrolOnCourse, m_target, 1, 2);
        form.show();
        Choose(form, {u"Adams, Ann"_qs, u"Smith, Carl"_qs});
        Press(form, u"AddCBtn"_qs);
        Press(form, u"ExitBtn"_qs);
    }
    QCOMPARE(Enrolled(), QStringList({u"2"_qs, u"4"_qs}));
    QCOMPARE(TestDatabase::Value(u"SELECT Discount FROM StudentsEnrolled WHERE ContactRef = 4"_qs), u"10"_qs);
    TestDatabase::Run({u"UPDATE StudentsEnrolled SET AmountPaid = 50 WHERE ContactRef = 4"_qs});

    frmSelectContacts form;
    form.Configure(Mode::EnrolOnCourse, m_target, 1, 2);
    form.show();
    QCOMPARE(Selected(form).Count(), 2);
    Selected(form).ClearSelection();
    Selected(form).Select(Selected(form).Find(u"?2"_qs));
    Press(form, u"RemCBtn"_qs);
    Choose(form, {u"O'Neil, Ben"_qs});
    Press(form, u"AddCBtn"_qs);
    Press(form, u"ExitBtn"_qs);
    QCOMPARE(Enrolled(), QStringList({u"3"_qs, u"4"_qs}));
    QCOMPARE(TestDatabase::Value(u"SELECT AmountPaid FROM StudentsEnrolled WHERE ContactRef = 4"_qs),
             u"50"_qs);
}

/// Escape stops a running enrolment and leaves the form; pressing E&xit again takes up the rest.
void TestSelectContacts::CancelsByEscape()
{
    ScriptedDialogs dialogs;
    frmSelectContacts form;
    form.Configure(Mode::EnrolOnCourse, m_target, 1, 0);
    form.show();
    Choose(form, {u"Adams, Ann"_qs, u"O'Neil, Ben"_qs, u"Smith, Carl"_qs});
    Press(form, u"AddCBtn"_qs);
    bool onlyCancel = false;
    gConnection.ObserveStatements([&](const QString &sql) {
        if (!sql.startsWith(u"INSERT"_qs) || onlyCancel)
            return;
        onlyCancel = Find<QPushButton>(form, u"CancelBtn"_qs)->isEnabled() &&
                     !Find<QPushButton>(form, u"ExitBtn"_qs)->isEnabled();
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    dialogs.Expect(u"Course Enrollment"_qs,
                   u"Stopped after 1 of 3 contacts. Those are enrolled, the rest are not."_qs);
    Press(form, u"ExitBtn"_qs);
    gConnection.ObserveStatements({});
    QVERIFY(onlyCancel && form.isVisible());
    QCOMPARE(Enrolled(), QStringList{u"2"_qs});
    QVERIFY(Find<QPushButton>(form, u"FindBtn"_qs)->isEnabled());
    Press(form, u"ExitBtn"_qs);
    QVERIFY(!form.isVisible());
    QCOMPARE(Enrolled().size(), 3);
}

void TestSelectContacts::LimitOfACourse_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<bool>("refused");
    QTest::newRow("one too many") << 2 << true;
    QTest::newRow("just enough") << 3 << false;
    QTest::newRow("no limit") << 0 << false;
}

void TestSelectContacts::LimitOfACourse()
{
    QFETCH(const int, limit);
    QFETCH(const bool, refused);
    ScriptedDialogs dialogs;
    frmSelectContacts form;
    form.Configure(Mode::EnrolOnCourse, m_target, 1, limit);
    form.show();
    Choose(form, {u"Adams, Ann"_qs, u"O'Neil, Ben"_qs, u"Smith, Carl"_qs});
    Press(form, u"AddCBtn"_qs);
    if (refused)
        dialogs.Expect(
            u"Course Enrollment"_qs,
            u"This Course has a max limit of 2 enrollments.\nPlease remove some and try again."_qs);
    Press(form, u"ExitBtn"_qs);
    QCOMPARE(form.isVisible(), refused);
    QCOMPARE(Enrolled().size(), refused ? 0 : 3);
    QCOMPARE(gDialogResult, refused ? 0 : 1);
}

void TestSelectContacts::LeavingWithoutExitChangesNothing()
{
    TestDatabase::Run({u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee) VALUES (1,2,100)"_qs});
    frmSelectContacts form;
    form.Configure(Mode::EnrolOnCourse, m_target, 1, 0);
    form.show();
    Press(form, u"ClearCBtn"_qs);
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
    QCOMPARE(gDialogResult, 0);
    QCOMPARE(Enrolled(), QStringList{u"2"_qs});
}

void TestSelectContacts::StudentsAreNeverDroppedUnseen()
{
    // A student whose town is missing from its table has no row of the four columns.
    TestDatabase::Run({u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee) VALUES (1,5,100)"_qs,
                       u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee) VALUES (1,2,100)"_qs});
    frmSelectContacts form;
    form.Configure(Mode::EnrolOnCourse, m_target, 1, 0);
    form.show();
    Press(form, u"RefBtn"_qs);
    Press(form, u"ExitBtn"_qs);
    QCOMPARE(Enrolled(), QStringList({u"2"_qs, u"5"_qs}));

    // A read of the students that fails must not look like a course without any.
    m_target.Fill({{u"?2"_qs, u"Adams, Ann"_qs}, {u"?5"_qs, u"Smythe, Dora"_qs}});
    TestDatabase::Run({u"ALTER TABLE StudentsEnrolled RENAME TO Away"_qs});
    frmSelectContacts failed;
    const Dialogs::Hooks outer = Dialogs::Installed();
    int boxes = 0;
    Dialogs::Installed().msgBox = [&](auto &&...) {
        ++boxes;
        return Dialogs::Answer::Cancel;
    };
    failed.Configure(Mode::EnrolOnCourse, m_target, 1, 0);
    failed.show();
    QCOMPARE(boxes, 1);
    Press(failed, u"ExitBtn"_qs);
    QCOMPARE(boxes, 2);
    QVERIFY(failed.isVisible());
    Dialogs::Installed() = outer;
    TestDatabase::Run({u"ALTER TABLE Away RENAME TO StudentsEnrolled"_qs});
    Press(failed, u"ExitBtn"_qs);
    QCOMPARE(Enrolled(), QStringList({u"2"_qs, u"5"_qs}));
}

void TestSelectContacts::TenThousandContacts()
{
    {
        const WriteGroup group(gConnection);
        for (int i = 0; i < 10'000; ++i)
            TryExecute(
                u"INSERT INTO Contacts (Cust_Surname,Cust_Forename,Cust_Addr1,ReferenceID,Cust_City) VALUES "
                u"('Name" %
                QString::number(i) % u"','Ann','','',1)");
    }
    frmSelectContacts form;
    form.Configure(Mode::AddToList, m_target);
    form.show();
    QCOMPARE(Available(form).Count(), 10'004);
    auto *box = Find<QLineEdit>(form, u"SearchBox"_qs);
    const QString wanted = u"name9999"_qs;
    QElapsedTimer clock;
    clock.start();
    QTest::keyClicks(box, wanted);
    const qint64 aKey = clock.elapsed() / wanted.size();
    QCOMPARE(Available(form).At(Available(form).CurrentRow()).text, u"Name9999, Ann"_qs);
    // A fiftieth of a second is where typing starts to feel slow; on this list a key takes about one
    // millisecond.
    QVERIFY2(aKey < 20, qPrintable(QString::number(aKey)));
}

QTEST_MAIN(TestSelectContacts)
#include "test_selectcontacts.moc"
