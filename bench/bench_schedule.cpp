#include "Bench.h"
#include "EngineTwin.h"

#include "courses/schedule/ScheduleODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "support/TestDatabase.h"

#include <array>
#include <memory>

// A month of the calendar: six weeks of marks and a day of each kind, over very many bookings.

namespace
{
constexpr int perDay = 10;   ///< events
constexpr int perEvent = 10; ///< bookings of each kind
constexpr int bookings = 50'000;
constexpr int days = bookings / perDay / perEvent;
constexpr int weeksShown = 6;
constexpr double longestMonth = 50; // milliseconds
const QDate firstDay(2027, 1, 3);

constexpr std::array<ScheduleKind, 4> kinds{ScheduleKind::Events, ScheduleKind::Venues, ScheduleKind::Staff,
                                            ScheduleKind::Facilities};

void FillYear(EngineTwin &twin)
{
    twin.Run("BEGIN");
    twin.Run("INSERT INTO Courses (Title) VALUES ('Welding')");
    twin.Run("INSERT INTO RoleTypes (Name) VALUES ('Tutor')");
    for (int i = 0; i <= perEvent; ++i) {
        twin.Run("INSERT INTO Venues (Description) VALUES ('Hall')");
        twin.Run("INSERT INTO Facilities (Name) VALUES ('Torch')");
        twin.Run("INSERT INTO Contacts (Cust_Surname,Cust_Forename) VALUES ('Able','Anna')");
    }
    for (int number = 0; number < days * perDay; ++number) {
        const int date = DateToInt(firstDay.addDays(number / perDay));
        const int from = 800 + number % perDay * 100;
        twin.Run("INSERT INTO CourseEvents (CourseRef,EventNo,EDate,TimeFrom,TimeTo) VALUES (1,?,?,?,?)",
                 {number + 1, date, from, from + 45});
        for (int item = 2; item < perEvent + 2; ++item) {
            for (const char *sql :
                 {"INSERT INTO VenuesEmployed (CourseRef,EventNo,VenueRef,EDate,TimeFrom,TimeTo) VALUES "
                  "(1,?,?,?,?,?)",
                  "INSERT INTO FacilitiesEmployed (CourseRef,EventNo,FacilityRef,EDate,TimeFrom,TimeTo) "
                  "VALUES "
                  "(1,?,?,?,?,?)",
                  "INSERT INTO StaffEmployed "
                  "(CourseRef,EventNo,ContactRef,EDate,TimeFrom,TimeTo,RoleTypeRef) "
                  "VALUES (1,?,?,?,?,?,1)"})
                twin.Run(sql, {number + 1, item, date, from, from + 45});
        }
    }
    twin.Run("COMMIT");
}

double ShowMonth()
{
    int marked = 0;
    size_t rows = 0;
    const double took = Bench::Milliseconds([&] {
        for (const ScheduleKind kind : kinds) {
            for (int day = 0; day < weeksShown * 7; ++day)
                marked += ADO_Schedule_EventToday(DateToInt(firstDay.addDays(day)), kind);
            rows += ADO_Schedule_DisplayEvents(DateToInt(firstDay), kind).value().size();
        }
    });
    Bench::Require(marked == weeksShown * 7 * 4 && rows == perDay * (3 * perEvent + 1),
                   "the month is not whole");
    Bench::Require(took <= longestMonth, "the month took " + QString::number(took) + " ms");
    return took;
}

void MarkByHand(EngineTwin &twin)
{
    for (int day = 0; day < weeksShown * 7; ++day) {
        for (const char *sql :
             {"SELECT * FROM CourseEvents WHERE EDate = ?", "SELECT * FROM VenuesEmployed WHERE EDate = ?",
              "SELECT * FROM StaffEmployed WHERE EDate = ?",
              "SELECT * FROM FacilitiesEmployed WHERE EDate = ?"})
            twin.Run(sql, {DateToInt(firstDay.addDays(day))});
    }
}

double ShowMonthByHand(EngineTwin &twin)
{
    return Bench::Milliseconds([&] {
        MarkByHand(twin);
        for (int kind = 0; kind < 4; ++kind)
            twin.Run("SELECT Courses.Title, CourseEvents.* FROM CourseEvents INNER JOIN Courses ON "
                     "CourseEvents.CourseRef = Courses.CourseRef WHERE EDate = ? ORDER BY Courses.Title ASC",
                     {DateToInt(firstDay)});
        for (int event = 1; event <= perDay; ++event) {
            for (const char *sql :
                 {"SELECT Venues.Description, Venues.VenueRef FROM VenuesEmployed INNER JOIN Venues ON "
                  "VenuesEmployed.VenueRef = Venues.VenueRef WHERE VenuesEmployed.CourseRef = 1 AND "
                  "VenuesEmployed.EventNo = ?",
                  "SELECT Facilities.Name, Facilities.FacilityRef FROM FacilitiesEmployed INNER JOIN "
                  "Facilities "
                  "ON FacilitiesEmployed.FacilityRef = Facilities.FacilityRef WHERE "
                  "FacilitiesEmployed.CourseRef = 1 AND FacilitiesEmployed.EventNo = ?",
                  "SELECT Contacts.ContactRef, Contacts.Cust_Forename, Contacts.Cust_Surname, "
                  "RoleTypes.RoleTypeRef, RoleTypes.Name FROM RoleTypes INNER JOIN (Contacts INNER JOIN "
                  "StaffEmployed ON Contacts.ContactRef = StaffEmployed.ContactRef) ON RoleTypes.RoleTypeRef "
                  "= "
                  "StaffEmployed.RoleTypeRef WHERE StaffEmployed.CourseRef = 1 AND StaffEmployed.EventNo = ?",
                  "SELECT StaffEmployed.ContactRef, RoleTypes.Name, RoleTypes.RoleTypeRef FROM StaffEmployed "
                  "INNER JOIN RoleTypes ON StaffEmployed.RoleTypeRef = RoleTypes.RoleTypeRef WHERE "
                  "StaffEmployed.CourseRef = 1 AND StaffEmployed.EventNo = ? AND StaffEmployed.ContactRef < "
                  "0"})
                twin.Run(sql, {event});
        }
    });
}

const Bench::Registration month("courses: a month of the calendar, 50,000 bookings", [] {
    const auto database = std::make_shared<TestDatabase>();
    const auto twin = std::make_shared<EngineTwin>();
    FillYear(*twin);
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.ours = [database, twin] { return ShowMonth(); };
    benchmark.twin = [twin] { return ShowMonthByHand(*twin); };
    return benchmark;
});
} // namespace
