#include "controls/ListRows.h"

#include <algorithm>
#include <iterator>

int KeyNumber(const QString &key)
{
    qsizetype end = 1;
    if (end < key.size() && key.at(end) == u'-')
        ++end;
    while (end < key.size() && key.at(end) >= u'0' && key.at(end) <= u'9')
        ++end;
    return QStringView(key).mid(1, end - 1).toInt();
}

std::vector<RowRun> RunsOf(const std::vector<int> &rows)
{
    std::vector<RowRun> runs;
    for (const int row : rows) {
        if (runs.empty() || row > runs.back().end)
            runs.push_back({row, row});
        runs.back().end = row + 1;
    }
    return runs;
}

void ListRows::Reindex() const
{
    if (m_indexed)
        return;
    m_rowOfKey.clear();
    m_rowOfKey.reserve(Count());
    for (int row = Count() - 1; row >= 0; --row)
        m_rowOfKey.insert(At(row).key, row);
    m_indexed = true;
}

void ListRows::SetKey(int row, const QString &key)
{
    Item(row).key = key;
    m_indexed = false;
}

int ListRows::Find(const QString &key) const
{
    Reindex();
    return m_rowOfKey.value(key, -1);
}

std::vector<int> ListRows::RowsOf(const QStringList &keys) const
{
    std::vector<int> rows;
    for (const QString &key : keys) {
        if (const int row = Find(key); row >= 0)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

QStringList ListRows::Keys() const
{
    QStringList keys;
    keys.reserve(Count());
    for (const ListItem &item : m_items)
        keys.append(item.key);
    return keys;
}

std::vector<int> ListRows::CheckedRows() const
{
    std::vector<int> rows;
    for (int row = 0; row < Count(); ++row) {
        if (At(row).checked)
            rows.push_back(row);
    }
    return rows;
}

void ListRows::Assign(std::vector<ListItem> items)
{
    m_items = std::move(items);
    // A vector built row by row may have room for twice its rows.
    if (m_items.capacity() > m_items.size() + m_items.size() / 4)
        m_items.shrink_to_fit();
    m_rowOfKey.clear();
    m_indexed = false;
}

void ListRows::Add(ListItem item)
{
    if (m_indexed && !m_rowOfKey.contains(item.key))
        m_rowOfKey.insert(item.key, Count());
    m_items.push_back(std::move(item));
}

void ListRows::AddAll(std::vector<ListItem> items)
{
    m_items.insert(m_items.end(), std::make_move_iterator(items.begin()),
                   std::make_move_iterator(items.end()));
    m_indexed = false;
}

std::vector<ListItem> ListRows::TakeRun(RowRun run)
{
    const auto first = m_items.begin() + run.first;
    const auto end = m_items.begin() + run.end;
    std::vector<ListItem> taken(std::make_move_iterator(first), std::make_move_iterator(end));
    m_items.erase(first, end);
    m_indexed = false;
    return taken;
}

std::vector<ListItem> ListRows::Take(const std::vector<int> &rows)
{
    std::vector<ListItem> taken;
    std::vector<ListItem> left;
    for (int row = 0; row < Count(); ++row) {
        const bool goes = taken.size() < rows.size() && rows[taken.size()] == row;
        (goes ? taken : left).push_back(std::move(Item(row)));
    }
    Assign(std::move(left));
    return taken;
}

void ListRows::Reorder(const std::vector<int> &order)
{
    std::vector<ListItem> ordered;
    ordered.reserve(m_items.size());
    for (const int row : order)
        ordered.push_back(std::move(Item(row)));
    m_items = std::move(ordered);
    m_indexed = false;
}
