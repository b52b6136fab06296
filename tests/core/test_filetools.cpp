#include "core/files/File_Tools.h"
#include "core/session/Session.h"
#include "platform/desktop/Directories.h"
#include "platform/desktop/Shell.h"
#include "support/Files.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Documents are opened through a desktop of the test's own: `xdg-mime` and `xdg-open` are first on the
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
        const QString note = Path("opened");
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
        gDocDir = Path("documents");
        PutProgram(u"bin/xdg-mime"_qs, "echo viewer.desktop\n");
        const QByteArray note = Path("opened").toLocal8Bit();
        PutProgram(u"bin/xdg-open"_qs,
                   "printf %s \"$1\" > " + note + ".tmp; mv " + note + ".tmp " + note + "\n");
        m_path = qgetenv("PATH");
        qputenv("PATH", Path("bin").toLocal8Bit() + ":" + m_path);
    }
    void cleanup() { qputenv("PATH", m_path); }

    void ADocumentIsFoundByItsBareName_data()
    {
        const TestTable<QStringList, QString, QString> row{"places", "asked", "opened"};
        const QString document = u"documents/a b.txt"_qs;
        const QStringList there{"documents"};
        row("in the document folder", there, "a b.txt", document);
        row("moved there from another place", there, "/gone/a b.txt", document);
        row("registered on another system", there, "C:\\Letters\\a b.txt", document);
        row("an address of a file is none of the web", there, "file:///x?http://a b.txt", document);
        row("in the program's directory", {"."}, "a b.txt", QString("a b.txt"));
        row("the document folder first", {".", "documents"}, "a b.txt", document);
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
        WriteFile(Path("elsewhere/a.txt"), "x");
        ScriptedDialogs user;
        user.Expect(u"Error running " % Path("documents/a.txt"), "File not found.");
        QVERIFY(!OpenDocument(Path("elsewhere/a.txt")));
        gDocDir = Path("gone");
        user.Expect(u"Error running " % Path("gone/a.txt"), "Invalid path.");
        QVERIFY(!OpenDocument(u"a.txt"_qs));
    }

    void AnAddressGoesToTheDesktopAsItIs()
    {
        ScriptedDialogs nobody;
        for (const QString &address :
             {u"http://www.veltrane.example/a\\b?c=1&d=2"_qs, u"HTTPS://WWW.VELTRANE.EXAMPLE/"_qs}) {
            QFile::remove(Path("opened"));
            QVERIFY(OpenDocument(address));
            QCOMPARE(Opened(), address);
        }
    }

    void ATypeWithoutAProgramLetsTheUserChoose()
    {
        const QString document = Path("documents/a.txt");
        WriteFile(document, "x");
        PutProgram(u"bin/xdg-mime"_qs, {});
        QCOMPARE(Shell::Open(document), Shell::Result::NoAssociation);
        ScriptedDialogs user;
        user.ExpectFile("Open a.txt with", QString());
        QVERIFY(!OpenDocument(u"a.txt"_qs));
        user.ExpectFile("Open a.txt with", Path("bin/xdg-open"));
        QVERIFY(OpenDocument(u"a.txt"_qs));
        QCOMPARE(Opened(), document);
    }
};

QTEST_GUILESS_MAIN(TestFileTools)
#include "test_filetools.moc"
