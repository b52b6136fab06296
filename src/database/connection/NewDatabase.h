#pragma once

/// Creates a new database file from the template where the user chooses, and lets the user register it as a
/// data source. The file is not opened, and the session is unchanged whatever happens.
void NewDatabase();
