#include "core/files/ErrorHandler.h"

#include "platform/connection/FailureAdvice.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "platform/engines/FileDatabase.h"
#include "support/Files.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace
{
const QString firstLine = u"Veltrane Version 1.20.0 - Error Log started at 22/11/2026 21:05:09\n"_qs;
const QString seekSupport = u"A number of errors have been detected, please seek technical support."_qs;
const QString retryOrCancel =
    u"Unable to perform requested database operation, you can retry the pending operation or "
    "cancel.\n\n"_qs;
} // namespace

class TestErrorHandler : public QObject
{
    Q_OBJECT

    QString LogFile() const { return m_directory->filePath(u"log.txt"_qs); }
    QString Log() const { return QString::fromUtf8(ContentOf(LogFile())); }

    std::unique_ptr<QTemporaryDir> m_directory;

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        Directories::SetProgram(m_directory->path());
        Clock::StopAt(QDateTime(QDate(2026, 11, 22), QTime(21, 5, 9)));
        EngineErrorList().clear();
        LogStart();
    }
    void cleanup()
    {
        EngineErrorList().clear();
        Clock::StopAt({});
    }

    void ARunWithoutErrorsLogsTwoLines()
    {
        LogFinish();
        QCOMPARE(Log(), firstLine + u"Error Log finished at 22/11/2026 21:05:09\n");
        LogStart();
        QCOMPARE(Log(), firstLine);
    }

    void AProgramErrorIsShownAndLogged()
    {
        ScriptedDialogs user;
        user.Expect("Connection", seekSupport);
        EngineErrorList() = {{3, u"DAO.Database"_qs, u"other"_qs, {}}};
        SetCurrentError({-7, u"Connection"_qs, u"no such table: X"_qs, {}});
        QCOMPARE(HandleError("ADO_Users_Delete", -7), 0); // to be passed over
        QCOMPARE(Log(), firstLine);
        QCOMPARE(HandleError("ADO_Users_Delete", 0), 2);
        QCOMPARE(Log(), firstLine + u"   Module = Connection - Error number: -7 - no such table: X\n"
                                    u"    Located in:ADO_Users_Delete\n\n");
    }

    void ASecondFailureLeavesTheReportOfTheFirst()
    {
        const ScriptedDialogs user;
        QStringList boxes;
        Dialogs::Installed().msgBox = [&](const QString &text, const QString &, Dialogs::Buttons,
                                          Dialogs::Icon, Dialogs::Answer) {
            boxes.append(text);
            SetCurrentError({13, u"Connection"_qs, u"second"_qs, {}});
            if (boxes.size() == 1)
                HandleError("ADO_Second", 0);
            return Dialogs::Answer::Ok;
        };
        SetCurrentError({1, u"Connection"_qs, u"first"_qs, {}});
        QCOMPARE(HandleError("ADO_First", 0), 2);
        QCOMPARE(boxes, QStringList({seekSupport % u"\n\nfirst",
                                     seekSupport % u"\n\nThe disk of the database is full. Make room on it, "
                                                   "then try again."}));
        QCOMPARE(Log(), firstLine % u"   Module = Connection - Error number: 13 - second\n"
                                    "    Located in:ADO_Second\n\n"
                                    "   Module = Connection - Error number: 1 - first\n"
                                    "    Located in:ADO_First\n\n");
    }

    void TheAdviceComesFromTheNumberOrTheState_data()
    {
        const TestTable<int, QString, QString> row{"number", "state", "told"};
        row("locked file", 5, "", "locked by another workstation");
        row("read-only", 8, "", "is read-only");
        row("closed", 3709, "", "No database is open");
        row("SQL Server, too long", 2628, "", "longer than the database allows");
        row("SQL Server gone", 20006, "", "cannot be reached");
        row("PostgreSQL gone", 1, "57P01", "cannot be reached");
        row("PostgreSQL, two at once", 1, "40001", "the same rows");
        row("unknown", 1, "42P01", "its own words");
    }
    void TheAdviceComesFromTheNumberOrTheState()
    {
        QFETCH(int, number);
        QFETCH(QString, state);
        QFETCH(QString, told);
        QVERIFY(FailureAdvice({number, {}, u"its own words"_qs, state}).contains(told));
    }

    void ALogThatIsALinkIsNotFollowed()
    {
        const QString elsewhere = m_directory->filePath(u"elsewhere"_qs);
        WriteFile(elsewhere, "kept");
        const auto link = [&] { return QFile::remove(LogFile()) && QFile::link(elsewhere, LogFile()); };
        QVERIFY(link());
        LogFinish();
        QCOMPARE(ContentOf(elsewhere), QByteArray("kept"));
        LogStart();
        QCOMPARE(ContentOf(elsewhere), QByteArray("kept"));
        QCOMPARE(Log(), firstLine);
    }

    void AnEngineErrorOffersARetry_data()
    {
        const TestTable<QString, QString> row{"description", "shown"};
        row("driver names before it", "[A][B Driver] Disk full. ", "Disk full.");
        row("only the first is cut", "[A] x [B] y", "x [B] y");
        row("no driver name", " Disk full", "Disk full");
        row("a bracket without a blank", "[A]Disk full", "[A]Disk full");
    }
    void AnEngineErrorOffersARetry()
    {
        QFETCH(QString, description);
        QFETCH(QString, shown);
        const QString source = u"DAO.Database"_qs;
        EngineErrorList() = {{61, u"DAO.Workspace"_qs, description, {}}, {62, source, u"second"_qs, {}}};
        SetCurrentError(EngineErrorList().last());
        ScriptedDialogs user;
        user.Expect(source, retryOrCancel + shown, Dialogs::Answer::Retry);
        QCOMPARE(HandleError("NewDatabase", 0), 4);
        QCOMPARE(Log(), firstLine);
        user.Expect(source, retryOrCancel + shown, Dialogs::Answer::Cancel);
        QVERIFY(HandleError("NewDatabase", 0) != 4);
        QCOMPARE(Log(), firstLine % u"   Module = DAO.Workspace - Error number: 61 - " % description %
                            u"Module = DAO.Database - Error number: 62 - second\n"
                            u"    Located in:NewDatabase\n\n");
    }

    void ALogThatCannotBeWrittenStopsNothing()
    {
        QVERIFY(QFile::remove(LogFile()));
        QVERIFY(QDir().mkdir(LogFile()));
        ScriptedDialogs user;
        user.Expect("Connection", seekSupport);
        SetCurrentError({5, u"Connection"_qs, u"x"_qs, {}});
        QCOMPARE(HandleError("r", 0), 2);
        LogStart();
        LogFinish();
    }
};

QTEST_GUILESS_MAIN(TestErrorHandler)
#include "test_errorhandler.moc"
