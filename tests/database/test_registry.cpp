#include "core/session/Session.h"
#include "database/connection/Registry.h"
#include "platform/connection/DataSourceRegistry.h"
#include "support/OwnDataSources.h"
#include "support/ScriptedDialogs.h"

#include <QProcess>
#include <QTest>

namespace
{
const QString jetKey = u"Software\\ODBC\\odbc.ini\\College\\Engines\\Jet"_qs;
}

class TestRegistry final : public QObject
{
    Q_OBJECT

private slots:
    /// What the program registers is what it, and any other program of the machine, then finds.
    void RegistersADatabaseFile()
    {
        const OwnDataSources sources;
        const ScriptedDialogs dialogs;
        QVERIFY(RegisterAccessDSN("College", "/data/Über uns;1.mdb", "Veltrane Database", {}, {}));
        QVERIFY(!DSNMissing("COLLEGE"));
        QCOMPARE(DSNType("college"), 1);
        QCOMPARE(DSNFile("College"), u"/data/Über uns;1.mdb"_qs);
        QCOMPARE(DSNDescription("College"), u"Veltrane Database"_qs);
        QCOMPARE(RegReadString(jetKey, u"MaxBufferSize"_qs), u"512"_qs);
        QCOMPARE(RegReadString(jetKey, u"Threads"_qs), u"3"_qs);
        QVERIFY(!sources.Content().contains("UID") && !sources.Content().contains("PWD"));
        QProcess manager;
        manager.start(u"odbcinst"_qs, {u"-q"_qs, u"-s"_qs});
        QVERIFY(manager.waitForFinished());
        QCOMPARE(manager.readAllStandardOutput().trimmed(), QByteArray("[College]"));
    }

    /// The administrator's program may change a source while this one runs.
    void SeesWhatAnybodyChanged()
    {
        const OwnDataSources sources;
        sources.SetContent("[S]\nDBQ=/old.mdb\n");
        QCOMPARE(DSNFile("S"), u"/old.mdb"_qs);
        sources.SetContent("[S]\nDBQ=/new.mdb\n");
        QCOMPARE(DSNFile("S"), u"/new.mdb"_qs);
        QVERIFY(SetDSNFile(u"s"_qs, u"/own.mdb"_qs));
        QCOMPARE(DSNFile("S"), u"/own.mdb"_qs);
        QCOMPARE(sources.Content().count("DBQ"), 1);
        sources.SetContent({});
        QVERIFY(DSNMissing("S"));
    }

    void KnowsTheKindOfASource()
    {
        const OwnDataSources sources;
        const auto typeOf = [&](const QByteArray &content) {
            sources.SetContent(content);
            return DSNType("S");
        };
        for (const auto &[driver, type] : {std::pair{"Microsoft Access Driver (*.mdb)", 1},
                                           {"SQL Server", 2},
                                           {"ODBC Driver 18 for SQL Server", 2},
                                           {"FreeTDS", 2},
                                           {"/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so", 2},
                                           {"PostgreSQL Unicode", 2},
                                           {"/opt/odbc/psqlodbcw.so", 2},
                                           {"MySQL", 0}})
            QVERIFY2(typeOf(QByteArray("[S]\nDriver=") + driver + "\n") == type, driver);
        const QByteArray listed = "[ODBC Data Sources]\ns=Driver do Microsoft Access (*.mdb)\n";
        QCOMPARE(typeOf(listed + "[S]\nDBQ=/x.mdb\n"), 1);
        QCOMPARE(typeOf("[S]\nDescription=x\n"), 0);
        QCOMPARE(typeOf({}), 0);
    }

    void TellsWhenASourceCannotBeWritten()
    {
        for (const QString &file : {QString("/a\nDriver=evil.so"), QString(1000, u'x'), QString("/a.mdb")}) {
            const OwnDataSources sources;
            if (file == "/a.mdb")
                qputenv("ODBCINI", "/nowhere/at/all/odbc.ini");
            ScriptedDialogs dialogs;
            dialogs.Expect("ODBC32 Connect", "ODBC32 registration error");
            QVERIFY(!RegisterAccessDSN("S", file, {}, {}, {}));
            QVERIFY(!sources.Content().contains("evil"));
        }
    }
};

QTEST_GUILESS_MAIN(TestRegistry)
#include "test_registry.moc"
