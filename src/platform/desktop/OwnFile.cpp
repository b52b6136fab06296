#include "platform/desktop/OwnFile.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <fcntl.h>

bool OpenOwnFile(QFile &file, QIODevice::OpenMode mode)
{
    const int place = mode.testFlag(QIODevice::Append) ? O_APPEND : O_TRUNC;
    const int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC | place;
    const int opened = open(QFile::encodeName(file.fileName()).constData(), flags, 0666);
    return opened >= 0 && file.open(opened, mode | QIODevice::WriteOnly, QFile::AutoCloseHandle);
}
#endif
