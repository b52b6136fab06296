#include "platform/desktop/TextFile.h"

#include "platform/sql/Windows1252.h"

#include <QStringDecoder>

QString TextOf(const QByteArray &bytes, char16_t first)
{
    if (const auto encoding = QStringConverter::encodingForData(bytes, first))
        return QStringDecoder(*encoding).decode(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    return utf8.hasError() ? FromWindows1252(bytes.constData(), bytes.size()) : text;
}

std::optional<KeyLine> KeyLineOf(QStringView line)
{
    const qsizetype open = line.indexOf(u'[');
    const qsizetype close = line.indexOf(u"]=");
    if (open < 0 || close < open)
        return std::nullopt;
    return KeyLine{line.mid(open + 1, close - open - 1).toString(), line.mid(close + 2).trimmed().toString()};
}
