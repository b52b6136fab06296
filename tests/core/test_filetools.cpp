#include "core/File_Tools.h"
#include "core/Session.h"
#include "platform/Directories.h"
#include "platform/Shell.h"
#include "support/ScriptedDialogs.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Documents are opened through a desktop of the test's own: `xdg-mime` and `xdg-open` stand first on the
/// path, answer as the test wants, and note what they were given.
class TestFileTools : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { qputenv("PATH", m_path); }

    void ADocumentIsFoundByItsBareName_data();
    void ADocumentIsFoundByItsBareName();
    void AMissingDocumentIsTold();
    void AMissingFolderIsTold();
    void AnAddressGoesToTheDesktopAsItIs_data();
    void AnAddressGoesToTheDesktopAsItIs();
    void ATypeWithoutAProgramLetsTheUserChoose();

private:
    QString Path(const QString &name) const { return m_directory->filePath(name); }
    void Put(const QString &name, const QByteArray &content, bool isProgram = false) const;
    QString Opened() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QByteArray m_path;
};

void TestFileTools::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    for (const char *folder : {"bin", "documents", "elsewhere"})
        QVERIFY(QDir(m_directory->path()).mkdir(QString::fromLatin1(folder)));
    Directories::SetProgram(m_directory->path());
    gDocDir = Path(QStringLiteral("documents"));
    Put(QStringLiteral("bin/xdg-mime"), "#!/bin/sh\necho viewer.desktop\n", true);
    const QByteArray note = Path(QStringLiteral("opened")).toLocal8Bit();
    Put(QStringLiteral("bin/xdg-open"),
        "#!/bin/sh\nprintf %s \"$1\" > " + note + ".tmp; mv " + note + ".tmp " + note + "\n", true);
    m_path = qgetenv("PATH");
    qputenv("PATH", Path(QStringLiteral("bin")).toLocal8Bit() + ":" + m_path);
}

void TestFileTools::Put(const QString &name, const QByteArray &content, bool isProgram) const
{
    QFile file(Path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    if (isProgram)
        file.setPermissions(file.permissions() | QFile::ExeOwner);
}

QString TestFileTools::Opened() const
{
    const QString note = Path(QStringLiteral("opened"));
    QFile file(note);
    return QTest::qWaitFor([&] { return file.exists(); }, 3000) && file.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(file.readAll()).trimmed()
               : QString();
}

void TestFileTools::ADocumentIsFoundByItsBareName_data()
{
    QTest::addColumn<QStringList>("places");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("opened");
    QTest::newRow("in the document folder") << QStringList{"documents"} << "a b.txt"
                                            << "documents/a b.txt";
    QTest::newRow("moved there from another place") << QStringList{"documents"} << "/gone/a b.txt"
                                                    << "documents/a b.txt";
    QTest::newRow("registered on another system") << QStringList{"documents"} << "C:\\Letters\\a b.txt"
                                                  << "documents/a b.txt";
    QTest::newRow("in the program's directory") << QStringList{"."} << "a b.txt"
                                                << "a b.txt";
    QTest::newRow("the document folder comes first") << QStringList{"documents", "."} << "a b.txt"
                                                     << "documents/a b.txt";
}

void TestFileTools::ADocumentIsFoundByItsBareName()
{
    QFETCH(QStringList, places);
    QFETCH(QString, asked);
    QFETCH(QString, opened);
    for (const QString &place : places)
        Put(place % u"/a b.txt", "x");
    ScriptedDialogs nobody;
    QVERIFY(OpenDocument(asked));
    QCOMPARE(Opened(), Path(opened));
}

void TestFileTools::AMissingDocumentIsTold()
{
    Put(QStringLiteral("elsewhere/a.txt"), "x");
    ScriptedDialogs user;
    user.Expect(u"Error running " % Path(QStringLiteral("documents/a.txt")),
                QStringLiteral("File not found."));
    QVERIFY(!OpenDocument(Path(QStringLiteral("elsewhere/a.txt"))));
}

void TestFileTools::AMissingFolderIsTold()
{
    gDocDir = Path(QStringLiteral("gone"));
    ScriptedDialogs user;
    user.Expect(u"Error running " % Path(QStringLiteral("gone/a.txt")), QStringLiteral("Invalid path."));
    QVERIFY(!OpenDocument(QStringLiteral("a.txt")));
}

void TestFileTools::AnAddressGoesToTheDesktopAsItIs_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("page") << "http://www.veltrane.example/a\\b?c=1&d=2";
    QTest::newRow("in capitals") << "HTTP://WWW.VELTRANE.EXAMPLE/";
    QTest::newRow("secure") << "https://www.veltrane.example/";
}

void TestFileTools::AnAddressGoesToTheDesktopAsItIs()
{
    QFETCH(QString, address);
    ScriptedDialogs nobody;
    QVERIFY(OpenDocument(address));
    QCOMPARE(Opened(), address);
}

void TestFileTools::ATypeWithoutAProgramLetsTheUserChoose()
{
    Put(QStringLiteral("documents/a.txt"), "x");
    Put(QStringLiteral("bin/xdg-mime"), "#!/bin/sh\n", true);
    QCOMPARE(Shell::Open(Path(QStringLiteral("documents/a.txt"))), Shell::Result::NoAssociation);
    ScriptedDialogs user;
    user.ExpectFile(QStringLiteral("Open a.txt with"), QString());
    QVERIFY(!OpenDocument(QStringLiteral("a.txt")));
    user.ExpectFile(QStringLiteral("Open a.txt with"), Path(QStringLiteral("bin/xdg-open")));
    QVERIFY(OpenDocument(QStringLiteral("a.txt")));
    QCOMPARE(Opened(), Path(QStringLiteral("documents/a.txt")));
}

QTEST_GUILESS_MAIN(TestFileTools)
#include "test_filetools.moc"
