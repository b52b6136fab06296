#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "exchange/import/ImportState.h"
#include "platform/desktop/Dialogs.h"
#include "support/Files.h"
#include "support/TestDatabase.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include <cstdio>

namespace
{
constexpr int linesOfFile = 4000;
/// Every line of that distance asks a question, before which all lines above it must be stored.
constexpr int questionEvery = 100;

QByteArray People()
{
    QByteArray lines("Forename,Surname,Address,City,Postcode\n");
    for (int i = 1; i <= linesOfFile; ++i) {
        const QByteArray n = QByteArray::number(i % questionEvery == 0 ? i - 1 : i);
        const QByteArray postcode = i % questionEvery == 0 ? QByteArray("other") : "P" + n;
        lines += "F" + n + ",S" + n + ",A" + n + ",C" + QByteArray::number(i % 50) + "," + postcode + "\n";
    }
    return lines;
}

void Say(const char *what, int number)
{
    std::printf("%s %d\n", what, number);
    std::fflush(stdout);
}

/// The process that is killed: imports a file and says how many people were stored at each question.
int ImportAsChild(const QString &connectionText, const QString &file)
{
    if (!gConnection.Open(connectionText))
        return 2;
    Progress progress;
    int questions = 0;
    Dialogs::Installed().msgBox = [&](auto...) {
        Say("stored", progress.Value() - questions);
        ++questions;
        return Dialogs::Answer::No;
    };
    ImportState state(CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat")));
    Say("begun", 0);
    return state.ChooseDataSet() && state.ChooseFile(file) && state.Run(progress) ? 0 : 1;
}

int LastStored(const QByteArray &output)
{
    int stored = 0;
    for (const QByteArray &line : output.split('\n')) {
        if (line.startsWith("stored "))
            stored = line.mid(7).toInt();
    }
    return stored;
}
} // namespace

/// The program is killed while it imports; what it left must be whole.
class TestImportCrash final : public QObject
{
    Q_OBJECT

private slots:
    void KilledImportLeavesWholeRows_data();
    void KilledImportLeavesWholeRows();
};

void TestImportCrash::KilledImportLeavesWholeRows_data()
{
    QTest::addColumn<int>("milliseconds"); // from the child's first word to its death
    for (int round = 0; round < 20; ++round) {
        const int milliseconds = QRandomGenerator::global()->bounded(600);
        QTest::addRow("round %d after %d ms", round, milliseconds) << milliseconds;
    }
}

void TestImportCrash::KilledImportLeavesWholeRows()
{
    QFETCH(int, milliseconds);
    const TestDatabase database;
    const QString file = database.Directory() + "/people.csv";
    WriteFile(file, People());
    gConnection.Close();
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {"--import", database.ConnectionText(), file});
    QVERIFY(child.waitForReadyRead());
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    child.kill();
    QVERIFY(child.waitForFinished());
    const int stored = LastStored(child.readAllStandardOutput());

    QVERIFY(database.Reconnect());
    QCOMPARE(TestDatabase::Value("PRAGMA integrity_check"), QStringLiteral("ok"));
    const int people = TestDatabase::Value("SELECT COUNT(*) FROM Contacts WHERE ContactRef > 1").toInt();
    QVERIFY2(people >= stored, qPrintable(QString("%1 of %2").arg(people).arg(stored)));
    const QStringList rows = TestDatabase::Rows(
        "SELECT Cust_Forename, Cust_Surname, Cust_Addr1, Cust_Postcode, City.City FROM Contacts "
        "INNER JOIN City ON Cust_City = City_ID WHERE ContactRef > 1 ORDER BY ContactRef");
    QCOMPARE(rows.size(), people);
    int line = 0;
    for (const QString &row : rows) {
        line += (line + 1) % questionEvery == 0 ? 2 : 1;
        const QString n = QString::number(line);
        QCOMPARE(row,
                 QString(u'F' % n % u"|S" % n % u"|A" % n % u"|P" % n % u"|C" % QString::number(line % 50)));
    }

    // The same file again brings in what is missing.
    int asked = 0;
    QString summary;
    const Dialogs::Hooks outer = Dialogs::Installed();
    Dialogs::Installed().msgBox = [&](const QString &text, auto...) {
        asked += text.contains("already exists");
        summary = text;
        return Dialogs::Answer::No;
    };
    ImportState state(CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat")));
    Progress progress;
    const bool completed = state.ChooseDataSet() && state.ChooseFile(file) && state.Run(progress);
    Dialogs::Installed() = outer;
    QVERIFY2(completed, qPrintable(summary));
    QCOMPARE(asked, linesOfFile / questionEvery);
    QCOMPARE(
        TestDatabase::Value("SELECT COUNT(*) FROM Contacts WHERE ContactRef > 1 AND ContactContactRef = 1")
            .toInt(),
        linesOfFile - linesOfFile / questionEvery);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == QLatin1String("--import"))
        return ImportAsChild(arguments.value(2), arguments.value(3));
    TestImportCrash test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_importcrash.moc"
