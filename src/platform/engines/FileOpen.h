#pragma once

#include "platform/connection/EngineError.h"
#include "platform/engines/FileWait.h"

struct sqlite3;

namespace FileOpen
{
constexpr int wrongPassword = -1905;
constexpr int moved = 1032;

struct Request {
    QString file;
    QString password;
    QString source;          ///< named in the errors
    int lockWait = 10'000;   ///< milliseconds
    bool mayBeEmpty = false; ///< accepts a file of no bytes, as a new database is at first
};

/// Opens an existing file and reads its first page, so that a wrong password shows now: an encrypted file is
/// refused before any SQL touches it unless the password opens it. Null, with one error that names the file,
/// on a failure. `hasPassword` tells whether the file has a password at all.
sqlite3 *Open(const Request &request, EngineError &error, bool *hasPassword = nullptr);

/// Runs SQL and drops its rows; false on an error.
bool Runs(sqlite3 *handle, const char *sql);

/// The error of the last failed call on `handle`, with the file's name if the file is at fault.
EngineError LastError(sqlite3 *handle, const QString &file, const QString &source);

/// The error for work on a file that has moved.
EngineError Moved(const QString &file, const QString &source);

/// How a handle for that request waits for others.
FileWait::Pace PaceOf(const Request &request);

/// Whether the file that `handle` has open was deleted, or another file now has its name.
bool HasMoved(sqlite3 *handle);

/// Whether the file is on a file system shared with other computers.
bool IsOnNetwork(const QString &file);
} // namespace FileOpen
