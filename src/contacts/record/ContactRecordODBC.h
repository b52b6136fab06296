#pragma once

#include "contacts/record/ContactRecord.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <optional>

/// Data functions of one person; table `Contacts`. Two people are the same person when forename, surname,
/// first address line and ReferenceID are equal; nothing else counts.

/// The lists of a person that a save writes again.
struct ContactLists {
    ListModel &availCriteria;
    ListModel &characteristics;
    ListModel &roles;
    TreeModel &attributes;
};
/// The lists that a person's screen shows beside.
struct ContactGroups {
    ListModel &people; ///< about to be put in a group: the person shown comes first
    TreeModel &groups; ///< those the person is in
};
/// A person as read.
struct ContactFile {
    /// The columns as stored; a reference that is NULL comes as -1, and the date of birth as a date-int,
    /// today's where none is stored.
    ContactRecord record;
    bool isWhole = false; ///< false where lists could not be read, and must not be stored
};

/// Adds a person. The texts come already safe for SQL. The new ContactRef, 0 where the person exists,
/// -1 on an error.
int ADO_Contact_AddContact(const ContactRecord &record);
/// Writes all fields of a person. The texts come already safe for SQL. `contactRef`, 0 where another row
/// is the same person (nothing is written then), -1 on an error and for row 1.
int ADO_Contact_UpdateContact(ContactRef contactRef, const ContactRecord &record);
/// Whether the person still exists; nothing on an error.
std::optional<bool> ADO_Contact_CheckContact(ContactRef contactRef);
/// Reads a person, and fills the lists with the characteristics held and those that can be given, the custom
/// attributes, the roles, and the groups; reads `Contacts`, `Concessions`, `ContactConcession` and the tables
/// of attributes, roles and groups.
ReadRow<ContactFile> ADO_Contact_ShowContact(ContactRef contactRef, const ContactLists &lists,
                                             const ContactGroups &groups);
/// A person as stored, with what a save writes with the record.
struct StoredContact {
    ContactRecord record;
    ListModel availCriteria;
    ListModel usedCriteria;
    TreeModel attributes;
    ListModel roles;

    ContactLists Lists() { return {availCriteria, usedCriteria, roles, attributes}; }
};
/// Reads it as ADO_Contact_ShowContact does; false where the person is gone. Only inside Reported.
bool ReadStoredContact(ContactRef contactRef, StoredContact &stored);
/// Appends a person to a list of four columns (name, address, city, postcode) under the key "?" +
/// reference and selects the new row; a key that is there already and a person who is gone add nothing.
void ADO_Contact_FillContactInfo(ContactRef contactRef, ListModel &list);
/// Deletes a person with enrolments, attendance, bookings, results, groups, characteristics and roles.
/// Payments, waiting wishes and awards stay on purpose. False on an error: what was deleted before it
/// stays deleted, and the delete can be repeated. False for row 1 too.
bool ADO_Contact_Delete(ContactRef contactRef);
/// Writes the position within the organisation. The text comes already safe for SQL. False on an
/// error.
bool ADO_Contact_UpdateJobTitle(ContactRef contactRef, const QString &title);
