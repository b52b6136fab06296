#include "controls/TreeModel.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/ResourceTree.h"
#include "courses/events/EventODBC.h"
#include "courses/events/SeriesPreview.h"
#include "courses/events/SeriesRun.h"
#include "enrolment/School.h"
#include "support/ScriptedDialogs.h"

#include <QTest>

namespace
{
constexpr int room = 7;
constexpr int projector = 8;
constexpr int anna = 9;

/// Four Mondays from 1 March 2027, without the second one.
SeriesPlan Mondays()
{
    SeriesPlan plan{QDate(2027, 3, 1), 4, true, {}, {}, 7, {{"Closed", 20270308, 20270308}}};
    plan.days[0] = SeriesPlan::Times{900, 1000};
    return plan;
}

QStringList Events()
{
    return TestDatabase::Rows("SELECT EDate, TimeFrom, TimeTo, EventNo FROM CourseEvents ORDER BY EventRef");
}
} // namespace

class TestSeriesRun final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        m_course = School::AddCourse("Pottery", 10);
        m_other = School::AddCourse("Welding", 10);
        ResourceTree::AddEvent(m_tree, EventRef(), "All Events have", ResourceTree::Kind::Attendance);
        ResourceTree::AddItem(m_tree, {ResourceTree::Kind::Venues, EventRef(), room}, "Room");
        ResourceTree::AddItem(m_tree, {ResourceTree::Kind::Facilities, EventRef(), projector}, "Projector");
        ResourceTree::AddRole(m_tree, EventRef(), RoleTypeRef(3), "Tutor");
        ResourceTree::AddItem(m_tree, {ResourceTree::Kind::Staff, EventRef(), anna, RoleTypeRef(3)}, "Anna");
    }
    void cleanup()
    {
        m_tree.Clear();
        m_database.reset();
    }

    /// The first of somebody's roles holds him in the second.
    void PreviewsSomebodyInTwoRoles()
    {
        ResourceTree::AddRole(m_tree, EventRef(), RoleTypeRef(4), "Helper");
        ResourceTree::AddItem(m_tree, {ResourceTree::Kind::Staff, EventRef(), anna, RoleTypeRef(4)}, "Anna");
        const SeriesPreview preview = Series_Preview(m_course, Mondays(), Series_Resources(m_tree), 9);
        QStringList clashes;
        for (const SeriesDate &date : preview.dates)
            clashes.append(date.clashes);
        const QString held = u"Anna: Pottery, 09:00 - 10:00"_qs;
        QCOMPARE(clashes, QStringList({held, {}, held, held, held}));
    }

    /// What is held elsewhere is told of and missing from its event alone.
    void TheSeriesGoesOnAfterAClash()
    {
        CourseRef other = m_other;
        EventHours hours{20270315, 800, 900};
        QCOMPARE(BookEventResource(ResourceKind::Venue, other, EventRef(99), room, hours), QString());
        QCOMPARE(ADO_Course_StaffBooking(other, EventRef(99), anna, RoleTypeRef(4), hours), QString());
        ScriptedDialogs dialogs;
        dialogs.Expect("Event bookings", "Unable to book one or more items on Event 2\n"
                                         "Staff:AnnaWelding\nVenue:RoomWelding\n");
        // Whenever it were killed, another workstation would find whole events.
        Connection elsewhere;
        QVERIFY(elsewhere.Open(m_database->ConnectionText()));
        QSet<int> seen;
        gConnection.ObserveStatements([&](const QString &) {
            const int events = elsewhere.OpenRecordset("SELECT EventRef FROM CourseEvents")->RowCount();
            QCOMPARE(elsewhere.OpenRecordset("SELECT EventNo FROM FacilitiesEmployed")->RowCount(), events);
            seen.insert(events);
        });
        Progress progress;
        const SeriesMade made = Series_Make(m_course, Mondays(), Series_Resources(m_tree), progress);
        gConnection.ObserveStatements({});
        QVERIFY(seen.contains(0) && seen.contains(2));
        QCOMPARE(made.events, 4);
        QVERIFY(!made.isExhausted && dialogs.AllCame());
        QCOMPARE(Events(), (QStringList{"20270301|900|1000|99999", "20270315|900|1000|100000",
                                        "20270322|900|1000|100001", "20270329|900|1000|100002"}));
        QCOMPARE(made.unbooked.size(), size_t(1));
        QCOMPARE(made.unbooked[0].number, 2);
        QCOMPARE(made.unbooked[0].hours.date, 20270315);
        for (const auto &[table, booked] :
             {std::pair("VenuesEmployed", 3), {"StaffEmployed", 3}, {"FacilitiesEmployed", 4}})
            QCOMPARE(TestDatabase::Rows(u"SELECT EventNo FROM "_qs % QLatin1String(table) %
                                        u" WHERE CourseRef = " % SqlNumber(m_course))
                         .size(),
                     booked);
    }

    /// What another workstation deleted is told of; an unfilled post names nobody who could be missing.
    void LeavesOutWhatIsGone()
    {
        TestDatabase::Run({"INSERT INTO RoleTypes (Name) VALUES ('Tutor')",
                           "INSERT INTO Facilities (Name) VALUES ('Projector')"});
        const RoleTypeRef tutor(School::LastKey("RoleTypes", "RoleTypeRef"));
        using Of = BookingClash::Of;
        std::vector<SeriesResource> resources{
            {Of::Facility, School::LastKey("Facilities", "FacilityRef"), {}, "Projector"},
            {Of::Venue, room, {}, "Room"},
            {Of::Staff, School::AddPerson("Anna", "Zorn").number, tutor, "Anna"},
            {Of::Staff, -1, tutor, "[ To Be Appointed 1 ]"},
            {Of::Staff, -1, RoleTypeRef(tutor.number + 1), "[ To Be Appointed 1 ]"}};
        ScriptedDialogs dialogs;
        dialogs.Expect("Adding", "Another user has deleted these meanwhile, and they are left out:\n"
                                 "    Room\n    [ To Be Appointed 1 ]");
        QVERIFY(Series_LeaveOutDeleted(resources, "Adding") && dialogs.AllCame());
        QStringList names;
        for (const SeriesResource &resource : resources)
            names.append(resource.name);
        QCOMPARE(names, (QStringList{"Projector", "Anna", "[ To Be Appointed 1 ]"}));
        QVERIFY(Series_LeaveOutDeleted(resources, "Adding"));
    }

    void StopsBetweenTwoEvents()
    {
        Progress progress(
            [&progress](int done, int) {
                if (done == 2)
                    progress.Cancel();
            },
            0);
        QCOMPARE(Series_Make(m_course, Mondays(), Series_Resources(m_tree), progress).events, 2);
        QCOMPARE(Events().size(), 2);
        QCOMPARE(TestDatabase::Rows("SELECT EventNo FROM VenuesEmployed").size(), 2);
    }

    void SaysWhenNoDatesAreLeft()
    {
        SeriesPlan plan = Mondays();
        plan.exclusions = {{"For ever", 20270302, 99991231}};
        Progress progress;
        const SeriesMade made = Series_Make(m_course, plan, {}, progress);
        QCOMPARE(made.events, 1);
        QVERIFY(made.isExhausted);
        plan.count = 0;
        QCOMPARE(Series_Make(m_course, plan, {}, progress).events, 0);
    }

private:
    std::unique_ptr<TestDatabase> m_database;
    TreeModel m_tree;
    CourseRef m_course;
    CourseRef m_other;
};

QTEST_GUILESS_MAIN(TestSeriesRun)
#include "test_series_run.moc"
