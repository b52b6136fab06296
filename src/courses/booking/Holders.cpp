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
} // namespace

std::optional<QHash<int, QString>> Holders::At(Of what, const EventHours &hours, EventRef apartFrom)
{
    const Bookings bookings = BookingsOf(what);
    const QStringView table = bookings.table;
    return Reported(bookings.routineName, std::optional<QHash<int, QString>>(), [&] {
        QHash<int, QString> holders;
        const Recordset rows = OpenRecordset(
            u"SELECT " % table % u".*, Courses.Title FROM " % table % u" LEFT JOIN Courses ON " % table %
            u".CourseRef = Courses.CourseRef WHERE " % table % u".EDate = " % SqlNumber(hours.date) %
            u" AND " % table % u".EventNo <> " % SqlNumber(apartFrom));
        for (const auto &row : rows) {
            const auto from = static_cast<int>(row.Long(u"TimeFrom"));
            const auto to = static_cast<int>(row.Long(u"TimeTo"));
            const auto itemRef = static_cast<int>(row.Long(bookings.field));
            // A post that nobody fills yet holds nobody.
            if (itemRef > 0 && Clashes(hours.from, from, to) && !holders.contains(itemRef))
                holders.insert(itemRef, row.Text(u"Title") % u", " % TimesText(from, to));
        }
        return std::optional(std::move(holders));
    });
}

QString Holders::Text(const QHash<int, QString> &holders, int itemRef)
{
    return holders.value(itemRef, QStringLiteral("Free"));
}
