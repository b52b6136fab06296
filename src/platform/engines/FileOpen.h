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
    QString source;          ///< of the errors
    int lockWait = 10'000;   ///< milliseconds
    bool mayBeEmpty = false; ///< a file of no bytes, which a new database starts as
};

/// Opens an existing file and reads its first page, so that a wrong password shows now: an encrypted file is
/// refused before any SQL touches it unless the password opens it. Null, with one error that names the file,
/// on a failure. `hasPassword` tells whether the file has one at all.
sqlite3 *Open(const Request &request, EngineError &error, bool *hasPassword = nullptr);

/// The error of the call that failed last on `handle`, with the file's name where the file is at fault.
EngineError LastError(sqlite3 *handle, const QString &file, const QString &source);

/// The error of work on a file that has moved.
EngineError Moved(const QString &file, const QString &source);

/// How a handle of that request waits for others.
FileWait::Pace PaceOf(const Request &request);

/// Whether the file that `handle` has open was deleted, or another stands under its name.
bool HasMoved(sqlite3 *handle);

/// Whether the file lies on a file system that other computers share.
bool IsOnNetwork(const QString &file);
} // namespace FileOpen
