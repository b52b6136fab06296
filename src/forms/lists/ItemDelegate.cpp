#include "forms/lists/ItemDelegate.h"

#include "controls/ItemRoles.h"
#include "controls/TreeModel.h"
#include "core/icons/Icons.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHash>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace
{
/// The icon for a node's picture. Selected folders are shown open.
QString IconOf(const QString &image, bool selected)
{
    static const QHash<QString, QString> icons{
        {QStringLiteral("card"), QStringLiteral("view-presentation")},
        {QStringLiteral("attendance"), QStringLiteral("meeting-attending")},
        {QStringLiteral("facilities"), QStringLiteral("configure")},
        {QStringLiteral("facility"), QStringLiteral("configure")},
        {QStringLiteral("staff"), QStringLiteral("system-users")},
        {QStringLiteral("roletype"), QStringLiteral("user-properties")},
        {QStringLiteral("venues"), QStringLiteral("view-institution")},
        {QStringLiteral("venue"), QStringLiteral("view-institution")},
    };
    if (image == u"closed" || image == u"rootclosed")
        return selected ? QStringLiteral("folder-open") : QStringLiteral("folder");
    return icons.value(image, image);
}

TreeTick TickOf(const QModelIndex &index)
{
    return static_cast<TreeTick>(index.data(TickRole).toInt());
}
} // namespace

void ItemDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->font.setStrikeOut(index.data(StruckRole).toBool());
    if (index.column() != 0)
        return;
    option->font.setBold(option->font.bold() || index.data(BoldRole).toBool());
    if (TickOf(index) != TreeTick::None) {
        const QStyle *style = option->widget ? option->widget->style() : QApplication::style();
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = {style->pixelMetric(QStyle::PM_IndicatorWidth, option, option->widget),
                                  style->pixelMetric(QStyle::PM_IndicatorHeight, option, option->widget)};
        return;
    }
    const QString image = index.data(ImageRole).toString();
    if (!image.isEmpty()) {
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = Icons::Of(IconOf(image, option->state & QStyle::State_Selected));
    }
}

void ItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    const TreeTick tick = TickOf(index);
    if (index.column() != 0 || tick == TreeTick::None)
        return;
    QStyleOptionViewItem box = option;
    initStyleOption(&box, index);
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    const QRect where = style->subElementRect(QStyle::SE_ItemViewItemDecoration, &box, option.widget);
    box.rect = where;
    box.state &= ~(QStyle::State_HasFocus | QStyle::State_On | QStyle::State_Off);
    box.state |= tick == TreeTick::On ? QStyle::State_On : QStyle::State_Off;
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, option.widget);
    if (tick != TreeTick::Not)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(option.palette.color(QPalette::Text), qMax(1.5, where.width() / 9.0)));
    const qreal inset = where.width() * 0.28;
    const QRectF cross = QRectF(where).adjusted(inset, inset, -inset, -inset);
    painter->drawLine(cross.topLeft(), cross.bottomRight());
    painter->drawLine(cross.topRight(), cross.bottomLeft());
    painter->restore();
}

QSize ItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), qMax(size.height(), option.fontMetrics.height() * 3 / 2)};
}

bool ItemDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                             const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip ||
        sizeHint(option, index).width() <= view->visualRect(index).width())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = index.data(Qt::DisplayRole).toString().toHtmlEscaped();
    QToolTip::showText(event->globalPos(), u"<span>" % text % u"</span>", view);
    return true;
}
