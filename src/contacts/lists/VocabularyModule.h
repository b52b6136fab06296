#pragma once

#include "database/statements/ReadRow.h"
#include "database/statements/Rights.h"
#include "database/values/GlobalCode.h"

#include <functional>
#include <span>

class ComboModel;
class ListModel;

/// The logic of the vocabularies beside people: makes texts safe for SQL, and tells the user when a row
/// exists already.

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
    QString word; ///< for one of its rows, in the middle of a sentence
    Right right;  ///< the right that guards adding, changing and deleting its rows
};

const ContactSectionInfo &ContactSectionOf(ContactSection code);
/// Every section with a caption of its own, in the order of the numbers.
std::span<const ContactSectionInfo> ContactSections();

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
/// Gives the name of a row of a vocabulary by its key, "" where there is no such row.
std::function<QString(const QString &key)> Contact_NamesIn(ContactSection code);
/// False, after telling the user, where another workstation deleted what is chosen in a list; the list is
/// then filled again with its select row. An error counts as true.
bool Contact_CheckChosen(ContactSection code, ComboModel &list);
/// Takes a text that somebody typed in a drop-down list and that is none of its items ("[reference] name" or
/// a bare name): adds it to the vocabulary, fills `list` with its select row again and chooses the new item.
/// Where the name exists under another reference that item is chosen; after an error the choice stays.
void Contact_TakeTyped(ContactSection code, ComboModel &list, const QString &typed);
/// The same for a list that is filled in a way of its own: `add` gives the key as of Contact_AddItem.
void Contact_TakeTyped(ComboModel &list, const QString &typed,
                       const std::function<int(const RefLabel &item)> &add,
                       const std::function<void()> &fill);
