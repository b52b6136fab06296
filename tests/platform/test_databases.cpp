#include "core/Session.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"

#include <QTest>

#include <memory>

namespace
{
QString Quoted(const QString &value)
{
    return u'\'' % QString(value).replace(QStringLiteral("'"), QStringLiteral("''")) % u'\'';
}

QString InsertCity(const QString &name, const QString &reference = {})
{
    return u"INSERT INTO City (City, ReferenceID) VALUES (" % Quoted(name) % u"," % Quoted(reference) % u")";
}

bool Execute(const QString &sql)
{
    return gConnection.Execute(sql);
}
} // namespace

/// The two kinds of database answer alike. The whole runs on each.
class TestDatabases : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    void story();
    void textComesBackWhole_data();
    void textComesBackWhole();
    void comparisonIgnoresCase_data();
    void comparisonIgnoresCase();
    void valuesReadAsWhatTheyAre();
    void firstOfSameNamedColumnsWins();
    void thousandsOfAlternatives();
    void nestedReadsAndWrites();
    void resultsInPieces();
    void nothingTypedChangesTheStatement_data();
    void nothingTypedChangesTheStatement();
    void failureInAGroupKeepsWhatWasDone();
    void groupCommitsInTime();
    void schemaPatch();
    void columnsKnowTheirKind();

private:
    std::unique_ptr<TestDatabase> m_database;
};

void TestDatabases::story()
{
    StatementLog log;
    const QString insert =
        QStringLiteral("INSERT INTO Courses (Title, Description,Fee,Limit,ReferenceID) VALUES "
                       "('First Aid','',12.5,3,'FA')");
    QVERIFY(Execute(insert));
    QCOMPARE(log.Statements(), QStringList{insert});
    const QString key =
        TestDatabase::Value(QStringLiteral("SELECT * FROM Courses WHERE Title = 'First Aid'"));
    QVERIFY(key.toInt() > 0);
    QVERIFY(Execute(u"UPDATE Courses SET Limit = 20 ,Fee = 100 WHERE CourseRef = " % key % u"AND Limit = 3"));
    const auto course = gConnection.OpenRecordset(u"SELECT Limit, FEE FROM Courses WHERE CourseRef = " % key);
    QCOMPARE(course->RowCount(), 1);
    QCOMPARE(course->First().Long(u"limit"), 20);
    QCOMPARE(course->First().Text(u"Fee"), QStringLiteral("100"));
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT TOP 1 Title FROM Courses ORDER BY Title DESC")),
             QStringLiteral("First Aid"));
    QVERIFY(Execute(u"DELETE FROM [Courses] WHERE CourseRef = " % key % u";"));
    QVERIFY(gConnection.OpenRecordset(QStringLiteral("SELECT * FROM Courses"))->IsEmpty());

    // A key is not given a second time.
    QVERIFY(Execute(insert));
    QVERIFY(TestDatabase::Value(QStringLiteral("SELECT CourseRef FROM Courses")).toInt() > key.toInt());
}

void TestDatabases::textComesBackWhole_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString();
    QTest::newRow("apostrophes") << QStringLiteral("O'Neil ''s '");
    QTest::newRow("substitution marks") << QStringLiteral("%1 %2 %n %s %%");
    QTest::newRow("placeholders") << QStringLiteral("? :name $1 @p {ts '2020'} {call x}");
    QTest::newRow("backslashes") << QStringLiteral("C:\\new\\table\\");
    QTest::newRow("semicolons and comments") << QStringLiteral("a; b -- c /* d */ [e] \"f\" `g`");
    QTest::newRow("line ends") << QStringLiteral("one\r\ntwo\nthree\ttab");
    QTest::newRow("alphabets") << QStringLiteral("Žluťoučký Ærø Ελλάδα Привет 日本語 עברית");
    QTest::newRow("emoji") << QStringLiteral("👩‍🎓 passed 🎉");
    QTest::newRow("blanks around") << QStringLiteral("  x  ");
    QTest::newRow("255") << QString(255, u'é');
    QTest::newRow("10,000") << QStringLiteral("0123456789").repeated(1000);
    QTest::newRow("10,000 beyond ASCII") << QStringLiteral("é👍日x").repeated(2000);
    QTest::newRow("1 MB") << QStringLiteral("A long line. ").repeated(80'000);
}

void TestDatabases::textComesBackWhole()
{
    QFETCH(QString, value);
    const QString insert =
        u"INSERT INTO Reports (ReportName, Filename, SQLstring) VALUES ('r','f'," % Quoted(value) % u")";
    QVERIFY(Execute(insert));
    const auto rows =
        gConnection.OpenRecordset(QStringLiteral("SELECT SQLstring FROM Reports WHERE ReportName = 'R'"));
    QCOMPARE(rows->RowCount(), 1);
    QVERIFY(rows->First().Text(u"SQLstring") == value);
    QVERIFY(!rows->First().IsNull(u"SQLstring"));
    QCOMPARE(TestDatabase::Rows(u"SELECT ReportRef FROM Reports WHERE SQLstring = " % Quoted(value)).size(),
             1);
}

void TestDatabases::comparisonIgnoresCase_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("condition");
    QTest::addColumn<bool>("matches");
    const auto row = [](const char *name, const char *stored, const char *condition, bool matches) {
        QTest::newRow(name) << QString::fromUtf8(stored) << QString::fromUtf8(condition) << matches;
    };
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
    row("in a list", "Leeds", "City IN ('york', 'LEEDS')", true);
    row("not equal", "Leeds", "City <> 'LEEDS'", false);
    row("greater", "b", "City > 'A'", true);
}

void TestDatabases::comparisonIgnoresCase()
{
    QFETCH(QString, stored);
    QFETCH(QString, condition);
    QFETCH(bool, matches);
    QVERIFY(Execute(InsertCity(stored)));
    const QString sql = u"SELECT City_ID FROM City WHERE City_ID > 1 AND " % condition;
    QCOMPARE(TestDatabase::Rows(sql).size(), matches ? 1 : 0);
}

void TestDatabases::valuesReadAsWhatTheyAre()
{
    TestDatabase::Run(
        {QStringLiteral("INSERT INTO Transactions (CourseRef, DateTrn, MoneyPaid, ChequePaid, CCardPaid, "
                        "VouchersPaid, ReceiptNo) VALUES (-7, 20050322, 1234567.89, 0.1, -3, 1000000, '')")});
    const auto rows = gConnection.OpenRecordset(QStringLiteral("SELECT * FROM Transactions"));
    const Recordset::Row row = rows->First();
    QCOMPARE(row.Long(u"CourseRef"), -7);
    QCOMPARE(row.Long(u"DateTrn"), 20050322);
    QCOMPARE(row.Double(u"MoneyPaid"), 1234567.89);
    QCOMPARE(row.Text(u"MoneyPaid"), QStringLiteral("1234567.89"));
    QCOMPARE(row.Text(u"ChequePaid"), QStringLiteral("0.1"));
    QCOMPARE(row.Text(u"CCardPaid"), QStringLiteral("-3"));
    QCOMPARE(row.Text(u"VouchersPaid"), QStringLiteral("1000000"));
    QVERIFY(!row.IsNull(u"ReceiptNo"));
    QCOMPARE(row.Long(u"DATEtrn"), 20050322);
    QVERIFY2(row.IsNull(u"DateTrN\u0410") && row.IsNull(u"DateTr."),
             "another name of nearly the same letters");
    for (const char16_t *column : {u"ContactRef", u"Vouchers1Label", u"Vouchers2Paid", u"no such column"}) {
        QVERIFY(row.IsNull(column));
        QCOMPARE(row.Text(column), QString());
        QCOMPARE(row.Long(column), 0);
        QCOMPARE(row.Double(column), 0.0);
    }
    QCOMPARE(
        TestDatabase::Rows(QStringLiteral("SELECT MoneyPaid FROM Transactions WHERE MoneyPaid = 1234567.89"))
            .size(),
        1);
    QCOMPARE(TestDatabase::Rows(QStringLiteral(
                 "SELECT DateTrn FROM Transactions WHERE CCardPaid>-4 AND DateTrn>= 20050322")),
             QStringList{QStringLiteral("20050322")});
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT COUNT(*) FROM Transactions")), QStringLiteral("1"));

    TestDatabase::Run(
        {QStringLiteral("INSERT INTO Organisations (OrganName, Board) VALUES ('Body', 1)"),
         QStringLiteral("INSERT INTO GroupNames (Name, LinkRef) VALUES ('g', '5')"),
         QStringLiteral("UPDATE CreditCardTransaction SET PaymentCleared = -1 WHERE CreditCardRef = 1")});
    QCOMPARE(TestDatabase::Rows(QStringLiteral("SELECT OrganName FROM Organisations WHERE Board = 1")),
             QStringList{QStringLiteral("Body")});
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT LinkRef FROM GroupNames")), QStringLiteral("5"));
}

void TestDatabases::firstOfSameNamedColumnsWins()
{
    TestDatabase::Run(
        {QStringLiteral("INSERT INTO Venues (Description, ReferenceID) VALUES ('Hall', 'H')"),
         QStringLiteral("INSERT INTO Organisations (OrganName, ReferenceID) VALUES ('Body', 'B')")});
    const auto rows = gConnection.OpenRecordset(
        QStringLiteral("SELECT Organisations.ReferenceID, Venues.* FROM Venues, Organisations "
                       "WHERE Description = 'Hall' AND OrganName = 'Body'"));
    QCOMPARE(rows->First().Text(u"ReferenceID"), QStringLiteral("B"));
    QCOMPARE(rows->First().Text(u"Description"), QStringLiteral("Hall"));
}

void TestDatabases::thousandsOfAlternatives()
{
    TestDatabase::Run({InsertCity(QStringLiteral("a")), InsertCity(QStringLiteral("b"))});
    QString sql = QStringLiteral("SELECT City FROM City WHERE City_ID > 1 AND (City = 'b'");
    for (int i = 100; i < 20'100; ++i)
        sql += u" OR City.City_ID = " % QString::number(i);
    QCOMPARE(TestDatabase::Rows(sql % u" OR City = 'none') ORDER BY City ASC"),
             QStringList{QStringLiteral("b")});
}

void TestDatabases::nestedReadsAndWrites()
{
    for (int i = 0; i < 20; ++i)
        QVERIFY(Execute(InsertCity(u"c" % QString::number(i))));
    const QString all = QStringLiteral("SELECT City_ID, City FROM City WHERE City_ID > 1 ORDER BY City_ID");
    int rows = 0;
    const auto outer = gConnection.OpenRecordset(all);
    for (const auto &city : *outer) {
        const QString key = city.Text(u"City_ID");
        const auto inner = gConnection.OpenRecordset(all);
        QCOMPARE(inner->At(rows).Text(u"City"), city.Text(u"City"));
        QVERIFY(Execute(u"UPDATE City SET ReferenceID = 'r" % key % u"' WHERE City_ID = " % key));
        QVERIFY(Execute(InsertCity(u"n" % key)));
        if (rows == 10)
            QVERIFY(Execute(QStringLiteral("ALTER TABLE City ADD Twin INT")));
        ++rows;
    }
    QCOMPARE(rows, 20);
    QCOMPARE(gConnection.OpenRecordset(all)->RowCount(), 40);
    QCOMPARE(gConnection.OpenRecordset(QStringLiteral("SELECT * FROM City"))->ColumnIndex(u"Twin"), 3);
}

/// A long result is handed over piece by piece, while other statements run, of more kinds than are kept.
void TestDatabases::resultsInPieces()
{
    {
        const WriteGroup group(gConnection);
        for (int i = 0; i < 2000; ++i)
            QVERIFY(Execute(InsertCity(u"Town " % QString::number(10'000 + i))));
    }
    const QString sql = QStringLiteral("SELECT City FROM City WHERE City_ID > 1 ORDER BY City;");
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
        return rows.IsEmpty() || Execute(QStringLiteral("DELETE FROM City WHERE City_ID = 1"));
    };
    QVERIFY(gConnection.ReadInPieces(sql, take));
    QCOMPARE(towns, TestDatabase::Rows(sql));
    QCOMPARE(towns.size(), 2000);
    if (!TestDatabase::IsOnServer())
        QVERIFY(pieces > 2);

    // The first refusal ends it, and a result without rows is handed over once.
    int calls = 0;
    QVERIFY(gConnection.ReadInPieces(sql, [&](const Recordset &, int) { return ++calls < 2; }));
    QCOMPARE(calls, 2);
    calls = 0;
    const auto count = [&](const Recordset &rows, int) { return rows.IsEmpty() && ++calls > 0; };
    QVERIFY(gConnection.ReadInPieces(QStringLiteral("SELECT * FROM City WHERE City_ID = -1"), count));
    QCOMPARE(calls, 1);
    QVERIFY(!gConnection.ReadInPieces(QStringLiteral("SELECT * FROM City WHERE City = 'O'Neil'"), count));
    QCOMPARE(calls, 1);
}

void TestDatabases::nothingTypedChangesTheStatement_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("second statement") << QStringLiteral("x'; DELETE FROM City; --");
    QTest::newRow("always true") << QStringLiteral("' OR '1'='1");
    QTest::newRow("backslash before the apostrophe") << QStringLiteral("\\'; DELETE FROM City; --");
    QTest::newRow("typographic apostrophes") << QStringLiteral("’ʼ＇; DELETE FROM City");
    QTest::newRow("end of text") << QStringLiteral("a") + QChar(u'\0') +
                                        QStringLiteral("'; DELETE FROM City");
    QTest::newRow("half a surrogate pair") << QStringLiteral("a") + QChar(0xD800) + QStringLiteral("'b");
}

void TestDatabases::nothingTypedChangesTheStatement()
{
    QFETCH(QString, typed);
    QVERIFY(Execute(InsertCity(typed, QStringLiteral("kept"))));
    const QString condition = u"City = " % Quoted(typed) % u" AND City_ID > 1";
    QCOMPARE(TestDatabase::Rows(u"SELECT ReferenceID FROM City WHERE " % condition),
             QStringList{QStringLiteral("kept")});
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT COUNT(*) FROM City")), QStringLiteral("2"));

    // Where a text did reach a statement unescaped, the statement fails as a whole.
    QVERIFY(!Execute(QStringLiteral("UPDATE City SET ReferenceID = 'x'; DELETE FROM City")));
    QVERIFY(!Execute(QStringLiteral("UPDATE City SET ReferenceID = 'x' WHERE City = 'O'Neil'")));
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT COUNT(*) FROM City WHERE ReferenceID = 'kept'")),
             QStringLiteral("1"));
}

void TestDatabases::failureInAGroupKeepsWhatWasDone()
{
    {
        WriteGroup group(gConnection);
        const WriteGroup inner(gConnection);
        QVERIFY(Execute(InsertCity(QStringLiteral("before"))));
        QVERIFY(!Execute(QStringLiteral("INSERT INTO NoSuchTable (A) VALUES (1)")));
        QVERIFY(!gConnection.Errors().first().description.isEmpty());
        QVERIFY(!Execute(QStringLiteral("INSERT INTO City (City_ID, City) VALUES (1, 'taken')")));
        QVERIFY(!gConnection.OpenRecordset(QStringLiteral("SELECT Nothing FROM City")));
        QVERIFY(Execute(InsertCity(QStringLiteral("after"))));
        QVERIFY(group.Tick());
    }
    Connection other;
    QVERIFY(other.Open(m_database->ConnectionText()));
    QCOMPARE(other.OpenRecordset(QStringLiteral("SELECT City FROM City WHERE City IN ('before', 'after')"))
                 ->RowCount(),
             2);
}

void TestDatabases::groupCommitsInTime()
{
    Connection other;
    QVERIFY(other.Open(m_database->ConnectionText()));
    const auto seen = [&other](const QString &name) {
        const QString sql = u"SELECT City FROM City WHERE City = '" % name % u"'";
        return other.OpenRecordset(sql)->RowCount() == 1;
    };
    WriteGroup group(gConnection);
    QVERIFY(Execute(InsertCity(QStringLiteral("one"))));
    QVERIFY(group.Tick());
    QVERIFY(!seen(QStringLiteral("one")));
    QTest::qSleep(260);
    QVERIFY(group.Tick());
    QVERIFY(seen(QStringLiteral("one")));
    QVERIFY(Execute(InsertCity(QStringLiteral("two"))));
    QVERIFY(!seen(QStringLiteral("two")));
    QVERIFY(WriteGroup::CommitRunning());
    QVERIFY(seen(QStringLiteral("two")));
    QVERIFY(Execute(InsertCity(QStringLiteral("three"))));
    QVERIFY(group.Finish());
    QVERIFY(seen(QStringLiteral("three")));
    QVERIFY(Execute(InsertCity(QStringLiteral("four"))));
    QVERIFY(group.Undo());
    QVERIFY(group.Undo()); // nothing is left to take back
    QVERIFY(Execute(InsertCity(QStringLiteral("five"))));
    QVERIFY(group.Finish());
    QVERIFY(!seen(QStringLiteral("four")));
    QVERIFY(seen(QStringLiteral("five")));
}

/// An older database, brought up by the statements of both engines' forms; a second run changes nothing.
void TestDatabases::schemaPatch()
{
    TestDatabase::Run({QStringLiteral("DROP TABLE Version"),
                       QStringLiteral("ALTER TABLE CreditCardTransaction DROP COLUMN VCode"),
                       QStringLiteral("ALTER TABLE AwardNames ADD ExamBoard Text(50)")});
    const QStringList patch{
        QStringLiteral("ALTER TABLE AwardNames DROP COLUMN ExamBoard"),
        QStringLiteral("CREATE TABLE [Version]"),
        QStringLiteral("ALTER TABLE [Version] ADD DBVersion FLOAT"),
        TestDatabase::IsOnServer()
            ? QStringLiteral("ALTER TABLE [CreditCardTransaction] ADD VCode nvarchar(255) null")
            : QStringLiteral("ALTER TABLE [CreditCardTransaction] ADD VCode Text(255)"),
    };
    for (int run = 0; run < 2; ++run) {
        for (const QString &sql : patch)
            gConnection.Execute(sql);
        QVERIFY(Execute(QStringLiteral("UPDATE [Version] SET DBVersion=3")));
    }
    QVERIFY(Execute(QStringLiteral("INSERT INTO [Version] (DBVersion) VALUES (3)")));
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT DBVersion FROM Version")), QStringLiteral("3"));
    TestDatabase::Run({QStringLiteral("INSERT INTO CreditCardTransaction (VCode) VALUES ('aBc')")});
    QCOMPARE(
        TestDatabase::Value(QStringLiteral("SELECT VCode FROM CreditCardTransaction WHERE VCode = 'AbC'")),
        QStringLiteral("aBc"));
    QCOMPARE(gConnection.OpenRecordset(QStringLiteral("SELECT * FROM AwardNames"))->ColumnIndex(u"ExamBoard"),
             -1);
}

void TestDatabases::columnsKnowTheirKind()
{
    const auto rows =
        gConnection.OpenRecordset(QStringLiteral("SELECT * FROM Transactions, Contacts, Organisations"));
    const auto typeOf = [&rows](const char16_t *name) { return rows->Column(rows->ColumnIndex(name)).type; };
    QCOMPARE(typeOf(u"DateTrn"), ColumnType::Integer);
    QCOMPARE(typeOf(u"MoneyPaid"), ColumnType::Double);
    QCOMPARE(typeOf(u"ReceiptNo"), ColumnType::VarWChar);
    QCOMPARE(typeOf(u"Cust_Notes"), ColumnType::VarWChar);
    QCOMPARE(typeOf(u"Board"), ColumnType::SmallInt);
    QVERIFY(rows->Column(rows->ColumnIndex(u"Cust_Notes")).definedSize >= 10'000);
    const int forename = rows->Column(rows->ColumnIndex(u"Cust_Forename")).definedSize;
    QVERIFY(forename >= 255);
}

QTEST_GUILESS_MAIN(TestDatabases)
#include "test_databases.moc"
