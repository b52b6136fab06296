#include "controls/ListModel.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/Holders.h"
#include "courses/booking/UsedResourcesODBC.h"
#include "courses/events/EventODBC.h"
#include "database/statements/MiscODBC.h"
#include "enrolment/School.h"
#include "platform/desktop/Dialogs.h"
#include "support/StatementLog.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <QThread>

#include <array>
#include <cstdio>

namespace
{
constexpr int day = 20270301;
constexpr int room = 7;
constexpr RoleTypeRef tutor(3);
constexpr int lessons = 12; ///< of the race, one an hour

/// Books the room for each lesson, while another workstation does the same.
int Workstation(const QStringList &arguments)
{
    OneStep::SetGuarding(arguments.at(1) == u"guarded");
    if (!gConnection.Open(arguments.at(0)))
        return 1;
    Dialogs::Installed().msgBox = [](const auto &...) { return Dialogs::Answer::Retry; };
    gConnection.ObserveStatements([](const QString &sql) {
        if (sql.startsWith(u"INSERT"))
            QThread::msleep(20);
    });
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    for (int lesson = 0; lesson < lessons; ++lesson) {
        CourseRef course(1);
        EventHours hours{day, lesson * 100, lesson * 100 + 30};
        std::printf("%d\n",
                    BookEventResource(ResourceKind::Venue, course, EventRef(1), room, hours).isEmpty());
    }
    return 0;
}
} // namespace

class TestBookings final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        m_welding = School::AddCourse("Welding", 10);
        m_pottery = School::AddCourse("Pottery", 10);
    }
    void cleanup() { m_database.reset(); }

    /// Every start and end of a booking against every other one, over a day of six steps.
    void OnlyTheStartIsTested()
    {
        const std::array<int, 6> times{0, 900, 930, 1000, 1030, 2359};
        for (const int from : times) {
            for (const int to : times) {
                for (const int start : times) {
                    for (const int end : times) {
                        if (to < from || end < start)
                            continue;
                        TestDatabase::Run({"DELETE FROM FacilitiesEmployed"});
                        QCOMPARE(Book(m_welding, {day, from, to}), QString());
                        const bool isRefused = !(start < from) && !(to < start);
                        QCOMPARE(Book(m_pottery, {day, start, end}), isRefused ? u"Welding"_qs : QString());
                        QCOMPARE(TestDatabase::Rows("SELECT * FROM FacilitiesEmployed").size(),
                                 isRefused ? 1 : 2);
                    }
                }
            }
        }
        QCOMPARE(Book(m_pottery, {day + 1, 0, 0}), QString());
        QCOMPARE(Book(m_pottery, {day, 0, 0}, room + 1), QString());
    }

    void AClashNamesTheFirstCourseStored()
    {
        QCOMPARE(Book(m_pottery, {day, 900, 1100}), QString());
        QCOMPARE(Book(m_welding, {day, 800, 1200}), QString());
        CourseRef course(99);
        EventHours hours{day, 930, 1000};
        QCOMPARE(BookEventResource(ResourceKind::Facility, course, EventRef(5), room, hours), u"Pottery"_qs);
        QCOMPARE(course, m_pottery);
    }

    void StaffAreHeldInEveryRoleAndPostsNever()
    {
        EventHours hours{day, 900, 1000};
        CourseRef course = m_welding;
        QCOMPARE(ADO_Course_StaffBooking(course, EventRef(1), 5, tutor, hours), QString());
        course = m_pottery;
        StatementLog log;
        QCOMPARE(ADO_Course_StaffBooking(course, EventRef(2), 5, RoleTypeRef(4), hours), u"Welding"_qs);
        QVERIFY(log.Statements().contains(
            u"SELECT * FROM StaffEmployed WHERE EDate = 20270301 AND ContactRef  = 5"_qs));
        course = m_pottery;
        QCOMPARE(ADO_Course_StaffBooking(course, EventRef(2), 6, tutor, hours), QString());
        for (int i = 0; i < 2; ++i)
            QCOMPARE(ADO_Course_StaffBooking(course, EventRef(2), -1, tutor, hours), QString());
        QCOMPARE(TestDatabase::Rows("SELECT CourseRef, ContactRef FROM StaffEmployed").size(), 4);
        QVERIFY(ADO_Course_WipeStaff(EventRef(2), m_pottery, tutor));
        QCOMPARE(TestDatabase::Rows("SELECT ContactRef, EventNo FROM StaffEmployed"), QStringList{u"5|1"_qs});
    }

    /// The hours are the event's where the caller has none, and are kept for the next booking.
    void HoursOfTheEvent()
    {
        const EventRef event = ADO_Course_AddEvent(m_welding, newEventNo, {day, 900, 1015});
        EventHours hours;
        CourseRef course = m_welding;
        QCOMPARE(BookEventResource(ResourceKind::Venue, course, event, room, hours), QString());
        QCOMPARE(hours, (EventHours{day, 900, 1015}));
        EventHours none;
        QCOMPARE(BookEventResource(ResourceKind::Venue, course, EventRef(event.number + 1), 8, none),
                 bookingFailed);
        QCOMPARE(TestDatabase::Rows("SELECT VenueRef, EDate, TimeFrom, TimeTo, EventNo FROM VenuesEmployed"),
                 QStringList{u"7|20270301|900|1015|"_qs % SqlNumber(event)});
        QVERIFY(WipeEventRows(EventRows::Venues, event, m_welding));
        QVERIFY(TestDatabase::Rows("SELECT VenueRef FROM VenuesEmployed").isEmpty());
    }

    void WhoHoldsARoom()
    {
        QCOMPARE(Book(m_welding, {day, 900, 1030}), QString());
        const auto holders = [](const EventHours &hours, int apartFrom) {
            return Holders::Text(*Holders::At(Holders::Of::Facilities, hours, EventRef(apartFrom)), room);
        };
        QCOMPARE(holders({day, 1030, 1100}, 9), u"Welding, 09:00 - 10:30"_qs);
        QCOMPARE(holders({day, 1030, 1100}, 1), u"Free"_qs);
        QCOMPARE(holders({day, 800, 2000}, 9), u"Free"_qs);
        QCOMPARE(holders({day + 1, 900, 1000}, 9), u"Free"_qs);
    }

    /// A place that was freed is taken first by a server, which must not make its booking the first.
    void TheHolderIsWhoTheBookingNames()
    {
        QCOMPARE(Book(m_welding, {day, 0, 0}, room + 1), QString());
        QCOMPARE(Book(m_pottery, {day, 900, 1100}), QString());
        TestDatabase::Run({"DELETE FROM FacilitiesEmployed WHERE TimeTo = 0"});
        if (TestDatabase::IsOnServer())
            TestDatabase::Run({"VACUUM FacilitiesEmployed"});
        QCOMPARE(Book(m_welding, {day, 800, 1200}), QString());
        const EventHours hours{day, 930, 1000};
        QCOMPARE(Book(m_welding, hours), u"Pottery"_qs);
        QCOMPARE(Holders::At(Holders::Of::Facilities, hours, EventRef(9))->value(room),
                 u"Pottery, 09:00 - 11:00"_qs);
    }

    /// Only the role that is booked again is wiped before.
    void WhoHoldsATutor()
    {
        CourseRef course = m_welding;
        EventHours hours{day, 900, 1000};
        QCOMPARE(ADO_Course_StaffBooking(course, EventRef(1), 5, tutor, hours), QString());
        const auto isFree = [&](RoleTypeRef role) {
            return Holders::At(Holders::Of::Staff, hours, EventRef(1), role)->isEmpty();
        };
        QVERIFY(isFree(tutor) && isFree({}) && !isFree(RoleTypeRef(4)));
    }

    void UsedAndAvailable()
    {
        const ContactRef anna = School::AddPerson("Anna", "Zorn");
        const ContactRef bert = School::AddPerson("Bert", "Abel");
        for (const ContactRef person : {anna, bert})
            TestDatabase::Run(
                {u"INSERT INTO ContactRoles (ContactRef,RoleTypeRef) VALUES (" % SqlNumber(person) % u",3)"});
        CourseRef course = m_welding;
        EventHours hours{day, 900, 1000};
        QCOMPARE(ADO_Course_StaffBooking(course, EventRef(1), anna.number, tutor, hours), QString());
        QCOMPARE(ADO_Course_StaffBooking(course, EventRef(1), -1, tutor, hours), QString());
        ListModel available;
        ListModel used;
        QVERIFY(ADO_Course_FillStaffList(available, tutor));
        QCOMPARE(available.At(0).text + available.At(1).text, u"Abel, BertZorn, Anna"_qs);
        QVERIFY(ADO_Course_ShowUsedStaff(available, used, m_welding, tutor, EventRef(1)));
        QCOMPARE(available.Keys() + used.Keys(),
                 (QStringList{u'!' % SqlNumber(bert), u'!' % SqlNumber(anna)}));
        TestDatabase::Run({u"INSERT INTO CourseStaff (CourseRef,ContactRef,RoleTypeRef) VALUES (" %
                           SqlNumber(m_welding) % u",-2,3)"});
        used.Clear();
        QVERIFY(ADO_Course_ShowUsedStaff(available, used, m_welding, tutor, EventRef(0)));
        QCOMPARE(used.At(0).key + used.At(0).text, u"--2[ To Be Appointed 2 ]"_qs);
    }

    void EventsAreNumberedByDate()
    {
        for (const int place : {0, 1, 2})
            QVERIFY(ADO_Course_AddEvent(m_welding, newEventNo + place, {day + 2 - place, 900, 1000}));
        QVERIFY(ADO_Course_AddEvent(m_welding, newEventNo + 3, {day, 800, 900}));
        QVERIFY(RenumberEvents(m_welding));
        QCOMPARE(ADO_Course_CountEvents(m_welding), 4);
        const auto first = ADO_Course_ShowEvent(m_welding, 1);
        QCOMPARE(first->hours, (EventHours{day, 800, 900}));
        QVERIFY(ADO_Course_UpdateEvent(first->eventRef, 1, SqlSafeText("It's"), {day, 1, 2}));
        QCOMPARE(ADO_Course_ShowEvent(m_welding, 1)->description, u"It's"_qs);
        QCOMPARE(ADO_Course_ShowEvent(m_welding, 4)->hours.date, day + 2);
        QVERIFY(ADO_Course_ShowEvent(m_welding, 5).IsMissing());
        QVERIFY(ADO_Course_DeleteEvent_ALL(m_welding));
        QCOMPARE(ADO_Course_CountEvents(m_welding), 0);
    }

    /// Two workstations want the same room at the same hours: one gets it. Without the guard both do.
    void OneOfTwoWins_data()
    {
        QTest::addColumn<bool>("guarded");
        QTest::newRow("guarded") << true;
        QTest::newRow("unguarded") << false;
    }
    void OneOfTwoWins()
    {
        QFETCH(bool, guarded);
        std::array<QProcess, 2> workstations;
        for (QProcess &process : workstations)
            process.start(QCoreApplication::applicationFilePath(),
                          {"workstation", m_database->ConnectionText(), guarded ? "guarded" : "unguarded"});
        for (QProcess &process : workstations)
            QVERIFY(process.waitForReadyRead(20000));
        for (QProcess &process : workstations) {
            process.write("go\n");
            QVERIFY(process.waitForBytesWritten());
        }
        qsizetype booked = 0;
        for (QProcess &process : workstations) {
            QVERIFY(process.waitForFinished(60000));
            QCOMPARE(process.exitCode(), 0);
            booked += process.readAllStandardOutput().count('1');
        }
        const auto rows = TestDatabase::Rows("SELECT TimeFrom FROM VenuesEmployed").size();
        QCOMPARE(rows, booked);
        QVERIFY2(guarded ? rows == lessons : rows > lessons, qPrintable(QString::number(rows)));
    }

private:
    static QString Book(CourseRef course, EventHours hours, int item = room)
    {
        return BookEventResource(ResourceKind::Facility, course, EventRef(1), item, hours);
    }

    std::unique_ptr<TestDatabase> m_database;
    CourseRef m_welding;
    CourseRef m_pottery;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "workstation") == 0)
        return Workstation(QCoreApplication::arguments().mid(2));
    TestBookings test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_bookings.moc"
