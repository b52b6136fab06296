#pragma once

#include "platform/EngineError.h"

struct sqlite3;

namespace FileOpen
{
constexpr int wrongPassword = -1905;

struct Request {
    QString file;
    QString password;
    QString source;          ///< of the errors
    int lockWait = 10'000;   ///< milliseconds
    bool mayBeEmpty = false; ///< a file of no bytes, which a new database starts as
};

/// Opens an existing file and reads its first page, so that a wrong password shows now. Null, with one
/// error that names the file, on a failure. `hasPassword` tells whether the file has one at all.
sqlite3 *Open(const Request &request, EngineError &error, bool *hasPassword = nullptr);

/// The error of the call that failed last on `handle`, with the file's name where the file is at fault.
EngineError LastError(sqlite3 *handle, const QString &file, const QString &source);

/// Whether the file lies on a file system that other computers share.
bool IsOnNetwork(const QString &file);
} // namespace FileOpen
