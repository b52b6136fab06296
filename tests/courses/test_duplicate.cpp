#include "courses/lists/CourseFolderODBC.h"
#include "courses/manager/DuplicateModule.h"
#include "courses/manager/DuplicateODBC.h"
#include "courses/record/CourseRecordODBC.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "support/ScriptedDialogs.h"
#include "support/SeenElsewhere.h"
#include "support/TestTable.h"

#include <QTest>

namespace
{
/// The rows of a table that belong to a course.
QStringList RowsOf(CourseRef courseRef, const QString &columns, const QString &table)
{
    return TestDatabase::Rows(u"SELECT " % columns % u" FROM " % table % u" WHERE CourseRef = " %
                              SqlNumber(courseRef) % u" ORDER BY 1,2");
}
} // namespace

class TestDuplicate final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        LoadSystemValues();
        m_course = CourseRef(ADO_Course_AddCourse("X", "It''s", 80.5, 12, "R``1"));
        m_person = School::AddPerson("Ann", "Lee");
        ADO_Course_EnrollStudent(m_course, m_person);
        ADO_Course_AddCourseRelations(m_course, FolderRef(7));
        TestDatabase::Run(
            {"UPDATE StudentsEnrolled SET AmountPaid = 50, BasicFee = 10",
             "INSERT INTO CourseChar (CourseRef,ConcessionRef) VALUES (1,3)",
             "INSERT INTO CourseStaff (CourseRef,ContactRef,RoleTypeRef) VALUES (1,-2,4)",
             "INSERT INTO CourseFacilities (CourseRef,FacilityRef) VALUES (1,5)",
             "INSERT INTO CourseVenues (CourseRef,VenueRef) VALUES (1,6)",
             "INSERT INTO CourseEvents (CourseRef,EventNo,EDate,TimeFrom,TimeTo,Description) VALUES "
             "(9,1,20260101,1,2,'other')",
             "INSERT INTO CourseEvents (CourseRef,EventNo,EDate,TimeFrom,TimeTo,Description) VALUES "
             "(1,1,20270301,900,1030,'first')",
             "INSERT INTO AttendanceRecord (CourseRef,EventNo,ContactRef) VALUES (1,2,2)",
             "INSERT INTO VenuesEmployed (CourseRef,EventNo,VenueRef,EDate,TimeFrom,TimeTo) VALUES "
             "(1,2,6,20270301,900,1030)",
             "INSERT INTO StaffEmployed (CourseRef,EventNo,ContactRef,RoleTypeRef,EDate,TimeFrom,TimeTo) "
             "VALUES (1,2,-2,4,20270301,900,1030)",
             "INSERT INTO FacilitiesEmployed (CourseRef,EventNo,FacilityRef,EDate,TimeFrom,TimeTo) VALUES "
             "(1,2,5,20270301,900,1030)"});
    }
    void cleanup() { m_database.reset(); }

    /// Each bit alone, none and all: what is there of the copy in twelve tables.
    void CopiesWhatIsChosen_data()
    {
        const TestTable<int, QString> row{"options", "tables"};
        row("nothing", 0, "");
        row("characteristics", 1, "CourseChar");
        row("events", 2, "CourseEvents AttendanceRecord");
        row("students", 4, "StudentsEnrolled");
        row("staff", 8, "CourseStaff");
        row("folders", 16, "");
        row("facilities", 32, "CourseFacilities");
        row("venues", 64, "CourseVenues");
        row("events with staff", 10, "CourseStaff CourseEvents AttendanceRecord StaffEmployed");
        row("events with facilities", 34,
            "CourseFacilities CourseEvents AttendanceRecord FacilitiesEmployed");
        row("events with venues", 66, "CourseVenues CourseEvents AttendanceRecord VenuesEmployed");
        row("as installed", 31,
            "CourseChar StudentsEnrolled CourseStaff CourseEvents AttendanceRecord StaffEmployed");
    }
    void CopiesWhatIsChosen()
    {
        QFETCH(int, options);
        QString title;
        const CourseRef copy = Course_Duplicate(m_course, "X", FolderRef(8), options, title);
        QStringList tables;
        for (const char *table :
             {"CourseChar", "StudentsEnrolled", "CourseStaff", "CourseFacilities", "CourseVenues",
              "CourseEvents", "AttendanceRecord", "VenuesEmployed", "StaffEmployed", "FacilitiesEmployed"}) {
            if (!RowsOf(copy, "*", QString::fromLatin1(table)).isEmpty())
                tables += QString::fromLatin1(table);
        }
        QTEST(tables.join(u' '), "tables");
        QCOMPARE(RowsOf(copy, "CourseHierarchyRef,1", "CoursesRelationships"),
                 options & DupeFolders ? QStringList({"7|1", "8|1"}) : QStringList("8|1"));
    }

    /// The copy's values: students are charged as new ones, events lose their descriptions, and everything
    /// is booked at the hours of the original.
    void CopiesValues()
    {
        QString title;
        const CourseRef copy = Course_Duplicate(m_course, "X", {}, 127, title);
        QCOMPARE(title, u"Copy of X"_qs);
        const ReadRow<CourseFile> file = ADO_Course_ShowCourse(copy);
        QCOMPARE(file->course, (CourseRecord{copy, title, "R``1", "It's", 80.5, 12}));
        QCOMPARE(RowsOf(copy, "ContactRef,AmountPaid,BasicFee", "StudentsEnrolled"),
                 QStringList(QString(SqlNumber(m_person) % u"|0|80.5")));
        QCOMPARE(RowsOf(copy, "EventRef,EventNo,EDate,TimeFrom,TimeTo,Description", "CourseEvents"),
                 QStringList("3|1|20270301|900|1030|"));
        QCOMPARE(RowsOf(copy, "EventNo,ContactRef", "AttendanceRecord"), QStringList("3|2"));
        QCOMPARE(RowsOf(copy, "*", "VenuesEmployed"), QStringList("2|3|6|20270301|900|1030"));
        QCOMPARE(RowsOf(copy, "*", "StaffEmployed"), QStringList("2|3|-2|4|20270301|900|1030"));
        QCOMPARE(RowsOf(copy, "*", "FacilitiesEmployed"), QStringList("2|3|5|20270301|900|1030"));
        QCOMPARE(RowsOf(copy, "*", "CourseStaff"), QStringList("2|-2|4"));
        QCOMPARE(RowsOf(copy, "*", "CoursesRelationships"), QStringList({"2|0", "2|7"}));
    }

    void NamesCopies()
    {
        const QString longTitle(60, u'x');
        QStringList titles;
        for (const QString &name : {u"X"_qs, u"X"_qs, u"X"_qs, longTitle, longTitle, u"It's ``"_qs}) {
            QString title;
            QVERIFY(Course_Duplicate(m_course, name, {}, 0, title));
            titles += title;
        }
        QCOMPARE(titles,
                 QStringList({"Copy of X", "Copy of (2) X", "Copy of (3) X", u"Copy of " % QString(42, u'x'),
                              u"Copy of (2) " % QString(38, u'x'), "Copy of It's ``"}));
        QCOMPARE(TestDatabase::Value("SELECT Title FROM Courses WHERE CourseRef = 7"), titles.last());
    }

    void AddsAllOrNothing()
    {
        QString title;
        QVERIFY(!Course_Duplicate(CourseRef(99), "X", {}, 127, title));
        QCOMPARE(SeenElsewhere(*m_database, "SELECT COUNT(*) FROM Courses",
                               [&] { Course_Duplicate(m_course, "X", {}, 127, title); }),
                 QSet<QString>{"1"});
        // A part that fails leaves the parts before it, and the copy in its folder.
        TestDatabase::Run({"ALTER TABLE CourseEvents RENAME TO Gone"});
        ScriptedDialogs dialogs;
        dialogs.ExpectFailure();
        const CourseRef copy = Course_Duplicate(m_course, "X", FolderRef(8), 127, title);
        QCOMPARE(RowsOf(copy, "*", "CourseChar").size(), 1);
        QCOMPARE(RowsOf(copy, "*", "StudentsEnrolled").size(), 0);
        QCOMPARE(RowsOf(copy, "CourseHierarchyRef,1", "CoursesRelationships"), QStringList("8|1"));
    }

private:
    std::unique_ptr<TestDatabase> m_database;
    CourseRef m_course;
    ContactRef m_person;
};

QTEST_GUILESS_MAIN(TestDuplicate)
#include "test_duplicate.moc"
