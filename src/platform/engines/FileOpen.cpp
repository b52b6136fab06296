#include "platform/engines/FileOpen.h"

#include "platform/engines/FileKey.h"
#include "platform/engines/FileText.h"
#include "platform/engines/FileWait.h"

#include <QDir>
#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstring>

#ifdef Q_OS_LINUX
#include <sys/vfs.h>
#endif

namespace
{
constexpr int headerSize = 100;
constexpr int refused = 1;
constexpr int mostTries = 3;

enum class Content { Empty, Plain, Encrypted, OtherEngine, NoDatabase };

QString Shown(const QString &file)
{
    return QDir::toNativeSeparators(file);
}

/// Reads the header through the engine's own file handle: opening and closing the file by other means
/// would drop every lock that this process has on it.
Content ReadContent(sqlite3 *handle)
{
    sqlite3_file *file = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    std::array<unsigned char, headerSize> header{};
    sqlite3_int64 size = 0;
    if (!file || !file->pMethods || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        return Content::NoDatabase;
    if (size == 0)
        return Content::Empty;
    file->pMethods->xRead(file, header.data(), headerSize, 0);
    const auto startsWith = [&](size_t at, const char *text) {
        return std::memcmp(header.data() + at, text, std::strlen(text)) == 0;
    };
    if (startsWith(4, "Standard Jet DB") || startsWith(4, "Standard ACE DB"))
        return Content::OtherEngine;
    if (startsWith(0, "SQLite format 3"))
        return Content::Plain;
    // These three bytes are the same in every file of the engine, and encryption leaves them readable.
    const bool isEncrypted = size >= 512 && header[21] == 64 && header[22] == 32 && header[23] == 32;
    return isEncrypted ? Content::Encrypted : Content::NoDatabase;
}

EngineError Refuse(const FileOpen::Request &request, const QString &description, int number = refused)
{
    return {number, request.source, description, QString()};
}

/// Why the file cannot be one of ours, before the engine touches it; "" if it may be.
QString WhyNotAFile(const QString &file)
{
    const QFileInfo info(file);
    if (!info.exists())
        return u"The database file " % Shown(file) % u" does not exist.";
    if (info.isDir())
        return Shown(file) % u" is a folder, not a database file.";
    if (!info.isFile())
        return Shown(file) % u" is not a file.";
    if (!info.isReadable())
        return u"The database file " % Shown(file) % u" may not be read by this user.";
    return {};
}

QString WhyNotADatabase(Content content, const FileOpen::Request &request)
{
    switch (content) {
    case Content::Empty:
        return request.mayBeEmpty ? QString()
                                  : QString(u"The database file " % Shown(request.file) % u" is empty.");
    case Content::OtherEngine:
        return Shown(request.file) %
               u" was made by Microsoft Access. This program's file engine does not read such files: export "
               u"its data there and import it into a new database here.";
    case Content::NoDatabase:
        return Shown(request.file) % u" is not a database.";
    case Content::Plain:
    case Content::Encrypted:
        break;
    }
    return {};
}

QString WhyFileFails(int code, const QString &file)
{
    switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return u"The database file " % Shown(file) % u" is in use by another program and stayed locked.";
    case SQLITE_CORRUPT:
        return u"The database file " % Shown(file) % u" is damaged or cut short.";
    case SQLITE_NOTADB:
        return Shown(file) % u" is not a database, or its password was changed.";
    case SQLITE_CANTOPEN:
        return u"The database file " % Shown(file) % u" cannot be opened, or its folder cannot be written.";
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return u"The database file " % Shown(file) % u" is read-only.";
    case SQLITE_FULL:
        return u"The disk of the database file " % Shown(file) % u" is full.";
    case SQLITE_IOERR:
        return u"The database file " % Shown(file) % u" could not be read or written.";
    default:
        return {};
    }
}
EngineError RefusePassword(const FileOpen::Request &request)
{
    const QString file = Shown(request.file);
    return Refuse(request,
                  request.password.isEmpty()
                      ? QString(u"The database file " % file % u" needs a password.")
                      : QString(u"Not a valid password for the database file " % file % u"."),
                  FileOpen::wrongPassword);
}

/// The opening of one file. It tries again if the file was replaced in the meantime, or if a crash left a
/// page half written.
struct Opening {
    const FileOpen::Request &request;
    EngineError &error;
    Content content = Content::NoDatabase;
    bool isKeyProven = false;
    bool isWorthAnotherTry = false;

    sqlite3 *Try()
    {
        isWorthAnotherTry = false;
        // An absolute path is never mistaken for one of the engine's special names.
        const QByteArray path = QFileInfo(request.file).absoluteFilePath().toUtf8();
        constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI; // names of copies carry their key
        sqlite3 *handle = nullptr;
        bool opened = sqlite3_open_v2(path.constData(), &handle, flags, nullptr) == SQLITE_OK;
        if (!opened)
            error = FileOpen::LastError(handle, request.file, request.source);
        opened = opened && IsAccepted(handle) && TakesKey(handle) && ReadsFirstPage(handle);
        if (opened)
            return handle;
        sqlite3_close(handle);
        return nullptr;
    }

    bool Fail(const EngineError &failure)
    {
        error = failure;
        return false;
    }

    bool IsAccepted(sqlite3 *handle)
    {
        content = ReadContent(handle);
        if (const QString why = WhyNotADatabase(content, request); !why.isEmpty())
            return Fail(Refuse(request, why, SQLITE_NOTADB));
        if (sqlite3_db_readonly(handle, "main") == 1)
            return Fail(Refuse(request, WhyFileFails(SQLITE_READONLY, request.file), SQLITE_READONLY));
        return true;
    }

    /// A password for a file without one is ignored, since the stored password may have been removed from the
    /// file later.
    bool TakesKey(sqlite3 *handle)
    {
        if (content != Content::Encrypted)
            return true;
        if (isKeyProven)
            return GiveKey(handle, request.password);
        const KeyFit fit = request.password.isEmpty() ? KeyFit::Wrong : TryKey(handle, request.password);
        if (fit == KeyFit::Fits)
            return true;
        isKeyProven = isWorthAnotherTry = fit == KeyFit::FitsOnReopening;
        return Fail(RefusePassword(request));
    }

    bool ReadsFirstPage(sqlite3 *handle)
    {
        FileWait::Install(handle, FileOpen::PaceOf(request));
        InstallTextComparison(handle);
        if (!FileOpen::Runs(handle, "SELECT count(*) FROM sqlite_master"))
            Fail(FileOpen::LastError(handle, request.file, request.source));
        else if (!FileOpen::HasMoved(handle))
            return true;
        else
            Fail(FileOpen::Moved(request.file, request.source));
        isWorthAnotherTry = FileOpen::HasMoved(handle);
        return false;
    }
};
} // namespace

sqlite3 *FileOpen::Open(const Request &request, EngineError &error, bool *hasPassword)
{
    if (const QString why = WhyNotAFile(request.file); !why.isEmpty()) {
        error = Refuse(request, why, SQLITE_CANTOPEN);
        return nullptr;
    }
    Opening opening{request, error};
    sqlite3 *handle = opening.Try();
    for (int tries = 1; !handle && opening.isWorthAnotherTry && tries < mostTries; ++tries)
        handle = opening.Try();
    if (hasPassword)
        *hasPassword = opening.content == Content::Encrypted;
    return handle;
}

FileWait::Pace FileOpen::PaceOf(const Request &request)
{
    constexpr int onNetwork = 5;
    return {request.lockWait, IsOnNetwork(request.file) ? onNetwork : 1};
}

bool FileOpen::HasMoved(sqlite3 *handle)
{
    int moved = 0;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

EngineError FileOpen::Moved(const QString &file, const QString &source)
{
    return {
        moved, source,
        u"The database file " % Shown(file) %
            u" was moved, deleted or replaced by another while it was open. Nothing was written, and your "
            u"work is still on the screen: put the file back, or log off and log on again.",
        QString()};
}

bool FileOpen::Runs(sqlite3 *handle, const char *sql)
{
    return sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

EngineError FileOpen::LastError(sqlite3 *handle, const QString &file, const QString &source)
{
    if (handle && HasMoved(handle))
        return Moved(file, source);
    const int code = handle ? sqlite3_errcode(handle) & 0xFF : SQLITE_NOMEM;
    const QString why = WhyFileFails(code, file);
    const QString engineText = handle ? QString::fromUtf8(sqlite3_errmsg(handle)) : QString();
    return {code, source, why.isEmpty() ? engineText : QString(why % u" (" % engineText % u")"), QString()};
}

bool FileOpen::IsOnNetwork(const QString &file)
{
#ifdef Q_OS_LINUX
    struct statfs system = {};
    if (statfs(QFileInfo(file).absolutePath().toUtf8().constData(), &system) != 0)
        return false;
    // NFS, SMB in its three forms, AFS, Coda, NCP, 9P, Ceph, and those that run in a user process (sshfs).
    constexpr std::array<quint32, 10> networks{0x6969,     0x517B, 0xFF534D42, 0xFE534D42, 0x5346414F,
                                               0x73757245, 0x564C, 0x01021997, 0x00C36400, 0x65735546};
    return std::find(networks.begin(), networks.end(), static_cast<quint32>(system.f_type)) != networks.end();
#else
    Q_UNUSED(file);
    return false;
#endif
}
