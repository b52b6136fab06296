#include "core/shell/ChildScreens.h"

#include "core/shell/ChildArea.h"
#include "forms/frames/RecordForm.h"

#include <QIcon>
#include <QMdiSubWindow>

#include <algorithm>

void ChildScreens::Open(const QString &command, const QIcon &icon) const
{
    const Screen *screenOf = Screens::Of(command);
    if (!screenOf)
        return;
    QMdiSubWindow *frame = m_area->Child(screenOf->childName);
    if (!frame) {
        QWidget *form = screenOf->makeChild();
        form->setWindowIcon(icon);
        frame = m_area->Open(form);
    }
    if (frame->isMinimized())
        frame->showNormal();
    m_area->setActiveSubWindow(frame);
}

void ChildScreens::ForEach(std::function<void(QWidget *)> Screen::*refill) const
{
    const QList<QMdiSubWindow *> frames = m_area->subWindowList(QMdiArea::CreationOrder);
    std::for_each(frames.rbegin(), frames.rend(), [refill](QMdiSubWindow *frame) {
        QWidget *form = frame->widget();
        const Screen *screenOf = form ? Screens::OfChild(form->objectName()) : nullptr;
        if (screenOf && screenOf->*refill)
            (screenOf->*refill)(form);
    });
}

bool ChildScreens::CloseRecords() const
{
    const QList<RecordForm *> records = m_area->window()->findChildren<RecordForm *>();
    return std::all_of(records.rbegin(), records.rend(),
                       [](RecordForm *record) { return !record->isVisible() || record->close(); });
}

bool ChildScreens::CloseAll() const
{
    if (!CloseRecords())
        return false;
    const QList<QMdiSubWindow *> frames = m_area->subWindowList(QMdiArea::CreationOrder);
    return std::all_of(frames.rbegin(), frames.rend(), [](QMdiSubWindow *frame) { return frame->close(); });
}
