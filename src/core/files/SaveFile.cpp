#include "core/files/SaveFile.h"

#include <QFileInfo>

namespace
{
/// A file that cannot replace the other one at the end does not say why.
QString Problem(const QSaveFile &file)
{
    QString problem = file.errorString();
    if (problem != QLatin1String("Unknown error"))
        return problem;
    const QFileInfo target(file.fileName());
    const bool isClosed = !QFileInfo(target.path()).isWritable();
    return isClosed ? QStringLiteral("Permission denied") : QStringLiteral("It cannot be replaced");
}
} // namespace

QString UnableToWrite(const QSaveFile &file)
{
    return u"Unable to write '" % file.fileName() % u"': " % Problem(file) % u'.';
}
