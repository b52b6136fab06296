#pragma once

#include <QSet>
#include <QString>

#include <optional>

class ListModel;

/// Data functions of what belongs to an organisation: people (keys "?" + ContactRef), facilities and venues
/// ("!" + reference), by the column `OrganRef` of `Contacts`, `Facilities` and `Venues`, where 1 stands for
/// no organisation. Those that give a bool are false on an error.

/// Leaves all people, facilities or venues of an organisation without one.
bool ADO_Organisation_WipeContacts(int organRef);
bool ADO_Organisation_WipeFacility(int organRef);
bool ADO_Organisation_WipeVenue(int organRef);
/// Gives one to an organisation, whoever had it.
bool ADO_Organisation_AddContact(int contactRef, int organRef);
bool ADO_Organisation_AddFacility(int facilityRef, int organRef);
bool ADO_Organisation_AddVenue(int venueRef, int organRef);
/// The references of those that an organisation has; nothing on an error.
std::optional<QSet<int>> ADO_Organisation_OwnContacts(int organRef);
std::optional<QSet<int>> ADO_Organisation_OwnFacilities(int organRef);
std::optional<QSet<int>> ADO_Organisation_OwnVenues(int organRef);
/// The name of the organisation that has it; "" where none has, and on an error.
QString ADO_Organisation_CheckContact(int contactRef);
QString ADO_Organisation_CheckFacility(int facilityRef);
QString ADO_Organisation_CheckVenue(int venueRef);

/// Fills a list of two columns (name, position) with the people of an organisation.
bool ADO_Organisation_ShowContacts(int organRef, ListModel &list);
/// Writes the person's name and position, as stored, into a row of such a list. False where the person is no
/// more; on an error the row stays and the result is true.
bool ADO_Organisation_UpdateContact(int contactRef, ListModel &list, int row);
/// Moves the organisation's own from `available` to `used`, which is emptied first.
bool ADO_Organisation_ShowFacilities(ListModel &available, ListModel &used, int organRef);
bool ADO_Organisation_ShowVenues(ListModel &available, ListModel &used, int organRef);
