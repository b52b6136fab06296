#include "core/ErrorHandler.h"

#include "platform/Clock.h"
#include "platform/Directories.h"
#include "platform/FileDatabase.h"
#include "support/ScriptedDialogs.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace
{
const QString firstLine =
    QStringLiteral("Veltrane Version 1.20.0 - Error Log started at 22/11/2026 21:05:09\n");
const QString seekSupport =
    QStringLiteral("A number of errors have been detected, please seek technical support.");
const QString retryOrCancel =
    QStringLiteral("Unable to perform requested database operation, you can retry the pending operation or "
                   "cancel.\n\n");
} // namespace

class TestErrorHandler : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void ARunWithoutErrorsLogsTwoLines();
    void AProgramErrorIsShownAndLogged();
    void AnEngineErrorOffersARetry_data();
    void AnEngineErrorOffersARetry();
    void ARetriedErrorThatIsThenCancelledLeavesOneEntry();
    void AnIgnoredNumberIsSilent();
    void ALogThatCannotBeWrittenStopsNothing();

private:
    QString Log() const
    {
        QFile file(m_directory->filePath(QStringLiteral("log.txt")));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("no log");
    }
    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestErrorHandler::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    Directories::SetProgram(m_directory->path());
    Clock::StopAt(QDateTime(QDate(2026, 11, 22), QTime(21, 5, 9)));
    EngineErrorList().clear();
    LogStart();
}

void TestErrorHandler::cleanup()
{
    EngineErrorList().clear();
    Clock::StopAt({});
}

void TestErrorHandler::ARunWithoutErrorsLogsTwoLines()
{
    LogFinish();
    const QString lastLine = QStringLiteral("Error Log finished at 22/11/2026 21:05:09\n");
    QCOMPARE(Log(), firstLine + lastLine);
    LogStart();
    QCOMPARE(Log(), firstLine);
}

void TestErrorHandler::AProgramErrorIsShownAndLogged()
{
    ScriptedDialogs user;
    user.Expect(QStringLiteral("Connection"), seekSupport);
    EngineErrorList() = {{3, QStringLiteral("DAO.Database"), QStringLiteral("other"), {}}};
    SetCurrentError({-7, QStringLiteral("Connection"), QStringLiteral("no such table: X"), {}});
    QCOMPARE(HandleError(QStringLiteral("ADO_Users_Delete"), 0), 2);
    QCOMPARE(Log(), firstLine + u"   Module = Connection - Error number: -7 - no such table: X\n"
                                u"    Located in:ADO_Users_Delete\n\n");
}

void TestErrorHandler::AnEngineErrorOffersARetry_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("shown");
    QTest::newRow("driver names before it") << "[A][B Driver] Disk full. "
                                            << "Disk full.";
    QTest::newRow("only the first is cut") << "[A] x [B] y"
                                           << "x [B] y";
    QTest::newRow("no driver name") << " Disk full"
                                    << "Disk full";
    QTest::newRow("a bracket without a blank") << "[A]Disk full"
                                               << "[A]Disk full";
}

void TestErrorHandler::AnEngineErrorOffersARetry()
{
    QFETCH(QString, description);
    QFETCH(QString, shown);
    const QString source = QStringLiteral("DAO.Database");
    EngineErrorList() = {{61, QStringLiteral("DAO.Workspace"), description, {}},
                         {62, source, QStringLiteral("second"), {}}};
    SetCurrentError({62, source, QStringLiteral("second"), {}});
    {
        ScriptedDialogs user;
        user.Expect(source, retryOrCancel + shown, Dialogs::Answer::Retry);
        QCOMPARE(HandleError(QStringLiteral("NewDatabase"), 0), 4);
        QCOMPARE(Log(), firstLine);
    }
    ScriptedDialogs user;
    user.Expect(source, retryOrCancel + shown, Dialogs::Answer::Cancel);
    QVERIFY(HandleError(QStringLiteral("NewDatabase"), 0) != 4);
    QCOMPARE(Log(), QString(firstLine % u"   Module = DAO.Workspace - Error number: 61 - " % description %
                            u"Module = DAO.Database - Error number: 62 - second\n"
                            u"    Located in:NewDatabase\n\n"));
}

void TestErrorHandler::ARetriedErrorThatIsThenCancelledLeavesOneEntry()
{
    const QString source = QStringLiteral("DAO.Database");
    EngineErrorList() = {{1, source, QStringLiteral("busy"), {}}};
    SetCurrentError(EngineErrorList().first());
    ScriptedDialogs user;
    user.Expect(source, retryOrCancel + u"busy", Dialogs::Answer::Retry);
    user.Expect(source, retryOrCancel + u"busy", Dialogs::Answer::Retry);
    user.Expect(source, retryOrCancel + u"busy", Dialogs::Answer::Cancel);
    while (HandleError(QStringLiteral("r"), 0) == 4) {
    }
    QCOMPARE(Log().count(QStringLiteral("Located in:")), 1);
}

void TestErrorHandler::AnIgnoredNumberIsSilent()
{
    ScriptedDialogs nobody;
    SetCurrentError({3704, QStringLiteral("Connection"), QStringLiteral("closed"), {}});
    QCOMPARE(HandleError(QStringLiteral("r"), 3704), 0);
    QCOMPARE(Log(), firstLine);
}

void TestErrorHandler::ALogThatCannotBeWrittenStopsNothing()
{
    QVERIFY(QFile::remove(m_directory->filePath(QStringLiteral("log.txt"))));
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("log.txt")));
    ScriptedDialogs user;
    user.Expect(QStringLiteral("Connection"), seekSupport);
    SetCurrentError({5, QStringLiteral("Connection"), QStringLiteral("x"), {}});
    QCOMPARE(HandleError(QStringLiteral("r"), 0), 2);
    LogStart();
    LogFinish();
}

QTEST_GUILESS_MAIN(TestErrorHandler)
#include "test_errorhandler.moc"
