#include "Bench.h"
#include "EngineTwin.h"

#include "core/session/Session.h"
#include "courses/booking/BookingODBC.h"
#include "courses/events/SeriesRun.h"
#include "database/values/DecodeDateFunc.h"
#include "platform/connection/Connection.h"
#include "platform/connection/Painting.h"
#include "support/TestDatabase.h"

#include <chrono>

// A series of events is made with its bookings, and one booking is tested against very many.

namespace
{
constexpr int events = 500;
constexpr int resourceCount = 6;
constexpr int bookings = 50'000;
constexpr int rooms = 200;
constexpr int tests = 2'000;
constexpr double longestWait = 100; // milliseconds between two repaints

/// The bookings of other courses, a room's on every day, spread over the hours before noon.
void FillBookings(EngineTwin &twin)
{
    twin.Run("BEGIN");
    twin.Run("INSERT INTO Courses (Title) VALUES ('Welding')");
    for (int i = 0; i < bookings; ++i) {
        const int from = 800 + i % 4 * 100;
        for (const char *sql :
             {"INSERT INTO VenuesEmployed (CourseRef,EventNo,VenueRef,EDate,TimeFrom,TimeTo) VALUES "
              "(1,?,?,?,?,?)",
              "INSERT INTO FacilitiesEmployed (CourseRef,EventNo,FacilityRef,EDate,TimeFrom,TimeTo) VALUES "
              "(1,?,?,?,?,?)",
              "INSERT INTO StaffEmployed (CourseRef,EventNo,ContactRef,EDate,TimeFrom,TimeTo) VALUES "
              "(1,?,?,?,?,?)"})
            twin.Run(sql,
                     {i, 1 + i % rooms, DateToInt(QDate(2027, 3, 1).addDays(i / rooms)), from, from + 30});
    }
    twin.Run("COMMIT");
}

SeriesPlan Plan()
{
    SeriesPlan plan;
    plan.start = QDate(2027, 3, 1);
    plan.count = events;
    plan.isRegular = true;
    for (auto &day : plan.days)
        day = SeriesPlan::Times{1900, 2000};
    return plan;
}

std::vector<SeriesResource> Resources()
{
    using Of = BookingClash::Of;
    std::vector<SeriesResource> resources;
    for (int i = 1; i <= resourceCount; ++i)
        resources.push_back({i % 3 == 0 ? Of::Staff : (i % 3 == 1 ? Of::Venue : Of::Facility), i,
                             RoleTypeRef(1), "Resource"});
    return resources;
}

double Make()
{
    const TestDatabase database;
    {
        EngineTwin filler;
        FillBookings(filler);
    }
    using Clock = std::chrono::steady_clock;
    auto shown = Clock::now();
    double longest = 0;
    const auto paint = [&] {
        longest = std::max(longest, std::chrono::duration<double, std::milli>(Clock::now() - shown).count());
        shown = Clock::now();
    };
    Painting::Install(paint);
    Progress progress([&paint](int, int) { paint(); });
    SeriesMade made;
    const double took =
        Bench::Milliseconds([&] { made = Series_Make(CourseRef(1), Plan(), Resources(), progress); });
    Painting::Install({});
    Bench::Require(made.events == events && made.unbooked.empty(), "the series is not whole");
    Bench::Require(longest <= longestWait, "nothing was painted for " + QString::number(longest) + " ms");
    return took;
}

struct Table {
    const char *select;
    const char *insert;
};

// Each shape is prepared once, with marks for its values.
constexpr Table staff{"SELECT * FROM StaffEmployed WHERE EDate = ? AND ContactRef = ?",
                      "INSERT INTO StaffEmployed (CourseRef,EventNo,ContactRef,RoleTypeRef,EDate,TimeFrom,"
                      "TimeTo) VALUES (1,?,?,1,?,1900,2000)"};
constexpr Table venues{"SELECT * FROM VenuesEmployed WHERE EDate = ? AND VenueRef = ?",
                       "INSERT INTO VenuesEmployed (CourseRef,EventNo,VenueRef,EDate,TimeFrom,TimeTo) VALUES "
                       "(1,?,?,?,1900,2000)"};
constexpr Table facilities{"SELECT * FROM FacilitiesEmployed WHERE EDate = ? AND FacilityRef = ?",
                           "INSERT INTO FacilitiesEmployed (CourseRef,EventNo,FacilityRef,EDate,TimeFrom,"
                           "TimeTo) VALUES (1,?,?,?,1900,2000)"};

void MakeEventByHand(EngineTwin &twin, int number, int date)
{
    twin.Run("INSERT INTO CourseEvents (CourseRef,EventNo,EDate,TimeFrom,TimeTo) VALUES (1,?,?,1900,2000)",
             {99999 + number, date});
    const auto event = static_cast<int>(
        twin.Run("SELECT EventRef FROM CourseEvents WHERE EventNo = ? AND CourseRef = 1", {99999 + number}));
    for (int i = 1; i <= resourceCount; ++i) {
        const Table &table = i % 3 == 0 ? staff : (i % 3 == 1 ? venues : facilities);
        twin.Run(table.select, {date, i});
        twin.Run(table.insert, {event, i, date});
    }
}

double MakeByHand()
{
    const TestDatabase database;
    EngineTwin twin;
    FillBookings(twin);
    gConnection.Close();
    return Bench::Milliseconds([&] {
        twin.Run("BEGIN IMMEDIATE");
        for (int number = 0; number < events; ++number)
            MakeEventByHand(twin, number, DateToInt(QDate(2027, 3, 1).addDays(number)));
        twin.Run("COMMIT");
    });
}

const Bench::Registration series("courses: a series of 500 events, 6 resources each", [] {
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.ours = Make;
    benchmark.twin = MakeByHand;
    return benchmark;
});

struct Fixture {
    Fixture() { FillBookings(twin); }
    TestDatabase database;
    EngineTwin twin;
};

int RoomOf(int test)
{
    return 1 + test * 7919 % rooms;
}

int DateOf(int test)
{
    return DateToInt(QDate(2027, 3, 1).addDays(test % (bookings / rooms)));
}

double MicrosecondsATest(const std::function<bool(int test)> &clashes)
{
    int found = 0;
    const double all = Bench::Milliseconds([&] {
        for (int test = 0; test < tests; ++test)
            found += clashes(test) ? 1 : 0;
    });
    Bench::Require(found == tests, "a clash is not found");
    return all * 1000 / tests;
}

/// Every one of them clashes, so that all but the test is the step around it and the title that is told.
const Bench::Registration clash("courses: one clash test against 50,000 bookings", [] {
    const auto fixture = std::make_shared<Fixture>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("us");
    benchmark.bar = 1.3;
    benchmark.rounds = 25;
    benchmark.ours = [fixture] {
        return MicrosecondsATest([](int test) {
            CourseRef course(1);
            const int room = RoomOf(test);
            EventHours hours{DateOf(test), 800 + (room - 1) % 4 * 100, 2000};
            return BookEventResource(ResourceKind::Venue, course, EventRef(1), room, hours) == u"Welding";
        });
    };
    benchmark.twin = [fixture] {
        return MicrosecondsATest([&fixture](int test) {
            EngineTwin &twin = fixture->twin;
            twin.Send("BEGIN IMMEDIATE");
            const qint64 course =
                twin.Send(u"SELECT * FROM VenuesEmployed WHERE EDate = " % QString::number(DateOf(test)) %
                          u" AND VenueRef = " % QString::number(RoomOf(test)));
            twin.Send(u"SELECT Title FROM Courses WHERE CourseRef = " % QString::number(course));
            twin.Send("COMMIT");
            return course == 1;
        });
    };
    return benchmark;
});
} // namespace
