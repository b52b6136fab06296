#include "courses/booking/Holders.h"

#include "database/statements/MiscODBC.h"

#include <set>

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

EventHours HoursOf(const Recordset::Row &row)
{
    const auto number = [&](QStringView column) { return static_cast<int>(row.Long(column)); };
    return {number(u"EDate"), number(u"TimeFrom"), number(u"TimeTo")};
}
CourseRef CourseOf(const Recordset::Row &row)
{
    return CourseRef(static_cast<int>(row.Long(u"CourseRef")));
}

/// Read apart from the bookings, which in a query of two tables a server returns in any order; the first that
/// clashes must be the one that the booking itself would name.
QHash<CourseRef, QString> TitlesOf(const std::set<CourseRef> &courses)
{
    QStringList terms;
    for (const CourseRef course : courses)
        terms.append(u"CourseRef = " % SqlNumber(course));
    QHash<CourseRef, QString> titles;
    if (terms.isEmpty())
        return titles;
    for (const auto &row :
         OpenRecordset(u"SELECT CourseRef, Title FROM Courses WHERE " % terms.join(QStringLiteral(" OR "))))
        titles.insert(CourseOf(row), row.Text(u"Title"));
    return titles;
}

/// The bookings of the event that are wiped before it is booked again.
QString NotWiped(Holders::Of what, EventRef eventRef, RoleTypeRef role)
{
    QString elsewhere = u"EventNo <> " % SqlNumber(eventRef);
    if (what != Holders::Of::Staff || !role)
        return elsewhere;
    return u'(' % elsewhere % u" OR RoleTypeRef <> " % SqlNumber(role) % u')';
}

struct Held {
    CourseRef courseRef;
    EventHours hours;
};
} // namespace

std::optional<QHash<int, QString>> Holders::At(Of what, const EventHours &hours, EventRef apartFrom,
                                               RoleTypeRef role)
{
    const Bookings bookings = BookingsOf(what);
    return Reported(bookings.routineName, std::optional<QHash<int, QString>>(), [&] {
        QHash<int, Held> held;
        std::set<CourseRef> courses;
        for (const auto &row :
             OpenRecordset(u"SELECT * FROM " % bookings.table % u" WHERE EDate = " % SqlNumber(hours.date) %
                           u" AND " % NotWiped(what, apartFrom, role))) {
            const Held one{CourseOf(row), HoursOf(row)};
            const auto itemRef = static_cast<int>(row.Long(bookings.field));
            // A post that nobody fills yet holds nobody.
            if (itemRef < 1 || !Clashes(hours.from, one.hours.from, one.hours.to) || held.contains(itemRef))
                continue;
            held.insert(itemRef, one);
            courses.insert(one.courseRef);
        }
        const QHash<CourseRef, QString> titles = TitlesOf(courses);
        QHash<int, QString> holders;
        for (auto one = held.begin(); one != held.end(); ++one)
            holders.insert(one.key(), HolderText(titles.value(one->courseRef), one->hours));
        return std::optional(std::move(holders));
    });
}

QString Holders::HolderText(const QString &title, const EventHours &hours)
{
    return title % u", " % TimesText(hours.from, hours.to);
}

std::optional<std::vector<Holders::Booking>> Holders::Between(Of what, int itemRef, int firstDay, int lastDay)
{
    const Bookings bookings = BookingsOf(what);
    return Reported(bookings.routineName, std::optional<std::vector<Booking>>(), [&] {
        const Recordset rows = OpenRecordset(
            u"SELECT * FROM " % bookings.table % u" WHERE " % bookings.field % u" = " % SqlNumber(itemRef) %
            u" AND EDate >= " % SqlNumber(firstDay) % u" AND EDate <= " % SqlNumber(lastDay));
        std::set<CourseRef> courses;
        for (const auto &row : rows)
            courses.insert(CourseOf(row));
        const QHash<CourseRef, QString> titles = TitlesOf(courses);
        std::vector<Booking> found;
        for (const auto &row : rows)
            found.push_back({HoursOf(row), titles.value(CourseOf(row))});
        return std::optional(std::move(found));
    });
}

QString Holders::Text(const QHash<int, QString> &holders, int itemRef)
{
    return holders.value(itemRef, freeText);
}
