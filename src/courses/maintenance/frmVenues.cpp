#include "courses/maintenance/frmVenues.h"

#include "courses/maintenance/ResourceModule.h"

frmVenues::frmVenues(QWidget *parent)
    : ResourceDialog({QStringLiteral("frmVenues"), QStringLiteral("Define a Venue (e.g. Computer Room)"),
                      QStringLiteral("VenueName"), QStringLiteral("venue"), Right::Venues, Right::VenueRates},
                     parent)
{
}

ReadRow<Resource> frmVenues::Read(int key)
{
    return ADO_Course_ShowVenue(VenueRef(key));
}

int frmVenues::Add(const Resource &venue)
{
    return Venue_Add(venue);
}

int frmVenues::Update(int key, const Resource &venue)
{
    return Venue_Update(VenueRef(key), venue);
}
