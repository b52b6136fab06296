#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "exchange/Exchange.h"
#include "exchange/csv/ReportQuery.h"
#include "exchange/csv/TableFixODBC.h"
#include "exchange/import/CsvImport.h"
#include "exchange/import/ImportColumn.h"
#include "support/StatementLog.h"

#include <QRegularExpression>
#include <QTest>

namespace
{
const QString programFailed =
    QStringLiteral("A number of errors have been detected, please seek technical support.");
const QString importFailed = QStringLiteral("Import failed, maybe an invalid SQL query was passed.");
} // namespace

/// Imports into a real database through the shipped map, as the wizard does.
class TestCsvImport final : public QObject
{
    Q_OBJECT

private slots:
    void SamplePeopleComeIn();
    void StatementsOfOneLine();
    void CleanUpMendsWhatFilesLeftOut();
    void LinesAreCounted();
    void OrganisationsHaveTheirOwnLookups();
    void TextsNeverChangeAStatement();
    void CutsBetweenWholeCharacters();
    void Dates();
    void RefusedLinesAreNamedOnce();
    void ChangedValuesAreReported();
    void WhatTheDatabaseDoesNotTake_data();
    void WhatTheDatabaseDoesNotTake();
    void RefusesQueriesThatAreNoDataSet();
    void FilesThatCannotBeImported();
};

void TestCsvImport::SamplePeopleComeIn()
{
    Exchange desk;
    desk.user.Expect("CSV Import", Exchange::Summary(500, 0, 0));
    QVERIFY(desk.Import(Exchange::Sample()));
    QCOMPARE(Exchange::Count("Contacts"), 501);
    QCOMPARE(Exchange::Count("Organisations"), 175);
    QCOMPARE(Exchange::Count("City"), 113);
    QCOMPARE(Exchange::Count("County"), 27);
    QCOMPARE(
        TestDatabase::Rows(
            "SELECT Cust_Forename, Cust_Surname, Organisations.OrganName, City.City, County.County, "
            "Cust_Country, Cust_Designation, ContactContactRef, Cust_TelDay, Cust_URL, "
            "Contacts.ReferenceID FROM ((Contacts INNER JOIN Organisations ON Contacts.OrganRef = "
            "Organisations.OrganRef) INNER JOIN City ON Cust_City = City_ID) INNER JOIN County ON "
            "Cust_County = County_ID WHERE Cust_Surname = 'McCready' AND Cust_Addr1 = '53 Garden Drive'"),
        QStringList{QString::fromUtf8("Zoë|McCready|Northlight Brewery & Sons|Heatherhurst|West Fellshire|"
                                      "1|1|1|01632 960802|http://www.northlightbrewerysons.example|")});
}

void TestCsvImport::StatementsOfOneLine()
{
    Exchange desk;
    const QString file = desk.File("Title,Surname,Forename,Address,City,Sex,Date of birth,Organisation\n"
                                   "Dr,O'Neil,Ann,1 High St,Ely,female,22/03/1965,Acme\n");
    desk.user.Expect("CSV Import", Exchange::Summary(1, 0, 0));
    StatementLog log;
    QVERIFY(desk.Import(file));
    const QString identity =
        "Cust_Surname = 'O''Neil' AND Cust_Forename = 'Ann' AND Cust_Addr1 = '1 High St'";
    const QStringList expected{
        "SELECT * FROM Designation WHERE Title= 'Dr'",
        "INSERT INTO Designation (Title) VALUES ('Dr')",
        "SELECT * FROM Designation WHERE Title= 'Dr'",
        "SELECT * FROM City WHERE City= 'Ely'",
        "INSERT INTO City (City) VALUES ('Ely')",
        "SELECT * FROM City WHERE City= 'Ely'",
        "SELECT * FROM Organisations WHERE OrganName= 'Acme'",
        "INSERT INTO Organisations (OrganName,Addr1) VALUES ('Acme','Not Known')",
        "SELECT * FROM Organisations WHERE OrganName= 'Acme'",
        "SELECT ContactRef FROM CONTACTS WHERE Cust_Designation = 2 AND " + identity +
            " AND Cust_City = 2 AND Cust_Sex = 1 AND Cust_DOB = 19650322 AND OrganRef = 2 AND ReferenceID = "
            "''",
        "SELECT ContactRef FROM CONTACTS WHERE " + identity + " AND ReferenceID = ''",
        "INSERT INTO CONTACTS (Cust_Designation,Cust_Surname,Cust_Forename,Cust_Addr1,Cust_City,Cust_Sex,"
        "Cust_DOB,OrganRef,ReferenceID) VALUES (2,'O''Neil','Ann','1 High St',2,1,19650322,2,'')"};
    QCOMPARE(log.Statements().mid(1, expected.size()), expected);

    log.Clear();
    desk.user.Expect("CSV Import", "'O''Neil','ann','1 high st' already exists.\nOkay to update?",
                     Dialogs::Answer::Yes);
    desk.user.Expect("CSV Import", Exchange::Summary(0, 1, 0));
    QVERIFY(desk.ImportBytes("Surname,Forename,Address,Title\nO'Neil,ann,1 high st,\n"));
    QVERIFY(log.Statements().contains("UPDATE CONTACTS SET Cust_Surname = 'O''Neil',Cust_Forename = 'ann',"
                                      "Cust_Addr1 = '1 high st',Cust_Designation = 1,ReferenceID = '' WHERE "
                                      "ContactRef = 2"));
}

void TestCsvImport::CleanUpMendsWhatFilesLeftOut()
{
    Exchange desk;
    TestDatabase::Run(
        {"INSERT INTO Contacts (Cust_Forename) VALUES ('half')",
         "INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_City, Cust_County, Cust_Country, "
         "Cust_Designation, Cust_EthnicGroup, OrganRef, ContactContactRef) VALUES ('Ben', 'Birch', "
         "NULL, NULL, NULL, NULL, NULL, NULL, NULL)",
         "INSERT INTO Organisations (OrganName, City, County, Country) VALUES ('Old', NULL, NULL, "
         "NULL)",
         "INSERT INTO Organisations (Addr1) VALUES ('nameless')"});
    desk.user.Expect("CSV Import", Exchange::Summary(1, 0, 0));
    StatementLog log;
    QVERIFY(desk.ImportBytes("Organisation,County\nAcme,\n", 1));
    const qsizetype insert = log.Statements().indexOf(QRegularExpression("^INSERT INTO ORGANISATIONS.*"));
    QCOMPARE(log.Statements().size() - insert, 14);
    QCOMPARE(TestDatabase::Rows("SELECT Cust_Forename, Cust_City, Cust_Country, Cust_Designation, "
                                "Cust_County, Cust_EthnicGroup, OrganRef, ContactContactRef FROM Contacts "
                                "WHERE ContactRef > 1"),
             QStringList{"Ben|1|1|1|1|1|1|1"});
    QCOMPARE(
        TestDatabase::Rows("SELECT OrganName, City, County, Country FROM Organisations WHERE OrganRef > 1 "
                           "ORDER BY OrganRef"),
        (QStringList{"Old|1|1|1", "Acme|1|1|1"}));
}

void TestCsvImport::LinesAreCounted()
{
    Exchange desk;
    const QByteArray header("Forename,Surname,Address,Postcode,Reference ID\n");
    const QString file = desk.File(header + "Ann,Ash,1 High St,A1,\n"
                                            "ANN,ash,1 High St,a1,\n"  // the same record
                                            "Ann,Ash,9 New St,A9,\n"   // moved: another one
                                            "Ann,Ash,1 High St,A1,R\n" // with a reference: another one
                                            "Ann,,1 High St,A2,\n"     // required field empty
                                            "\n,,,,\n"                 // all of them empty
                                            "Ben,Birch,2 Low St\n"     // short
                                            "Cat,Cole,3 Mid St,C1,,,\n");
    desk.user.Expect("CSV Import", Exchange::Summary(5, 0, 4));
    desk.user.Expect("CSV Import", u"1 line of '" % file.section('/', -1) %
                                       u"' was skipped because of its contents:\n"
                                       u"    Line 6, field 'Surname': '' is required.");
    QVERIFY(desk.Import(file));
    QCOMPARE(TestDatabase::Rows("SELECT ReferenceID FROM Contacts WHERE ContactRef > 1 ORDER BY ContactRef"),
             (QStringList{"", "", "R", "", ""}));
}

void TestCsvImport::OrganisationsHaveTheirOwnLookups()
{
    Exchange desk;
    desk.user.Expect("CSV Import", Exchange::Summary(2, 0, 0));
    QVERIFY(desk.ImportBytes(
        "Organisation,City,County,Country,Telephone\nAcme,Ely,Cambs,UK,1\nBolt,ELY,,UK,2\n", 1));
    QCOMPARE(
        TestDatabase::Rows(
            "SELECT OrganName, City.City, County, Organisations.City FROM Organisations INNER JOIN City ON "
            "Organisations.City = City_ID WHERE OrganRef > 1 ORDER BY OrganRef"),
        (QStringList{"Acme|Ely|2|2", "Bolt|Ely|1|2"}));
    QCOMPARE(TestDatabase::Rows("SELECT City FROM City ORDER BY City_ID"), (QStringList{"", "Ely"}));
}

void TestCsvImport::TextsNeverChangeAStatement()
{
    Exchange desk;
    const QStringList texts{"O'", "x'); DELETE FROM Contacts; --", "%1 [a] ; {b} \\ # ? * -- /* _",
                            "Zoë 😀 Łukasz", QString(1024 * 1024, 'y')};
    QByteArray lines("Forename,Surname,Address,Notes\n");
    for (const QString &text : texts)
        lines += QString(u"Ann,Ash," % QString::number(text.size()) % u",\"" % text % u"\"\n").toUtf8();
    desk.user.Expect("CSV Import", Exchange::Summary(static_cast<int>(texts.size()), 0, 0));
    QVERIFY(desk.ImportBytes(lines));
    QCOMPARE(TestDatabase::Rows("SELECT Cust_Notes FROM Contacts WHERE ContactRef > 1 ORDER BY ContactRef"),
             texts);
}

void TestCsvImport::CutsBetweenWholeCharacters()
{
    QCOMPARE(CutSafeText("abcd", 3), QString("abc"));
    QCOMPARE(CutSafeText("a'bc", 4), QString("a''b"));
    QCOMPARE(CutSafeText("ab'c", 3), QString("ab"));
    QCOMPARE(CutSafeText(QString(4, u'\''), 5), QString(4, u'\''));
    QCOMPARE(CutSafeText("ab😀", 3), QString("ab"));
    QCOMPARE(CutSafeText(QString(5000, 'x'), 0).size(), 5000);
}

void TestCsvImport::Dates()
{
    Exchange desk;
    for (const char *refused :
         {"29/02/2005", "03/22/2005", "22/3/2005", "22/03/05", "2005/03/22", "22/03/2005 10:00", "soon", "0"})
        QVERIFY2(!ImportedDate(QString(refused)).isValid(), refused);
    desk.user.Expect("CSV Import", Exchange::Summary(3, 0, 0));
    QVERIFY(desk.ImportBytes("Forename,Surname,Address,Date of Birth\nAnn,Ash,1 High St,29/02/2004\n"
                             "Ben,Birch,2 High St,2005-03-22\nCat,Cole,3 High St,\n"));
    QCOMPARE(TestDatabase::Rows("SELECT Cust_DOB FROM Contacts WHERE ContactRef > 1 ORDER BY ContactRef"),
             (QStringList{"20040229", "20050322", "0"}));
}

void TestCsvImport::RefusedLinesAreNamedOnce()
{
    Exchange desk;
    QByteArray lines("Forename,Surname,Address,City,Date of Birth\nAnn,Ash,1 High St,Ely,01/02/1990\n"
                     "Ben,\"Birch,2 High St,Newtown,01/02/1990\n");
    QString listed =
        "    Line 3: 'Ben,\"Birch,2 High St,Newtown,01/02/1990' has a quotation mark that is not "
        "closed.\n";
    for (int line = 4; line < 16; ++line) {
        lines += "Cat,Cole,3 High St,Oldtown,soon\n";
        if (line < 13)
            listed += u"    Line " % QString::number(line) %
                      u", field 'Date of Birth': 'soon' is not a date "
                      u"(DD/MM/YYYY or YYYY-MM-DD).\n";
    }
    lines += "Dan,Dale,4 High St,Ely,1990-02-01\n";
    const QString file = desk.File(lines);
    desk.user.Expect("CSV Import", Exchange::Summary(2, 0, 13));
    desk.user.Expect("CSV Import", u"13 lines of '" % file.section('/', -1) %
                                       u"' were skipped because of their contents:\n" % listed %
                                       u"    and 3 more.");
    QVERIFY(desk.Import(file));
    QCOMPARE(TestDatabase::Rows("SELECT City FROM City WHERE City_ID > 1"), QStringList{"Ely"});
}

void TestCsvImport::ChangedValuesAreReported()
{
    Exchange desk;
    if (!TestDatabase::HasSizedTexts())
        QSKIP("The columns of this server have no size.");
    const QByteArray longName(1300, 'n');
    const QString file =
        desk.File("Forename,Surname,Address,City\nAnn," + longName + ",1 High St," + longName + "\n");
    const QString cut = "'" + QString(40, 'n') + "...' has 1,300 characters, of which 255 fit.";
    desk.user.Expect("CSV Import", Exchange::Summary(1, 0, 0));
    desk.user.Expect("CSV Import", u"2 values of '" % file.section('/', -1) %
                                       u"' were not imported unchanged:\n    Line 2, field 'Surname': " %
                                       cut % u"\n    Line 2, field 'City': " % cut);
    QVERIFY(desk.Import(file));
    QCOMPARE(TestDatabase::Rows("SELECT Cust_Surname FROM Contacts WHERE ContactRef > 1").value(0).size(),
             255);
    QCOMPARE(TestDatabase::Rows("SELECT City FROM City WHERE City_ID > 1").value(0).size(), 255);
}

void TestCsvImport::WhatTheDatabaseDoesNotTake_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("told"); // "%1" is the record that it came to, "%2" the file
    const QString stopped =
        "The import stopped after record %1 of 401 of '%2'. What it had done so far stays "
        "in the database:\n0 Records where imported.\n";
    const QString skipped = " Records where updated.\n0 Records where skipped.";
    QTest::newRow("a table is gone") << "DROP TABLE City" << QString(stopped + "1" + skipped);
    if (TestDatabase::IsOnServer())
        return; // has a disk of its own, and locks rows
    QTest::newRow("the disk is full")
        << "PRAGMA max_page_count"
        << "The database could not store the last records before record %1 of 401 of '%2'. "
           "When it can again, import the file once more: records that are "
           "already there are skipped.";
    QTest::newRow("locked for longer than the wait") << "BEGIN IMMEDIATE" << QString(stopped + "0" + skipped);
}

/// The fault comes while the user looks at a question: at its first line the file asks one.
void TestCsvImport::WhatTheDatabaseDoesNotTake()
{
    Exchange desk;
    QFETCH(QString, fault);
    QFETCH(QString, told);
    QString text = desk.database.ConnectionText();
    QVERIFY(gConnection.Open(text.replace(";PWD=", ";LockWait=100;PWD=")));
    const QByteArray header("Forename,Surname,Address,City,Notes\n");
    desk.user.Expect("CSV Import", Exchange::Summary(1, 0, 0));
    QVERIFY(desk.ImportBytes(header + "Ann,Ash,1 High St,,\n"));
    QByteArray lines = header + "Ann,Ash,1 High St,,changed\n";
    for (int line = 1; line <= 400; ++line)
        lines += "Ben,Birch " + QByteArray::number(line) + ",2 Low St,Ely," + QByteArray(2000, 'x') + '\n';
    const QString file = desk.File(lines);

    Connection other;
    QVERIFY(other.Open(desk.database.ConnectionText()));
    bool isWell = false;
    QStringList boxes;
    Dialogs::Installed().msgBox = [&](const QString &box, auto...) {
        boxes.append(box.startsWith(programFailed) ? programFailed : box); // without the engine's advice
        if (!box.endsWith("Okay to update?") || isWell)
            return Dialogs::Answer::Yes;
        if (fault.startsWith("PRAGMA"))
            gConnection.OpenRecordset(
                fault % u" = " % QString::number(TestDatabase::Value("PRAGMA page_count").toInt() + 100));
        else
            other.Execute(fault);
        return Dialogs::Answer::Yes;
    };
    QVERIFY(!desk.Import(file));
    QCOMPARE(boxes.mid(1),
             (QStringList{programFailed, importFailed,
                          told.arg(QString::number(desk.progress.Value()), QFileInfo(file).fileName())}));
    QVERIFY(Exchange::Count("Contacts") < 402);
    if (fault.startsWith("DROP"))
        return;

    // Mended, the same file brings in all that is missing, once.
    isWell = true;
    other.Execute("ROLLBACK");
    gConnection.OpenRecordset("PRAGMA max_page_count = 100000");
    QVERIFY(desk.Import(file));
    QCOMPARE(Exchange::Count("Contacts"), 402);
    QCOMPARE(TestDatabase::Value("SELECT Cust_Notes FROM Contacts WHERE ContactRef = 2"), QString("changed"));
}

void TestCsvImport::RefusesQueriesThatAreNoDataSet()
{
    Exchange desk;
    const auto opens = [](const QString &sql) {
        return Reported("test", false, [&] { return OpenReportQuery(sql).has_value(); });
    };
    QVERIFY(opens("select * from City"));
    StatementLog log;
    for (const QString sql : {"SELECT * FROM [uSeRs]", "SELECT City AS Musers FROM City", "DELETE FROM City",
                              "SELECT* FROM City", ""}) {
        QVERIFY2(!opens(sql), qPrintable(sql));
        desk.user.Expect("CSV Import", programFailed);
        desk.user.Expect("CSV Import", importFailed);
        QVERIFY(!Import_CSV_File(desk.File("a\n1\n"), ListModel(), sql, "City_ID", "City", desk.progress));
    }
    QVERIFY(log.Statements().isEmpty());
}

void TestCsvImport::FilesThatCannotBeImported()
{
    Exchange desk;
    const auto refused = [&desk](const QString &file, const QString &complaint) {
        desk.user.Expect("CSV Import", QString(complaint).replace("%1", file));
        return !desk.Import(file);
    };
    QVERIFY(refused(desk.File("Forename,Surname,Address\r\n"), "No Records found to import."));
    for (const QByteArray &bytes : {QByteArray(""), QByteArray(5, '\0'), QByteArray("\nAnn,Ash,1 High St\n")})
        QVERIFY(refused(desk.File(bytes), "File contains no data."));
    QVERIFY(refused(desk.File(" , ,\"\"\nAnn,Ash,1 High St\n"), "No field header names found."));
    QVERIFY(refused(desk.File("Forename,\"Surname,Address\nAnn,Ash,1 High St\n"),
                    "Line 1 of '%1' has a quotation mark that is not closed."));
    QVERIFY(refused("/no/such.csv", "Unable to open '%1'."));
    QVERIFY(refused("/tmp", "Unable to open '%1'.\nIt is a folder."));
    QVERIFY(refused("/dev/zero", "Unable to open '%1'.\nIt is not a text file."));

    const QString file = desk.File("Forename,Surname,Address\nAnn,Ash,1 High St\n");
    ImportState state(Exchange::ShippedMap());
    QVERIFY(Exchange::Choose(state, file));
    WriteFile(file, "Surname,Forename,Address\nAsh,Ann,1 High St\n");
    desk.user.Expect("CSV Import", u"The fields of '" % file %
                                       u"' have changed since you chose it. Please choose the file again.");
    QVERIFY(!state.Run(desk.progress));
    QCOMPARE(Exchange::Count("Contacts"), 1);
}

QTEST_GUILESS_MAIN(TestCsvImport)
#include "test_csvimport.moc"
