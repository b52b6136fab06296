#include "core/Session.h"
#include "database/ConnectDatabase.h"
#include "database/MiscODBC.h"
#include "platform/Dialogs.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QTest>

namespace
{
/// The section of the test's own data source, without its name.
QString OwnSource()
{
    QFile file(qEnvironmentVariable("ODBCINI"));
    const QString all = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    return all.mid(all.indexOf(u'[' % gDBQName % u']') + gDBQName.size() + 2).section(u'[', 0, 0);
}

void AddSource(const QString &name, const QString &content)
{
    QFile file(qEnvironmentVariable("ODBCINI"));
    QVERIFY(file.open(QIODevice::Append));
    file.write(QString(u"\n[" % name % u"]" % content).toUtf8());
}

QString WithValue(const QString &source, const QString &name, const QString &value)
{
    QStringList lines = source.split(u'\n');
    for (QString &line : lines) {
        if (line.startsWith(name % u'='))
            line = name % u'=' % value;
    }
    return lines.join(u'\n');
}
} // namespace

class TestConnectServer final : public QObject
{
    Q_OBJECT

private slots:
    void OpensACatalogueThroughItsSource()
    {
        TestDatabase database;
        const QString catalogue = gDBQFilename;
        gDBQFilename.clear();
        gDBQType = 0;
        gDBPassword = u"of another database"_qs;
        QVERIFY(ConnectDatabase(false));
        QCOMPARE(gDBQType, 2);
        QCOMPARE(gDBQFilename, catalogue);
        QCOMPARE(gDBPassword, QString());
        QCOMPARE(GetDBVersion(), 3.0);
        QCOMPARE(DatabaseTitle(), u" using PostgreSQL with Datasource [" % catalogue % u"] via ODBC");
    }

    void TellsWhyAServerCannotBeReached_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("names");
        const auto row = [](const char *name, const QString &entry, const QString &value,
                            const QString &names) { QTest::newRow(name) << entry << value << names; };
        row("logon refused", "Password", "wrong", "SQL server requires password");
        row("server down", "Port", "1", "1");
        row("no such catalogue", "Database", "nosuchcatalogue", "nosuchcatalogue");
        row("driver not installed", "Driver", "PostgreSQL Missing", "odbc-postgresql");
        row("a direct server down", {}, {}, "Unable to connect");
    }
    void TellsWhyAServerCannotBeReached()
    {
        QFETCH(QString, entry);
        QFETCH(QString, value);
        QFETCH(QString, names);
        TestDatabase database;
        if (entry.isEmpty()) {
            gDBQUseODBC = false;
            gDBQName = u"127.0.0.1"_qs;
        } else {
            // A name of its own: the manager remembers what a source said.
            const QString name = u"broken_" % entry;
            AddSource(name, WithValue(OwnSource(), entry, value));
            gDBQName = name;
        }
        QStringList boxes;
        int asked = 0;
        Dialogs::Hooks hooks;
        hooks.msgBox = [&](const QString &text, const QString &title, auto &&...) {
            boxes.append(u'[' % title % u"] " % text);
            return Dialogs::Answer::Ok;
        };
        hooks.databaseLogon = [&] { ++asked; };
        std::swap(Dialogs::Installed(), hooks);
        const bool connected = ConnectDatabase(false);
        std::swap(Dialogs::Installed(), hooks);

        QVERIFY(!connected);
        QVERIFY(!gConnection.IsOpen());
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes[0].contains(names), qPrintable(boxes[0]));
        const bool refused = entry == u"Password"_qs;
        QCOMPARE(asked, refused ? 1 : 0);
        QVERIFY(refused || boxes[0].startsWith(u"[ODBC] Veltrane couldn't connect to an datasource.\n"_qs));
    }
};

QTEST_GUILESS_MAIN(TestConnectServer)
#include "test_connectserver.moc"
