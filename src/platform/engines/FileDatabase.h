#pragma once

#include "platform/connection/EngineError.h"

#include <functional>
#include <memory>

struct sqlite3;

/// The file engine's own interface beside SQL: exclusive opening and the database password.
class FileDatabase final
{
public:
    /// Told how far a long operation has got; returns false to stop it.
    using Progress = std::function<bool(int done, int maximum)>;

    ~FileDatabase();

    /// The source named in its errors.
    static QString Source();
    /// Opens an existing file exclusively for reading and writing, with its password ("" = none). Null on a
    /// failure: the file is not a database, the password is wrong, or another program has it open;
    /// EngineErrorList() then says which.
    static std::unique_ptr<FileDatabase> OpenExclusive(const QString &file, const QString &password);
    /// Gives the file a new password ("" = none) and closes it. False, with the file unchanged, if that fails
    /// or `progress` stopped it; EngineErrorList() is empty after a stop.
    bool NewPassword(const QString &newPassword, const Progress &progress = {});
    /// Runs statements separated by ";" (schema scripts).
    bool Run(const QString &script);
    /// Creates an empty database file for OpenExclusive; false if the file cannot be created.
    static bool Create(const QString &file);

private:
    explicit FileDatabase(sqlite3 *handle)
        : m_handle(handle)
    {
    }
    sqlite3 *m_handle;
};

/// The errors of the file engine's own interface, filled only by FileDatabase. The error reporter offers a
/// retry for an error whose source is in this list.
EngineErrors &EngineErrorList();
