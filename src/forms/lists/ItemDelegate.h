#pragma once

#include <QStyledItemDelegate>

/// Draws what the item models hold besides the text: bold, crossed out, an image from the icon theme by its
/// name, and the tick of a tree node as a check box (Not is crossed out). A text that does not fit its column
/// is shown as a tool tip.
class ItemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
