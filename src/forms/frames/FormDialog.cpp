#include "forms/frames/FormDialog.h"

#include "core/session/Session.h"
#include "forms/frames/FormSize.h"
#include "forms/frames/WindowPlace.h"

#include <QShowEvent>
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
        move(PlaceOver(parentWidget(), size(), m_stepsAside));
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

void FormDialog::reject()
{
    if (MayLeave())
        QDialog::reject();
}
