#include "courses/maintenance/ResourceODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"

namespace
{
struct ResourceTable {
    QStringView table;
    QStringView key;
    QStringView name;
    QStringView notes;
};

constexpr ResourceTable venues{u"Venues", u"VenueRef", u"Description", u"Notes"};
constexpr ResourceTable facilities{u"Facilities", u"FacilityRef", u"Name", u"Description"};

QString Named(const ResourceTable &table, const Resource &resource)
{
    return u"SELECT " % table.key % u" FROM " % table.table % u" WHERE " % table.name % u" = '" %
           resource.name % u"' AND ReferenceID = '" % resource.referenceID % u'\'';
}

int AddResource(const char *routineName, const ResourceTable &table, const Resource &resource)
{
    const QString same = Named(table, resource);
    return AddRow(routineName, same,
                  u"INSERT INTO " % table.table % u" (" % table.name % u',' % table.notes %
                      u",ChargeRate,OrganRef,ReferenceID) VALUES ('" % resource.name % u"','" %
                      resource.notes % u"'," % SqlNumber(resource.chargeRate) % u',' %
                      SqlNumber(resource.organRef) % u",'" % resource.referenceID % u"')",
                  same, table.key);
}

int UpdateResource(const char *routineName, const ResourceTable &table, int key, const Resource &resource)
{
    return UpdateRow(routineName, Named(table, resource) % u" AND " % table.key % u" <> " % SqlNumber(key),
                     u"UPDATE " % table.table % u" SET " % table.name % u" = '" % resource.name % u"', " %
                         table.notes % u" = '" % resource.notes % u"', ChargeRate = " %
                         SqlNumber(resource.chargeRate) % u", OrganRef = " % SqlNumber(resource.organRef) %
                         u", ReferenceID = '" % resource.referenceID % u"' WHERE " % table.key % u" = " %
                         SqlNumber(key),
                     key);
}

ReadRow<Resource> ReadResource(const char *routineName, const ResourceTable &table, int key)
{
    const auto take = [&table](const Recordset::Row &row) {
        return Resource{row.Text(table.name), row.Text(table.notes), row.Double(u"ChargeRate"),
                        OrganRef(static_cast<int>(row.Long(u"OrganRef"))), row.Text(u"ReferenceID")};
    };
    return ReadOne<Resource>(
        routineName, u"SELECT * FROM " % table.table % u" WHERE " % table.key % u" = " % SqlNumber(key),
        take);
}
} // namespace

int ADO_Course_AddVenue(const Resource &venue)
{
    return AddResource("ADO_Course_AddVenue", venues, venue);
}

int ADO_Course_UpdateVenue(VenueRef venueRef, const Resource &venue)
{
    return UpdateResource("ADO_Course_UpdateVenue", venues, venueRef.number, venue);
}

ReadRow<Resource> ADO_Course_ShowVenue(VenueRef venueRef)
{
    return ReadResource("ADO_Course_ShowVenue", venues, venueRef.number);
}

bool ADO_Course_DeleteVenue(VenueRef venueRef)
{
    return !IsSentinel(venueRef) && RunWithKey("ADO_Course_DeleteVenue",
                                               {u"UPDATE EXAM Set VenueRef = 1 WHERE VenueRef = ",
                                                u"DELETE FROM VenuesEmployed WHERE VenueRef = ",
                                                u"DELETE FROM Venues WHERE VenueRef = "},
                                               venueRef.number);
}

int ADO_Course_AddFacility(const Resource &facility)
{
    return AddResource("ADO_Course_AddFacility", facilities, facility);
}

int ADO_Course_UpdateFacility(FacilityRef facilityRef, const Resource &facility)
{
    return UpdateResource("ADO_Course_UpdateFacility", facilities, facilityRef.number, facility);
}

ReadRow<Resource> ADO_Course_ShowFacility(FacilityRef facilityRef)
{
    return ReadResource("ADO_Course_ShowFacility", facilities, facilityRef.number);
}

bool ADO_Course_DeleteFacility(FacilityRef facilityRef)
{
    return RunWithKey("ADO_Course_DeleteFacility",
                      {u"DELETE FROM FacilitiesEmployed WHERE FacilityRef = ",
                       u"DELETE FROM Facilities WHERE FacilityRef = "},
                      facilityRef.number);
}
