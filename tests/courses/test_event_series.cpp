#include "courses/events/EventSeries.h"
#include "database/values/DecodeDateFunc.h"

#include <QTest>

namespace
{
using Times = SeriesPlan::Times;

SeriesPlan Weekly(QDate start, const QList<int> &days, int count, int interval = 7)
{
    SeriesPlan plan{start, count, true, {}, {}, interval, {}};
    for (const int day : days)
        plan.days[static_cast<size_t>(day - 1)] = Times{day * 100, day * 100 + 30};
    return plan;
}

/// The dates of the events, the excluded ones in brackets.
QString Drawn(SeriesPlan plan)
{
    QStringList drawn;
    EventSeries series(std::move(plan));
    while (const auto meeting = series.Next())
        drawn += meeting->excludedBy ? QString(u'(' % QString::number(meeting->hours.date) % u')')
                                     : QString::number(meeting->hours.date);
    return drawn.join(u' ');
}

/// The same worked out another way: a day belongs to the cycle that began last before it, and is met if its
/// weekday is ticked and it is not excluded.
QList<int> DaysByCalendar(const SeriesPlan &plan)
{
    QList<int> days;
    for (QDate day = plan.start; days.size() < plan.count; day = day.addDays(1)) {
        const auto since = plan.start.daysTo(day);
        const int date = day.year() * 10000 + day.month() * 100 + day.day();
        const bool isExcluded = std::ranges::any_of(
            plan.exclusions, [date](const auto &out) { return out.from <= date && date <= out.to; });
        if (since % plan.interval < 7 && plan.days[static_cast<size_t>(day.dayOfWeek() - 1)] && !isExcluded)
            days.append(date);
    }
    return days;
}
} // namespace

class TestEventSeries final : public QObject
{
    Q_OBJECT

private slots:
    void Examples()
    {
        const QDate wednesday(2005, 3, 2);
        SeriesPlan weekly = Weekly(wednesday, {3}, 3);
        weekly.exclusions = {{"Closed", 20050309, 20050309}};
        QCOMPARE(Drawn(weekly), u"20050302 (20050309) 20050316 20050323"_qs);
        QCOMPARE(Drawn(Weekly(wednesday, {1, 3}, 4, 14)), u"20050302 20050307 20050316 20050321"_qs);
        QCOMPARE(Drawn(Weekly(QDate(2005, 3, 5), {1, 6}, 4)), u"20050305 20050307 20050312 20050314"_qs);
        QCOMPARE(Drawn(Weekly(QDate(2005, 1, 31), {1}, 3, 28)), u"20050131 20050228 20050328"_qs);
        SeriesPlan daily{QDate(2024, 2, 28), 3, false, {930, 1000}, {}, 7, {{"All", 20240101, 20241231}}};
        QCOMPARE(Drawn(daily), u"20240228 20240229 20240301"_qs);
        QCOMPARE(Drawn(Weekly(wednesday, {3}, 0)), QString());
    }

    /// Every choice of three weekdays, every start in a week, every interval, with and without exclusions.
    void EveryPatternOfAWeek()
    {
        for (int start = 0; start < 7; ++start) {
            for (int ticked = 1; ticked < 128; ++ticked) {
                for (const int interval : {7, 14, 28}) {
                    const QDate first = QDate(2026, 12, 21).addDays(start);
                    SeriesPlan plan = Weekly(first, {first.dayOfWeek()}, 9, interval);
                    for (int day = 1; day <= 7; ++day) {
                        if (ticked & (1 << (day - 1)))
                            plan.days[static_cast<size_t>(day - 1)] = Times{day * 100, day * 100 + 30};
                    }
                    for (const bool isHoliday : {false, true}) {
                        if (isHoliday)
                            plan.exclusions = {{"Year's end", 20261224, 20270103},
                                               {"One", 20270119, 20270119}};
                        QList<int> met;
                        EventSeries series(plan);
                        while (const auto meeting = series.Next()) {
                            if (meeting->excludedBy)
                                continue;
                            met.append(meeting->hours.date);
                            QCOMPARE(meeting->hours.from, IntToDate(met.last()).dayOfWeek() * 100);
                        }
                        QVERIFY(series.IsComplete());
                        QCOMPARE(met, DaysByCalendar(plan));
                    }
                }
            }
        }
    }

    /// A series ends where the calendar does, with fewer events than were wanted.
    void EndsWithTheCalendar()
    {
        SeriesPlan plan = Weekly(QDate(2026, 11, 23), {1}, 5);
        plan.exclusions = {{"For ever", 20261124, 99991231}};
        EventSeries series(plan);
        while (series.Next()) {
        }
        QVERIFY(!series.IsComplete());
        QCOMPARE(series.Given(), 1);
        EventSeries invalid(Weekly(QDate(), {1}, 5));
        QVERIFY(!invalid.Next());
    }
};

QTEST_GUILESS_MAIN(TestEventSeries)
#include "test_event_series.moc"
