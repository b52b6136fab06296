#include "courses/events/SeriesRun.h"

#include "controls/TreeModel.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/ResourceTree.h"
#include "courses/events/EventODBC.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"
#include "platform/desktop/Dialogs.h"

#include <array>
#include <optional>

namespace
{
std::optional<BookingClash::Of> BookedAs(const ResourceTree::Node &node)
{
    if (!node.IsItem())
        return std::nullopt;
    switch (node.kind) {
    case ResourceTree::Kind::Facilities:
        return BookingClash::Of::Facility;
    case ResourceTree::Kind::Staff:
        return BookingClash::Of::Staff;
    case ResourceTree::Kind::Venues:
        return BookingClash::Of::Venue;
    default:
        return std::nullopt;
    }
}

/// A table that resources refer to; `refOf` is 0 for one that does not.
struct ReferredTable {
    QString table;
    QString keyColumn;
    int (*refOf)(const SeriesResource &resource);
};

const std::array<ReferredTable, 4> &ReferredTables()
{
    using Of = BookingClash::Of;
    static const std::array<ReferredTable, 4> tables{{
        {QStringLiteral("Facilities"), QStringLiteral("FacilityRef"),
         [](const SeriesResource &one) { return one.what == Of::Facility ? one.itemRef : 0; }},
        {QStringLiteral("Venues"), QStringLiteral("VenueRef"),
         [](const SeriesResource &one) { return one.what == Of::Venue ? one.itemRef : 0; }},
        {QStringLiteral("Contacts"), QStringLiteral("ContactRef"),
         [](const SeriesResource &one) { return one.what == Of::Staff ? one.itemRef : 0; }},
        {QStringLiteral("RoleTypes"), QStringLiteral("RoleTypeRef"),
         [](const SeriesResource &one) { return one.roleTypeRef.number; }},
    }};
    return tables;
}

/// Which of the rows that the resources refer to are gone; nothing on an error. A post that nobody fills yet
/// refers to nobody.
std::optional<QSet<int>> DeletedOf(const ReferredTable &table, const std::vector<SeriesResource> &resources)
{
    QSet<int> refs;
    for (const SeriesResource &resource : resources) {
        if (table.refOf(resource) > 0)
            refs.insert(table.refOf(resource));
    }
    if (refs.isEmpty())
        return refs;
    const auto living = ADO_LivingKeys(table.table, table.keyColumn, refs);
    return living ? std::optional(refs.subtract(*living)) : std::nullopt;
}

QString Book(CourseRef courseRef, EventRef eventRef, const SeriesResource &resource, EventHours hours)
{
    switch (resource.what) {
    case BookingClash::Of::Venue:
        return BookEventResource(ResourceKind::Venue, courseRef, eventRef, resource.itemRef, hours);
    case BookingClash::Of::Facility:
        return BookEventResource(ResourceKind::Facility, courseRef, eventRef, resource.itemRef, hours);
    case BookingClash::Of::Staff:
        break;
    }
    return ADO_Course_StaffBooking(courseRef, eventRef, resource.itemRef, resource.roleTypeRef, hours);
}

std::vector<BookingClash> BookOn(CourseRef courseRef, EventRef eventRef,
                                 const std::vector<SeriesResource> &resources, const EventHours &hours)
{
    std::vector<BookingClash> clashes;
    for (const SeriesResource &resource : resources) {
        const QString holder = Book(courseRef, eventRef, resource, hours);
        if (!holder.isEmpty())
            clashes.push_back({resource.what, resource.name, holder});
    }
    return clashes;
}

QStringView MarkOf(BookingClash::Of what)
{
    switch (what) {
    case BookingClash::Of::Facility:
        return u"Facility:";
    case BookingClash::Of::Staff:
        return u"Staff:";
    case BookingClash::Of::Venue:
        break;
    }
    return u"Venue:";
}

void TellUnbooked(const UnbookedEvent &event)
{
    QString report;
    for (const BookingClash &clash : event.clashes)
        report += MarkOf(clash.what) % clash.name % clash.title % u'\n';
    Dialogs::MsgBox(u"Unable to book one or more items on Event " % QString::number(event.number) % u'\n' %
                        report,
                    QStringLiteral("Event bookings"), Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
}

/// Adds one event with its bookings; what it lacks is added to `made`.
void MakeEvent(CourseRef courseRef, const EventHours &hours, const std::vector<SeriesResource> &resources,
               SeriesMade &made)
{
    const EventRef eventRef = ADO_Course_AddEvent(courseRef, newEventNo + made.events, hours);
    ++made.events;
    if (!eventRef)
        return;
    std::vector<BookingClash> clashes = BookOn(courseRef, eventRef, resources, hours);
    if (clashes.empty())
        return;
    made.unbooked.push_back({made.events, hours, std::move(clashes)});
    TellUnbooked(made.unbooked.back());
}
} // namespace

std::vector<SeriesResource> Series_Resources(const TreeModel &tree)
{
    std::vector<SeriesResource> resources;
    for (const TreeNode *node : tree.Nodes()) {
        const ResourceTree::Node item = ResourceTree::Parse(node->key);
        if (const auto what = BookedAs(item))
            resources.push_back({*what, item.itemRef, item.roleTypeRef, node->text});
    }
    return resources;
}

bool Series_LeaveOutDeleted(std::vector<SeriesResource> &resources, const QString &title)
{
    std::vector<SeriesResource> left = resources;
    QStringList names;
    for (const ReferredTable &table : ReferredTables()) {
        const std::optional<QSet<int>> gone = DeletedOf(table, left);
        if (!gone)
            return false;
        std::erase_if(left, [&](const SeriesResource &resource) {
            const bool isGone = gone->contains(table.refOf(resource));
            if (isGone)
                names.append(resource.name);
            return isGone;
        });
    }
    resources = std::move(left);
    TellLeftOut(names, title);
    return true;
}

SeriesMade Series_Make(CourseRef courseRef, const SeriesPlan &plan,
                       const std::vector<SeriesResource> &resources, Progress &progress)
{
    SeriesMade made;
    Reported("Series_Make", [&] {
        EventSeries series(plan);
        WriteGroup group(gConnection);
        while (progress(made.events, plan.count)) {
            const auto meeting = series.Next();
            if (!meeting) {
                made.isExhausted = !series.IsComplete();
                break;
            }
            if (!meeting->excludedBy)
                MakeEvent(courseRef, meeting->hours, resources, made);
            EndRow(group);
        }
        EndRows(group);
    });
    return made;
}
