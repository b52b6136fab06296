#pragma once

#include "courses/maintenance/ResourceODBC.h"

/// Venues and facilities as typed: makes texts safe for SQL, and tells the user when a row exists already.
/// Results as of the data functions.
int Venue_Add(const Resource &venue);
int Venue_Update(VenueRef venueRef, const Resource &venue);
int Facility_Add(const Resource &facility);
int Facility_Update(FacilityRef facilityRef, const Resource &facility);
