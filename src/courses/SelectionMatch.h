#pragma once

#include <QSet>
#include <QString>

#include <functional>

class ListModel;
class Progress;

/// Makes rows of a table that name people match a list of them ("?" keys); only inside Reported. First those
/// go who are not in the list, then those come who have no row.

/// What one row takes: the text of a statement, by the person's ContactRef.
using StatementOfPerson = std::function<QString(const QString &contactRef)>;

/// `stored` reads the ContactRef of each row; `remove` runs for those that `selected` lacks. The keys of the
/// rows that stay. A cancelled `progress` ends it.
QSet<QString> RemoveUnselected(const QString &stored, const StatementOfPerson &remove,
                               const ListModel &selected, Progress &progress);
/// Runs `insert` for everybody in `selected` who has no row. False where `progress` was cancelled, behind the
/// person that it was at.
bool InsertSelected(const StatementOfPerson &insert, const QSet<QString> &stored, const ListModel &selected,
                    Progress &progress);
