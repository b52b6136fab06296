#pragma once

#include "database/values/Keys.h"

#include <QSet>
#include <QString>

#include <optional>

class ListModel;

/// Data functions of what belongs to an organisation: people (keys "?" + ContactRef), facilities and venues
/// ("!" + reference), by the column `OrganRef` of `Contacts`, `Facilities` and `Venues`, where 1 stands for
/// no organisation. Those that give a bool are false on an error.

/// Leaves all people, facilities or venues of an organisation without one.
bool ADO_Organisation_WipeContacts(OrganRef organRef);
bool ADO_Organisation_WipeFacility(OrganRef organRef);
bool ADO_Organisation_WipeVenue(OrganRef organRef);
/// Gives one to an organisation, whoever had it.
bool ADO_Organisation_AddContact(ContactRef contactRef, OrganRef organRef);
bool ADO_Organisation_AddFacility(FacilityRef facilityRef, OrganRef organRef);
bool ADO_Organisation_AddVenue(VenueRef venueRef, OrganRef organRef);
/// The references of those that an organisation has; nothing on an error.
std::optional<QSet<int>> ADO_Organisation_OwnContacts(OrganRef organRef);
std::optional<QSet<int>> ADO_Organisation_OwnFacilities(OrganRef organRef);
std::optional<QSet<int>> ADO_Organisation_OwnVenues(OrganRef organRef);
/// The name of the organisation that has it; "" where none has, and on an error.
QString ADO_Organisation_CheckContact(ContactRef contactRef);
QString ADO_Organisation_CheckFacility(FacilityRef facilityRef);
QString ADO_Organisation_CheckVenue(VenueRef venueRef);

/// Fills a list of two columns (name, position) with the people of an organisation.
bool ADO_Organisation_ShowContacts(OrganRef organRef, ListModel &list);
/// Writes the person's name and position, as stored, into a row of such a list. False where the person is no
/// more; on an error the row stays and the result is true.
bool ADO_Organisation_UpdateContact(ContactRef contactRef, ListModel &list, int row);
/// Moves the organisation's own from `available` to `used`, which is emptied first.
bool ADO_Organisation_ShowFacilities(ListModel &available, ListModel &used, OrganRef organRef);
bool ADO_Organisation_ShowVenues(ListModel &available, ListModel &used, OrganRef organRef);
