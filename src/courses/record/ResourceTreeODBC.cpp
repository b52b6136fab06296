#include "courses/record/ResourceTreeODBC.h"

#include "core/session/Progress.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/UsedResourcesODBC.h"
#include "courses/events/AttendanceODBC.h"
#include "courses/events/EventODBC.h"
#include "database/statements/MiscODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "platform/sql/NameCollation.h"

#include <algorithm>

namespace
{
using ResourceTree::Kind;
using ResourceTree::Node;

/// A facility, a venue or a person, with the nodes that stand for it: few serve thousands of nodes.
struct Item {
    QString name{};
    std::vector<Node> nodes{};
};

/// Items of one kind as they were read, by reference.
class Items final
{
public:
    template <typename Name>
    void Add(const Node &node, Name &&name)
    {
        Item &item = m_items[node.itemRef];
        if (item.nodes.empty())
            item.name = name();
        item.nodes.push_back(node);
        ++m_nodeCount;
    }
    size_t NodeCount() const { return m_nodeCount; }
    std::vector<const Item *> ByName() const
    {
        std::vector<const Item *> items;
        items.reserve(static_cast<size_t>(m_items.size()));
        for (const Item &item : m_items)
            items.push_back(&item);
        std::ranges::sort(items, [](const Item *one, const Item *other) {
            const int order = NameCollation().compare(one->name, other->name);
            return order == 0 ? one->nodes.front().itemRef < other->nodes.front().itemRef : order < 0;
        });
        return items;
    }

private:
    QHash<int, Item> m_items;
    size_t m_nodeCount = 0;
};

struct Event {
    EventRef eventRef;
    QString text;
    EventHours hours;
};

struct Role {
    RoleTypeRef roleTypeRef;
    QString name;
    Items staff{};
};

/// Puts what was read into the tree.
class Filler final
{
public:
    Filler(CourseResources &resources, size_t nodeCount)
        : m_resources(resources)
        , m_filling(resources.tree, nodeCount)
    {
        m_resources.read.reserve(nodeCount);
    }
    void Add(const Event &event)
    {
        m_events.insert(event.eventRef, ResourceTree::AddEvent(m_filling, event.eventRef, event.text));
        m_resources.hours.insert(event.eventRef, event.hours);
        m_resources.read.push_back({Kind::Event, event.eventRef});
    }
    /// Adds items, by name, to the events that the course has.
    void Add(const Items &items, const QString &roleName = {})
    {
        for (const Item *item : items.ByName()) {
            for (const Node &node : item->nodes) {
                TreeNode *event = m_events.value(node.eventRef);
                if (!event)
                    continue;
                ResourceTree::AddItem(m_filling, event, node, item->name, roleName);
                m_resources.read.push_back(node);
            }
        }
    }

private:
    CourseResources &m_resources;
    TreeModel::Filling m_filling;
    QHash<EventRef, TreeNode *> m_events;
};

int Number(const Recordset::Row &row, QStringView column)
{
    return static_cast<int>(row.Long(column));
}

QString FullName(const Recordset::Row &row)
{
    return row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename");
}

std::vector<Event> ReadEvents(CourseRef courseRef)
{
    std::vector<Event> events;
    for (const auto &row : OpenRecordset(u"SELECT * FROM CourseEvents WHERE CourseRef = " %
                                         SqlNumber(courseRef) % u" ORDER BY EventNo")) {
        EventHours hours{Number(row, u"EDate"), Number(row, u"TimeFrom"), Number(row, u"TimeTo")};
        const QString name = u"Event " % SqlNumber(static_cast<int>(events.size()) + 1);
        events.push_back({EventRef(Number(row, u"EventRef")),
                          hours.date == 0 ? name : QString(name % u" on " % IntToDateText(hours.date)),
                          hours});
    }
    return events;
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
    const Recordset rows =
        OpenRecordset(u"SELECT AttendanceRecord.ContactRef, AttendanceRecord.EventNo, "
                      u"Contacts.Cust_Surname, Contacts.Cust_Forename FROM AttendanceRecord INNER JOIN "
                      u"Contacts ON AttendanceRecord.ContactRef = Contacts.ContactRef WHERE "
                      u"AttendanceRecord.CourseRef = " %
                      SqlNumber(courseRef));
    // There are thousands of them.
    const int contactColumn = rows.ColumnIndex(u"ContactRef");
    const int eventColumn = rows.ColumnIndex(u"EventNo");
    for (const auto &row : rows) {
        const auto contact = static_cast<int>(row.Long(contactColumn));
        const EventRef event(static_cast<int>(row.Long(eventColumn)));
        attendees.Add({Kind::Attendance, event, contact}, [&] {
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

/// Staff of a role that is not there any more are left out.
template <typename Name>
void AddStaff(std::vector<Role> &roles, const Node &node, Name &&name)
{
    const auto role = std::ranges::find(roles, node.roleTypeRef, &Role::roleTypeRef);
    if (role != roles.end())
        role->staff.Add(node, std::forward<Name>(name));
}

void ReadStaff(CourseRef courseRef, std::vector<Role> &roles)
{
    const QString course = SqlNumber(courseRef);
    for (const auto &row :
         OpenRecordset(u"SELECT Contacts.ContactRef, Contacts.Cust_Forename, Contacts.Cust_Surname, "
                       u"StaffEmployed.RoleTypeRef, StaffEmployed.EventNo FROM Contacts INNER JOIN "
                       u"StaffEmployed ON Contacts.ContactRef = StaffEmployed.ContactRef WHERE "
                       u"StaffEmployed.CourseRef = " %
                       course))
        AddStaff(roles, StaffNode(row), [&] { return FullName(row); });
    // Posts that nobody fills yet: they must be in the tree, as saving it deletes what is not.
    for (const auto &row :
         OpenRecordset(u"SELECT ContactRef, RoleTypeRef, EventNo FROM StaffEmployed WHERE CourseRef = " %
                       course % u" AND ContactRef < 0")) {
        const Node post = StaffNode(row);
        AddStaff(roles, post, [&] { return OpenPostName(post.itemRef); });
    }
}

void ReadAll(CourseRef courseRef, CourseResources &resources)
{
    const std::vector<Event> events = ReadEvents(courseRef);
    std::vector<Role> roles = ReadRoles();
    ReadEnrolled(courseRef, resources.enrolled);
    const Items attendees = ReadAttendance(courseRef, resources.enrolled);
    const Items facilities = ReadFacilities(courseRef);
    const Items venues = ReadVenues(courseRef);
    ReadStaff(courseRef, roles);
    constexpr size_t withBranches = 5;
    constexpr size_t withRole = 2;
    size_t nodeCount =
        events.size() * withBranches + attendees.NodeCount() + facilities.NodeCount() + venues.NodeCount();
    for (const Role &role : roles)
        nodeCount += role.staff.NodeCount() * withRole;
    Filler filler(resources, nodeCount);
    for (const Event &event : events)
        filler.Add(event);
    for (const Items *items : {&attendees, &facilities, &venues})
        filler.Add(*items);
    for (const Role &role : roles)
        filler.Add(role.staff, role.name);
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
