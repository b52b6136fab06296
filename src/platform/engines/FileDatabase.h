#pragma once

#include "platform/connection/EngineError.h"

#include <functional>
#include <memory>

struct sqlite3;

/// The file engine's own interface beside SQL: exclusive opening and the database password.
class FileDatabase final
{
public:
    /// Told how far a long work is; false stops it.
    using Progress = std::function<bool(int done, int maximum)>;

    ~FileDatabase();

    /// The source of its errors.
    static QString Source();
    /// Opens an existing file alone, not read-only, with its password ("" = none). Nothing on a failure:
    /// the file is no database, the password is wrong, or another program has it open; the engine's error
    /// list then tells which.
    static std::unique_ptr<FileDatabase> OpenExclusive(const QString &file, const QString &password);
    /// Gives the file a new password, or with "" none, and closes it. False, with the file as it was, where
    /// that fails or `progress` stopped it; the engine's error list is empty after a stop.
    bool NewPassword(const QString &newPassword, const Progress &progress = {});
    /// Runs statements parted by ";" (schema scripts).
    bool Run(const QString &script);
    /// Makes an empty database file for OpenExclusive; false if the file cannot be made.
    static bool Create(const QString &file);

private:
    explicit FileDatabase(sqlite3 *handle)
        : m_handle(handle)
    {
    }
    sqlite3 *m_handle;
};

/// The list of the errors of the file engine's own interface, which only FileDatabase fills. The error
/// reporter offers a retry for an error whose source stands in it.
EngineErrors &EngineErrorList();
