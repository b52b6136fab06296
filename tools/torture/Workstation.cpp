#include "torture/Workstation.h"

#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "support/TestDatabase.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{
constexpr int longestRun = 600'000; ///< milliseconds
constexpr int boxCameUp = 3;
} // namespace

Workstation::Workstation(const TestDatabase &database, const QString &role, const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationFilePath(),
                    QStringList{u"--role"_qs, role, database.ConnectionText(), database.Directory()} +
                        arguments);
}

Workstation::~Workstation()
{
    Kill();
}

bool Workstation::WaitForFirstLine()
{
    while (!m_said.contains('\n') && m_process.waitForReadyRead(longestRun))
        m_said += m_process.readAllStandardOutput();
    return m_said.contains('\n');
}

void Workstation::Kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool Workstation::IsRunning()
{
    m_process.waitForFinished(0);
    return m_process.state() != QProcess::NotRunning;
}

bool Workstation::Finish()
{
    return m_process.waitForFinished(longestRun) && m_process.exitStatus() == QProcess::NormalExit &&
           m_process.exitCode() == 0;
}

QStringList Workstation::Lines()
{
    m_said += m_process.readAllStandardOutput();
    return QString::fromUtf8(m_said).split(u'\n', Qt::SkipEmptyParts);
}

bool Workstation::Begin(const QStringList &arguments)
{
    Directories::SetProgram(arguments.at(1));
    gUserRights = RightsBlank();
    Dialogs::Installed().msgBox = [](const QString &text, const auto &, auto, auto, auto) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        std::_Exit(boxCameUp);
        return Dialogs::Answer::Cancel;
    };
    return gConnection.Open(arguments.at(0));
}

void Workstation::Say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}
