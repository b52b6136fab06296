#include "core/ChildArea.h"

#include <QMdiSubWindow>

#include <algorithm>

ChildArea::ChildArea(QWidget *parent)
    : QMdiArea(parent)
{
    setObjectName(QStringLiteral("ChildArea"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setBackground(palette().brush(QPalette::Mid));
}

QMdiSubWindow *ChildArea::Child(const QString &name) const
{
    for (QMdiSubWindow *frame : subWindowList()) {
        if (frame->widget() && frame->widget()->objectName() == name)
            return frame;
    }
    return nullptr;
}

QMdiSubWindow *ChildArea::Open(QWidget *form)
{
    QMdiSubWindow *frame = addSubWindow(form);
    frame->setWindowIcon(form->windowIcon());
    frame->show();
    return frame;
}

QList<QMdiSubWindow *> ChildArea::TiledWindows() const
{
    QList<QMdiSubWindow *> windows = subWindowList(CreationOrder);
    windows.removeIf([](const QMdiSubWindow *window) { return window->isHidden() || window->isMinimized(); });
    return windows;
}

void ChildArea::Tile()
{
    m_tiles.clear();
    const QList<QMdiSubWindow *> windows = TiledWindows();
    const QRect room = viewport()->rect();
    const int count = static_cast<int>(windows.size());
    for (int i = 0; i < count; ++i) {
        const int left = room.width() * i / count;
        const int right = room.width() * (i + 1) / count;
        if (windows.at(i)->isMaximized())
            windows.at(i)->showNormal();
        windows.at(i)->setGeometry(left, 0, right - left, room.height());
        m_tiles.insert(windows.at(i), windows.at(i)->geometry());
    }
}

bool ChildArea::StillTiled() const
{
    const QList<QMdiSubWindow *> windows = TiledWindows();
    return !windows.isEmpty() && windows.size() == m_tiles.size() &&
           std::all_of(windows.begin(), windows.end(),
                       [this](QMdiSubWindow *window) { return m_tiles.value(window) == window->geometry(); });
}

void ChildArea::resizeEvent(QResizeEvent *event)
{
    const bool tiled = StillTiled();
    QMdiArea::resizeEvent(event);
    if (tiled)
        Tile();
}

void ChildArea::ArrangeIcons()
{
    QPoint place = viewport()->rect().bottomLeft();
    int rowHeight = 0;
    for (QMdiSubWindow *window : subWindowList(CreationOrder)) {
        if (!window->isMinimized() || window->isHidden())
            continue;
        if (place.x() > 0 && place.x() + window->width() > viewport()->width()) {
            place = QPoint(0, place.y() - rowHeight);
            rowHeight = 0;
        }
        window->move(place.x(), place.y() - window->height() + 1);
        place.rx() += window->width();
        rowHeight = std::max(rowHeight, window->height());
    }
}
