#include "courses/schedule/MonthModel.h"

#include "platform/desktop/Clock.h"

namespace
{
constexpr int weeks = 6;
constexpr int daysOfWeek = 7;
} // namespace

const QStringList &MonthNames()
{
    static const QStringList names{
        QStringLiteral("January"), QStringLiteral("Febuary"),  QStringLiteral("March"),
        QStringLiteral("April"),   QStringLiteral("May"),      QStringLiteral("June"),
        QStringLiteral("July"),    QStringLiteral("August"),   QStringLiteral("September"),
        QStringLiteral("October"), QStringLiteral("November"), QStringLiteral("December")};
    return names;
}

void MonthModel::ShowMonth(int year, int month)
{
    beginResetModel();
    m_month = QDate(year, month, 1);
    m_first = m_month.addDays(-(m_month.dayOfWeek() % daysOfWeek));
    m_marked.clear();
    endResetModel();
}

void MonthModel::Mark(const QSet<QDate> &days)
{
    m_marked = days;
    emit dataChanged(index(0, 0), index(weeks - 1, daysOfWeek - 1));
}

QDate MonthModel::Day(const QModelIndex &index) const
{
    return index.isValid() ? m_first.addDays(index.row() * daysOfWeek + index.column()) : QDate();
}

QModelIndex MonthModel::IndexOf(QDate day) const
{
    const qint64 place = m_first.isValid() ? m_first.daysTo(day) : -1;
    if (place < 0 || place >= weeks * daysOfWeek)
        return {};
    return index(static_cast<int>(place) / daysOfWeek, static_cast<int>(place) % daysOfWeek);
}

bool MonthModel::IsInMonth(QDate day) const
{
    return day.year() == m_month.year() && day.month() == m_month.month();
}

int MonthModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_first.isValid() ? 0 : weeks;
}

int MonthModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : daysOfWeek;
}

QVariant MonthModel::data(const QModelIndex &index, int role) const
{
    const QDate day = Day(index);
    if (!day.isValid())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return QString(QString::number(day.day()) % u' ' % MonthNames().at(day.month() - 1).first(3));
    case Qt::AccessibleTextRole:
        return QString(data(index, Qt::DisplayRole).toString() %
                       (m_marked.contains(day) ? u", something runs" : u""));
    case IsMarkedRole:
        return m_marked.contains(day);
    case IsOtherMonthRole:
        return !IsInMonth(day);
    case IsTodayRole:
        return day == Clock::Today();
    default:
        return QVariant();
    }
}

QVariant MonthModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList days{QStringLiteral("Sun"), QStringLiteral("Mon"), QStringLiteral("Tue"),
                                  QStringLiteral("Wed"), QStringLiteral("Thu"), QStringLiteral("Fri"),
                                  QStringLiteral("Sat")};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? days.value(section) : QVariant();
}
