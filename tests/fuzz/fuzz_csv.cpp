#include "exchange/csv/CsvFields.h"
#include "exchange/csv/CsvMap.h"
#include "exchange/csv/CsvReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{
void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Whatever a line holds, its fields can be read, and what is written as a field reads as one.
void ReadFields(const QString &line)
{
    const int fields = CsvCountFields(line, u',');
    const QStringList texts = CsvGetFields(line, u',');
    Require(fields == (line.isEmpty() ? 0 : texts.size()));
    for (int field = 0; field <= fields + 1; ++field) {
        const QString text = CsvGetField(line, u',', field);
        Require(text == texts.value(field - 1));
    }
    const QString written = CsvQuoteField(line);
    Require(CsvCountFields(written, u',') == 1);
    QString doubled = line;
    doubled.replace(u'"', QLatin1String("\"\""));
    Require(CsvGetField(written, u',', 1) == doubled);
}

/// CR and LF together are one.
int LineEnds(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return static_cast<int>(text.count(u'\n') + text.count(u'\r'));
}

/// The records of a file are its lines, each in one record and none passed over.
void ReadRecords(const QByteArray &bytes)
{
    TextLines lines;
    lines.SetBytes(bytes);
    QString text;
    int expected = 0;
    while (lines.Next(text)) {
        Require(!text.contains(u'\n') && !text.contains(u'\r'));
        ++expected;
    }

    CsvReader reader;
    reader.SetBytes(bytes);
    CsvLine line;
    int next = 1;
    while (reader.Next(line)) {
        Require(line.number == next);
        const int inside = LineEnds(line.text);
        Require(inside == 0 || !line.unclosedQuote);
        next += 1 + inside;
        ReadFields(line.text);
    }
    Require(next == expected + 1);
}

void ReadMap(const QByteArray &bytes)
{
    const CsvMap map = CsvMap::FromBytes("[English]\n" + bytes);
    for (const CsvDataSet &set : map.DataSets(QStringLiteral("English"))) {
        for (const CsvMapEntry &entry : map.Entries(QStringLiteral("English"), set.number))
            Require(!entry.tag.isNull());
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    ReadRecords(bytes);
    ReadMap(bytes);
    return 0;
}
