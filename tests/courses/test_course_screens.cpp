#include "controls/ListModel.h"
#include "core/Session.h"
#include "courses/frmAddCourse.h"
#include "courses/frmCourse.h"
#include "database/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "forms/ListView.h"
#include "forms/TreeView.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using Dialogs::Answer;

namespace
{
const QString failure =
    QStringLiteral("A number of errors have been detected, please seek technical support.");

QString BoxText(QWidget &form, const char *box)
{
    return Find<QLineEdit>(form, QString::fromLatin1(box))->text();
}

bool IsEnabled(QWidget &form, const char *button)
{
    return Find<QPushButton>(form, QString::fromLatin1(button))->isEnabled();
}

void ShowTab(QWidget &form, int tab)
{
    Find<QTabWidget>(form, QStringLiteral("TabStrip1"))->setCurrentIndex(tab);
}

QStringList Titles(QWidget &form)
{
    QStringList titles;
    for (const TreeNode *node : Find<TreeView>(form, QStringLiteral("CourseList"))->Model().Nodes())
        titles += node->text;
    return titles;
}

void SelectCourse(QWidget &form, int courseRef)
{
    TreeModel &courses = Find<TreeView>(form, QStringLiteral("CourseList"))->Model();
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
    void init();
    void cleanup() { m_database.reset(); }

    void Story();
    void WantsATitle();
    void TellsADuplicate();
    void RulesFeeAndLimit_data();
    void RulesFeeAndLimit();
    void AddsStudentsUpToTheLimit();
    void RemovesStudents();
    void FollowsRights_data();
    void FollowsRights();
    void LetsAddOnlyUsersAdd();
    void KeepsWorkOnAFailure();
    void NoticesADeletedCourse();
    void AsksBeforeItDeletes();
    void FollowsRightsInTheManager_data();
    void FollowsRightsInTheManager();

private:
    std::unique_ptr<TestDatabase> m_database;
};

void TestCourseScreens::init()
{
    m_database = std::make_unique<TestDatabase>();
    gUserRights = RightsBlank();
    LoadSystemValues();
}

/// From the Course Manager: a new course in a folder, students by the picker, a payment, a new title.
void TestCourseScreens::Story()
{
    TestDatabase::Run(
        {QStringLiteral("INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('Arts',0,'')")});
    const int ada = School::AddPerson(QStringLiteral("Ada"), QStringLiteral("Lovelace"));
    School::AddCourse(QStringLiteral("Anatomy"), 10);
    frmCourse manager;
    manager.show();
    QCOMPARE(Titles(manager), QStringList(QStringLiteral("Anatomy")));

    ModalDriver driver;
    driver.Expect(QStringLiteral("frmAddCourse"), [](QDialog &form) {
        QVERIFY(!Find<QTabWidget>(form, QStringLiteral("TabStrip1"))->isTabEnabled(1));
        TypeInto(form, QStringLiteral("Title"), QStringLiteral("Pottery's"));
        TypeInto(form, QStringLiteral("CourseDescript"), QStringLiteral("Clay & 100% fun"));
        TypeInto(form, QStringLiteral("Fee"), QStringLiteral("80"));
        auto *folders = Find<TreeView>(form, QStringLiteral("CatList"));
        TreeModel &tree = folders->Model();
        QCOMPARE(tree.Find(QStringLiteral("!0"))->tick, TreeTick::On);
        emit folders->TickAsked(tree.Find(QStringLiteral("!1")));
        Press(form, QStringLiteral("AddBtn"));
        QCOMPARE(Find<QPushButton>(form, QStringLiteral("AddBtn"))->text(), QStringLiteral("&Update Course"));
        ShowTab(form, 1);
        Press(form, QStringLiteral("AddStudentBtn"));
        QCOMPARE(Find<ListView>(form, QStringLiteral("Students"))->Model().Count(), 1);
        Press(form, QStringLiteral("InfoBtn"));
        QCOMPARE(Find<ListView>(form, QStringLiteral("Students"))->Model().At(0).subItems.value(0),
                 QStringLiteral("Yes"));
        Press(form, QStringLiteral("ExitBtn"));
    });
    driver.Expect(QStringLiteral("frmSelectContacts"), [ada](QDialog &picker) {
        ListModel &people = Find<ListView>(picker, QStringLiteral("ContactList"))->Model();
        people.SelectOnly(people.Find(u'?' % SqlNumber(ada)));
        Press(picker, QStringLiteral("AddCBtn"));
        Press(picker, QStringLiteral("ExitBtn"));
    });
    driver.Expect(QStringLiteral("frmStudentInfo"), [](QDialog &form) {
        TypeInto(form, QStringLiteral("Payment"), QStringLiteral("80"));
        Press(form, QStringLiteral("OkBtn"));
    });
    Press(manager, QStringLiteral("AddBtn"));
    QCOMPARE(Titles(manager), QStringList({QStringLiteral("Anatomy"), QStringLiteral("Pottery's")}));
    QCOMPARE(Find<QPlainTextEdit>(manager, QStringLiteral("Description"))->toPlainText(),
             QStringLiteral("Clay & 100% fun"));
    QCOMPARE(Find<QLabel>(manager, QStringLiteral("StatBar"))->text(), QStringLiteral("Pottery's (Course)"));
    QCOMPARE(TestDatabase::Rows(QStringLiteral("SELECT CourseHierarchyRef FROM CoursesRelationships ORDER BY "
                                               "CourseHierarchyRef")),
             QStringList({QStringLiteral("0"), QStringLiteral("1")}));

    driver.Expect(QStringLiteral("frmAddCourse"), [](QDialog &form) {
        TypeInto(form, QStringLiteral("Title"), QStringLiteral("Ceramics"));
        ScriptedDialogs dialogs;
        dialogs.Expect(QStringLiteral("Warning"),
                       QStringLiteral("Some of the data has changed.\nOkay to update before exiting?"),
                       Answer::Yes);
        Press(form, QStringLiteral("ExitBtn"));
    });
    Press(manager, QStringLiteral("EditBtn"));
    QCOMPARE(Titles(manager), QStringList({QStringLiteral("Anatomy"), QStringLiteral("Ceramics")}));
    QCOMPARE(TestDatabase::Rows(QStringLiteral("SELECT * FROM CoursesRelationships")).size(), 2);
    Press(manager, QStringLiteral("RefBtn"));
    QCOMPARE(Titles(manager), QStringList({QStringLiteral("Anatomy"), QStringLiteral("Ceramics")}));
}

void TestCourseScreens::WantsATitle()
{
    frmAddCourse form;
    form.NewCourse(QStringLiteral("!0"));
    form.show();
    TypeInto(form, QStringLiteral("Title"), QStringLiteral("  "));
    ScriptedDialogs dialogs;
    dialogs.Expect(QStringLiteral("Form not complete"),
                   QStringLiteral("The followings fields must be completed:\n    Course Name\n"));
    Press(form, QStringLiteral("AddBtn"));
    QVERIFY(TestDatabase::Rows(QStringLiteral("SELECT * FROM Courses")).isEmpty());
}

void TestCourseScreens::TellsADuplicate()
{
    School::AddCourse(QStringLiteral("Pottery"), 10);
    frmAddCourse form;
    form.NewCourse(QStringLiteral("!0"));
    form.show();
    TypeInto(form, QStringLiteral("Title"), QStringLiteral("pottery"));
    ScriptedDialogs dialogs;
    dialogs.Expect(QStringLiteral("Add Course"), QStringLiteral("Course already exists in database."));
    Press(form, QStringLiteral("AddBtn"));
    QCOMPARE(BoxText(form, "Title"), QStringLiteral("pottery"));
    TypeInto(form, QStringLiteral("RefName"), QStringLiteral("2"));
    Press(form, QStringLiteral("AddBtn"));
    gDialogResult = 0;
    form.reject();
    QVERIFY(gDialogResult > 0);
    QCOMPARE(TestDatabase::Rows(QStringLiteral("SELECT * FROM Courses")).size(), 2);
}

void TestCourseScreens::RulesFeeAndLimit_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("mayAdd");
    QTest::newRow("fee") << "Fee"
                         << "80.5"
                         << "80.50" << true;
    QTest::newRow("fee of no digits") << "Fee"
                                      << "abc"
                                      << "0.00" << true;
    QTest::newRow("a long fee") << "Fee"
                                << "123456789"
                                << "12,345,678.00" << true;
    QTest::newRow("a long fee with its point") << "Fee"
                                               << "123456.789"
                                               << "123,456.78" << true;
    QTest::newRow("no limit") << "Limit"
                              << "0"
                              << "0" << true;
    QTest::newRow("limit cleared") << "Limit"
                                   << ""
                                   << "0" << true;
    QTest::newRow("limit below the enrolled") << "Limit"
                                              << "1"
                                              << "2" << false;
    QTest::newRow("limit just reached") << "Limit"
                                        << "2"
                                        << "2" << false;
    QTest::newRow("limit above") << "Limit"
                                 << "3x"
                                 << "3" << true;
}

void TestCourseScreens::RulesFeeAndLimit()
{
    QFETCH(QString, box);
    QFETCH(QString, typed);
    const int course = School::AddCourse(QStringLiteral("Pottery"), 10);
    for (const char *name : {"A", "B"})
        ADO_Course_EnrollStudent(course, School::AddPerson(QString::fromLatin1(name), QStringLiteral("P")));
    frmAddCourse form;
    QVERIFY(form.EditCourse(course));
    form.show();
    TypeInto(form, box, typed);
    QTest::keyClick(Find<QWidget>(form, box), Qt::Key_Return);
    QTEST(Find<QLineEdit>(form, box)->text(), "shown");
    QTEST(IsEnabled(form, "AddStudentBtn"), "mayAdd");
}

/// The picker refuses more than the course takes, and stays open.
void TestCourseScreens::AddsStudentsUpToTheLimit()
{
    const int course = School::AddCourse(QStringLiteral("Pottery"), 10, 1);
    const int ada = School::AddPerson(QStringLiteral("Ada"), QStringLiteral("Lovelace"));
    School::AddPerson(QStringLiteral("Bob"), QStringLiteral("Jones"));
    frmAddCourse form;
    form.EditCourse(course);
    form.show();
    ShowTab(form, 1);
    ModalDriver driver;
    driver.Expect(QStringLiteral("frmSelectContacts"), [ada](QDialog &picker) {
        Find<ListView>(picker, QStringLiteral("ContactList"))->Model().SelectAll();
        Press(picker, QStringLiteral("AddCBtn"));
        ScriptedDialogs dialogs;
        dialogs.Expect(
            QStringLiteral("Course Enrollment"),
            QStringLiteral("This Course has a max limit of 1 enrollments.\nPlease remove some and try "
                           "again."));
        Press(picker, QStringLiteral("ExitBtn"));
        QVERIFY(picker.isVisible());
        ListModel &selected = Find<ListView>(picker, QStringLiteral("SelectedList"))->Model();
        selected.SelectOnly(selected.Find(u'?' % SqlNumber(ada)));
        Press(picker, QStringLiteral("RemCBtn"));
        Press(picker, QStringLiteral("ExitBtn"));
    });
    Press(form, QStringLiteral("AddStudentBtn"));
    QCOMPARE(Find<ListView>(form, QStringLiteral("Students"))->Model().At(0).text,
             QStringLiteral("Jones, Bob"));
    QVERIFY(!IsEnabled(form, "AddStudentBtn"));
    // Nothing of the course itself has changed, so nothing is asked, and nothing was saved.
    gDialogResult = 7;
    form.reject();
    QCOMPARE(gDialogResult, 0);
}

void TestCourseScreens::RemovesStudents()
{
    const int course = School::AddCourse(QStringLiteral("Pottery"), 10, 2);
    for (const char *name : {"A", "B"})
        ADO_Course_EnrollStudent(course, School::AddPerson(QString::fromLatin1(name), QStringLiteral("P")));
    frmAddCourse form;
    form.EditCourse(course);
    form.show();
    ShowTab(form, 1);
    QVERIFY(!IsEnabled(form, "AddStudentBtn"));
    Press(form, QStringLiteral("RemBtn"));
    QCOMPARE(Find<ListView>(form, QStringLiteral("Students"))->Model().Count(), 1);
    QVERIFY(IsEnabled(form, "AddStudentBtn"));
    Press(form, QStringLiteral("RemBtn"));
    QVERIFY(TestDatabase::Rows(QStringLiteral("SELECT * FROM StudentsEnrolled")).isEmpty());
    QVERIFY(!IsEnabled(form, "RemBtn") && !IsEnabled(form, "InfoBtn"));
}

void TestCourseScreens::FollowsRights_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QChar>("level");
    QTest::addColumn<QString>("state"); // Title, Limit, Fee open; AddBtn, AddStudentBtn, RemBtn enabled
    QTest::newRow("all") << 48 << QChar(u'9') << "111111";
    QTest::newRow("edit") << 48 << QChar(u'3') << "111111";
    QTest::newRow("add only") << 48 << QChar(u'2') << "000000";
    QTest::newRow("view only") << 48 << QChar(u'1') << "000000";
    QTest::newRow("no fee") << 49 << QChar(u'3') << "110111";
    QTest::newRow("no students") << 52 << QChar(u'1') << "111100";
    QTest::newRow("students added only") << 52 << QChar(u'2') << "111110";
    QTest::newRow("students not removed") << 52 << QChar(u'3') << "111110";
}

void TestCourseScreens::FollowsRights()
{
    QFETCH(int, right);
    QFETCH(QChar, level);
    const int course = School::AddCourse(QStringLiteral("Pottery"), 10);
    ADO_Course_EnrollStudent(course, School::AddPerson(QStringLiteral("A"), QStringLiteral("P")));
    gUserRights[right] = level;
    frmAddCourse form;
    QVERIFY(form.EditCourse(course));
    QString state;
    for (const char *box : {"Title", "Limit", "Fee"})
        state += Find<QLineEdit>(form, QString::fromLatin1(box))->isReadOnly() ? u'0' : u'1';
    for (const char *button : {"AddBtn", "AddStudentBtn", "RemBtn"})
        state += IsEnabled(form, button) ? u'1' : u'0';
    QTEST(state, "state");
    QVERIFY(IsEnabled(form, "InfoBtn"));
}

void TestCourseScreens::LetsAddOnlyUsersAdd()
{
    gUserRights[48] = u'2';
    frmAddCourse form;
    form.NewCourse(QStringLiteral("!0"));
    form.show();
    TypeInto(form, QStringLiteral("Title"), QStringLiteral("Pottery"));
    Press(form, QStringLiteral("AddBtn"));
    QVERIFY(CourseOf(QStringLiteral("Pottery")) > 0);
    QVERIFY(!IsEnabled(form, "AddBtn"));
    form.reject();
    QVERIFY(!form.isVisible());
}

/// The database goes away: a box per failure, and everything typed is still there to be saved.
void TestCourseScreens::KeepsWorkOnAFailure()
{
    frmAddCourse form;
    form.NewCourse(QStringLiteral("!0"));
    form.show();
    TypeInto(form, QStringLiteral("Title"), QStringLiteral("Pottery"));
    gConnection.Close();
    gConnection.OpenRecordset(QStringLiteral("SELECT * FROM Courses"));
    const QString source = gConnection.Errors().first().source;
    {
        ScriptedDialogs dialogs;
        dialogs.Expect(source, failure);
        Press(form, QStringLiteral("AddBtn"));
    }
    QCOMPARE(BoxText(form, "Title"), QStringLiteral("Pottery"));
    QVERIFY(m_database->Reconnect());
    Press(form, QStringLiteral("AddBtn"));
    QVERIFY(CourseOf(QStringLiteral("Pottery")) > 0);

    // The row is changed, its folders are not: the form stays unsaved.
    TypeInto(form, QStringLiteral("Title"), QStringLiteral("Ceramics"));
    TestDatabase::Run({QStringLiteral("ALTER TABLE CoursesRelationships RENAME TO Gone")});
    {
        ScriptedDialogs dialogs;
        gConnection.OpenRecordset(QStringLiteral("SELECT * FROM CoursesRelationships"));
        dialogs.Expect(gConnection.Errors().first().source, failure);
        Press(form, QStringLiteral("AddBtn"));
        dialogs.Expect(QStringLiteral("Warning"),
                       QStringLiteral("Some of the data has changed.\nOkay to update before exiting?"),
                       Answer::Cancel);
        form.reject();
    }
    TestDatabase::Run({QStringLiteral("ALTER TABLE Gone RENAME TO CoursesRelationships")});
    Press(form, QStringLiteral("AddBtn"));
    form.reject();
    QVERIFY(!form.isVisible());
}

void TestCourseScreens::NoticesADeletedCourse()
{
    QList<int> courses;
    for (const char *title : {"A", "B", "C", "D"})
        courses += School::AddCourse(QString::fromLatin1(title), 0);
    frmCourse manager;
    manager.show();
    TestDatabase::Run({u"DELETE FROM Courses WHERE CourseRef IN (" % SqlNumber(courses[1]) % u',' %
                       SqlNumber(courses[2]) % u')'});
    ScriptedDialogs dialogs;
    dialogs.Expect(QStringLiteral("Courses"), QStringLiteral("Course has been deleted."));
    dialogs.Expect(QStringLiteral("Courses"), QStringLiteral("Course has been deleted."));
    SelectCourse(manager, courses[1]);
    QCOMPARE(Titles(manager), QStringList({QStringLiteral("A"), QStringLiteral("D")}));
    QCOMPARE(Find<QLabel>(manager, QStringLiteral("StatBar"))->text(), QStringLiteral("D (Course)"));

    // A database that cannot be asked is no reason to call courses deleted.
    TestDatabase::Run({QStringLiteral("ALTER TABLE Courses RENAME TO Gone")});
    gConnection.OpenRecordset(QStringLiteral("SELECT * FROM Courses"));
    dialogs.Expect(gConnection.Errors().first().source, failure);
    SelectCourse(manager, courses[0]);
    QCOMPARE(Titles(manager).size(), 2);
}

void TestCourseScreens::AsksBeforeItDeletes()
{
    const int a = School::AddCourse(QStringLiteral("A's"), 0);
    School::AddCourse(QStringLiteral("B"), 0);
    frmCourse manager;
    manager.show();
    ScriptedDialogs dialogs;
    const QString question = QStringLiteral("Okay to delete course 'A's'");
    dialogs.Expect(QStringLiteral("Confirm Deletion"), question, Answer::No);
    Press(manager, QStringLiteral("DelBtn"));
    QCOMPARE(Titles(manager).size(), 2);
    dialogs.Expect(QStringLiteral("Confirm Deletion"), question, Answer::Yes);
    Press(manager, QStringLiteral("DelBtn"));
    QCOMPARE(Titles(manager), QStringList(QStringLiteral("B")));
    QCOMPARE(Find<QLabel>(manager, QStringLiteral("StatBar"))->text(), QStringLiteral("B (Course)"));
    QCOMPARE(TestDatabase::Rows(u"SELECT * FROM Courses WHERE CourseRef = " % SqlNumber(a)).size(), 0);
    dialogs.Expect(QStringLiteral("Confirm Deletion"), QStringLiteral("Okay to delete course 'B'"),
                   Answer::Yes);
    Press(manager, QStringLiteral("DelBtn"));
    QVERIFY(Find<QLabel>(manager, QStringLiteral("StatBar"))->text().isEmpty());
    QVERIFY(!IsEnabled(manager, "EditBtn") && !IsEnabled(manager, "DelBtn"));
}

void TestCourseScreens::FollowsRightsInTheManager_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QChar>("level");
    QTest::addColumn<QString>("state"); // AddBtn, EditBtn, DelBtn, RepBtn
    QTest::newRow("all") << 48 << QChar(u'9') << "1111";
    QTest::newRow("edit") << 48 << QChar(u'3') << "1101";
    QTest::newRow("add") << 48 << QChar(u'2') << "1101";
    QTest::newRow("view") << 48 << QChar(u'1') << "0101";
    QTest::newRow("nothing") << 48 << QChar(u'0') << "0001";
    QTest::newRow("no reports") << 47 << QChar(u'3') << "1110";
}

void TestCourseScreens::FollowsRightsInTheManager()
{
    QFETCH(int, right);
    QFETCH(QChar, level);
    School::AddCourse(QStringLiteral("Pottery"), 0);
    gUserRights[right] = level;
    frmCourse manager;
    QString state;
    for (const char *button : {"AddBtn", "EditBtn", "DelBtn", "RepBtn"})
        state += IsEnabled(manager, button) ? u'1' : u'0';
    QTEST(state, "state");
    for (const char *later : {"AddCat", "ExpandBtn", "CollaspeBtn"})
        QVERIFY(!IsEnabled(manager, later));
    // Who logs on next has other rights.
    gUserRights = RightsBlank();
    manager.Form_Refresh();
    QVERIFY(IsEnabled(manager, "AddBtn") && IsEnabled(manager, "RepBtn"));
}

QTEST_MAIN(TestCourseScreens)
#include "test_course_screens.moc"
