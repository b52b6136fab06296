#pragma once

#include "contacts/lists/PersonDetails.h"
#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QString>

class ListModel;
class Progress;
class TreeModel;

/// Data functions of the characteristics of people and the discounts they earn; tables `Concessions` and
/// `ContactConcession`. The screens call a concession a characteristic.

/// Adds a characteristic. `percentage` is percent of the fee (0 to 100), `hardDiscount` an amount in
/// currency units. Texts come already safe for SQL. The new ConcessionRef, 0 where name and reference exist
/// there already, -1 on an error.
int ADO_Contact_AddConcession(const QString &name, double percentage, double hardDiscount,
                              const QString &referenceId);
/// Writes all fields of a characteristic. `concessionRef`, 0 where another one has name and reference, -1
/// on an error.
int ADO_Contact_UpdateConcession(ConcessionRef concessionRef, const QString &name, double percentage,
                                 double hardDiscount, const QString &referenceId);
/// Percent of the fee.
ReadRow<double> ADO_Contact_GetConcessionPercent(ConcessionRef concessionRef);
/// The amount in currency units.
ReadRow<double> ADO_Contact_GetConcesionDiscount(ConcessionRef concessionRef);
/// Deletes a characteristic and takes it from people and organisations; enrolments keep its name as text.
/// False on an error.
bool ADO_Contact_DeleteConcession(ConcessionRef concessionRef);

/// Takes all characteristics from a person. False on an error.
bool ADO_Contact_ConcessionWipe(ContactRef contactRef);
/// Gives a person a characteristic that is not held yet. False on an error.
bool ADO_Contact_AddContactConcession(ContactRef contactRef, ConcessionRef concessionRef);
/// Gives the characteristic to everybody in `list`, whose keys hold the people's references. Where somebody
/// has it already the user is asked whether to remove the earlier ones first; see the note inside. A person
/// who cannot be written is reported and left out; a cancelled `progress` stops after one, with the earlier
/// ones served. True if everybody has it now.
bool ADO_Contact_AddConcessionList(ConcessionRef concessionRef, const ListModel &list, Progress &progress);
/// Fills `list` with the people who have a characteristic: key "?" + reference, "surname, forename" with
/// the site's reference in front where that is shown, and the details as sub-items. A cancelled `progress`
/// ends it after a person.
void ADO_Contact_Fill_Concession(ConcessionRef concessionRef, ListModel &list, Progress &progress,
                                 const QList<PersonDetail> &details = {});
/// Fills the criterion tree with all characteristics, none of them used: key "!" + reference.
void ADO_Contact_ShowChar(TreeModel &tree);
