#include "exchange/csv/CsvMap.h"

#include "exchange/csv/CsvFields.h"
#include "exchange/csv/TextLines.h"
#include "platform/desktop/Directories.h"
#include "platform/desktop/TextFile.h"

#include <algorithm>
#include <optional>

namespace
{
bool Same(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

std::optional<CsvMapEntry> EntryOf(const QString &line)
{
    const std::optional<KeyLine> keyLine = KeyLineOf(line);
    if (!keyLine || keyLine->value.isEmpty())
        return std::nullopt;
    return CsvMapEntry{keyLine->key.trimmed(), keyLine->value.front(), keyLine->value.mid(1).trimmed()};
}
} // namespace

CsvMap::CsvMap(const QString &fileName)
{
    TextLines lines;
    if (lines.Open(fileName))
        Read(lines);
}

CsvMap CsvMap::FromBytes(const QByteArray &bytes)
{
    TextLines lines;
    lines.SetBytes(bytes);
    CsvMap map;
    map.Read(lines);
    return map;
}

CsvMap CsvMap::Installed()
{
    return CsvMap(Directories::SystemFile(QStringLiteral("csvmap.dat")));
}

void CsvMap::Read(TextLines &lines)
{
    QString line;
    while (lines.Next(line)) {
        RemoveNul(line);
        const QString trimmed = line.trimmed();
        if (trimmed.contains(u'['))
            m_lines.push_back(trimmed);
    }
}

size_t CsvMap::BehindHeader(const QString &language) const
{
    const QString header = u'[' % language % u']';
    const auto found =
        std::find_if(m_lines.begin(), m_lines.end(), [&](const QString &line) { return Same(line, header); });
    return found == m_lines.end() ? m_lines.size() : static_cast<size_t>(found - m_lines.begin()) + 1;
}

std::vector<CsvDataSet> CsvMap::DataSets(const QString &language) const
{
    const QString end = u"[END" % language % u']';
    std::vector<CsvDataSet> sets;
    for (size_t i = BehindHeader(language); i < m_lines.size() && !Same(m_lines[i], end); ++i) {
        const std::optional<CsvMapEntry> entry = EntryOf(m_lines[i]);
        bool isNumber = false;
        const int number = entry && entry->tag == u'!' ? entry->value.toInt(&isNumber) : 0;
        if (isNumber)
            sets.push_back({entry->text, number});
    }
    return sets;
}

std::vector<CsvMapEntry> CsvMap::Entries(const QString &language, int number) const
{
    const QString header = u"[!" % QString::number(number) % u']';
    const QString end = QStringLiteral("[END]");
    size_t i = BehindHeader(language);
    while (i < m_lines.size() && !m_lines[i].contains(header))
        ++i;
    std::vector<CsvMapEntry> entries;
    for (++i; i < m_lines.size() && !Same(m_lines[i], end); ++i) {
        if (const std::optional<CsvMapEntry> entry = EntryOf(m_lines[i]))
            entries.push_back(*entry);
    }
    return entries;
}

QString CsvMap::ValueOf(const std::vector<CsvMapEntry> &entries, QChar tag)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [tag](const CsvMapEntry &entry) { return entry.tag == tag; });
    return found == entries.end() ? QString() : found->value;
}
