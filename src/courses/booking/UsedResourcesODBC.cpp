#include "courses/booking/UsedResourcesODBC.h"

#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "platform/sql/NameCollation.h"

#include <algorithm>
#include <cstdlib>

namespace
{
bool ShowUsed(const char *routineName, ListModel &available, ListModel &used, const QString &sql,
              QStringView column)
{
    return Reported(routineName, false, [&] {
        QStringList keys;
        for (const auto &row : OpenRecordset(sql))
            keys.append(u'!' % row.Text(column));
        available.MoveKeys(keys, used);
        return true;
    });
}

QString OfEvent(CourseRef courseRef, EventRef eventRef)
{
    return u" WHERE CourseRef = " % SqlNumber(courseRef) % u" AND EventNo = " % SqlNumber(eventRef);
}
} // namespace

bool ADO_Course_FillStaffList(ListModel &list, RoleTypeRef roleTypeRef)
{
    return Reported("ADO_Course_FillStaffList", false, [&] {
        list.Clear();
        std::vector<ListItem> people;
        for (const auto &row : OpenRecordset(
                 u"SELECT Contacts.ContactRef, Contacts.Cust_Forename, Contacts.Cust_Surname FROM Contacts "
                 u"INNER JOIN ContactRoles ON Contacts.ContactRef = ContactRoles.ContactRef WHERE "
                 u"ContactRoles.RoleTypeRef = " %
                 SqlNumber(roleTypeRef)))
            people.push_back({u'!' % row.Text(u"ContactRef"),
                              row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename")});
        std::ranges::stable_sort(people, [](const ListItem &one, const ListItem &two) {
            return NameCollation().compare(one.text, two.text) < 0;
        });
        list.Fill(std::move(people));
        return true;
    });
}

bool ADO_Course_ShowUsedVenues(ListModel &available, ListModel &used, CourseRef courseRef, EventRef eventRef)
{
    return ShowUsed("ADO_Course_ShowUsedVenues", available, used,
                    u"SELECT VenueRef FROM VenuesEmployed" % OfEvent(courseRef, eventRef), u"VenueRef");
}

bool ADO_Course_ShowUsedFacilities(ListModel &available, ListModel &used, CourseRef courseRef,
                                   EventRef eventRef)
{
    return ShowUsed("ADO_Course_ShowUsedFacilities", available, used,
                    u"SELECT FacilityRef FROM FacilitiesEmployed" % OfEvent(courseRef, eventRef),
                    u"FacilityRef");
}

bool ADO_Course_ShowUsedStaff(ListModel &available, ListModel &used, CourseRef courseRef,
                              RoleTypeRef roleTypeRef, EventRef eventRef)
{
    const QString ofRole =
        u" WHERE CourseRef = " % SqlNumber(courseRef) % u" AND RoleTypeRef = " % SqlNumber(roleTypeRef);
    if (eventRef)
        return ShowUsed("ADO_Course_ShowUsedStaff", available, used,
                        u"SELECT ContactRef FROM StaffEmployed" % ofRole % u" AND EventNo = " %
                            SqlNumber(eventRef),
                        u"ContactRef");
    return Reported("ADO_Course_ShowUsedStaff", false, [&] {
        for (const auto &row : OpenRecordset(u"SELECT ContactRef FROM CourseStaff" % ofRole)) {
            const auto contactRef = static_cast<int>(row.Long(u"ContactRef"));
            if (contactRef < 0)
                used.Add({u'-' % SqlNumber(contactRef), OpenPostName(contactRef)});
            else
                available.MoveKeys({u'!' % SqlNumber(contactRef)}, used);
        }
        return true;
    });
}

QString OpenPostName(int contactRef)
{
    return u"[ To Be Appointed " % SqlNumber(std::abs(contactRef)) % u" ]";
}

RoleTypeRef ADO_Course_RoleOnEvent(CourseRef courseRef, EventRef eventRef)
{
    return Reported("ADO_Course_RoleOnEvent", RoleTypeRef(), [&] {
        return RoleTypeRef(ReadKey(
            u"SELECT TOP 1 RoleTypeRef FROM StaffEmployed" % OfEvent(courseRef, eventRef), u"RoleTypeRef"));
    });
}
