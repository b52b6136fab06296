#include "platform/connection/Connection.h"
#include "platform/engines/FileDatabase.h"
#include "support/Files.h"
#include "support/TestTable.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <optional>

namespace
{
QString ConnectionTextFor(const QString &file, const QString &password = {}, int lockWait = 10'000)
{
    return u"DBQ=" % file %
           u";Driver={Microsoft Access Driver (*.mdb)};DriverId=25;MaxBufferSize=8192;Threads=20;"
           u"LockWait=" %
           QString::number(lockWait) % u";PWD=" % password;
}

/// Writes rows in a group until it is killed, telling each commit.
int WriteUntilKilled(const QString &file)
{
    Connection connection;
    if (!connection.Open(ConnectionTextFor(file)))
        return 1;
    WriteGroup group(connection);
    for (int i = 1;; ++i) {
        const QString number = QString::number(i);
        if (!connection.Execute(u"INSERT INTO People (Name, Age) VALUES ('P" % number % u"', " % number %
                                u")"))
            return 2;
        if (i % 100 == 0) {
            if (!group.Finish())
                return 3;
            std::printf("%d\n", i);
            std::fflush(stdout);
        }
    }
}

int OpenAndTell(const QString &file)
{
    Connection connection;
    const bool opened = connection.Open(ConnectionTextFor(file, {}, 300));
    std::printf("%s\n", opened ? "opened" : qPrintable(connection.Errors().first().description));
    return 0;
}

/// Another workstation: holds the right to write until its input closes.
int Hold(const QString &file)
{
    Connection connection;
    if (!connection.Open(ConnectionTextFor(file)) || !connection.Execute("BEGIN IMMEDIATE"))
        return 1;
    std::printf("held\n");
    std::fflush(stdout);
    std::getchar();
    return connection.Execute("COMMIT") ? 0 : 1;
}

/// A crash in the middle of a transaction that has reached the file, by the journal beside it.
int WriteBesideAJournal(const QString &file)
{
    const auto alone = FileDatabase::OpenExclusive(file, u"key"_qs);
    const bool written =
        alone && alone->Run("PRAGMA cache_size=5; BEGIN; UPDATE People SET Age = 99; WITH RECURSIVE n(i) AS "
                            "(SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO People "
                            "(Name, Age) SELECT 'Lost', i FROM n");
    std::printf(written ? "written\n" : "failed\n");
    std::fflush(stdout);
    return std::getchar();
}

/// `given` is the file, the old and the new password.
int ChangePassword(const QString &given)
{
    const QStringList parts = given.split(u'|');
    const auto alone = FileDatabase::OpenExclusive(parts[0], parts[1]);
    std::printf("changing\n");
    std::fflush(stdout);
    return alone && alone->NewPassword(parts[2]) ? 0 : 1;
}

/// This program as another workstation, which has told its first line.
std::unique_ptr<QProcess> Start(const QString &what, const QString &file)
{
    auto process = std::make_unique<QProcess>();
    process->start(QCoreApplication::applicationFilePath(), {what, file});
    if (!process->waitForReadyRead())
        qFatal("%s said nothing", qPrintable(what));
    return process;
}
} // namespace

/// The file itself: its password, what is refused as one, and what survives.
class TestFileDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }

    void passwordIsSetAndRemoved()
    {
        const QString file = Path("a.mdb");
        const QString secret = u"it's; secret é"_qs;
        Make(file, secret);
        QVERIFY(!ContentOf(file).contains("Ann") && !ContentOf(file).contains("People"));
        Connection connection;
        for (const QString &wrong : {QString(), u"other"_qs}) {
            QVERIFY(!connection.Open(ConnectionTextFor(file, wrong)) && !connection.IsOpen());
            QCOMPARE(connection.Errors().first().number, -1905);
            QVERIFY(connection.Errors().first().description.contains(file));
        }
        QVERIFY(connection.Open(ConnectionTextFor(file, secret)));
        QCOMPARE(connection.OpenRecordset("SELECT * FROM People")->First().Text(u"Name"), u"Ann"_qs);
        connection.Close();

        QVERIFY(!FileDatabase::OpenExclusive(file, "wrong"));
        QCOMPARE(EngineErrorList().first().number, -1905);
        auto alone = FileDatabase::OpenExclusive(file, secret);
        QVERIFY(alone && EngineErrorList().isEmpty());
        QVERIFY(alone->NewPassword({}));
        alone.reset();
        QVERIFY(ContentOf(file).startsWith("SQLite format 3") && ContentOf(file).contains("Ann"));
        QVERIFY(connection.Open(ConnectionTextFor(file)));
        QVERIFY2(connection.Open(ConnectionTextFor(file, "stale")), "a stored password outlives its removal");
    }

    /// Rolled back by the wrong hand, the pages that the crash left would be lost for good.
    void nothingRunsWithoutTheKey()
    {
        const QString file = Path("crashed.mdb");
        const QString journal = file % u"-journal";
        Make(file, "key");
        const auto other = Start("--journal", file);
        QCOMPARE(other->readAllStandardOutput(), QByteArray("written\n"));
        other->kill();
        QVERIFY(other->waitForFinished() && QFileInfo(journal).size() > 0);
        const auto stored = [&]() -> QByteArray { return ContentOf(file) + ContentOf(journal); };
        const QByteArray before = stored();
        Connection connection;
        for (const QString &wrong : {QString(), u"other"_qs}) {
            QVERIFY(!connection.Open(ConnectionTextFor(file, wrong)));
            QCOMPARE(connection.Errors().first().number, -1905);
            QVERIFY(stored() == before);
        }
        // A power cut may also leave the first page half written; the journal has it whole.
        QFile damaged(file);
        QVERIFY(damaged.open(QIODevice::ReadWrite) && damaged.seek(2048) && damaged.write("torn") == 4);
        damaged.close();
        QVERIFY(connection.Open(ConnectionTextFor(file, "key")));
        const auto rows = connection.OpenRecordset("SELECT * FROM People");
        QVERIFY(rows && rows->RowCount() == 1 && rows->First().Long(u"Age") == 30);
    }

    void killedWhileThePasswordChanges_data()
    {
        const TestTable<QString, QString, bool> row{"before", "after", "hasLog"};
        row("to another", "old", "new", true);
        row("to one", "", "new", false);
        row("to none", "old", "", true);
    }
    void killedWhileThePasswordChanges()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(bool, hasLog);
        for (int pause = 10; pause < 200; pause += 60) {
            const QString file = Path(u"p" % QString::number(pause) % u".mdb");
            Make(file, before, 5'000);
            Connection connection;
            if (hasLog)
                QVERIFY(connection.Open(ConnectionTextFor(file, before)));
            connection.Close();
            const auto other = Start("--password", file % u'|' % before % u'|' % after);
            QTest::qSleep(pause);
            other->kill();
            QVERIFY(other->waitForFinished());
            // As the program starts: without a password, with the stored one, with the one that is typed.
            QVERIFY(connection.Open(ConnectionTextFor(file)) ||
                    connection.Open(ConnectionTextFor(file, before)) ||
                    connection.Open(ConnectionTextFor(file, after)));
            QCOMPARE(connection.OpenRecordset("PRAGMA integrity_check")->First().Text(0), u"ok"_qs);
            QCOMPARE(connection.OpenRecordset("SELECT * FROM People")->RowCount(), 5'000);
            const bool isChanged = connection.ConnectionText().endsWith(u"PWD=" % after);
            connection.Close();
            QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
            QVERIFY(FileDatabase::OpenExclusive(file, isChanged ? after : before)->NewPassword("last"));
            QCOMPARE(QDir(m_directory->path())
                         .entryList({u"p" % QString::number(pause) % u".*"}, QDir::Files)
                         .size(),
                     1);
            QVERIFY(!(QFileInfo(file).permissions() & (QFile::ReadOther | QFile::WriteGroup)));
            QVERIFY(connection.Open(ConnectionTextFor(file, "last")));
        }
    }

    void changeOfThePasswordCanBeStopped()
    {
        const QString file = Path("stopped.mdb");
        Make(file, {}, 50'000);
        int calls = 0;
        QVERIFY(!FileDatabase::OpenExclusive(file, {})->NewPassword("new",
                                                                    [&](int, int) { return ++calls < 3; }));
        QVERIFY(calls == 3 && EngineErrorList().isEmpty());
        QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList("stopped.mdb"));
        QVERIFY(FileDatabase::OpenExclusive(file, {}));
    }

    void movedAwayUnderASession_data()
    {
        const TestTable<bool, bool> row{"isReplaced", "inAGroup"};
        row("deleted", false, false);
        row("replaced", true, false);
        row("in a group", true, true);
    }
    void movedAwayUnderASession()
    {
        QFETCH(bool, isReplaced);
        QFETCH(bool, inAGroup);
        const QString file = Path("here.mdb");
        Make(file, {});
        Connection connection;
        QVERIFY(connection.Open(ConnectionTextFor(file)));
        std::optional<WriteGroup> group;
        const QString insert = u"INSERT INTO People (Name, Age) VALUES ('Late', 1)"_qs;
        if (inAGroup)
            group.emplace(connection);
        QVERIFY(connection.Execute(insert) && (!group || group->Finish()));
        QVERIFY(!inAGroup || connection.Execute(insert)); // not committed yet
        QVERIFY(QFile::rename(file, Path("there.mdb")));
        if (isReplaced)
            WriteFile(file, "another");
        QVERIFY(group ? !group->Finish() : !connection.Execute(insert));
        QCOMPARE(connection.Errors().first().number, 1032);
        QVERIFY(connection.Errors().first().description.contains(file));
        if (isReplaced)
            QVERIFY(QFile::remove(file));
        QVERIFY(QFile::rename(Path("there.mdb"), file)); // put back
        group.reset();
        QVERIFY(connection.Execute(insert));
        QCOMPARE(connection.OpenRecordset("SELECT * FROM People")->RowCount(), 3);
    }

    void databaseOfAnotherProgramStaysAsItIs()
    {
        const QString file = Path("foreign.mdb");
        QVERIFY(FileDatabase::Create(file));
        QVERIFY(
            FileDatabase::OpenExclusive(file, {})->Run("CREATE TABLE Users (A); CREATE TABLE System (A)"));
        const QByteArray before = ContentOf(file);
        Connection connection;
        QVERIFY(!connection.Open(ConnectionTextFor(file)));
        const QString why = connection.Errors().first().description;
        QVERIFY2(why.contains(file) && why.contains(u"no table Contacts, Courses"_qs), qPrintable(why));
        QVERIFY(ContentOf(file) == before);
        QVERIFY(!(QFileInfo(file).permissions() & (QFile::ReadOther | QFile::WriteOther)));
    }

    void olderFileIsGivenItsIndexes()
    {
        const QString file = Path("older.mdb");
        Make(file, {}); // whose Contacts have no column but Cust_Email
        Connection connection;
        QVERIFY(connection.Open(ConnectionTextFor(file)));
        const auto found = connection.OpenRecordset("SELECT name FROM sqlite_master WHERE type = 'index'");
        QVERIFY(found && found->RowCount() == 1);
        QCOMPARE(found->First().Text(0), u"IX_Contacts_Cust_Email"_qs);
    }

    void aSaveMeetsTheGapOfALongLoop()
    {
        const QString file = Path("busy.mdb");
        Make(file, {});
        const auto writer = Start("--write", file);
        Connection connection;
        QVERIFY(connection.Open(ConnectionTextFor(file)));
        for (int i = 0; i < 20; ++i) {
            QElapsedTimer waited;
            waited.start();
            QVERIFY(connection.Execute("INSERT INTO People (Name, Age) VALUES ('Clerk', 1)"));
            QVERIFY2(waited.elapsed() < 1000, qPrintable(QString::number(waited.elapsed())));
        }
        writer->kill();
        QVERIFY(writer->waitForFinished());
    }

    void badFile_data()
    {
        const TestTable<QByteArray, QString> row{"contents", "complaint"};
        row("missing", QByteArray(), "does not exist");
        row("folder", QByteArray("<folder>"), "is a folder");
        row("empty", QByteArray(""), "is empty");
        row("text", QByteArray("Dear all,\n").repeated(500), "is not a database");
        row("two bytes", QByteArray("xy"), "is not a database");
        row("header alone", QByteArray("SQLite format 3\0", 16), "is not a database");
        row("Access 2000", QByteArray("\0\1\0\0Standard Jet DB\0\1", 21) + QByteArray(4096, '\0'),
            "does not read such files");
        row("Access 2007", QByteArray("\0\1\0\0Standard ACE DB\0\1", 21) + QByteArray(4096, '\0'),
            "does not read such files");
        row("truncated", QByteArray("<cut>"), "damaged or cut short");
        row("truncated, encrypted", QByteArray("<cut key>"), "damaged or cut short");
    }
    void badFile()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, complaint);
        const QString file = Path("bad file.mdb");
        const bool encrypted = contents == "<cut key>";
        if (contents == "<folder>") {
            QVERIFY(QDir().mkdir(file));
        } else if (contents.startsWith("<cut")) {
            Make(file, encrypted ? u"key"_qs : QString());
            QVERIFY(QFile::resize(file, QFileInfo(file).size() - 4096));
        } else if (!contents.isNull()) {
            WriteFile(file, contents);
        }
        Connection connection;
        QVERIFY(!connection.Open(ConnectionTextFor(file, encrypted ? u"key"_qs : QString())));
        QCOMPARE(connection.Errors().size(), 1);
        const EngineError error = connection.Errors().first();
        QVERIFY2(error.description.contains(complaint), qPrintable(error.description));
        QVERIFY2(error.description.contains(u"bad file.mdb"_qs), qPrintable(error.description));
        QVERIFY2(error.number != 0 && error.number != -1905, "neither asks for a password");
        QVERIFY2(contents.isNull() != QFileInfo::exists(file), "opening makes no file");
    }

    /// Root may write any file, so the check is made by a process of an ordinary user.
    void readOnlyFile()
    {
        const QString file = Path("fixed.mdb");
        Make(file, QString());
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        QVERIFY(QFile::setPermissions(m_directory->path(), QFile::Permissions(0x7755)));
        // The program's own directory may be closed to that user.
        const QString program = Path("opener");
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
        QStringList command{program, u"--open"_qs, file};
        if (QFileInfo(u"/root"_qs).isWritable())
            command = QStringList{u"setpriv"_qs, u"--reuid=65534"_qs, u"--clear-groups"_qs} + command;
        QProcess child;
        child.start(command.takeFirst(), command);
        QVERIFY(child.waitForFinished());
        const QString said = QString::fromUtf8(child.readAllStandardOutput());
        QVERIFY2(said.contains(u"read-only"_qs) && said.contains(file), qPrintable(said));
    }

    void sharedWithAnother()
    {
        const QString file = Path("shared.mdb");
        const QString inUse = u"in use by another program"_qs;
        Make(file, {});
        Connection connection;
        QVERIFY(connection.Open(ConnectionTextFor(file, {}, 300)));
        const auto other = Start("--hold", file);
        QElapsedTimer waited;
        waited.start();
        const QString insert = u"INSERT INTO People (Name, Age) VALUES ('Late', 1)"_qs;
        QVERIFY(!connection.Execute(insert));
        QVERIFY(waited.elapsed() >= 300 && waited.elapsed() < 5000);
        const QString why = connection.Errors().first().description;
        QVERIFY2(why.contains(inUse) && why.contains(file), qPrintable(why));
        QCOMPARE(connection.OpenRecordset("SELECT * FROM People")->RowCount(), 1);
        QVERIFY(!FileDatabase::OpenExclusive(file, {}));
        QVERIFY(EngineErrorList().first().description.contains(inUse));
        other->closeWriteChannel();
        QVERIFY(other->waitForFinished());
        QVERIFY2(connection.Execute(insert), "the same work goes through once the other is done");

        connection.Close();
        const auto alone = FileDatabase::OpenExclusive(file, {});
        QVERIFY(alone);
        QVERIFY(Start("--open", file)->readAllStandardOutput().contains(inUse.toUtf8()));
    }

    /// The engine's own limit of pages stands for the disk. The group tells whether its work is there.
    void fullDisk()
    {
        const QString file = Path("full.mdb");
        Make(file, QString());
        Connection connection;
        QVERIFY(connection.Open(ConnectionTextFor(file)));
        QVERIFY(connection.OpenRecordset("PRAGMA max_page_count = 20"));
        const QString insert = u"INSERT INTO People (Name, Age) VALUES ('" % QString(3000, u'x') % u"', 1)";
        const QString count = u"SELECT COUNT(*) FROM People WHERE Age = 1"_qs;
        {
            WriteGroup group(connection);
            QVERIFY(connection.Execute(insert));
            QVERIFY(group.Finish());
            int written = 0;
            while (connection.Execute(insert))
                ++written;
            QVERIFY(written > 0);
            const QString why = connection.Errors().first().description;
            QVERIFY2(why.contains(u"is full"_qs) && why.contains(file), qPrintable(why));
            const bool kept = group.Finish();
            QCOMPARE(connection.OpenRecordset(count)->First().Long(0), kept ? written + 1 : 1);

            // With room again, a group that lost rows takes no further ones: nobody would miss those before.
            QVERIFY(connection.OpenRecordset("PRAGMA max_page_count = 1000"));
            QCOMPARE(connection.Execute(insert), kept);
            QCOMPARE(group.Tick(), kept);
        }
        WriteGroup next(connection);
        QVERIFY(connection.Execute(insert) && next.Finish());
    }

    void killedInTheMiddleOfAGroup()
    {
        for (const int pause : {30, 70, 150}) {
            const QString file = Path(u"crash" % QString::number(pause) % u".mdb");
            Make(file, QString());
            const auto writer = Start("--write", file);
            QTest::qSleep(pause);
            writer->kill();
            QVERIFY(writer->waitForFinished());
            // A line that the kill cut off was no longer told.
            const QByteArray told = writer->readAllStandardOutput();
            const QList<QByteArray> lines = told.left(told.lastIndexOf('\n')).split('\n');
            const qint64 committed = lines.last().toLongLong();
            QVERIFY(committed >= 100);

            Connection connection;
            QVERIFY(connection.Open(ConnectionTextFor(file)));
            QCOMPARE(connection.OpenRecordset("PRAGMA integrity_check")->First().Text(0), u"ok"_qs);
            const qint64 found = connection.OpenRecordset("SELECT * FROM People")->RowCount() - 1;
            QVERIFY2(found >= committed, qPrintable(QString::number(found)));
            QCOMPARE(found % 100, 0);
        }
    }

private:
    QString Path(const QString &name) const { return m_directory->filePath(name); }

    void Make(const QString &file, const QString &password, int people = 1)
    {
        QVERIFY(FileDatabase::Create(file));
        const auto database = FileDatabase::OpenExclusive(file, QString());
        QVERIFY(database);
        QVERIFY(database->Run(u"CREATE TABLE Contacts (Cust_Email TEXT); CREATE TABLE Courses (A);"
                              "CREATE TABLE System (A); CREATE TABLE Users (A);"
                              "CREATE TABLE People (Ref INTEGER PRIMARY KEY AUTOINCREMENT, Name "
                              "VARCHAR(50) COLLATE NOCASE, Age INTEGER);"
                              "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " %
                              QString::number(people) %
                              u") INSERT INTO People (Name, Age) SELECT 'Ann', 30 FROM n"));
        QVERIFY(password.isEmpty() || database->NewPassword(password));
    }
    std::unique_ptr<QTemporaryDir> m_directory;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const std::pair<const char *, int (*)(const QString &)> works[] = {{"--open", OpenAndTell},
                                                                       {"--hold", Hold},
                                                                       {"--write", WriteUntilKilled},
                                                                       {"--journal", WriteBesideAJournal},
                                                                       {"--password", ChangePassword}};
    for (const auto &[name, work] : works) {
        if (arguments.size() == 3 && arguments.at(1) == name)
            return work(arguments.at(2));
    }
    TestFileDatabase test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_file_database.moc"
