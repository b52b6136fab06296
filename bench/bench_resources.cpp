#include "Bench.h"
#include "EngineTwin.h"

#include "core/session/Progress.h"
#include "courses/record/ResourcesPage.h"
#include "database/statements/Security.h"
#include "database/values/DecodeDateFunc.h"
#include "platform/connection/Connection.h"
#include "support/TestDatabase.h"

#include <QApplication>

#include <memory>

// The tree of the events of a large course is opened and stored.

namespace
{
constexpr int eventCount = 200;
constexpr int students = 30;
constexpr int things = 2; // of each event: as many facilities, as many venues, and one tutor
constexpr CourseRef course{1};
constexpr double longestWait = 100; // milliseconds

/// Every event has its own hours, so that nothing clashes.
void Fill(EngineTwin &twin)
{
    twin.Run("BEGIN");
    twin.Run("INSERT INTO Courses (Title) VALUES ('Welding')");
    twin.Run("INSERT INTO RoleTypes (Name) VALUES ('Tutor')");
    for (int i = 0; i < things; ++i) {
        twin.Run("INSERT INTO Venues (Description) VALUES ('Hall ' || ?)", {i});
        twin.Run("INSERT INTO Facilities (Name) VALUES ('Torch ' || ?)", {i});
    }
    for (int i = 0; i < students; ++i) {
        twin.Run("INSERT INTO Contacts (Cust_Forename,Cust_Surname) VALUES ('Margaret','Featherstone ' || ?)",
                 {i});
        twin.Run("INSERT INTO StudentsEnrolled (CourseRef,ContactRef) VALUES (1,?)", {i + 2});
    }
    for (int i = 1; i <= eventCount; ++i) {
        const int date = DateToInt(QDate(2027, 3, 1).addDays(i));
        twin.Run("INSERT INTO CourseEvents (EventRef,CourseRef,EventNo,EDate,TimeFrom,TimeTo) VALUES "
                 "(?,1,?,?,900,1000)",
                 {i, i, date});
        for (int person = 2; person < students + 2; ++person)
            twin.Run("INSERT INTO AttendanceRecord (CourseRef,ContactRef,EventNo) VALUES (1,?,?)",
                     {person, i});
        twin.Run("INSERT INTO StaffEmployed (CourseRef,EventNo,ContactRef,RoleTypeRef,EDate,TimeFrom,TimeTo) "
                 "VALUES (1,?,2,1,?,900,1000)",
                 {i, date});
        for (int thing = 1; thing <= things; ++thing) {
            twin.Run("INSERT INTO FacilitiesEmployed (CourseRef,EventNo,FacilityRef,EDate,TimeFrom,TimeTo) "
                     "VALUES (1,?,?,?,900,1000)",
                     {i, thing, date});
            twin.Run("INSERT INTO VenuesEmployed (CourseRef,EventNo,VenueRef,EDate,TimeFrom,TimeTo) VALUES "
                     "(1,?,?,?,900,1000)",
                     {i, thing + 1, date});
        }
    }
    twin.Run("COMMIT");
}

struct Fixture {
    Fixture() { Fill(twin); }

    TestDatabase database;
    EngineTwin twin;
};

void ShowTree(CourseResources &resources)
{
    Bench::Require(ADO_Course_ShowStaffEvents(course, resources), "the tree could not be read");
}

/// The tab of a course that is opened, from nothing until it is painted.
double MillisecondsToShow()
{
    ResourcesPage page;
    page.adjustSize();
    page.show();
    QApplication::processEvents();
    const double took = Bench::Milliseconds([&] {
        Bench::Require(page.ShowEvents(course), "the tree could not be read");
        QApplication::processEvents();
    });
    Bench::Require(took < longestWait, "nothing was shown for " + QString::number(took) + " ms");
    return took;
}

/// The statements of the work, taken down as the program sends them.
QStringList StatementsOf(const std::function<void()> &work)
{
    QStringList statements;
    gConnection.ObserveStatements([&statements](const QString &sql) { statements.append(sql); });
    work();
    gConnection.ObserveStatements({});
    return statements;
}

const Bench::Registration open("courses: open the tree of 200 events, 30 attendees and 5 resources each", [] {
    const auto fixture = std::make_shared<Fixture>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.rounds = 50;
    gUserRights = RightsBlank();
    benchmark.ours = [fixture] { return MillisecondsToShow(); };
    const QStringList statements = StatementsOf([] { MillisecondsToShow(); });
    benchmark.twin = [fixture, statements] {
        return Bench::Milliseconds([&] {
            int rows = 0;
            fixture->twin.Run("BEGIN IMMEDIATE");
            for (const QString &sql : statements) {
                if (sql.startsWith(u"SELECT"))
                    rows += fixture->twin.Read(sql);
            }
            for (int i = 1; i <= eventCount; ++i)
                fixture->twin.Run("UPDATE CourseEvents SET EventNo = ? WHERE EventRef = ?", {i, i});
            fixture->twin.Run("COMMIT");
            Bench::Require(rows > eventCount * students, "nothing was read");
        });
    };
    return benchmark;
});

void Save(const TreeModel &tree)
{
    std::vector<BookingClash> clashes;
    Progress progress;
    Bench::Require(SaveResourceTree(course, tree, clashes, progress) && clashes.empty(),
                   "the tree could not be stored");
}

void BookByHand(EngineTwin &twin, int event, const char *select, const char *insert, int thing)
{
    const auto date = DateToInt(QDate(2027, 3, 1).addDays(event));
    twin.Run("SELECT * FROM CourseEvents WHERE EventRef = ?", {event});
    twin.Run(select, {date, thing});
    twin.Run(insert, {event, thing, date});
}

void SaveEventByHand(EngineTwin &twin, int event)
{
    twin.Run("UPDATE CourseEvents SET EventNo = ? WHERE EventRef = ?", {event, event});
    for (int person = 2; person < students + 2; ++person) {
        twin.Run(
            "SELECT ContactRef FROM AttendanceRecord WHERE CourseRef = 1 AND ContactRef = ? AND EventNo = ?",
            {person, event});
        twin.Run("INSERT INTO AttendanceRecord (CourseRef,ContactRef,EventNo) VALUES (1,?,?)",
                 {person, event});
    }
    for (int thing = 1; thing <= things; ++thing) {
        BookByHand(
            twin, event, "SELECT * FROM FacilitiesEmployed WHERE EDate = ? AND FacilityRef = ?",
            "INSERT INTO FacilitiesEmployed (CourseRef,EventNo,FacilityRef,EDate,TimeFrom,TimeTo) VALUES "
            "(1,?,?,?,900,1000)",
            thing);
        BookByHand(twin, event, "SELECT * FROM VenuesEmployed WHERE EDate = ? AND VenueRef = ?",
                   "INSERT INTO VenuesEmployed (CourseRef,EventNo,VenueRef,EDate,TimeFrom,TimeTo) VALUES "
                   "(1,?,?,?,900,1000)",
                   thing + 1);
    }
    BookByHand(
        twin, event, "SELECT * FROM StaffEmployed WHERE EDate = ? AND ContactRef = ?",
        "INSERT INTO StaffEmployed (CourseRef,EventNo,ContactRef,RoleTypeRef,EDate,TimeFrom,TimeTo) VALUES "
        "(1,?,?,1,?,900,1000)",
        2);
}

/// Each shape is prepared once, with marks for its values.
void SaveByHand(EngineTwin &twin)
{
    twin.Run("BEGIN IMMEDIATE");
    twin.Run("UPDATE CourseEvents SET EventNo = 0 WHERE CourseRef = 1");
    for (const char *wipe :
         {"DELETE FROM AttendanceRecord WHERE CourseRef = 1", "DELETE FROM StaffEmployed WHERE CourseRef = 1",
          "DELETE FROM FacilitiesEmployed WHERE CourseRef = 1",
          "DELETE FROM VenuesEmployed WHERE CourseRef = 1"})
        twin.Run(wipe);
    for (int event = 1; event <= eventCount; ++event)
        SaveEventByHand(twin, event);
    twin.Run("DELETE FROM CourseEvents WHERE CourseRef = 1 AND EventNo = 0");
    twin.Run("COMMIT");
}

const Bench::Registration
    save("courses: store the tree of 200 events, 30 attendees and 5 resources each", [] {
        const auto fixture = std::make_shared<Fixture>();
        const auto resources = std::make_shared<CourseResources>();
        ShowTree(*resources);
        Bench::Case benchmark;
        benchmark.unit = QStringLiteral("ms");
        benchmark.bar = 2;
        benchmark.ours = [resources] { return Bench::Milliseconds([&] { Save(resources->tree); }); };
        benchmark.twin = [fixture] { return Bench::Milliseconds([&] { SaveByHand(fixture->twin); }); };
        return benchmark;
    });
} // namespace
