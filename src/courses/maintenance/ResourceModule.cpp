#include "courses/maintenance/ResourceModule.h"

#include "database/statements/DeletedMeanwhile.h"

namespace
{
// Venues have the titles of facilities, as they always had.
const QString addTitle = QStringLiteral("Add Facility");
const QString updateTitle = QStringLiteral("Update Facility");
const QString venueExists = QStringLiteral("Venue already exists in database.");
const QString facilityExists = QStringLiteral("Facility already exists in database.");

Resource Safe(Resource resource)
{
    for (QString *text : {&resource.name, &resource.notes, &resource.referenceID})
        *text = SqlSafeText(*text);
    return resource;
}
} // namespace

int Venue_Add(const Resource &venue)
{
    return TellDuplicate(ADO_Course_AddVenue(Safe(venue)), venueExists, addTitle);
}

int Venue_Update(VenueRef venueRef, const Resource &venue)
{
    const int living = LivingKey(QStringLiteral("Venues"), QStringLiteral("VenueRef"), venueRef.number,
                                 QStringLiteral("venue"), updateTitle);
    return living < 1
               ? living
               : TellDuplicate(ADO_Course_UpdateVenue(venueRef, Safe(venue)), venueExists, updateTitle);
}

int Facility_Add(const Resource &facility)
{
    return TellDuplicate(ADO_Course_AddFacility(Safe(facility)), facilityExists, addTitle);
}

int Facility_Update(FacilityRef facilityRef, const Resource &facility)
{
    const int living = LivingKey(QStringLiteral("Facilities"), QStringLiteral("FacilityRef"),
                                 facilityRef.number, QStringLiteral("facility"), updateTitle);
    return living < 1 ? living
                      : TellDuplicate(ADO_Course_UpdateFacility(facilityRef, Safe(facility)), facilityExists,
                                      updateTitle);
}
