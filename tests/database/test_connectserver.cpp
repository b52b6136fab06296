#include "core/session/Session.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/CredentialStore.h"
#include "database/statements/MiscODBC.h"
#include "platform/desktop/Dialogs.h"
#include "support/Files.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"

#include <QTest>

#include <utility>

namespace
{
/// Registers a data source like the test's own, with one entry changed, and gives that entry's own value.
QString AddSource(const QString &name, const QString &entry, const QString &value)
{
    QString own;
    const QString file = qEnvironmentVariable("ODBCINI");
    const QString all = QString::fromUtf8(ContentOf(file));
    QStringList lines = all.mid(all.indexOf(u'[' % gDBQName % u']')).section(u'[', 1, 1).split(u'\n');
    lines.first() = u'[' % name % u']';
    for (QString &line : lines) {
        if (line.startsWith(entry % u'='))
            own = std::exchange(line, entry % u'=' % value).section(u'=', 1);
    }
    WriteFile(file, QString(all % u'\n' % lines.join(u'\n')).toUtf8());
    return own;
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

    /// What was asked for is used at once, and stored so that nobody is asked again.
    void AsksOnceForALogon()
    {
        TestDatabase database;
        const QString right = AddSource(u"unknown"_qs, u"Password"_qs, u"wrong"_qs);
        gDBQName = u"unknown"_qs;
        int asked = 0;
        Dialogs::Hooks hooks;
        hooks.msgBox = [](auto &&...) { return Dialogs::Answer::Ok; };
        hooks.databaseLogon = [&] {
            ++asked;
            gDBUser = u"sa"_qs;
            gDBPassword = right;
            gDialogResult = 1;
        };
        std::swap(Dialogs::Installed(), hooks);
        const bool connected = ConnectDatabase(false);
        const QString password = gDBPassword;
        const bool again = StoreSessionCredential() && ConnectDatabase(false);
        std::swap(Dialogs::Installed(), hooks);
        QVERIFY(connected && again);
        QCOMPARE(password, right);
        QCOMPARE(asked, 1);
    }

    void TellsWhyAServerCannotBeReached_data()
    {
        const TestTable<QString, QString, QString> row{"entry", "value", "names"};
        row("logon refused", "Password", "wrong", "SQL server requires password");
        row("no such user", "Username", "nobody", "SQL server requires password");
        row("no such catalogue", "Database", "nosuchcatalogue", "nosuchcatalogue");
    }
    void TellsWhyAServerCannotBeReached()
    {
        QFETCH(QString, entry);
        QFETCH(QString, value);
        QFETCH(QString, names);
        TestDatabase database;
        // A name of its own: the manager remembers what a source said.
        const QString name = u"broken_" % entry;
        AddSource(name, entry, value);
        gDBQName = name;
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
        const bool refused = names.startsWith(u"SQL server requires");
        QCOMPARE(asked, refused ? 1 : 0);
        QVERIFY(refused || boxes[0].startsWith(u"[ODBC] Veltrane couldn't connect to an datasource.\n"_qs));
    }
};

QTEST_GUILESS_MAIN(TestConnectServer)
#include "test_connectserver.moc"
