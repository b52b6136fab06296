#include "core/files/INIfile.h"

#include "core/session/Session.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Directories.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/TestTable.h"

#include <QDir>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <numeric>

class TestINIfile : public QObject
{
    Q_OBJECT

    QString File() const { return Directories::WrittenFile(u"prog.ini"_qs); }
    void Read(const QByteArray &content) const
    {
        WriteFile(File(), content);
        ReadSettings(File());
    }

    std::unique_ptr<QTemporaryDir> m_directory;

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        Directories::SetProgram(m_directory->path());
        Clock::StopAt(QDateTime(QDate(2026, 11, 22), QTime(21, 5)));
    }
    void cleanup() { Clock::StopAt({}); }

    void DefaultsStandAndAreWrittenInOrder()
    {
        gDBQName = u"left over"_qs;
        gDupCourseOpt = 1;
        gContactData[3] = 9;
        ReadSettings(File());
        QVERIFY(!QFile::exists(File()));
        QCOMPARE(gDBQDescription, u"Veltrane Database"_qs);
        QCOMPARE(gHeaderFile, m_directory->filePath(u"Reports/header.htm"_qs));
        QCOMPARE(gReportWidth % gReportFont, u"100%<FONT FACE=\"Arial\" SIZE=2>"_qs);
        gDBQFilename = u"/data/site.mdb"_qs;
        gOrgData[0] = 3;
        QVERIFY(WriteSettings(File()));
        QStringList lines = QString::fromUtf8(ContentOf(File())).split(u'\n');
        QVERIFY(lines.takeAt(1).startsWith(u';'));
        QCOMPARE(lines.join(u'\n'), u"; Veltrane Version 1.20 INI file\n\n"
                                    u"; Current Database Settings\n[DBQName]=\n[DBQFilename]=/data/site.mdb\n"
                                    u"[DBQUseODBC]=False\n[DBQType]=0\n\n"
                                    u"; General Options\n[DocDir]=" %
                                        m_directory->path() %
                                        u"/Reports\n[NoTextCol]=16777215\n[Switches]=1,1,\n\n"
                                        u"; Duplicate Course Options\n[Dup_Course_Opt]=31\n\n"
                                        u"; Contact Report Info\n[Contact_Data]=" %
                                        u"0,"_qs.repeated(33) %
                                        u"\n\n; Organisations Report Info\n"
                                        u"[Org_Data]=3,0,0,0,0,0,0,0,0,0,0,0,\n\n"
                                        u"; Course Report Info\n[Course_Inf]=0,0,0,0,0,0,\n"
                                        u"[FromDate]=22/11/2026\n[ToDate]=20/02/2027\n");
    }

    void WhatIsWrittenIsReadBack()
    {
        ReadSettings(File());
        gDBQName = u"O'Neil \u00d6sterreich [a]=b"_qs;
        gDBQFilename = m_directory->filePath(u"\u65e5\u672c\n[DBQType]=1"_qs);
        gDBQUseODBC = true;
        gDBQType = 2;
        gWarnColour = 0xFFC0CB;
        gShowIDs = 0;
        std::iota(gContactData.begin(), gContactData.end(), -4);
        gFromDate = u"01/02/2003"_qs;
        const auto contactData = gContactData;
        QVERIFY(WriteSettings(File()));
        ReadSettings(File());
        QCOMPARE(gDBQName, u"O'Neil \u00d6sterreich [a]=b"_qs);
        // A line end in a value makes no line of its own of the rest.
        QCOMPARE(gDBQFilename, m_directory->filePath(u"\u65e5\u672c[DBQType]=1"_qs));
        QVERIFY(gDBQUseODBC);
        QCOMPARE(gDBQType, 2);
        QCOMPARE(gWarnColour, 0xFFC0CB);
        QCOMPARE(gShowIDs, 0);
        QVERIFY(gContactData == contactData);
        QCOMPARE(gFromDate, u"01/02/2003"_qs);
    }

    void ALineSetsItsValue_data()
    {
        const TestTable<QByteArray, QString> row{"content", "name"};
        const QString text = u"; [DBQType]=1\n[DBQName]=Caf\u00e9\n"_qs;
        const QString cafe = u"Caf\u00e9"_qs;
        const auto coded = [&text](QStringConverter::Encoding encoding, QStringConverter::Flags flags) {
            return QByteArray(QStringEncoder(encoding, flags).encode(text));
        };
        row("any case", "[dbqname]=x", "x");
        row("text before the key", "; [DBQName]=x", "x");
        row("the later line wins", "[DBQName]=y\n[DBQName]=x\n", "x");
        row("the other system's line ends", "[DBQName]=x\r\n[DBQType]=1\r\n", "x");
        row("the first ends of key count", "[DBQName]=[a]=b", "[a]=b");
        row("unknown keys, half lines", "[DBQName]=x\n; [note]=y\nDBQName=y\n]=[\n[DBQName", "x");
        row("an empty value", "[DBQName]=x\n[DBQName]=", "");
        row("UTF-8 with a mark", coded(QStringConverter::Utf8, QStringConverter::Flag::WriteBom), cafe);
        row("UTF-16 with a mark", coded(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom), cafe);
        row("UTF-16 without", coded(QStringConverter::Utf16LE, {}), cafe);
        row("one byte a character", "[DBQName]=Caf\xe9 \x92", cafe + u" \u2019"_qs);
        row("bytes of any kind", QByteArray("\x00\xff[\xfe]=\x80[]=\n[]=\n]=[\r\r[DBQName]=a\n", 31), "a");
        row("nothing but brackets", QByteArray(100000, '['), {});
        row("a word for a number ends the reading", "[DBQName]=x\n[DBQType]=two\n[DBQName]=y", "x");
        row("beyond 16 bits", "[DBQName]=x\n[DBQType]=40000\n[DBQName]=y", "x");
        row("beyond 32 bits", "[DBQName]=x\n[NoTextCol]=99999999999\n[DBQName]=y", "x");
        row("neither true nor false", "[DBQName]=x\n[DBQUseODBC]=perhaps\n[DBQName]=y", "x");
        row("a word inside a list", "[DBQName]=x\n[Org_Data]=1,x,3,\n[DBQName]=y", "x");
    }
    void ALineSetsItsValue()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        Read(content);
        QCOMPARE(gDBQName, name);
        QCOMPARE(gDupCourseOpt, 31);
        QCOMPARE(gHeaderFile, m_directory->filePath(u"Reports/header.htm"_qs));
    }

    void AListKeepsWhatTheTextDoesNotHold()
    {
        Read("[Contact_Data]=1,2,3,4,5,6,7,8,9,10\n[Contact_Data]=21\n"
             "[Org_Data]=1,2,3,4,5,6,7,8,9,10,11,12,13,14,\n[Switches]=3,0,7,8,");
        QCOMPARE(gContactData[0], 21);
        QCOMPARE(gContactData[9], 10);
        QCOMPARE(gContactData[10], 0);
        QCOMPARE(gOrgData[11], 12);
        QCOMPARE(gShowIDs, 0);
        Read("[Switches]=0,5,");
        QCOMPARE(gShowIDs, 1);
    }

    void TheDocumentFolderIsSettled()
    {
        const QString home = m_directory->path();
        QVERIFY(QDir(home).mkdir(u"Work"_qs));
        const QString work = home % u"/Work";
        for (const auto &[written, read] : QList<std::pair<QString, QString>>{{work % u"//", work},
                                                                              {work % u"\\\\", work},
                                                                              {home % u"/Gone", home},
                                                                              {File(), home},
                                                                              {{}, home}}) {
            Read(QString(u"[DocDir]=" % written).toUtf8());
            QCOMPARE(gDocDir, read);
            QCOMPARE(gHeaderFile, QString(read % u"/header.htm"));
        }
    }

    void AFailedWriteLeavesTheOldFile()
    {
        QVERIFY(QDir().mkdir(File()));
        QVERIFY(!WriteSettings(File()));
        QVERIFY(!WriteSettings(m_directory->filePath(u"gone/prog.ini"_qs)));
        QVERIFY(QDir().rmdir(File()));

        WriteFile(File(), "[DBQName]=old\n");
        {
            const FullDisk disk(100);
            QVERIFY(!WriteSettings(File()));
        }
        QCOMPARE(QDir(m_directory->path()).entryList({u"prog*"_qs}, QDir::Files).size(), 1);
        QCOMPARE(ContentOf(File()), QByteArray("[DBQName]=old\n"));
    }
};

QTEST_GUILESS_MAIN(TestINIfile)
#include "test_inifile.moc"
