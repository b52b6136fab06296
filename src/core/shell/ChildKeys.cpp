#include "core/shell/ChildKeys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QShortcutEvent>

namespace
{
QKeySequence KeyOf(const QWidget *widget)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->shortcut();
    const auto *caption = qobject_cast<const QLabel *>(widget);
    return caption && caption->buddy() ? QKeySequence::mnemonic(caption->text()) : QKeySequence();
}
} // namespace

ChildKeys::ChildKeys(QMdiArea *children)
    : QObject(children)
    , m_children(children)
{
    QApplication::instance()->installEventFilter(this);
}

bool ChildKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Shortcut) {
        const auto *shortcut = static_cast<const QShortcutEvent *>(event);
        if (shortcut->isAmbiguous() && Press(shortcut->key()))
            return true;
    }
    return QObject::eventFilter(watched, event);
}

bool ChildKeys::Press(const QKeySequence &key) const
{
    const QMdiSubWindow *frame = m_children->activeSubWindow();
    if (!frame || QApplication::activeWindow() != m_children->window() || QApplication::activeModalWidget())
        return false;
    QWidget *found = nullptr;
    for (QWidget *widget : frame->findChildren<QWidget *>()) {
        if (!widget->isVisible() || !widget->isEnabled() || KeyOf(widget) != key)
            continue;
        if (found)
            return false;
        found = widget;
    }
    if (auto *button = qobject_cast<QAbstractButton *>(found))
        button->click();
    else if (auto *caption = qobject_cast<QLabel *>(found))
        caption->buddy()->setFocus(Qt::ShortcutFocusReason);
    return found;
}
