#include "organisations/lists/OrganisationLinkODBC.h"

#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"
#include "database/values/GlobalCode.h"

namespace
{
bool Give(const char *routineName, QStringView table, QStringView keyColumn, int key, OrganRef organRef)
{
    return Reported(routineName, false, [&] {
        Execute(u"UPDATE " % table % u" SET OrganRef = " % SqlNumber(organRef) % u" WHERE " % keyColumn %
                u" = " % SqlNumber(key));
        return true;
    });
}

QString Owner(const char *routineName, QStringView table, QStringView keyColumn, int key)
{
    return Reported(routineName, QString(), [&] {
        const Recordset owner =
            OpenRecordset(u"SELECT Organisations.OrganName FROM " % table % u" INNER JOIN Organisations ON " %
                          table % u".OrganRef = Organisations.OrganRef WHERE " % table %
                          u".OrganRef >1 AND " % keyColumn % u" = " % SqlNumber(key));
        return owner.IsEmpty() ? QString() : owner.First().Text(u"OrganName");
    });
}

QString SelectOwn(QStringView table, QStringView keyColumn, OrganRef organRef)
{
    return u"SELECT " % keyColumn % u" FROM " % table % u" WHERE OrganRef = " % SqlNumber(organRef);
}

std::optional<QSet<int>> Own(const char *routineName, QStringView table, QStringView keyColumn,
                             OrganRef organRef)
{
    return Reported(routineName, std::optional<QSet<int>>(), [&] {
        QSet<int> keys;
        for (const Recordset::Row row : OpenRecordset(SelectOwn(table, keyColumn, organRef)))
            keys.insert(static_cast<int>(row.Long(keyColumn)));
        return keys;
    });
}

bool ShowUsed(const char *routineName, QStringView table, QStringView keyColumn, ListModel &available,
              ListModel &used, OrganRef organRef)
{
    return Reported(routineName, false, [&] {
        used.Clear();
        const Recordset owned = OpenRecordset(SelectOwn(table, keyColumn, organRef));
        QStringList keys;
        for (const Recordset::Row row : owned)
            keys.append(u'!' % row.Text(keyColumn));
        available.MoveKeys(keys, used);
        return true;
    });
}

QString Name(const Recordset::Row &row)
{
    return row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename");
}

const QString selectContact =
    QStringLiteral("SELECT ContactRef, Cust_Surname, Cust_Forename, JobTitle FROM Contacts WHERE ");
} // namespace

bool ADO_Organisation_WipeContacts(OrganRef organRef)
{
    return RunWithKey("ADO_Organisation_WipeContacts",
                      {u"UPDATE Contacts SET OrganRef = 1 WHERE OrganRef = "}, organRef.number);
}

bool ADO_Organisation_WipeFacility(OrganRef organRef)
{
    return RunWithKey("ADO_Organisation_WipeFacility",
                      {u"UPDATE Facilities SET OrganRef = 1 WHERE OrganRef = "}, organRef.number);
}

bool ADO_Organisation_WipeVenue(OrganRef organRef)
{
    return RunWithKey("ADO_Organisation_WipeVenue", {u"UPDATE Venues SET OrganRef = 1 WHERE OrganRef = "},
                      organRef.number);
}

bool ADO_Organisation_AddContact(ContactRef contactRef, OrganRef organRef)
{
    if (IsSentinel(contactRef))
        return false;
    return Give("ADO_Organisation_AddContact", u"Contacts", u"ContactRef", contactRef.number, organRef);
}

bool ADO_Organisation_AddFacility(FacilityRef facilityRef, OrganRef organRef)
{
    return Give("ADO_Organisation_AddFacility", u"Facilities", u"FacilityRef", facilityRef.number, organRef);
}

bool ADO_Organisation_AddVenue(VenueRef venueRef, OrganRef organRef)
{
    if (IsSentinel(venueRef))
        return false;
    return Give("ADO_Organisation_AddVenue", u"Venues", u"VenueRef", venueRef.number, organRef);
}

std::optional<QSet<int>> ADO_Organisation_OwnContacts(OrganRef organRef)
{
    return Own("ADO_Organisation_OwnContacts", u"Contacts", u"ContactRef", organRef);
}

std::optional<QSet<int>> ADO_Organisation_OwnFacilities(OrganRef organRef)
{
    return Own("ADO_Organisation_OwnFacilities", u"Facilities", u"FacilityRef", organRef);
}

std::optional<QSet<int>> ADO_Organisation_OwnVenues(OrganRef organRef)
{
    return Own("ADO_Organisation_OwnVenues", u"Venues", u"VenueRef", organRef);
}

QString ADO_Organisation_CheckContact(ContactRef contactRef)
{
    return Owner("ADO_Organisation_CheckContact", u"Contacts", u"ContactRef", contactRef.number);
}

QString ADO_Organisation_CheckFacility(FacilityRef facilityRef)
{
    return Owner("ADO_Organisation_CheckFacility", u"Facilities", u"FacilityRef", facilityRef.number);
}

QString ADO_Organisation_CheckVenue(VenueRef venueRef)
{
    return Owner("ADO_Organisation_CheckVenue", u"Venues", u"VenueRef", venueRef.number);
}

bool ADO_Organisation_ShowContacts(OrganRef organRef, ListModel &list)
{
    return Reported("ADO_Organisation_ShowContacts", false, [&] {
        std::vector<ListItem> items;
        for (const Recordset::Row row : OpenRecordset(selectContact % u"OrganRef = " % SqlNumber(organRef)))
            items.push_back({u'?' % row.Text(u"ContactRef"), Name(row), {row.Text(u"JobTitle")}});
        list.Fill(std::move(items));
        return true;
    });
}

bool ADO_Organisation_UpdateContact(ContactRef contactRef, ListModel &list, int row)
{
    return Reported("ADO_Organisation_UpdateContact", true, [&] {
        const Recordset contact = OpenRecordset(selectContact % u"ContactRef = " % SqlNumber(contactRef));
        if (contact.IsEmpty())
            return false;
        list.SetText(row, Name(contact.First()));
        list.SetSubItem(row, 0, contact.First().Text(u"JobTitle"));
        return true;
    });
}

bool ADO_Organisation_ShowFacilities(ListModel &available, ListModel &used, OrganRef organRef)
{
    return ShowUsed("ADO_Organisation_ShowFacilities", u"Facilities", u"FacilityRef", available, used,
                    organRef);
}

bool ADO_Organisation_ShowVenues(ListModel &available, ListModel &used, OrganRef organRef)
{
    return ShowUsed("ADO_Organisation_ShowVenues", u"Venues", u"VenueRef", available, used, organRef);
}
