#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "courses/CourseModule.h"
#include "enrolment/School.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"

#include <QTest>

namespace
{
class FakeCourseView final : public CourseView
{
public:
    void ShowRecord(const CourseRecord &record) override { shown = record; }
    ListModel &UsedCharacteristics() override { return used; }

    CourseRecord shown;
    ListModel used;
};

CourseRecord Course(const QString &title, const QString &reference, int courseRef = 0)
{
    return {courseRef, title, reference, QStringLiteral("It's 50%"), 99.5, 12};
}

/// A tree as one line: each node with its depth in dots, its tick and its key.
QString Drawn(const TreeModel &tree)
{
    QStringList lines;
    for (const TreeNode *node : tree.Nodes()) {
        QString depth;
        for (const TreeNode *at = node->parent; at->parent; at = at->parent)
            depth += u'.';
        lines += depth % node->text % (node->tick == TreeTick::On ? u"*" : u"") % node->key;
    }
    return lines.join(u' ');
}

int AddFolder(const QString &label, int parent)
{
    TestDatabase::Run({u"INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('" % label % u"'," %
                       SqlNumber(parent) % u",'')"});
    return School::LastKey(QStringLiteral("CoursesHierarchy"), QStringLiteral("HRef"));
}

const QStringList courseTables = {QStringLiteral("CourseExams"),      QStringLiteral("StudentExams"),
                                  QStringLiteral("StaffEmployed"),    QStringLiteral("FacilitiesEmployed"),
                                  QStringLiteral("VenuesEmployed"),   QStringLiteral("AttendanceRecord"),
                                  QStringLiteral("StudentsEnrolled"), QStringLiteral("CourseVenues"),
                                  QStringLiteral("CourseFacilities"), QStringLiteral("CourseStaff"),
                                  QStringLiteral("CourseEvents"),     QStringLiteral("CoursesRelationships"),
                                  QStringLiteral("CourseChar"),       QStringLiteral("Courses")};
} // namespace

class TestCourses final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    void Story();
    void TellsDuplicates_data();
    void TellsDuplicates();
    void AddsByExactStatements();
    void DeletesInFourteenSteps();
    void StopsAHalfDeletion();
    void ReplacesCharacteristics();
    void LinksToFolders();
    void ListsFolders();
    void ListsCourses();

private:
    std::unique_ptr<TestDatabase> m_database;
};

void TestCourses::Story()
{
    const int course = Course_Add(Course(QStringLiteral("O'Neil's `Craft`"), QStringLiteral("C'1")));
    QVERIFY(course > 0);
    QVERIFY(ADO_Course_CheckCourse(course));
    FakeCourseView view;
    QVERIFY(ADO_Course_ShowCourse(view, course));
    QCOMPARE(view.shown.title, QStringLiteral("O'Neil's ``Craft``"));
    QCOMPARE(view.shown.fee, 99.5);
    QCOMPARE(view.shown.limit, 12);

    CourseRecord changed = Course(QStringLiteral("Craft"), QStringLiteral("C'1"), course);
    changed.fee = 0.1;
    QCOMPARE(Course_Update(changed), course);
    QCOMPARE(Course_Rename(QStringLiteral("Crafts"), course), course);
    QCOMPARE(TestDatabase::Rows(QStringLiteral("SELECT Title,Fee,ReferenceID FROM Courses")),
             QStringList(QStringLiteral("Crafts|0.1|C'1")));
    QCOMPARE(ADO_Course_Description(course), std::optional<QString>(QStringLiteral("It's 50%")));

    QVERIFY(ADO_Course_DeleteCourse(course));
    QVERIFY(!ADO_Course_CheckCourse(course));
    QVERIFY(!ADO_Course_Description(course));
    QVERIFY(!ADO_Course_ShowCourse(view, course));
}

void TestCourses::TellsDuplicates_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("reference");
    QTest::addColumn<bool>("maySave");
    QTest::addColumn<bool>("mayRename");
    // Pottery A, Pottery B and Spanish A stand; Spanish A is changed.
    QTest::newRow("its own title") << "Spanish"
                                   << "A" << true << true;
    QTest::newRow("its own title in capitals") << "SPANISH"
                                               << "A" << true << true;
    QTest::newRow("a new title") << "French"
                                 << "A" << true << true;
    QTest::newRow("another's title and reference") << "Pottery"
                                                   << "A" << false << false;
    QTest::newRow("the same in capitals") << "POTTERY"
                                          << "a" << false << false;
    QTest::newRow("another's title alone") << "Pottery"
                                           << "C" << true << false;
}

void TestCourses::TellsDuplicates()
{
    QFETCH(QString, title);
    QFETCH(QString, reference);
    QFETCH(bool, maySave);
    QFETCH(bool, mayRename);
    for (const char *other : {"A", "B"})
        QVERIFY(Course_Add(Course(QStringLiteral("Pottery"), QString::fromLatin1(other))) > 0);
    const int spanish = Course_Add(Course(QStringLiteral("Spanish"), QStringLiteral("A")));

    ScriptedDialogs dialogs;
    const QString exists = QStringLiteral("Course already exists in database.");
    if (!mayRename)
        dialogs.Expect(QStringLiteral("Rename Course"), QStringLiteral("Course with this name already."));
    QCOMPARE(Course_Rename(title, spanish), mayRename ? spanish : 0);
    if (!maySave)
        dialogs.Expect(QStringLiteral("Update Course"), exists);
    QCOMPARE(Course_Update(Course(title, reference, spanish)), maySave ? spanish : 0);
    dialogs.Expect(QStringLiteral("Add Course"), exists);
    QCOMPARE(Course_Add(Course(QStringLiteral("Pottery"), QStringLiteral("B"))), 0);
}

void TestCourses::AddsByExactStatements()
{
    const StatementLog log;
    const int course = Course_Add(Course(QStringLiteral("A'b"), QStringLiteral("1")));
    Course_Update(Course(QStringLiteral("A'b"), QStringLiteral("1"), course));
    Course_Rename(QStringLiteral("C"), course);
    const QString ref = SqlNumber(course);
    QCOMPARE(
        log.Statements(),
        QStringList({QStringLiteral("SELECT * FROM Courses WHERE Title = 'A''b' AND ReferenceID ='1'"),
                     QStringLiteral("INSERT INTO Courses (Title, Description,Fee,Limit,ReferenceID) VALUES "
                                    "('A''b','It''s 50%',99.5,12,'1')"),
                     QStringLiteral("SELECT * FROM Courses WHERE Title = 'A''b' AND ReferenceID = '1'"),
                     u"SELECT * FROM Courses WHERE Title = 'A''b' AND CourseRef <> " % ref %
                         u" AND ReferenceID = '1'",
                     u"UPDATE Courses SET Title = 'A''b', Description = 'It''s 50%', Fee = 99.5, Limit = 12, "
                     u"ReferenceID = '1' WHERE CourseRef = " %
                         ref,
                     u"SELECT * FROM Courses WHERE Title = 'C' AND CourseRef <> " % ref,
                     u"UPDATE Courses SET Title = 'C' WHERE CourseRef = " % ref}));
}

/// One row of the course in every table goes; another course's rows and the payments stay.
void TestCourses::DeletesInFourteenSteps()
{
    const QStringList outlive = {QStringLiteral("Transactions"), QStringLiteral("CreditCardTransaction"),
                                 QStringLiteral("WaitingList")};
    const int course = Course_Add(Course(QStringLiteral("A"), {}));
    const int other = Course_Add(Course(QStringLiteral("B"), {}));
    for (const QString &table : courseTables.mid(0, 13) + outlive) {
        for (const int ref : {course, other})
            TestDatabase::Run({u"INSERT INTO " % table % u" (CourseRef) VALUES (" % SqlNumber(ref) % u')'});
    }
    {
        const StatementLog log;
        QVERIFY(ADO_Course_DeleteCourse(course));
        QStringList expected;
        for (const QString &table : courseTables)
            expected += u"DELETE FROM " % table % u" WHERE CourseRef = " % SqlNumber(course);
        QCOMPARE(log.Statements(), expected);
    }
    for (const QString &table : courseTables)
        QCOMPARE(TestDatabase::Rows(u"SELECT CourseRef FROM " % table), QStringList(SqlNumber(other)));
    for (const QString &table : outlive)
        QCOMPARE(TestDatabase::Rows(u"SELECT CourseRef FROM " % table).size(), 2);
}

void TestCourses::StopsAHalfDeletion()
{
    const int course = Course_Add(Course(QStringLiteral("A"), {}));
    const QString ref = SqlNumber(course);
    TestDatabase::Run({u"INSERT INTO CourseExams (CourseRef) VALUES (" % ref % u')',
                       QStringLiteral("DROP TABLE CourseStaff")});
    gConnection.OpenRecordset(QStringLiteral("SELECT * FROM CourseStaff"));
    ScriptedDialogs dialogs;
    dialogs.Expect(gConnection.Errors().first().source,
                   QStringLiteral("A number of errors have been detected, please seek technical support."));
    QVERIFY(!ADO_Course_DeleteCourse(course));
    QVERIFY(ADO_Course_CheckCourse(course));
    QVERIFY(TestDatabase::Rows(QStringLiteral("SELECT CourseRef FROM CourseExams")).isEmpty());
}

void TestCourses::ReplacesCharacteristics()
{
    ListModel list;
    list.Fill({{QStringLiteral("?7"), {}}, {QStringLiteral("!9"), {}}});
    QVERIFY(ADO_Course_UpdateConcessions(3, list));
    QVERIFY(ADO_Course_UpdateConcessions(3, list));
    QCOMPARE(TestDatabase::Rows(QStringLiteral("SELECT * FROM CourseChar ORDER BY ConcessionRef")),
             QStringList({QStringLiteral("3|7"), QStringLiteral("3|9")}));
    FakeCourseView view;
    const int course = Course_Add(Course(QStringLiteral("A"), {}));
    QVERIFY(ADO_Course_UpdateConcessions(course, list));
    ADO_Course_ShowCourse(view, course);
    QCOMPARE(view.used.Count(), 2);
    QVERIFY(view.used.Contains(QStringLiteral("?9")));
}

void TestCourses::LinksToFolders()
{
    const auto links = [] {
        return TestDatabase::Rows(
            QStringLiteral("SELECT CourseHierarchyRef FROM CoursesRelationships WHERE CourseRef = 5 ORDER BY "
                           "CourseHierarchyRef"));
    };
    QVERIFY(ADO_Course_AddCourseRelations(5, 1));
    QVERIFY(!ADO_Course_AddCourseRelations(5, 1));
    TreeModel tree;
    AddFolder(QStringLiteral("One"), 0);
    const int two = AddFolder(QStringLiteral("Two"), 0);
    ADO_Course_ShowFolders(tree, true, true);
    ADO_Course_ShowCourseRelations(5, tree);
    QCOMPARE(Drawn(tree), QStringLiteral("Root Level!0 .One*!1 .Two!2"));

    tree.SetTick(tree.Find(QStringLiteral("!0")), TreeTick::On);
    tree.SetTick(tree.Find(u'!' % SqlNumber(two)), TreeTick::On);
    QVERIFY(ADO_Course_UpdateCourseRelations(5, tree));
    QCOMPARE(links(), QStringList({QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}));
    ADO_Course_ShowFolders(tree, true, true);
    QVERIFY(ADO_Course_UpdateCourseRelations(5, tree));
    QCOMPARE(links(), QStringList(QStringLiteral("0")));
}

/// The engine may give children before their parents; a folder whose parent is gone is reported.
void TestCourses::ListsFolders()
{
    const int late = AddFolder(QStringLiteral("Late"), 0);
    const int child = AddFolder(QStringLiteral("Child"), late + 3);
    const int grandchild = AddFolder(QStringLiteral("Grandchild"), child);
    QCOMPARE(AddFolder(QStringLiteral("Early"), 0), late + 3);
    TreeModel tree;
    ADO_Course_ShowFolders(tree, false, false);
    QCOMPARE(Drawn(tree), QString(u"Early!" % SqlNumber(late + 3) % u" .Child!" % SqlNumber(child) %
                                  u" ..Grandchild!" % SqlNumber(grandchild) % u" Late!" % SqlNumber(late)));
    QCOMPARE(tree.Find(u'!' % SqlNumber(child))->image, QStringLiteral("closed"));
    QCOMPARE(tree.Find(u'!' % SqlNumber(late))->image, QStringLiteral("rootclosed"));

    AddFolder(QStringLiteral("Lost"), 999);
    ScriptedDialogs dialogs;
    dialogs.Expect(QStringLiteral("Veltrane"),
                   QStringLiteral("A number of errors have been detected, please seek technical support."));
    ADO_Course_ShowFolders(tree, false, false);
    QCOMPARE(tree.Count(), 4);
}

/// A tree heals a course without a link; a flat list asks for no links at all.
void TestCourses::ListsCourses()
{
    const int folder = AddFolder(QStringLiteral("F"), 0);
    const int b = School::AddCourse(QStringLiteral("B"), 0);
    const int a = School::AddCourse(QStringLiteral("A"), 0);
    ADO_Course_AddCourseRelations(b, folder);
    ADO_Course_AddCourseRelations(b, 0);
    const QString keyA = u'?' % SqlNumber(a);
    const QString keyB = u'?' % SqlNumber(b);
    TreeModel tree;
    {
        const StatementLog log;
        ADO_Course_FillCourseList(tree, true, false);
        QCOMPARE(log.Statements(), QStringList(QStringLiteral("SELECT * FROM Courses ORDER BY Title ASC")));
    }
    QCOMPARE(Drawn(tree), QString(u'A' % keyA % u" B" % keyB));
    QCOMPARE(tree.Selected()->key, keyA);

    for (int twice = 0; twice < 2; ++twice) {
        ADO_Course_ShowFolders(tree, false, false);
        ADO_Course_FillCourseList(tree, false, false);
        QCOMPARE(Drawn(tree), QString(u"F!1 .B" % keyB % u"!1 A" % keyA % u" B" % keyB));
        QCOMPARE(TestDatabase::Rows(QStringLiteral("SELECT * FROM CoursesRelationships")).size(), 3);
    }
    const int c = School::AddCourse(QStringLiteral("C"), 0);
    ADO_Course_AddCourseRelations(c, folder);
    ADO_Course_NewCourseToList(tree, c, QStringLiteral("C"));
    QCOMPARE(tree.Find(u'?' % SqlNumber(c) % u"!1")->parent->text, QStringLiteral("F"));
}

QTEST_GUILESS_MAIN(TestCourses)
#include "test_courses.moc"
