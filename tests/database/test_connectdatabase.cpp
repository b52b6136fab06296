#include "database/ConnectDatabase.h"
#include "database/ConnectFixture.h"
#include "database/CredentialStore.h"
#include "database/MiscODBC.h"
#include "database/Registry.h"
#include "support/Files.h"
#include "support/StatementLog.h"

#include <QDir>
#include <QTest>

namespace
{
const QString college = u"College"_qs;
const QString needsPassword = u"[] Access Database requires a password"_qs;
const QString collegeFile = u"college.mdb"_qs;

bool HasColumn(const QString &table, const QString &column)
{
    const auto rows = gConnection.OpenRecordset(u"SELECT * FROM " % table);
    return rows && rows->ColumnIndex(column) >= 0;
}
} // namespace

class TestConnectDatabase final : public QObject
{
    Q_OBJECT

private slots:
    void FindsTheFile_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<bool>("bare");
        QTest::addColumn<bool>("source");
        QTest::newRow("direct, full path") << "college.mdb" << false << false;
        QTest::newRow("direct, bare name: the program's directory") << "college.mdb" << true << false;
        QTest::newRow("source, full path") << "college.mdb" << false << true;
        QTest::newRow("source, bare name: the folder database") << "database/college.mdb" << true << true;
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
        const QByteArray otherEngine =
            QByteArray("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) + QByteArray(4096, '\0');
        const QList<std::function<void(const QString &)>> files{
            [](const QString &) {}, // missing
            [](const QString &file) { QVERIFY(QDir().mkpath(file)); },
            [](const QString &file) { WriteFile(file, {}); },
            [](const QString &file) {
                WriteFile(file, QByteArray("A letter to the college.\n").repeated(99));
            },
            [&](const QString &file) { WriteFile(file, otherEngine); },
            [](const QString &file) {
                QVERIFY(CopyOver(QCoreApplication::applicationDirPath() % u"/system/blank", file) &&
                        OpenUpTemplate(file) && QFile::resize(file, 9'000)); // cut short
            },
        };
        for (const auto &make : files) {
            ConnectFixture fixture;
            gDBQFilename = fixture.Path(collegeFile);
            make(gDBQFilename);
            QVERIFY(!ConnectDatabase(false));
            QVERIFY(!gConnection.IsOpen());
            QCOMPARE(fixture.boxes.size(), 1);
            const QString &box = fixture.boxes[0];
            QVERIFY2(box.startsWith(u"[ODBC] Veltrane couldn't connect to an datasource.\n"_qs) &&
                         box.contains(collegeFile),
                     qPrintable(box));
        }
    }

    void FindsThePassword_data()
    {
        QTest::addColumn<bool>("source");
        QTest::addColumn<QString>("session");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<int>("asked");
        QTest::addColumn<bool>("connects");
        for (const bool source : {false, true}) {
            const auto row = [source](const char *name, const QString &session, const QString &stored,
                                      const QStringList &typed, int asked, bool connects) {
                QTest::addRow("%s: %s", source ? "source" : "direct", name)
                    << source << session << stored << typed << asked << connects;
            };
            const QString right = u"right"_qs;
            const QString wrong = u"wrong"_qs;
            row("the session has it", "right", "", {}, 0, true);
            row("the store has it", "wrong", "right", {}, 0, true);
            row("typed", "", "", {right}, 1, true);
            row("typed, with a wrong one stored", "", "wrong", {right}, 1, true);
            row("typed at the third try", "", "", {wrong, wrong, right}, 3, true);
            row("cancelled", "", "", {}, 1, false);
            row("cancelled at the second try", "wrong", "wrong", {wrong}, 2, false);
        }
    }
    void FindsThePassword()
    {
        QFETCH(bool, source);
        QFETCH(QString, session);
        QFETCH(QString, stored);
        QFETCH(QStringList, typed);
        QFETCH(int, asked);
        QFETCH(bool, connects);
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile, u"right"_qs);
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
        if (connects && session != u"right"_qs)
            QCOMPARE(gDialogResult, 1);
    }

    void TakesPasswordsOfAnyText_data()
    {
        QTest::addColumn<QString>("password");
        QTest::newRow("semicolons") << ";a;b;DSN=x";
        QTest::newRow("what has a meaning elsewhere") << "a@b it's \"{x}\" %1%2";
        QTest::newRow("beyond one byte") << QString::fromUtf8("Zoë 🔑");
        QTest::newRow("10,000 characters") << QString(10'000, u'p');
        QTest::newRow("removed at another workstation") << QString();
    }
    void TakesPasswordsOfAnyText()
    {
        QFETCH(QString, password);
        for (const bool source : {false, true}) {
            ConnectFixture fixture;
            const QString file = fixture.MakeDatabase(collegeFile, password);
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

    /// A path may hold what parts the values of a connection text.
    void KeepsASourceOfAnyPath()
    {
        ConnectFixture fixture;
        const QString file = fixture.MakeDatabase(QString::fromUtf8("über; uns's (2).mdb"));
        QVERIFY(RegisterAccessDSN(college, file, {}, {}, {}));
        gDBQUseODBC = true;
        gDBQName = college;
        QVERIFY(ConnectDatabase(false));
        QCOMPARE(gDBQFilename, file);
        QCOMPARE(DSNFile(college), file);
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

    void UpgradesAnOldDatabase()
    {
        ConnectFixture fixture;
        const QString file = fixture.Path(u"old.mdb"_qs);
        QVERIFY(FileDatabase::Create(file));
        QVERIFY(FileDatabase::OpenExclusive(file, {})->Run(
            u"CREATE TABLE AwardNames (AwardName TEXT, ExamBoard TEXT);"
            "CREATE TABLE Organisations (OrganName TEXT);CREATE TABLE GroupNames (Name TEXT);"
            "CREATE TABLE CreditCardTransaction (CardType TEXT);"
            "INSERT INTO AwardNames (AwardName, ExamBoard) VALUES ('Cookery', 'Board of Cooks');"_qs));
        gDBQFilename = file;
        for (int connection = 0; connection < 2; ++connection) {
            QVERIFY(ConnectDatabase(false));
            QVERIFY(!HasColumn("AwardNames", "ExamBoard"));
            for (const auto &[table, column] : {std::pair{"AwardNames", "Board"},
                                                {"Organisations", "Board"},
                                                {"GroupNames", "LinkRef"},
                                                {"CreditCardTransaction", "VCode"},
                                                {"Version", "DBVersion"}})
                QVERIFY2(HasColumn(table, column), table);
            QCOMPARE(gConnection.OpenRecordset(u"SELECT * FROM AwardNames"_qs)->RowCount(), 1);
            QCOMPARE(GetDBVersion(), 0.0); // no statement puts a row there
        }
        QCOMPARE(fixture.boxes, QStringList());
    }

    /// Level 4 goes back to 3, and only a server takes its own type of text.
    void EndsThePatchAtItsOwnLevel()
    {
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile);
        QVERIFY(ConnectDatabase(false));
        QVERIFY(gConnection.Execute(u"UPDATE Version SET DBVersion = 4"_qs));
        for (const auto &[type, text] : {std::pair{2, "VCode nvarchar(255) null"}, {1, "VCode Text(255)"}}) {
            StatementLog log;
            gDBQType = type;
            UpgradeDatabase();
            QCOMPARE(log.Statements().size(), 8);
            QVERIFY(log.Statements().at(6).endsWith(QLatin1String(text)));
        }
        QCOMPARE(GetDBVersion(), 3.0);
    }
};

QTEST_GUILESS_MAIN(TestConnectDatabase)
#include "test_connectdatabase.moc"
