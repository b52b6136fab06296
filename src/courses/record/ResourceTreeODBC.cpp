#include "courses/record/ResourceTreeODBC.h"

#include "core/session/Progress.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/ResourceTree.h"
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

struct NamedNode {
    Node node;
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

/// By name; the few names are compared instead of the many nodes.
void SortByName(std::vector<NamedNode> &nodes)
{
    QSet<QString> distinct;
    for (const NamedNode &one : nodes)
        distinct.insert(one.name);
    QStringList names = distinct.values();
    std::sort(names.begin(), names.end(), [](const QString &one, const QString &other) {
        const int order = NameCollation().compare(one, other);
        return order == 0 ? one < other : order < 0;
    });
    QHash<QString, int> ranks;
    for (int i = 0; i < names.size(); ++i)
        ranks.insert(names.at(i), i);
    std::ranges::stable_sort(nodes, {}, [&ranks](const NamedNode &one) { return ranks.value(one.name); });
}

void AddItems(TreeModel &tree, std::vector<NamedNode> items)
{
    SortByName(items);
    for (const NamedNode &item : items)
        ResourceTree::AddItem(tree, item.node, item.name);
}

void ReadEvents(CourseRef courseRef, CourseResources &resources)
{
    int place = 0;
    for (const auto &row : OpenRecordset(u"SELECT * FROM CourseEvents WHERE CourseRef = " %
                                         SqlNumber(courseRef) % u" ORDER BY EventNo")) {
        const EventRef eventRef(Number(row, u"EventRef"));
        EventHours hours{Number(row, u"EDate"), Number(row, u"TimeFrom"), Number(row, u"TimeTo")};
        const QString name = u"Event " % SqlNumber(++place);
        ResourceTree::AddEvent(resources.tree, eventRef,
                               hours.date == 0 ? name : QString(name % u" on " % IntToDateText(hours.date)));
        resources.hours.insert(eventRef, hours);
    }
}

std::vector<NamedNode> ReadRoles()
{
    std::vector<NamedNode> roles;
    for (const auto &row : OpenRecordset(QStringLiteral("SELECT Name, RoleTypeRef FROM RoleTypes")))
        roles.push_back({{Kind::Role, {}, 0, RoleTypeRef(Number(row, u"RoleTypeRef"))}, row.Text(u"Name")});
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

std::vector<NamedNode> ReadAttendance(CourseRef courseRef, const ListModel &enrolled)
{
    std::vector<NamedNode> attendees;
    const QStringList keys = enrolled.Keys();
    const QSet<QString> isEnrolled(keys.begin(), keys.end());
    for (const auto &row :
         OpenRecordset(u"SELECT AttendanceRecord.ContactRef, AttendanceRecord.EventNo, "
                       u"Contacts.Cust_Surname, Contacts.Cust_Forename FROM AttendanceRecord INNER JOIN "
                       u"Contacts ON AttendanceRecord.ContactRef = Contacts.ContactRef WHERE "
                       u"AttendanceRecord.CourseRef = " %
                       SqlNumber(courseRef))) {
        const int contact = Number(row, u"ContactRef");
        const QString name = FullName(row);
        attendees.push_back({{Kind::Attendance, EventRef(Number(row, u"EventNo")), contact},
                             isEnrolled.contains(u'?' % SqlNumber(contact))
                                 ? name
                                 : QString(name % ResourceTree::notEnrolled)});
    }
    return attendees;
}

std::vector<NamedNode> ReadFacilities(CourseRef courseRef)
{
    std::vector<NamedNode> facilities;
    for (const auto &row : OpenRecordset(
             u"SELECT Facilities.Name, FacilitiesEmployed.EventNo, FacilitiesEmployed.FacilityRef FROM "
             u"Facilities INNER JOIN FacilitiesEmployed ON Facilities.FacilityRef = "
             u"FacilitiesEmployed.FacilityRef WHERE FacilitiesEmployed.CourseRef = " %
             SqlNumber(courseRef)))
        facilities.push_back(
            {{Kind::Facilities, EventRef(Number(row, u"EventNo")), Number(row, u"FacilityRef")},
             row.Text(u"Name")});
    return facilities;
}

std::vector<NamedNode> ReadVenues(CourseRef courseRef)
{
    std::vector<NamedNode> venues;
    for (const auto &row :
         OpenRecordset(u"SELECT Venues.Description, VenuesEmployed.EventNo, VenuesEmployed.VenueRef FROM "
                       u"Venues INNER JOIN VenuesEmployed ON Venues.VenueRef = VenuesEmployed.VenueRef WHERE "
                       u"VenuesEmployed.CourseRef = " %
                       SqlNumber(courseRef)))
        venues.push_back({{Kind::Venues, EventRef(Number(row, u"EventNo")), Number(row, u"VenueRef")},
                          row.Text(u"Description")});
    return venues;
}

Node StaffNode(const Recordset::Row &row)
{
    return {Kind::Staff, EventRef(Number(row, u"EventNo")), Number(row, u"ContactRef"),
            RoleTypeRef(Number(row, u"RoleTypeRef"))};
}

std::vector<NamedNode> ReadStaff(CourseRef courseRef)
{
    std::vector<NamedNode> staff;
    const QString course = SqlNumber(courseRef);
    for (const auto &row :
         OpenRecordset(u"SELECT Contacts.ContactRef, Contacts.Cust_Forename, Contacts.Cust_Surname, "
                       u"StaffEmployed.RoleTypeRef, StaffEmployed.EventNo FROM Contacts INNER JOIN "
                       u"StaffEmployed ON Contacts.ContactRef = StaffEmployed.ContactRef WHERE "
                       u"StaffEmployed.CourseRef = " %
                       course))
        staff.push_back({StaffNode(row), FullName(row)});
    // Posts that nobody fills yet: they must be in the tree, as saving it deletes what is not.
    for (const auto &row :
         OpenRecordset(u"SELECT ContactRef, RoleTypeRef, EventNo FROM StaffEmployed WHERE CourseRef = " %
                       course % u" AND ContactRef < 0")) {
        const Node post = StaffNode(row);
        staff.push_back({post, OpenPostName(post.itemRef)});
    }
    return staff;
}

/// Roles are shown where somebody has them.
// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): what there is, and who has it.
void AddRoles(TreeModel &tree, const std::vector<NamedNode> &roles, const std::vector<NamedNode> &staff)
{
    QSet<QString> held;
    for (const NamedNode &one : staff)
        held.insert(ResourceTree::Key({Kind::Role, one.node.eventRef, 0, one.node.roleTypeRef}));
    for (const TreeNode *node : tree.Nodes()) {
        const Node branch = ResourceTree::Parse(node->key);
        if (branch.kind != Kind::Staff)
            continue;
        for (const NamedNode &role : roles) {
            const Node here{Kind::Role, branch.eventRef, 0, role.node.roleTypeRef};
            if (held.contains(ResourceTree::Key(here)))
                ResourceTree::AddRole(tree, here.eventRef, here.roleTypeRef, role.name);
        }
    }
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
    resources.isWhole = Reported("ADO_Course_ShowStaffEvents", false, [&] {
        ReadEvents(courseRef, resources);
        const std::vector<NamedNode> roles = ReadRoles();
        ReadEnrolled(courseRef, resources.enrolled);
        AddItems(resources.tree, ReadAttendance(courseRef, resources.enrolled));
        AddItems(resources.tree, ReadFacilities(courseRef));
        AddItems(resources.tree, ReadVenues(courseRef));
        const std::vector<NamedNode> staff = ReadStaff(courseRef);
        AddRoles(resources.tree, roles, staff);
        AddItems(resources.tree, staff);
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
