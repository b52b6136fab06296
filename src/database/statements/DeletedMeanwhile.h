#pragma once

#include "controls/ListModel.h"

#include <QSet>

#include <functional>
#include <optional>

/// Handles what another workstation deleted while it was still shown on a screen here: nothing is written for
/// its key, and the user is told.

/// Those of `keys` that have a row in the table; nullopt on an error.
std::optional<QSet<int>> ADO_LivingKeys(const QString &table, const QString &keyColumn,
                                        const QSet<int> &keys);
/// `key` if the table has it; 0, after telling the user that `what` ("group") was deleted; -1 on an error.
int LivingKey(const QString &table, const QString &keyColumn, int key, const QString &what,
              const QString &title);
/// Removes the rows whose key is no longer in the table from a list, and tells the user their names. False on
/// an error: the list is then unchanged.
bool LeaveOutDeleted(ListModel &list, const QString &table, const QString &keyColumn, const QString &title);
/// The same for rows that belong to something with a key and a name of its own.
bool LeaveOutDeleted(ListModel &list, const QString &table, const QString &keyColumn, const QString &title,
                     const std::function<int(const ListItem &row)> &keyOf,
                     const std::function<QString(const ListItem &row)> &nameOf);
/// Tells the user the names of what was left out, at most the first ten; says nothing if there are none.
void TellLeftOut(const QStringList &names, const QString &title);
/// The same with `line` as the text above the names.
void TellNames(const QString &line, const QStringList &names, const QString &title);
