#include "nets/Ruler.h"

#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace
{
QRect Place(const QWidget &form, const QWidget *widget)
{
    return {widget->mapTo(&form, QPoint(0, 0)), widget->size()};
}

bool IsList(const QWidget *widget)
{
    return qobject_cast<const ListView *>(widget) || qobject_cast<const TreeView *>(widget) ||
           qobject_cast<const QPlainTextEdit *>(widget);
}

template <typename Widget>
QList<const Widget *> Seen(const QWidget &form, bool (*isMeant)(const Widget *))
{
    QList<const Widget *> seen;
    for (const Widget *widget : form.findChildren<Widget *>()) {
        if (widget->isVisible() && isMeant(widget))
            seen.append(widget);
    }
    return seen;
}

/// Captions that are nearly in a column are in one, and those of lists above the edge of their list.
QStringList CaptionFaults(const QWidget &form)
{
    // A group indents its captions by more than the first; the second is the width of a few letters.
    constexpr int jag = 5;
    constexpr int jagInAGroup = 20;
    QStringList faults;
    const auto captions = Seen<QLabel>(form, [](const QLabel *label) { return label->buddy() != nullptr; });
    const auto edge = [&form](const QLabel *caption) {
        return Place(form, caption).left() + caption->contentsRect().left();
    };
    for (const QLabel *caption : captions) {
        if (IsList(caption->buddy()) && caption->buddy()->y() > caption->y() &&
            edge(caption) != Place(form, caption->buddy()).left())
            faults.append(caption->text() % u" is not above the edge of its list");
        for (const QLabel *other : captions) {
            const int limit = caption->parent() == other->parent() ? jagInAGroup : jag;
            const int apart = edge(other) - edge(caption);
            if (apart > 0 && apart < limit)
                faults.append(caption->text() % u' ' % other->text() % u' ' % QString::number(apart));
        }
    }
    return faults;
}

QStringList ButtonFaults(const QHBoxLayout &row)
{
    QStringList names;
    QSet<int> widths;
    for (int i = 0; i < row.count(); ++i) {
        const auto *button = qobject_cast<QPushButton *>(row.itemAt(i)->widget());
        if (!button || !button->isVisible())
            continue;
        names.append(button->text() % u' ' % QString::number(button->width()));
        widths.insert(button->width());
    }
    return widths.size() > 1 ? names : QStringList();
}
} // namespace

QStringList Ruler::Faults(const QWidget &form)
{
    QStringList faults = CaptionFaults(form);
    for (const QHBoxLayout *row : form.findChildren<QHBoxLayout *>())
        faults += ButtonFaults(*row);
    const auto lists = Seen<QWidget>(form, IsList);
    for (const QWidget *list : lists) {
        for (const QWidget *other : lists) {
            const QRect left = Place(form, list);
            const QRect right = Place(form, other);
            if (left.top() == right.top() && left.bottom() < right.bottom())
                faults.append(list->objectName() % u" ends above " % other->objectName());
        }
    }
    return faults;
}

int Ruler::HeightOfLists(const QWidget &form)
{
    int height = 0;
    for (const QWidget *list : Seen<QWidget>(form, IsList))
        height += list->height();
    return height;
}

int Ruler::BandBelowLists(const QWidget &form)
{
    int end = 0;
    for (const QWidget *list : Seen<QWidget>(form, IsList))
        end = qMax(end, Place(form, list).bottom());
    std::vector<QRect> below;
    for (const QWidget *widget : Seen<QWidget>(form, [](const QWidget *) { return true; })) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const bool isBlank = label ? label->text().isEmpty() : widget->focusPolicy() == Qt::NoFocus;
        if (!isBlank && Place(form, widget).top() > end)
            below.push_back(Place(form, widget));
    }
    below.emplace_back(0, form.height(), 0, 0);
    std::sort(below.begin(), below.end(), [](QRect one, QRect other) { return one.top() < other.top(); });
    int band = 0;
    for (const QRect &part : below) {
        band = qMax(band, part.top() - end);
        end = qMax(end, part.bottom());
    }
    return band;
}
