#include "platform/LogonServer.h"
#include "platform/connection/Connection.h"
#include "platform/connection/OneStep.h"
#include "platform/engines/FileDatabase.h"
#include "support/OwnDataSources.h"
#include "support/TestTable.h"

#include <QTest>

namespace
{
QString ServerText(const QString &server, const QString &user, const QString &password)
{
    return u"PROVIDER=SQLOLEDB;Data Source=" % server % u";Initial Catalog=Train ing;User id=" % user %
           u";Password=" % password % u";";
}

QString ServerText(const LogonServer &server, const QString &user)
{
    return ServerText(u"127.0.0.1," % QString::number(server.Port()), user, u"secret"_qs);
}

LogonServer::Reply Done(const QString &)
{
    return {};
}

QString SourceText(const QString &source, const QString &credentials = u"UID=sa;PWD="_qs)
{
    return u"ODBC;DATABASE=" % source % u';' % credentials % u";DSN=" % source % u";EXCLUSIVE=00";
}
} // namespace

/// The connection texts, what they open and what a user reads where they do not.
class TestConnections : public QObject
{
    Q_OBJECT

private slots:
    void fileSource()
    {
        const QTemporaryDir directory;
        const QString file = directory.filePath("my data.mdb");
        QVERIFY(FileDatabase::Create(file));
        auto made = FileDatabase::OpenExclusive(file, {});
        QVERIFY(made->Run("CREATE TABLE Contacts (A); CREATE TABLE Courses (A); CREATE TABLE System (A);"
                          "CREATE TABLE Users (A)") &&
                made->NewPassword("a;DSN=b;"));
        made.reset();
        m_sources.SetContent("[ODBC Data Sources]\nStaff=Microsoft Access Driver (*.mdb)\n[Staff]\n"
                             "Driver=Microsoft Access Driver (*.mdb)\nDBQ=" +
                             file.toUtf8() + "\n");
        Connection connection;
        QVERIFY(!connection.Open(SourceText("Staff", "PWD=")));
        QCOMPARE(connection.Errors().first().number, -1905);
        const QString text = SourceText("Staff", "PWD=a;DSN=b;");
        QVERIFY(connection.Open(text));
        QCOMPARE(connection.Kind(), DatabaseKind::File);
        QVERIFY(connection.ConnectionText().startsWith(text));
        QVERIFY(connection.ConnectionText().contains(u";DBQ=" % file % u';'));
        QVERIFY(connection.OpenRecordset("SELECT * FROM Contacts"));
    }

    void sqlServerLogon_data()
    {
        const TestTable<QString, QList<int>, int> row{"password", "refusals", "number"};
        row("semicolon", "a;PORT=1;b", {18456}, 18456);
        row("text of its own", "x;Password=y;Data Source=z", {18456}, 18456);
        row("braces and equals", "{a}=b}c", {18456}, 18456);
        row("beyond ASCII", "pässwörd", {18456}, 18456);
        // A password asked for would never help.
        row("no such catalogue", "right", {4060, 18456}, 4060);
    }
    void sqlServerLogon()
    {
        QFETCH(QString, password);
        QFETCH(QList<int>, refusals);
        LogonServer server(refusals);
        Connection connection;
        const QString name = u"127.0.0.1," % QString::number(server.Port());
        QVERIFY(!connection.Open(ServerText(name, u"clerk"_qs, password)));
        QTEST(connection.Errors().first().number, "number");
        QVERIFY(!connection.Errors().first().description.isEmpty());
        server.Wait();
        QCOMPARE(server.user, u"clerk"_qs);
        QCOMPARE(server.password, password);
        QCOMPARE(server.catalogue, u"Train ing"_qs);
        QCOMPARE(server.protocol, 0x74);
    }

    void longTextsComeBackWhole_data()
    {
        const TestTable<int, QString> row{"length", "letter"};
        for (const QString &letter : {u"a"_qs, u"é"_qs, u"日"_qs, u"👍"_qs}) {
            for (const int length : {0, 127, 128, 131, 255, 256, 264, 265, 4'000, 1'000'000})
                row(qPrintable(letter % u' ' % QString::number(length)), length, letter);
        }
    }
    void longTextsComeBackWhole()
    {
        QFETCH(int, length);
        QFETCH(QString, letter);
        const QString text = letter.repeated(length) % u'.';
        const LogonServer server([&](const QString &sql) {
            return sql.startsWith(u"SELECT c"_qs) ? LogonServer::Reply{{text, -3, true, 0.1, QString()}}
                                                  : LogonServer::Reply{};
        });
        Connection connection;
        QVERIFY(connection.Open(ServerText(server, u"clerk"_qs)));
        const auto rows = connection.OpenRecordset(u"SELECT c0 FROM T"_qs);
        QVERIFY(rows && rows->RowCount() == 1);
        QVERIFY(rows->First().Text(u"c0") == text);
        QCOMPARE(rows->First().Text(u"C1") % rows->First().Text(u"c2") % rows->First().Text(u"c3"),
                 u"-310.1"_qs);
        QVERIFY(!rows->First().IsNull(u"c4") && rows->First().Text(u"c4").isEmpty());
        QCOMPARE(rows->Column(2).type, ColumnType::SmallInt);
    }

    void unreachable_data()
    {
        const TestTable<QString, int, QString> row{"text", "number", "complaint"};
        row("server is down", ServerText("127.0.0.1,1", "sa", {}), 20009, "unavailable or does not exist");
        row("no browser service", ServerText("127.0.0.1\\office", "sa", {}), 20009, "its instance office");
        row("PostgreSQL is down", SourceText("down"), 101, "Connection refused");
        row("vanished source", SourceText("gone"), 2, "data source gone is not registered");
        row("driver not installed", SourceText("nodriver"), 126, "odbc-postgresql");
        row("driver's file gone", SourceText("nolib"), 126, "package tdsodbc");
        row("text that would end its entry", ServerText("127.0.0.1", "sa", "a};PORT=1;b"), 1, "cannot hold");
        row("entry in a server's name", ServerText("127.0.0.1;PORT=9", "sa", {}), 20013,
            "Unknown host machine name");
        row("no engine", "PROVIDER=Other;", 1, "no engine");
    }
    void unreachable()
    {
        QFETCH(QString, text);
        QFETCH(int, number);
        QFETCH(QString, complaint);
        m_sources.SetContent("[down]\nDriver=PostgreSQL Unicode\nServername=127.0.0.1\nPort=1\nDatabase=x\n"
                             "[nodriver]\nDriver=PostgreSQL Plain\n"
                             "[nolib]\nDriver=/nowhere/libtdsodbc.so\nServer=127.0.0.1\n");
        Connection connection;
        QVERIFY(!connection.Open(text));
        QVERIFY(!connection.IsOpen());
        const EngineError error = connection.Errors().first();
        QVERIFY2(error.description.contains(complaint), qPrintable(error.description));
        QCOMPARE(error.number, number);
        QVERIFY(!error.source.isEmpty());
    }

    /// What SQL Server gets for what the system says.
    void statementsForSqlServer()
    {
        LogonServer server([](const QString &sql) {
            return sql.contains(u"sp_getapplock"_qs) ? LogonServer::Reply{{1}} : LogonServer::Reply{};
        });
        {
            Connection connection;
            QVERIFY(connection.Open(ServerText(server, u"clerk"_qs)));
            WriteGroup group(connection);
            QVERIFY(connection.Execute(u"CREATE TABLE [Version]"_qs) && group.Finish());
            QVERIFY(connection.OpenRecordset(u"SELECT * FROM T WHERE A LIKE '[x]_%'"_qs));
            QVERIFY(connection.Execute(u"DELETE FROM Ref"_qs) && group.Undo());
        }
        {
            Connection connection;
            QVERIFY(connection.Open(ServerText(server, u"clerk"_qs)));
            OneStep step(connection, u"City"_qs);
            QVERIFY(step.HasBegun() && connection.Execute(u"DELETE FROM City"_qs) && step.Keep());
        }
        server.Wait();
        QVERIFY(server.statements.value(0).contains(u"SET LOCK_TIMEOUT 10000"_qs));
        QVERIFY(server.statements.value(0).contains(u"SET TEXTSIZE 2147483647"_qs));
        QVERIFY(server.statements.value(1).contains(u"sys.indexes"_qs));
        QCOMPARE(server.statements.mid(2, 7),
                 QStringList({u"BEGIN TRANSACTION"_qs, u"CREATE TABLE [Version] (DBVersion FLOAT)"_qs,
                              u"COMMIT TRANSACTION"_qs, u"SELECT * FROM T WHERE A LIKE '[[]x]_%'"_qs,
                              u"BEGIN TRANSACTION"_qs, u"DELETE FROM Ref"_qs, u"ROLLBACK TRANSACTION"_qs}));
        QCOMPARE(server.statements.value(11), u"BEGIN TRANSACTION"_qs);
        QVERIFY(server.statements.value(12).contains(
            u"sp_getapplock @Resource = N'City', @LockMode = 'Exclusive', @LockOwner = 'Transaction'"_qs));
        QCOMPARE(server.statements.mid(13), QStringList({u"DELETE FROM City"_qs, u"COMMIT TRANSACTION"_qs}));
    }

    void failuresOfSqlServer_data()
    {
        const TestTable<QList<int>, int, QString> row{"errors", "number", "told"};
        row("too long", {8152, 3621}, 8152, "A text is longer than its column");
        row("too long, of late", {2628, 3621}, 2628, "A text is longer than its column");
        row("deadlock", {1205}, 1205, "Fehler Nummer 1205");
        row("lost", {}, 20017, "The connection to the server was lost");
    }
    void failuresOfSqlServer()
    {
        QFETCH(QList<int>, errors);
        QFETCH(QString, told);
        bool isDown = false;
        const LogonServer server([&](const QString &sql) {
            isDown = sql.startsWith(u"UPDATE"_qs);
            return LogonServer::Reply{{}, isDown ? errors : QList<int>(), isDown && errors.isEmpty()};
        });
        Connection connection;
        QVERIFY(connection.Open(ServerText(server, u"clerk"_qs)));
        QVERIFY(!connection.Execute(u"UPDATE T SET A = 1"_qs));
        QTEST(connection.Errors().first().number, "number");
        const QString description = connection.Errors().first().description;
        QVERIFY2(description.contains(told), qPrintable(description));
        QVERIFY2(connection.Execute(u"DELETE FROM T"_qs), "the next statement connects again");
    }

    void refusedConnections()
    {
        LogonServer settings([](const QString &sql) {
            return LogonServer::Reply{{}, sql.startsWith(u"SET"_qs) ? QList<int>{195} : QList<int>()};
        });
        Connection connection;
        QVERIFY2(!connection.Open(ServerText(settings, u"clerk"_qs)), "not without its settings");
        QCOMPARE(connection.Errors().first().number, 195);
        LogonServer unused(Done);
        QVERIFY(!connection.Open(ServerText(unused, QString())));
        QCOMPARE(connection.Errors().first().number, 18456);
        unused.Wait();
        QVERIFY2(unused.protocol == 0, "no user is told before any attempt");
    }

private:
    OwnDataSources m_sources;
};

QTEST_GUILESS_MAIN(TestConnections)
#include "test_connections.moc"
