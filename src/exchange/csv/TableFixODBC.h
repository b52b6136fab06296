#pragma once

#include <QString>

/// The key, in column `idField` of `table`, of the row whose `field` is `value`; the row is made where there
/// is none. A text in `extra` makes it with the first address line "Not Known", as an organisation has it.
/// -1 on an error. `value` comes already safe for SQL.
int ADO_Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
                  const QString &extra);
/// The same for a text as it was read.
int Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
              const QString &extra);
/// The key of that row; 0 where there is none. Writes nothing. Only inside Reported.
int Table_Find(const QString &value, const QString &table, const QString &field, const QString &idField);
