#include "forms/fields/FieldChanges.h"

#include "database/values/GlobalCode.h"

#include <QFont>

FieldChanges::FieldChanges(QList<Dialogs::FieldChange> changes, QObject *parent)
    : QAbstractTableModel(parent)
    , m_changes(std::move(changes))
{
}

void FieldChanges::Take(int row, bool theirs)
{
    if (row < 0 || row >= m_changes.size())
        return;
    m_changes[row].takesTheirs = theirs;
    emit dataChanged(index(row, Yours), index(row, Theirs));
}

void FieldChanges::TakeAll(bool theirs)
{
    for (int row = 0; row < m_changes.size(); ++row)
        Take(row, theirs);
}

int FieldChanges::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_changes.size());
}

int FieldChanges::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant FieldChanges::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    const QStringList titles{QStringLiteral("Field"), QStringLiteral("Yours"), QStringLiteral("Theirs")};
    return titles.value(section);
}

QVariant FieldChanges::Text(const Dialogs::FieldChange &change, int column) const
{
    if (column == Field)
        return change.field;
    return FlattenLines(column == Yours ? change.yours : change.theirs);
}

QVariant FieldChanges::data(const QModelIndex &index, int role) const
{
    const Dialogs::FieldChange &change = m_changes.at(index.row());
    const int column = index.column();
    if (role == Qt::DisplayRole)
        return Text(change, column);
    if (column == Field)
        return QVariant();
    if (role == Qt::CheckStateRole)
        return (column == Theirs) == change.takesTheirs ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::FontRole) {
        QFont font;
        font.setBold(column == Yours ? change.isChangedHere : change.isChangedElsewhere);
        return font;
    }
    return QVariant();
}
