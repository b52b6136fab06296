#include "platform/FileDatabase.h"

#include "platform/FileOpen.h"

#include <QFile>

#include <sqlite3.h>

namespace
{
/// Another workstation that only reads for a moment is waited for; one that works on is not.
constexpr int exclusiveWait = 2'000;

QString Source()
{
    return QStringLiteral("Veltrane File Engine");
}

bool Runs(sqlite3 *handle, const char *sql)
{
    return sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

/// Holds the file alone until it is closed. Leaving the write-ahead log needs the file alone too, and a
/// change of the password needs the log gone.
bool TakeAlone(sqlite3 *handle)
{
    return Runs(handle, "PRAGMA locking_mode=EXCLUSIVE") && Runs(handle, "PRAGMA journal_mode=DELETE") &&
           Runs(handle, "BEGIN EXCLUSIVE") && Runs(handle, "COMMIT");
}

EngineError FailureOf(sqlite3 *handle)
{
    return FileOpen::LastError(handle, QString::fromUtf8(sqlite3_db_filename(handle, "main")), Source());
}
} // namespace

FileDatabase::~FileDatabase()
{
    sqlite3_close_v2(m_handle);
}

std::unique_ptr<FileDatabase> FileDatabase::OpenExclusive(const QString &file, const QString &password)
{
    EngineErrorList().clear();
    FileOpen::Request request;
    request.file = file;
    request.password = password;
    request.source = Source();
    request.lockWait = exclusiveWait;
    request.mayBeEmpty = true;
    EngineError error;
    sqlite3 *handle = FileOpen::Open(request, error);
    if (!handle) {
        EngineErrorList() = {error};
        return nullptr;
    }
    std::unique_ptr<FileDatabase> database(new FileDatabase(handle));
    if (!TakeAlone(handle)) {
        EngineErrorList() = {FailureOf(handle)};
        return nullptr;
    }
    return database;
}

bool FileDatabase::NewPassword(const QString &newPassword)
{
    EngineErrorList().clear();
    const QByteArray key = newPassword.toUtf8();
    const int result = key.isEmpty() ? sqlite3_rekey(m_handle, nullptr, 0)
                                     : sqlite3_rekey(m_handle, key.constData(), static_cast<int>(key.size()));
    if (result != SQLITE_OK)
        EngineErrorList() = {FailureOf(m_handle)};
    return result == SQLITE_OK;
}

bool FileDatabase::Run(const QString &script)
{
    EngineErrorList().clear();
    const bool done = Runs(m_handle, script.toUtf8().constData());
    if (!done)
        EngineErrorList() = {FailureOf(m_handle)};
    return done;
}

bool FileDatabase::Create(const QString &file)
{
    QFile made(file);
    return made.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

EngineErrors &EngineErrorList()
{
    static EngineErrors list;
    return list;
}
