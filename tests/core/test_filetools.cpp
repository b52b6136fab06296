#include "core/File_Tools.h"
#include "core/Session.h"
#include "platform/Directories.h"
#include "platform/Shell.h"
#include "support/Files.h"
#include "support/ScriptedDialogs.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Documents are opened through a desktop of the test's own: `xdg-mime` and `xdg-open` stand first on the
/// path, answer as the test wants, and note what they were given.
class TestFileTools : public QObject
{
    Q_OBJECT

    QString Path(const QString &name) const { return m_directory->filePath(name); }
    void PutProgram(const QString &name, const QByteArray &script) const
    {
        WriteFile(Path(name), "#!/bin/sh\n" + script);
        QVERIFY(QFile::setPermissions(Path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    QString Opened() const
    {
        const QString note = Path(QStringLiteral("opened"));
        return QTest::qWaitFor([&] { return QFile::exists(note); }, 3000)
                   ? QString::fromUtf8(ContentOf(note)).trimmed()
                   : QString();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QByteArray m_path;

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        for (const char *folder : {"bin", "documents", "elsewhere"})
            QVERIFY(QDir(m_directory->path()).mkdir(QString::fromLatin1(folder)));
        Directories::SetProgram(m_directory->path());
        gDocDir = Path(QStringLiteral("documents"));
        PutProgram(QStringLiteral("bin/xdg-mime"), "echo viewer.desktop\n");
        const QByteArray note = Path(QStringLiteral("opened")).toLocal8Bit();
        PutProgram(QStringLiteral("bin/xdg-open"),
                   "printf %s \"$1\" > " + note + ".tmp; mv " + note + ".tmp " + note + "\n");
        m_path = qgetenv("PATH");
        qputenv("PATH", Path(QStringLiteral("bin")).toLocal8Bit() + ":" + m_path);
    }
    void cleanup() { qputenv("PATH", m_path); }

    void ADocumentIsFoundByItsBareName_data()
    {
        QTest::addColumn<QStringList>("places");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("opened");
        const QString document = QStringLiteral("documents/a b.txt");
        const QStringList there{"documents"};
        QTest::newRow("in the document folder") << there << "a b.txt" << document;
        QTest::newRow("moved there from another place") << there << "/gone/a b.txt" << document;
        QTest::newRow("registered on another system") << there << "C:\\Letters\\a b.txt" << document;
        QTest::newRow("in the program's directory") << QStringList{"."} << "a b.txt" << QString("a b.txt");
        QTest::newRow("the document folder first") << QStringList{".", "documents"} << "a b.txt" << document;
    }
    void ADocumentIsFoundByItsBareName()
    {
        QFETCH(QStringList, places);
        QFETCH(QString, asked);
        QFETCH(QString, opened);
        ScriptedDialogs nobody;
        QVERIFY(!DocumentExists(asked));
        for (const QString &place : places)
            WriteFile(Path(place % u"/a b.txt"), "x");
        QVERIFY(DocumentExists(asked));
        QVERIFY(OpenDocument(asked));
        QCOMPARE(Opened(), Path(opened));
    }

    void WhatIsMissingIsTold()
    {
        WriteFile(Path(QStringLiteral("elsewhere/a.txt")), "x");
        ScriptedDialogs user;
        user.Expect(u"Error running " % Path(QStringLiteral("documents/a.txt")),
                    QStringLiteral("File not found."));
        QVERIFY(!OpenDocument(Path(QStringLiteral("elsewhere/a.txt"))));
        gDocDir = Path(QStringLiteral("gone"));
        user.Expect(u"Error running " % Path(QStringLiteral("gone/a.txt")), QStringLiteral("Invalid path."));
        QVERIFY(!OpenDocument(QStringLiteral("a.txt")));
    }

    void AnAddressGoesToTheDesktopAsItIs_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("page") << "http://www.veltrane.example/a\\b?c=1&d=2";
        QTest::newRow("in capitals") << "HTTP://WWW.VELTRANE.EXAMPLE/";
        QTest::newRow("secure") << "https://www.veltrane.example/";
    }
    void AnAddressGoesToTheDesktopAsItIs()
    {
        QFETCH(QString, address);
        ScriptedDialogs nobody;
        QVERIFY(OpenDocument(address));
        QCOMPARE(Opened(), address);
    }

    void ATypeWithoutAProgramLetsTheUserChoose()
    {
        const QString document = Path(QStringLiteral("documents/a.txt"));
        WriteFile(document, "x");
        PutProgram(QStringLiteral("bin/xdg-mime"), {});
        QCOMPARE(Shell::Open(document), Shell::Result::NoAssociation);
        ScriptedDialogs user;
        user.ExpectFile(QStringLiteral("Open a.txt with"), QString());
        QVERIFY(!OpenDocument(QStringLiteral("a.txt")));
        user.ExpectFile(QStringLiteral("Open a.txt with"), Path(QStringLiteral("bin/xdg-open")));
        QVERIFY(OpenDocument(QStringLiteral("a.txt")));
        QCOMPARE(Opened(), document);
    }
};

QTEST_GUILESS_MAIN(TestFileTools)
#include "test_filetools.moc"
