#include "forms/frames/ButtonKeys.h"

#include "forms/progress/ModalFront.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QShortcutEvent>

namespace
{
/// When a mnemonic is pressed, the toolkit gives the focus to a button that can be ticked, but to no other.
void Click(QAbstractButton *button)
{
    const QPointer<QAbstractButton> living(button);
    if (button->isCheckable() && button->focusPolicy() & Qt::ClickFocus)
        button->setFocus(Qt::ShortcutFocusReason);
    if (living)
        living->click();
}

bool PressMnemonic(QObject *watched, const QShortcutEvent &shortcut)
{
    auto *button = qobject_cast<QAbstractButton *>(watched);
    if (!button || shortcut.isAmbiguous() || button->shortcut() != shortcut.key())
        return false;
    Click(button);
    return true;
}

bool PressEnter(QObject *watched, QKeyEvent &key)
{
    auto *button = qobject_cast<QPushButton *>(watched);
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!button || !isEnter || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    key.accept();
    if (!key.isAutoRepeat())
        button->click();
    return true;
}

/// The toolkit takes the letter of a mnemonic that nobody has for typing: it would replace the selected text.
bool IsUnusedMnemonic(QObject *watched, const QKeyEvent &key)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const bool typesHere =
        watched->isWidgetType() && !qobject_cast<QMenu *>(watched) && !qobject_cast<QMenuBar *>(watched);
    return typesHere && modifiers == Qt::AltModifier && !key.text().isEmpty() && key.text().at(0).isPrint();
}

class Filter final : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::Shortcut:
            return ModalFront::Covers(watched) ||
                   PressMnemonic(watched, static_cast<const QShortcutEvent &>(*event));
        case QEvent::KeyPress:
            return PressEnter(watched, static_cast<QKeyEvent &>(*event)) ||
                   IsUnusedMnemonic(watched, static_cast<QKeyEvent &>(*event));
        default:
            return false;
        }
    }
};
} // namespace

void ButtonKeys::Serve()
{
    static QPointer<Filter> served;
    if (served)
        return;
    served = new Filter(qApp);
    qApp->installEventFilter(served);
}
