#include "database/ConnectFixture.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/CredentialStore.h"
#include "database/connection/Registry.h"
#include "database/statements/MiscODBC.h"
#include "support/Files.h"
#include "support/StatementLog.h"
#include "support/TestTable.h"

#include <QDir>
#include <QTest>

namespace
{
const QString college = u"College"_qs;
const QString needsPassword = u"[] Access Database requires a password"_qs;
const QString collegeFile = u"college.mdb"_qs;
} // namespace

class TestConnectDatabase final : public QObject
{
    Q_OBJECT

private slots:
    void FindsTheFile_data()
    {
        const TestTable<QString, bool, bool> row{"place", "bare", "source"};
        row("direct, full path", "college.mdb", false, false);
        row("direct, bare name: the program's directory", "college.mdb", true, false);
        row("source, full path", "college.mdb", false, true);
        row("source, bare name: the folder database", "database/college.mdb", true, true);
    }
    void FindsTheFile()
    {
        QFETCH(QString, place);
        QFETCH(bool, bare);
        QFETCH(bool, source);
        ConnectFixture fixture;
        const QString file = fixture.MakeDatabase(place);
        gDBQUseODBC = source;
        gDBQName = source ? college : QString();
        gDBQFilename = bare ? collegeFile : file;

        QVERIFY(ConnectDatabase(false));
        QVERIFY(gConnection.IsOpen());
        QCOMPARE(QDir::cleanPath(gDBQFilename), file);
        QCOMPARE(gDBQType, 1);
        QCOMPARE(GetDBVersion(), 3.0);
        QCOMPARE(fixture.boxes, QStringList());
        if (source)
            QCOMPARE(QDir::cleanPath(DSNFile(college)), file);
    }

    void TellsWhatIsNoDatabase()
    {
        for (const bool exists : {false, true}) {
            ConnectFixture fixture;
            gDBQFilename = fixture.Path(collegeFile);
            if (exists)
                WriteFile(gDBQFilename, QByteArray("A letter to the college.\n").repeated(99));
            QVERIFY(!ConnectDatabase(false) && !gConnection.IsOpen());
            QCOMPARE(fixture.boxes.size(), 1);
            const QString &box = fixture.boxes[0];
            QVERIFY2(box.startsWith(u"[ODBC] Veltrane couldn't connect to an datasource.\n") &&
                         box.contains(collegeFile),
                     qPrintable(box));
        }
    }

    void FindsThePassword_data()
    {
        const TestTable<QString, QString, QStringList, int, bool> row{"session", "stored", "typed", "asked",
                                                                      "connects"};
        row("the session has it", "right", "", {}, 0, true);
        row("the store has it", "wrong", "right", {}, 0, true);
        row("typed", "", "", {"right"}, 1, true);
        row("typed, with a wrong one stored", "", "wrong", {"right"}, 1, true);
        row("typed at the third try", "", "", {"wrong", "wrong", "right"}, 3, true);
        row("cancelled", "", "", {}, 1, false);
        row("cancelled at the second try", "wrong", "wrong", {"wrong"}, 2, false);
    }
    void FindsThePassword()
    {
        QFETCH(QString, session);
        QFETCH(QString, stored);
        QFETCH(QStringList, typed);
        QFETCH(int, asked);
        QFETCH(bool, connects);
        for (const bool source : {false, true}) {
            ConnectFixture fixture;
            gDBQFilename = fixture.MakeDatabase(collegeFile, "right");
            gDBQUseODBC = source;
            gDBQName = source ? college : QString();
            if (source)
                QVERIFY(RegisterAccessDSN(college, gDBQFilename, {}, {}, {}));
            gDBPassword = stored;
            QVERIFY(StoreSessionCredential());
            gDBPassword = session;
            fixture.typedPasswords = typed;

            QCOMPARE(ConnectDatabase(false), connects);
            QCOMPARE(gConnection.IsOpen(), connects);
            QCOMPARE(fixture.asked, asked);
            QCOMPARE(fixture.boxes, QStringList(asked, needsPassword));
            if (connects)
                QCOMPARE(gDBPassword, u"right"_qs);
            if (connects && session != u"right")
                QCOMPARE(gDialogResult, 1);
        }
    }

    void TakesPasswordsOfAnyText_data()
    {
        const TestTable<QString> row{"password"};
        row("semicolons", ";a;b;DSN=x");
        row("what has a meaning elsewhere", "a@b it's \"{x}\" %1%2");
        row("beyond one byte", QString::fromUtf8("Zoë 🔑"));
        row("10,000 characters", QString(10'000, u'p'));
        row("removed at another workstation", QString());
    }
    void TakesPasswordsOfAnyText()
    {
        QFETCH(QString, password);
        for (const bool source : {false, true}) {
            ConnectFixture fixture;
            // Nor does a path's text part the values of a connection text.
            const QString file = fixture.MakeDatabase("über; uns's (2).mdb", password);
            gDBQUseODBC = source;
            gDBQName = college;
            gDBQFilename = file;
            gDBPassword = password.isEmpty() ? u"of another"_qs : password;
            QVERIFY(ConnectDatabase(false));
            QCOMPARE(gDBPassword, password);
            QCOMPARE(gDBQFilename, file);

            QVERIFY(StoreSessionCredential());
            gDBPassword.clear();
            QVERIFY(ConnectDatabase(false));
            QCOMPARE(gDBPassword, password);
            QCOMPARE(fixture.asked + fixture.boxes.size(), 0);
        }
    }

    void MakesAVanishedSourceAgain()
    {
        ConnectFixture fixture;
        gDBQUseODBC = true;
        gDBQName = college;
        gDBQFilename = fixture.MakeDatabase(collegeFile);
        QVERIFY(ConnectDatabase(false));
        QCOMPARE(DSNDescription(college), u"Veltrane Database"_qs);
        QVERIFY(ConnectionStringValue(u"DBQ"_qs).endsWith(collegeFile));

        fixture.sources.SetContent({});
        QVERIFY(QFile::remove(gDBQFilename));
        QVERIFY(!ConnectDatabase(false));
        QVERIFY(DSNMissing(college));
        QCOMPARE(fixture.boxes, QStringList());

        fixture.sources.SetContent("[College]\nDriver=MySQL\n");
        QVERIFY(!ConnectDatabase(false));
        QCOMPARE(
            fixture.boxes,
            QStringList(
                u"[Invalid Data Source] Only Microsoft Access and SQL Server databases are supported!"_qs));
        gDBQName.clear();
        QVERIFY(!ConnectDatabase(false));
    }

    /// Level 4 goes back to 3, and only a server takes its own type of text.
    void EndsThePatchAtItsOwnLevel()
    {
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile);
        QVERIFY(ConnectDatabase(false));
        QVERIFY(gConnection.Execute("UPDATE Version SET DBVersion = 4"));
        for (const auto &[type, text] : {std::pair{2, "VCode nvarchar(255) null"}, {1, "VCode Text(255)"}}) {
            StatementLog log;
            gDBQType = type;
            UpgradeDatabase();
            QCOMPARE(log.Statements().size(), 8);
            QVERIFY(log.Statements().at(6).endsWith(QLatin1String(text)));
        }
        QCOMPARE(GetDBVersion(), 3.0);
        QVERIFY(gConnection.Execute("UPDATE Version SET DBVersion = 2") &&
                gConnection.Execute("UPDATE Contacts SET Cust_City = NULL") && ConnectDatabase(false));
        QCOMPARE(GetDBVersion(), 3.0);
        QCOMPARE(TestDatabase::Rows("SELECT Cust_City FROM Contacts"), QStringList("1"));
    }
};

QTEST_GUILESS_MAIN(TestConnectDatabase)
#include "test_connectdatabase.moc"
