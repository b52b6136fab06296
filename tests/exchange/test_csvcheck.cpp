#include "core/Progress.h"
#include "core/Session.h"
#include "exchange/ImportState.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// The check of a file before its import: it must foretell what the import then does.
class TestCsvCheck final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ForetellsTheImport_data();
    void ForetellsTheImport();
    void NamesEveryFault();
    void StopsAndFails();
    void AnswersOnceForAll_data();
    void AnswersOnceForAll();

private:
    QString File(const QByteArray &bytes);
    static QString Counts(const ImportCheck &check);
    /// Leads `state` to the file.
    static bool Choose(ImportState &state, const QString &file);
    int ImportWith(const QByteArray &bytes, Dialogs::Answer answer, QString &summary);

    QTemporaryDir m_folder;
    int m_files = 0;
    Progress m_progress;
    std::optional<TestDatabase> m_database;
    std::optional<ScriptedDialogs> m_user;
};

void TestCsvCheck::init()
{
    m_database.emplace();
    m_user.emplace();
    m_progress = Progress();
}

void TestCsvCheck::cleanup()
{
    m_user.reset();
    m_database.reset();
}

QString TestCsvCheck::File(const QByteArray &bytes)
{
    QFile file(m_folder.filePath(QStringLiteral("in%1.csv").arg(++m_files)));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        QTest::qFail("cannot write the file", __FILE__, __LINE__);
    return file.fileName();
}

QString TestCsvCheck::Counts(const ImportCheck &check)
{
    return QString::number(check.fresh) % u" new, " % QString::number(check.changed) % u" changed, " %
           QString::number(check.same) % u" same, " % QString::number(check.faulty) % u" faulty";
}

bool TestCsvCheck::Choose(ImportState &state, const QString &file)
{
    return state.ChooseDataSet() && state.ChooseFile(file) && state.CheckMapping();
}

void TestCsvCheck::ForetellsTheImport_data()
{
    QTest::addColumn<QByteArray>("before"); // lines that are in the database
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("counts");
    const QByteArray header("Forename,Surname,Address,City,Organisation,Date of Birth,Reference ID\n");
    const auto row = [&](const char *name, const QByteArray &before, const QByteArray &lines,
                         const char *counts) {
        QTest::newRow(name) << header + before << header + lines << QString(counts);
    };
    row("all new", "", "Ann,Ash,1 High St,Ely,Acme,,\nBen,Birch,2 Low St,Ely,,,\n",
        "2 new, 0 changed, 0 same, 0 faulty");
    row("same, in other case", "Ann,Ash,1 High St,Ely,Acme,01/02/1990,\n",
        "ANN,ash,1 high st,ELY,ACME,1990-02-01,\n", "0 new, 0 changed, 1 same, 0 faulty");
    row("moved to a known town", "Ann,Ash,1 High St,Ely,,,\nBen,Birch,2 Low St,Hull,,,\n",
        "Ann,Ash,1 High St,Hull,,,\n", "0 new, 1 changed, 0 same, 0 faulty");
    row("moved to a new town", "Ann,Ash,1 High St,Ely,,,\n", "Ann,Ash,1 High St,Leeds,,,\n",
        "0 new, 1 changed, 0 same, 0 faulty");
    row("another reference is another person", "Ann,Ash,1 High St,Ely,,,A1\n",
        "Ann,Ash,1 High St,Ely,,,A2\nAnn,Ash,1 High St,Ely,,,A1\n", "1 new, 0 changed, 1 same, 0 faulty");
    row("twice in the file", "", "Ann,Ash,1 High St,Ely,,,\nann,ash,1 high st,ely,,,\n",
        "1 new, 0 changed, 1 same, 0 faulty");
    row("changed within the file", "", "Ann,Ash,1 High St,Ely,,,\nAnn,Ash,1 High St,Hull,,,\n",
        "1 new, 1 changed, 0 same, 0 faulty");
    row("there and back", "Ann,Ash,1 High St,Ely,,,\n",
        "Ann,Ash,1 High St,Hull,,,\nAnn,Ash,1 High St,Ely,,,\n", "0 new, 2 changed, 0 same, 0 faulty");
    row("faults", "",
        "Ann,,1 High St,Ely,,,\n\nBen,\"Birch,2 Low St,,,,\nCat,Cole,3 Mid St,,,soon,\nDan,Dale,4\n",
        "1 new, 0 changed, 0 same, 4 faulty");
    row("apostrophes", "Ann,O'Neil,1 'High' St,,,,\n", "Ann,O'Neil,1 'High' St,,,,\n",
        "0 new, 0 changed, 1 same, 0 faulty");
    QFile sample(QStringLiteral(DEMO_DATA "/people.csv"));
    QVERIFY(sample.open(QIODevice::ReadOnly));
    const QByteArray people = sample.readAll();
    QTest::newRow("sample") << QByteArray() << people
                            << QStringLiteral("500 new, 0 changed, 0 same, 0 faulty");
    QTest::newRow("sample again") << people << people
                                  << QStringLiteral("0 new, 0 changed, 500 same, 0 faulty");
}

void TestCsvCheck::ForetellsTheImport()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, lines);
    QString summary;
    if (before.count('\n') > 1)
        ImportWith(before, Dialogs::Answer::Yes, summary);
    ImportState state(CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat")));
    QVERIFY(Choose(state, File(lines)));
    StatementLog log;
    const std::optional<ImportCheck> check = state.Check(m_progress);
    QVERIFY(check && !check->stopped);
    for (const QString &statement : log.Statements())
        QVERIFY2(statement.startsWith("SELECT "), qPrintable(statement));
    QTEST(Counts(*check), "counts");
    QCOMPARE(check->lines, check->fresh + check->changed + check->same + check->faulty);

    ImportWith(lines, Dialogs::Answer::Yes, summary);
    QCOMPARE(summary, u"Import complete:\n" % QString::number(check->fresh) % u" Records where imported.\n" %
                          QString::number(check->changed) % u" Records where updated.\n" %
                          QString::number(check->same + check->faulty) % u" Records where skipped.");
}

void TestCsvCheck::NamesEveryFault()
{
    ImportState state(CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat")));
    QVERIFY(
        Choose(state, File("Forename,Surname,Address,Date of Birth,Title\nAnn,Ash,1 High St,,\n"
                           "Ben,,2 Low St,\"so, \"\"soon\"\"\",\nCat,\"Cole,3 Mid St,,\nDan,Dale,4 St,,\"" +
                           QByteArray(300, 'x') + "\"\n")));
    const std::optional<ImportCheck> check = state.Check(m_progress);
    QVERIFY(check);
    const bool cuts = !TestDatabase::IsOnServer(); // the columns of this server have no size
    QCOMPARE(Counts(*check), QStringLiteral("2 new, 0 changed, 0 same, 2 faulty"));
    QCOMPARE(check->cut, cuts ? 1 : 0);
    const QString file = m_folder.filePath("faults.csv");
    QVERIFY(SaveImportFaults(file, check->faults));
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QByteArray expected("\xEF\xBB\xBF\"Line\",\"Column\",\"Value\",\"Fault\"\r\n"
                        "3,\"Surname\",\"\",\"is required\"\r\n"
                        "3,\"Date of Birth\",\"so, \"\"\"\"soon\"\"\"\"\",\"is no date as DD/MM/YYYY or "
                        "YYYY-MM-DD\"\r\n"
                        "4,\"\",\"\",\"opens a quotation mark and does not close it\"\r\n");
    if (cuts)
        expected +=
            "5,\"Title\",\"" + QByteArray(300, 'x') + "\",\"has 300 characters, of which 255 fit\"\r\n";
    QCOMPARE(saved.readAll(), expected);

    m_user->Expect("CSV Import", "Unable to write '/no/such/faults.csv': No such file or directory.");
    QVERIFY(!SaveImportFaults("/no/such/faults.csv", check->faults));
}

void TestCsvCheck::StopsAndFails()
{
    ImportState state(CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat")));
    QVERIFY(Choose(state, QStringLiteral(DEMO_DATA "/people.csv")));
    Progress *running = nullptr;
    Progress run(
        [&](int done, int) {
            if (done == 10)
                running->Cancel();
        },
        0);
    running = &run;
    const std::optional<ImportCheck> check = state.Check(run);
    QVERIFY(check && check->stopped);
    QCOMPARE(check->lines, 10);

    TestDatabase::Run({"DROP TABLE County"});
    m_user->Expect("Veltrane Connection",
                   "A number of errors have been detected, please seek technical support.");
    m_user->Expect("CSV Import", "The file was not checked, maybe an invalid SQL query was passed.");
    QVERIFY(!state.Check(m_progress));
}

int TestCsvCheck::ImportWith(const QByteArray &bytes, Dialogs::Answer answer, QString &summary)
{
    int questions = 0;
    const auto scripted = Dialogs::Installed().msgBox;
    Dialogs::Installed().msgBox = [&](const QString &text, const QString &, Dialogs::Buttons buttons,
                                      auto...) {
        if (text.startsWith("Import complete:"))
            summary = text;
        if (buttons != Dialogs::Buttons::YesNoAll)
            return Dialogs::Answer::Ok;
        ++questions;
        return answer;
    };
    ImportState state(CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat")));
    if (!Choose(state, File(bytes)) || !state.Run(m_progress))
        QTest::qFail("the import did not run", __FILE__, __LINE__);
    Dialogs::Installed().msgBox = scripted;
    return questions;
}

void TestCsvCheck::AnswersOnceForAll_data()
{
    QTest::addColumn<Dialogs::Answer>("answer");
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("updated");
    QTest::newRow("Yes") << Dialogs::Answer::Yes << 3 << 3;
    QTest::newRow("Yes to All") << Dialogs::Answer::YesToAll << 1 << 3;
    QTest::newRow("No") << Dialogs::Answer::No << 3 << 0;
    QTest::newRow("No to All") << Dialogs::Answer::NoToAll << 1 << 0;
}

void TestCsvCheck::AnswersOnceForAll()
{
    QFETCH(Dialogs::Answer, answer);
    QFETCH(int, updated);
    QString summary;
    const QByteArray people("Forename,Surname,Address,Postcode\nAnn,Ash,1 High St,A1\nBen,Birch,2 Low St,B1\n"
                            "Cat,Cole,3 Mid St,C1\n");
    ImportWith(people, answer, summary);
    QByteArray moved = people;
    moved.replace("1\n", "2\n").append("Dan,Dale,4 New St,D1\n");
    QTEST(ImportWith(moved, answer, summary), "asked");
    QCOMPARE(summary, u"Import complete:\n1 Records where imported.\n" % QString::number(updated) %
                          u" Records where updated.\n0 Records where skipped.");
    // The next run asks anew.
    QCOMPARE(ImportWith(people, answer, summary) > 0, updated > 0);
}

QTEST_GUILESS_MAIN(TestCsvCheck)
#include "test_csvcheck.moc"
