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
constexpr std::array<const char *, 7> kinds{"key", "main", "text", "mouse", "wheel", "command", "form"};

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

void PressKey(QWindow *window, const QString &keys)
{
    const QKeySequence sequence(keys);
    if (window && !sequence.isEmpty())
        QTest::keyClick(window, sequence[0].key(), sequence[0].keyboardModifiers());
}

void TypeText(const QPointer<QWindow> &window, const QString &text)
{
    for (const QChar letter : text) {
        if (!window || window != Native(MonkeyWindow()))
            return;
        QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

void UseMouse(QWindow *window, const QStringList &what)
{
    if (!window)
        return;
    const QPoint at(what.value(1).toInt(), what.value(2).toInt());
    if (what.value(0) == u"double") {
        QTest::mouseDClick(window, Qt::LeftButton, {}, at);
        return;
    }
    const Qt::MouseButton button = what.value(0) == u"right" ? Qt::RightButton : Qt::LeftButton;
    const QPointer<QWindow> living(window);
    QTest::mousePress(window, button, {}, at);
    if (living)
        QTest::mouseRelease(window, button, {}, at);
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

void ChooseCommand(const QString &id)
{
    QWidget *window = MainWindow();
    auto *command = window ? window->findChild<QAction *>(id) : nullptr;
    if (command && command->isEnabled() && !QApplication::activeModalWidget())
        command->trigger();
}

void OpenForm(const QString &name)
{
    for (const FormEntry &entry : FormRegistry()) {
        if (entry.name != name)
            continue;
        const std::unique_ptr<QWidget> form = entry.open();
        if (auto *dialog = qobject_cast<QDialog *>(form.get()))
            dialog->exec();
    }
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
    }
}
