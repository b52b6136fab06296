#pragma once

#include "courses/booking/EventHours.h"

#include <QDate>
#include <QString>

#include <array>
#include <optional>
#include <vector>

/// What a series of events is made from.
struct SeriesPlan {
    struct Times {
        int from = 0; ///< time-int
        int to = 0;   ///< time-int
    };
    /// Days on which nothing takes place, the first and the last among them, as date-ints.
    struct Exclusion {
        QString reference;
        int from = 0;
        int to = 0;
    };

    QDate start;
    int count = 0;                              ///< of the events that are made
    bool isRegular = false;                     ///< by weekdays and cycles; otherwise on consecutive days
    Times times;                                ///< of a series that is not regular
    std::array<std::optional<Times>, 7> days{}; ///< Monday first; the weekdays that the series falls on
    int interval = 7;                           ///< days from one cycle to the next
    std::vector<Exclusion> exclusions;          ///< count only for a regular series
};

/// Gives the dates of a series one after the other. A regular series takes its weekdays in turn, beginning
/// with that of its start; after the last of them comes the next cycle, so and so many days after the start
/// of the one before. An excluded date does not count, so that the series ends later.
class EventSeries final
{
public:
    explicit EventSeries(SeriesPlan plan);

    struct Meeting {
        EventHours hours;
        const SeriesPlan::Exclusion *excludedBy = nullptr; ///< null = an event
    };
    /// The next date, excluded or not; nothing after the last event, and where the calendar ends before.
    std::optional<Meeting> Next();
    /// True once as many events were given as were wanted.
    bool IsComplete() const { return m_given >= m_plan.count; }
    /// How many events were given so far; excluded dates do not count.
    int Given() const { return m_given; }

private:
    void Step();
    const SeriesPlan::Exclusion *ExclusionOf(int date) const;
    std::optional<Meeting> NextRegular();

    SeriesPlan m_plan;
    std::vector<int> m_pattern; ///< weekdays, Monday 1 to Sunday 7, in the order of a cycle
    size_t m_patternIndex = 0;
    QDate m_cycleStart;
    QDate m_current;
    int m_given = 0;
};
