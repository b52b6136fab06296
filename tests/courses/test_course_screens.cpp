#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "courses/manager/frmCourse.h"
#include "courses/record/frmAddCourse.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentModule.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using Dialogs::Answer;

namespace
{
const QString leaving = "Some of the data has changed.\nOkay to update before exiting?";

bool IsEnabled(QWidget &form, const QString &button)
{
    return Find<QPushButton>(form, button)->isEnabled();
}

/// A digit for each button, 1 where it is enabled.
QString Enabled(QWidget &form, const QStringList &buttons)
{
    QString state;
    for (const QString &button : buttons)
        state += IsEnabled(form, button) ? u'1' : u'0';
    return state;
}

const QString concession = "SELECT ConcessionRef FROM CourseCharNames WHERE Name = ";

/// Makes a characteristic, and applies it to a course.
void Offers(CourseRef course, const QString &name)
{
    TestDatabase::Run({u"INSERT INTO CourseCharNames (Name,ReferenceID) VALUES ('" % name % u"','')",
                       u"INSERT INTO CourseChar (CourseRef,ConcessionRef) VALUES (" % SqlNumber(course) %
                           u",(" % concession % u'\'' % name % u"'))"});
}

QString Status(QWidget &manager)
{
    return Find<QLabel>(manager, "StatBar")->text();
}

/// A course with those students on it.
CourseRef CourseOfStudents(const QStringList &names, int limit = 0)
{
    const CourseRef course = School::AddCourse("Pottery", 10, limit);
    for (const QString &name : names)
        ADO_Course_EnrollStudent(course, School::AddPerson(name, "P"));
    return course;
}

QStringList Titles(QWidget &form)
{
    QStringList titles;
    for (const TreeNode *node : Find<TreeView>(form, "CourseList")->Model().Nodes())
        titles += node->text;
    return titles;
}

void SelectCourse(QWidget &form, CourseRef courseRef)
{
    TreeModel &courses = Find<TreeView>(form, "CourseList")->Model();
    courses.Select(courses.Find(u'?' % SqlNumber(courseRef)));
}

int CourseOf(const QString &title)
{
    return TestDatabase::Value(u"SELECT CourseRef FROM Courses WHERE Title = '" % title % u'\'').toInt();
}
} // namespace

class TestCourseScreens final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = RightsBlank();
        LoadSystemValues();
    }
    void cleanup() { m_database.reset(); }

    /// From the Course Manager: a new course in two folders, then a new title.
    void Story()
    {
        TestDatabase::Run({"INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('Arts',0,'')"});
        School::AddCourse("Anatomy", 10);
        frmCourse manager;
        manager.show();
        ModalDriver driver;
        driver.Expect("frmAddCourse", [](QDialog &form) {
            QVERIFY(!Find<QTabWidget>(form, "TabStrip1")->isTabEnabled(1));
            ScriptedDialogs dialogs;
            dialogs.Expect("Add Course", "Course already exists in database.");
            TypeInto(form, "Title", "anatomy");
            Press(form, "AddBtn");
            QCOMPARE(TextIn(form, "Title"), u"anatomy"_qs);
            TypeInto(form, "Title", "Pottery's");
            TypeInto(form, "CourseDescript", "Clay & 100% fun");
            auto *folders = Find<TreeView>(form, "CatList");
            QCOMPARE(folders->Model().Find("!1")->tick, TreeTick::On);
            emit folders->TickAsked(folders->Model().Find("!0"));
            Press(form, "AddBtn");
            QCOMPARE(Find<QPushButton>(form, "AddBtn")->text(), u"&Update Course"_qs);
            Press(form, "ExitBtn");
        });
        Press(manager, "AddBtn");
        QCOMPARE(Titles(manager), QStringList({"Arts", "Pottery's", "Anatomy", "Pottery's"}));
        QCOMPARE(Find<QPlainTextEdit>(manager, "Description")->toPlainText(), u"Clay & 100% fun"_qs);
        QCOMPARE(Status(manager), u"Pottery's (Course in Folder)"_qs);
        driver.Expect("frmAddCourse", [](QDialog &form) {
            TypeInto(form, "Title", "Ceramics");
            ScriptedDialogs dialogs;
            dialogs.Expect("Warning", leaving, Answer::Yes);
            Press(form, "ExitBtn");
        });
        Press(manager, "EditBtn");
        QCOMPARE(Titles(manager), QStringList({"Arts", "Ceramics", "Anatomy", "Ceramics"}));
        QCOMPARE(TestDatabase::Rows("SELECT CourseHierarchyRef FROM CoursesRelationships ORDER BY 1"),
                 QStringList({"0", "0", "1"}));
    }

    void RulesFeeAndLimit_data()
    {
        const TestTable<QString, QString, QString, bool> row{"box", "typed", "shown", "mayAdd"};
        row("fee", "Fee", "80.5", "80.50", true);
        row("fee of no digits", "Fee", "abc", "0.00", true);
        row("a long fee", "Fee", "123456789", "12,345,678.00", true);
        row("a long fee with its point", "Fee", "123456.789", "123,456.78", true);
        row("no limit", "Limit", "0", "0", true);
        row("limit cleared", "Limit", "", "0", true);
        row("limit below the enrolled", "Limit", "1", "2", false);
        row("limit just reached", "Limit", "2", "2", false);
        row("limit above", "Limit", "3x", "3", true);
    }
    void RulesFeeAndLimit()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        const CourseRef course = CourseOfStudents({"A", "B"});
        frmAddCourse form;
        QVERIFY(form.EditCourse(course));
        form.show();
        Enter(form, box, typed);
        QTEST(TextIn(form, box), "shown");
        QTEST(IsEnabled(form, "AddStudentBtn"), "mayAdd");
    }

    void RemovesStudents()
    {
        frmAddCourse form;
        form.EditCourse(CourseOfStudents({"A", "B"}, 2));
        form.show();
        Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(2);
        QVERIFY(!IsEnabled(form, "AddStudentBtn"));
        Press(form, "RemBtn");
        QCOMPARE(Find<ListView>(form, "Students")->Model().Count(), 1);
        QVERIFY(IsEnabled(form, "AddStudentBtn"));
        // The picker knows the course's limit.
        ModalDriver driver;
        driver.Expect("frmSelectContacts", [](QDialog &picker) {
            Find<ListView>(picker, "ContactList")->Model().SelectAll();
            Press(picker, "AddCBtn");
            ScriptedDialogs dialogs;
            dialogs.Expect(
                "Course Enrollment",
                "This Course has a max limit of 2 enrollments.\nPlease remove some and try again.");
            Press(picker, "ExitBtn");
            dialogs.Expect("Select Contacts", "Leave without this?\n\n2 people will be enrolled",
                           Dialogs::Answer::Yes);
            picker.reject();
        });
        School::AddPerson("C", "P");
        Press(form, "AddStudentBtn");
        // Who has paid goes only after a question.
        TestDatabase::Run({"UPDATE StudentsEnrolled SET AmountPaid = 10, Vouchers2 = 0.5"});
        for (const Dialogs::Answer answer : {Dialogs::Answer::No, Dialogs::Answer::Yes}) {
            QCOMPARE(TestDatabase::Rows("SELECT * FROM StudentsEnrolled").size(), 1);
            ScriptedDialogs dialogs;
            dialogs.Expect(
                "Remove Students",
                "P, B has paid 10.50.\nOkay to remove from the course? The payments stay in the log "
                "alone.",
                answer);
            Press(form, "RemBtn");
        }
        QVERIFY(TestDatabase::Rows("SELECT * FROM StudentsEnrolled").isEmpty());
        QVERIFY(!IsEnabled(form, "RemBtn") && !IsEnabled(form, "InfoBtn"));
        // Nor may the key that enrolled the last one take somebody out.
        driver.Expect("frmSelectContacts", [](QDialog &picker) {
            ListModel &people = Find<ListView>(picker, "ContactList")->Model();
            people.Select(0);
            people.Select(1);
            Press(picker, "AddCBtn");
            Press(picker, "ExitBtn");
        });
        Find<QWidget>(form, "AddStudentBtn")->setFocus();
        Press(form, "AddStudentBtn");
        QVERIFY(!IsEnabled(form, "AddStudentBtn"));
        QCOMPARE(form.focusWidget()->objectName(), "Students");
    }

    void FollowsRights_data()
    {
        // Title, Limit, Fee open; AddBtn, AddStudentBtn, RemBtn, RemCBtn, ClearCBtn, NewCBtn enabled
        const TestTable<int, QChar, QString> row{"right", "level", "state"};
        row("all", 48, u'9', "111111111");
        row("edit", 48, u'3', "111111111");
        row("add only", 48, u'2', "000000000");
        row("view only", 48, u'1', "000000000");
        row("no fee", 49, u'3', "110111111");
        row("characteristics looked at", 50, u'3', "111111001");
        row("no new characteristics", 60, u'1', "111111110");
        row("no students", 52, u'1', "111100111");
        row("students added only", 52, u'2', "111110111");
        row("students not removed", 52, u'3', "111110111");
    }
    void FollowsRights()
    {
        QFETCH(int, right);
        QFETCH(QChar, level);
        const CourseRef course = CourseOfStudents({"A"});
        Offers(course, "Evening");
        gUserRights[right] = level;
        frmAddCourse form;
        QVERIFY(form.EditCourse(course));
        QString state;
        for (const char *box : {"Title", "Limit", "Fee"})
            state += Find<QLineEdit>(form, box)->isReadOnly() ? u'0' : u'1';
        QTEST(QString(state % Enabled(form, {"AddBtn", "AddStudentBtn", "RemBtn", "RemCBtn", "ClearCBtn",
                                             "NewCBtn"})),
              "state");
        QVERIFY(IsEnabled(form, "InfoBtn"));
    }

    /// One is applied, one is made on the spot, one is taken away; another workstation applies one meanwhile.
    void AppliesCharacteristics()
    {
        const CourseRef course = CourseOfStudents({});
        Offers(course, "Evening");
        Offers(School::AddCourse("Anatomy", 10), "Lift");
        Offers(School::AddCourse("Botany", 10), "Outdoors");
        frmAddCourse form;
        QVERIFY(form.EditCourse(course));
        form.show();
        Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(1);
        ListModel &used = Find<ListView>(form, "UsedChar")->Model();
        ListModel &available = Find<ListView>(form, "AvailChar")->Model();
        QCOMPARE(used.At(0).text % u' ' % available.At(0).text, u"Evening Lift"_qs);
        Press(form, "AddCBtn");
        ModalDriver driver;
        driver.Expect("frmCourseMainAddEdit", [](QDialog &item) {
            TypeInto(item, "CatName", "Quiet");
            Press(item, "AddBtn");
        });
        Press(form, "NewCBtn");
        used.SelectOnly(used.Find("!" % TestDatabase::Value(concession % u"'Evening'")));
        Press(form, "RemCBtn");
        TestDatabase::Run({u"INSERT INTO CourseChar (CourseRef,ConcessionRef) SELECT " % SqlNumber(course) %
                           u",ConcessionRef FROM CourseCharNames WHERE Name = 'Outdoors'"});
        Press(form, "AddBtn");
        QCOMPARE(TestDatabase::Rows(u"SELECT Name FROM CourseChar INNER JOIN CourseCharNames ON "
                                    u"CourseChar.ConcessionRef = CourseCharNames.ConcessionRef WHERE "
                                    u"CourseRef = " %
                                    SqlNumber(course) % u" ORDER BY Name"),
                 QStringList({"Lift", "Outdoors", "Quiet"}));
        QCOMPARE(used.Count(), 3);
        QCOMPARE(available.Count(), 1);
    }

    void LetsAddOnlyUsersAdd()
    {
        gUserRights[48] = u'2';
        frmAddCourse form;
        form.NewCourse("!0");
        form.show();
        TypeInto(form, "Title", "Pottery");
        Press(form, "AddBtn");
        QVERIFY(CourseOf("Pottery") > 0);
        QVERIFY(!IsEnabled(form, "AddBtn"));
        form.reject();
        QVERIFY(!form.isVisible());
    }

    /// The database goes away: a box per failure, and everything typed is still there to be saved.
    void KeepsWorkOnAFailure()
    {
        ScriptedDialogs dialogs;
        frmAddCourse form;
        form.NewCourse("!0");
        form.show();
        TypeInto(form, "Title", "Pottery");
        gConnection.Close();
        dialogs.ExpectFailure();
        Press(form, "AddBtn");
        QCOMPARE(TextIn(form, "Title"), u"Pottery"_qs);
        QVERIFY(m_database->Reconnect());
        Press(form, "AddBtn");
        QVERIFY(CourseOf("Pottery") > 0);

        // The row is changed, its folders are not: the form stays unsaved.
        TypeInto(form, "Title", "Ceramics");
        TestDatabase::Run({"ALTER TABLE CoursesRelationships RENAME TO Gone"});
        dialogs.ExpectFailure();
        Press(form, "AddBtn");
        dialogs.Expect("Warning", leaving, Answer::Cancel);
        form.reject();
        TestDatabase::Run({"ALTER TABLE Gone RENAME TO CoursesRelationships"});
        Press(form, "AddBtn");
        form.reject();
        QVERIFY(!form.isVisible());
    }

    void NoticesADeletedCourse()
    {
        QList<CourseRef> courses;
        for (const char *title : {"A", "B", "C", "D"})
            courses += School::AddCourse(QString::fromLatin1(title), 0);
        frmCourse manager;
        manager.show();
        TestDatabase::Run({u"DELETE FROM Courses WHERE CourseRef IN (" % SqlNumber(courses[1]) % u',' %
                           SqlNumber(courses[2]) % u')'});
        ScriptedDialogs dialogs;
        dialogs.Expect("Courses", "Course has been deleted.");
        dialogs.Expect("Courses", "Course has been deleted.");
        SelectCourse(manager, courses[1]);
        QCOMPARE(Titles(manager), QStringList({"A", "D"}));
        QCOMPARE(Status(manager), u"D (Course)"_qs);

        // A database that cannot be asked is no reason to call courses deleted.
        TestDatabase::Run({"ALTER TABLE Courses RENAME TO Gone"});
        dialogs.ExpectFailure();
        SelectCourse(manager, courses[0]);
        QCOMPARE(Titles(manager).size(), 2);
    }

    void AsksBeforeItDeletes()
    {
        const CourseRef a = School::AddCourse("A's", 0);
        School::AddCourse("B", 0);
        for (const char *name : {"C", "D", "E"})
            ADO_Course_EnrollStudent(a, School::AddPerson(name, "P"));
        TestDatabase::Run({u"UPDATE StudentsEnrolled SET AmountPaid = 60 WHERE ContactRef = 2"_qs,
                           u"UPDATE StudentsEnrolled SET AmountPaid = 5.5 WHERE ContactRef = 3"_qs});
        QCOMPARE(Contact_EnrolledText(ContactRef(2)), u"Enrolled on 1 course"_qs);
        frmCourse manager;
        manager.show();
        ScriptedDialogs dialogs;
        const QString question = "Okay to delete course 'A's'\n3 people are enrolled; 65.50 has been paid.";
        dialogs.Expect("Confirm Deletion", question, Answer::No);
        Press(manager, "DelBtn");
        QCOMPARE(Titles(manager).size(), 2);
        dialogs.Expect("Confirm Deletion", question, Answer::Yes);
        Press(manager, "DelBtn");
        QCOMPARE(Titles(manager), QStringList("B"));
        QCOMPARE(Status(manager), u"B (Course)"_qs);
        QCOMPARE(TestDatabase::Rows(u"SELECT * FROM Courses WHERE CourseRef = " % SqlNumber(a)).size(), 0);
        dialogs.Expect("Confirm Deletion", "Okay to delete course 'B'", Answer::Yes);
        Press(manager, "DelBtn");
        QVERIFY(Status(manager).isEmpty());
        QVERIFY(!IsEnabled(manager, "EditBtn") && !IsEnabled(manager, "DelBtn"));
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_MAIN(TestCourseScreens)
#include "test_course_screens.moc"
