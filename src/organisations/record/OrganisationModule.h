#pragma once

#include "database/values/Keys.h"
#include "organisations/record/OrganisationVersion.h"

class ListModel;
class Progress;

/// The logic of organisations: makes texts safe for SQL, tells the user when a record exists already, and
/// asks before something that belongs to another organisation is taken from it.

/// Reads an organisation, as of ADO_Organisation_ShowOrganisation.
ReadRow<OrganisationFile> Organisation_Show(OrganRef organRef, const OrganisationLists &lists);
/// What a question before deleting the organisation says of its people: "12 people"; "" if there are none,
/// and on an error.
QString Organisation_PeopleText(OrganRef organRef);
bool Organisation_Delete(OrganRef organRef);

/// Makes `people` ("?" keys) the rows of a list of an organisation's people, with name and position as
/// stored. After a cancelled `progress` they join as they are.
void Organisation_TakeContacts(const ListModel &people, ListModel &contacts, Progress &progress);
/// Takes the selected people out of the list, each after a question; who is kept is no longer selected.
void Organisation_RemoveContacts(ListModel &contacts);
/// Gives the selected people a position, stored at once, after a question. False where nothing was stored.
bool Organisation_UpdateJobTitles(ListModel &contacts, const QString &title);
/// Reads the people of the list again: changed names show, and who was deleted goes.
void Organisation_RefreshContacts(ListModel &contacts);
/// Stores the check marks of a list of organisations as who is an award board. False on an error, and where
/// `progress` is cancelled before the end: what was written before stays.
bool Organisations_StoreAwardFlags(const ListModel &list, Progress &progress);
