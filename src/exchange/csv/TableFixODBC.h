#pragma once

#include <QString>

/// The key, in column `idField` of `table`, of the row whose `field` is `value`; the row is added if there is
/// none. With a text in `extra` it gets the first address line "Not Known", for an organisation. -1 on an
/// error. `value` is already safe for SQL.
int ADO_Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
                  const QString &extra);
/// The same for a text as it was read from the file.
int Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
              const QString &extra);
/// The key of that row; 0 if there is none. Writes nothing. Only inside Reported.
int Table_Find(const QString &value, const QString &table, const QString &field, const QString &idField);
