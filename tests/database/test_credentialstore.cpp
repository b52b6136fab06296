#include "core/Session.h"
#include "database/CredentialStore.h"
#include "database/FullDisk.h"
#include "platform/Directories.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace
{
QByteArray ContentOf(const QString &file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

void Write(const QString &file, const QByteArray &content)
{
    QFile out(file);
    QVERIFY(out.open(QIODevice::WriteOnly) && out.write(content) == content.size());
}
} // namespace

class TestCredentialStore final : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_file = m_dir.filePath(QStringLiteral("key.dat"));

private slots:
    void initTestCase() { Directories::SetProgram(m_dir.path()); }
    void init()
    {
        QFile::remove(m_file);
        gDBQUseODBC = false;
        gDBQName.clear();
        gDBQFilename.clear();
        gDBUser.clear();
        gDBPassword.clear();
    }

    void KeepsOneValueAKey()
    {
        QCOMPARE(FetchCredential(m_file, QStringLiteral("one")), QString());
        QVERIFY(StoreCredential(m_file, QStringLiteral("one"), QStringLiteral("first")));
        QVERIFY(StoreCredential(m_file, QStringLiteral("Two"), QStringLiteral("second")));
        QVERIFY(StoreCredential(m_file, QStringLiteral("ONE"), QStringLiteral("third")));
        QCOMPARE(FetchCredential(m_file, QStringLiteral("one")), QStringLiteral("third"));
        QCOMPARE(FetchCredential(m_file, QStringLiteral("two")), QStringLiteral("second"));
        QVERIFY(!ContentOf(m_file).contains("third"));
        QCOMPARE(ScrambleLine(ContentOf(m_file)), QByteArray("[Two]=second\n[ONE]=third\n"));

        QVERIFY(StoreCredential(m_file, QStringLiteral("one"), QString()));
        QCOMPARE(ScrambleLine(ContentOf(m_file)), QByteArray("[Two]=second\n"));
        QVERIFY(!QFile::exists(m_dir.filePath(QStringLiteral("temp.dat"))));
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
        QVERIFY(!scrambled.contains("abc") && !scrambled.contains("ABC") && !scrambled.contains("123"));
    }

    void CarriesTheSessionsCredentials_data()
    {
        QTest::addColumn<QString>("user");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("passwordBack");
        const auto row = [](const char *name, const char *user, const char *password, const char *back) {
            QTest::newRow(name) << QString::fromUtf8(user) << QString::fromUtf8(password)
                                << QString::fromUtf8(back);
        };
        row("plain", "sa", "secret", "secret");
        row("at signs", "me@home", "a@b@", "a@b@");
        row("the escape itself", "", "100%40", "100@");
        row("brackets", "", "x]=y[z", "x]=y[z");
        row("apostrophe, quote, semicolon, %1", "", "'\";%1", "'\";%1");
        row("beyond one byte", "", "Zoë 🔑 пароль", "Zoë 🔑 пароль");
    }
    void CarriesTheSessionsCredentials()
    {
        QFETCH(QString, user);
        QFETCH(QString, password);
        QFETCH(QString, passwordBack);
        gDBQFilename = QStringLiteral("/data/College.mdb");
        gDBUser = user;
        gDBPassword = password;
        QVERIFY(StoreSessionCredential());
        gDBUser = gDBPassword = QStringLiteral("?");
        gDBQFilename = QStringLiteral("/DATA/college.mdb");
        FetchSessionCredential();
        QCOMPARE(gDBUser, user);
        QCOMPARE(gDBPassword, passwordBack);
    }

    void KeepsASourceByItsName()
    {
        gDBQUseODBC = true;
        gDBQName = QStringLiteral("College");
        gDBQFilename = QStringLiteral("/data/College.mdb");
        gDBPassword = QStringLiteral("a@b");
        QVERIFY(StoreSessionCredential());
        QCOMPARE(FetchCredential(m_file, QStringLiteral("college")), QStringLiteral("a@b"));
        gDBPassword.clear();
        FetchSessionCredential();
        QCOMPARE(gDBPassword, QStringLiteral("a@b"));
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
        QTest::newRow("carriage returns") << good + "\r\n";
        QTest::newRow("not scrambled line before") << "[key]=plain\n" + good + '\n';
        QTest::newRow("empty lines") << "\n\n" + good + "\n\n";
        QTest::newRow("binary before") << binary + '\n' + good + '\n';
        QTest::newRow("a line of 10 MB before") << QByteArray(10 * 1024 * 1024, 'x') + '\n' + good + '\n';
        QTest::newRow("a million lines before") << QByteArray("x\n").repeated(1'000'000) + good + '\n';
    }
    void ReadsWhatIsNoStore()
    {
        QFETCH(QByteArray, content);
        Write(m_file, content);
        QCOMPARE(FetchCredential(m_file, QStringLiteral("key")), QStringLiteral("value"));
        QVERIFY(StoreCredential(m_file, QStringLiteral("new"), QStringLiteral("entry")));
        QCOMPARE(FetchCredential(m_file, QStringLiteral("key")), QStringLiteral("value"));
        QCOMPARE(FetchCredential(m_file, QStringLiteral("new")), QStringLiteral("entry"));
    }

    void ADirectoryInItsPlaceGivesNothing()
    {
        const QString directory = m_dir.filePath(QStringLiteral("folder"));
        QVERIFY(QDir().mkpath(directory));
        QCOMPARE(FetchCredential(directory, QStringLiteral("key")), QString());
        QVERIFY(!StoreCredential(directory, QStringLiteral("key"), QStringLiteral("value")));
    }

    void AFullDiskLosesNothing()
    {
        QVERIFY(StoreCredential(m_file, QStringLiteral("old"), QStringLiteral("kept")));
        const QByteArray before = ContentOf(m_file);
        {
            const FullDisk disk(20);
            QVERIFY(!StoreCredential(m_file, QStringLiteral("new"), QString(200, u'x')));
        }
        QCOMPARE(ContentOf(m_file), before);
        QVERIFY(!QFile::exists(m_dir.filePath(QStringLiteral("temp.dat"))));
    }
};

QTEST_GUILESS_MAIN(TestCredentialStore)
#include "test_credentialstore.moc"
