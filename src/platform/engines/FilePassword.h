#pragma once

#include "platform/engines/FileDatabase.h"

/// Writes the database of `handle`, which holds its file alone, to a copy beside the file under another
/// password ("" = none), checks the copy, and puts it in the file's place. Until then the file is untouched,
/// and a crash at any moment leaves it or the finished copy; a half one goes at the next change. Whoever
/// waited for the file then finds no database in the one that they had opened. False with an error, or
/// without one where `progress` stopped it; `file` is then as it was. `handle` is of no use afterwards.
bool ChangePassword(sqlite3 *handle, const QString &newPassword, const FileDatabase::Progress &progress,
                    EngineErrors &errors);
