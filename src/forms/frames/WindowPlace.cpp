#include "forms/frames/WindowPlace.h"

#include <QMdiSubWindow>
#include <QScreen>
#include <QStyle>

namespace
{
const QWidget *WindowOf(const QWidget *form)
{
    while (!form->isWindow() && !qobject_cast<const QMdiSubWindow *>(form))
        form = form->parentWidget();
    return form;
}

/// A place on the desktop, 0 to `room`.
int Stepped(int middle, int steps, int room)
{
    return room < 0 ? 0 : (qBound(0, middle, room) + steps) % (room + 1);
}
} // namespace

QPoint PlaceOver(const QWidget *opener, QSize size, int steps)
{
    const QWidget *window = WindowOf(opener);
    const QRect desktop = window->screen()->availableGeometry();
    const int bar = window->style()->pixelMetric(QStyle::PM_TitleBarHeight);
    QRect place(QPoint(), size);
    place.moveCenter(window->mapToGlobal(window->rect().center()) - desktop.topLeft());
    return desktop.topLeft() +
           QPoint(Stepped(place.left(), steps * bar, desktop.width() - size.width()),
                  Stepped(place.top(), steps * bar, desktop.height() - size.height() - bar));
}
