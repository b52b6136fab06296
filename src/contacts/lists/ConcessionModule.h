#pragma once

#include "database/values/Keys.h"

#include <QString>

class ListModel;

/// The logic of the characteristics of people and the discounts they earn: makes texts safe for SQL, and
/// speaks to the user.

/// Adds a characteristic as typed: percent of the fee, and an amount in currency units. The new
/// ConcessionRef; 0, after telling the user, where name and reference exist; -1 on an error.
int Concession_Add(const QString &name, double percentage, double hardDiscount, const QString &referenceId);
/// `concessionRef`; 0, after telling the user, where it was deleted; -1 on an error.
int Concession_Check(ConcessionRef concessionRef, const QString &title);
/// Writes a characteristic as typed; results as of Concession_Add, 0 as well where it was deleted.
int Concession_Update(ConcessionRef concessionRef, const QString &name, double percentage,
                      double hardDiscount, const QString &referenceId);
/// Takes the characteristics that were deleted out of a list, and tells the user. False on an error.
bool Concession_LeaveOutDeleted(ListModel &used);
/// Makes the characteristics of a person those of the list. False if the person may have fewer of them now.
bool Concession_Store(ContactRef contactRef, const ListModel &used);
