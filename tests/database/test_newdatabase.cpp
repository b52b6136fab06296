#include "database/ConnectFixture.h"
#include "database/connection/BlankTemplate.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/NewDatabase.h"
#include "support/Files.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

namespace
{
const QString missingTemplate = u"[Fatal System Error] Fatal:Missing blank database template."_qs;
const QString invalidTemplate =
    u"[Fatal System Error] Fatal:Invalid blank database template or from different version."_qs;

/// A workstation with the template, and a user who always chooses `new.mdb` in the program's directory.
struct NewFixture : ConnectFixture {
    NewFixture()
    {
        Directories::Writable();
        QDir(directory.path()).mkdir(u"system"_qs);
        QFile::copy(QCoreApplication::applicationDirPath() % u"/system/blank", Template());
        chosenFile = Path("new.mdb");
        Dialogs::Installed().registerDatabase = [this](const QString &source, const QString &description,
                                                       const QString &file) {
            registered.append(source % u'|' % description % u'|' % file);
        };
    }
    QString Template() const { return Path("system/blank"); }
    QString Working() const { return Path("new.tmp"); }
    QString NotCreated(const QString &file) const { return u"[Error] Unable to create database " % file; }

    QStringList registered;
};
} // namespace

class TestNewDatabase final : public QObject
{
    Q_OBJECT

private slots:
    void MakesADatabaseThatOpens()
    {
        NewFixture fixture;
        QVERIFY(QFile::setPermissions(fixture.Template(), QFile::ReadOwner));
        WriteFile(fixture.chosenFile, "what was there before");
        WriteFile(fixture.chosenFile + u"-wal"_qs, "its log");
        NewDatabase();
        QCOMPARE(fixture.boxes,
                 QStringList(u"[New Veltrane Database Location] Microsoft Access Database (*.mdb)"_qs));
        QCOMPARE(fixture.registered,
                 QStringList(u"New Blank Veltrane Database|Veltrane Database|" % fixture.chosenFile));
        QVERIFY(!QFile::exists(fixture.Working()));
        QVERIFY(!QFile::exists(fixture.chosenFile + u"-wal"_qs));
        QVERIFY(!gConnection.IsOpen());

        gDBQFilename = fixture.chosenFile;
        QVERIFY(ConnectDatabase(false));
        QCOMPARE(fixture.asked, 0);
        QVERIFY(gConnection.OpenRecordset("SELECT * FROM Users")->IsEmpty());
    }

    void RefusesAWrongTemplate()
    {
        const std::function<void(const QString &)> spoilings[] = {
            [](const QString &file) { WriteFile(file, QByteArray(5000, 't')); },
            [](const QString &file) { QVERIFY(QFile::resize(file, 300)); },
            [](const QString &file) {
                QVERIFY(FileDatabase::OpenExclusive(file, TemplatePassword)->NewPassword("rose"));
            },
            [](const QString &file) {
                QVERIFY(FileDatabase::OpenExclusive(file, TemplatePassword)->NewPassword({}));
            },
            [](const QString &file) { QVERIFY(QFile::remove(file)); },
        };
        for (const auto &spoil : spoilings) {
            NewFixture fixture;
            spoil(fixture.Template());
            NewDatabase();
            QCOMPARE(fixture.boxes,
                     QStringList(QFile::exists(fixture.Template()) ? invalidTemplate : missingTemplate));
            QVERIFY(!QFile::exists(fixture.Working()) && fixture.registered.isEmpty());
        }
    }

    void ACancelledChooserLeavesTheWorkingCopy()
    {
        NewFixture fixture;
        fixture.chosenFile.clear();
        NewDatabase();
        QVERIFY(QFile::exists(fixture.Working()));
        QVERIFY(fixture.registered.isEmpty());
        fixture.chosenFile = fixture.Path("new.mdb");
        NewDatabase();
        QCOMPARE(fixture.registered.size(), 1);
        QVERIFY(!QFile::exists(fixture.Working()));
    }

    void TellsWhatCannotBeWritten()
    {
        NewFixture fixture;
        const auto create = [&](const QString &file) {
            fixture.chosenFile = file;
            fixture.boxes.clear();
            NewDatabase();
            return fixture.boxes.value(1);
        };
        const QString nowhere = fixture.Path("no/such/folder/new.mdb");
        QCOMPARE(create(nowhere), fixture.NotCreated(nowhere));
        QCOMPARE(create(fixture.directory.path()), fixture.NotCreated(fixture.directory.path()));
        QVERIFY(!QFile::exists(fixture.Working()));
        QVERIFY(fixture.registered.isEmpty());

        const FullDisk disk(20'000);
        fixture.boxes.clear();
        NewDatabase();
        QCOMPARE(fixture.boxes, QStringList(fixture.NotCreated(fixture.Working())));
    }

    /// The disk may fill up between the working copy and the database itself.
    void AFullDiskLeavesWhatWasThere()
    {
        NewFixture fixture;
        WriteFile(fixture.chosenFile, "what was there before");
        std::optional<FullDisk> disk;
        Dialogs::Installed().saveFile = [&](const Dialogs::FileQuestion &) {
            disk.emplace(20'000);
            return fixture.chosenFile;
        };
        NewDatabase();
        disk.reset();
        QCOMPARE(fixture.boxes, QStringList(fixture.NotCreated(fixture.chosenFile)));
        QCOMPARE(ContentOf(fixture.chosenFile), QByteArray("what was there before"));
        QVERIFY(!QFile::exists(fixture.Working()));
    }

    void ReplacesNoDatabaseThatSomebodyWorksOn()
    {
        NewFixture fixture;
        gDBQFilename = fixture.MakeDatabase("college.mdb");
        QVERIFY(ConnectDatabase(false));
        fixture.chosenFile = gDBQFilename;
        gDBValid = true;
        NewDatabase();
        QCOMPARE(fixture.boxes.value(1), fixture.NotCreated(gDBQFilename));
        QVERIFY(gConnection.Execute("INSERT INTO City (City) VALUES ('Leeds')"));

        Connection other;
        QVERIFY(other.Open(gConnection.ConnectionText()));
        QVERIFY(other.OpenRecordset("SELECT * FROM City"));
        gConnection.Close();
        gDBValid = false;
        fixture.boxes.clear();
        NewDatabase();
        QCOMPARE(fixture.boxes.value(1), fixture.NotCreated(gDBQFilename));
        QCOMPARE(other.OpenRecordset("SELECT * FROM City")->RowCount(), 2);
    }
};

QTEST_GUILESS_MAIN(TestNewDatabase)
#include "test_newdatabase.moc"
