#pragma once

#include <QDate>
#include <QTableView>

class MonthModel;

/// The month grid. The arrow keys go a day or a week on or back, Page Up and Page Down a month, Home to
/// today; what shows another month is asked of the form.
class MonthView final : public QTableView
{
    Q_OBJECT

public:
    explicit MonthView(MonthModel &month, QWidget *parent = nullptr);

    QDate Day() const; ///< the current one; invalid while there is none
    void SetDay(QDate day);

signals:
    void DayPicked(QDate day);
    /// A key asks for a day that the grid may not show.
    void DayAsked(QDate day);
    void Opened(); ///< Enter or a double click: on to what runs on the day

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void keyPressEvent(QKeyEvent *event) override;
    QSize sizeHint() const override;

private:
    MonthModel &m_month;
};
