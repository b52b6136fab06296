#include "exchange/CsvFields.h"
#include "exchange/CsvReader.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

namespace
{
QString Fixture(const QString &name)
{
    return QStringLiteral(EXCHANGE_FIXTURES "/") + name;
}

struct Read {
    QStringList texts;
    QList<int> numbers;
    QList<int> unclosed;
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
    }
    return read;
}

Read ReadBytes(const QByteArray &bytes)
{
    CsvReader reader;
    reader.SetBytes(bytes);
    return ReadAll(reader);
}

QStringList Fields(const QString &line)
{
    QStringList fields;
    for (int field = 1; field <= CsvCountFields(line, u','); ++field)
        fields.append(CsvGetField(line, u',', field));
    return fields;
}
} // namespace

class TestCsvReader final : public QObject
{
    Q_OBJECT

private slots:
    void FieldsOfALine_data();
    void FieldsOfALine();
    void FieldNumbersOutsideTheLine();
    void QuotedFieldKeepsItsDoubledQuotes();
    void FilesOfAllEncodingsReadAlike_data();
    void FilesOfAllEncodingsReadAlike();
    void BytesOfDoubtfulEncoding_data();
    void BytesOfDoubtfulEncoding();
    void UnclosedQuoteEndsWithItsLine();
    void LineEndsInsideQuotesBelongToTheField();
    void WhatLooksLikeALineEndInsideQuotes_data();
    void WhatLooksLikeALineEndInsideQuotes();
    void EmptyAndRaggedLinesAreLines();
    void NamesWhatCannotBeOpened_data();
    void NamesWhatCannotBeOpened();
    void FileThatChangesIsReadAsItStood();
    void MegabyteCell();
    void HundredThousandLines();
};

void TestCsvReader::FieldsOfALine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("fields");
    using L = QStringList;
    QTest::newRow("plain") << "a,b,c" << L{"a", "b", "c"};
    QTest::newRow("comma inside quotes") << "a,\"b, c\",d" << L{"a", "b, c", "d"};
    QTest::newRow("doubled quote stays doubled") << "\"say \"\"hi\"\"\",b" << L{"say \"\"hi\"\"", "b"};
    QTest::newRow("blanks around") << " a , \" b \" ,c " << L{"a", " b ", "c"};
    QTest::newRow("empty fields") << ",," << L{"", "", ""};
    QTest::newRow("empty quotes") << "\"\",\"\"" << L{"", ""};
    QTest::newRow("only blanks") << "   " << L{""};
    QTest::newRow("quote in the middle opens too") << "12\" pipe,a" << L{"12\" pipe,a"};
    QTest::newRow("unclosed") << "a,\"b,c" << L{"a", "b,c"};
    QTest::newRow("single quote character") << "\"" << L{""};
    QTest::newRow("odd run of quotes") << "\"\"\"a\",b" << L{"\"\"a", "b"};
    QTest::newRow("no field at all") << "" << L{};
    QTest::newRow("not ASCII") << QString::fromUtf8("Zoë,😀")
                               << L{QString::fromUtf8("Zoë"), QString::fromUtf8("😀")};
}

void TestCsvReader::FieldsOfALine()
{
    QFETCH(QString, line);
    QTEST(Fields(line), "fields");
    if (!line.isEmpty())
        QTEST(CsvGetFields(line, u','), "fields");
}

void TestCsvReader::FieldNumbersOutsideTheLine()
{
    for (const int number : {-1, 0, 4, 1000})
        QCOMPARE(CsvGetField(u"a,b,c", u',', number), QString());
    QCOMPARE(CsvGetField(u"", u',', 1), QString());
    QCOMPARE(CsvGetField(u"a;b,c", u';', 2), QStringLiteral("b,c"));
}

void TestCsvReader::QuotedFieldKeepsItsDoubledQuotes()
{
    QCOMPARE(CsvQuoteField(QStringLiteral("a \"b\"")), QStringLiteral("\"a \"\"b\"\"\""));
    QCOMPARE(CsvQuoteField(QString()), QStringLiteral("\"\""));
    const QString line = CsvQuoteField(QStringLiteral("x, \"y\"")) + QStringLiteral(",z");
    QCOMPARE(Fields(line), (QStringList{"x, \"\"y\"\"", "z"}));
}

void TestCsvReader::FilesOfAllEncodingsReadAlike_data()
{
    QTest::addColumn<QString>("file");
    for (const char *name : {"utf8-lf", "utf8-bom-crlf", "utf8-cr", "utf8-no-last-end", "utf16le-bom",
                             "utf16be-bom", "utf16le-no-mark", "windows1252", "mixed-ends", "nul"})
        QTest::newRow(name) << Fixture(QString::fromLatin1(name) + ".csv");
}

void TestCsvReader::FilesOfAllEncodingsReadAlike()
{
    QFETCH(QString, file);
    CsvReader reader;
    QVERIFY2(reader.Open(file), qPrintable(reader.Problem()));
    QCOMPARE(reader.CountRest(), 3);
    const Read read = ReadAll(reader);
    QCOMPARE(read.texts, (QStringList{"Forename,Surname,Address,City",
                                      QString::fromUtf8("Zoë,O'Neil,\"1 Élan Row, Flat 2\",Caffè"),
                                      "Bob,Smith,\"The \"\"Old\"\" Mill\",Ely"}));
    QCOMPARE(read.numbers, (QList<int>{1, 2, 3}));
    QCOMPARE(read.unclosed, QList<int>());
}

void TestCsvReader::BytesOfDoubtfulEncoding_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("Windows-1252 signs")
        << QByteArray("\x80 5 \x96 \x93x\x94") << QString::fromUtf8("€ 5 – “x”");
    QTest::newRow("its unused places") << QByteArray("a\x81z") << QStringLiteral("a\u0081z");
    QTest::newRow("UTF-8 cut off in a character")
        << QByteArray("Zo\xC3\xAB \xE2\x82") << QStringLiteral("Zo\u00EB \uFFFD");
    QTest::newRow("UTF-8 that breaks off inside")
        << QByteArray("Zo\xC3\xAB \xE2 x") << QString::fromUtf8("ZoÃ« â x");
    QTest::newRow("only a mark") << QByteArray("\xEF\xBB\xBF") << QString();
    QTest::newRow("UTF-16 with an odd byte") << QByteArray("\xFF\xFE"
                                                           "a\0b\0c",
                                                           7)
                                             << QStringLiteral("ab");
    QTest::newRow("only NUL") << QByteArray(5, '\0') << QString();
}

void TestCsvReader::BytesOfDoubtfulEncoding()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(ReadBytes(bytes).texts.value(0).left(text.size()), text);
}

void TestCsvReader::UnclosedQuoteEndsWithItsLine()
{
    CsvReader reader;
    QVERIFY(reader.Open(Fixture("unclosed.csv")));
    const Read read = ReadAll(reader);
    QCOMPARE(read.numbers, (QList<int>{1, 2, 3, 4, 5, 6, 7}));
    QCOMPARE(read.unclosed, (QList<int>{3, 6, 7}));
    QCOMPARE(Fields(read.texts.at(3)), (QStringList{"Cat", "Cedar", "3, High St", "Ely"}));
}

void TestCsvReader::LineEndsInsideQuotesBelongToTheField()
{
    CsvReader reader;
    QVERIFY(reader.Open(Fixture("lines-in-quotes.csv")));
    const Read read = ReadAll(reader);
    QCOMPARE(read.numbers, (QList<int>{1, 2, 6}));
    QCOMPARE(read.unclosed, QList<int>());
    QCOMPARE(Fields(read.texts.at(1)), (QStringList{"Ann", "Ash", "1 High St\nFlat 2\n\nTop", "Ely"}));
    QCOMPARE(Fields(read.texts.at(2)), (QStringList{"Ben", "Birch", "2 \"\"High\"\"\nSt", "Ely"}));
}

void TestCsvReader::WhatLooksLikeALineEndInsideQuotes_data()
{
    QTest::addColumn<QByteArray>("lines"); // behind a header of three fields
    QTest::addColumn<int>("records");
    QTest::addColumn<QList<int>>("unclosed");
    using L = QList<int>;
    QTest::newRow("closes with as many fields") << QByteArray("a,\"b\nc\",d\n") << 1 << L{};
    QTest::newRow("closes with fewer fields") << QByteArray("a,\"b\nc\"\nx,y,z\n") << 3 << L{2, 3};
    QTest::newRow("closes with more fields") << QByteArray("a,\"b\nc\",d,e\n") << 2 << L{2, 3};
    QTest::newRow("next line opens a quote") << QByteArray("a,\"b,c\n\"d\",e,f\n") << 2 << L{2};
    QTest::newRow("opens in the middle of a field") << QByteArray("a,b\"c\nd\",e\n") << 2 << L{2, 3};
    QTest::newRow("text behind the closing quote") << QByteArray("a,\"b\nc\"x,d\n") << 2 << L{2, 3};
    QTest::newRow("never closes") << QByteArray("a,\"b,c\n") + QByteArray("d,e,f\n").repeated(2000) << 2001
                                  << L{2};
    QTest::newRow("closes too far away")
        << QByteArray("a,\"b\n") + QByteArray("d,e,f\n").repeated(600) + "\",c\n"
        << 602 << L{2, 603};
}

void TestCsvReader::WhatLooksLikeALineEndInsideQuotes()
{
    QFETCH(QByteArray, lines);
    const Read read = ReadBytes("x,y,z\n" + lines);
    QTEST(static_cast<int>(read.texts.size()) - 1, "records");
    QTEST(read.unclosed, "unclosed");
}

void TestCsvReader::EmptyAndRaggedLinesAreLines()
{
    CsvReader reader;
    QVERIFY(reader.Open(Fixture("ragged.csv")));
    const Read read = ReadAll(reader);
    QCOMPARE(read.texts.size(), 5);
    QCOMPARE(read.texts.at(2), QString());
    QCOMPARE(CsvGetField(read.texts.at(1), u',', 4), QString());
    QCOMPARE(CsvGetField(read.texts.at(3), u',', 6), QStringLiteral("more"));
}

void TestCsvReader::NamesWhatCannotBeOpened_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("problem");
    QTest::newRow("missing") << Fixture("no-such-file.csv") << "The file does not exist.";
    QTest::newRow("folder") << Fixture("") << "It is a folder.";
    QTest::newRow("device") << "/dev/zero"
                            << "It is no file of text.";
    QTest::newRow("no name") << ""
                             << "The file does not exist.";
}

void TestCsvReader::NamesWhatCannotBeOpened()
{
    QFETCH(QString, file);
    CsvReader reader;
    QVERIFY(!reader.Open(file));
    QTEST(reader.Problem(), "problem");
    QCOMPARE(reader.CountRest(), 0);
}

void TestCsvReader::FileThatChangesIsReadAsItStood()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("a.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x,y\n1,2\n3,4\n");
    file.close();
    CsvReader reader;
    QVERIFY(reader.Open(file.fileName()));
    CsvLine line;
    QVERIFY(reader.Next(line));
    QVERIFY(!reader.FileChanged());
    QVERIFY(file.resize(5));
    QVERIFY(reader.FileChanged());
    QCOMPARE(ReadAll(reader).texts, (QStringList{"1,2", "3,4"}));
    QVERIFY(file.remove());
    QVERIFY(reader.FileChanged());
}

void TestCsvReader::MegabyteCell()
{
    const QByteArray cell(1024 * 1024, 'x');
    const Read read = ReadBytes("a,b\n\"" + cell + "\",2\n" + "3,4");
    QCOMPARE(read.texts.size(), 3);
    QCOMPARE(CsvGetField(read.texts.at(1), u',', 1).size(), cell.size());
    QCOMPARE(CsvGetField(read.texts.at(1), u',', 2), QStringLiteral("2"));
}

void TestCsvReader::HundredThousandLines()
{
    QByteArray bytes("Forename,Surname,Address\r\n");
    for (int i = 0; i < 100000; ++i)
        bytes += "Ann,\"Ash " + QByteArray::number(i) + "\",\"1, High St\"\r\n";
    CsvReader reader;
    reader.SetBytes(bytes);
    QCOMPARE(reader.CountRest(), 100001);
    const Read read = ReadAll(reader);
    QCOMPARE(read.numbers.last(), 100001);
    QCOMPARE(CsvGetField(read.texts.last(), u',', 2), QStringLiteral("Ash 99999"));
}

QTEST_GUILESS_MAIN(TestCsvReader)
#include "test_csvreader.moc"
