#include "controls/ListModel.h"

#include "controls/ItemRoles.h"
#include "platform/sql/NameCollation.h"

#include <QCoreApplication>
#include <QDate>
#include <QLocale>
#include <QMimeData>

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>

namespace
{
constexpr size_t scatteredRuns = 100;
const QString dragType = QStringLiteral("application/x-veltrane-rows");

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
} // namespace

int KeyNumber(const QString &key)
{
    qsizetype end = 1;
    if (end < key.size() && key.at(end) == u'-')
        ++end;
    while (end < key.size() && key.at(end) >= u'0' && key.at(end) <= u'9')
        ++end;
    return QStringView(key).mid(1, end - 1).toInt();
}

ListModel::ListModel(QObject *parent)
    : QAbstractTableModel(parent)
    , m_titles(QString())
    , m_selection(new QItemSelectionModel(this, this))
{
}

void ListModel::SetColumns(const QStringList &titles)
{
    beginResetModel();
    m_titles = titles;
    endResetModel();
}

void ListModel::SetCheckable(bool checkable, bool exclusive)
{
    m_checkable = checkable;
    m_exclusive = exclusive;
}

void ListModel::Reindex() const
{
    if (m_indexed)
        return;
    m_rowOfKey.clear();
    m_rowOfKey.reserve(Count());
    for (int row = Count() - 1; row >= 0; --row)
        m_rowOfKey.insert(At(row).key, row);
    m_indexed = true;
}

int ListModel::Find(const QString &key) const
{
    Reindex();
    return m_rowOfKey.value(key, -1);
}

void ListModel::Clear()
{
    Fill({});
}

void ListModel::Fill(std::vector<ListItem> items)
{
    beginResetModel();
    m_items = std::move(items);
    // A vector built row by row may have room for twice its rows.
    if (m_items.capacity() > m_items.size() + m_items.size() / 4)
        m_items.shrink_to_fit();
    m_rowOfKey.clear();
    m_indexed = false;
    endResetModel();
    emit Changed();
}

int ListModel::Add(ListItem item)
{
    const int row = Count();
    beginInsertRows({}, row, row);
    if (m_indexed && !m_rowOfKey.contains(item.key))
        m_rowOfKey.insert(item.key, row);
    m_items.push_back(std::move(item));
    endInsertRows();
    emit Changed();
    return row;
}

void ListModel::AddAll(std::vector<ListItem> items)
{
    if (items.empty())
        return;
    beginInsertRows({}, Count(), Count() + static_cast<int>(items.size()) - 1);
    m_items.insert(m_items.end(), std::make_move_iterator(items.begin()),
                   std::make_move_iterator(items.end()));
    m_indexed = false;
    endInsertRows();
    emit Changed();
}

/// Takes scattered rows in one reset: if they were removed run by run, views and the selection would go
/// through all the remaining rows each time.
std::vector<ListItem> ListModel::TakeScattered(const std::vector<int> &rows)
{
    std::vector<ListItem> taken;
    std::vector<ListItem> left;
    const QStringList selected = SelectedKeys();
    for (int row = 0; row < Count(); ++row) {
        const bool goes = taken.size() < rows.size() && rows[taken.size()] == row;
        (goes ? taken : left).push_back(std::move(m_items[static_cast<size_t>(row)]));
    }
    Fill(std::move(left));
    SelectKeys(selected);
    return taken;
}

std::vector<ListItem> ListModel::Take(const std::vector<int> &rows)
{
    size_t runs = 0;
    for (size_t i = 0; i < rows.size(); ++i)
        runs += i == 0 || rows[i] != rows[i - 1] + 1 ? 1 : 0;
    if (runs > scatteredRuns)
        return TakeScattered(rows);
    std::vector<ListItem> taken(rows.size());
    size_t end = rows.size();
    while (end > 0) {
        size_t first = end - 1;
        while (first > 0 && rows[first - 1] == rows[first] - 1)
            --first;
        beginRemoveRows({}, rows[first], rows[end - 1]);
        const auto from = m_items.begin() + rows[first];
        const auto to = m_items.begin() + rows[end - 1] + 1;
        std::move(from, to, taken.begin() + static_cast<std::ptrdiff_t>(first));
        m_items.erase(from, to);
        m_indexed = false;
        endRemoveRows();
        end = first;
    }
    if (!taken.empty())
        emit Changed();
    return taken;
}

void ListModel::Remove(int row)
{
    if (row < 0 || row >= Count())
        return;
    beginRemoveRows({}, row, row);
    m_items.erase(m_items.begin() + row);
    m_indexed = false;
    endRemoveRows();
    emit Changed();
}

void ListModel::RemoveKey(const QString &key)
{
    Remove(Find(key));
}

void ListModel::MoveKeys(const QStringList &keys, ListModel &to)
{
    std::vector<bool> goes(m_items.size());
    std::vector<ListItem> moved;
    for (const QString &key : keys) {
        const int row = Find(key);
        if (row < 0 || goes[static_cast<size_t>(row)])
            continue;
        goes[static_cast<size_t>(row)] = true;
        moved.push_back(At(row));
    }
    std::vector<int> rows;
    for (int row = 0; row < Count(); ++row) {
        if (goes[static_cast<size_t>(row)])
            rows.push_back(row);
    }
    Take(rows);
    to.AddAll(std::move(moved));
}

void ListModel::CellChanged(int row)
{
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    emit Changed();
}

void ListModel::SetText(int row, const QString &text)
{
    m_items[static_cast<size_t>(row)].text = text;
    CellChanged(row);
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): a row and a column of it, as everywhere.
void ListModel::SetSubItem(int row, int subItem, const QString &text)
{
    QStringList &subItems = m_items[static_cast<size_t>(row)].subItems;
    while (subItems.size() <= subItem)
        subItems.append(QString());
    subItems[subItem] = text;
    CellChanged(row);
}

void ListModel::SetKey(int row, const QString &key)
{
    m_items[static_cast<size_t>(row)].key = key;
    m_indexed = false;
    CellChanged(row);
}

void ListModel::SetBold(int row, bool bold)
{
    ListItem &item = m_items[static_cast<size_t>(row)];
    if (item.bold == bold)
        return;
    item.bold = bold;
    emit dataChanged(index(row, 0), index(row, 0), {BoldRole});
}

void ListModel::SetChecked(int row, bool checked)
{
    if (checked && m_exclusive) {
        for (const int other : CheckedRows()) {
            m_items[static_cast<size_t>(other)].checked = false;
            CellChanged(other);
        }
    }
    m_items[static_cast<size_t>(row)].checked = checked;
    CellChanged(row);
    emit Checked(row);
}

std::vector<int> ListModel::CheckedRows() const
{
    std::vector<int> rows;
    for (int row = 0; row < Count(); ++row) {
        if (At(row).checked)
            rows.push_back(row);
    }
    return rows;
}

void ListModel::Select(int row, bool selected)
{
    const auto command = selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect;
    m_selection->select(index(row, 0), command | QItemSelectionModel::Rows);
}

void ListModel::SelectOnly(int row)
{
    m_selection->setCurrentIndex(index(row, 0),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ListModel::SelectAll()
{
    if (!IsEmpty())
        m_selection->select({index(0, 0), index(Count() - 1, columnCount() - 1)},
                            QItemSelectionModel::Select);
}

std::vector<int> ListModel::RowsOf(const QStringList &keys) const
{
    std::vector<int> rows;
    for (const QString &key : keys) {
        if (const int row = Find(key); row >= 0)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ListModel::SelectKeys(const QStringList &keys)
{
    const std::vector<int> rows = RowsOf(keys);
    // One range per run of rows: Qt looks at every range of a selection whenever a row is painted.
    QItemSelection selection;
    for (size_t first = 0, end = 0; first < rows.size(); first = end) {
        for (end = first + 1; end < rows.size() && rows[end] <= rows[end - 1] + 1;)
            ++end;
        selection.append({index(rows[first], 0), index(rows[end - 1], columnCount() - 1)});
    }
    m_selection->select(selection, QItemSelectionModel::ClearAndSelect);
}

void ListModel::ClearSelection()
{
    m_selection->clearSelection();
}

bool ListModel::IsSelected(int row) const
{
    return m_selection->isRowSelected(row);
}

std::vector<int> ListModel::SelectedRows() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange &range : m_selection->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

QStringList ListModel::SelectedKeys() const
{
    QStringList keys;
    for (const int row : SelectedRows())
        keys.append(At(row).key);
    return keys;
}

QStringList ListModel::Keys() const
{
    QStringList keys;
    keys.reserve(Count());
    for (const ListItem &item : m_items)
        keys.append(item.key);
    return keys;
}

int ListModel::CurrentRow() const
{
    return m_selection->currentIndex().row();
}

int ListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Count();
}

int ListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_titles.size());
}

QVariant ListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ListItem &item = At(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == 0 ? item.text : item.subItems.value(index.column() - 1);
    case Qt::CheckStateRole:
        if (m_checkable && index.column() == 0)
            return item.checked ? Qt::Checked : Qt::Unchecked;
        break;
    case ImageRole:
        return item.image;
    case BoldRole:
        return item.bold;
    default:
        break;
    }
    return {};
}

bool ListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !m_checkable || !index.isValid())
        return false;
    SetChecked(index.row(), value.toInt() == Qt::Checked);
    return true;
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return m_titles.value(section);
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return {};
    Qt::ItemFlags flags =
        Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren | Qt::ItemIsDragEnabled;
    if (m_checkable && index.column() == 0)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QByteArray ListModel::DragMark() const
{
    return QByteArray::number(QCoreApplication::applicationPid()) + ':' +
           QByteArray::number(reinterpret_cast<quintptr>(this));
}

QStringList ListModel::mimeTypes() const
{
    return {dragType};
}

QMimeData *ListModel::mimeData(const QModelIndexList & /*indexes*/) const
{
    auto *data = new QMimeData;
    data->setData(dragType, DragMark());
    return data;
}

bool ListModel::IsDragged(const QMimeData &data) const
{
    return data.data(dragType) == DragMark();
}

void ListModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || Count() < 2)
        return;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<int> rows(m_items.size());
    std::iota(rows.begin(), rows.end(), 0);
    const auto text = [&](int row) -> QString {
        return column == 0 ? At(row).text : At(row).subItems.value(column - 1);
    };
    // A column that holds only amounts or only days is sorted by their values.
    std::vector<double> numbers;
    for (const int row : rows) {
        const std::optional<double> number = SortNumber(text(row));
        if (!number)
            break;
        numbers.push_back(*number);
    }
    const bool byValue = numbers.size() == rows.size();
    std::vector<QCollatorSortKey> names;
    if (!byValue) {
        names.reserve(rows.size());
        for (const int row : rows)
            names.push_back(NameCollation().sortKey(text(row)));
    }
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        if (order == Qt::DescendingOrder)
            std::swap(a, b);
        if (byValue)
            return numbers[static_cast<size_t>(a)] < numbers[static_cast<size_t>(b)];
        return names[static_cast<size_t>(a)] < names[static_cast<size_t>(b)];
    });

    std::vector<ListItem> sorted;
    sorted.reserve(m_items.size());
    std::vector<int> newRowOf(rows.size());
    for (size_t row = 0; row < rows.size(); ++row) {
        newRowOf[static_cast<size_t>(rows[row])] = static_cast<int>(row);
        sorted.push_back(std::move(m_items[static_cast<size_t>(rows[row])]));
    }
    m_items = std::move(sorted);
    m_indexed = false;
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex &old : before)
        after.append(index(newRowOf[static_cast<size_t>(old.row())], old.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}
