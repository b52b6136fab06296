#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "courses/FolderTreeText.h"
#include "courses/record/CourseModule.h"
#include "enrolment/School.h"
#include "support/ScriptedDialogs.h"
#include "support/SeenElsewhere.h"
#include "support/StatementLog.h"
#include "support/TestTable.h"

#include <QTest>

namespace
{
CourseRecord Course(const QString &title, const QString &reference, CourseRef courseRef = {})
{
    return {courseRef, title, reference, "It's 50%", 99.5, 12};
}

int AddFolder(const QString &label, int parent)
{
    TestDatabase::Run({u"INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('" % label % u"'," %
                       SqlNumber(parent) % u",'')"});
    return School::LastKey("CoursesHierarchy", "HRef");
}

const QStringList courseTables = {"CourseExams",        "StudentExams",   "StaffEmployed",
                                  "FacilitiesEmployed", "VenuesEmployed", "AttendanceRecord",
                                  "StudentsEnrolled",   "CourseVenues",   "CourseFacilities",
                                  "CourseStaff",        "CourseEvents",   "CoursesRelationships",
                                  "CourseChar",         "Courses"};
/// Writes a course as a screen does that holds nothing but its row.
int Update(CourseRecord course)
{
    ListModel characteristics;
    TreeModel folders;
    CourseResources resources;
    FieldValues unknown;
    return Course_Update(course, {characteristics, folders, resources}, unknown, [] { return true; });
}
} // namespace

class TestCourses final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    void Story()
    {
        const CourseRef course(Course_Add(Course("O'Neil's `Craft`", "C'1")));
        QVERIFY(course);
        QVERIFY(ADO_Course_CheckCourse(course));
        const ReadRow<CourseFile> shown = ADO_Course_ShowCourse(course);
        QCOMPARE(shown->course.title, u"O'Neil's ``Craft``"_qs);
        QCOMPARE(shown->course.fee, 99.5);
        QCOMPARE(shown->course.limit, 12);

        CourseRecord changed = Course("Craft", "C'1", course);
        changed.fee = 0.1;
        QCOMPARE(CourseRef(Update(changed)), course);
        QCOMPARE(CourseRef(Course_Rename("Crafts", course)), course);
        QCOMPARE(TestDatabase::Rows("SELECT Title,Fee,ReferenceID FROM Courses"),
                 QStringList("Crafts|0.1|C'1"));
        QCOMPARE(ADO_Course_Description(course), std::optional<QString>("It's 50%"));

        QVERIFY(ADO_Course_DeleteCourse(course));
        QVERIFY(!ADO_Course_CheckCourse(course));
        QVERIFY(!ADO_Course_Description(course));
        QVERIFY(ADO_Course_ShowCourse(course).IsMissing());
    }

    void TellsDuplicates_data()
    {
        const TestTable<QString, QString, bool, bool> row{"title", "reference", "maySave", "mayRename"};
        // Pottery A, Pottery B and Spanish A exist; Spanish A is changed.
        row("its own title", "Spanish", "A", true, true);
        row("its own title in capitals", "SPANISH", "A", true, true);
        row("a new title", "French", "A", true, true);
        row("another's title and reference", "Pottery", "A", false, false);
        row("the same in capitals", "POTTERY", "a", false, false);
        row("another's title alone", "Pottery", "C", true, false);
    }
    void TellsDuplicates()
    {
        QFETCH(QString, title);
        QFETCH(QString, reference);
        QFETCH(bool, maySave);
        QFETCH(bool, mayRename);
        for (const char *other : {"A", "B"})
            QVERIFY(Course_Add(Course("Pottery", QString::fromLatin1(other))) > 0);
        const CourseRef spanish(Course_Add(Course("Spanish", "A")));

        ScriptedDialogs dialogs;
        const QString exists = "Course already exists in database.";
        if (!mayRename)
            dialogs.Expect("Rename Course", "Course with this name already.");
        QCOMPARE(Course_Rename(title, spanish), mayRename ? spanish.number : 0);
        if (!maySave)
            dialogs.Expect("Update Course", exists);
        QCOMPARE(Update(Course(title, reference, spanish)), maySave ? spanish.number : 0);
        dialogs.Expect("Add Course", exists);
        QCOMPARE(Course_Add(Course("Pottery", "B")), 0);
    }

    /// One row of the course in every table goes; another course's rows and the payments stay.
    void DeletesInFourteenSteps()
    {
        const QStringList outlive = {"Transactions", "CreditCardTransaction", "WaitingList"};
        const CourseRef course(Course_Add(Course("A", {})));
        const CourseRef other(Course_Add(Course("B", {})));
        for (const QString &table : courseTables.mid(0, 13) + outlive) {
            for (const CourseRef ref : {course, other})
                TestDatabase::Run(
                    {u"INSERT INTO " % table % u" (CourseRef) VALUES (" % SqlNumber(ref) % u')'});
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

    void StopsAHalfDeletion()
    {
        const CourseRef course(Course_Add(Course("A", {})));
        const QString ref = SqlNumber(course);
        TestDatabase::Run(
            {u"INSERT INTO CourseExams (CourseRef) VALUES (" % ref % u')', "DROP TABLE CourseStaff"});
        ScriptedDialogs dialogs;
        dialogs.ExpectFailure();
        QVERIFY(!ADO_Course_DeleteCourse(course));
        QVERIFY(ADO_Course_CheckCourse(course));
        QVERIFY(TestDatabase::Rows("SELECT CourseRef FROM CourseExams").isEmpty());
    }

    void ReplacesCharacteristics()
    {
        ListModel list;
        list.Fill({{"?7", {}}, {"!9", {}}});
        QVERIFY(ADO_Course_UpdateConcessions(CourseRef(3), list));
        QVERIFY(ADO_Course_UpdateConcessions(CourseRef(3), list));
        QCOMPARE(TestDatabase::Rows("SELECT * FROM CourseChar ORDER BY ConcessionRef"),
                 QStringList({"3|7", "3|9"}));
        const CourseRef course(Course_Add(Course("A", {})));
        QVERIFY(ADO_Course_UpdateConcessions(course, list));
        const auto used = ADO_Course_ShowCourse(course)->characteristics;
        QCOMPARE(used, QStringList({"!7", "!9"}));
    }

    /// Another workstation sees the course of before until it can see all of the one after.
    void StoredAndDeletedInOnePiece()
    {
        ListModel list;
        list.Fill({{"?7", {}}, {"?9", {}}});
        const auto save = [&list](CourseRecord record) {
            TreeModel folders;
            CourseResources resources;
            FieldValues unknown;
            Progress progress;
            return Course_Save(record, {list, folders, resources}, unknown, progress);
        };
        const CourseRef course(save(Course("A", {})).key);
        QVERIFY(save(Course("A", {}, course)).isWhole);
        const auto seen = [&](const QString &table, auto &&work) {
            return SeenElsewhere(
                *m_database, u"SELECT COUNT(*) FROM " % table % u" WHERE CourseRef = " % SqlNumber(course),
                work);
        };
        list.Remove(0);
        const auto store = [&] { QVERIFY(save(Course("B", {}, course)).isWhole); };
        QCOMPARE(seen("CourseChar", store), QSet<QString>{"2"});
        QCOMPARE(seen("CoursesRelationships", store), QSet<QString>{"1"});
        const auto remove = [course] { QVERIFY(ADO_Course_DeleteCourse(course)); };
        QCOMPARE(seen("CourseChar", remove), QSet<QString>{"1"});
        QCOMPARE(TestDatabase::Rows("SELECT * FROM CourseChar").size(), 0);
    }

    void LinksToFolders()
    {
        const auto links = [] {
            return TestDatabase::Rows(
                "SELECT CourseHierarchyRef FROM CoursesRelationships WHERE CourseRef = 5 "
                "ORDER BY CourseHierarchyRef");
        };
        for (const CourseLink link : {CourseLink::Made, CourseLink::WasThere})
            QCOMPARE(ADO_Course_AddCourseRelations(CourseRef(5), FolderRef(1)), link);
        TreeModel tree;
        AddFolder("One", 0);
        const int two = AddFolder("Two", 0);
        ADO_Course_ShowFolders(tree, true, true);
        ADO_Course_ShowCourseRelations(CourseRef(5), tree);
        QCOMPARE(Drawn(tree), u"Root Level!0 .One*!1 .Two!2"_qs);

        tree.SetTick(tree.Find("!0"), TreeTick::On);
        tree.SetTick(tree.Find(u'!' % SqlNumber(two)), TreeTick::On);
        QVERIFY(ADO_Course_UpdateCourseRelations(CourseRef(5), tree));
        QCOMPARE(links(), QStringList({"0", "1", "2"}));
        ADO_Course_ShowFolders(tree, true, true);
        QVERIFY(ADO_Course_UpdateCourseRelations(CourseRef(5), tree));
        QCOMPARE(links(), QStringList("0"));
    }

    /// A tree heals a course without a link; a flat list asks for no links at all.
    void ListsCourses()
    {
        const FolderRef folder(AddFolder("F", 0));
        const CourseRef b = School::AddCourse("B", 0);
        const CourseRef a = School::AddCourse("A", 0);
        ADO_Course_AddCourseRelations(b, folder);
        ADO_Course_AddCourseRelations(b, {});
        const QString keyA = u'?' % SqlNumber(a);
        const QString keyB = u'?' % SqlNumber(b);
        TreeModel tree;
        {
            const StatementLog log;
            ADO_Course_FillCourseList(tree, true, false);
            QCOMPARE(log.Statements(), QStringList("SELECT * FROM Courses ORDER BY Title ASC"));
        }
        QCOMPARE(Drawn(tree), QString(u'A' % keyA % u" B" % keyB));
        QCOMPARE(tree.Selected()->key, keyA);

        for (int twice = 0; twice < 2; ++twice) {
            ADO_Course_ShowFolders(tree, false, false);
            ADO_Course_FillCourseList(tree, false, false);
            QCOMPARE(Drawn(tree), QString(u"F!1 .B" % keyB % u"!1 A" % keyA % u" B" % keyB));
            QCOMPARE(TestDatabase::Rows("SELECT * FROM CoursesRelationships").size(), 3);
        }
        const CourseRef c = School::AddCourse("C", 0);
        ADO_Course_AddCourseRelations(c, folder);
        ADO_Course_NewCourseToList(tree, c, "C");
        QCOMPARE(tree.Find(u'?' % SqlNumber(c) % u"!1")->parent->text, u"F"_qs);
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_GUILESS_MAIN(TestCourses)
#include "test_courses.moc"
