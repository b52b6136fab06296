#pragma once

#include <QAbstractTableModel>
#include <QDate>
#include <QSet>

/// The months as the calendar spells them, January first.
const QStringList &MonthNames();

/// Six weeks around a month, from the Sunday on or before its first, with the days that something runs on.
class MonthModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role { IsMarkedRole = Qt::UserRole, IsOtherMonthRole, IsTodayRole };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows a month; no mark is kept.
    void ShowMonth(int year, int month);
    /// Marks these days and no others.
    void Mark(const QSet<QDate> &days);

    QDate Day(const QModelIndex &index) const;
    QModelIndex IndexOf(QDate day) const; ///< invalid for a day outside the six weeks
    bool IsInMonth(QDate day) const;
    QDate First() const { return m_month; } ///< of the month

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QDate m_month; ///< its first day
    QDate m_first; ///< of the six weeks
    QSet<QDate> m_marked;
};
