#pragma once

#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QString>

/// Data functions of the rooms and the equipment that events are held with, tables `Venues` and `Facilities`.
/// Texts come already safe for SQL. Adding returns the new key, 0 where name and reference exist, -1 on an
/// error; updating returns the row's key, 0 where another row has name and reference, -1 on an error.

/// A venue or a facility. Their tables name the columns differently: `Description` is the name of a venue,
/// and the notes of a facility.
struct Resource {
    QString name;
    QString notes;
    double chargeRate = 0; ///< in currency units
    OrganRef organRef{1};  ///< the owner; 1 = none
    QString referenceID;
};

int ADO_Course_AddVenue(const Resource &venue);
int ADO_Course_UpdateVenue(VenueRef venueRef, const Resource &venue);
ReadRow<Resource> ADO_Course_ShowVenue(VenueRef venueRef);
/// Removes its bookings too, and assessments held there get none. Row 1, which they then have, is never
/// deleted. False on an error.
bool ADO_Course_DeleteVenue(VenueRef venueRef);

int ADO_Course_AddFacility(const Resource &facility);
int ADO_Course_UpdateFacility(FacilityRef facilityRef, const Resource &facility);
ReadRow<Resource> ADO_Course_ShowFacility(FacilityRef facilityRef);
/// Removes its bookings too. False on an error.
bool ADO_Course_DeleteFacility(FacilityRef facilityRef);
