#include "reports/writer/ReportHeader.h"

#include "platform/desktop/TextFile.h"
#include "platform/sql/Windows1252.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringConverter>

namespace
{
/// A letterhead may contain pictures encoded as text, so some megabytes are legitimate.
constexpr qint64 mostBytes = 8 << 20;

ReportHeader LeftOut(const QString &fileName, QStringView why)
{
    return {{}, u"The letterhead was left out: " % QDir::toNativeSeparators(fileName) % u' ' % why};
}
} // namespace

ReportHeader ReadReportHeader(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        return {};
    // Reading a pipe or a device of that name would never end.
    if (!info.isFile())
        return LeftOut(fileName, info.isDir() ? u"is a folder." : u"is not a file.");
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return LeftOut(fileName, u"cannot be read.");
    QByteArray bytes = file.read(mostBytes + 1);
    if (bytes.size() > mostBytes)
        return LeftOut(fileName, u"is larger than 8 megabytes.");
    if (QStringConverter::encodingForData(bytes))
        bytes = ToWindows1252(TextOf(bytes));
    if (bytes.contains('\0'))
        return LeftOut(fileName, u"is not a text file.");
    if (!bytes.isEmpty() && !bytes.endsWith('\n'))
        bytes.append('\n');
    return {bytes, {}};
}
