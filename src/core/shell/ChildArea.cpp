#include "core/shell/ChildArea.h"

#include "core/shell/ChildKeys.h"

#include <QApplication>
#include <QEvent>
#include <QMdiSubWindow>

#include <algorithm>
#include <numeric>

ChildArea::ChildArea(QWidget *parent)
    : QMdiArea(parent)
{
    setObjectName(QStringLiteral("ChildArea"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setBackground(palette().brush(QPalette::Mid));
    new ChildKeys(this);
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
    frame->installEventFilter(this);
    frame->show();
    return frame;
}

bool ChildArea::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Close && qobject_cast<QMdiSubWindow *>(watched) &&
        QApplication::activeModalWidget()) {
        event->ignore();
        return true;
    }
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    const auto *widget = isKey ? qobject_cast<const QWidget *>(watched) : nullptr;
    if (widget && widget->window() != window())
        return false;
    return QMdiArea::eventFilter(watched, event);
}

QList<QMdiSubWindow *> ChildArea::TiledWindows() const
{
    QList<QMdiSubWindow *> windows = subWindowList(CreationOrder);
    windows.removeIf([](const QMdiSubWindow *window) { return window->isHidden() || window->isMinimized(); });
    return windows;
}

std::vector<int> ChildArea::TileWidths(const QList<QMdiSubWindow *> &windows, int room)
{
    std::vector<int> least;
    for (const QMdiSubWindow *window : windows)
        least.push_back(window->minimumSizeHint().width());
    const int count = static_cast<int>(windows.size());
    const int spare = room - std::accumulate(least.begin(), least.end(), 0);
    const bool equal = spare < 0 || *std::max_element(least.begin(), least.end()) <= room / count;
    std::vector<int> widths;
    for (int i = 0; i < count; ++i) {
        const int before = equal ? room * i / count : spare * i / count;
        const int after = equal ? room * (i + 1) / count : spare * (i + 1) / count;
        widths.push_back(after - before + (equal ? 0 : least[static_cast<size_t>(i)]));
    }
    return widths;
}

void ChildArea::Tile()
{
    m_tiles.clear();
    const QList<QMdiSubWindow *> windows = TiledWindows();
    if (windows.isEmpty())
        return;
    const QSize room = viewport()->size();
    const std::vector<int> widths = TileWidths(windows, room.width());
    int left = 0;
    for (int i = 0; i < windows.size(); ++i) {
        const int width = widths[static_cast<size_t>(i)];
        if (windows.at(i)->isMaximized())
            windows.at(i)->showNormal();
        windows.at(i)->setGeometry(left, 0, width, room.height());
        m_tiles.insert(windows.at(i), windows.at(i)->geometry());
        left += width;
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

bool ChildArea::viewportEvent(QEvent *event)
{
    setActivationOrder(event->type() == QEvent::ChildRemoved ? ActivationHistoryOrder : CreationOrder);
    return QMdiArea::viewportEvent(event);
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
