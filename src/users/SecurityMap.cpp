#include "users/SecurityMap.h"

#include "database/statements/Security.h"
#include "platform/desktop/TextFile.h"

#include <QFile>
#include <QSet>

#include <optional>

namespace
{
/// A map has a line for each right. A file beyond these limits is not a map, and must not use up the memory.
constexpr qint64 maxFileBytes = 64 * 1024 * 1024;
constexpr size_t maxEntries = 2000;
constexpr qsizetype maxLine = 1000;

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
    const std::optional<KeyLine> keyLine = KeyLineOf(line);
    if (!keyLine)
        return std::nullopt;

    SecurityMapEntry entry;
    entry.key = keyLine->key.trimmed();
    entry.text = keyLine->value;
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

    const QString text = TextOf(file.read(maxFileBytes)).replace(u'\r', u'\n');
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
