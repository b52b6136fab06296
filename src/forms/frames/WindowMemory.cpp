#include "forms/frames/WindowMemory.h"

#include "platform/desktop/Directories.h"

#include <QDataStream>
#include <QFile>
#include <QSaveFile>

namespace
{
constexpr qint64 largestFile = 1 << 20; ///< bytes; a larger file is not ours

QString FileName()
{
    return Directories::WrittenFile(QStringLiteral("windows.dat"));
}

QVariantMap AllWindows()
{
    QFile file(FileName());
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile)
        return {};
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_6_0);
    QVariantMap windows;
    stream >> windows;
    return stream.status() == QDataStream::Ok ? windows : QVariantMap();
}
} // namespace

QVariantMap WindowMemory::Recall(const QString &window)
{
    return AllWindows().value(window).toMap();
}

void WindowMemory::Store(const QString &window, const QVariantMap &values)
{
    QVariantMap windows = AllWindows();
    if (windows.value(window).toMap() == values)
        return;
    windows.insert(window, values);
    QSaveFile file(FileName());
    if (!file.open(QIODevice::WriteOnly))
        return;
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << windows;
    if (file.flush())
        file.commit();
}
