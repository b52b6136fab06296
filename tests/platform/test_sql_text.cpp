#include "platform/sql/SqlDialect.h"
#include "platform/sql/SqlKeyOrder.h"
#include "platform/sql/SqlShape.h"
#include "support/TestTable.h"

#include <QTest>

/// A statement as the system writes it and as each engine gets it.
class TestSqlText : public QObject
{
    Q_OBJECT

private slots:
    void dialects_data()
    {
        const TestTable<QString, QString, QString> row{"sql", "file", "postgreSql"};
        const auto same = [&row](const char *name, const QString &sql, const QString &both) {
            row(name, sql, both, both);
        };

        same("plain", "SELECT * FROM Users ORDER BY UserName ASC",
             "SELECT * FROM Users ORDER BY UserName ASC");
        same("closing semicolon", "SELECT * FROM Ref;", "SELECT * FROM Ref");
        same("number run on", "WHERE ExamRef = 5AND ContactRef = 7", "WHERE ExamRef = 5 AND ContactRef = 7");
        same("text run on", "WHERE A = 'x'AND B = 'y'OR C=1", "WHERE A = 'x' AND B = 'y' OR C=1");
        same("exponent", "WHERE A = 1e3 AND B = 2.5E-7OR C = .5", "WHERE A = 1e3 AND B = 2.5E-7 OR C = .5");
        same("two minus signs", "SET A = 5--3 WHERE B = 1", "SET A = 5- -3 WHERE B = 1");
        same("no comments", "SELECT 1 /* x */ --y", "SELECT 1 / * x * / - -y");
        row("reserved column", "SELECT Limit FROM Courses WHERE Courses.Limit > 3",
            "SELECT \"Limit\" FROM Courses WHERE Courses.\"Limit\" > 3",
            "SELECT \"limit\" FROM Courses WHERE Courses.\"limit\" > 3");
        row("reserved column in a list",
            "INSERT INTO Courses (Title,Fee,Limit,ReferenceID) VALUES ('Limit',1,2,'')",
            "INSERT INTO Courses (Title,Fee,\"Limit\",ReferenceID) VALUES ('Limit',1,2,'')",
            "INSERT INTO Courses (Title,Fee,\"limit\",ReferenceID) VALUES ('Limit',1,2,'')");
        same("keywords in a text", "SELECT A FROM B WHERE C = 'SELECT TOP 5 [x] Limit 5AND -- '",
             "SELECT A FROM B WHERE C = 'SELECT TOP 5 [x] Limit 5AND -- '");
        same("first rows", "SELECT TOP 1 AwardRef FROM Awards WHERE ExamRef = 4",
             "SELECT AwardRef FROM Awards WHERE ExamRef = 4 LIMIT 1");
        same("first rows, distinct, inside",
             "SELECT A FROM (SELECT DISTINCT TOP 3 A FROM B ORDER BY A) C WHERE A = 1",
             "SELECT A FROM (SELECT DISTINCT A FROM B ORDER BY A LIMIT 3) C WHERE A = 1");
        same("a column named Top", "SELECT Top FROM Shelf", "SELECT Top FROM Shelf");
        row("bracketed name", "UPDATE [Version] SET DBVersion=3", "UPDATE \"Version\" SET DBVersion=3",
            "UPDATE \"version\" SET DBVersion=3");
        row("quotes in a name", "SELECT [a\"b] FROM [x]]y]", "SELECT \"a\"\"b\" FROM \"x]y\"",
            "SELECT \"a\"\"b\" FROM \"x]y\"");
        row("table without columns", "CREATE TABLE [Version]", "CREATE TABLE \"Version\" (DBVersion DOUBLE)",
            "CREATE TABLE \"version\" ()");
        row("flag column", "ALTER TABLE Organisations ADD Board BIT",
            "ALTER TABLE Organisations ADD Board SMALLINT", "ALTER TABLE Organisations ADD Board smallint");
        row("double column", "ALTER TABLE [Version] ADD DBVersion FLOAT",
            "ALTER TABLE \"Version\" ADD DBVersion DOUBLE",
            "ALTER TABLE \"version\" ADD DBVersion double precision");
        row("whole column", "ALTER TABLE [GroupNames] ADD LinkRef INT",
            "ALTER TABLE \"GroupNames\" ADD LinkRef INTEGER",
            "ALTER TABLE \"groupnames\" ADD LinkRef integer");
        row("text column", "ALTER TABLE [T] ADD VCode Text(255)",
            "ALTER TABLE \"T\" ADD VCode VARCHAR(255) COLLATE NOCASE", "ALTER TABLE \"t\" ADD VCode citext");
        row("text column for servers", "ALTER TABLE [T] ADD COLUMN VCode nvarchar(255) null",
            "ALTER TABLE \"T\" ADD COLUMN VCode VARCHAR(255) COLLATE NOCASE null",
            "ALTER TABLE \"t\" ADD COLUMN VCode citext null");
        same("column removed", "ALTER TABLE AwardNames DROP COLUMN ExamBoard",
             "ALTER TABLE AwardNames DROP COLUMN ExamBoard");
        row("pattern with backslash", "SELECT A FROM B WHERE A LIKE '%\\%' AND B = '\\'",
            "SELECT A FROM B WHERE A LIKE '%\\%' AND B = '\\'",
            "SELECT A FROM B WHERE A LIKE '%\\\\%' AND B = '\\'");
        row("pattern beyond ASCII", "SELECT A FROM B WHERE A NOT LIKE 'é%'",
            "SELECT A FROM B WHERE A NOT REGEXP 'é%'", "SELECT A FROM B WHERE A NOT LIKE 'é%'");
    }
    void dialects()
    {
        QFETCH(QString, sql);
        QFETCH(QString, file);
        QFETCH(QString, postgreSql);
        SqlTokens tokens;
        QCOMPARE(tokens.Read(sql), SqlFault::None);
        QCOMPARE(SqlFor(SqlDialect::File, tokens), file);
        QCOMPARE(SqlFor(SqlDialect::PostgreSql, tokens), postgreSql);
    }

    /// "$" stands for eight terms `A.R = 1` to `A.R = 8`, joined by OR; "@" for the list that they become.
    void chains_data()
    {
        const TestTable<QString, QString> row{"sql", "expected"};
        row("whole condition", "WHERE $", "WHERE @");
        row("in parentheses", "WHERE (x.R > 1) AND ($) ORDER BY A.R", "WHERE (x.R > 1) AND (@) ORDER BY A.R");
        row("other terms around", "WHERE B = 2 OR $ OR B = 3", "WHERE B = 2 OR @ OR B = 3");
        row("bound to what follows", "WHERE $ OR A.R = 9 AND B = 1", "WHERE @ OR A.R = 9 AND B = 1");
        row("bound to what comes before", "WHERE B = 1 AND A.R = 0 OR $", "WHERE B = 1 AND A.R = 0 OR @");
        row("first term negated", "WHERE NOT $", "WHERE NOT $");
        row("reckoned with", "WHERE $ OR A.R = 9 + 1", "WHERE @ OR A.R = 9 + 1");
        row("other column", "WHERE $ OR AR = 9", "WHERE @ OR AR = 9");
        row("too few", "WHERE A = 1 OR A = 2", "WHERE A = 1 OR A = 2");
        row("negative", "WHERE $ OR A.R = -9", "WHERE A.R IN ( 1, 2, 3, 4, 5, 6, 7, 8, -9)");
        row("in a list of values", "WHERE f($)", "WHERE f(@)");
    }
    void chains()
    {
        QFETCH(QString, sql);
        QFETCH(QString, expected);
        QStringList terms;
        for (int i = 1; i <= 8; ++i)
            terms << QString(u"A.R = " % QString::number(i));
        const QString chain = terms.join(u" OR "_qs);
        expected.replace(u'@', u"A.R IN ( 1, 2, 3, 4, 5, 6, 7, 8)"_qs).replace(u'$', chain);
        sql.replace(u'$', chain);
        SqlTokens tokens;
        QCOMPARE(tokens.Read(sql), SqlFault::None);
        QCOMPARE(SqlFor(SqlDialect::File, tokens).replace(u"- 9"_qs, u"-9"_qs), expected);
        QCOMPARE(SqlFor(SqlDialect::SqlServer, tokens).replace(u"- 9"_qs, u"-9"_qs), expected);
    }

    /// SQL Server gives up on longer lists.
    void longListsInBatches()
    {
        QStringList terms;
        for (int i = 0; i < 2500; ++i)
            terms << QString(u"A = " % QString::number(i));
        const QString sql = u"SELECT B FROM T WHERE ("_qs % terms.join(u" OR "_qs) % u')';
        SqlTokens tokens;
        QCOMPARE(tokens.Read(sql), SqlFault::None);
        const QString sent = SqlFor(SqlDialect::SqlServer, tokens);
        QVERIFY(sent.startsWith(u"SELECT B FROM T WHERE (A IN ( 0, 1,"_qs) && sent.endsWith(u" 2499))"_qs));
        QVERIFY(sent.contains(u" 999) OR A IN ( 1000,"_qs) && sent.contains(u" 1999) OR A IN ( 2000,"_qs));
        QCOMPARE(sent.count(u','), 2500 - 3);
    }

    /// `ordered`: whether the query gets the key's, "c.id".
    void keyOrder_data()
    {
        const TestTable<QString, bool> row{"sql", "ordered"};
        row("all rows", "SELECT * FROM City", true);
        row("some", "SELECT City, [x] FROM [city] WHERE (A = 1 OR B IN (SELECT A FROM T ORDER BY A))", true);
        row("the first", "SELECT TOP 1 City FROM City WHERE A = 1", true);
        row("ordered", "SELECT City FROM City WHERE A = 1 ORDER BY City", false);
        row("counted", "SELECT COUNT(*) FROM City", false);
        row("each once", "SELECT DISTINCT City FROM City", false);
        row("grouped", "SELECT A FROM City WHERE A = 1 GROUP BY A", false);
        row("two tables", "SELECT * FROM City, County", false);
        row("joined", "SELECT * FROM City INNER JOIN County ON A = B", false);
        row("two queries", "SELECT A FROM City WHERE A = 1 UNION SELECT A FROM City", false);
        row("no key", "SELECT * FROM Ref", false);
        row("no rows", "DELETE FROM City", false);
        row("no table", "SELECT 1", false);
        row("cut short", "SELECT A FROM", false);
    }
    void keyOrder()
    {
        QFETCH(QString, sql);
        SqlTokens tokens;
        tokens.Read(sql);
        const QString order = KeyOrder(tokens, {{u"city"_qs, u"c.id"_qs}});
        QTEST(!order.isEmpty(), "ordered");
        const bool isFirst = sql.contains(u"TOP"_qs);
        QVERIFY(!isFirst ||
                SqlFor(SqlDialect::PostgreSql, tokens, order).endsWith(u" ORDER BY c.id LIMIT 1"));
    }

    void refused()
    {
        const std::pair<const char *, SqlFault> statements[] = {
            {"SELECT 'a", SqlFault::OpenText},
            {"SELECT 'a''", SqlFault::OpenText},
            {"SELECT [a", SqlFault::OpenName},
            {"SELECT \"a", SqlFault::OpenName},
            {"SELECT 1; DELETE FROM Users", SqlFault::SecondStatement},
            {"SELECT 1;;", SqlFault::SecondStatement},
            {"SELECT ';' ;  ", SqlFault::None},
            {"", SqlFault::None},
        };
        for (const auto &[sql, fault] : statements) {
            SqlTokens tokens;
            QVERIFY2(tokens.Read(QString::fromLatin1(sql)) == fault, sql);
            QCOMPARE(SqlFaultText(fault).isEmpty(), fault == SqlFault::None);
        }
    }

    /// What two statements share so that one prepared statement serves both.
    void shapes()
    {
        const std::tuple<const char *, const char *, bool> pairs[] = {
            {"SELECT A FROM B WHERE C = 1", "SELECT A FROM B WHERE C = 23.5", true},
            {"SELECT A FROM B WHERE C = 'x'", "SELECT A FROM B WHERE C = 'it''s ? longer'", true},
            {"SELECT A FROM B WHERE C = 1", "SELECT A FROM B WHERE C = '1'", false},
            {"SELECT A FROM B WHERE C = 1", "SELECT A FROM B WHERE D = 1", false},
            {"SELECT TOP 1 A FROM B", "SELECT TOP 2 A FROM B", false},
            {"SELECT A FROM B WHERE C LIKE 'x'", "SELECT A FROM B WHERE C LIKE 'y'", false},
            {"SELECT A,B FROM C ORDER BY 1", "SELECT A,B FROM C ORDER BY 2", false},
        };
        for (const auto &[first, second, same] : pairs) {
            const QString firstText = QString::fromLatin1(first); // the tokens point into their text
            const QString secondText = QString::fromLatin1(second);
            SqlTokens tokens;
            SqlShape one;
            SqlShape other;
            tokens.Read(firstText);
            QVERIFY(one.Take(tokens));
            tokens.Read(secondText);
            QVERIFY(other.Take(tokens));
            QVERIFY2((one.Key() == other.Key()) == same, second);
        }
    }

    void valuesAreTakenExactly()
    {
        SqlTokens tokens;
        SqlShape shape;
        const QString sql =
            u"INSERT INTO T (A,B,C,D,E) VALUES ('O''Neil é👍','',42,1.5,12345678901234567890)"_qs;
        tokens.Read(sql);
        QVERIFY(shape.Take(tokens));
        QCOMPARE(SqlFor(SqlDialect::File, tokens), u"INSERT INTO T (A,B,C,D,E) VALUES (?,?,?,?,?)"_qs);
        const std::vector<SqlValue> &values = shape.Values();
        QCOMPARE(values.size(), size_t(5));
        QCOMPARE(QString::fromUtf8(shape.Texts() + values[0].text.offset, values[0].text.size),
                 u"O'Neil é👍"_qs);
        QCOMPARE(values[1].text.size, 0);
        QCOMPARE(values[2].kind, SqlValue::Kind::Whole);
        QCOMPARE(values[2].whole, 42);
        QCOMPARE(values[3].real, 1.5);
        QCOMPARE(values[4].kind, SqlValue::Kind::Real);
        QCOMPARE(values[4].real, 12345678901234567890.0);

        tokens.Read(u"CREATE TABLE T (A VARCHAR(5))");
        QVERIFY(!shape.Take(tokens));
    }
};

QTEST_APPLESS_MAIN(TestSqlText)
#include "test_sql_text.moc"
