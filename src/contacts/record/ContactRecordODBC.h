#pragma once

#include "contacts/record/ContactRecord.h"
#include "controls/ListModel.h"
#include "controls/RecordView.h"
#include "controls/TreeModel.h"

#include <optional>

/// Data functions of one person; table `Contacts`. Two people are the same person when forename, surname,
/// first address line and ReferenceID are equal; nothing else counts.

/// What ADO_Contact_ShowContact fills. The calls come in the order they are declared in.
class ContactView : public virtual RecordView
{
public:
    /// The columns as stored; a reference that is NULL comes as -1, and the date of birth as a date-int,
    /// today's where none is stored.
    virtual void ShowRecord(const ContactRecord &record) = 0;
    virtual ListModel &AvailCriteria() = 0;
    virtual ListModel &UsedCriteria() = 0;
    virtual TreeModel &AttribList() = 0;
    virtual ListModel &RolesInfo() = 0;
    /// People about to be put in a group: the person shown comes first.
    virtual ListModel &GroupList() = 0;
    virtual TreeModel &GroupTree() = 0;
};

/// Adds a person. The texts come already safe for SQL. The new ContactRef, 0 where the person exists,
/// -1 on an error.
int ADO_Contact_AddContact(const ContactRecord &record);
/// Writes all fields of a person. The texts come already safe for SQL. `contactRef`, 0 where another row
/// is the same person (nothing is written then), -1 on an error and for row 1.
int ADO_Contact_UpdateContact(int contactRef, const ContactRecord &record);
/// Whether the person still exists; nothing on an error.
std::optional<bool> ADO_Contact_CheckContact(int contactRef);
/// Shows a person with the characteristics held and those that can be given, the custom attributes, the
/// roles, and the groups; reads `Contacts`, `Concessions`, `ContactConcession` and the tables of attributes,
/// roles and groups.
void ADO_Contact_ShowContact(ContactView &view, int contactRef);
/// A person as stored, with what a save writes with the record.
struct StoredContact {
    ContactRecord record;
    ListModel availCriteria;
    ListModel usedCriteria;
    TreeModel attributes;
    ListModel roles;
};
/// Reads it as ADO_Contact_ShowContact does; false where the person is gone. Only inside Reported.
bool ReadStoredContact(int contactRef, StoredContact &stored);
/// Appends a person to a list of four columns (name, address, city, postcode) under the key "?" +
/// reference and selects the new row; a key that is there already and a person who is gone add nothing.
void ADO_Contact_FillContactInfo(int contactRef, ListModel &list);
/// Deletes a person with enrolments, attendance, bookings, results, groups, characteristics and roles.
/// Payments, waiting wishes and awards stay on purpose. False on an error: what was deleted before it
/// stays deleted, and the delete can be repeated. False for row 1 too.
bool ADO_Contact_Delete(int contactRef);
/// Writes the position within the organisation. The text comes already safe for SQL. False on an
/// error.
bool ADO_Contact_UpdateJobTitle(int contactRef, const QString &title);
