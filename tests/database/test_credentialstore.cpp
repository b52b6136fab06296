#include "core/Session.h"
#include "database/CredentialStore.h"
#include "database/FullDisk.h"
#include "platform/Directories.h"
#include "support/Files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestCredentialStore final : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_file = m_dir.filePath(u"key.dat"_qs);

private slots:
    void initTestCase() { Directories::SetProgram(m_dir.path()); }
    void init()
    {
        QFile::remove(m_file);
        gDBQUseODBC = false;
        for (QString *text : {&gDBQName, &gDBQFilename, &gDBUser, &gDBPassword})
            text->clear();
    }

    void KeepsOneValueAKey()
    {
        QCOMPARE(FetchCredential(m_file, u"one"_qs), QString());
        QVERIFY(StoreCredential(m_file, u"one"_qs, u"first"_qs));
        QVERIFY(StoreCredential(m_file, u"Two"_qs, u"second"_qs));
        QVERIFY(StoreCredential(m_file, u"ONE"_qs, u"third"_qs));
        QCOMPARE(FetchCredential(m_file, u"one"_qs), u"third"_qs);
        QVERIFY(!ContentOf(m_file).contains("third"));
        QCOMPARE(ScrambleLine(ContentOf(m_file)), QByteArray("[Two]=second\n[ONE]=third\n"));

        QVERIFY(StoreCredential(m_file, u"one"_qs, QString()));
        QCOMPARE(ScrambleLine(ContentOf(m_file)), QByteArray("[Two]=second\n"));
        QVERIFY(!QFile::exists(m_dir.filePath(u"temp.dat"_qs)));
        QCOMPARE(QFile::permissions(m_file) & (QFile::ReadOther | QFile::ReadGroup), QFile::Permissions());
    }

    void ScramblesEveryByteBothWays()
    {
        QByteArray all;
        for (int byte = 0; byte < 256; ++byte)
            all.append(static_cast<char>(byte));
        const QByteArray scrambled = ScrambleLine(all);
        QCOMPARE(ScrambleLine(scrambled), all);
        QCOMPARE(scrambled.indexOf('\n'), all.indexOf('\n'));
        QVERIFY(!scrambled.contains("abc") && !scrambled.contains("123"));
    }

    void CarriesTheSessionsCredentials_data()
    {
        QTest::addColumn<QString>("user");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("passwordBack");
        const auto row = [](const char *name, const QString &user, const QString &password,
                            const QString &back) { QTest::newRow(name) << user << password << back; };
        row("at signs", "me@home", "a@b@", "a@b@");
        row("the escape itself", "", "100%40", "100@");
        row("what has a meaning elsewhere", "", "x]=y[z'\";%1", "x]=y[z'\";%1");
        row("beyond one byte", "sa", "Zoë 🔑 пароль", "Zoë 🔑 пароль");
    }
    void CarriesTheSessionsCredentials()
    {
        QFETCH(QString, user);
        QFETCH(QString, password);
        gDBQFilename = u"/data/College.mdb"_qs;
        gDBQName = u"College"_qs;
        gDBUser = user;
        gDBPassword = password;
        QVERIFY(StoreSessionCredential());
        gDBUser = gDBPassword = u"?"_qs;
        gDBQFilename = u"/DATA/college.mdb"_qs;
        FetchSessionCredential();
        QCOMPARE(gDBUser, user);
        QTEST(gDBPassword, "passwordBack");

        // A data source keeps its password under its name, as it is.
        gDBQUseODBC = true;
        gDBPassword = password;
        QVERIFY(StoreSessionCredential());
        gDBPassword.clear();
        FetchSessionCredential();
        QCOMPARE(gDBPassword, password);
    }

    void ReadsWhatIsNoStore_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = ScrambleLine("[key]=value");
        QByteArray binary;
        for (int i = 0; i < 4096; ++i)
            binary.append(static_cast<char>(i * 37));
        QTest::newRow("half a line at the end") << good + '\n' + ScrambleLine("[other");
        QTest::newRow("no line end") << good;
        QTest::newRow("carriage returns, empty lines") << "\n\n" + good + "\r\n\n";
        QTest::newRow("not scrambled line before") << "[key]=plain\n" + good + '\n';
        QTest::newRow("binary before") << binary + '\n' + good + '\n';
        QTest::newRow("a line of 10 MB before") << QByteArray(10 * 1024 * 1024, 'x') + '\n' + good + '\n';
        QTest::newRow("a million lines before") << QByteArray("x\n").repeated(1'000'000) + good + '\n';
    }
    void ReadsWhatIsNoStore()
    {
        QFETCH(QByteArray, content);
        WriteFile(m_file, content);
        QCOMPARE(FetchCredential(m_file, u"key"_qs), u"value"_qs);
        QVERIFY(StoreCredential(m_file, u"new"_qs, u"entry"_qs));
        QCOMPARE(FetchCredential(m_file, u"key"_qs), u"value"_qs);
        QCOMPARE(FetchCredential(m_file, u"new"_qs), u"entry"_qs);
    }

    void AFailedWriteLosesNothing()
    {
        const QString directory = m_dir.filePath(u"folder"_qs);
        QVERIFY(QDir().mkpath(directory));
        QCOMPARE(FetchCredential(directory, u"key"_qs), QString());
        QVERIFY(!StoreCredential(directory, u"key"_qs, u"value"_qs));

        QVERIFY(StoreCredential(m_file, u"old"_qs, u"kept"_qs));
        const QByteArray before = ContentOf(m_file);
        {
            const FullDisk disk(20);
            QVERIFY(!StoreCredential(m_file, u"new"_qs, QString(200, u'x')));
        }
        QCOMPARE(ContentOf(m_file), before);
        QVERIFY(!QFile::exists(m_dir.filePath(u"temp.dat"_qs)));
    }
};

QTEST_GUILESS_MAIN(TestCredentialStore)
#include "test_credentialstore.moc"
