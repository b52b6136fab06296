#pragma once

#include "database/values/Keys.h"

#include <QString>

class ListModel;

/// Fills a list with one of the vocabularies of courses (venues, facilities, ...), keys "!" + key, sorted by
/// name; rows without a name, the sentinel among them, are left out. `table`, `nameColumn` and `keyColumn`
/// name it. False on an error, with the list empty.
bool ADO_Course_FillList2(ListModel &list, const QString &nameColumn, const QString &keyColumn,
                          const QString &table);

/// The title of a course; "" where it is gone, and on an error. Reads `Courses`.
QString ADO_Course_Title(CourseRef courseRef);
