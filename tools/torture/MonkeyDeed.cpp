#include "torture/MonkeyDeed.h"

#include "nets/FormRegistry.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QKeySequence>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <array>
#include <memory>

namespace
{
constexpr std::array<const char *, 8> kinds{"key",   "main",    "text", "mouse",
                                            "wheel", "command", "form", "close"};

QWidget *MainWindow()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"frmMain" && window->isVisible())
            return window;
    }
    return nullptr;
}

QWindow *Native(const QWidget *window)
{
    return window ? window->windowHandle() : nullptr;
}

// Sent directly to the toolkit: the test functions serve events between the press and the release, in which
// the monkey goes on and the window may be destroyed.

void Press(const QPointer<QWindow> &window, int key, const QString &text, Qt::KeyboardModifiers with)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (window)
            qt_handleKeyEvent(window, type, key, with, text);
    }
}

void Click(const QPointer<QWindow> &window, Qt::MouseButton button, const QPoint &at, int sinceLast)
{
    static int time = 0; // milliseconds
    time += sinceLast;
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const bool isPress = type == QEvent::MouseButtonPress;
        if (window)
            qt_handleMouseEvent(window, at, window->mapToGlobal(at), isPress ? button : Qt::NoButton, button,
                                type, Qt::NoModifier, time);
    }
}

void PressKey(QWindow *window, const QString &keys)
{
    const QKeySequence sequence(keys);
    if (sequence.isEmpty())
        return;
    const Qt::Key key = sequence[0].key();
    const bool isLetter = key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde;
    Press(window, key, isLetter ? QString(QChar(key)).toLower() : QString(), sequence[0].keyboardModifiers());
}

void TypeText(const QPointer<QWindow> &window, const QString &text)
{
    for (const QChar letter : text) {
        if (!window || window != Native(MonkeyWindow()))
            return;
        Press(window, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

void UseMouse(const QPointer<QWindow> &window, const QStringList &what)
{
    constexpr int apart = 1000; // milliseconds, so that two clicks are not a double click
    constexpr int together = 10;
    const QPoint at(what.value(1).toInt(), what.value(2).toInt());
    Click(window, what.value(0) == u"right" ? Qt::RightButton : Qt::LeftButton, at, apart);
    if (what.value(0) == u"double")
        Click(window, Qt::LeftButton, at, together);
}

void TurnWheel(QWindow *window, const QStringList &what)
{
    if (!window)
        return;
    const QPointF at(what.value(0).toInt(), what.value(1).toInt());
    QWheelEvent notch(at, window->mapToGlobal(at), {}, {0, what.value(2).toInt()}, {}, {}, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(window, &notch);
}

/// Commands and forms are reached without the toolkit's events, which a modal window in front of the main
/// window would block.
QWidget *MainWindowInReach()
{
    const bool isCovered =
        QApplication::activeModalWidget() || QApplication::activePopupWidget() || MonkeyWaitsForRun();
    return isCovered ? nullptr : MainWindow();
}

void ChooseCommand(const QString &id)
{
    QWidget *window = MainWindowInReach();
    auto *command = window ? window->findChild<QAction *>(id) : nullptr;
    if (command && command->isEnabled())
        command->trigger();
}

void OpenForm(const QString &name)
{
    if (!MainWindowInReach())
        return;
    for (const FormEntry &entry : FormRegistry()) {
        if (entry.name != name)
            continue;
        const std::unique_ptr<QWidget> form = entry.open();
        if (auto *dialog = qobject_cast<QDialog *>(form.get()))
            dialog->exec();
    }
}

void CloseFront()
{
    if (QWidget *window = MonkeyWindow())
        window->close();
}
} // namespace

QWidget *MonkeyWindow()
{
    for (QWidget *window : {QApplication::activePopupWidget(), QApplication::activeModalWidget(),
                            QApplication::activeWindow()}) {
        if (window && window->isVisible())
            return window;
    }
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowHandle())
            return window;
    }
    return nullptr;
}

bool MonkeyWaitsForRun()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(),
                       [](const QWidget *window) { return window->objectName() == u"ProgressBox"; });
}

QString MonkeyDeed::Line() const
{
    return QString::number(delay) % u' ' % QLatin1StringView(kinds[static_cast<size_t>(kind)]) % u' ' % what;
}

std::optional<MonkeyDeed> MonkeyDeed::OfLine(const QString &line)
{
    const QByteArray kind = line.section(u' ', 1, 1).toLatin1();
    const auto found = std::find(kinds.begin(), kinds.end(), kind);
    if (found == kinds.end())
        return {};
    return MonkeyDeed{static_cast<Kind>(found - kinds.begin()), line.section(u' ', 2),
                      line.section(u' ', 0, 0).toInt()};
}

void MonkeyDeed::Do() const
{
    QWindow *window = Native(MonkeyWindow());
    switch (kind) {
    case Kind::Key:
        return PressKey(window, what);
    case Kind::KeyMain:
        return PressKey(Native(MainWindow()), what);
    case Kind::Text:
        return TypeText(window, what);
    case Kind::Mouse:
        return UseMouse(window, what.split(u' '));
    case Kind::Wheel:
        return TurnWheel(window, what.split(u' '));
    case Kind::Command:
        return ChooseCommand(what);
    case Kind::Form:
        return OpenForm(what);
    case Kind::Close:
        return CloseFront();
    }
}
