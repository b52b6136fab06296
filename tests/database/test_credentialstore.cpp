#include "core/session/Session.h"
#include "database/connection/CredentialStore.h"
#include "platform/desktop/Directories.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/TestTable.h"

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
        QCOMPARE(FetchCredential(m_file, "one"), QString());
        QVERIFY(StoreCredential(m_file, "one", "first"));
        QVERIFY(StoreCredential(m_file, "Two", "second"));
        QVERIFY(StoreCredential(m_file, "ONE", "third"));
        QCOMPARE(FetchCredential(m_file, "one"), u"third"_qs);
        QVERIFY(!ContentOf(m_file).contains("third"));
        QCOMPARE(ScrambleLine(ContentOf(m_file)), QByteArray("[Two]=second\n[ONE]=third\n"));

        QVERIFY(StoreCredential(m_file, "one", QString()));
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

    void CarriesTheSessionsCredentials()
    {
        const std::tuple<QString, QString, QString> credentials[] = {
            {"me@home", "a@b@", "a@b@"},
            {"", "100%40", "100@"}, // the escape itself
            {"", "x]=y[z'\";%1", "x]=y[z'\";%1"},
            {"sa", "Zoë 🔑 пароль", "Zoë 🔑 пароль"},
        };
        gDBQName = "College";
        for (const auto &[user, password, back] : credentials) {
            gDBQUseODBC = false;
            gDBQFilename = "/data/College.mdb";
            gDBUser = user;
            gDBPassword = password;
            QVERIFY(StoreSessionCredential());
            gDBUser = gDBPassword = "?";
            gDBQFilename = "/DATA/college.mdb";
            FetchSessionCredential();
            QCOMPARE(gDBUser, user);
            QCOMPARE(gDBPassword, back);

            // A data source keeps its password under its name, as it is.
            gDBQUseODBC = true;
            gDBPassword = password;
            QVERIFY(StoreSessionCredential());
            gDBPassword.clear();
            FetchSessionCredential();
            QCOMPARE(gDBPassword, password);
        }
    }

    void ReadsWhatIsNoStore_data()
    {
        const TestTable<QByteArray> row{"content"};
        const QByteArray good = ScrambleLine("[key]=value");
        QByteArray binary;
        for (int i = 0; i < 4096; ++i)
            binary.append(static_cast<char>(i * 37));
        row("half a line at the end", good + '\n' + ScrambleLine("[other"));
        row("no line end", good);
        row("carriage returns, empty lines", "\n\n" + good + "\r\n\n");
        row("not scrambled line before", "[key]=plain\n" + good + '\n');
        row("binary before", binary + '\n' + good + '\n');
        row("a line of 10 MB before", QByteArray(10 * 1024 * 1024, 'x') + '\n' + good + '\n');
        row("a million lines before", QByteArray("x\n").repeated(1'000'000) + good + '\n');
    }
    void ReadsWhatIsNoStore()
    {
        QFETCH(QByteArray, content);
        WriteFile(m_file, content);
        QCOMPARE(FetchCredential(m_file, "key"), u"value"_qs);
        QVERIFY(StoreCredential(m_file, "new", "entry"));
        QCOMPARE(FetchCredential(m_file, "key"), u"value"_qs);
        QCOMPARE(FetchCredential(m_file, "new"), u"entry"_qs);
    }

    void AFailedWriteLosesNothing()
    {
        const QString directory = m_dir.filePath(u"folder"_qs);
        QVERIFY(QDir().mkpath(directory));
        QCOMPARE(FetchCredential(directory, "key"), QString());
        QVERIFY(!StoreCredential(directory, "key", "value"));

        QVERIFY(StoreCredential(m_file, "old", "kept"));
        const QByteArray before = ContentOf(m_file);
        {
            const FullDisk disk(20);
            QVERIFY(!StoreCredential(m_file, "new", QString(200, u'x')));
        }
        QCOMPARE(ContentOf(m_file), before);
        QVERIFY(!QFile::exists(m_dir.filePath(u"temp.dat"_qs)));
    }
};

QTEST_GUILESS_MAIN(TestCredentialStore)
#include "test_credentialstore.moc"
