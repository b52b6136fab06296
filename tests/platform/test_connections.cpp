#include "platform/Connection.h"
#include "platform/FileDatabase.h"
#include "platform/LogonServer.h"
#include "platform/OdbcErrors.h"
#include "support/OwnDataSources.h"
#include "support/TestTable.h"

#include <QSqlError>
#include <QTest>

namespace
{
QString ServerText(const QString &server, const QString &user, const QString &password)
{
    return u"PROVIDER=SQLOLEDB;Data Source=" % server % u";Initial Catalog=Train ing;User id=" % user %
           u";Password=" % password % u";";
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

    void unreachable_data()
    {
        const TestTable<QString, int, QString> row{"text", "number", "complaint"};
        row("server is down", ServerText("127.0.0.1,1", "sa", {}), 20009, "unavailable or does not exist");
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

    void tooLongIsToldPlainly()
    {
        const QSqlError error({}, u"[SQL Server]String or binary data would be truncated."_qs,
                              QSqlError::StatementError, u"8152"_qs);
        const EngineError told = OdbcErrors::ListOf(error).first();
        QVERIFY2(told.description.startsWith(u"A text is longer"_qs), qPrintable(told.description));
        QCOMPARE(told.number, 8152);
    }

private:
    OwnDataSources m_sources;
};

QTEST_GUILESS_MAIN(TestConnections)
#include "test_connections.moc"
