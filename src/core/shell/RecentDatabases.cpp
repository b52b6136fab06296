#include "core/shell/RecentDatabases.h"

#include "forms/frames/WindowMemory.h"

#include <QDir>
#include <QFileInfo>

namespace
{
constexpr int most = 9;
const QString key = QStringLiteral("RecentDatabases");
const QString list = QStringLiteral("files");

void Store(const QStringList &files)
{
    WindowMemory::Store(key, {{list, files}});
}
} // namespace

QStringList RecentDatabases::Files()
{
    return WindowMemory::Recall(key).value(list).toStringList();
}

void RecentDatabases::Add(const QString &file)
{
    const QString path = QFileInfo(file).absoluteFilePath();
    QStringList files = Files();
    if (files.value(0) == path)
        return;
    files.removeAll(path);
    files.prepend(path);
    Store(files.first(qMin<qsizetype>(most, files.size())));
}

void RecentDatabases::Remove(const QString &file)
{
    QStringList files = Files();
    files.removeAll(file);
    Store(files);
}

QString RecentDatabases::Caption(int index, const QString &file)
{
    const QFileInfo info(file);
    QString name = info.fileName() % u" (" % QDir::toNativeSeparators(info.path()) % u')';
    return u'&' % QString::number(index + 1) % u' ' % name.replace(u'&', QStringLiteral("&&"));
}
