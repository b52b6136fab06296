#pragma once

/// Makes a new database file from the template, where the user chooses, and lets the user register it as a
/// data source. The file is not opened, and the session stays as it is whatever happens.
void NewDatabase();
