#include "contacts/Keyboard.h"
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
const QString failure = "A number of errors have been detected, please seek technical support.";

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
    Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(tab);
}

QStringList Titles(QWidget &form)
{
    QStringList titles;
    for (const TreeNode *node : Find<TreeView>(form, "CourseList")->Model().Nodes())
        titles += node->text;
    return titles;
}

void SelectCourse(QWidget &form, int courseRef)
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
    void init();
    void cleanup() { m_database.reset(); }

    void Story();
    void KeyboardAlone();
    void TellsADuplicate();
    void RulesFeeAndLimit_data();
    void RulesFeeAndLimit();
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

/// From the Course Manager: a new course in two folders, then a new title.
void TestCourseScreens::Story()
{
    TestDatabase::Run({"INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('Arts',0,'')"});
    School::AddCourse("Anatomy", 10);
    frmCourse manager;
    manager.show();
    QCOMPARE(Titles(manager), QStringList("Anatomy"));

    ModalDriver driver;
    driver.Expect("frmAddCourse", [](QDialog &form) {
        QVERIFY(!Find<QTabWidget>(form, "TabStrip1")->isTabEnabled(1));
        TypeInto(form, "Title", "Pottery's");
        TypeInto(form, "CourseDescript", "Clay & 100% fun");
        TypeInto(form, "Fee", "80");
        auto *folders = Find<TreeView>(form, "CatList");
        TreeModel &tree = folders->Model();
        QCOMPARE(tree.Find("!0")->tick, TreeTick::On);
        emit folders->TickAsked(tree.Find("!1"));
        Press(form, "AddBtn");
        QCOMPARE(Find<QPushButton>(form, "AddBtn")->text(), u"&Update Course"_qs);
        Press(form, "ExitBtn");
    });
    Press(manager, "AddBtn");
    QCOMPARE(Titles(manager), QStringList({"Anatomy", "Pottery's"}));
    QCOMPARE(Find<QPlainTextEdit>(manager, "Description")->toPlainText(), u"Clay & 100% fun"_qs);
    QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"Pottery's (Course)"_qs);
    QCOMPARE(
        TestDatabase::Rows("SELECT CourseHierarchyRef FROM CoursesRelationships ORDER BY CourseHierarchyRef"),
        QStringList({"0", "1"}));

    driver.Expect("frmAddCourse", [](QDialog &form) {
        TypeInto(form, "Title", "Ceramics");
        ScriptedDialogs dialogs;
        dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?",
                       Answer::Yes);
        Press(form, "ExitBtn");
    });
    Press(manager, "EditBtn");
    QCOMPARE(Titles(manager), QStringList({"Anatomy", "Ceramics"}));
    QCOMPARE(TestDatabase::Rows("SELECT * FROM CoursesRelationships").size(), 2);
    Press(manager, "RefBtn");
    QCOMPARE(Titles(manager), QStringList({"Anatomy", "Ceramics"}));
}

/// A course in a folder, a student and a payment, without a mouse.
void TestCourseScreens::KeyboardAlone()
{
    TestDatabase::Run({"INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('Arts',0,'')"});
    School::AddPerson("Ada", "Lovelace");
    ModalDriver driver;
    driver.Expect("frmSelectContacts", [](QDialog &picker) {
        const Keyboard keys(picker);
        keys.TypeAt("SearchBox", "love");
        keys.Press(Qt::Key_Return);
        keys.Alt(Qt::Key_X);
    });
    driver.Expect("frmStudentInfo", [](QDialog &payment) {
        const Keyboard keys(payment);
        keys.TypeAt("Payment", "80");
        keys.Alt(Qt::Key_U);
    });
    frmAddCourse form;
    form.NewCourse("!0");
    const Keyboard keys(form);
    keys.TypeAt("Title", "Pottery");
    keys.TypeAt("Fee", "80");
    keys.TabTo("CatList");
    keys.Press(Qt::Key_Home);
    keys.Press(Qt::Key_Space);
    keys.Press(Qt::Key_Down);
    keys.Press(Qt::Key_Space);
    keys.Alt(Qt::Key_A);
    QCOMPARE(TestDatabase::Rows("SELECT CourseHierarchyRef FROM CoursesRelationships"), QStringList("1"));
    keys.Press(Qt::Key_Tab, Qt::ControlModifier);
    keys.Alt(Qt::Key_S);
    keys.TabTo("Students");
    keys.Press(Qt::Key_Return);
    QCOMPARE(TestDatabase::Rows("SELECT MoneyPaid FROM Transactions"), QStringList("80"));
    keys.Press(Qt::Key_Escape);
    QVERIFY(!form.isVisible());
}

void TestCourseScreens::TellsADuplicate()
{
    School::AddCourse("Pottery", 10);
    frmAddCourse form;
    form.NewCourse("!0");
    form.show();
    TypeInto(form, "Title", "pottery");
    ScriptedDialogs dialogs;
    dialogs.Expect("Add Course", "Course already exists in database.");
    Press(form, "AddBtn");
    QCOMPARE(BoxText(form, "Title"), u"pottery"_qs);
    TypeInto(form, "RefName", "2");
    Press(form, "AddBtn");
    gDialogResult = 0;
    form.reject();
    QVERIFY(gDialogResult > 0);
    QCOMPARE(TestDatabase::Rows("SELECT * FROM Courses").size(), 2);
}

void TestCourseScreens::RulesFeeAndLimit_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("mayAdd");
    QTest::newRow("fee") << u"Fee"_qs << u"80.5"_qs << u"80.50"_qs << true;
    QTest::newRow("fee of no digits") << u"Fee"_qs << u"abc"_qs << u"0.00"_qs << true;
    QTest::newRow("a long fee") << u"Fee"_qs << u"123456789"_qs << u"12,345,678.00"_qs << true;
    QTest::newRow("a long fee with its point") << u"Fee"_qs << u"123456.789"_qs << u"123,456.78"_qs << true;
    QTest::newRow("no limit") << u"Limit"_qs << u"0"_qs << u"0"_qs << true;
    QTest::newRow("limit cleared") << u"Limit"_qs << u""_qs << u"0"_qs << true;
    QTest::newRow("limit below the enrolled") << u"Limit"_qs << u"1"_qs << u"2"_qs << false;
    QTest::newRow("limit just reached") << u"Limit"_qs << u"2"_qs << u"2"_qs << false;
    QTest::newRow("limit above") << u"Limit"_qs << u"3x"_qs << u"3"_qs << true;
}

void TestCourseScreens::RulesFeeAndLimit()
{
    QFETCH(QString, box);
    QFETCH(QString, typed);
    const int course = School::AddCourse("Pottery", 10);
    for (const char *name : {"A", "B"})
        ADO_Course_EnrollStudent(course, School::AddPerson(QString::fromLatin1(name), "P"));
    frmAddCourse form;
    QVERIFY(form.EditCourse(course));
    form.show();
    TypeInto(form, box, typed);
    QTest::keyClick(Find<QWidget>(form, box), Qt::Key_Return);
    QTEST(Find<QLineEdit>(form, box)->text(), "shown");
    QTEST(IsEnabled(form, "AddStudentBtn"), "mayAdd");
}

void TestCourseScreens::RemovesStudents()
{
    const int course = School::AddCourse("Pottery", 10, 2);
    for (const char *name : {"A", "B"})
        ADO_Course_EnrollStudent(course, School::AddPerson(QString::fromLatin1(name), "P"));
    frmAddCourse form;
    form.EditCourse(course);
    form.show();
    ShowTab(form, 1);
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
        dialogs.Expect("Course Enrollment",
                       "This Course has a max limit of 2 enrollments.\nPlease remove some and try again.");
        Press(picker, "ExitBtn");
        picker.reject();
    });
    School::AddPerson("C", "P");
    Press(form, "AddStudentBtn");
    Press(form, "RemBtn");
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

void TestCourseScreens::FollowsRights_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QChar>("level");
    QTest::addColumn<QString>("state"); // Title, Limit, Fee open; AddBtn, AddStudentBtn, RemBtn enabled
    QTest::newRow("all") << 48 << QChar(u'9') << u"111111"_qs;
    QTest::newRow("edit") << 48 << QChar(u'3') << u"111111"_qs;
    QTest::newRow("add only") << 48 << QChar(u'2') << u"000000"_qs;
    QTest::newRow("view only") << 48 << QChar(u'1') << u"000000"_qs;
    QTest::newRow("no fee") << 49 << QChar(u'3') << u"110111"_qs;
    QTest::newRow("no students") << 52 << QChar(u'1') << u"111100"_qs;
    QTest::newRow("students added only") << 52 << QChar(u'2') << u"111110"_qs;
    QTest::newRow("students not removed") << 52 << QChar(u'3') << u"111110"_qs;
}

void TestCourseScreens::FollowsRights()
{
    QFETCH(int, right);
    QFETCH(QChar, level);
    const int course = School::AddCourse("Pottery", 10);
    ADO_Course_EnrollStudent(course, School::AddPerson("A", "P"));
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
void TestCourseScreens::KeepsWorkOnAFailure()
{
    frmAddCourse form;
    form.NewCourse("!0");
    form.show();
    TypeInto(form, "Title", "Pottery");
    gConnection.Close();
    gConnection.OpenRecordset("SELECT * FROM Courses");
    const QString source = gConnection.Errors().first().source;
    {
        ScriptedDialogs dialogs;
        dialogs.Expect(source, failure);
        Press(form, "AddBtn");
    }
    QCOMPARE(BoxText(form, "Title"), u"Pottery"_qs);
    QVERIFY(m_database->Reconnect());
    Press(form, "AddBtn");
    QVERIFY(CourseOf("Pottery") > 0);

    // The row is changed, its folders are not: the form stays unsaved.
    TypeInto(form, "Title", "Ceramics");
    TestDatabase::Run({"ALTER TABLE CoursesRelationships RENAME TO Gone"});
    {
        ScriptedDialogs dialogs;
        gConnection.OpenRecordset("SELECT * FROM CoursesRelationships");
        dialogs.Expect(gConnection.Errors().first().source, failure);
        Press(form, "AddBtn");
        dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?",
                       Answer::Cancel);
        form.reject();
    }
    TestDatabase::Run({"ALTER TABLE Gone RENAME TO CoursesRelationships"});
    Press(form, "AddBtn");
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
    dialogs.Expect("Courses", "Course has been deleted.");
    dialogs.Expect("Courses", "Course has been deleted.");
    SelectCourse(manager, courses[1]);
    QCOMPARE(Titles(manager), QStringList({"A", "D"}));
    QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"D (Course)"_qs);

    // A database that cannot be asked is no reason to call courses deleted.
    TestDatabase::Run({"ALTER TABLE Courses RENAME TO Gone"});
    gConnection.OpenRecordset("SELECT * FROM Courses");
    dialogs.Expect(gConnection.Errors().first().source, failure);
    SelectCourse(manager, courses[0]);
    QCOMPARE(Titles(manager).size(), 2);
}

void TestCourseScreens::AsksBeforeItDeletes()
{
    const int a = School::AddCourse("A's", 0);
    School::AddCourse("B", 0);
    frmCourse manager;
    manager.show();
    ScriptedDialogs dialogs;
    const QString question = "Okay to delete course 'A's'";
    dialogs.Expect("Confirm Deletion", question, Answer::No);
    Press(manager, "DelBtn");
    QCOMPARE(Titles(manager).size(), 2);
    dialogs.Expect("Confirm Deletion", question, Answer::Yes);
    Press(manager, "DelBtn");
    QCOMPARE(Titles(manager), QStringList("B"));
    QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"B (Course)"_qs);
    QCOMPARE(TestDatabase::Rows(u"SELECT * FROM Courses WHERE CourseRef = " % SqlNumber(a)).size(), 0);
    dialogs.Expect("Confirm Deletion", "Okay to delete course 'B'", Answer::Yes);
    Press(manager, "DelBtn");
    QVERIFY(Find<QLabel>(manager, "StatBar")->text().isEmpty());
    QVERIFY(!IsEnabled(manager, "EditBtn") && !IsEnabled(manager, "DelBtn"));
}

void TestCourseScreens::FollowsRightsInTheManager_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QChar>("level");
    QTest::addColumn<QString>("state"); // AddBtn, EditBtn, DelBtn, RepBtn
    QTest::newRow("all") << 48 << QChar(u'9') << u"1111"_qs;
    QTest::newRow("edit") << 48 << QChar(u'3') << u"1101"_qs;
    QTest::newRow("add") << 48 << QChar(u'2') << u"1101"_qs;
    QTest::newRow("view") << 48 << QChar(u'1') << u"0101"_qs;
    QTest::newRow("nothing") << 48 << QChar(u'0') << u"0001"_qs;
    QTest::newRow("no reports") << 47 << QChar(u'3') << u"1110"_qs;
}

void TestCourseScreens::FollowsRightsInTheManager()
{
    QFETCH(int, right);
    QFETCH(QChar, level);
    School::AddCourse("Pottery", 0);
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
