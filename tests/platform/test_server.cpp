#include "core/Session.h"
#include "support/TestDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <memory>

namespace
{
/// Registers one more data source beside those of the test, like the first with some lines changed.
void AddSource(const QString &name, const QStringList &changes)
{
    QFile ini(qEnvironmentVariable("ODBCINI"));
    QVERIFY(ini.open(QIODevice::ReadWrite));
    const QString sources = QString::fromUtf8(ini.readAll());
    const qsizetype begin = sources.indexOf(QStringLiteral("[veltrane]")) + 10;
    const QString first = sources.mid(begin, sources.indexOf(u'[', begin) - begin);
    QString added = u"\n[" % name % u"]\n";
    for (const QString &line : first.split(u'\n', Qt::SkipEmptyParts)) {
        const QString key = line.section(u'=', 0, 0) % u'=';
        const auto change = std::find_if(changes.begin(), changes.end(),
                                         [&key](const QString &text) { return text.startsWith(key); });
        added += (change == changes.end() ? line : *change) % u'\n';
    }
    ini.write(added.toUtf8());
}

QString TextFor(const QString &source)
{
    return u"ODBC;DATABASE=" % source % u";UID=sa;PWD=;DSN=" % source % u";EXCLUSIVE=00";
}
} // namespace

/// What only a server does: logons, locks between workstations, and a connection that breaks.
class TestServer : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    void kindAndText();
    void refused_data();
    void refused();
    void lockedByAnother();
    void brokenConnection();
    void brokenInAGroup();

private:
    std::unique_ptr<TestDatabase> m_database;
};

void TestServer::kindAndText()
{
    QCOMPARE(gConnection.Kind(), DatabaseKind::PostgreSql);
    QCOMPARE(gConnection.ConnectionText(), m_database->ConnectionText());
}

void TestServer::refused_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<bool>("isLogon");
    QTest::newRow("wrong password") << QStringLiteral("Password=wrong") << true;
    QTest::newRow("unknown user") << QStringLiteral("Username=nobody") << true;
    QTest::newRow("no such database") << QStringLiteral("Database=nowhere") << false;
}

void TestServer::refused()
{
    QFETCH(QString, change);
    QFETCH(bool, isLogon);
    const QString source = u"refused " % QString::fromUtf8(QTest::currentDataTag());
    AddSource(source, {change});
    Connection connection;
    QVERIFY(!connection.Open(TextFor(source)));
    QCOMPARE(connection.Errors().first().number == 18456, isLogon);
    QVERIFY(connection.Errors().first().number != 0);
}

void TestServer::lockedByAnother()
{
    Connection other;
    QVERIFY(other.Open(m_database->ConnectionText()));
    const QString update = QStringLiteral("UPDATE City SET ReferenceID = 'x' WHERE City_ID = 1");
    {
        WriteGroup group(other);
        QVERIFY(other.Execute(update));
        QVERIFY(gConnection.Execute(QStringLiteral("SET lock_timeout = 300")));
        QElapsedTimer waited;
        waited.start();
        QVERIFY(!gConnection.Execute(update));
        QVERIFY(waited.elapsed() >= 300);
        QVERIFY(!gConnection.Errors().first().description.isEmpty());
        QVERIFY(gConnection.OpenRecordset(QStringLiteral("SELECT * FROM City")));
    }
    QVERIFY(gConnection.Execute(update));
}

void TestServer::brokenConnection()
{
    Connection other;
    QVERIFY(other.Open(m_database->ConnectionText()));
    const QString process = TestDatabase::Value(QStringLiteral("SELECT pg_backend_pid()"));
    QVERIFY(other.OpenRecordset(u"SELECT pg_terminate_backend(" % process % u")"));
    QVERIFY(!gConnection.OpenRecordset(QStringLiteral("SELECT * FROM City")));
    QVERIFY(!gConnection.Errors().first().description.isEmpty());
    QVERIFY2(gConnection.OpenRecordset(QStringLiteral("SELECT * FROM City")),
             "the next statement connects anew");
}

/// What a group had not committed is gone with the server, and the group says so.
void TestServer::brokenInAGroup()
{
    Connection other;
    QVERIFY(other.Open(m_database->ConnectionText()));
    const QString process = TestDatabase::Value(QStringLiteral("SELECT pg_backend_pid()"));
    const QString insert = QStringLiteral("INSERT INTO City (City) VALUES ('x')");
    {
        WriteGroup group(gConnection);
        QVERIFY(gConnection.Execute(insert));
        QVERIFY(other.OpenRecordset(u"SELECT pg_terminate_backend(" % process % u")"));
        QVERIFY(!gConnection.Execute(insert));
        QVERIFY(!WriteGroup::CommitRunning()); // as before the box that tells of it
        QVERIFY2(!gConnection.Execute(insert), "a retry would go on over the gap");
        QVERIFY(!group.Finish());
        QVERIFY(!gConnection.Errors().first().description.isEmpty());
    }
    WriteGroup next(gConnection);
    QVERIFY(gConnection.Execute(insert));
    QVERIFY(next.Finish());
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT COUNT(*) FROM City WHERE City = 'x'")),
             QStringLiteral("1"));
}

QTEST_GUILESS_MAIN(TestServer)
#include "test_server.moc"
