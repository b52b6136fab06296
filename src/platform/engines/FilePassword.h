#pragma once

#include "platform/engines/FileDatabase.h"

/// Writes the database of `handle`, which holds its file alone, to a copy beside the file under another
/// password ("" = none), checks the copy, and puts it in the file's place. Until then the file is untouched,
/// and a crash at any moment leaves either it or the finished copy; an unfinished copy is removed at the next
/// change. Programs that waited for the file find that the one they have open is no longer a database. False
/// with an error, or without one if `progress` stopped it; `file` is then unchanged. `handle` cannot be used
/// afterwards.
bool ChangePassword(sqlite3 *handle, const QString &newPassword, const FileDatabase::Progress &progress,
                    EngineErrors &errors);
