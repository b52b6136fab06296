#include "users/SecurityMap.h"

#include "database/Security.h"

#include <QFile>
#include <QSet>
#include <QStringDecoder>

#include <optional>

namespace
{
/// A map has a line for each right. What lies behind these limits is no map, and must not cost the screen
/// its memory.
constexpr qint64 maxFileBytes = 64 * 1024 * 1024;
constexpr size_t maxEntries = 2000;
constexpr qsizetype maxLine = 1000;

/// The file was written by whatever editor the site has: a byte-order mark tells, else UTF-8, else the
/// one-byte code page.
QString Decoded(const QByteArray &bytes)
{
    const auto marked = QStringConverter::encodingForData(bytes);
    QStringDecoder decoder(marked.value_or(QStringConverter::Utf8));
    const QString text = decoder.decode(bytes);
    return decoder.hasError() && !marked ? QString::fromLatin1(bytes) : text;
}

RightKind KindOfMark(QChar mark)
{
    switch (mark.unicode()) {
    case u'!':
        return RightKind::Heading;
    case u'?':
        return RightKind::Level;
    case u'#':
        return RightKind::YesNo;
    default:
        return RightKind::Remark;
    }
}

std::optional<SecurityMapEntry> ParseEntry(QStringView line)
{
    const qsizetype open = line.indexOf(u'[');
    const qsizetype close = line.indexOf(u"]=", open + 1);
    if (open < 0 || close < 0)
        return std::nullopt;

    SecurityMapEntry entry;
    entry.key = line.mid(open + 1, close - open - 1).trimmed().toString();
    entry.text = line.mid(close + 2).trimmed().toString();
    if (entry.key.isEmpty() || entry.text.isEmpty())
        return std::nullopt;

    const RightOfKey right(entry.key);
    entry.kind = right.kind;
    entry.position = right.position;
    if (right.IsRight() && right.position < 0)
        return std::nullopt;
    return entry;
}
} // namespace

RightOfKey::RightOfKey(const QString &key)
    : kind(key.isEmpty() ? RightKind::Remark : KindOfMark(key.front()))
{
    bool isNumber = false;
    const int number = QStringView(key).mid(1).trimmed().toInt(&isNumber);
    if (IsRight() && isNumber && number >= 0 && number < RightsCount)
        position = number;
}

std::vector<SecurityMapEntry> ReadSecurityMap(const QString &fileName, const QString &language)
{
    std::vector<SecurityMapEntry> entries;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return entries;

    const QString text = Decoded(file.read(maxFileBytes)).replace(u'\r', u'\n');
    const QString start = u'[' % language % u']';
    QSet<QString> keys;
    bool inSection = false;
    for (const QStringView untrimmed : QStringView(text).tokenize(u'\n')) {
        const QStringView line = untrimmed.trimmed();
        if (line.size() > maxLine)
            continue;
        if (!inSection) {
            inSection = line.compare(start, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (line.compare(u"[END]", Qt::CaseInsensitive) == 0 || entries.size() >= maxEntries)
            break;
        std::optional<SecurityMapEntry> entry = ParseEntry(line);
        if (entry && !keys.contains(entry->key)) {
            keys.insert(entry->key);
            entries.push_back(*std::move(entry));
        }
    }
    return entries;
}
