#include "courses/record/ResourceTreeODBC.h"

#include "core/session/Progress.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/UsedResourcesODBC.h"
#include "courses/events/AttendanceODBC.h"
#include "courses/events/EventODBC.h"
#include "database/statements/MiscODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "platform/sql/NameCollation.h"

#include <QSet>

#include <algorithm>

namespace
{
using ResourceTree::Kind;
using ResourceTree::Node;

/// What a kind of items is called, by reference: few names serve thousands of nodes.
using Names = QHash<int, QString>;

/// Items as they were read.
struct Items {
    std::vector<Node> nodes;
    Names names;

    template <typename Name>
    void Add(const Node &node, Name &&name)
    {
        nodes.push_back(node);
        if (!names.contains(node.itemRef))
            names.insert(node.itemRef, name());
    }
};

struct Role {
    RoleTypeRef roleTypeRef;
    QString name;
};

int Number(const Recordset::Row &row, QStringView column)
{
    return static_cast<int>(row.Long(column));
}

QString FullName(const Recordset::Row &row)
{
    return row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename");
}

/// The place of each item among the others by name.
QHash<int, int> PlacesByName(const Names &names)
{
    std::vector<std::pair<QString, int>> byName;
    for (auto name = names.begin(); name != names.end(); ++name)
        byName.emplace_back(name.value(), name.key());
    std::ranges::sort(byName, [](const auto &one, const auto &other) {
        const int order = NameCollation().compare(one.first, other.first);
        return order == 0 ? one.second < other.second : order < 0;
    });
    QHash<int, int> places;
    for (const auto &[name, itemRef] : byName)
        places.insert(itemRef, static_cast<int>(places.size()));
    return places;
}

/// By event, then by name.
void Sort(Items &items)
{
    const QHash<int, int> places = PlacesByName(items.names);
    struct Placed {
        int event;
        int place;
        Node node;
    };
    std::vector<Placed> placed;
    placed.reserve(items.nodes.size());
    for (const Node &node : items.nodes)
        placed.push_back({node.eventRef.number, places.value(node.itemRef), node});
    std::ranges::stable_sort(placed, {}, [](const Placed &one) { return std::pair(one.event, one.place); });
    std::ranges::transform(placed, items.nodes.begin(), &Placed::node);
}

std::vector<TreeModel::NewNode> ReadEvents(CourseRef courseRef, CourseResources &resources)
{
    std::vector<TreeModel::NewNode> nodes;
    int place = 0;
    for (const auto &row : OpenRecordset(u"SELECT * FROM CourseEvents WHERE CourseRef = " %
                                         SqlNumber(courseRef) % u" ORDER BY EventNo")) {
        const EventRef eventRef(Number(row, u"EventRef"));
        EventHours hours{Number(row, u"EDate"), Number(row, u"TimeFrom"), Number(row, u"TimeTo")};
        const QString name = u"Event " % SqlNumber(++place);
        std::ranges::move(
            ResourceTree::NewEvent(
                eventRef, hours.date == 0 ? name : QString(name % u" on " % IntToDateText(hours.date))),
            std::back_inserter(nodes));
        resources.hours.insert(eventRef, hours);
        resources.read.push_back({Kind::Event, eventRef});
    }
    return nodes;
}

std::vector<Role> ReadRoles()
{
    std::vector<Role> roles;
    for (const auto &row : OpenRecordset(QStringLiteral("SELECT Name, RoleTypeRef FROM RoleTypes")))
        roles.push_back({RoleTypeRef(Number(row, u"RoleTypeRef")), row.Text(u"Name")});
    return roles;
}

void ReadEnrolled(CourseRef courseRef, ListModel &enrolled)
{
    std::vector<ListItem> people;
    for (const auto &row :
         OpenRecordset(u"SELECT Contacts.Cust_Forename, Contacts.Cust_Surname, StudentsEnrolled.* FROM "
                       u"StudentsEnrolled INNER JOIN Contacts ON StudentsEnrolled.ContactRef = "
                       u"Contacts.ContactRef WHERE StudentsEnrolled.CourseRef = " %
                       SqlNumber(courseRef)))
        people.push_back({u'?' % row.Text(u"ContactRef"), FullName(row)});
    enrolled.Fill(std::move(people));
    enrolled.sort(0, Qt::AscendingOrder);
}

Items ReadAttendance(CourseRef courseRef, const ListModel &enrolled)
{
    Items attendees;
    for (const auto &row :
         OpenRecordset(u"SELECT AttendanceRecord.ContactRef, AttendanceRecord.EventNo, "
                       u"Contacts.Cust_Surname, Contacts.Cust_Forename FROM AttendanceRecord INNER JOIN "
                       u"Contacts ON AttendanceRecord.ContactRef = Contacts.ContactRef WHERE "
                       u"AttendanceRecord.CourseRef = " %
                       SqlNumber(courseRef))) {
        const int contact = Number(row, u"ContactRef");
        attendees.Add({Kind::Attendance, EventRef(Number(row, u"EventNo")), contact}, [&] {
            const QString name = FullName(row);
            return enrolled.Contains(u'?' % SqlNumber(contact)) ? name
                                                                : QString(name % ResourceTree::notEnrolled);
        });
    }
    return attendees;
}

Items ReadFacilities(CourseRef courseRef)
{
    Items facilities;
    for (const auto &row : OpenRecordset(
             u"SELECT Facilities.Name, FacilitiesEmployed.EventNo, FacilitiesEmployed.FacilityRef FROM "
             u"Facilities INNER JOIN FacilitiesEmployed ON Facilities.FacilityRef = "
             u"FacilitiesEmployed.FacilityRef WHERE FacilitiesEmployed.CourseRef = " %
             SqlNumber(courseRef)))
        facilities.Add({Kind::Facilities, EventRef(Number(row, u"EventNo")), Number(row, u"FacilityRef")},
                       [&] { return row.Text(u"Name"); });
    return facilities;
}

Items ReadVenues(CourseRef courseRef)
{
    Items venues;
    for (const auto &row :
         OpenRecordset(u"SELECT Venues.Description, VenuesEmployed.EventNo, VenuesEmployed.VenueRef FROM "
                       u"Venues INNER JOIN VenuesEmployed ON Venues.VenueRef = VenuesEmployed.VenueRef WHERE "
                       u"VenuesEmployed.CourseRef = " %
                       SqlNumber(courseRef)))
        venues.Add({Kind::Venues, EventRef(Number(row, u"EventNo")), Number(row, u"VenueRef")},
                   [&] { return row.Text(u"Description"); });
    return venues;
}

Node StaffNode(const Recordset::Row &row)
{
    return {Kind::Staff, EventRef(Number(row, u"EventNo")), Number(row, u"ContactRef"),
            RoleTypeRef(Number(row, u"RoleTypeRef"))};
}

Items ReadStaff(CourseRef courseRef)
{
    Items staff;
    const QString course = SqlNumber(courseRef);
    for (const auto &row :
         OpenRecordset(u"SELECT Contacts.ContactRef, Contacts.Cust_Forename, Contacts.Cust_Surname, "
                       u"StaffEmployed.RoleTypeRef, StaffEmployed.EventNo FROM Contacts INNER JOIN "
                       u"StaffEmployed ON Contacts.ContactRef = StaffEmployed.ContactRef WHERE "
                       u"StaffEmployed.CourseRef = " %
                       course))
        staff.Add(StaffNode(row), [&] { return FullName(row); });
    // Posts that nobody fills yet: they must be in the tree, as saving it deletes what is not.
    for (const auto &row :
         OpenRecordset(u"SELECT ContactRef, RoleTypeRef, EventNo FROM StaffEmployed WHERE CourseRef = " %
                       course % u" AND ContactRef < 0")) {
        const Node post = StaffNode(row);
        staff.Add(post, [&] { return OpenPostName(post.itemRef); });
    }
    return staff;
}

/// Adds the roles that somebody has, on each event in the order of the list of roles; staff of a role that is
/// not there any more are left out.
void AddRoles(std::vector<TreeModel::NewNode> &nodes, const std::vector<Role> &roles, Items &staff)
{
    std::erase_if(staff.nodes, [&roles](const Node &node) {
        return std::ranges::find(roles, node.roleTypeRef, &Role::roleTypeRef) == roles.end();
    });
    for (const Role &role : roles) {
        QSet<EventRef> events;
        for (const Node &node : staff.nodes) {
            if (node.roleTypeRef != role.roleTypeRef || events.contains(node.eventRef))
                continue;
            events.insert(node.eventRef);
            nodes.push_back(ResourceTree::NewRole(node.eventRef, role.roleTypeRef, role.name));
        }
    }
}

/// Adds the items of events that the course has.
void AddItems(std::vector<TreeModel::NewNode> &nodes, CourseResources &resources, Items items)
{
    Sort(items);
    nodes.reserve(nodes.size() + items.nodes.size());
    for (const Node &node : items.nodes) {
        if (!resources.hours.contains(node.eventRef))
            continue;
        nodes.push_back(ResourceTree::NewItem(node, items.names.value(node.itemRef)));
        resources.read.push_back(node);
    }
}

void ReadAll(CourseRef courseRef, CourseResources &resources)
{
    std::vector<TreeModel::NewNode> nodes = ReadEvents(courseRef, resources);
    const std::vector<Role> roles = ReadRoles();
    ReadEnrolled(courseRef, resources.enrolled);
    AddItems(nodes, resources, ReadAttendance(courseRef, resources.enrolled));
    AddItems(nodes, resources, ReadFacilities(courseRef));
    AddItems(nodes, resources, ReadVenues(courseRef));
    Items staff = ReadStaff(courseRef);
    AddRoles(nodes, roles, staff);
    AddItems(nodes, resources, std::move(staff));
    resources.tree.Add(std::move(nodes));
}

/// Books what a node stands for: "" or the title of the course that holds it.
QString Book(CourseRef course, const Node &item)
{
    EventHours hours; // which are read from the event
    switch (item.kind) {
    case Kind::Facilities:
        return BookEventResource(ResourceKind::Facility, course, item.eventRef, item.itemRef, hours);
    case Kind::Venues:
        return BookEventResource(ResourceKind::Venue, course, item.eventRef, item.itemRef, hours);
    default:
        return ADO_Course_StaffBooking(course, item.eventRef, item.itemRef, item.roleTypeRef, hours);
    }
}

BookingClash::Of ClashOf(Kind kind)
{
    switch (kind) {
    case Kind::Facilities:
        return BookingClash::Of::Facility;
    case Kind::Venues:
        return BookingClash::Of::Venue;
    default:
        return BookingClash::Of::Staff;
    }
}

/// Stores a node. Its number in the tree marks an event as one that stays.
void StoreNode(CourseRef courseRef, const TreeNode &node, int number, std::vector<BookingClash> &clashes)
{
    const Node item = ResourceTree::Parse(node.key);
    if (item.kind == Kind::Event) {
        Execute(u"UPDATE CourseEvents SET EventNo = " % SqlNumber(number) % u" WHERE EventRef = " %
                SqlNumber(item.eventRef));
    } else if (item.IsItem() && item.kind == Kind::Attendance) {
        ADO_Course_StudentAttended(courseRef, item.eventRef, ContactRef(item.itemRef));
    } else if (item.IsItem()) {
        const QString holder = Book(courseRef, item);
        if (!holder.isEmpty())
            clashes.push_back({ClashOf(item.kind), node.text, holder});
    }
}
} // namespace

bool ReadCourseResources(CourseRef courseRef, CourseResources &resources)
{
    resources.tree.Clear();
    resources.enrolled.Clear();
    resources.hours.clear();
    resources.read.clear();
    resources.isWhole = Reported("ADO_Course_ShowStaffEvents", false, [&] {
        ReadAll(courseRef, resources);
        return true;
    });
    return resources.isWhole;
}

bool ADO_Course_ShowStaffEvents(CourseRef courseRef, CourseResources &resources)
{
    return RenumberEvents(courseRef) && ReadCourseResources(courseRef, resources);
}

bool SaveResourceTree(CourseRef courseRef, const TreeModel &tree, std::vector<BookingClash> &clashes,
                      Progress &progress)
{
    const QString ofCourse = u" WHERE CourseRef = " % SqlNumber(courseRef);
    return Reported("SaveResourceTree", false, [&] {
        return InOneStep(bookingStep, [&] {
            clashes.clear();
            Execute(u"UPDATE CourseEvents SET EventNo = 0" % ofCourse);
            for (const QStringView table :
                 {u"AttendanceRecord", u"StaffEmployed", u"FacilitiesEmployed", u"VenuesEmployed"})
                Execute(u"DELETE FROM " % table % ofCourse);
            int number = 0;
            for (const TreeNode *node : tree.Nodes()) {
                StoreNode(courseRef, *node, ++number, clashes);
                if (!progress(number, tree.Count()))
                    throw StatementGivenUp{};
            }
            Execute(u"DELETE FROM CourseEvents" % ofCourse % u" AND EventNo = 0");
            return true;
        });
    });
}
