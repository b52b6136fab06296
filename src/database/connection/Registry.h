#pragma once

#include <QString>

class ListModel;

// Data sources in the machine's registry. Keys are below the machine-wide root, and names compare without
// regard to case.

/// A value's text; "" if there is none.
QString RegReadString(const QString &key, const QString &valueName);
/// Writes a value and creates its key if it is missing.
bool RegWriteString(const QString &key, const QString &valueName, const QString &text);
bool RegWriteLong(const QString &key, const QString &valueName, int number);

/// True if no data source of that name is registered.
bool DSNMissing(const QString &name);
/// 1 for a data source of a database file, 2 for one of a server, 0 for anything else.
int DSNType(const QString &name);
/// The database file of a data source.
QString DSNFile(const QString &name);
/// The catalogue of a data source of a server.
QString DSNDatabase(const QString &name);
QString DSNDescription(const QString &name);
/// Points a data source at another file.
bool SetDSNFile(const QString &name, const QString &file);
/// Lists the registered data sources: name, description and file, the one of this session checked and the
/// first row selected.
void FillDSNList(ListModel &list);
/// Registers a database file as a data source; a description, user or password of "" is left out. False after
/// telling the user that it failed.
bool RegisterAccessDSN(const QString &name, const QString &file, const QString &description,
                       const QString &user, const QString &password);
