#pragma once

#include <QString>

/// The settings file of this workstation, "[name]=value" lines, read once per start and written once at
/// the end.

/// Sets every setting to its default and then to what `file` holds. A missing file leaves the defaults; a
/// number that cannot be read ends the reading with what was found so far. Sets gDBQDescription and the
/// values of the report writer as well.
void ReadSettings(const QString &file);

/// Replaces `file` as a whole. False if it could not be written; the old file then stands untouched.
bool WriteSettings(const QString &file);
