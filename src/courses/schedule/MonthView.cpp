#include "courses/schedule/MonthView.h"

#include "courses/schedule/MonthModel.h"
#include "platform/desktop/Clock.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace
{
/// Draws a day: today bold and outlined, days of other months dimmed, a dot where something runs.
class DayDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const QColor accent =
            option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QRectF cell(option.rect);
        const qreal unit = option.fontMetrics.height();
        if (index.data(MonthModel::IsTodayRole).toBool()) {
            painter->setPen(QPen(accent, unit / 8));
            painter->drawRect(cell.adjusted(unit / 8, unit / 8, -unit / 8, -unit / 8));
        }
        if (index.data(MonthModel::IsMarkedRole).toBool()) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(accent);
            painter->drawEllipse(QPointF(cell.right() - unit / 2, cell.bottom() - unit / 2), unit / 4,
                                 unit / 4);
        }
        painter->restore();
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->displayAlignment = Qt::AlignCenter;
        option->font.setBold(index.data(MonthModel::IsTodayRole).toBool());
        if (index.data(MonthModel::IsOtherMonthRole).toBool())
            option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
    }
};
} // namespace

MonthView::MonthView(MonthModel &month, QWidget *parent)
    : QTableView(parent)
    , m_month(month)
{
    setModel(&m_month);
    setItemDelegate(new DayDelegate(this));
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    // Today is bold.
    QFont bold = font();
    bold.setBold(true);
    const int day = QFontMetrics(bold).horizontalAdvance(QStringLiteral(" 30 Nov "));
    horizontalHeader()->setMinimumSectionSize(day);
    setMinimumWidth(m_month.columnCount() * day + 2 * frameWidth());
    verticalHeader()->setMinimumSectionSize(fontMetrics().height() * 3 / 2);
    horizontalHeader()->setHighlightSections(false);
    connect(this, &QAbstractItemView::doubleClicked, this, &MonthView::Opened);
}

QDate MonthView::Day() const
{
    return m_month.Day(currentIndex());
}

void MonthView::SetDay(QDate day)
{
    setCurrentIndex(m_month.IndexOf(day));
}

void MonthView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (current.isValid())
        emit DayPicked(m_month.Day(current));
}

void MonthView::keyPressEvent(QKeyEvent *event)
{
    // In a month without today no day is current at first.
    const QDate day = Day().isValid() ? Day() : m_month.First();
    switch (event->key()) {
    case Qt::Key_Left:
        return emit DayAsked(day.addDays(-1));
    case Qt::Key_Right:
        return emit DayAsked(day.addDays(1));
    case Qt::Key_Up:
        return emit DayAsked(day.addDays(-7));
    case Qt::Key_Down:
        return emit DayAsked(day.addDays(7));
    case Qt::Key_PageUp:
        return emit DayAsked(day.addMonths(-1));
    case Qt::Key_PageDown:
        return emit DayAsked(day.addMonths(1));
    case Qt::Key_Home:
        return emit DayAsked(Clock::Today());
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return emit Opened();
    default:
        QTableView::keyPressEvent(event);
    }
}

QSize MonthView::sizeHint() const
{
    const int cell = fontMetrics().horizontalAdvance(QStringLiteral("  30 Nov  "));
    return {cell * 7 + 2 * frameWidth(),
            horizontalHeader()->sizeHint().height() + fontMetrics().height() * 15 + 2 * frameWidth()};
}
