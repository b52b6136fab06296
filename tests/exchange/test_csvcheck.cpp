#include "exchange/Exchange.h"
#include "support/StatementLog.h"

#include <QTest>

#include <tuple>

/// The check of a file before its import: it must foretell what the import then does.
class TestCsvCheck final : public QObject
{
    Q_OBJECT

private slots:
    void ForetellsTheImport_data();
    void ForetellsTheImport();
    void NamesEveryFaultAndMendedLinesComeIn();
    void KeepsTheFirstFaultsAndCountsAll();
    void AsksAgainWhereTheFileChanged();
    void StopsAndFails();
    void AnswersOnceForAll();
};

namespace
{
const QByteArray header("Forename,Surname,Address,City,Organisation,Date of Birth,Reference ID\n");

QString Counts(const ImportCheck &check)
{
    return QString::number(check.fresh) % u" new, " % QString::number(check.changed) % u" changed, " %
           QString::number(check.same) % u" same, " % QString::number(check.faulty) % u" faulty";
}

/// Imports with one answer to all questions; gives how many there were, and the summary.
int ImportWith(Exchange &desk, const QByteArray &bytes, Dialogs::Answer answer, QString &summary)
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
    if (!desk.ImportBytes(bytes))
        QTest::qFail("the import did not run", __FILE__, __LINE__);
    Dialogs::Installed().msgBox = scripted;
    return questions;
}
} // namespace

void TestCsvCheck::ForetellsTheImport_data()
{
    QTest::addColumn<QByteArray>("before"); // lines that are in the database
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("counts");
    const auto row = [](const char *name, const QByteArray &before, const QByteArray &lines,
                        const char *counts) {
        QTest::newRow(name) << header + before << header + lines << QString(counts);
    };
    row("all new", "", "Ann,Ash,1 High St,Ely,Acme,,\nBen,Birch,2 Low St,Ely,,,\n",
        "2 new, 0 changed, 0 same, 0 faulty");
    row("same, in other case", "Zoë,Ash,1 High St,Ely,Acme,01/02/1990,\n",
        "ZOË,ash,1 high st,ELY,ACME,1990-02-01,\n", "0 new, 0 changed, 1 same, 0 faulty");
    row("moved to a known town and to a new one", "Ann,Ash,1 High St,Ely,,,\nBen,Birch,2 Low St,Hull,,,\n",
        "Ann,Ash,1 High St,Hull,,,\nBen,Birch,2 Low St,Leeds,,,\n", "0 new, 2 changed, 0 same, 0 faulty");
    row("another reference is another person", "Ann,Ash,1 High St,Ely,,,A1\n",
        "Ann,Ash,1 High St,Ely,,,A2\nAnn,Ash,1 High St,Ely,,,A1\n", "1 new, 0 changed, 1 same, 0 faulty");
    row("twice in the file, then changed", "",
        "Ann,Ash,1 High St,Ely,,,\nann,ash,1 high st,ely,,,\nAnn,Ash,1 High St,Hull,,,\n",
        "1 new, 1 changed, 1 same, 0 faulty");
    row("there and back", "Ann,Ash,1 High St,Ely,,,\n",
        "Ann,Ash,1 High St,Hull,,,\nAnn,Ash,1 High St,Ely,,,\n", "0 new, 2 changed, 0 same, 0 faulty");
    row("every fault", "",
        "Ann,,1 High St,Ely,,,\n\n,,,,,,\nBen,\"Birch,2 Low St,,,,\nCat,Cole,3 Mid St,,,soon,\n"
        "Dan,Dale,4\nEve,Elm,5 St,Ely,,,,more\n" +
            QByteArray("F\0ay,Fir,6 St,,,,\n", 18),
        "3 new, 0 changed, 0 same, 5 faulty");
    row("apostrophes and backticks", "Ann,O'Neil,1 `High' St,,,,\n", "Ann,O'Neil,1 `High' St,,,,\n",
        "0 new, 0 changed, 1 same, 0 faulty");
    const QByteArray people = ContentOf(Exchange::Sample());
    QTest::newRow("sample") << header << people << "500 new, 0 changed, 0 same, 0 faulty";
    QTest::newRow("sample again") << people << people << "0 new, 0 changed, 500 same, 0 faulty";
    QTest::newRow("two records of one identity")
        << QByteArray()
        << header + "Ann,Ash,1 High St,Leeds,,,\nAnn,Ash,1 High St,Hull,,,\n"
                    "Ann,Ash,1 High St,Ely,,,\n"
        << "0 new, 2 changed, 1 same, 0 faulty";
}

void TestCsvCheck::ForetellsTheImport()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, lines);
    Exchange desk;
    QString summary;
    if (before.count('\n') > 1)
        ImportWith(desk, before, Dialogs::Answer::Yes, summary);
    if (before.isEmpty()) { // nothing but two hands can bring this in
        ImportWith(desk, header + "Ann,Ash,1 High St,Ely,,,1\nAnn,Ash,1 High St,Hull,,,2\n",
                   Dialogs::Answer::Yes, summary);
        TestDatabase::Run({"UPDATE Contacts SET ReferenceID = '' WHERE ContactRef > 1"});
    }
    ImportState state(Exchange::ShippedMap());
    QVERIFY(Exchange::Choose(state, desk.File(lines)));
    StatementLog log;
    const std::optional<ImportCheck> check = state.Check(desk.progress);
    QVERIFY(check && !check->stopped);
    for (const QString &statement : log.Statements())
        QVERIFY2(statement.startsWith("SELECT "), qPrintable(statement));
    QTEST(Counts(*check), "counts");
    QCOMPARE(check->lines, check->fresh + check->changed + check->same + check->faulty);

    ImportWith(desk, lines, Dialogs::Answer::Yes, summary);
    QCOMPARE(summary, Exchange::Summary(check->fresh, check->changed, check->same + check->faulty));
}

void TestCsvCheck::NamesEveryFaultAndMendedLinesComeIn()
{
    Exchange desk;
    ImportState state(Exchange::ShippedMap());
    const QByteArray title(300, 'x');
    QVERIFY(Exchange::Choose(
        state, desk.File("Forename,Surname,Address,Date of Birth,Title\nAnn,Ash,1 High St,,\n"
                         "Ben,,2 Low St,\"so, \"\"soon\"\"\",\nCat,\"Cole,3 Mid St,,\nDan,Dale,4 St,,\"" +
                         title + QByteArray("\",more\n\nE\0ve,Elm,5 St,,\n", 24) +
                         "Zo\xC3\xAB,Ash,6 St,,\nCaf\xE9,Ash,6 St,,\n")));
    const std::optional<ImportCheck> check = state.Check(desk.progress);
    QVERIFY(check);
    QCOMPARE(Counts(*check), QStringLiteral("5 new, 0 changed, 0 same, 3 faulty"));
    QStringList faults;
    for (const ImportFault &fault : check->faults)
        faults.append(QString::number(fault.line) % u' ' % fault.Text());
    QStringList expected{
        "3 field 'Date of Birth': 'so, \"\"soon\"\"' is not a date (DD/MM/YYYY or YYYY-MM-DD)",
        "3 field 'Surname': '' is required",
        "4 'Cat,\"Cole,3 Mid St,,' has a quotation mark that is not closed",
        "5 field 'Title': '" + QString(40, u'x') + "...' has 300 characters, of which 255 fit",
        "5 'more' comes after the last field that the header names",
        "6 is empty",
        "7 field 'Forename': 'Eve' contains NUL characters, which are left out",
        "9 is not in UTF-8 like most of the file; please check its accents"};
    if (!TestDatabase::HasSizedTexts())
        expected.removeAt(3);
    QCOMPARE(faults, expected);
    QCOMPARE(check->lost, static_cast<int>(expected.size()) - 4);

    const QString file = desk.Path("faulty.csv");
    QVERIFY(state.SaveFaulty(file, desk.progress));
    QByteArray saved = ContentOf(file);
    QCOMPARE(saved,
             QByteArray("\xEF\xBB\xBF\"Line\",\"Fault\",Forename,Surname,Address,Date of Birth,Title\r\n"
                        "3,\"field 'Date of Birth': 'so, \"\"\"\"soon\"\"\"\"' is not a date "
                        "(DD/MM/YYYY or YYYY-MM-DD); field 'Surname': '' is required\",Ben,,2 Low St,"
                        "\"so, \"\"soon\"\"\",\r\n"
                        "4,\"'Cat,\"\"Cole,3 Mid St,,' has a quotation mark that is not closed\","
                        "Cat,\"Cole,3 Mid St,,\r\n"));
    saved.replace("Ben,,", "Ben,Birch,").replace("\"so, \"\"soon\"\"\"", "").replace(",\"Cole", ",Cole");
    desk.user.Expect("CSV Import", Exchange::Summary(2, 0, 0));
    QVERIFY(desk.ImportBytes(saved));
    QCOMPARE(TestDatabase::Rows("SELECT Cust_Forename, Cust_Surname FROM Contacts WHERE ContactRef > 1 ORDER "
                                "BY ContactRef"),
             (QStringList{"Ben|Birch", "Cat|Cole"}));

    desk.user.Expect("CSV Import", "Unable to write '/no/such/faulty.csv': No such file or directory.");
    QVERIFY(!state.SaveFaulty("/no/such/faulty.csv", desk.progress));
    WriteFile(state.FileName(), "Forename\nAnn\n");
    desk.user.Expect("CSV Import", u"The fields of '" % state.FileName() %
                                       u"' have changed since you chose it. Please choose the file again.");
    QVERIFY(!state.SaveFaulty(file, desk.progress));
}

/// The lines to mend are all saved, however many the list leaves out.
void TestCsvCheck::KeepsTheFirstFaultsAndCountsAll()
{
    Exchange desk;
    const int lines = static_cast<int>(mostFaultsKept);
    ImportState state(Exchange::ShippedMap());
    QVERIFY(Exchange::Choose(state,
                             desk.File("Forename,Surname,Address\n" + ("x," + QByteArray(2000, 'y') + "\n") +
                                       QByteArray("x,\n").repeated(lines - 1))));
    const std::optional<ImportCheck> check = state.Check(desk.progress);
    QVERIFY(check);
    QCOMPARE(check->faultCount, 2 * lines - 1);
    QCOMPARE(check->faults.size(), mostFaultsKept);
    QCOMPARE(check->faulty, lines);
    const QString file = desk.Path("faulty.csv");
    QVERIFY(state.SaveFaulty(file, desk.progress));
    QCOMPARE(ContentOf(file).count('\n'), lines + 1);
}

void TestCsvCheck::AsksAgainWhereTheFileChanged()
{
    Exchange desk;
    ImportState state(Exchange::ShippedMap());
    const QString file = desk.File(header + "Ann,Ash,1 High St,,,,\n");
    QVERIFY(Exchange::Choose(state, file) && state.MayRun());
    QVERIFY(state.Check(desk.progress) && state.MayRun());
    WriteFile(file, header + "Ann,Ash,1 High St,,,,\nBen,Birch,2 Low St,,,,\n");
    desk.user.Expect("CSV Import", u"'" % file % u"' has changed since it was checked.\nOkay to import?",
                     Dialogs::Answer::No);
    QVERIFY(!state.MayRun());
    QVERIFY(state.Check(desk.progress) && state.MayRun());
}

void TestCsvCheck::StopsAndFails()
{
    Exchange desk;
    ImportState state(Exchange::ShippedMap());
    QVERIFY(Exchange::Choose(state, Exchange::Sample()));
    RunWith stopping(10, [](Progress &run) { run.Cancel(); });
    const std::optional<ImportCheck> check = state.Check(stopping.run);
    QVERIFY(check && check->stopped);
    QCOMPARE(check->lines, 10);

    TestDatabase::Run({"DROP TABLE County"});
    desk.user.Expect("Veltrane Connection",
                     "A number of errors have been detected, please seek technical support.");
    desk.user.Expect("CSV Import",
                     u'\'' % Exchange::Sample() %
                         u"' was not checked, and nothing was changed: the query that csvmap.dat "
                         u"has for the table CONTACTS failed.");
    QVERIFY(!state.Check(desk.progress));
}

void TestCsvCheck::AnswersOnceForAll()
{
    using Dialogs::Answer;
    const QByteArray people("Forename,Surname,Address,Postcode\nAnn,Ash,1 High St,A1\nBen,Birch,2 Low St,B1\n"
                            "Cat,Cole,3 Mid St,C1\n");
    QByteArray moved = people;
    moved.replace("1\n", "2\n").append("Dan,Dale,4 New St,D1\n");
    for (const auto &[answer, asked, updated] :
         {std::tuple(Answer::Yes, 3, 3), std::tuple(Answer::YesToAll, 1, 3), std::tuple(Answer::No, 3, 0),
          std::tuple(Answer::NoToAll, 1, 0)}) {
        Exchange desk;
        QString summary;
        ImportWith(desk, people, answer, summary);
        QCOMPARE(ImportWith(desk, moved, answer, summary), asked);
        QCOMPARE(summary, Exchange::Summary(1, updated, 0));
        // The next run asks again.
        QCOMPARE(ImportWith(desk, people, answer, summary) > 0, updated > 0);
    }
}

QTEST_GUILESS_MAIN(TestCsvCheck)
#include "test_csvcheck.moc"
