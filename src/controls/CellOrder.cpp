#include "controls/CellOrder.h"

#include "platform/sql/NameCollation.h"

#include <QDate>
#include <QLocale>

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>

namespace
{
/// What an amount ("1,234.50") or a day ("9/3/2026") is sorted by, an empty cell coming first; nullopt for
/// any other text.
std::optional<double> SortNumber(const QString &cell)
{
    if (cell.isEmpty())
        return std::numeric_limits<double>::lowest();
    if (!cell.front().isDigit() && cell.front() != u'-')
        return {};
    bool isNumber = false;
    const QDate day = cell.contains(u'/') ? QDate::fromString(cell, QStringLiteral("d/M/yyyy")) : QDate();
    const double number =
        day.isValid() ? static_cast<double>(day.toJulianDay()) : QLocale().toDouble(cell, &isNumber);
    return day.isValid() || isNumber ? std::optional(number) : std::nullopt;
}

/// What the cells are sorted by; empty if one of them is no number.
std::vector<double> SortNumbers(const QStringList &cells)
{
    std::vector<double> numbers;
    for (const QString &cell : cells) {
        const std::optional<double> number = SortNumber(cell);
        if (!number)
            return {};
        numbers.push_back(*number);
    }
    return numbers;
}

std::vector<QCollatorSortKey> SortNames(const QStringList &cells)
{
    std::vector<QCollatorSortKey> names;
    names.reserve(static_cast<size_t>(cells.size()));
    for (const QString &cell : cells)
        names.push_back(NameCollation().sortKey(cell));
    return names;
}

template <typename Key>
std::vector<int> OrderOf(const std::vector<Key> &keys, Qt::SortOrder order)
{
    std::vector<int> rows(keys.size());
    std::iota(rows.begin(), rows.end(), 0);
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        if (order == Qt::DescendingOrder)
            std::swap(a, b);
        return keys[static_cast<size_t>(a)] < keys[static_cast<size_t>(b)];
    });
    return rows;
}
} // namespace

std::vector<int> CellOrder(const QStringList &cells, Qt::SortOrder order)
{
    const std::vector<double> numbers = SortNumbers(cells);
    return numbers.empty() ? OrderOf(SortNames(cells), order) : OrderOf(numbers, order);
}
