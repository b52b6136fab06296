#include "platform/engines/FileDatabase.h"

#include "platform/engines/FileOpen.h"
#include "platform/engines/FilePassword.h"
#include "platform/engines/FileSwap.h"

#include <sqlite3.h>

namespace
{
/// Long enough for a workstation that reads for a moment; one that keeps working is not waited for.
constexpr int exclusiveWait = 2'000;

/// Holds the file exclusively until it is closed. A change of the password needs the write-ahead log gone,
/// and turning the log off needs exclusive access too. If the file were locked first, the journal of that
/// switch would be left beside it.
bool TakeAlone(sqlite3 *handle)
{
    return FileOpen::Runs(handle, "PRAGMA journal_mode=DELETE") &&
           FileOpen::Runs(handle, "PRAGMA locking_mode=EXCLUSIVE") &&
           FileOpen::Runs(handle, "BEGIN EXCLUSIVE") && FileOpen::Runs(handle, "COMMIT");
}

EngineError FailureOf(sqlite3 *handle)
{
    return FileOpen::LastError(handle, QString::fromUtf8(sqlite3_db_filename(handle, "main")),
                               FileDatabase::Source());
}
} // namespace

FileDatabase::~FileDatabase()
{
    sqlite3_close_v2(m_handle);
}

QString FileDatabase::Source()
{
    return QStringLiteral("Veltrane File Engine");
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

bool FileDatabase::NewPassword(const QString &newPassword, const Progress &progress)
{
    EngineErrorList().clear();
    const bool changed = ChangePassword(m_handle, newPassword, progress, EngineErrorList());
    sqlite3_close_v2(m_handle);
    m_handle = nullptr;
    return changed;
}

bool FileDatabase::Run(const QString &script)
{
    EngineErrorList().clear();
    const bool done = FileOpen::Runs(m_handle, script.toUtf8().constData());
    if (!done)
        EngineErrorList() = {FailureOf(m_handle)};
    return done;
}

bool FileDatabase::Create(const QString &file)
{
    return FileSwap::Make(file);
}

EngineErrors &EngineErrorList()
{
    static EngineErrors list;
    return list;
}
