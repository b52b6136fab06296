#include "exchange/Exchange.h"
#include "exchange/export/CsvExport.h"
#include "platform/desktop/Directories.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QTest>

#include <malloc.h>
#include <unistd.h>

namespace
{
const QString programFailed =
    QStringLiteral("A number of errors have been detected, please seek technical support.");
const QString exportFailed = QStringLiteral("Export failed, maybe an invalid SQL query was passed.");
const QString cancelled = QStringLiteral("Export cancelled, nothing was written.");

/// Root may write anywhere; the user nobody may not.
class Nobody final
{
public:
    Nobody()
    {
        if (m_isRoot && setresuid(65534, 65534, 0) != 0)
            qFatal("cannot become nobody");
    }
    ~Nobody()
    {
        if (m_isRoot && setresuid(0, 0, 0) != 0)
            qFatal("cannot become root again");
    }
    Nobody(const Nobody &) = delete;
    Nobody &operator=(const Nobody &) = delete;

private:
    const bool m_isRoot = getuid() == 0;
};

/// By how many kilobytes the memory of the process grew while `work` ran, at the most.
qint64 MemoryOf(const std::function<void()> &work)
{
    const auto value = [](const char *name) {
        const QByteArray status = ContentOf("/proc/self/status");
        const qsizetype at = status.indexOf(name);
        return status.mid(at).split('\n').first().mid(qstrlen(name)).chopped(3).trimmed().toLongLong();
    };
    malloc_trim(0);
    WriteFile("/proc/self/clear_refs", "5"); // the highest mark begins again
    const qint64 before = value("VmRSS:");
    work();
    return value("VmHWM:") - before;
}
} // namespace

/// Exports from a real database through the shipped map, as the wizard does.
class TestCsvExport final : public QObject
{
    Q_OBJECT

private slots:
    void SampleGoesOutAndComesIn();
    void OrganisationsGoOutAndComeIn();
    void SaysWhatTheFileDoesNotCarry();
    void WritesEachKindOfColumn();
    void LeavesTheFileThatWasThere_data();
    void LeavesTheFileThatWasThere();
    void ComplainsOfTheQuery();
    void MemoryDoesNotGrowWithTheRows();
    void RemembersTheTicks();
    void KeepsThirtyOneTicksOfEachDataSet();
};

void TestCsvExport::SampleGoesOutAndComesIn()
{
    const QTemporaryDir folder;
    const QString files[] = {folder.filePath("first.csv"), folder.filePath("second.csv")};
    for (int round = 0; round < 2; ++round) {
        Exchange desk;
        desk.user.Expect("CSV Import", Exchange::Summary(500, 0, 0));
        QVERIFY(desk.Import(round == 0 ? Exchange::Sample() : files[0]));
        if (round == 0)
            TestDatabase::Run({"UPDATE Contacts SET Cust_Sex = 1, Cust_DOB = 19840229, Cust_Notes = 'first,\n"
                               "second' WHERE Cust_Surname < 'M'"});
        desk.user.Expect("CSV Export", Exchange::Exported(500));
        QVERIFY(desk.Export(files[round], desk.progress));
        // Nobody is taken for changed, whatever the sample left empty.
        desk.user.Expect("CSV Import", Exchange::Summary(0, 0, 500));
        QVERIFY(desk.Import(files[round]));
    }
    const QByteArray first = ContentOf(files[0]);
    QVERIFY(first.startsWith("\xEF\xBB\xBF\"Title\",\"Forename\",\"Surname\","));
    QVERIFY(first.contains("Zoë") && first.contains("29/02/1984"));
    QCOMPARE(ContentOf(files[1]), first);
}

void TestCsvExport::OrganisationsGoOutAndComeIn()
{
    const QTemporaryDir folder;
    const QString files[] = {folder.filePath("first.csv"), folder.filePath("second.csv")};
    for (int round = 0; round < 2; ++round) {
        Exchange desk;
        desk.user.Expect("CSV Import", Exchange::Summary(round == 0 ? 500 : 174, 0, 0));
        QVERIFY(desk.Import(round == 0 ? Exchange::Sample() : files[0], round));
        desk.user.Expect("CSV Export", Exchange::Exported(174));
        QVERIFY(desk.Export(files[round], desk.progress, 1));
    }
    QVERIFY(ContentOf(files[0]).contains("\"Northlight Brewery & Sons\",\"Not Known\""));
    QCOMPARE(ContentOf(files[1]), ContentOf(files[0]));
}

void TestCsvExport::SaysWhatTheFileDoesNotCarry()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("people.csv");
    WriteFile(file, "what was there before");
    {
        Exchange desk;
        Exchange::AddPeople(5);
        TestDatabase::Run({"UPDATE Contacts SET Cust_DOB = 0, JobTitle = 'the \"boss\"', AltRef1 = 'a`b', "
                           "Cust_Notes = 'one\ntwo\r\nthree' WHERE Cust_Surname = 'Ash 1'",
                           QString(u"UPDATE Contacts SET Cust_Notes = 'x" % QString(500, u'\n') %
                                   u"' WHERE Cust_Surname = 'Ash 4'"),
                           "UPDATE Contacts SET Cust_DOB = 19990231 WHERE Cust_Surname = 'Ash 2'",
                           "UPDATE Contacts SET Cust_Addr1 = '' WHERE Cust_Surname = 'Ash 3'"});
        const QString tooLong = "    1 record of over 500 lines: an import skips the record.\n"
                                "        It is in record 5.\n";
        const QString question =
            "An import of this file would not bring back everything unchanged:\n"
            "    2 values with quotation marks or backticks: an import doubles them.\n"
            "        The first is in record 2, field 'Job Title': 'the \"boss\"'.\n" %
            tooLong %
            "    1 date of birth that is not a date: an import skips the record.\n"
            "        It is in record 3, field 'Date of Birth': '31/02/1999'.\n"
            "    1 record without a field that is shown in bold: an import skips the record.\n"
            "        It is in record 4, field 'Address'.\nOkay to export?";
        desk.user.Expect("CSV Export", question, Dialogs::Answer::No);
        desk.user.Expect("CSV Export", cancelled);
        QVERIFY(!desk.Export(file, desk.progress));
        QCOMPARE(ContentOf(file), QByteArray("what was there before"));
        TestDatabase::Run({"DELETE FROM Contacts WHERE Cust_Surname = 'Ash 4'"});
        desk.user.Expect("CSV Export", QString(question).remove(tooLong), Dialogs::Answer::Yes);
        desk.user.Expect("CSV Export", Exchange::Exported(4));
        QVERIFY(desk.Export(file, desk.progress));
    }
    // What comes back is what the question said, and nothing else is lost.
    Exchange desk;
    desk.user.Expect("CSV Import", Exchange::Summary(2, 0, 2));
    desk.user.Expect("CSV Import",
                     "2 lines of 'people.csv' were skipped because of their contents:\n"
                     "    Line 6, field 'Date of Birth': '31/02/1999' is not a date "
                     "(DD/MM/YYYY or YYYY-MM-DD).\n    Line 7, field 'Address': '' is required.");
    QVERIFY(desk.Import(file));
    QCOMPARE(TestDatabase::Rows("SELECT JobTitle, AltRef1, Cust_Notes, Cust_DOB FROM Contacts WHERE "
                                "Cust_Surname = 'Ash 1'"),
             QStringList("the \"\"boss\"\"|a``b|one\ntwo\r\nthree|0"));
}

void TestCsvExport::WritesEachKindOfColumn()
{
    Exchange desk;
    for (const char *values :
         {"'Ann', 'Ash', 0, 19650322, 2", "'Ben', 'Birch, B', 1, NULL, NULL", "'Cat', NULL, 2, NULL, 3"})
        TestDatabase::Run({QString(u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Sex, Cust_DOB, "
                                   u"OrganRef) VALUES (" %
                                   QLatin1String(values) % u')')});
    ListModel fields;
    fields.Add({.key = "cust_surname", .text = "Last \"name\"", .checked = true});
    fields.Add({.key = "Cust_Forename", .text = "First"});
    fields.Add({.key = "NoSuchColumn", .text = "None", .checked = true});
    fields.Add({.key = "Cust_Sex", .text = "Sex", .checked = true});
    fields.Add({.key = "Cust_DOB", .text = "Born", .checked = true});
    fields.Add({.key = "OrganRef", .text = "Works", .checked = true});
    const QString file = desk.File(QByteArray(10000, 'x'));
    desk.user.Expect("CSV Export", Exchange::Exported(3));
    QVERIFY(Export_CSV_File(file, fields, "SELECT * FROM Contacts WHERE ContactRef > 1 ORDER BY ContactRef",
                            desk.progress));
    QCOMPARE(ContentOf(file), QByteArray("\xEF\xBB\xBF\"Last \"\"name\"\"\",\"Sex\",\"Born\",\"Works\"\r\n"
                                         "\"Ash\",\"Not Specified\",\"22/03/1965\",2\r\n"
                                         "\"Birch, B\",\"Female\",\"\",0\r\n\"\",\"Male\",\"\",3\r\n"));
    QCOMPARE(desk.progress.Value(), 3);
    QCOMPARE(desk.progress.Maximum(), 3);
}

void TestCsvExport::LeavesTheFileThatWasThere_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("why");
    QTest::newRow("cancelled") << "cancel" << QString();
    QTest::newRow("disk full") << "full"
                               << "File too large";
    QTest::newRow("name of a folder") << "folder"
                                      << "Filename refers to a directory";
    QTest::newRow("folder takes no file") << "closed"
                                          << "Permission denied";
    QTest::newRow("file may not be written") << "locked"
                                             << "Existing file %1 is not writable";
    QTest::newRow("folder takes no file at the end") << "closing"
                                                     << "Permission denied";
    QTest::newRow("folder gone at the end") << "going"
                                            << "No such file or directory";
    QTest::newRow("a folder of that name at the end") << "taken"
                                                      << "Is a directory";
}

void TestCsvExport::LeavesTheFileThatWasThere()
{
    QFETCH(QString, fault);
    QFETCH(QString, why);
    Exchange desk;
    Exchange::AddPeople(2000);
    QDir folder(desk.Path("target"));
    QVERIFY(folder.mkpath("."));
    QFile::setPermissions(desk.Path({}), QFile::Permissions(0x7755));
    const QFile::Permissions all(0x7777);
    const QFile::Permissions readable(0x5555);
    QVERIFY(QFile::setPermissions(folder.path(), all));
    const QString good = folder.filePath("people.csv");
    QString file = good;
    WriteFile(good, "good");
    QVERIFY(QFile::setPermissions(good, fault == "locked" ? readable : all));
    if (fault == "folder")
        QVERIFY(folder.mkdir("sub") && !(file = folder.filePath("sub")).isEmpty());
    if (fault == "closed")
        QVERIFY(QFile::setPermissions(folder.path(), readable));
    std::optional<Nobody> nobody;
    RunWith last(2000, [&](Progress &run) {
        if (fault == "cancel") {
            run.Cancel();
        } else if (fault == "closing") {
            nobody.reset();
            QVERIFY(QFile::setPermissions(folder.path(), readable));
            nobody.emplace();
        } else if (fault == "going") {
            QVERIFY(folder.rename(folder.path(), folder.path() + "2"));
        } else if (fault == "taken") {
            QVERIFY(QFile::remove(good) && folder.mkdir("people.csv"));
        }
    });
    if (why.isEmpty()) {
        desk.user.Expect("CSV Export", cancelled);
    } else {
        desk.user.Expect("CSV Export", programFailed);
        desk.user.Expect("CSV Export", exportFailed % u"\n\nUnable to write '" % file % u"': " %
                                           why.replace("%1", file) % u'.');
    }
    bool written = true;
    {
        std::optional<FullDisk> limit;
        if (fault == "full")
            limit.emplace(rlim_t(100'000));
        const bool isRefused = fault == "closed" || fault == "locked" || fault == "closing";
        if (isRefused)
            nobody.emplace();
        written = desk.Export(file, last.run);
        nobody.reset();
    }
    QVERIFY(!written);
    if (fault == "going")
        QVERIFY(folder.rename(folder.path() + "2", folder.path()));
    QFile::setPermissions(folder.path(), all);
    QCOMPARE(ContentOf(good), QByteArray(fault == "taken" ? "" : "good"));
}

void TestCsvExport::ComplainsOfTheQuery()
{
    Exchange desk;
    ListModel fields;
    fields.Add({.key = "City", .text = "City", .checked = true});
    const QString file = desk.Path("complains.csv");
    for (const QString sql : {"SELECT * FROM City WHERE City_ID = 0", "SELECT City AS Musers FROM City"}) {
        desk.user.Expect("CSV Export", "No Records found in database.");
        QVERIFY(!Export_CSV_File(file, fields, sql, desk.progress));
    }
    desk.user.Expect("Veltrane Connection", programFailed);
    desk.user.Expect("CSV Export", exportFailed);
    QVERIFY(!Export_CSV_File(file, fields, "SELECT * FROM NoTable", desk.progress));
    QVERIFY(!Export_CSV_File(file, ListModel(), "SELECT * FROM City", desk.progress)); // nothing ticked
    QVERIFY(!QFile::exists(file));
}

void TestCsvExport::MemoryDoesNotGrowWithTheRows()
{
    if (TestDatabase::IsOnServer())
        QSKIP("So many people take long to add to a server.");
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The sanitizer keeps what is given back.");
#endif
    Exchange desk;
    const auto exporting = [&desk](int people) {
        desk.user.Expect("CSV Export", Exchange::Exported(people));
        return MemoryOf([&] { QVERIFY(desk.Export(desk.Path("people.csv"), desk.progress)); });
    };
    Exchange::AddPeople(1000);
    exporting(1000);
    const qint64 few = exporting(1000);
    Exchange::AddPeople(49'000, 1000);
    const qint64 many = exporting(50'000);
    const QString grown = u"from " % QString::number(few) % u" to " % QString::number(many) % u" kilobytes";
    QVERIFY2(many < few + 4096, qPrintable(grown));
    qInfo("%s", qPrintable(grown));
}

void TestCsvExport::RemembersTheTicks()
{
    Exchange desk;
    const auto ticked = [](const QByteArray &stored) {
        WriteFile(Directories::WrittenFile("export.tmp"), stored);
        ExportState state(Exchange::ShippedMap());
        state.ExportList.SelectOnly(1);
        return state.ChooseDataSet() ? state.ExportSel.CheckedRows() : std::vector<int>();
    };
    QCOMPARE(ticked("7\r\n10\r\n99\nx\n"), (std::vector<int>{1, 3}));
    for (const char *stored : {"", "7\n", "7\nten\n", "7\n99999999999\n", "7\n-1\n"})
        QCOMPARE(ticked(stored).size(), size_t(16)); // what the map proposes
}

void TestCsvExport::KeepsThirtyOneTicksOfEachDataSet()
{
    Exchange desk;
    QByteArray map(
        "[English]\n[Wide]=!1\n[Narrow]=!2\n[ENDEnglish]\n[!2]\n[A]=*A\n[B]=?B\n[M]=&2\n[END]\n[!1]\n"
        "[Query]=$SELECT * FROM City\n");
    for (int field = 0; field < 34; ++field)
        map += "[F" + QByteArray::number(field) + "]=?F" + QByteArray::number(field) + "\n";
    const CsvMap wide = CsvMap::FromBytes(map + "[END]\n");
    {
        ExportState state(wide);
        QVERIFY(state.ChooseDataSet());
        QCOMPARE(state.ExportSel.CheckedRows().size(), size_t(34)); // without a default all
        state.ExportSel.SetChecked(0, false);
        QVERIFY(state.ChooseFields());
        state.ExportList.SelectOnly(1);
        QVERIFY(state.ChooseDataSet());
        QVERIFY(state.ExportSel.At(0).bold && !state.ExportSel.At(1).bold);
        QCOMPARE(state.ExportSel.CheckedRows(), std::vector<int>{1});
        state.SaveMasks();
    }
    QCOMPARE(ContentOf(Directories::WrittenFile("export.tmp")), QByteArray("2147483646\r\n2\r\n"));
    ExportState state(wide);
    QVERIFY(state.ChooseDataSet());
    QCOMPARE(state.ExportSel.CheckedRows().size(), size_t(30));
    QVERIFY(!state.ExportSel.At(31).checked && state.ExportSel.At(30).checked);
}

QTEST_GUILESS_MAIN(TestCsvExport)
#include "test_csvexport.moc"
