#pragma once

#include "contacts/lists/PersonDetails.h"
#include "database/statements/ReadRow.h"
#include "database/values/GlobalCode.h"

class ComboModel;
class ListModel;

/// Data functions of the lists of people and of the small vocabularies beside them (titles, towns,
/// counties, countries, ethnic types, ...). `table`, `nameColumn` and `keyColumn` name the vocabulary. In
/// the tables that have one, row 1 is the sentinel with an empty name.

/// All people for a list: key "?" + reference, "surname, forename" with the site's reference in front where
/// that is shown. Who has either name empty is left out, and the sentinel with them.
/// `details` are the sub-items. Reads `Contacts`, and the tables of the details.
void ADO_Contact_Fill(ListModel &list, const QList<PersonDetail> &details = {});
/// All people for a drop-down list, the reference as item data and the first item chosen. The sentinel is
/// the select row where `withSelectRow` is set and left out where not; who has both names empty is left out.
void ADO_Contact_FillListC(ComboModel &list, bool withSelectRow);

/// Fills a drop-down list with a vocabulary, the key as item data and the first item chosen. The sentinel
/// is the select row where `withSelectRow` is set, else a blank line.
void ADO_Contact_FillList(ComboModel &list, const QString &nameColumn, const QString &keyColumn,
                          const QString &table, bool withSelectRow);
/// Fills a list with a vocabulary, keys "?" + key, the first row selected; rows without a name are left out.
/// False on an error.
bool ADO_Contact_FillList2(ListModel &list, const QString &nameColumn, const QString &keyColumn,
                           const QString &table);

/// Fills `available` with all characteristics, then moves those that `held`, a query of `ConcessionRef`,
/// gives to `used`, which is emptied first; the first row of each is selected. False where the lists are not
/// whole; only inside Reported. Reads `Concessions`.
bool ShowCharacteristics(ListModel &available, ListModel &used, const QString &held);

/// Adds a row to a vocabulary. Texts come already safe for SQL. `extra` names one more column, which gets
/// "Not Known"; "" = none. The new key, 0 where name and reference exist already, -1 on an error.
int ADO_Contact_AddItem(const QString &name, const QString &table, const QString &nameColumn,
                        const QString &keyColumn, const QString &referenceId, const QString &extra);
/// Writes name and reference of a row. Texts come already safe for SQL. `key`, 0 where another row has
/// both, -1 on an error and for a sentinel.
int ADO_Contact_UpdateItem(int key, const QString &name, const QString &table, const QString &nameColumn,
                           const QString &keyColumn, const QString &referenceId);
/// The name and reference of a row of a vocabulary.
ReadRow<RefLabel> ADO_ViewItem(int key, const QString &keyColumn, const QString &nameColumn,
                               const QString &table);

/// Deletes a row of a vocabulary after moving what refers to it to row 1. False on an error, and for row 1
/// itself.
bool ADO_Contact_DeleteDesignation(int key); ///< writes `Contacts`
bool ADO_Contact_DeleteCity(int key);        ///< writes `Contacts`, `Organisations`
bool ADO_Contact_DeleteCounty(int key);      ///< writes `Contacts`, `Organisations`
bool ADO_Contact_DeleteCountry(int key);     ///< writes `Contacts`, `Organisations`
bool ADO_Contact_DeleteEthnic(int key);      ///< writes `Contacts`
