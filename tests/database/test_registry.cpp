#include "controls/ListModel.h"
#include "core/Session.h"
#include "database/Registry.h"
#include "platform/DataSourceRegistry.h"
#include "support/OwnDataSources.h"
#include "support/ScriptedDialogs.h"

#include <QProcess>
#include <QTest>

namespace
{
const QString jetKey = QStringLiteral("Software\\ODBC\\odbc.ini\\College\\Engines\\Jet");
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
        QVERIFY(DSNMissing(QStringLiteral("College")));
        QVERIFY(RegisterAccessDSN(QStringLiteral("College"), QStringLiteral("/data/Über uns;1.mdb"),
                                  QStringLiteral("Veltrane Database"), {}, {}));

        QVERIFY(!DSNMissing(QStringLiteral("COLLEGE")));
        QCOMPARE(DSNType(QStringLiteral("college")), 1);
        QCOMPARE(DSNFile(QStringLiteral("College")), QStringLiteral("/data/Über uns;1.mdb"));
        QCOMPARE(DSNDescription(QStringLiteral("College")), QStringLiteral("Veltrane Database"));
        QCOMPARE(RegReadString(jetKey, QStringLiteral("MaxBufferSize")), QStringLiteral("512"));
        QCOMPARE(RegReadString(jetKey, QStringLiteral("Threads")), QStringLiteral("3"));
        QVERIFY(!sources.Content().contains("UID"));
        QVERIFY(!sources.Content().contains("PWD"));

        QProcess manager;
        manager.start(QStringLiteral("odbcinst"), {QStringLiteral("-q"), QStringLiteral("-s")});
        QVERIFY(manager.waitForFinished());
        QCOMPARE(manager.readAllStandardOutput().trimmed(), QByteArray("[College]"));
    }

    /// The administrator's program may change a source while this one runs.
    void SeesWhatAnybodyChanged()
    {
        const OwnDataSources sources;
        sources.SetContent("[S]\nDBQ=/old.mdb\n");
        QCOMPARE(DSNFile(QStringLiteral("S")), QStringLiteral("/old.mdb"));
        sources.SetContent("[S]\nDBQ=/new.mdb\n");
        QCOMPARE(DSNFile(QStringLiteral("S")), QStringLiteral("/new.mdb"));
        QVERIFY(SetDSNFile(QStringLiteral("s"), QStringLiteral("/own.mdb")));
        QCOMPARE(DSNFile(QStringLiteral("S")), QStringLiteral("/own.mdb"));
        QCOMPARE(sources.Content().count("DBQ"), 1);
        sources.SetContent({});
        QVERIFY(DSNMissing(QStringLiteral("S")));
    }

    void KnowsTheKindOfASource_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("type");

        const auto driver = [](const char *name) -> QByteArray {
            return QByteArray("[S]\nDriver=") + name + "\n";
        };
        QTest::newRow("file") << driver("Microsoft Access Driver (*.mdb)") << 1;
        const QByteArray listed =
            "[ODBC Data Sources]\ns=Driver do Microsoft Access (*.mdb)\n[S]\nDBQ=/x.mdb\n";
        QTest::newRow("file, listed only") << listed << 1;
        QTest::newRow("SQL Server") << driver("SQL Server") << 2;
        QTest::newRow("newer SQL Server") << driver("ODBC Driver 18 for SQL Server") << 2;
        QTest::newRow("FreeTDS") << driver("FreeTDS") << 2;
        QTest::newRow("FreeTDS by path") << driver("/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so") << 2;
        QTest::newRow("PostgreSQL") << driver("PostgreSQL Unicode") << 2;
        QTest::newRow("PostgreSQL by path") << driver("/opt/odbc/psqlodbcw.so") << 2;
        QTest::newRow("another server") << driver("MySQL") << 0;
        QTest::newRow("no driver") << QByteArray("[S]\nDescription=x\n") << 0;
        QTest::newRow("no source") << QByteArray() << 0;
    }
    void KnowsTheKindOfASource()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, type);
        const OwnDataSources sources;
        sources.SetContent(content);
        QCOMPARE(DSNType(QStringLiteral("S")), type);
    }

    void ListsTheSources()
    {
        const OwnDataSources sources;
        sources.SetContent("[ODBC Data Sources]\nB=PostgreSQL Unicode\n"
                           "[B]\nDriver=PostgreSQL Unicode\nDescription=The server\nDatabase=veltrane\n"
                           "[A]\nDriver=Microsoft Access Driver (*.mdb)\nDBQ=/a.mdb\n");
        gDBQName = QStringLiteral("a");
        ListModel list;
        FillDSNList(list);
        gDBQName.clear();

        QCOMPARE(list.Count(), 2);
        QCOMPARE(list.At(0).key, QStringLiteral("?1"));
        QCOMPARE(list.At(0).text, QStringLiteral("B"));
        QCOMPARE(list.At(0).subItems, QStringList({QStringLiteral("The server"), QString()}));
        QVERIFY(!list.At(0).checked);
        QCOMPARE(list.At(1).subItems, QStringList({QString(), QStringLiteral("/a.mdb")}));
        QVERIFY(list.At(1).checked);
        QCOMPARE(list.CurrentRow(), 0);
        QCOMPARE(DSNDatabase(QStringLiteral("B")), QStringLiteral("veltrane"));
    }

    void TellsWhenASourceCannotBeWritten_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("registry");
        QTest::newRow("no such directory") << "/a.mdb" << QByteArray("/nowhere/at/all/odbc.ini");
        QTest::newRow("path of two lines") << "/a\nDriver=evil.so" << QByteArray();
        QTest::newRow("path too long") << QString(1000, u'x') << QByteArray();
    }
    void TellsWhenASourceCannotBeWritten()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, registry);
        const OwnDataSources sources;
        if (!registry.isEmpty())
            qputenv("ODBCINI", registry);
        ScriptedDialogs dialogs;
        dialogs.Expect(QStringLiteral("ODBC32 Connect"), QStringLiteral("ODBC32 registration error"));
        QVERIFY(!RegisterAccessDSN(QStringLiteral("S"), file, {}, {}, {}));
        QVERIFY(!sources.Content().contains("evil"));
    }
};

QTEST_GUILESS_MAIN(TestRegistry)
#include "test_registry.moc"
