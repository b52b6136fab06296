#include "core/Progress.h"
#include "core/Session.h"
#include "exchange/CsvExport.h"
#include "exchange/ExportState.h"
#include "exchange/ImportState.h"
#include "platform/Directories.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <malloc.h>
#include <sys/resource.h>

namespace
{
const QString programFailed =
    QStringLiteral("A number of errors have been detected, please seek technical support.");
const QString exportFailed = QStringLiteral("Export failed, maybe an invalid SQL query was passed.");

CsvMap ShippedMap()
{
    return CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat"));
}

QString Exported(int count)
{
    return u"Export complete:\n" % QString::number(count) % u" Records where exported.";
}

QString Imported(int count)
{
    return u"Import complete:\n" % QString::number(count) %
           u" Records where imported.\n0 Records where updated.\n0 Records where skipped.";
}

QByteArray Bytes(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Put(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        QTest::qFail("cannot write the file", __FILE__, __LINE__);
}

/// As much of every file as `bytes`, as on a disk that gets full.
class DiskLimit final
{
public:
    explicit DiskLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~DiskLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }
    DiskLimit(const DiskLimit &) = delete;
    DiskLimit &operator=(const DiskLimit &) = delete;

private:
    rlimit m_before{};
};
} // namespace

/// Exports from a real database through the shipped map, as the wizard does.
class TestCsvExport final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void SampleGoesOutAndComesIn();
    void SaysWhatTheFileDoesNotCarry();
    void WritesEachKindOfColumn();
    void LeavesTheFileThatWasThere_data();
    void LeavesTheFileThatWasThere();
    void ComplainsOfTheQuery();
    void TakesNoMemoryForRowsWritten();
    void RemembersTheTicks_data();
    void RemembersTheTicks();
    void KeepsThirtyOneTicks();
    void TicksOfEachDataSet();

private:
    QString Path(const QString &name) const { return m_folder->filePath(name); }
    void ExportAllFields(const QString &fileName);
    /// Rows of the data set as they stand in the database.
    static QStringList People();
    static void AddPeople(int count);

    Progress m_progress;
    std::optional<QTemporaryDir> m_folder;
    std::optional<TestDatabase> m_database;
    std::optional<ScriptedDialogs> m_user;
};

void TestCsvExport::init()
{
    m_folder.emplace();
    m_database.emplace();
    m_user.emplace();
    m_progress = Progress();
}

void TestCsvExport::cleanup()
{
    m_user.reset();
    m_database.reset();
}

void TestCsvExport::ExportAllFields(const QString &fileName)
{
    ExportState state(ShippedMap());
    QVERIFY(state.ChooseDataSet() && state.ChooseFields());
    QCOMPARE(state.ExportSel.CheckedRows().size(), size_t(28));
    QVERIFY(state.Run(fileName, m_progress));
}

QStringList TestCsvExport::People()
{
    const QString query = CsvMap::ValueOf(ShippedMap().Entries(QStringLiteral("English"), 1), u'$');
    QString sorted = query.section(QStringLiteral(" ORDER BY"), 0, 0) %
                     u" ORDER BY Contacts.Cust_Surname, Contacts.Cust_Forename, Contacts.Cust_Addr1";
    return TestDatabase::Rows(sorted.replace(QStringLiteral("Contacts.ContactRef, "), QString()));
}

void TestCsvExport::AddPeople(int count)
{
    WriteGroup group(gConnection);
    for (int person = 0; person < count; ++person)
        gConnection.Execute(u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Addr1, Cust_City, "
                            u"Cust_County, Cust_Country, Cust_Designation, Cust_Ethnicgroup, OrganRef) "
                            u"VALUES ('Ann', 'Ash " %
                            QString::number(person) % u"', '1 High Street', 1, 1, 1, 1, 1, 1)");
    group.Finish();
}

void TestCsvExport::SampleGoesOutAndComesIn()
{
    const auto import = [this](const QString &file, int people) {
        m_user->Expect("CSV Import", Imported(people));
        ImportState state(ShippedMap());
        return state.ChooseDataSet() && state.ChooseFile(file) && state.CheckMapping() &&
               state.Run(m_progress);
    };
    QVERIFY(import(QStringLiteral(DEMO_DATA "/people.csv"), 500));
    // The sample leaves fields empty that a form stores as empty texts and zeros.
    TestDatabase::Run({"UPDATE Contacts SET Cust_Sex = 1 WHERE Cust_Forename < 'M'",
                       "UPDATE Contacts SET Cust_DOB = 19840229, Cust_Notes = 'first, second' WHERE "
                       "Cust_Surname < 'M'"});
    const QString first = Path("first.csv");
    m_user->Expect("CSV Export", Exported(500));
    ExportAllFields(first);
    QVERIFY(Bytes(first).startsWith("\xEF\xBB\xBF\"Title\",\"Forename\",\"Surname\","));
    QStringList people = People();
    QCOMPARE(people.size(), 500);

    m_database.reset();
    m_database.emplace();
    QVERIFY(import(first, 500));
    const QString second = Path("second.csv");
    // A column that nobody filled reads as no text and no date; it comes in as an empty one.
    TestDatabase::Run({"UPDATE Contacts SET Cust_DOB = NULL WHERE Cust_DOB = 0"});
    m_user->Expect("CSV Export", Exported(500));
    ExportAllFields(second);
    QCOMPARE(Bytes(second), Bytes(first));
    QStringList again = People();
    // Nobody's sex is 0 here where it was nothing there; both read "Not Specified".
    for (QStringList *rows : {&people, &again})
        for (QString &row : *rows) {
            QStringList cells = row.split(u'|');
            if (cells[20].isEmpty())
                cells[20] = u'0';
            row = cells.join(u'|');
        }
    QCOMPARE(again, people);
}

void TestCsvExport::SaysWhatTheFileDoesNotCarry()
{
    AddPeople(2);
    TestDatabase::Run({"UPDATE Contacts SET Cust_Notes = 'two' WHERE Cust_Surname = 'Ash 0'"});
    TestDatabase::Run({"UPDATE Contacts SET Cust_DOB = 0, JobTitle = 'the \"boss\"', AltRef1 = 'a`b', "
                       "Cust_Notes = 'one\ntwo' WHERE Cust_Surname = 'Ash 1'"});
    const QString file = Path("people.csv");
    Put(file, "what was there before");
    const QString question =
        "The file does not carry all of it as it stands:\n"
        "    2 values with quotation marks or backticks: an import doubles them.\n"
        "    1 value with line breaks: other programs may take these for the end of a record.\n"
        "    1 unknown date of birth: today's date stands in the file.\nOkay to export?";
    ExportState state(ShippedMap());
    QVERIFY(state.ChooseDataSet() && state.ChooseFields());
    m_user->Expect("CSV Export", question, Dialogs::Answer::No);
    m_user->Expect("CSV Export", "Export cancelled, nothing was written.");
    QVERIFY(!state.Run(file, m_progress));
    QCOMPARE(Bytes(file), QByteArray("what was there before"));

    m_user->Expect("CSV Export", question, Dialogs::Answer::Yes);
    m_user->Expect("CSV Export", Exported(2));
    QVERIFY(state.Run(file, m_progress));

    // What comes back is what the question said, and nothing else is lost.
    m_database.reset();
    m_database.emplace();
    m_user->Expect("CSV Import", Imported(2));
    ImportState import(ShippedMap());
    QVERIFY(import.ChooseDataSet() && import.ChooseFile(file) && import.Run(m_progress));
    QCOMPARE(TestDatabase::Rows("SELECT JobTitle, AltRef1, Cust_Notes, Cust_DOB FROM Contacts WHERE "
                                "Cust_Surname = 'Ash 1'"),
             QStringList{QString(u"the \"\"boss\"\"|a``b|one\ntwo|" %
                                 QDate::currentDate().toString(QStringLiteral("yyyyMMdd")))});
}

void TestCsvExport::WritesEachKindOfColumn()
{
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
    const QString file = Path("kinds.csv");
    Put(file, QByteArray(10000, 'x'));
    m_user->Expect("CSV Export", Exported(3));
    QVERIFY(Export_CSV_File(file, fields, "SELECT * FROM Contacts WHERE ContactRef > 1 ORDER BY ContactRef",
                            m_progress));
    QCOMPARE(Bytes(file), QByteArray("\xEF\xBB\xBF\"Last \"\"name\"\"\",\"Sex\",\"Born\",\"Works\"\r\n"
                                     "\"Ash\",\"Not Specified\",\"22/03/1965\",2\r\n"
                                     "\"Birch, B\",\"Female\",\"\",0\r\n\"\",\"Male\",\"\",3\r\n"));
    QCOMPARE(m_progress.Value(), 3);
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
    QTest::newRow("no such folder") << "missing"
                                    << "No such file or directory";
}

void TestCsvExport::LeavesTheFileThatWasThere()
{
    QFETCH(QString, fault);
    QFETCH(QString, why);
    AddPeople(2000);
    ExportState state(ShippedMap());
    QVERIFY(state.ChooseDataSet() && state.ChooseFields());
    QString file = Path("people.csv");
    Put(file, "good");
    Progress *running = nullptr;
    Progress run(
        [&](int done, int) {
            if (fault == "cancel" && done == 1000)
                running->Cancel();
        },
        0);
    running = &run;
    if (fault == "folder")
        QVERIFY(QDir().mkpath(file = Path("folder.csv")));
    if (fault == "missing")
        file = Path("no/such.csv");
    if (why.isEmpty()) {
        m_user->Expect("CSV Export", "Export cancelled, nothing was written.");
    } else {
        m_user->Expect("CSV Export", programFailed);
        m_user->Expect("CSV Export", exportFailed % u"\n\nUnable to write '" % file % u"': " % why % u'.');
    }
    std::optional<DiskLimit> limit;
    if (fault == "full")
        limit.emplace(rlim_t(100'000));
    const bool written = state.Run(file, run);
    limit.reset();
    QVERIFY(!written);
    QCOMPARE(Bytes(Path("people.csv")), QByteArray("good"));
    QDir(Path("folder.csv")).removeRecursively();
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             QStringList{"people.csv"});
}

void TestCsvExport::ComplainsOfTheQuery()
{
    ListModel fields;
    fields.Add({.key = "City", .text = "City", .checked = true});
    const QString file = Path("complains.csv");
    for (const QString sql : {"SELECT * FROM City WHERE City_ID = 0", "SELECT City AS Musers FROM City"}) {
        m_user->Expect("CSV Export", "No Records found in database.");
        QVERIFY(!Export_CSV_File(file, fields, sql, m_progress));
    }
    m_user->Expect("Veltrane Connection", programFailed);
    m_user->Expect("CSV Export", exportFailed);
    QVERIFY(!Export_CSV_File(file, fields, "SELECT * FROM NoTable", m_progress));
    QVERIFY(!Export_CSV_File(file, ListModel(), "SELECT * FROM City", m_progress)); // nothing ticked
    QVERIFY(!QFile::exists(file));
}

void TestCsvExport::TakesNoMemoryForRowsWritten()
{
    AddPeople(5000);
    ExportState state(ShippedMap());
    QVERIFY(state.ChooseDataSet() && state.ChooseFields());
    m_user->Expect("CSV Export", Exported(5000));
    size_t atStart = 0;
    size_t most = 0;
    Progress run(
        [&](int done, int) {
            const size_t now = mallinfo2().uordblks;
            if (done == 500)
                atStart = now;
            else if (done > 500)
                most = std::max(most, now);
        },
        0);
    QVERIFY(state.Run(Path("people.csv"), run));
    QVERIFY(QFileInfo(Path("people.csv")).size() > 500'000);
    const qint64 grown = static_cast<qint64>(most) - static_cast<qint64>(atStart);
    QVERIFY2(grown < 100'000, qPrintable(QString::number(grown)));
}

void TestCsvExport::RemembersTheTicks_data()
{
    QTest::addColumn<QByteArray>("stored"); // of export.tmp; none: there is no file
    QTest::addColumn<QList<int>>("ticked"); // of the organisations' first four fields
    QTest::addColumn<int>("count");
    QTest::newRow("nothing stored: the map's own") << QByteArray() << QList<int>{0, 1, 2, 3} << 16;
    QTest::newRow("stored") << QByteArray("7\r\n10\r\n") << QList<int>{1, 3} << 2;
    QTest::newRow("lines past the last data set") << QByteArray("7\n10\n99\nx\n") << QList<int>{1, 3} << 2;
    QTest::newRow("a line too few") << QByteArray("7\n") << QList<int>{0, 1, 2, 3} << 16;
    QTest::newRow("no number") << QByteArray("7\nten\n") << QList<int>{0, 1, 2, 3} << 16;
    QTest::newRow("too large a number") << QByteArray("7\n99999999999\n") << QList<int>{0, 1, 2, 3} << 16;
    QTest::newRow("minus one") << QByteArray("7\n-1\n") << QList<int>{0, 1, 2, 3} << 16;
}

void TestCsvExport::RemembersTheTicks()
{
    QFETCH(QByteArray, stored);
    QFETCH(int, count);
    if (!stored.isNull())
        Put(Directories::WrittenFile("export.tmp"), stored);
    ExportState state(ShippedMap());
    state.ExportList.SelectOnly(1);
    QVERIFY(state.ChooseDataSet());
    QList<int> ticked;
    for (const int row : state.ExportSel.CheckedRows()) {
        if (row < 4)
            ticked.append(row);
    }
    QTEST(ticked, "ticked");
    QCOMPARE(static_cast<int>(state.ExportSel.CheckedRows().size()), count);
}

void TestCsvExport::KeepsThirtyOneTicks()
{
    QByteArray map("[English]\n[Wide]=!1\n[ENDEnglish]\n[!1]\n[Query]=$SELECT * FROM City\n");
    for (int field = 0; field < 34; ++field)
        map += "[F" + QByteArray::number(field) + "]=?F" + QByteArray::number(field) + "\n";
    const CsvMap wide = CsvMap::FromBytes(map + "[END]\n");
    {
        ExportState state(wide);
        QVERIFY(state.ChooseDataSet());
        QCOMPARE(state.ExportSel.CheckedRows().size(), size_t(34)); // without a default all
        state.ExportSel.SetChecked(0, false);
        QVERIFY(state.ChooseFields());
        state.SaveMasks();
    }
    QCOMPARE(Bytes(Directories::WrittenFile("export.tmp")).trimmed(), QByteArray("2147483646"));
    ExportState state(wide);
    QVERIFY(state.ChooseDataSet());
    QCOMPARE(state.ExportSel.CheckedRows().size(), size_t(30));
    QVERIFY(!state.ExportSel.At(31).checked && state.ExportSel.At(30).checked);
}

void TestCsvExport::TicksOfEachDataSet()
{
    ExportState state(ShippedMap());
    QVERIFY(state.ChooseDataSet());
    QVERIFY(state.ExportSel.At(1).bold && !state.ExportSel.At(0).bold);
    state.TickAll(false);
    m_user->Expect("CSV Export", "You need at least one field to export.");
    QVERIFY(!state.ChooseFields());
    state.ExportSel.SetChecked(1, true);
    state.ExportSel.SetChecked(2, true);
    QVERIFY(state.ChooseFields());
    state.ExportList.SelectOnly(1);
    QVERIFY(state.ChooseDataSet());
    state.SaveMasks();
    QCOMPARE(Bytes(Directories::WrittenFile("export.tmp")), QByteArray("6\r\n65535\r\n"));
    state.ExportList.ClearSelection();
    m_user->Expect("CSV Export", "No selected/available items to export.");
    QVERIFY(!state.ChooseDataSet());
}

QTEST_GUILESS_MAIN(TestCsvExport)
#include "test_csvexport.moc"
