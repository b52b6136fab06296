#include "exchange/csv/CsvFields.h"
#include "exchange/csv/CsvReader.h"
#include "support/Files.h"

#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#include <tuple>

namespace
{
struct Read {
    QStringList texts;
    QList<int> numbers;
    QList<int> unclosed;
    QList<int> odd;
};

Read ReadAll(CsvReader &reader)
{
    Read read;
    CsvLine line;
    while (reader.Next(line)) {
        read.texts.append(line.text);
        read.numbers.append(line.number);
        if (line.unclosedQuote)
            read.unclosed.append(line.number);
        if (line.isOdd)
            read.odd.append(line.number);
    }
    return read;
}

QByteArray In(QStringConverter::Encoding encoding, const QString &text, bool mark)
{
    QStringEncoder encode(encoding, mark ? QStringEncoder::Flag::WriteBom : QStringEncoder::Flag::Default);
    return encode(text);
}
} // namespace

class TestCsvReader final : public QObject
{
    Q_OBJECT

private slots:
    void FieldsOfALine_data();
    void FieldsOfALine();
    void ReadsFilesOfAllKinds_data();
    void ReadsFilesOfAllKinds();
    void QuotesThatAreNotClosed_data();
    void QuotesThatAreNotClosed();
    void BytesOfDoubtfulEncoding();
    void FileThatChangesIsReadAsItStood();
};

void TestCsvReader::FieldsOfALine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("fields");
    using L = QStringList;
    QTest::newRow("comma inside quotes") << "a,\"b, c\",d" << L{"a", "b, c", "d"};
    QTest::newRow("doubled quote stays doubled") << "\"say \"\"hi\"\"\",b" << L{"say \"\"hi\"\"", "b"};
    QTest::newRow("as it is written") << QString(CsvQuoteField("x, \"y\"") + ",z") << L{"x, \"\"y\"\"", "z"};
    QTest::newRow("blanks around") << " a , \" b \" ,c " << L{"a", " b ", "c"};
    QTest::newRow("empty fields") << ",\"\"," << L{"", "", ""};
    QTest::newRow("quote in the middle opens too") << "12\" pipe,a" << L{"12\" pipe,a"};
    QTest::newRow("unclosed") << "a,\"b,c" << L{"a", "b,c"};
    QTest::newRow("single quote character") << "\"" << L{""};
    QTest::newRow("odd run of quotes") << "\"\"\"a\",b" << L{"\"\"a", "b"};
}

void TestCsvReader::FieldsOfALine()
{
    QFETCH(QString, line);
    QFETCH(QStringList, fields);
    QCOMPARE(CsvCountFields(line, u','), fields.size());
    for (int field = 1; field <= fields.size(); ++field)
        QCOMPARE(CsvGetField(line, u',', field), fields.at(field - 1));
    for (const qsizetype field : {qsizetype(-1), qsizetype(0), fields.size() + 1})
        QCOMPARE(CsvGetField(line, u',', static_cast<int>(field)), QString());
    if (!line.isEmpty())
        QCOMPARE(CsvGetFields(line, u','), fields);
}

void TestCsvReader::ReadsFilesOfAllKinds_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QStringList>("last"); // the fields of the last line
    using L = QStringList;
    using Encoding = QStringConverter::Encoding;
    const QString text = "Name,Address\nZoë,\"1 Élan Row, Flat 2\"\n";
    const QByteArray utf8 = text.toUtf8();
    const L zoe{"Zoë", "1 Élan Row, Flat 2"};
    const auto alike = [&](const char *name, const QByteArray &bytes) {
        QTest::newRow(name) << bytes << 2 << zoe;
    };
    alike("UTF-8", utf8);
    alike("UTF-8 with a mark", In(Encoding::Utf8, text, true));
    alike("UTF-16, little end first, with a mark", In(Encoding::Utf16LE, text, true));
    alike("UTF-16, big end first, with a mark", In(Encoding::Utf16BE, text, true));
    alike("UTF-16 without a mark", In(Encoding::Utf16LE, text, false));
    alike("Windows-1252", text.toLatin1());
    alike("CR", QByteArray(utf8).replace('\n', '\r'));
    alike("CR and LF", QByteArray(utf8).replace("\n", "\r\n"));
    alike("both ways", QByteArray(utf8).replace("Address\n", "Address\r"));
    alike("no last line end", utf8.trimmed());
    QTest::newRow("an empty line and a ragged one") << QByteArray("a,b\n\n1,2,3\n") << 3 << L{"1", "2", "3"};
    QTest::newRow("a megabyte in a cell")
        << QByteArray("a,b\n\"" + QByteArray(1 << 20, 'x') + "\",2") << 2 << L{QString(1 << 20, 'x'), "2"};
    QTest::newRow("100,000 lines") << QByteArray("a,b\n" + QByteArray("1,\"2, 3\"\r\n").repeated(100000))
                                   << 100001 << L{"1", "2, 3"};
    QTest::newRow("line ends inside quotes")
        << QByteArray("a,b\n1,\"2\r\n\n3\r\"\"x\"\"\"\n") << 2 << L{"1", "2\r\n\n3\r\"\"x\"\""};
}

void TestCsvReader::ReadsFilesOfAllKinds()
{
    QFETCH(QByteArray, bytes);
    const QTemporaryDir folder;
    WriteFile(folder.filePath("a.csv"), bytes);
    CsvReader reader;
    QVERIFY2(reader.Open(folder.filePath("a.csv")), qPrintable(reader.Problem()));
    QTEST(reader.CountRest(), "lines");
    const Read read = ReadAll(reader);
    QTEST(static_cast<int>(read.texts.size()), "lines");
    QCOMPARE(read.unclosed, QList<int>());
    if (!read.texts.isEmpty())
        QTEST(CsvGetFields(read.texts.last(), u','), "last");
}

void TestCsvReader::QuotesThatAreNotClosed_data()
{
    QTest::addColumn<QByteArray>("lines"); // after a header of three fields
    QTest::addColumn<int>("records");
    QTest::addColumn<QList<int>>("unclosed");
    using L = QList<int>;
    QTest::newRow("closes with as many fields") << QByteArray("a,\"b\nc\",d\n") << 1 << L{};
    QTest::newRow("closes with fewer fields") << QByteArray("a,\"b\nc\"\nx,y,z\n") << 3 << L{2, 3};
    QTest::newRow("closes with more fields") << QByteArray("a,\"b\nc\",d,e\n") << 2 << L{2, 3};
    QTest::newRow("next line opens a quote") << QByteArray("a,\"b,c\n\"d\",e,f\n") << 2 << L{2};
    QTest::newRow("opens in the middle of a field") << QByteArray("a,b\"c\nd\",e\n") << 2 << L{2, 3};
    QTest::newRow("text after the closing quote") << QByteArray("a,\"b\nc\"x,d\n") << 2 << L{2, 3};
    QTest::newRow("never closes") << QByteArray("a,\"b,c\n" + QByteArray("d,e,f\n").repeated(2000)) << 2001
                                  << L{2};
    QTest::newRow("closes too far away")
        << QByteArray("a,\"b\n" + QByteArray("d,e,f\n").repeated(600) + "\",c\n") << 602 << L{2, 603};
}

void TestCsvReader::QuotesThatAreNotClosed()
{
    QFETCH(QByteArray, lines);
    CsvReader reader;
    reader.SetBytes("x,y,z\n" + lines);
    const Read read = ReadAll(reader);
    QTEST(static_cast<int>(read.texts.size()) - 1, "records");
    QTEST(read.unclosed, "unclosed");
    QCOMPARE(read.numbers.last(), 1 + lines.count('\n') - (read.unclosed.isEmpty() ? 1 : 0));
}

/// Each line is read as what it is, and those unlike most of the file are known.
void TestCsvReader::BytesOfDoubtfulEncoding()
{
    const QByteArray zoe = "Zo\xC3\xAB\n";
    const QByteArray cafe = "Caf\xE9\n";
    const std::tuple<QByteArray, QString, QList<int>> files[] = {
        {"\x80 5 \x96 \x93x\x94", "€ 5 – “x”", {}},
        {"a\x81z", QStringLiteral("a\u0081z"), {}},
        {"Zo\xC3\xAB \xE2\x82", "Zoë \uFFFD", {}}, // cut off
        {"Caf\xE9", "Café", {}},
        {"Zo\xC3\xAB \xE2 x", "ZoÃ« â x", {}},
        {"\xEF\xBB\xBF", "", {}},
        {QByteArray("\xFF\xFE\x61\0b\0c", 7), "ab", {}},
        {zoe + zoe + cafe, "Zoë|Zoë|Café", {3}},
        {cafe + zoe, "Café|Zoë", {1}},
        {"\xEF\xBB\xBF" + cafe, "Café", {1}},
        {cafe + "x\n" + cafe + zoe, "Café|x|Café|Zoë", {4}},
        {"x,\"a\n" + cafe.chopped(1) + "\"\n" + zoe + zoe, "x,\"a\nCafé\"|Zoë|Zoë", {1}}, // one record
        {cafe + cafe, "Café|Café", {}}};
    for (const auto &[bytes, text, odd] : files) {
        CsvReader reader;
        reader.SetBytes(bytes);
        const Read read = ReadAll(reader);
        QCOMPARE(read.texts.join(u'|').left(text.size()), text);
        QCOMPARE(read.odd, odd);
    }
}

void TestCsvReader::FileThatChangesIsReadAsItStood()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("a.csv");
    WriteFile(file, "x,y\n1,2\n3,4\n");
    CsvReader reader;
    QVERIFY(reader.Open(file));
    QCOMPARE(FileStamp::Of(file), reader.Stamp());
    WriteFile(file, "x,y\n");
    QVERIFY(FileStamp::Of(file) != reader.Stamp());
    QCOMPARE(ReadAll(reader).texts, (QStringList{"x,y", "1,2", "3,4"}));
    QVERIFY(QFile::remove(file));
    QVERIFY(FileStamp::Of(file) != reader.Stamp());
}

QTEST_GUILESS_MAIN(TestCsvReader)
#include "test_csvreader.moc"
