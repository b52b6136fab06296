#include "torture/MonkeyRun.h"

#include "core/session/Session.h"
#include "core/shell/Main.h"
#include "platform/connection/Connection.h"
#include "torture/MonkeyHome.h"

#include <QApplication>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int lookEvery = 500;
constexpr int sessionLength = 5000;     ///< steps, if nothing else ends it
constexpr int closingTries = 2000;      ///< while no run is under way
constexpr qsizetype sparedWidgets = 10; ///< kept by the toolkit for the next tool tip and the like
constexpr int faultFound = 4;
constexpr int longRun = 10'000;
constexpr int fewWindows = 20;

[[noreturn]] void Fail(const QString &fault)
{
    std::printf("fault: %s\n", qPrintable(fault));
    std::fflush(stdout);
    std::_Exit(faultFound);
}

/// A warning from the toolkit means that something is wrong, unless it is about this platform.
void TakeMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    for (const char *known : {"This plugin does not support", "Mouse event occurs outside"}) {
        if (text.startsWith(QLatin1StringView(known)))
            return;
    }
    Fail(u"the toolkit warns: " % text);
}

double MegabytesHeld()
{
    constexpr double pagesInMegabyte = 256;
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() / pagesInMegabyte
                                          : 0;
}
} // namespace

MonkeyRun::MonkeyRun(MonkeyHome &home, unsigned seed, int steps, const QString &keys)
    : m_home(home)
    , m_mind(seed)
    , m_keys(keys)
    , m_steps(steps)
{
    m_keys.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    qInstallMessageHandler(TakeMessage);
}

MonkeyRun::MonkeyRun(MonkeyHome &home, const QStringList &lines)
    : m_home(home)
    , m_mind(0)
    , m_lines(lines)
    , m_steps(static_cast<int>(lines.size()))
{
    qInstallMessageHandler(TakeMessage);
}

void MonkeyRun::Run()
{
    while (!IsOver())
        PlaySession();
    if (m_steps >= longRun && m_seen.size() < fewWindows)
        Fail(u"it came to " % QString::number(m_seen.size()) % u" windows alone");
}

void MonkeyRun::PlaySession()
{
    m_home.TidyUp();
    gDBPassword.clear();
    m_closing = 0;
    m_sessionEnds = m_lines.isEmpty() ? m_done + sessionLength : m_steps;
    if (m_keys.isOpen()) {
        m_keys.resize(0);
        m_keys.seek(0);
    }
    Main();
    LogOn();
    Plan(1);
    QApplication::exec();
    for (QWidget *window : QApplication::topLevelWidgets())
        window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    gConnection.Close();
    const qsizetype widgets = QApplication::allWidgets().size();
    if (++m_session == 2)
        m_widgets = widgets;
    if (m_session > 2 && widgets > m_widgets + sparedWidgets)
        Fail(u"a session leaves " % QString::number(widgets - m_widgets) % u" widgets");
    std::printf("session %d, step %d, %d windows seen, %.0f MB\n", m_session, m_done,
                static_cast<int>(m_seen.size()), MegabytesHeld());
    std::fflush(stdout);
}

void MonkeyRun::LogOn()
{
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() != u"frmSplash")
            continue;
        window->findChild<QLineEdit *>(QStringLiteral("txtUserName"))->setText(QStringLiteral("clerk"));
        window->findChild<QLineEdit *>(QStringLiteral("txtPassword"))->setText(QStringLiteral("secret"));
        window->findChild<QPushButton *>(QStringLiteral("OkBtn"))->click();
        return;
    }
    Fail(QStringLiteral("no window to log on"));
}

/// Each step has its own timer: one that has fired does not fire again before its step returns, which may be
/// after thousands of others in a dialog.
void MonkeyRun::Plan(int delay)
{
    QTimer::singleShot(qMax(1, delay), this, [this, session = m_session] {
        if (session == m_session)
            Step();
    });
}

MonkeyDeed MonkeyRun::NextDeed()
{
    if (m_done < m_lines.size())
        return MonkeyDeed::OfLine(m_lines.at(m_done)).value_or(MonkeyDeed());
    return Noted(m_mind.Next());
}

MonkeyDeed MonkeyRun::Noted(const MonkeyDeed &deed)
{
    if (m_keys.isOpen())
        m_keys.write(QByteArray(deed.Line().toUtf8() + '\n'));
    return deed;
}

void MonkeyRun::Step()
{
    if (IsOver() || m_done >= m_sessionEnds) {
        CloseDown();
        return;
    }
    const MonkeyDeed deed = NextDeed();
    if (const QWidget *window = MonkeyWindow())
        m_seen.insert(window->objectName());
    if (++m_done % lookEvery == 0)
        std::printf("step %d\n", m_done);
    std::fflush(stdout);
    Plan(deed.delay);
    ++m_depth;
    deed.Do();
    --m_depth;
    // Deeds return at all depths, and the last of many is seldom the one whose turn it is.
    if (m_depth == 0 && m_done >= m_nextLook)
        Look();
}

/// Ends the session like a user who wants to go home: out of every dialog, whatever it asks.
void MonkeyRun::CloseDown()
{
    if (!MonkeyWaitsForRun() && ++m_closing > closingTries)
        Fail(u"a window that does not close: " % (MonkeyWindow() ? MonkeyWindow()->objectName() : QString()));
    Plan(1);
    if (!MonkeyWindow()) {
        // quit() would ask each of the forms opened over each other, of which some are already hidden.
        QCoreApplication::exit();
        return;
    }
    const MonkeyDeed deed = m_mind.Next();
    const bool opensNext = deed.kind == MonkeyDeed::Kind::Form || deed.kind == MonkeyDeed::Kind::Command;
    const bool closes = opensNext || QApplication::activePopupWidget() || m_closing % 3 == 0;
    Noted(closes ? MonkeyDeed{MonkeyDeed::Kind::Close, {}} : deed).Do();
}

void MonkeyRun::Look()
{
    if (!gDBValid || !gConnection.IsOpen() || QApplication::activeModalWidget())
        return;
    m_nextLook = m_done + lookEvery;
    const QString fault = MonkeyHome::FaultOfDatabase();
    if (!fault.isEmpty())
        Fail(fault);
}
