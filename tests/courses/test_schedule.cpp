#include "core/session/Session.h"
#include "courses/booking/BookingODBC.h"
#include "courses/events/EventODBC.h"
#include "courses/schedule/ICalendar.h"
#include "courses/schedule/MonthModel.h"
#include "courses/schedule/MonthView.h"
#include "courses/schedule/frmSchedule.h"
#include "database/statements/Security.h"
#include "enrolment/School.h"
#include "forms/fields/ComboBox.h"
#include "forms/lists/ListView.h"
#include "platform/desktop/Clock.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"

#include <QFile>
#include <QTest>

#include <libical/ical.h>

namespace
{
const QString longText = u"It's; 50%, "_qs + QString(200, u'ü') + u"\nsecond line"_qs;

/// What the calendar says, read by the library's own parser: "UID start end summary location", sorted.
QStringList Read(const QByteArray &text)
{
    QStringList entries;
    const std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> calendar(
        icalparser_parse_string(text.constData()), icalcomponent_free);
    if (!calendar || !icalrestriction_check(calendar.get()))
        return {u"not a calendar"_qs};
    for (icalcomponent *entry = icalcomponent_get_first_component(calendar.get(), ICAL_VEVENT_COMPONENT);
         entry; entry = icalcomponent_get_next_component(calendar.get(), ICAL_VEVENT_COMPONENT)) {
        const icaltimetype start = icalcomponent_get_dtstart(entry);
        const icaltimetype end = icalcomponent_get_dtend(entry);
        const QString where = QString::fromUtf8(icalcomponent_get_location(entry));
        entries.append(QString::fromUtf8(icalcomponent_get_uid(entry)) % u' ' %
                       QString::fromLatin1(icaltime_as_ical_string(start)) % u' ' %
                       QString::fromLatin1(icaltime_as_ical_string(end)) % u' ' %
                       QString::fromUtf8(icalcomponent_get_summary(entry)) %
                       (where.isEmpty() ? where : QString(u" @" % where)));
    }
    entries.sort();
    return entries;
}
} // namespace

class TestSchedule final : public QObject
{
    Q_OBJECT

private slots:
    /// Welding on the last day of the year, with everything booked, and on the first day of the next.
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = RightsBlank();
        Clock::StopAt(QDateTime(QDate(2026, 12, 15), QTime(9, 0)));
        const EventHours hours{20261231, 900, 1030};
        m_welding = School::AddCourse("Welding", 10);
        m_event = ADO_Course_AddEvent(m_welding, 1, hours);
        ADO_Course_AddEvent(m_welding, 2, {20270101, 1400, 1400});
        ADO_Course_UpdateEvent(m_event, 1, SqlSafeText(longText), hours);
        const ContactRef anna = School::AddPerson("Anna", "Able");
        TestDatabase::Run({"INSERT INTO Venues (Description,ReferenceID) VALUES ('Hall','')",
                           "INSERT INTO Facilities (Name,ReferenceID) VALUES ('Torch','')",
                           "INSERT INTO RoleTypes (Name,ReferenceID) VALUES ('Tutor','')"});
        m_tutor = RoleTypeRef(School::LastKey("RoleTypes", "RoleTypeRef"));
        CourseRef course = m_welding;
        EventHours at = hours;
        BookEventResource(ResourceKind::Venue, course, m_event, School::LastKey("Venues", "VenueRef"), at);
        BookEventResource(ResourceKind::Facility, course, m_event,
                          School::LastKey("Facilities", "FacilityRef"), at);
        ADO_Course_StaffBooking(course, m_event, anna.number, m_tutor, at);
        ADO_Course_StaffBooking(course, m_event, -2, m_tutor, at);
    }
    void cleanup()
    {
        Clock::StopAt({});
        m_database.reset();
    }

    void EachKindShowsItsOwn_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("rows");
        const QString text = QString(longText).replace(u'\n', u' ');
        QTest::newRow("events") << 0 << QStringList{u"Welding|09:00 - 10:30|1|"_qs + text};
        QTest::newRow("venues") << 1 << QStringList{u"Hall|09:00 - 10:30|Welding|1"_qs};
        QTest::newRow("staff") << 2
                               << QStringList{u"Anna Able|Tutor|09:00 - 10:30|Welding|1|"_qs + text,
                                              u"[ To Be Appointed 2 ]|Tutor|09:00 - 10:30|Welding|1|"_qs +
                                                  text};
        QTest::newRow("facilities") << 3 << QStringList{u"Torch|09:00 - 10:30|Welding|1|"_qs + text};
    }
    /// The last day of the year is in view both from December and from January.
    void EachKindShowsItsOwn()
    {
        QFETCH(int, kind);
        QFETCH(QStringList, rows);
        frmSchedule form;
        form.show();
        Find<ComboBox>(form, "ID_Type")->setCurrentIndex(kind);
        auto *grid = Find<MonthView>(form, "Grid1");
        QTest::keyClick(grid, Qt::Key_PageDown);
        QCOMPARE(Find<QWidget>(form, "Frame1")->property("title").toString(), u"January 2027"_qs);
        grid->SetDay(QDate(2026, 12, 31));
        QStringList shown;
        const ListModel &list = Find<ListView>(form, "EventInfo")->Model();
        for (int row = 0; row < list.Count(); ++row)
            shown.append((QStringList{list.At(row).text} + list.At(row).subItems).join(u'|'));
        QCOMPARE(shown, rows);
        QVERIFY(grid->currentIndex().data(MonthModel::IsMarkedRole).toBool());
        const QModelIndex newYear = grid->currentIndex().siblingAtColumn(grid->currentIndex().column() + 1);
        QCOMPARE(newYear.data(MonthModel::IsMarkedRole).toBool(), kind == 0);
    }

    void WalksByKeys()
    {
        frmSchedule form;
        form.show();
        auto *grid = Find<MonthView>(form, "Grid1");
        QCOMPARE(form.focusWidget(), grid);
        QCOMPARE(grid->Day(), QDate(2026, 12, 15));
        const std::pair<Qt::Key, QDate> steps[] = {
            {Qt::Key_Right, QDate(2026, 12, 16)},   {Qt::Key_Down, QDate(2026, 12, 23)},
            {Qt::Key_Down, QDate(2026, 12, 30)},    {Qt::Key_Down, QDate(2027, 1, 6)},
            {Qt::Key_Left, QDate(2027, 1, 5)},      {Qt::Key_Up, QDate(2026, 12, 29)},
            {Qt::Key_PageDown, QDate(2027, 1, 29)}, {Qt::Key_PageDown, QDate(2027, 2, 28)},
            {Qt::Key_Home, QDate(2026, 12, 15)}};
        for (const auto &[key, day] : steps) {
            QTest::keyClick(grid, key);
            QCOMPARE(grid->Day(), day);
        }
        // February is spelt as it always was, and the years end in 2050.
        Find<ComboBox>(form, "ID_Month")->setCurrentIndex(1);
        QCOMPARE(Find<QWidget>(form, "Frame1")->property("title").toString(), u"Febuary 2026"_qs);
        QCOMPARE(grid->model()->index(0, 0).data().toString(), u"1 Feb"_qs);
        // Without a current day there is nothing to copy, and the keys start in the month in view.
        QTest::keySequence(grid, QKeySequence::Copy);
        QTest::keyClick(grid, Qt::Key_Right);
        QCOMPARE(grid->Day(), QDate(2026, 2, 2));
        Find<ComboBox>(form, "ID_Year")->setCurrentIndex(2050 - 1999);
        Press(form, "ID_NextYear");
        Find<ComboBox>(form, "ID_Month")->setCurrentIndex(11);
        Press(form, "ID_NextMonth");
        QCOMPARE(Find<QWidget>(form, "Frame1")->property("title").toString(), u"December 2050"_qs);
    }

    void SavedCalendarIsReadBack()
    {
        const QString file = m_database->Directory() % u"/term.ics";
        frmSchedule form;
        form.show();
        const QString key = SqlNumber(m_event);
        const QString when = u"@veltrane 20261231T090000 20261231T103000 "_qs;
        const QString staff = u"-role-"_qs % SqlNumber(m_tutor) % when;
        const QStringList expected[] = {
            {u"event-"_qs % key % when % u"Welding"},
            {u"event-"_qs % key % u"-venue-" % QString::number(School::LastKey("Venues", "VenueRef")) % when %
             u"Welding @Hall"},
            {u"event-"_qs % key % u"-staff--2" % staff % u"Welding (Tutor: [ To Be Appointed 2 ])",
             u"event-"_qs % key % u"-staff-" % QString::number(School::LastKey("Contacts", "ContactRef")) %
                 staff % u"Welding (Tutor: Anna Able)"},
            {u"event-"_qs % key % u"-facility-" %
             QString::number(School::LastKey("Facilities", "FacilityRef")) % when % u"Welding: Torch"}};
        for (int kind = 0; kind < 4; ++kind) {
            Find<ComboBox>(form, "ID_Type")->setCurrentIndex(kind);
            ScriptedDialogs user;
            user.ExpectFile("Save as iCalendar", file);
            user.Expect("Calendar", QString::number(expected[kind].size()) % u" entries were written to '" %
                                        file % u"'.");
            Press(form, "SaveBtn");
            QFile saved(file);
            QVERIFY(saved.open(QIODevice::ReadOnly));
            const QByteArray text = saved.readAll();
            QCOMPARE(Read(text), expected[kind]);
            for (const QByteArray &line : text.split('\n'))
                QVERIFY(line.size() <= 76);
        }
        // An event that ends as it starts has no end.
        const auto newYear = ADO_Schedule_DisplayEvents(20270101, ScheduleKind::Events);
        QVERIFY(!ICalendar::Text(*newYear, ScheduleKind::Events, Clock::Now()).contains("DTEND"));
    }

    void EnterOpensTheEventOnTheTabOfItsKind()
    {
        frmSchedule form;
        form.show();
        Find<MonthView>(form, "Grid1")->SetDay(QDate(2026, 12, 31));
        Find<ComboBox>(form, "ID_Type")->setCurrentIndex(3);
        ModalDriver hands;
        hands.Expect("frmEvent", [](QDialog &event) {
            QCOMPARE(Find<QTabWidget>(event, "TabStrip1")->currentIndex(), 3);
            Press(event, "ClearCBtn");
            Press(event, "UpBtn");
            Press(event, "ExitBtn");
        });
        QTest::keyClick(Find<ListView>(form, "EventInfo"), Qt::Key_Return);
        QVERIFY(Find<ListView>(form, "EventInfo")->Model().IsEmpty());
    }

private:
    std::unique_ptr<TestDatabase> m_database;
    CourseRef m_welding;
    EventRef m_event;
    RoleTypeRef m_tutor;
};

QTEST_MAIN(TestSchedule)
#include "test_schedule.moc"
