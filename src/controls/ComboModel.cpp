#include "controls/ComboModel.h"

ComboModel::ComboModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void ComboModel::Clear()
{
    Fill({});
}

void ComboModel::Fill(std::vector<ComboItem> items)
{
    beginResetModel();
    m_items = std::move(items);
    m_current = -1;
    endResetModel();
    emit CurrentChanged(m_current);
}

int ComboModel::Add(const QString &text, int data)
{
    const int row = Count();
    beginInsertRows({}, row, row);
    m_items.push_back({text, data});
    endInsertRows();
    return row;
}

void ComboModel::SetText(int row, const QString &text)
{
    m_items[static_cast<size_t>(row)].text = text;
    emit dataChanged(index(row), index(row));
}

void ComboModel::SetCurrent(int row)
{
    const int chosen = row >= 0 && row < Count() ? row : -1;
    if (chosen == m_current)
        return;
    m_current = chosen;
    emit CurrentChanged(m_current);
}

int ComboModel::CurrentData() const
{
    return m_current < 0 ? 0 : At(m_current).data;
}

QString ComboModel::CurrentText() const
{
    return m_current < 0 ? QString() : At(m_current).text;
}

int ComboModel::FindData(int data) const
{
    for (int row = 0; row < Count(); ++row) {
        if (At(row).data == data)
            return row;
    }
    return -1;
}

int ComboModel::FindText(const QString &text) const
{
    const QString wanted = text.toUpper();
    for (int row = 0; row < Count(); ++row) {
        if (At(row).text.toUpper() == wanted)
            return row;
    }
    return -1;
}

void ComboModel::ChooseData(int data)
{
    const int row = FindData(data);
    if (row >= 0)
        SetCurrent(row);
}

int ComboModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Count();
}

QVariant ComboModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return At(index.row()).text;
    return {};
}
