#include "forms/frames/FormDialog.h"

#include "core/session/Session.h"
#include "forms/frames/FormSize.h"

#include <QMdiSubWindow>
#include <QScreen>
#include <QShowEvent>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>

#include <utility>

namespace
{
bool IsTabBar(const QWidget *widget)
{
    return qobject_cast<const QTabBar *>(widget) || qobject_cast<const QTabWidget *>(widget);
}

bool IsTabStop(const QWidget *widget)
{
    return widget->isVisible() && widget->isEnabled() && widget->focusPolicy() & Qt::TabFocus;
}

/// The window that holds the form, which may be one within the main window.
const QWidget *WindowOf(const QWidget *form)
{
    while (!form->isWindow() && !qobject_cast<const QMdiSubWindow *>(form))
        form = form->parentWidget();
    return form;
}

/// A place on the desktop, 0 to `room`; steps that would leave it start again from its edge.
int Stepped(int middle, int steps, int room)
{
    return room < 0 ? 0 : (qBound(0, middle, room) + steps) % (room + 1);
}
} // namespace

FormDialog::FormDialog(const QString &name, const QString &title, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    FormSize::Remember(this);
}

int FormDialog::Run()
{
    gDialogResult = 0;
    exec();
    return std::exchange(gDialogResult, 0);
}

void FormDialog::showEvent(QShowEvent *event)
{
    if (!event->spontaneous() && parentWidget() && !testAttribute(Qt::WA_Moved))
        MoveOverOpener();
    QDialog::showEvent(event);
    // The first word typed belongs in the first field: the captions of the tabs above it would lose it.
    if (event->spontaneous() || (focusWidget() && !IsTabBar(focusWidget())))
        return;
    QWidget *first = this;
    do {
        first = first->nextInFocusChain();
    } while (first != this && (!IsTabStop(first) || IsTabBar(first)));
    first->setFocus();
}

void FormDialog::MoveOverOpener()
{
    const QWidget *opener = WindowOf(parentWidget());
    const QRect desktop = opener->screen()->availableGeometry();
    const int bar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    QRect place(QPoint(), size());
    place.moveCenter(opener->mapToGlobal(opener->rect().center()) - desktop.topLeft());
    const int steps = m_stepsAside * bar;
    move(desktop.left() + Stepped(place.left(), steps, desktop.width() - width()),
         desktop.top() + Stepped(place.top(), steps, desktop.height() - height() - bar));
}

void FormDialog::reject()
{
    if (MayLeave())
        QDialog::reject();
}
