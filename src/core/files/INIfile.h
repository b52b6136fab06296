#pragma once

#include <QString>

/// The settings file of this workstation: lines of "[name]=value", read once at the start and written once at
/// the end.

/// Sets every setting to its default and then to what `file` says. A missing file leaves the defaults; a
/// number that cannot be read ends the reading, and what was read before it is kept. Also sets
/// gDBQDescription and the values of the report writer.
void ReadSettings(const QString &file);

/// Replaces `file` as a whole. False if it could not be written; the old file is then unchanged.
bool WriteSettings(const QString &file);
