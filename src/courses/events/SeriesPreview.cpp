#include "courses/events/SeriesPreview.h"

#include "courses/booking/Holders.h"
#include "courses/lists/CourseListODBC.h"

#include <QHash>

#include <algorithm>

namespace
{
using Bookings = std::vector<Holders::Booking>;

Holders::Of HeldKind(BookingClash::Of what)
{
    switch (what) {
    case BookingClash::Of::Venue:
        return Holders::Of::Venues;
    case BookingClash::Of::Facility:
        return Holders::Of::Facilities;
    case BookingClash::Of::Staff:
        break;
    }
    return Holders::Of::Staff;
}

/// Names the resource on each date on which it is held: by a booking, or by the course whose title is given.
void NameClashes(SeriesPreview &preview, const SeriesResource &resource, const QString &heldBy)
{
    if (resource.itemRef < 1)
        return;
    QHash<int, Bookings> byDay;
    const auto stored = Holders::Between(HeldKind(resource.what), resource.itemRef,
                                         preview.dates.front().hours.date, preview.dates.back().hours.date);
    for (const Holders::Booking &booking : stored.value_or(Bookings()))
        byDay[booking.hours.date].push_back(booking);
    for (SeriesDate &date : preview.dates) {
        if (date.isExcluded)
            continue;
        Bookings onDay = byDay.value(date.hours.date);
        if (!heldBy.isNull())
            onDay.push_back({date.hours, heldBy});
        const auto held = std::ranges::find_if(onDay, [&date](const Holders::Booking &booking) {
            return Clashes(date.hours.from, booking.hours.from, booking.hours.to);
        });
        if (held == onDay.end())
            continue;
        if (!date.clashes.isEmpty())
            date.clashes += u"; ";
        date.clashes += resource.name % u": " % Holders::HolderText(held->title, held->hours);
    }
}

bool IsSame(const SeriesResource &one, const SeriesResource &other)
{
    return one.what == other.what && one.itemRef == other.itemRef;
}
} // namespace

SeriesPreview Series_Preview(CourseRef courseRef, const SeriesPlan &plan,
                             const std::vector<SeriesResource> &resources, int most)
{
    SeriesPreview preview;
    EventSeries series(plan);
    while (static_cast<int>(preview.dates.size()) < most) {
        const auto meeting = series.Next();
        if (!meeting)
            break;
        SeriesDate date{meeting->hours, {}, meeting->excludedBy != nullptr, {}};
        if (date.isExcluded)
            date.excludedBy = meeting->excludedBy->reference;
        preview.dates.push_back(std::move(date));
    }
    const bool isFull = static_cast<int>(preview.dates.size()) == most;
    preview.goesOn = isFull && !series.IsComplete();
    preview.isExhausted = !isFull && !series.IsComplete();
    if (preview.dates.empty())
        return preview;
    for (auto resource = resources.begin(); resource != resources.end(); ++resource) {
        const bool isAgain = std::any_of(resources.begin(), resource,
                                         [&](const SeriesResource &one) { return IsSame(one, *resource); });
        NameClashes(preview, *resource, isAgain ? ADO_Course_Title(courseRef) : QString());
    }
    return preview;
}
