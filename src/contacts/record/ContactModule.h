#pragma once

#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactRecordODBC.h"
#include "controls/ListModel.h"
#include "database/values/Keys.h"

#include <vector>

/// The logic of people: makes texts safe for SQL.

/// Reads a person, as of ADO_Contact_ShowContact.
ReadRow<ContactFile> Contact_Show(ContactRef contactRef, const ContactLists &lists,
                                  const ContactGroups &groups);
/// True if the person still exists; false on an error.
bool Contact_Check(ContactRef contactRef);
void Contact_FillInfo(ContactRef contactRef, ListModel &list);
/// A few of the people on file who may be the one that is typed, as of ADO_Contact_FindSimilar.
std::vector<ListItem> Contact_FindSimilar(const QString &forename, const QString &surname,
                                          const QString &email);

/// Deletes a person or a row of a vocabulary up to the groups. False on an error.
bool Contact_DeleteItem(ContactSection code, int key);
