#include "platform/connection/NameOrder.h"

#include "platform/sql/NameCollation.h"

#include <algorithm>

namespace
{
bool IsText(ColumnType type)
{
    return type == ColumnType::VarWChar || type == ColumnType::VarChar || type == ColumnType::Char;
}

/// The columns that the statement sorts by; none if one of them is no text that was read, or descends.
std::vector<int> TextColumnsOfOrder(const QString &sql, const Recordset &rows)
{
    constexpr QStringView words = u" ORDER BY ";
    const qsizetype start = sql.lastIndexOf(words);
    if (start < 0)
        return {};
    std::vector<int> columns;
    for (QStringView term : QStringView(sql).mid(start + words.size()).split(u',')) {
        term = term.trimmed();
        if (term.endsWith(u';'))
            term.chop(1);
        if (term.endsWith(u" ASC"))
            term.chop(4);
        const int column = rows.ColumnIndex(term.mid(term.lastIndexOf(u'.') + 1));
        if (column < 0 || !IsText(rows.Column(column).type))
            return {};
        columns.push_back(column);
    }
    return columns;
}

class Sorter final
{
public:
    Sorter(const Recordset &rows, std::vector<int> columns, NameOrder::SortedByEngine trusted)
        : m_rows(rows)
        , m_columns(std::move(columns))
    {
        for (int row = 0; row < rows.RowCount(); ++row)
            (trusted == NameOrder::SortedByEngine::Ascii && IsAscii(row) ? m_inOrder : m_others)
                .push_back(row);
    }

    bool HasOthers() const { return !m_others.empty(); }

    /// The rows that the engine has put right stay in its order; each of the others goes to its place between
    /// them.
    std::vector<int> Order()
    {
        SortOthers();
        const auto comesBefore = [this](int a, int b) { return Compare(a, b) < 0; };
        std::vector<int> order;
        order.reserve(m_inOrder.size() + m_others.size());
        auto next = m_inOrder.cbegin();
        for (const int other : m_others) {
            const auto place = std::upper_bound(next, m_inOrder.cend(), other, comesBefore);
            order.insert(order.end(), next, place);
            order.push_back(other);
            next = place;
        }
        order.insert(order.end(), next, m_inOrder.cend());
        return order;
    }

private:
    bool IsAscii(int row) const
    {
        return std::all_of(m_columns.begin(), m_columns.end(),
                           [this, row](int column) { return m_rows.At(row).IsAscii(column); });
    }

    void SortOthers()
    {
        struct Keyed {
            int row;
            std::vector<QCollatorSortKey> keys;
        };
        std::vector<Keyed> keyed;
        keyed.reserve(m_others.size());
        for (const int row : m_others) {
            keyed.push_back({row, {}});
            for (const int column : m_columns)
                keyed.back().keys.push_back(NameCollation().sortKey(m_rows.At(row).Text(column)));
        }
        std::stable_sort(keyed.begin(), keyed.end(), [](const Keyed &a, const Keyed &b) {
            return std::lexicographical_compare(a.keys.begin(), a.keys.end(), b.keys.begin(), b.keys.end());
        });
        std::transform(keyed.begin(), keyed.end(), m_others.begin(),
                       [](const Keyed &each) { return each.row; });
    }

    int Compare(int a, int b) const
    {
        for (const int column : m_columns) {
            const int order = NameCollation().compare(m_rows.At(a).Text(column), m_rows.At(b).Text(column));
            if (order != 0)
                return order;
        }
        return 0;
    }

    const Recordset &m_rows;
    const std::vector<int> m_columns;
    std::vector<int> m_inOrder;
    std::vector<int> m_others;
};
} // namespace

Recordset NameOrder::Sorted(const QString &sql, const Recordset &rows, SortedByEngine trusted)
{
    if (rows.RowCount() < 2)
        return rows;
    std::vector<int> columns = TextColumnsOfOrder(sql, rows);
    if (columns.empty())
        return rows;
    Sorter sorter(rows, std::move(columns), trusted);
    return sorter.HasOthers() ? rows.InOrder(sorter.Order()) : rows;
}
