#include "core/INIfile.h"

#include "core/Session.h"
#include "platform/Clock.h"
#include "platform/Directories.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>

#include <csignal>
#include <memory>
#include <numeric>

class TestINIfile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clock::StopAt({}); }

    void AMissingFileLeavesTheDefaults();
    void WhatIsWrittenIsReadBack();
    void TheFileReadsAsItShould();
    void ALineSetsItsValue_data();
    void ALineSetsItsValue();
    void AListKeepsWhatTheTextDoesNotHold();
    void ReadingEndsAtAMalformedNumber_data();
    void ReadingEndsAtAMalformedNumber();
    void TheDocumentFolderIsSettled_data();
    void TheDocumentFolderIsSettled();
    void AnyFileCanBeRead_data();
    void AnyFileCanBeRead();
    void AMillionLinesAreReadAtOnce();
    void AFailedWriteLeavesTheOldFile();
    void AValueWithALineEndStaysOnItsLine();

private:
    QString File() const { return Directories::WrittenFile(QStringLiteral("prog.ini")); }
    void Put(const QByteArray &content) const
    {
        QFile file(File());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void Read(const QByteArray &content) const
    {
        Put(content);
        ReadSettings(File());
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestINIfile::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    Directories::SetProgram(m_directory->path());
    Clock::StopAt(QDateTime(QDate(2026, 11, 22), QTime(21, 5)));
}

void TestINIfile::AMissingFileLeavesTheDefaults()
{
    gDBQName = QStringLiteral("left over");
    gContactData[3] = 9;
    ReadSettings(File());
    QCOMPARE(gDBQName, QString());
    QCOMPARE(gDBQFilename, QString());
    QCOMPARE(gDBQUseODBC, false);
    QCOMPARE(gDBQType, 0);
    QCOMPARE(gDBQDescription, QStringLiteral("Veltrane Database"));
    QCOMPARE(gDocDir, m_directory->filePath(QStringLiteral("Reports")));
    QCOMPARE(gHeaderFile, m_directory->filePath(QStringLiteral("Reports/header.htm")));
    QCOMPARE(gWarnColour, 16777215);
    QCOMPARE(gShowIDs, 1);
    QCOMPARE(gDupCourseOpt, 31);
    QCOMPARE(gContactData[3], 0);
    QCOMPARE(gFromDate, QStringLiteral("22/11/2026"));
    QCOMPARE(gToDate, QStringLiteral("20/02/2027"));
    QCOMPARE(gReportWidth, QStringLiteral("100%"));
    QCOMPARE(gReportFont, QStringLiteral("<FONT FACE=\"Arial\" SIZE=2>"));
    QVERIFY(!QFile::exists(File()));
}

void TestINIfile::WhatIsWrittenIsReadBack()
{
    ReadSettings(File());
    gDBQName = QStringLiteral("O'Neil \u00d6sterreich [a]=b");
    gDBQFilename = m_directory->filePath(QStringLiteral("\u65e5\u672c.mdb"));
    gDBQUseODBC = true;
    gDBQType = 2;
    gWarnColour = 0xFFC0CB;
    gShowIDs = 0;
    gDupCourseOpt = 5;
    std::iota(gContactData.begin(), gContactData.end(), 1);
    std::iota(gOrgData.begin(), gOrgData.end(), -4);
    gCourseInf = {9, 8, 7, 6, 5, 4};
    gFromDate = QStringLiteral("01/02/2003");
    const auto contactData = gContactData;
    const auto orgData = gOrgData;
    QVERIFY(WriteSettings(File()));
    ReadSettings(File());
    QCOMPARE(gDBQName, QStringLiteral("O'Neil \u00d6sterreich [a]=b"));
    QCOMPARE(gDBQFilename, m_directory->filePath(QStringLiteral("\u65e5\u672c.mdb")));
    QVERIFY(gDBQUseODBC);
    QCOMPARE(gDBQType, 2);
    QCOMPARE(gWarnColour, 0xFFC0CB);
    QCOMPARE(gShowIDs, 0);
    QCOMPARE(gDupCourseOpt, 5);
    QVERIFY(gContactData == contactData);
    QVERIFY(gOrgData == orgData);
    QCOMPARE(gCourseInf[5], 4);
    QCOMPARE(gFromDate, QStringLiteral("01/02/2003"));
    QCOMPARE(gToDate, QStringLiteral("20/02/2027"));
}

void TestINIfile::TheFileReadsAsItShould()
{
    ReadSettings(File());
    gDBQFilename = QStringLiteral("/data/site.mdb");
    gDBQType = 1;
    gOrgData[0] = 3;
    QVERIFY(WriteSettings(File()));
    QFile file(File());
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    QVERIFY(lines.at(1).startsWith(u';'));
    lines.removeAt(1);
    QCOMPARE(lines, QStringList({
                        "; Veltrane Version 1.20 INI file",
                        "",
                        "; Current Database Settings",
                        "[DBQName]=",
                        "[DBQFilename]=/data/site.mdb",
                        "[DBQUseODBC]=False",
                        "[DBQType]=1",
                        "",
                        "; General Options",
                        u"[DocDir]=" % m_directory->path() % u"/Reports",
                        "[NoTextCol]=16777215",
                        "[Switches]=1,1,",
                        "",
                        "; Duplicate Course Options",
                        "[Dup_Course_Opt]=31",
                        "",
                        "; Contact Report Info",
                        u"[Contact_Data]=" % QStringLiteral("0,").repeated(33),
                        "",
                        "; Organisations Report Info",
                        "[Org_Data]=3,0,0,0,0,0,0,0,0,0,0,0,",
                        "",
                        "; Course Report Info",
                        "[Course_Inf]=0,0,0,0,0,0,",
                        "[FromDate]=22/11/2026",
                        "[ToDate]=20/02/2027",
                        "",
                    }));
}

void TestINIfile::ALineSetsItsValue_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("name");
    const QString x = QStringLiteral("x");
    QTest::newRow("as written") << QByteArray("[DBQName]=x") << x;
    QTest::newRow("any case") << QByteArray("[dbqname]=x") << x;
    QTest::newRow("blanks around the value") << QByteArray("[DBQName]=  x \t") << x;
    QTest::newRow("text before the key") << QByteArray("; [DBQName]=x") << x;
    QTest::newRow("the later line wins") << QByteArray("[DBQName]=y\n[DBQName]=x\n") << x;
    QTest::newRow("the other system's line ends") << QByteArray("[DBQName]=x\r\n[DBQType]=1\r\n") << x;
    QTest::newRow("the first ends of key count") << QByteArray("[DBQName]=[a]=b") << "[a]=b";
    QTest::newRow("an unknown key") << QByteArray("[DBQName]=x\n; [note]=y") << x;
    QTest::newRow("half a line") << QByteArray("[DBQName]=x\n[DBQName") << x;
    QTest::newRow("no key") << QByteArray("[DBQName]=x\nDBQName=y\n]=[\n") << x;
    QTest::newRow("an empty value") << QByteArray("[DBQName]=x\n[DBQName]=") << "";
}

void TestINIfile::ALineSetsItsValue()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, name);
    Read(content);
    QCOMPARE(gDBQName, name);
}

void TestINIfile::AListKeepsWhatTheTextDoesNotHold()
{
    Read("[Contact_Data]=1,2,3,4,5,6,7,8,9,10\n"
         "[Contact_Data]=21\n"
         "[Org_Data]=1,2,3,4,5,6,7,8,9,10,11,12,13,14,\n"
         "[Switches]=3,0,7,8,");
    QCOMPARE(gContactData[0], 21);
    QCOMPARE(gContactData[9], 10);
    QCOMPARE(gContactData[10], 0);
    QCOMPARE(gOrgData[11], 12);
    QCOMPARE(gShowIDs, 0);
    Read("[Switches]=0,5,");
    QCOMPARE(gShowIDs, 1);
}

void TestINIfile::ReadingEndsAtAMalformedNumber_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("a word") << QByteArray("[DBQType]=two");
    QTest::newRow("beyond 16 bits") << QByteArray("[DBQType]=40000");
    QTest::newRow("beyond a byte") << QByteArray("[Dup_Course_Opt]=256");
    QTest::newRow("below a byte") << QByteArray("[Dup_Course_Opt]=-1");
    QTest::newRow("beyond 32 bits") << QByteArray("[NoTextCol]=99999999999");
    QTest::newRow("neither true nor false") << QByteArray("[DBQUseODBC]=perhaps");
    QTest::newRow("inside a list") << QByteArray("[Org_Data]=1,x,3,");
}

void TestINIfile::ReadingEndsAtAMalformedNumber()
{
    QFETCH(QByteArray, line);
    Read("[DBQName]=before\n" + line + "\n[DBQName]=after\n");
    QCOMPARE(gDBQName, QStringLiteral("before"));
    QCOMPARE(gDBQType, 0);
    QCOMPARE(gDupCourseOpt, 31);
    QCOMPARE(gOrgData[2], 0);
    QCOMPARE(gHeaderFile, m_directory->filePath(QStringLiteral("Reports/header.htm")));
}

void TestINIfile::TheDocumentFolderIsSettled_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");
    QTest::newRow("as it is") << "*/Work"
                              << "*/Work";
    QTest::newRow("separators at the end") << "*/Work//"
                                           << "*/Work";
    QTest::newRow("the other separators at the end") << "*/Work\\\\"
                                                     << "*/Work";
    QTest::newRow("missing folder") << "*/Gone"
                                    << "*";
    QTest::newRow("a file") << "*/prog.ini"
                            << "*";
    QTest::newRow("empty") << ""
                           << "*";
}

void TestINIfile::TheDocumentFolderIsSettled()
{
    QFETCH(QString, written);
    QFETCH(QString, read);
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("Work")));
    Read(QString(u"[DocDir]=" % written.replace(u'*', m_directory->path())).toUtf8());
    QCOMPARE(gDocDir, read.replace(u'*', m_directory->path()));
    QCOMPARE(gHeaderFile, gDocDir + u"/header.htm");
}

void TestINIfile::AnyFileCanBeRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("name");
    const QString text = QStringLiteral("; [DBQType]=1\n[DBQName]=Caf\u00e9\n");
    const auto coded = [&text](QStringConverter::Encoding encoding, bool mark) {
        QStringEncoder encoder(encoding,
                               mark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
        return QByteArray(encoder.encode(text));
    };
    const QString cafe = QStringLiteral("Caf\u00e9");
    QTest::newRow("UTF-8") << text.toUtf8() << cafe;
    QTest::newRow("UTF-8 with a mark") << coded(QStringConverter::Utf8, true) << cafe;
    QTest::newRow("UTF-16 with a mark") << coded(QStringConverter::Utf16LE, true) << cafe;
    QTest::newRow("UTF-16 without") << coded(QStringConverter::Utf16LE, false) << cafe;
    QTest::newRow("UTF-16, high byte first") << coded(QStringConverter::Utf16BE, true) << cafe;
    QTest::newRow("one byte a character") << text.toLatin1() << cafe;
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("bytes of any kind")
        << QByteArray("\x00\xff[\xfe]=\x80[]=\n[]=\n]=[\r\r[DBQName]=a\n", 31) << QStringLiteral("a");
    QTest::newRow("nothing but brackets") << QByteArray(100000, '[') << QString();
}

void TestINIfile::AnyFileCanBeRead()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, name);
    Read(content);
    QCOMPARE(gDBQName, name);
}

void TestINIfile::AMillionLinesAreReadAtOnce()
{
    Put(QByteArray("[Note]=x\n").repeated(1000000) + "[DBQName]=last\n");
    QElapsedTimer timer;
    timer.start();
    ReadSettings(File());
    QCOMPARE(gDBQName, QStringLiteral("last"));
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
}

void TestINIfile::AFailedWriteLeavesTheOldFile()
{
    QVERIFY(QDir().mkdir(File()));
    QVERIFY(!WriteSettings(File()));
    QVERIFY(!WriteSettings(m_directory->filePath(QStringLiteral("gone/prog.ini"))));
    QVERIFY(QDir().rmdir(File()));

    // A limit on the size of files stands in for a full disk: the write breaks off in the middle.
    Put("[DBQName]=old\n");
    gDBQName = QStringLiteral("new");
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 100;
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool written = WriteSettings(File());
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(!written);
    const QStringList left = QDir(m_directory->path()).entryList({QStringLiteral("prog*")}, QDir::Files);
    QCOMPARE(left, QStringList{QStringLiteral("prog.ini")});
    ReadSettings(File());
    QCOMPARE(gDBQName, QStringLiteral("old"));
}

void TestINIfile::AValueWithALineEndStaysOnItsLine()
{
    ReadSettings(File());
    gDBQName = QStringLiteral("a\n[DBQType]=2");
    QVERIFY(WriteSettings(File()));
    ReadSettings(File());
    QCOMPARE(gDBQType, 0);
    QCOMPARE(gDBQName, QStringLiteral("a[DBQType]=2"));
}

QTEST_GUILESS_MAIN(TestINIfile)
#include "test_inifile.moc"
