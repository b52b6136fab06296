#pragma once

#include <QString>

/// Opens the database that the session describes (gDBQUseODBC, gDBQType, gDBQName, gDBQFilename) on
/// gConnection and brings it to the current schema. If a password is needed, the credential store is tried
/// first and, with `retry`, the user is asked. If there is no connection, returns false, with gConnection
/// closed and the user told why; gDBPassword, gDBUser and gDBQFilename may have changed.
bool ConnectDatabase(bool retry);

/// The value of `key` in the text of the open connection: from after "key=" up to the next ";".
QString ConnectionStringValue(const QString &key);

/// Brings the open database to the current schema. Every statement may fail, and does if the database already
/// has what it adds; failures are ignored. Values of the older column AwardNames.ExamBoard are lost on
/// purpose: its successor holds an organisation's reference.
void UpgradeDatabase();

/// What the main window's title says about the open database: its actual kind, its file or catalogue, and
/// whether it was reached through a data source.
QString DatabaseTitle();
