#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

class ListModel;
class Progress;

/// Makes rows of a table that name people match a list of them ("?" keys); only inside Reported. First those
/// go who are not in the list, then those come who have no row.

/// What one row takes: the text of a statement, by the person's ContactRef.
using StatementOfPerson = std::function<QString(const QString &contactRef)>;

/// The "?" keys that `stored`, a query of ContactRef, gives.
QStringList StoredKeys(const QString &stored);
/// `remove` runs for those of the `known` people whom `selected` lacks and `stored` gives: who was added
/// elsewhere since the list was drawn up stays. The keys of the rows that stay. A cancelled `progress` ends
/// it.
QSet<QString> RemoveUnselected(const QString &stored, const StatementOfPerson &remove,
                               const ListModel &selected, const QSet<QString> &known, Progress &progress);
/// Runs `insert` for everybody in `selected` for whom `isThere` finds no row, each test and insert in one
/// step under `table`; those in `stored` go untested. False where `progress` was cancelled, after the person
/// that it was at.
bool InsertSelected(const QString &table, const StatementOfPerson &isThere, const StatementOfPerson &insert,
                    const QSet<QString> &stored, const ListModel &selected, Progress &progress);
