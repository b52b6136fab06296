#include "forms/progress/ModalFront.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

namespace
{
bool HoldsWindow(const QWidget *front, const QWindow *window)
{
    while (window && window != front->windowHandle())
        window = window->transientParent() ? window->transientParent() : window->parent();
    return window;
}
} // namespace

bool ModalFront::Holds(const QWidget *front, const QObject *target)
{
    if (const auto *window = qobject_cast<const QWindow *>(target))
        return HoldsWindow(front, window);
    while (target && target != front)
        target = target->parent();
    return target;
}

bool ModalFront::Covers(const QObject *target)
{
    const QWidget *front = QApplication::activeModalWidget();
    return front && !Holds(front, target);
}
