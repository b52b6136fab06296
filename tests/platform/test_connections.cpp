#include "platform/Connection.h"
#include "platform/FileDatabase.h"
#include "platform/LogonServer.h"
#include "platform/OdbcErrors.h"
#include "support/OwnDataSources.h"

#include <QSqlError>
#include <QTest>

namespace
{
QString ServerText(const QString &server, const QString &user, const QString &password)
{
    return u"PROVIDER=SQLOLEDB;Data Source=" % server % u";Initial Catalog=Train ing;User id=" % user %
           u";Password=" % password % u";";
}

QString SourceText(const QString &source, const QString &password = {})
{
    return u"ODBC;DATABASE=" % source % u";PWD=" % password % u";DSN=" % source % u";EXCLUSIVE=00";
}

QString ServerSourceText(const QString &source)
{
    return u"ODBC;DATABASE=" % source % u";UID=sa;PWD=;DSN=" % source % u";EXCLUSIVE=00";
}
} // namespace

/// The connection texts, what they open and what a user reads where they do not.
class TestConnections : public QObject
{
    Q_OBJECT

private slots:
    void fileSource();
    void sqlServerLogon_data();
    void sqlServerLogon();
    void unreachable_data();
    void unreachable();
    void tooLongIsToldPlainly();
    void nothingOpen();

private:
    OwnDataSources m_sources;
};

void TestConnections::fileSource()
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("my data.mdb"));
    QVERIFY(FileDatabase::Create(file));
    auto made = FileDatabase::OpenExclusive(file, QString());
    QVERIFY(made->Run(QStringLiteral("CREATE TABLE T (A INTEGER)")));
    QVERIFY(made->NewPassword(QStringLiteral("a;DSN=b;")));
    made.reset();
    m_sources.SetContent(
        "[ODBC Data Sources]\nStaff=Microsoft Access Driver (*.mdb)\n[Staff]\nDriver=Microsoft "
        "Access Driver (*.mdb)\nDBQ=" +
        file.toUtf8() + "\n");
    Connection connection;
    QVERIFY(!connection.Open(SourceText(QStringLiteral("Staff"))));
    QCOMPARE(connection.Errors().first().number, -1905);
    const QString text = SourceText(QStringLiteral("Staff"), QStringLiteral("a;DSN=b;"));
    QVERIFY(connection.Open(text));
    QCOMPARE(connection.Kind(), DatabaseKind::File);
    QVERIFY(connection.ConnectionText().startsWith(text));
    QVERIFY(connection.ConnectionText().contains(QString(u";DBQ=" % file % u";")));
    QVERIFY(connection.OpenRecordset(QStringLiteral("SELECT * FROM T")));
}

void TestConnections::sqlServerLogon_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<QList<int>>("refusals");
    QTest::addColumn<int>("number");
    const auto row = [](const char *name, const char *password) {
        QTest::newRow(name) << QString::fromUtf8(password) << QList<int>{18456} << 18456;
    };
    row("plain", "Secret1");
    row("semicolon", "a;PORT=1;b");
    row("text of its own", "x;Password=y;Data Source=z");
    row("braces and equals", "{a}=b}c");
    row("beyond ASCII", "pässwörd");
    // A password asked for would never help.
    QTest::newRow("no such catalogue") << QStringLiteral("right") << QList<int>{4060, 18456} << 4060;
}

void TestConnections::sqlServerLogon()
{
    QFETCH(QString, password);
    QFETCH(QList<int>, refusals);
    LogonServer server(refusals);
    Connection connection;
    const QString name = u"127.0.0.1," % QString::number(server.Port());
    QVERIFY(!connection.Open(ServerText(name, QStringLiteral("clerk"), password)));
    QTEST(connection.Errors().first().number, "number");
    QVERIFY(!connection.Errors().first().description.isEmpty());
    server.Wait();
    QCOMPARE(server.user, QStringLiteral("clerk"));
    QCOMPARE(server.password, password);
    QCOMPARE(server.catalogue, QStringLiteral("Train ing"));
    QCOMPARE(server.protocol, 0x74);
}

void TestConnections::unreachable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("server is down") << ServerText(QStringLiteral("127.0.0.1,1"), QStringLiteral("sa"),
                                                  QString())
                                    << 20009 << QStringLiteral("unavailable or does not exist");
    QTest::newRow("PostgreSQL is down")
        << ServerSourceText(QStringLiteral("down")) << 101 << QStringLiteral("Connection refused");
    QTest::newRow("vanished source") << ServerSourceText(QStringLiteral("gone")) << 2
                                     << QStringLiteral("data source gone is not registered");
    QTest::newRow("driver not installed")
        << ServerSourceText(QStringLiteral("nodriver")) << 126 << QStringLiteral("odbc-postgresql");
    QTest::newRow("driver's file gone")
        << ServerSourceText(QStringLiteral("nolib")) << 126 << QStringLiteral("package tdsodbc");
    QTest::newRow("text that would end its entry")
        << ServerText(QStringLiteral("127.0.0.1"), QStringLiteral("sa"), QStringLiteral("a};PORT=1;b")) << 1
        << QStringLiteral("cannot hold");
    QTest::newRow("entry in a server's name")
        << ServerText(QStringLiteral("127.0.0.1;PORT=9"), QStringLiteral("sa"), QString()) << 20013
        << QStringLiteral("Unknown host machine name");
    QTest::newRow("no engine") << QStringLiteral("PROVIDER=Other;") << 1 << QStringLiteral("no engine");
}

void TestConnections::unreachable()
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

void TestConnections::tooLongIsToldPlainly()
{
    const QSqlError error({}, QStringLiteral("[SQL Server]String or binary data would be truncated."),
                          QSqlError::StatementError, QStringLiteral("8152"));
    const EngineError told = OdbcErrors::ListOf(error).first();
    QVERIFY2(told.description.startsWith(QStringLiteral("A text is longer")), qPrintable(told.description));
    QCOMPARE(told.number, 8152);
}

void TestConnections::nothingOpen()
{
    Connection connection;
    QVERIFY(!connection.Execute(QStringLiteral("DELETE FROM Ref")));
    QVERIFY(!connection.OpenRecordset(QStringLiteral("SELECT * FROM Ref")));
    QVERIFY(connection.Errors().first().number != 0);
    QCOMPARE(connection.ConnectionText(), QString());
    WriteGroup group(connection);
    QVERIFY(!connection.Execute(QStringLiteral("DELETE FROM Ref")));
    QVERIFY(group.Finish());
}

QTEST_GUILESS_MAIN(TestConnections)
#include "test_connections.moc"
