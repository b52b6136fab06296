#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "enrolment/frmStudentInfo.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "support/ModalDriver.h"

#include <QApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <cstdio>

// Other workstations are processes of their own: this program, started with what to do.

namespace
{
constexpr int wrongBox = 3;
constexpr int notPaid = 4;

/// Enrols a person and pays 1 on the payment screen.
bool PayOne(CourseRef courseRef, ContactRef contactRef)
{
    ADO_Course_EnrollStudent(courseRef, contactRef);
    ListModel list;
    list.Fill({{u'?' % SqlNumber(contactRef), {}, {QString()}}});
    frmStudentInfo form(courseRef, list, list.At(0).key);
    form.show();
    TypeInto(form, "Payment", "1");
    Press(form, "OkBtn");
    return !form.isVisible();
}

/// workstation TEXT DIRECTORY COURSE FIRST LAST ROUNDS PAUSE: pays for each person of the range, ROUNDS times
/// over, waiting PAUSE milliseconds before each write, and tells each payment that was confirmed.
int Workstation(const QStringList &arguments)
{
    Directories::SetProgram(arguments.at(1));
    if (!gConnection.Open(arguments.at(0)))
        return 1;
    gUserRights = RightsBlank();
    Dialogs::Installed().msgBox = [](const QString &text, const auto &, auto, auto, auto) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        std::_Exit(wrongBox);
        return Dialogs::Answer::Cancel;
    };
    const auto number = [&](int position) { return arguments.at(position).toInt(); };
    gConnection.ObserveStatements([pause = number(6)](const QString &sql) {
        if (!sql.startsWith("SELECT"))
            QThread::msleep(static_cast<unsigned long>(pause));
    });
    for (int round = 0; round < number(5); ++round) {
        for (int person = number(3); person <= number(4); ++person) {
            if (!PayOne(CourseRef(number(2)), ContactRef(person)))
                return notPaid;
            std::printf("%d\n", person);
            std::fflush(stdout);
        }
    }
    return 0;
}
} // namespace

class TestWorkstations final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        m_course = School::AddCourse("Pottery", 100000);
        for (int person = 2; person <= 12; ++person)
            QCOMPARE(School::AddPerson("P", QString::number(person)), ContactRef(person));
    }
    void cleanup() { m_database.reset(); }

    /// Killed at any moment, a confirmed payment is there in full; the one under way is in both records or in
    /// neither.
    void ConfirmedPaymentsSurviveAKill()
    {
        int confirmed = 0;
        for (int round = 0; round < 8; ++round) {
            const auto process = Start(2, 2, 100000, 0);
            QVERIFY(process->waitForReadyRead(20000));
            QThread::msleep(QRandomGenerator::global()->bounded(150U));
            process->kill();
            QVERIFY(process->waitForFinished());
            confirmed += Confirmed(*process);

            QVERIFY(m_database->Reconnect());
            const double logged = Sum("MoneyPaid", "Transactions");
            const double total = Sum("AmountPaid", "StudentsEnrolled");
            QVERIFY2(
                total >= confirmed && logged == total && logged <= confirmed + round + 1,
                qPrintable(u"confirmed %1, logged %2, total %3"_qs.arg(confirmed).arg(logged).arg(total)));
            if (!TestDatabase::IsOnServer())
                QCOMPARE(TestDatabase::Value("PRAGMA integrity_check"), "ok");
        }
        QVERIFY(confirmed >= 8);
    }

    /// Each is enrolled once, and all payments are in the totals.
    void TwoWorkstationsEnrolAndPayTheSamePeople()
    {
        const auto one = Start(2, 8, 2, 10);
        const auto two = Start(2, 8, 2, 10);
        for (const auto &process : {one.get(), two.get()}) {
            QVERIFY(process->waitForFinished(60000));
            QCOMPARE(process->exitCode(), 0);
            QCOMPARE(Confirmed(*process), 14);
        }
        QCOMPARE(TestDatabase::Rows("SELECT AmountPaid FROM StudentsEnrolled").join(u' '),
                 u"4 4 4 4 4 4 4"_qs);
        QCOMPARE(Sum("MoneyPaid", "Transactions"), 28.0);
    }

private:
    std::unique_ptr<QProcess> Start(int first, int last, int rounds, int pause)
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QCoreApplication::applicationFilePath(),
                       {"workstation", m_database->ConnectionText(), m_database->Directory(),
                        SqlNumber(m_course), QString::number(first), QString::number(last),
                        QString::number(rounds), QString::number(pause)});
        return process;
    }

    static int Confirmed(QProcess &process)
    {
        return static_cast<int>(process.readAllStandardOutput().count('\n'));
    }

    static double Sum(const QString &column, const QString &table)
    {
        return TestDatabase::Value(u"SELECT SUM(" % column % u") AS S FROM " % table).toDouble();
    }

    std::unique_ptr<TestDatabase> m_database;
    CourseRef m_course;
};

int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    QApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "workstation") == 0)
        return Workstation(application.arguments().mid(2));
    TestWorkstations test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_workstations.moc"
