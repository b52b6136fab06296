#include "platform/engines/FileSwap.h"

#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace
{
bool Flush(const QString &path)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const bool flushed = file >= 0 && fsync(file) == 0;
    if (file >= 0)
        close(file);
    return flushed;
}

bool TakeRights(const QString &made, const QString &file)
{
    struct stat rights = {};
    const QByteArray path = QFile::encodeName(made);
    if (stat(QFile::encodeName(file).constData(), &rights) != 0)
        return false;
    // Only root can set another owner, and only a member of a group can set it. If even that fails, the group
    // gets no permissions.
    if (chown(path.constData(), rights.st_uid, rights.st_gid) != 0 &&
        chown(path.constData(), static_cast<uid_t>(-1), rights.st_gid) != 0)
        rights.st_mode &= ~static_cast<mode_t>(S_IRWXG);
    return chmod(path.constData(), rights.st_mode & 07777) == 0;
}
} // namespace

bool FileSwap::Make(const QString &file)
{
    QFile::remove(file);
    const int made = open(QFile::encodeName(file).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    return made >= 0 && close(made) == 0;
}

bool FileSwap::Replace(const QString &made, const QString &file)
{
    if (!TakeRights(made, file) || !Flush(made))
        return false;
    if (std::rename(QFile::encodeName(made).constData(), QFile::encodeName(file).constData()) != 0)
        return false;
    Flush(QFileInfo(file)
              .absolutePath()); // a file system that cannot flush a folder keeps this order by itself
    return true;
}

bool FileSwap::HasOneName(const QString &file)
{
    struct stat found = {};
    return stat(QFile::encodeName(file).constData(), &found) == 0 && found.st_nlink == 1;
}
#endif
