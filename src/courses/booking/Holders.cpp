#include "courses/booking/Holders.h"

#include "database/statements/MiscODBC.h"

namespace
{
struct Bookings {
    const char *routineName;
    QStringView table;
    QStringView field;
};

Bookings BookingsOf(Holders::Of what)
{
    switch (what) {
    case Holders::Of::Venues:
        return {"HoldersOfVenues", u"VenuesEmployed", u"VenueRef"};
    case Holders::Of::Facilities:
        return {"HoldersOfFacilities", u"FacilitiesEmployed", u"FacilityRef"};
    case Holders::Of::Staff:
        break;
    }
    return {"HoldersOfStaff", u"StaffEmployed", u"ContactRef"};
}

/// The bookings with the title of their course.
QString WithTitle(QStringView table)
{
    return u"SELECT " % table % u".*, Courses.Title FROM " % table % u" LEFT JOIN Courses ON " % table %
           u".CourseRef = Courses.CourseRef WHERE " % table;
}

EventHours HoursOf(const Recordset::Row &row)
{
    const auto number = [&](QStringView column) { return static_cast<int>(row.Long(column)); };
    return {number(u"EDate"), number(u"TimeFrom"), number(u"TimeTo")};
}
} // namespace

std::optional<QHash<int, QString>> Holders::At(Of what, const EventHours &hours, EventRef apartFrom)
{
    const Bookings bookings = BookingsOf(what);
    const QStringView table = bookings.table;
    return Reported(bookings.routineName, std::optional<QHash<int, QString>>(), [&] {
        QHash<int, QString> holders;
        const Recordset rows = OpenRecordset(WithTitle(table) % u".EDate = " % SqlNumber(hours.date) %
                                             u" AND " % table % u".EventNo <> " % SqlNumber(apartFrom));
        for (const auto &row : rows) {
            const EventHours held = HoursOf(row);
            const auto itemRef = static_cast<int>(row.Long(bookings.field));
            // A post that nobody fills yet holds nobody.
            if (itemRef > 0 && Clashes(hours.from, held.from, held.to) && !holders.contains(itemRef))
                holders.insert(itemRef, row.Text(u"Title") % u", " % TimesText(held.from, held.to));
        }
        return std::optional(std::move(holders));
    });
}

std::optional<std::vector<Holders::Booking>> Holders::Between(Of what, int itemRef, int firstDay, int lastDay)
{
    const Bookings bookings = BookingsOf(what);
    const QStringView table = bookings.table;
    return Reported(bookings.routineName, std::optional<std::vector<Booking>>(), [&] {
        std::vector<Booking> found;
        for (const auto &row : OpenRecordset(
                 WithTitle(table) % u'.' % bookings.field % u" = " % SqlNumber(itemRef) % u" AND " % table %
                 u".EDate >= " % SqlNumber(firstDay) % u" AND " % table % u".EDate <= " % SqlNumber(lastDay)))
            found.push_back({HoursOf(row), row.Text(u"Title")});
        return std::optional(std::move(found));
    });
}

QString Holders::Text(const QHash<int, QString> &holders, int itemRef)
{
    return holders.value(itemRef, QStringLiteral("Free"));
}
