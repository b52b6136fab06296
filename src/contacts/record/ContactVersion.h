#pragma once

#include "contacts/record/ContactRecordODBC.h"
#include "database/statements/RecordMerge.h"
#include "database/values/Keys.h"

/// Storing a person, also where another workstation stored the same one since the screen was filled.

/// The version that a screen shows, or was filled from.
FieldValues Contact_Values(const ContactRecord &record, const ContactLists &lists);
/// The version that is stored; empty where the person is gone, and on an error.
FieldValues Contact_StoredValues(ContactRef contactRef);

/// Adds a person as typed. The new ContactRef; 0, after telling the user, where the person exists; -1 on an
/// error.
int Contact_Add(const ContactRecord &record);
/// Writes a person as typed, with what another workstation changed since `base` was read; `record`, `lists`
/// and `base` are then what is stored, up to the lists, which are the caller's to write. Results as of
/// Contact_Add, -1 as well where the user went back to the record.
int Contact_Update(ContactRef contactRef, ContactRecord &record, const ContactLists &lists,
                   FieldValues &base);
