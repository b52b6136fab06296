#include "core/files/ErrorHandler.h"

#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/FailureAdvice.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "platform/desktop/OwnFile.h"
#include "platform/engines/FileDatabase.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace
{
constexpr int gaveUp = 2;

EngineError g_currentError;
QString g_reportText;

void WriteLog(QIODevice::OpenMode mode, const QString &text)
{
    QFile log(Directories::WrittenFile(QStringLiteral("log.txt")));
    if (OpenOwnFile(log, mode | QIODevice::Text))
        log.write(text.toUtf8());
}

QString ReportOf(const EngineError &error)
{
    return u"Module = " % error.source % u" - Error number: " % QString::number(error.number) % u" - " %
           error.description;
}

/// The engine's message without the bracketed driver names before it.
QString WithoutDriverNames(const QString &description)
{
    const qsizetype end = description.indexOf(QLatin1String("] "));
    return end < 0 ? description.trimmed() : description.mid(end + 1).trimmed();
}

/// Takes the text as it is now: the box serves events, during which another failure may come.
void Log(const QString &routineName, const QString &reportText)
{
    g_reportText = reportText;
    LogError(routineName);
}

int ReportProgramError(const QString &routineName, const EngineError &error)
{
    const QString advice = FailureAdvice(error);
    Dialogs::MsgBox(QStringLiteral("A number of errors have been detected, please seek technical support.") %
                        (advice.isEmpty() ? QString() : QString(u"\n\n" % advice)),
                    error.source, Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
    Log(routineName, ReportOf(error));
    return gaveUp;
}

int ReportEngineError(const QString &routineName, const QString &source)
{
    const EngineErrors entries = EngineErrorList();
    const Dialogs::Answer answer =
        Dialogs::MsgBox(u"Unable to perform requested database operation, you can retry the pending "
                        u"operation or cancel.\n\n" %
                            WithoutDriverNames(entries.first().description),
                        source, Dialogs::Buttons::RetryCancel, Dialogs::Icon::Stop);
    if (answer == Dialogs::Answer::Retry)
        return static_cast<int>(answer);
    QString reportText;
    for (const EngineError &entry : entries)
        reportText += ReportOf(entry);
    Log(routineName, reportText);
    return static_cast<int>(answer);
}
} // namespace

void LogStart()
{
    const QString name = Directories::WrittenFile(QStringLiteral("log.txt"));
    if (QFileInfo(name).isSymLink())
        QFile::remove(name); // the link, not what it leads to
    WriteLog(QIODevice::WriteOnly, u"Veltrane Version " % FullVersionString() % u" - Error Log started at " %
                                       GeneralDateText(Clock::Now()) % u'\n');
}

void LogFinish()
{
    WriteLog(QIODevice::Append, u"Error Log finished at " % GeneralDateText(Clock::Now()) % u'\n');
}

void LogError(const QString &routineName)
{
    WriteLog(QIODevice::Append, u"   " % g_reportText % u"\n    Located in:" % routineName % u"\n\n");
}

void SetCurrentError(const EngineError &error)
{
    g_currentError = error;
}

int HandleError(const QString &routineName, int ignoredNumber)
{
    if (g_currentError.number == ignoredNumber && ignoredNumber != 0)
        return 0;
    const EngineError error = g_currentError;
    const EngineErrors &entries = EngineErrorList();
    const auto match = std::find_if(entries.begin(), entries.end(),
                                    [&](const EngineError &entry) { return entry.source == error.source; });
    return match == entries.end() ? ReportProgramError(routineName, error)
                                  : ReportEngineError(routineName, match->source);
}
