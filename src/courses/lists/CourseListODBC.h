#pragma once

#include <QString>

class ListModel;

/// Fills a list with one of the vocabularies of courses (venues, facilities, ...), keys "!" + key, sorted by
/// name; rows without a name, the sentinel among them, are left out. `table`, `nameColumn` and `keyColumn`
/// name it. False on an error, with the list empty.
bool ADO_Course_FillList2(ListModel &list, const QString &nameColumn, const QString &keyColumn,
                          const QString &table);
