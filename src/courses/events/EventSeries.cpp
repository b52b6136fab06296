#include "courses/events/EventSeries.h"

#include "database/values/DecodeDateFunc.h"

#include <utility>

namespace
{
/// The last day that has a date-int of eight digits.
const QDate lastDay(9999, 12, 31);
} // namespace

EventSeries::EventSeries(SeriesPlan plan)
    : m_plan(std::move(plan))
    , m_cycleStart(m_plan.start)
    , m_current(m_plan.start)
{
    if (!m_plan.isRegular || !m_plan.start.isValid())
        return;
    for (int i = 0; i < 7; ++i) {
        const int day = (m_plan.start.dayOfWeek() - 1 + i) % 7;
        if (m_plan.days[static_cast<size_t>(day)])
            m_pattern.push_back(day + 1);
    }
}

const SeriesPlan::Exclusion *EventSeries::ExclusionOf(int date) const
{
    for (const SeriesPlan::Exclusion &exclusion : m_plan.exclusions) {
        if (exclusion.from <= date && exclusion.to >= date)
            return &exclusion;
    }
    return nullptr;
}

/// Goes on to the next weekday of the pattern, or to the next cycle after the last one.
void EventSeries::Step()
{
    if (++m_patternIndex < m_pattern.size()) {
        m_current = m_current.addDays(1);
        return;
    }
    m_patternIndex = 0;
    m_cycleStart = m_cycleStart.addDays(m_plan.interval);
    m_current = m_cycleStart;
}

std::optional<EventSeries::Meeting> EventSeries::NextRegular()
{
    if (m_pattern.empty())
        return std::nullopt;
    const int day = m_pattern[m_patternIndex];
    m_current = m_current.addDays((day - m_current.dayOfWeek() + 7) % 7);
    if (m_current > lastDay)
        return std::nullopt;
    const SeriesPlan::Times &times = *m_plan.days[static_cast<size_t>(day - 1)];
    Meeting meeting{{DateToInt(m_current), times.from, times.to}};
    meeting.excludedBy = ExclusionOf(meeting.hours.date);
    Step();
    return meeting;
}

std::optional<EventSeries::Meeting> EventSeries::Next()
{
    if (IsComplete() || !m_current.isValid() || m_current > lastDay)
        return std::nullopt;
    std::optional<Meeting> meeting;
    if (m_plan.isRegular) {
        meeting = NextRegular();
    } else {
        meeting = Meeting{{DateToInt(m_current), m_plan.times.from, m_plan.times.to}};
        m_current = m_current.addDays(1);
    }
    if (meeting && !meeting->excludedBy)
        ++m_given;
    return meeting;
}
