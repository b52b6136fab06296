#include "platform/desktop/Directories.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{
QString g_program;
QString g_writable;

bool CanBeWritten(const QString &directory)
{
    return QFileInfo(directory).isWritable();
}
} // namespace

QString Directories::Program()
{
    if (g_program.isEmpty())
        g_program = QCoreApplication::applicationDirPath();
    return g_program;
}

QString Directories::Writable()
{
    if (g_writable.isEmpty()) {
        g_writable = Program();
        if (!CanBeWritten(g_writable)) {
            g_writable = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
            QDir().mkpath(g_writable);
        }
        for (const auto *folder : {"temp", "database", "Reports"})
            QDir(g_writable).mkpath(QString::fromLatin1(folder));
    }
    return g_writable;
}

QString Directories::WrittenFile(const QString &name)
{
    return Writable() + u'/' + name;
}

QString Directories::SystemFile(const QString &name)
{
    const QString local = Writable() + u"/system/" + name;
    return QFileInfo::exists(local) ? local : Program() + u"/system/" + name;
}

void Directories::SetProgram(const QString &directory)
{
    g_program = WithoutTrailingSeparators(directory);
    g_writable.clear();
}

QString Directories::WithoutTrailingSeparators(const QString &path)
{
    QString result = path;
    while (result.size() > 1 && (result.endsWith(u'/') || result.endsWith(u'\\')))
        result.chop(1);
    return result;
}
