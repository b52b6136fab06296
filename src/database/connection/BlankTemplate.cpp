#include "database/connection/BlankTemplate.h"

#include "platform/engines/FileDatabase.h"

#include <QFile>
#include <QSaveFile>

bool CopyOver(const QString &from, const QString &to)
{
    constexpr qint64 piece = 1024 * 1024;
    constexpr QFile::Permissions ownerAndGroup =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup;
    QFile in(from);
    QSaveFile out(to);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly))
        return false;
    out.setPermissions(ownerAndGroup);
    while (!in.atEnd()) {
        const QByteArray data = in.read(piece);
        if (data.isEmpty() || out.write(data) != data.size())
            return false;
    }
    return out.flush() && out.commit();
}

bool OpenUpTemplate(const QString &file)
{
    if (FileDatabase::OpenExclusive(file, QString()))
        return false;
    const auto database = FileDatabase::OpenExclusive(file, TemplatePassword);
    return database && database->NewPassword(QString());
}
