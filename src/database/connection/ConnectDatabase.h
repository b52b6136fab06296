#pragma once

#include <QString>

/// Opens the database that the session describes (gDBQUseODBC, gDBQType, gDBQName, gDBQFilename) on
/// gConnection and brings it to the present schema. Where a password is needed, the credential store is
/// tried first and, with `retry`, the user is asked. False, with gConnection closed and the user told why,
/// when there is no connection; gDBPassword, gDBUser and gDBQFilename may have changed.
bool ConnectDatabase(bool retry);

/// The value of `key` in the text of the open connection: from behind "key=" up to the next ";".
QString ConnectionStringValue(const QString &key);

/// Brings the open database to the present schema. Every statement may fail, and does so on a database
/// that already has what it adds; failures are passed over. Values of the older column
/// AwardNames.ExamBoard are lost on purpose: its successor holds an organisation's reference.
void UpgradeDatabase();

/// What the main window's title says of the open database: its true kind, its file or catalogue, and whether
/// it was reached through a data source.
QString DatabaseTitle();
