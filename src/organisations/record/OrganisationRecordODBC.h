#pragma once

#include "controls/ListModel.h"
#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"
#include "organisations/record/OrganisationRecord.h"

#include <optional>

/// Data functions of one organisation; table `Organisations`. Two organisations are the same when name and
/// ReferenceID are equal.

/// The lists of an organisation's screen. All but what it can be given is stored with it.
struct OrganisationLists {
    ListModel &availCriteria;
    ListModel &usedCriteria;
    ListModel &contacts;
    ListModel &availFac;
    ListModel &usedFac;
    ListModel &availVenues;
    ListModel &usedVenues;
};
/// An organisation as read.
struct OrganisationFile {
    OrganisationRecord record; ///< the columns as stored; a reference that is NULL comes as -1
    bool isWhole = false;      ///< false where lists could not be read, and must not be stored
};

/// Adds an organisation. The texts come already safe for SQL. The new OrganRef, 0 where the organisation
/// exists, -1 on an error. The key is read back by name and first address line: of two organisations alike
/// in these, under different references, it is that of the first.
int ADO_Organisation_AddOrganisation(const OrganisationRecord &record);
/// Writes all fields of an organisation. The texts come already safe for SQL. `organRef`, 0 where another
/// row is the same organisation (nothing is written then), -1 on an error.
int ADO_Organisation_UpdateOrganisation(OrganRef organRef, const OrganisationRecord &record);
/// Whether the organisation still exists; nothing on an error.
std::optional<bool> ADO_Organisation_CheckOrganisation(OrganRef organRef);
/// Reads an organisation, and fills the lists with its characteristics, people, facilities and venues, and
/// with the characteristics, facilities and venues that it can be given.
ReadRow<OrganisationFile> ADO_Organisation_ShowOrganisation(OrganRef organRef,
                                                            const OrganisationLists &lists);
/// An organisation as stored, with what a save writes with the record.
struct StoredOrganisation {
    OrganisationRecord record;
    ListModel availCriteria;
    ListModel usedCriteria;
    ListModel contacts;
    ListModel availFac;
    ListModel usedFac;
    ListModel availVenues;
    ListModel usedVenues;

    OrganisationLists Lists()
    {
        return {availCriteria, usedCriteria, contacts, availFac, usedFac, availVenues, usedVenues};
    }
};
/// Reads it as ADO_Organisation_ShowOrganisation does; false where the organisation is gone. Only inside
/// Reported.
bool ReadStoredOrganisation(OrganRef organRef, StoredOrganisation &stored);
/// Fills the lists of what an organisation can be given, and empties the others: what the lists of a new one
/// show. False on an error.
bool ADO_Organisation_ShowAvailable(const OrganisationLists &lists);
/// Deletes an organisation after moving its people, venues, facilities and assessments to row 1. Its rows of
/// `OrganChars` remain, where nothing reaches them. False on an error: what was done before stays.
bool ADO_Organisation_Delete(OrganRef organRef);
