#include "platform/engines/FilePassword.h"

#include "platform/engines/FileOpen.h"
#include "platform/engines/FileSwap.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QUrl>

#include <sqlite3.h>

#include <algorithm>
#include <array>

namespace
{
constexpr int wholeWork = 100;
constexpr int copied = 80; ///< percent of the whole; the rest is the check of the copy
constexpr int stepsBetweenLooks = 5'000;

/// What a change of one file's password works on.
struct Change {
    sqlite3 *handle;
    QString file;
    QString copy;
    QString newPassword;
    const FileDatabase::Progress &progress;
    EngineErrors &errors;
    qint64 size = 0;

    bool Fail(const QString &why)
    {
        errors = {{SQLITE_ERROR, FileDatabase::Source(), why, QString()}};
        return false;
    }
    /// Notes the failure of a statement on `failed`; a stop is not an error.
    bool FailOf(sqlite3 *failed, const QString &name)
    {
        if ((sqlite3_errcode(failed) & 0xFF) != SQLITE_INTERRUPT)
            errors = {FileOpen::LastError(failed, name, FileDatabase::Source())};
        return false;
    }
};

qint64 WholeSize(sqlite3 *handle)
{
    const auto take = [](void *found, int, char **values, char **) {
        *static_cast<qint64 *>(found) = QByteArray(values[0]).toLongLong();
        return 0;
    };
    qint64 pages = 0;
    qint64 pageSize = 0;
    sqlite3_exec(handle, "PRAGMA page_count", take, &pages, nullptr);
    sqlite3_exec(handle, "PRAGMA page_size", take, &pageSize, nullptr);
    return pages * pageSize;
}

/// Called by the engine while a long statement runs; any result but 0 stops it.
int LookAtCopying(void *given)
{
    const auto &change = *static_cast<const Change *>(given);
    const qint64 written = std::min(QFileInfo(change.copy).size(), change.size);
    const int done = static_cast<int>(copied * written / std::max<qint64>(change.size, 1));
    return change.progress(done, wholeWork) ? 0 : 1;
}

int LookAtChecking(void *given)
{
    return static_cast<const Change *>(given)->progress(copied, wholeWork) ? 0 : 1;
}

void RemoveCopy(const QString &copy)
{
    QFile::remove(copy);
    QFile::remove(copy % QLatin1String("-journal"));
}

/// Work in a journal or log beside the file that is not yet in the file would be taken for the copy's. A
/// journal whose beginning was cleared is finished.
bool HasUnfinishedWork(const QString &file)
{
    QFile journal(file % QLatin1String("-journal"));
    char first = 0;
    const bool isOpen = journal.open(QIODevice::ReadOnly) && journal.getChar(&first) && first != 0;
    return isOpen || QFileInfo(file % QLatin1String("-wal")).size() > 0;
}

bool MakeRoom(Change &change)
{
    RemoveCopy(change.copy);
    const QString folder = QFileInfo(change.file).absolutePath();
    const qint64 needed = change.size + change.size / 20 + 1'048'576;
    const qint64 free = QStorageInfo(folder).bytesAvailable();
    const auto megabytes = [](qint64 bytes) { return QString::number((bytes + 1'048'575) / 1'048'576); };
    if (free >= 0 && free < needed)
        return change.Fail(u"The password is changed on a copy of the database, and the disk has too little "
                           u"room for one: it takes " %
                           megabytes(needed) % u" MB in " % QDir::toNativeSeparators(folder) % u", where " %
                           megabytes(free) % u" MB are free.");
    if (!FileSwap::Make(change.copy))
        return change.Fail(u"The password is changed on a copy of the database, which cannot be made in " %
                           QDir::toNativeSeparators(folder) % u'.');
    return true;
}

bool WriteCopy(Change &change)
{
    constexpr QLatin1String withPassword("&reserve=32"); // bytes of a page that hold its seal
    constexpr QLatin1String without("&key=&reserve=0");
    const QByteArray key = change.newPassword.toUtf8().toHex();
    const QByteArray name = QUrl::toPercentEncoding(change.copy, "/");
    const QString target =
        u"file:" % QLatin1String(name) % u'?' %
        (key.isEmpty() ? QString(without) : QString(u"hexkey=" % QLatin1String(key) % withPassword));
    if (change.progress)
        sqlite3_progress_handler(change.handle, stepsBetweenLooks, LookAtCopying, &change);
    const QByteArray sql = QString(u"VACUUM INTO '" % target % u'\'').toUtf8();
    const bool done = FileOpen::Runs(change.handle, sql.constData());
    sqlite3_progress_handler(change.handle, 0, nullptr, nullptr);
    return done || change.FailOf(change.handle, change.file);
}

bool CheckCopy(Change &change)
{
    FileOpen::Request request;
    request.file = change.copy;
    request.password = change.newPassword;
    request.source = FileDatabase::Source();
    EngineError error;
    bool hasPassword = false;
    sqlite3 *copy = FileOpen::Open(request, error, &hasPassword);
    if (!copy) {
        change.errors = {error};
        return false;
    }
    if (change.progress)
        sqlite3_progress_handler(copy, stepsBetweenLooks, LookAtChecking, &change);
    const auto take = [](void *found, int, char **values, char **) {
        *static_cast<QByteArray *>(found) += values[0];
        return 0;
    };
    QByteArray found;
    bool whole = sqlite3_exec(copy, "PRAGMA quick_check", take, &found, nullptr) == SQLITE_OK;
    if (!whole)
        change.FailOf(copy, change.copy);
    sqlite3_close(copy);
    if (whole && (found != "ok" || hasPassword == change.newPassword.isEmpty()))
        whole = change.Fail(u"The copy of the database does not read back as it should: " %
                            QString::fromUtf8(found));
    return whole;
}

/// A program that waits for the file goes on with the old one, which it has open. Without its header that one
/// is not a database, so nothing can be written to a file that nobody would look for.
void Spoil(sqlite3 *handle)
{
    sqlite3_file *file = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    constexpr std::array<char, 100> nothing{};
    if (file && file->pMethods)
        file->pMethods->xWrite(file, nothing.data(), static_cast<int>(nothing.size()), 0);
}

bool PutInPlace(Change &change)
{
    if (HasUnfinishedWork(change.file))
        return change.Fail(u"Work on the database file " % QDir::toNativeSeparators(change.file) %
                           u" is not finished.");
    const bool isSpoilt = FileSwap::HasOneName(change.file);
    if (!FileSwap::Replace(change.copy, change.file))
        return change.Fail(u"The copy cannot take the place of the database file " %
                           QDir::toNativeSeparators(change.file) % u'.');
    if (isSpoilt)
        Spoil(change.handle);
    return true;
}
} // namespace

bool ChangePassword(sqlite3 *handle, const QString &newPassword, const FileDatabase::Progress &progress,
                    EngineErrors &errors)
{
    const QString file =
        QFileInfo(QString::fromUtf8(sqlite3_db_filename(handle, "main"))).canonicalFilePath();
    Change change{handle, file, file % u".password", newPassword, progress, errors, WholeSize(handle)};
    if (!MakeRoom(change))
        return false;
    const bool done = WriteCopy(change) && CheckCopy(change) && PutInPlace(change);
    if (!done)
        RemoveCopy(change.copy);
    return done;
}
