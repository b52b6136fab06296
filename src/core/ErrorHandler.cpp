#include "core/ErrorHandler.h"

#include "database/DecodeDateFunc.h"
#include "database/GlobalCode.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Directories.h"
#include "platform/FileDatabase.h"

#include <QFile>

#include <algorithm>

namespace
{
constexpr int gaveUp = 2;

EngineError g_currentError;
QString g_reportText;

void WriteLog(QIODevice::OpenMode mode, const QString &text)
{
    QFile log(Directories::WrittenFile(QStringLiteral("log.txt")));
    if (log.open(mode | QIODevice::Text))
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

int ReportProgramError(const QString &routineName)
{
    g_reportText = ReportOf(g_currentError);
    Dialogs::MsgBox(QStringLiteral("A number of errors have been detected, please seek technical support."),
                    g_currentError.source, Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
    LogError(routineName);
    return gaveUp;
}

int ReportEngineError(const QString &routineName, const QString &source)
{
    g_reportText.clear();
    const EngineErrors entries = EngineErrorList();
    for (const EngineError &entry : entries)
        g_reportText += ReportOf(entry);
    const Dialogs::Answer answer =
        Dialogs::MsgBox(u"Unable to perform requested database operation, you can retry the pending "
                        u"operation or cancel.\n\n" %
                            WithoutDriverNames(entries.first().description),
                        source, Dialogs::Buttons::RetryCancel, Dialogs::Icon::Stop);
    if (answer != Dialogs::Answer::Retry)
        LogError(routineName);
    return static_cast<int>(answer);
}
} // namespace

void LogStart()
{
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
    const EngineErrors &entries = EngineErrorList();
    const auto match = std::find_if(entries.begin(), entries.end(), [](const EngineError &entry) {
        return entry.source == g_currentError.source;
    });
    return match == entries.end() ? ReportProgramError(routineName)
                                  : ReportEngineError(routineName, match->source);
}
