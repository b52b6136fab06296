#pragma once

#include "controls/ListModel.h"

#include <QSet>

#include <functional>
#include <optional>

/// What another workstation deleted while it still stood on a screen here: nothing is written for its key,
/// and the user is told.

/// Those of `keys` that have a row in the table; nothing on an error.
std::optional<QSet<int>> ADO_LivingKeys(const QString &table, const QString &keyColumn,
                                        const QSet<int> &keys);
/// `key` where the table has it; 0, after telling the user that `what` ("group") was deleted; -1 on an error.
int LivingKey(const QString &table, const QString &keyColumn, int key, const QString &what,
              const QString &title);
/// Takes the rows out of a list whose key the table has no more, and tells their names. False on an error:
/// the list stays as it was.
bool LeaveOutDeleted(ListModel &list, const QString &table, const QString &keyColumn, const QString &title);
/// The same for rows that belong to something with a key and a name of its own.
bool LeaveOutDeleted(ListModel &list, const QString &table, const QString &keyColumn, const QString &title,
                     const std::function<int(const ListItem &row)> &keyOf,
                     const std::function<QString(const ListItem &row)> &nameOf);
/// Tells the names of what was left out, the first ten of them; nothing where there are none.
void TellLeftOut(const QStringList &names, const QString &title);
/// Tells names under a line of their own, likewise.
void TellNames(const QString &line, const QStringList &names, const QString &title);
