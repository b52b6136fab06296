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
        const QString note = Path(u"opened"_qs);
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
        gDocDir = Path(u"documents"_qs);
        PutProgram(u"bin/xdg-mime"_qs, "echo viewer.desktop\n");
        const QByteArray note = Path(u"opened"_qs).toLocal8Bit();
        PutProgram(u"bin/xdg-open"_qs,
                   "printf %s \"$1\" > " + note + ".tmp; mv " + note + ".tmp " + note + "\n");
        m_path = qgetenv("PATH");
        qputenv("PATH", Path(u"bin"_qs).toLocal8Bit() + ":" + m_path);
    }
    void cleanup() { qputenv("PATH", m_path); }

    void ADocumentIsFoundByItsBareName_data()
    {
        QTest::addColumn<QStringList>("places");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("opened");
        const QString document = u"documents/a b.txt"_qs;
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
        WriteFile(Path(u"elsewhere/a.txt"_qs), "x");
        ScriptedDialogs user;
        user.Expect(u"Error running " % Path(u"documents/a.txt"_qs), u"File not found."_qs);
        QVERIFY(!OpenDocument(Path(u"elsewhere/a.txt"_qs)));
        gDocDir = Path(u"gone"_qs);
        user.Expect(u"Error running " % Path(u"gone/a.txt"_qs), u"Invalid path."_qs);
        QVERIFY(!OpenDocument(u"a.txt"_qs));
    }

    void AnAddressGoesToTheDesktopAsItIs()
    {
        ScriptedDialogs nobody;
        for (const QString &address :
             {u"http://www.veltrane.example/a\\b?c=1&d=2"_qs, u"HTTPS://WWW.VELTRANE.EXAMPLE/"_qs}) {
            QFile::remove(Path(u"opened"_qs));
            QVERIFY(OpenDocument(address));
            QCOMPARE(Opened(), address);
        }
    }

    void ATypeWithoutAProgramLetsTheUserChoose()
    {
        const QString document = Path(u"documents/a.txt"_qs);
        WriteFile(document, "x");
        PutProgram(u"bin/xdg-mime"_qs, {});
        QCOMPARE(Shell::Open(document), Shell::Result::NoAssociation);
        ScriptedDialogs user;
        user.ExpectFile(u"Open a.txt with"_qs, QString());
        QVERIFY(!OpenDocument(u"a.txt"_qs));
        user.ExpectFile(u"Open a.txt with"_qs, Path(u"bin/xdg-open"_qs));
        QVERIFY(OpenDocument(u"a.txt"_qs));
        QCOMPARE(Opened(), document);
    }
};

QTEST_GUILESS_MAIN(TestFileTools)
#include "test_filetools.moc"
