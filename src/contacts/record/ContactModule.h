#pragma once

#include "contacts/record/ContactVersion.h"
#include "controls/ListModel.h"
#include "database/statements/ReadRow.h"
#include "database/statements/Rights.h"
#include "database/values/GlobalCode.h"

#include <functional>
#include <span>
#include <vector>

class ComboModel;
class ContactView;

/// The logic of people and of the vocabularies beside them: makes texts safe for SQL, and tells the user
/// when a record exists already.

/// The vocabularies of the contact side; the numbers are those of the sections of contact maintenance.
enum class ContactSection {
    Contacts,
    Titles,
    Cities,
    Counties,
    Countries,
    EthnicTypes,
    Characteristics,
    GroupTypes,
    Groups,
    Organisations,
    Roles,
};

struct ContactSectionInfo {
    ContactSection code;
    QString caption;
    QString table;
    QString nameColumn;
    QString keyColumn;
    Right right; ///< the right that guards adding, changing and deleting its rows
};

const ContactSectionInfo &ContactSectionOf(ContactSection code);
/// Every section with a caption of its own, in the order of the numbers.
std::span<const ContactSectionInfo> ContactSections();

void Contact_Show(ContactView &view, int contactRef);
/// True if the person still exists; false on an error.
bool Contact_Check(int contactRef);
void Contact_FillInfo(int contactRef, ListModel &list);
/// A few of the people on file who may be the one that is typed, as of ADO_Contact_FindSimilar.
std::vector<ListItem> Contact_FindSimilar(const QString &forename, const QString &surname,
                                          const QString &email);

/// Fills a drop-down list with a vocabulary or with the people; `withSelectRow` offers the sentinel.
void Contact_FillList(ContactSection code, ComboModel &list, bool withSelectRow);
/// Fills a list with a vocabulary or with the people.
void Contact_FillListView(ContactSection code, ListModel &list);
/// Adds a name as typed to a vocabulary, not to the characteristics, which have Concession_Add. The new
/// key; 0, after telling the user, where name and reference exist; -1 on an error.
int Contact_AddItem(ContactSection code, const QString &name, const QString &referenceId);
/// Writes a row of a vocabulary as typed; results as of Contact_AddItem, 0 as well where it was deleted.
int Contact_UpdateItem(ContactSection code, int key, const QString &name, const QString &referenceId);
/// The name and reference of a row of a vocabulary.
ReadRow<RefLabel> Contact_ViewItem(ContactSection code, int key);
/// False, after telling the user, where another workstation deleted what is chosen in a list; the list is
/// then filled anew with its select row. An error counts as true.
bool Contact_CheckChosen(ContactSection code, ComboModel &list);
/// Takes a text that somebody typed in a drop-down list and that is none of its items ("[reference] name" or
/// a bare name): adds it to the vocabulary, fills `list` with its select row anew and chooses the new item.
/// Where the name exists under another reference that item is chosen; after an error the choice stays.
void Contact_TakeTyped(ContactSection code, ComboModel &list, const QString &typed);
/// The same for a list that is filled in a way of its own: `add` gives the key as of Contact_AddItem.
void Contact_TakeTyped(ComboModel &list, const QString &typed,
                       const std::function<int(const RefLabel &item)> &add,
                       const std::function<void()> &fill);
/// Deletes a person or a row of a vocabulary up to the groups. False on an error.
bool Contact_DeleteItem(ContactSection code, int key);

/// Adds a characteristic as typed: percent of the fee, and an amount in currency units. The new
/// ConcessionRef; 0, after telling the user, where name and reference exist; -1 on an error.
int Concession_Add(const QString &name, double percentage, double hardDiscount, const QString &referenceId);
/// `concessionRef`; 0, after telling the user, where it was deleted; -1 on an error.
int Concession_Check(int concessionRef, const QString &title);
/// Writes a characteristic as typed; results as of Concession_Add, 0 as well where it was deleted.
int Concession_Update(int concessionRef, const QString &name, double percentage, double hardDiscount,
                      const QString &referenceId);
/// Takes the characteristics that were deleted out of a list, and tells the user. False on an error.
bool Concession_LeaveOutDeleted(ListModel &used);
/// Makes the characteristics of a person those of the list. False if the person may have fewer of them now.
bool Concession_Store(int contactRef, const ListModel &used);
