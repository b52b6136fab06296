#include "platform/Connection.h"
#include "platform/FileDatabase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

namespace
{
QString ConnectionTextFor(const QString &file, const QString &password = {}, int lockWait = 10'000)
{
    return u"DBQ=" % file %
           u";Driver={Microsoft Access Driver (*.mdb)};DriverId=25;MaxBufferSize=8192;Threads=20;"
           u"LockWait=" %
           QString::number(lockWait) % u";PWD=" % password;
}

QByteArray Contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

/// The file itself: its password, what is refused as one, and what survives.
class TestFileDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void passwordIsSetAndRemoved();
    void badFile_data();
    void badFile();
    void readOnlyFile();
    void lockedByAnother();
    void exclusiveNeedsTheFileAlone();
    void fullDisk();
    void killedInTheMiddleOfAGroup();

private:
    QString Path(const QString &name) const { return m_directory->filePath(name); }
    void Make(const QString &file, const QString &password);
    std::unique_ptr<QTemporaryDir> m_directory;
};

/// Writes rows in a group until it is killed, telling each commit.
static int WriteUntilKilled(const QString &file)
{
    Connection connection;
    if (!connection.Open(ConnectionTextFor(file)))
        return 1;
    WriteGroup group(connection);
    for (int i = 1;; ++i) {
        if (!connection.Execute(u"INSERT INTO People (Name, Age) VALUES ('P" % QString::number(i) % u"', " %
                                QString::number(i) % u")"))
            return 2;
        if (i % 100 == 0) {
            if (!group.Finish())
                return 3;
            std::printf("%d\n", i);
            std::fflush(stdout);
        }
    }
}

void TestFileDatabase::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void TestFileDatabase::Make(const QString &file, const QString &password)
{
    QVERIFY(FileDatabase::Create(file));
    const auto database = FileDatabase::OpenExclusive(file, QString());
    QVERIFY(database);
    QVERIFY(database->Run(QStringLiteral("CREATE TABLE People (Ref INTEGER PRIMARY KEY AUTOINCREMENT, Name "
                                         "VARCHAR(50) COLLATE NOCASE, Age INTEGER);"
                                         "INSERT INTO People (Name, Age) VALUES ('Ann', 30);")));
    QVERIFY(database->NewPassword(password));
}

void TestFileDatabase::passwordIsSetAndRemoved()
{
    const QString file = Path(QStringLiteral("a.mdb"));
    Make(file, QStringLiteral("it's; secret é"));
    QVERIFY(!Contents(file).contains("Ann"));
    QVERIFY(!Contents(file).contains("People"));

    Connection connection;
    for (const QString &wrong : {QString(), QStringLiteral("other")}) {
        QVERIFY(!connection.Open(ConnectionTextFor(file, wrong)));
        QCOMPARE(connection.Errors().first().number, -1905);
        QVERIFY(connection.Errors().first().description.contains(file));
        QVERIFY(!connection.IsOpen());
    }
    QVERIFY(connection.Open(ConnectionTextFor(file, QStringLiteral("it's; secret é"))));
    QCOMPARE(connection.OpenRecordset(QStringLiteral("SELECT * FROM People"))->First().Text(u"Name"),
             QStringLiteral("Ann"));
    connection.Close();

    QVERIFY(!FileDatabase::OpenExclusive(file, QStringLiteral("wrong")));
    QCOMPARE(EngineErrorList().first().number, -1905);
    auto alone = FileDatabase::OpenExclusive(file, QStringLiteral("it's; secret é"));
    QVERIFY(alone);
    QVERIFY(EngineErrorList().isEmpty());
    QVERIFY(alone->NewPassword(QString()));
    alone.reset();
    QVERIFY(Contents(file).startsWith("SQLite format 3"));
    QVERIFY(Contents(file).contains("Ann"));
    QVERIFY(connection.Open(ConnectionTextFor(file)));
    QVERIFY2(connection.Open(ConnectionTextFor(file, QStringLiteral("stale"))),
             "a stored password outlives its removal");
    QCOMPARE(connection.Kind(), DatabaseKind::File);
}

void TestFileDatabase::badFile_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("missing") << QByteArray() << QStringLiteral("does not exist");
    QTest::newRow("folder") << QByteArray("<folder>") << QStringLiteral("is a folder");
    QTest::newRow("empty") << QByteArray("") << QStringLiteral("is empty");
    QTest::newRow("text") << QByteArray("Dear all,\n").repeated(500) << QStringLiteral("is not a database");
    QTest::newRow("two bytes") << QByteArray("xy") << QStringLiteral("is not a database");
    QTest::newRow("header alone") << QByteArray("SQLite format 3\0", 16)
                                  << QStringLiteral("is not a database");
    QTest::newRow("Access 2000") << QByteArray("\0\1\0\0Standard Jet DB\0\1", 21) + QByteArray(4096, '\0')
                                 << QStringLiteral("does not read such files");
    QTest::newRow("Access 2007") << QByteArray("\0\1\0\0Standard ACE DB\0\1", 21) + QByteArray(4096, '\0')
                                 << QStringLiteral("does not read such files");
    QTest::newRow("truncated") << QByteArray("<cut>") << QStringLiteral("damaged or cut short");
    QTest::newRow("truncated, encrypted")
        << QByteArray("<cut key>") << QStringLiteral("damaged or cut short");
}

void TestFileDatabase::badFile()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, complaint);
    const QString file = Path(QStringLiteral("bad file.mdb"));
    const bool encrypted = contents == "<cut key>";
    if (contents == "<folder>") {
        QVERIFY(QDir().mkdir(file));
    } else if (contents.startsWith("<cut")) {
        Make(file, encrypted ? QStringLiteral("key") : QString());
        const qint64 size = QFileInfo(file).size();
        QVERIFY(QFile::resize(file, size - 4096));
    } else if (!contents.isNull()) {
        QFile bad(file);
        QVERIFY(bad.open(QIODevice::WriteOnly));
        bad.write(contents);
    }
    Connection connection;
    QVERIFY(!connection.Open(ConnectionTextFor(file, encrypted ? QStringLiteral("key") : QString())));
    QCOMPARE(connection.Errors().size(), 1);
    const EngineError error = connection.Errors().first();
    QVERIFY2(error.description.contains(complaint), qPrintable(error.description));
    QVERIFY2(error.description.contains(QStringLiteral("bad file.mdb")), qPrintable(error.description));
    QVERIFY2(error.number != 0 && error.number != -1905, "neither asks for a password");
    QVERIFY2(contents.isNull() != QFileInfo::exists(file), "opening makes no file");
}

/// Root may write any file, so the check is made by a process of an ordinary user.
void TestFileDatabase::readOnlyFile()
{
    const QString file = Path(QStringLiteral("fixed.mdb"));
    Make(file, QString());
    QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    QVERIFY(QFile::setPermissions(m_directory->path(), QFile::Permissions(0x7755)));
    // The program's own directory may be closed to that user.
    const QString program = Path(QStringLiteral("opener"));
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
    QStringList command{program, QStringLiteral("--open"), file};
    if (QFileInfo(QStringLiteral("/root")).isWritable())
        command = QStringList{QStringLiteral("setpriv"), QStringLiteral("--reuid=65534"),
                              QStringLiteral("--clear-groups")} +
                  command;
    QProcess child;
    child.start(command.takeFirst(), command);
    QVERIFY(child.waitForFinished());
    const QString said = QString::fromUtf8(child.readAllStandardOutput());
    QVERIFY2(said.contains(QStringLiteral("read-only")) && said.contains(file), qPrintable(said));
}

void TestFileDatabase::lockedByAnother()
{
    const QString file = Path(QStringLiteral("shared.mdb"));
    Make(file, QString());
    Connection connection;
    QVERIFY(connection.Open(ConnectionTextFor(file, QString(), 300)));
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--hold"), file});
    QVERIFY(other.waitForReadyRead());
    QElapsedTimer waited;
    waited.start();
    const QString insert = QStringLiteral("INSERT INTO People (Name, Age) VALUES ('Late', 1)");
    QVERIFY(!connection.Execute(insert));
    QVERIFY(waited.elapsed() >= 300);
    QVERIFY(waited.elapsed() < 5000);
    QVERIFY(connection.Errors().first().description.contains(QStringLiteral("in use by another program")));
    QVERIFY(connection.Errors().first().description.contains(file));
    QCOMPARE(connection.OpenRecordset(QStringLiteral("SELECT * FROM People"))->RowCount(), 1);
    other.closeWriteChannel();
    QVERIFY(other.waitForFinished());
    QVERIFY2(connection.Execute(insert), "the same work goes through once the other is done");
}

void TestFileDatabase::exclusiveNeedsTheFileAlone()
{
    const QString file = Path(QStringLiteral("busy.mdb"));
    Make(file, QString());
    {
        QProcess other;
        other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--hold"), file});
        QVERIFY(other.waitForReadyRead());
        QVERIFY(!FileDatabase::OpenExclusive(file, QString()));
        QVERIFY(EngineErrorList().first().description.contains(QStringLiteral("in use by another program")));
        other.closeWriteChannel();
        QVERIFY(other.waitForFinished());
    }
    const auto alone = FileDatabase::OpenExclusive(file, QString());
    QVERIFY(alone);
    QProcess late;
    late.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--open"), file});
    QVERIFY(late.waitForFinished());
    const QString said = QString::fromUtf8(late.readAllStandardOutput());
    QVERIFY2(said.contains(QStringLiteral("in use by another program")), qPrintable(said));
}

/// The engine's own limit of pages stands for the disk. The group tells whether its work is there.
void TestFileDatabase::fullDisk()
{
    const QString file = Path(QStringLiteral("full.mdb"));
    Make(file, QString());
    Connection connection;
    QVERIFY(connection.Open(ConnectionTextFor(file)));
    QVERIFY(connection.OpenRecordset(QStringLiteral("PRAGMA max_page_count = 20")));
    const QString insert = u"INSERT INTO People (Name, Age) VALUES ('" % QString(3000, u'x') % u"', 1)";
    const QString count = QStringLiteral("SELECT COUNT(*) FROM People WHERE Age = 1");
    {
        WriteGroup group(connection);
        QVERIFY(connection.Execute(insert));
        QVERIFY(group.Finish());
        int written = 0;
        while (connection.Execute(insert))
            ++written;
        QVERIFY(written > 0);
        const QString why = connection.Errors().first().description;
        QVERIFY2(why.contains(QStringLiteral("is full")) && why.contains(file), qPrintable(why));
        const bool kept = group.Finish();
        QCOMPARE(connection.OpenRecordset(count)->First().Long(0), kept ? written + 1 : 1);

        // With room again, a group that lost rows takes no further ones: nobody would miss those before.
        QVERIFY(connection.OpenRecordset(QStringLiteral("PRAGMA max_page_count = 1000")));
        QCOMPARE(connection.Execute(insert), kept);
        QCOMPARE(group.Tick(), kept);
    }
    WriteGroup next(connection);
    QVERIFY(connection.Execute(insert) && next.Finish());
}

void TestFileDatabase::killedInTheMiddleOfAGroup()
{
    for (const int pause : {30, 70, 150}) {
        const QString file = Path(u"crash" % QString::number(pause) % u".mdb");
        Make(file, QString());
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--write"), file});
        QVERIFY(writer.waitForReadyRead());
        QTest::qSleep(pause);
        writer.kill();
        QVERIFY(writer.waitForFinished());
        // A line that the kill cut off was no longer told.
        const QByteArray told = writer.readAllStandardOutput();
        const QList<QByteArray> lines = told.left(told.lastIndexOf('\n')).split('\n');
        const qint64 committed = lines.last().toLongLong();
        QVERIFY(committed >= 100);

        Connection connection;
        QVERIFY(connection.Open(ConnectionTextFor(file)));
        QCOMPARE(connection.OpenRecordset(QStringLiteral("PRAGMA integrity_check"))->First().Text(0),
                 QStringLiteral("ok"));
        const qint64 found =
            connection.OpenRecordset(QStringLiteral("SELECT COUNT(*) FROM People WHERE Age < 1000000"))
                ->First()
                .Long(0) -
            1;
        QVERIFY2(found >= committed, qPrintable(QString::number(found)));
        QCOMPARE(found % 100, 0);
    }
}

namespace
{
int OpenAndTell(const QString &file)
{
    Connection connection;
    const bool opened = connection.Open(ConnectionTextFor(file, QString(), 300));
    std::printf("%s\n", opened ? "opened" : qPrintable(connection.Errors().first().description));
    return 0;
}

/// Another workstation: holds the right to write until its input closes.
int Hold(const QString &file)
{
    Connection connection;
    if (!connection.Open(ConnectionTextFor(file)) || !connection.Execute(QStringLiteral("BEGIN IMMEDIATE")))
        return 1;
    std::printf("held\n");
    std::fflush(stdout);
    std::getchar();
    return connection.Execute(QStringLiteral("COMMIT")) ? 0 : 1;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == QStringLiteral("--open"))
        return OpenAndTell(arguments.at(2));
    if (arguments.size() == 3 && arguments.at(1) == QStringLiteral("--hold"))
        return Hold(arguments.at(2));
    if (arguments.size() == 3 && arguments.at(1) == QStringLiteral("--write"))
        return WriteUntilKilled(arguments.at(2));
    TestFileDatabase test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_file_database.moc"
