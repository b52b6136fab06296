#include "core/session/Session.h"
#include "database/connection/ConnectDatabase.h"
#include "database/statements/MiscODBC.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"

#include <QTest>

#include <memory>

namespace
{
QString Quoted(const QString &value)
{
    return u'\'' % QString(value).replace(u"'"_qs, u"''"_qs) % u'\'';
}

QString InsertCity(const QString &name, const QString &reference = {})
{
    return u"INSERT INTO City (City, ReferenceID) VALUES (" % Quoted(name) % u"," % Quoted(reference) % u")";
}

bool Succeeds(const QString &sql)
{
    return gConnection.Execute(sql);
}

/// The values of a statement's rows, one after the other.
QString Read(const QString &sql)
{
    return TestDatabase::Rows(sql).join(u' ');
}
} // namespace

/// The two kinds of database answer alike. The whole runs on each.
class TestDatabases : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    void story()
    {
        StatementLog log;
        const QString insert = u"INSERT INTO Courses (Title, Description,Fee,Limit,ReferenceID) VALUES "
                               "('First Aid','',12.5,3,'FA')"_qs;
        QVERIFY(Succeeds(insert));
        QCOMPARE(log.Statements(), QStringList{insert});
        const QString key = TestDatabase::Value("SELECT * FROM Courses WHERE Title = 'First Aid'");
        QVERIFY(key.toInt() > 0);
        QVERIFY(Succeeds(u"UPDATE Courses SET Limit = 20 ,Fee = 100 WHERE CourseRef = " % key %
                         u"AND Limit = 3"));
        QCOMPARE(Read(u"SELECT Limit, FEE FROM Courses WHERE CourseRef = " % key), u"20|100"_qs);
        QCOMPARE(Read("SELECT TOP 1 Title FROM Courses ORDER BY Title DESC"), u"First Aid"_qs);
        QVERIFY(Succeeds(u"DELETE FROM [Courses] WHERE CourseRef = " % key % u";"));
        QCOMPARE(Read("SELECT * FROM Courses"), QString());

        // A key is not given a second time.
        QVERIFY(Succeeds(insert));
        QVERIFY(Read("SELECT CourseRef FROM Courses").toInt() > key.toInt());
    }

    void textComesBackWhole_data()
    {
        const TestTable<QString> row{"value"};
        row("empty", QString());
        row("apostrophes", "O'Neil ''s '");
        row("substitution marks", "%1 %2 %n %s %%");
        row("placeholders", "? :name $1 @p {ts '2020'} {call x}");
        row("backslashes", "C:\\new\\table\\");
        row("semicolons and comments", "a; b -- c /* d */ [e] \"f\" `g`");
        row("line ends", "one\r\ntwo\nthree\ttab");
        row("alphabets", "Žluťoučký Ærø Ελλάδα Привет 日本語 עברית");
        row("blanks around", "  x  ");
        row("10,000 beyond ASCII", u"é👍日x"_qs.repeated(2000));
        row("1 MB", u"A long line. "_qs.repeated(80'000));
    }
    void textComesBackWhole()
    {
        QFETCH(QString, value);
        const QString insert =
            u"INSERT INTO Reports (ReportName, Filename, SQLstring) VALUES ('r','f'," % Quoted(value) % u")";
        QVERIFY(Succeeds(insert));
        const auto rows = gConnection.OpenRecordset("SELECT SQLstring FROM Reports WHERE ReportName = 'R'");
        QCOMPARE(rows->RowCount(), 1);
        QVERIFY(rows->First().Text(u"SQLstring") == value);
        QVERIFY(!rows->First().IsNull(u"SQLstring"));
        QCOMPARE(
            TestDatabase::Rows(u"SELECT ReportRef FROM Reports WHERE SQLstring = " % Quoted(value)).size(),
            1);
    }

    void comparisonIgnoresCase_data()
    {
        const TestTable<QString, QString, bool> row{"stored", "condition", "matches"};
        row("same", "Leeds", "City = 'Leeds'", true);
        row("other case", "Leeds", "CITY = 'lEEDS'", true);
        row("beyond ASCII", "Écully", "City = 'éCULLY'", true);
        row("Greek", "ΑΘΗΝΑ", "City = 'αθηνα'", true);
        row("accent counts", "Écully", "City = 'Ecully'", false);
        row("like", "Leeds", "City LIKE '%EED%'", true);
        row("like, one character", "Leeds", "City LIKE 'l__ds'", true);
        row("like, too short", "Leeds", "City LIKE 'l_ds'", false);
        row("like beyond ASCII", "Écully", "City LIKE 'é%LLY'", true);
        row("not like beyond ASCII", "Écully", "City NOT LIKE 'é%'", false);
        row("like with apostrophe", "King's Lynn", "City LIKE '%G''S%'", true);
        row("like with backslash", "a\\b", "City LIKE '%\\%'", true);
        row("like with bracket", "a[b", "City LIKE 'A[%'", true);
        row("a bracket is no class", "ab", "City LIKE 'a[b]'", false);
        row("in a list", "Leeds", "City IN ('york', 'LEEDS')", true);
        row("not equal", "Leeds", "City <> 'LEEDS'", false);
        row("greater", "b", "City > 'A'", true);
    }
    void comparisonIgnoresCase()
    {
        QFETCH(QString, stored);
        QFETCH(QString, condition);
        QFETCH(bool, matches);
        QVERIFY(Succeeds(InsertCity(stored)));
        const QString sql = u"SELECT City_ID FROM City WHERE City_ID > 1 AND " % condition;
        QCOMPARE(TestDatabase::Rows(sql).size(), matches ? 1 : 0);
    }

    void valuesReadAsWhatTheyAre()
    {
        TestDatabase::Run(
            {"INSERT INTO Transactions (CourseRef, DateTrn, MoneyPaid, ChequePaid, CCardPaid, "
             "VouchersPaid, ReceiptNo, ContactRef, Vouchers1Label) VALUES (-7, 20050322, 1234567.89, 0.1, "
             "-3, "
             "1000000, '', NULL, NULL)",
             "INSERT INTO Organisations (OrganName, ReferenceID, Board) VALUES ('Body', 'B', 1)",
             "INSERT INTO GroupNames (Name, LinkRef) VALUES ('g', '5')",
             "INSERT INTO Venues (Description, ReferenceID) VALUES ('Hall', 'H')"});
        const auto rows = gConnection.OpenRecordset("SELECT * FROM Transactions");
        const Recordset::Row row = rows->First();
        QCOMPARE(row.Long(u"CourseRef"), -7);
        QCOMPARE(row.Double(u"MoneyPaid"), 1234567.89);
        QVERIFY(!row.IsNull(u"ReceiptNo"));
        QCOMPARE(row.Long(u"DATEtrn"), 20050322);
        QVERIFY2(row.IsNull(u"DateTrN\u0410") && row.IsNull(u"DateTr."),
                 "another name of nearly the same letters");
        for (const char16_t *column :
             {u"ContactRef", u"Vouchers1Label", u"Vouchers2Paid", u"no such column"}) {
            QVERIFY(row.IsNull(column) && row.Text(column).isEmpty());
            QVERIFY(row.Long(column) == 0 && row.Double(column) == 0);
        }
        QCOMPARE(Read("SELECT MoneyPaid, ChequePaid, CCardPaid, VouchersPaid FROM Transactions WHERE "
                      "CCardPaid>-4 AND DateTrn>= 20050322 AND MoneyPaid = 1234567.89"),
                 u"1234567.89|0.1|-3|1000000"_qs);
        QCOMPARE(Read("SELECT COUNT(*) FROM Transactions"), u"1"_qs);
        QCOMPARE(Read("SELECT OrganName FROM Organisations WHERE Board = 1"), u"Body"_qs);
        QCOMPARE(Read("SELECT LinkRef FROM GroupNames"), u"5"_qs);
        const auto twoNames =
            gConnection.OpenRecordset("SELECT Organisations.ReferenceID, Venues.* FROM Venues, Organisations "
                                      "WHERE Description = 'Hall' AND OrganName = 'Body'");
        QCOMPARE(twoNames->First().Text(u"ReferenceID"), u"B"_qs); // the first of one name
    }

    /// "" is stored by no engine.
    void wholeNumbersAreStoredAlike_data()
    {
        const TestTable<QString, QString> row{"value", "stored"};
        row("half", "12.5", "13");
        row("half below zero", "-12.5", "-13");
        row("below half", "0.49", "0");
        row("as a text", "'7'", "7");
        row("the greatest", "2147483647", "2147483647");
        row("the least", "-2147483648", "-2147483648");
        row("too great", "2147483648", "");
        row("too great when rounded", "2147483647.5", "");
        row("far too great", "99999999999999999999", "");
        row("fraction as a text", "'12.5'", "");
        row("no number", "'abc'", "");
    }
    void wholeNumbersAreStoredAlike()
    {
        QFETCH(QString, value);
        QFETCH(QString, stored);
        QCOMPARE(
            Succeeds(u"INSERT INTO Courses (Title, Limit, Fee) VALUES ('whole, (', " % value % u", 12.5)"),
            !stored.isEmpty());
        QCOMPARE(Read("SELECT Limit FROM Courses WHERE Fee = 12.5"), stored);
        QVERIFY(Succeeds("INSERT INTO Courses (Title, Limit) VALUES ('changed', 1)"));
        QCOMPARE(Succeeds(u"UPDATE Courses SET Fee = 1.5, Limit = " % value % u" WHERE Title = 'changed'"),
                 !stored.isEmpty());
        QCOMPARE(Read("SELECT Limit FROM Courses WHERE Title = 'changed'"),
                 stored.isEmpty() ? u"1"_qs : stored);
    }

    void thousandsOfAlternatives()
    {
        TestDatabase::Run({InsertCity("a"), InsertCity("b")});
        QString sql = u"SELECT City FROM City WHERE City_ID > 1 AND (City = 'b'"_qs;
        for (int i = 100; i < 20'100; ++i)
            sql += u" OR City.City_ID = " % QString::number(i);
        QCOMPARE(TestDatabase::Rows(sql % u" OR City = 'none') ORDER BY City ASC"), QStringList{u"b"_qs});
    }

    /// What an update moves about in a server's heap does not show.
    void rowsComeInKeyOrder()
    {
        for (const QString &name : {u"c"_qs, u"a"_qs, u"b"_qs})
            TestDatabase::Run({InsertCity(name)});
        TestDatabase::Run({"UPDATE City SET ReferenceID = 'x' WHERE City = 'c'"});
        QCOMPARE(Read("SELECT City FROM City WHERE City_ID > 1"), u"c a b"_qs);
        QCOMPARE(Read("SELECT TOP 1 City FROM City WHERE City_ID > 1"), u"c"_qs);
        QStringList towns;
        const auto take = [&](const Recordset &rows, int) {
            for (const Recordset::Row row : rows)
                towns.append(row.Text(u"City"));
            return true;
        };
        QVERIFY(gConnection.ReadInPieces(u"SELECT City FROM City WHERE City_ID > 1"_qs, take));
        QCOMPARE(towns.join(u' '), u"c a b"_qs);
    }

    /// A table without a key gives its rows as they were stored, even where the place of a deleted row was
    /// taken by a later one.
    void rowsWithoutKeyComeAsStored()
    {
        const auto link = [](int course, int folder) {
            return u"INSERT INTO CoursesRelationships (CourseRef,CourseHierarchyRef) VALUES (%1,%2)"_qs
                .arg(course)
                .arg(folder);
        };
        {
            WriteGroup group(gConnection);
            for (int folder = 9; folder > 4; --folder)
                QVERIFY(Succeeds(link(1, folder)));
            QVERIFY(group.Finish());
        }
        QVERIFY(Succeeds("DELETE FROM CoursesRelationships WHERE CourseHierarchyRef > 7"));
        if (TestDatabase::IsOnServer())
            QVERIFY(Succeeds("VACUUM CoursesRelationships"));
        for (const int folder : {3, 4})
            QVERIFY(Succeeds(link(1, folder)));
        QCOMPARE(Read("SELECT CourseHierarchyRef FROM CoursesRelationships WHERE CourseRef = 1"),
                 u"7 6 5 3 4"_qs);
    }

    void nestedReadsAndWrites()
    {
        for (int i = 0; i < 20; ++i)
            QVERIFY(Succeeds(InsertCity(u"c" % QString::number(i))));
        const QString all = u"SELECT City_ID, City FROM City WHERE City_ID > 1 ORDER BY City_ID"_qs;
        int rows = 0;
        const auto outer = gConnection.OpenRecordset(all);
        for (const auto &city : *outer) {
            const QString key = city.Text(u"City_ID");
            const auto inner = gConnection.OpenRecordset(all);
            QCOMPARE(inner->At(rows).Text(u"City"), city.Text(u"City"));
            QVERIFY(Succeeds(u"UPDATE City SET ReferenceID = 'r" % key % u"' WHERE City_ID = " % key));
            QVERIFY(Succeeds(InsertCity(u"n" % key)));
            if (rows == 10)
                QVERIFY(Succeeds("ALTER TABLE City ADD Twin INT"));
            ++rows;
        }
        QCOMPARE(rows, 20);
        QCOMPARE(gConnection.OpenRecordset(all)->RowCount(), 40);
        QCOMPARE(gConnection.OpenRecordset("SELECT * FROM City")->ColumnIndex(u"Twin"), 3);
    }

    /// Every engine would put some of these after "Zoe", and a server's order of the others is its own.
    void namesInTheOrderOfATelephoneBook()
    {
        for (const char *name :
             {"Zoe", "Zoë", "Luke", "Łysy", "östlund", "O'Neil", "Oz", "Ångström", "andy", "Éa"})
            QVERIFY(Succeeds(InsertCity(QString::fromUtf8(name))));
        const QString sql = u"SELECT City FROM City WHERE City_ID > 1 ORDER BY City"_qs;
        const QString sorted = u"andy Ångström Éa Luke Łysy O'Neil östlund Oz Zoe Zoë"_qs;
        QCOMPARE(Read(sql), sorted);
        QCOMPARE(Read(sql % u" ASC;"), sorted);
    }

    /// A long result is handed over piece by piece, while other statements run, of more kinds than are kept.
    void resultsInPieces()
    {
        {
            const WriteGroup group(gConnection);
            for (int i = 0; i < 2000; ++i)
                QVERIFY(Succeeds(InsertCity(u"Town " % QString::number(10'000 + i))));
        }
        const QString sql = u"SELECT City FROM City WHERE City_ID > 1 ORDER BY City;"_qs;
        QStringList towns;
        int pieces = 0;
        const auto take = [&](const Recordset &rows, int firstRow) {
            if (firstRow != towns.size())
                return false;
            for (const Recordset::Row row : rows)
                towns.append(row.Text(u"City"));
            pieces += rows.IsEmpty() ? 0 : 1;
            for (int shape = 0; pieces == 1 && shape < 320; ++shape)
                gConnection.OpenRecordset(u"SELECT City AS c" % QString::number(shape) %
                                          u" FROM City WHERE City_ID = 1");
            return rows.IsEmpty() || Succeeds("DELETE FROM City WHERE City_ID = 1");
        };
        QVERIFY(gConnection.ReadInPieces(sql, take));
        QCOMPARE(towns, TestDatabase::Rows(sql));
        QCOMPARE(towns.size(), 2000);
        QCOMPARE(pieces > 2, gConnection.Kind() != DatabaseKind::SqlServer); // it hands over all at once

        // The first refusal ends it, and a result without rows is handed over once.
        int calls = 0;
        QVERIFY(gConnection.ReadInPieces(sql, [&](const Recordset &, int) { return ++calls < 2; }));
        QCOMPARE(calls, 2);
        calls = 0;
        const auto count = [&](const Recordset &rows, int) { return rows.IsEmpty() && ++calls > 0; };
        QVERIFY(gConnection.ReadInPieces(u"SELECT * FROM City WHERE City_ID = -1"_qs, count));
        QCOMPARE(calls, 1);
        QVERIFY(!gConnection.ReadInPieces(u"SELECT * FROM City WHERE City = 'O'Neil'"_qs, count));
        QCOMPARE(calls, 1);
    }

    void nothingTypedChangesTheStatement_data()
    {
        const TestTable<QString> row{"typed"};
        row("second statement", "x'; DELETE FROM City; --");
        row("always true", "' OR '1'='1");
        row("backslash before the apostrophe", "\\'; DELETE FROM City; --");
        row("typographic apostrophes", "’ʼ＇; DELETE FROM City");
        row("end of text", u"a"_qs + QChar(u'\0') + u"'; DELETE FROM City"_qs);
        row("half a surrogate pair", u"a"_qs + QChar(0xD800) + u"'b"_qs);
    }
    void nothingTypedChangesTheStatement()
    {
        QFETCH(QString, typed);
        QVERIFY(Succeeds(InsertCity(typed, "kept")));
        const QString condition = u"City = " % Quoted(typed) % u" AND City_ID > 1";
        QCOMPARE(TestDatabase::Rows(u"SELECT ReferenceID FROM City WHERE " % condition),
                 QStringList{u"kept"_qs});
        QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM City"), u"2"_qs);

        // Where a text did reach a statement unescaped, the statement fails as a whole.
        QVERIFY(!Succeeds("UPDATE City SET ReferenceID = 'x'; DELETE FROM City"));
        QVERIFY(!Succeeds("UPDATE City SET ReferenceID = 'x' WHERE City = 'O'Neil'"));
        QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM City WHERE ReferenceID = 'kept'"), u"1"_qs);
    }

    void failureInAGroupKeepsWhatWasDone()
    {
        {
            WriteGroup group(gConnection);
            const WriteGroup inner(gConnection);
            QVERIFY(Succeeds(InsertCity("before")));
            QVERIFY(!Succeeds("INSERT INTO NoSuchTable (A) VALUES (1)"));
            QVERIFY(!gConnection.Errors().first().description.isEmpty());
            QVERIFY(!Succeeds("INSERT INTO City (City_ID, City) VALUES (1, 'taken')"));
            QVERIFY(!gConnection.OpenRecordset("SELECT Nothing FROM City"));
            QVERIFY(Succeeds(InsertCity("after")));
            QVERIFY(group.Tick());
        }
        QVERIFY(m_database->Reconnect());
        QCOMPARE(Read("SELECT City FROM City WHERE City_ID > 1 ORDER BY City"), u"after before"_qs);
    }

    void groupCommitsInTime()
    {
        Connection other;
        QVERIFY(other.Open(m_database->ConnectionText()));
        const auto seen = [&other](const QString &name) {
            const QString sql = u"SELECT City FROM City WHERE City = '" % name % u"'";
            return other.OpenRecordset(sql)->RowCount() == 1;
        };
        WriteGroup group(gConnection);
        QVERIFY(Succeeds(InsertCity("one")));
        QVERIFY(group.Tick());
        QVERIFY(!seen(u"one"_qs));
        QTest::qSleep(260);
        QVERIFY(group.Tick());
        QVERIFY(seen(u"one"_qs));
        QVERIFY(Succeeds(InsertCity("two")));
        QVERIFY(!seen(u"two"_qs));
        QVERIFY(WriteGroup::CommitRunning());
        QVERIFY(seen(u"two"_qs));
        QVERIFY(Succeeds(InsertCity("three")));
        QVERIFY(group.Finish());
        QVERIFY(seen(u"three"_qs));
        QVERIFY(Succeeds(InsertCity("four")));
        QVERIFY(group.Undo());
        QVERIFY(group.Undo()); // nothing is left to take back
        QVERIFY(Succeeds(InsertCity("five")));
        QVERIFY(group.Finish());
        QVERIFY(!seen("four") && seen("five"));
    }

    /// A server reads on as it is; the file engine holds still, until this connection writes or asks.
    void snapshotHoldsStillAndNobodyBack()
    {
        Connection other;
        QVERIFY(other.Open(m_database->ConnectionText()));
        const auto cities = [] { return Read("SELECT COUNT(*) FROM City WHERE City_ID > 1").toInt(); };
        for (const bool bySelf : {true, false}) {
            QVERIFY(Succeeds("DELETE FROM City WHERE City_ID > 1"));
            const ReadSnapshot snapshot(gConnection);
            const ReadSnapshot inner(gConnection);
            QCOMPARE(cities(), 0);
            QVERIFY2(other.Execute(InsertCity("one")), "another workstation waits for a reader");
            QCOMPARE(cities(), TestDatabase::IsOnServer() ? 1 : 0);
            if (bySelf)
                QVERIFY(Succeeds(InsertCity("two")));
            else
                ReadSnapshot::EndRunning();
            QCOMPARE(cities(), bySelf ? 2 : 1);
        }
        QVERIFY(other.Execute(InsertCity("three"))); // nothing is held any more
    }

    /// An older database is brought up with its rows kept; a second run changes nothing.
    void schemaPatch()
    {
        TestDatabase::Run(
            {"DROP TABLE Version", "DROP INDEX IX_GroupNames_LinkRef", "DROP INDEX IX_AwardNames_Board",
             "ALTER TABLE CreditCardTransaction DROP COLUMN VCode",
             "ALTER TABLE Organisations DROP COLUMN Board", "ALTER TABLE GroupNames DROP COLUMN LinkRef",
             "ALTER TABLE AwardNames DROP COLUMN Board", "ALTER TABLE AwardNames ADD ExamBoard Text(50)",
             "INSERT INTO AwardNames (AwardName, ExamBoard) VALUES ('Cookery', 'Board of Cooks')"});
        for (int run = 0; run < 2; ++run) {
            UpgradeDatabase();
            for (const auto &[table, column] : {std::pair{"AwardNames", u"Board"},
                                                {"Organisations", u"Board"},
                                                {"GroupNames", u"LinkRef"},
                                                {"Version", u"DBVersion"}}) {
                const auto rows = gConnection.OpenRecordset(u"SELECT * FROM " % QLatin1String(table));
                QVERIFY2(rows && rows->ColumnIndex(column) >= 0 && rows->ColumnIndex(u"ExamBoard") < 0,
                         table);
            }
            QCOMPARE(GetDBVersion(), 0.0); // no statement puts a row there
        }
        QCOMPARE(Read("SELECT AwardName FROM AwardNames"), u"Cookery"_qs);
        TestDatabase::Run({"INSERT INTO CreditCardTransaction (VCode) VALUES ('aBc')"});
        QCOMPARE(Read("SELECT VCode FROM CreditCardTransaction WHERE VCode = 'AbC'"), u"aBc"_qs);
    }

    void columnsKnowTheirKind()
    {
        const auto rows = gConnection.OpenRecordset("SELECT * FROM Transactions, Contacts, Organisations");
        const auto column = [&rows](const char16_t *name) { return rows->Column(rows->ColumnIndex(name)); };
        QCOMPARE(column(u"DateTrn").type, ColumnType::Integer);
        QCOMPARE(column(u"MoneyPaid").type, ColumnType::Double);
        QCOMPARE(column(u"ReceiptNo").type, ColumnType::VarWChar);
        QCOMPARE(column(u"Board").type, ColumnType::SmallInt);
        QVERIFY(column(u"Cust_Notes").definedSize >= 10'000);
        QVERIFY(column(u"Cust_Forename").definedSize >= 255);
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_GUILESS_MAIN(TestDatabases)
#include "test_databases.moc"
