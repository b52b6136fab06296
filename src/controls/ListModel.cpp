#include "controls/ListModel.h"

#include "controls/CellOrder.h"
#include "controls/ItemRoles.h"

#include <QCoreApplication>
#include <QMimeData>

#include <algorithm>

namespace
{
constexpr size_t scatteredRuns = 100;
const QString dragType = QStringLiteral("application/x-veltrane-rows");
} // namespace

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

void ListModel::Clear()
{
    Fill({});
}

void ListModel::Fill(std::vector<ListItem> items)
{
    beginResetModel();
    m_rows.Assign(std::move(items));
    endResetModel();
    emit Changed();
}

int ListModel::Add(ListItem item)
{
    const int row = Count();
    beginInsertRows({}, row, row);
    m_rows.Add(std::move(item));
    endInsertRows();
    emit Changed();
    return row;
}

void ListModel::AddAll(std::vector<ListItem> items)
{
    if (items.empty())
        return;
    beginInsertRows({}, Count(), Count() + static_cast<int>(items.size()) - 1);
    m_rows.AddAll(std::move(items));
    endInsertRows();
    emit Changed();
}

/// Takes scattered rows in one reset: if they were removed run by run, views and the selection would go
/// through all the remaining rows each time.
std::vector<ListItem> ListModel::TakeScattered(const std::vector<int> &rows)
{
    const QStringList selected = SelectedKeys();
    beginResetModel();
    std::vector<ListItem> taken = m_rows.Take(rows);
    endResetModel();
    emit Changed();
    SelectKeys(selected);
    return taken;
}

std::vector<ListItem> ListModel::Take(const std::vector<int> &rows)
{
    const std::vector<RowRun> runs = RunsOf(rows);
    if (runs.size() > scatteredRuns)
        return TakeScattered(rows);
    std::vector<ListItem> taken(rows.size());
    auto end = taken.end();
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        beginRemoveRows({}, run->first, run->end - 1);
        std::vector<ListItem> items = m_rows.TakeRun(*run);
        end = std::move_backward(items.begin(), items.end(), end);
        endRemoveRows();
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
    m_rows.TakeRun({row, row + 1});
    endRemoveRows();
    emit Changed();
}

void ListModel::RemoveKey(const QString &key)
{
    Remove(Find(key));
}

void ListModel::MoveKeys(const QStringList &keys, ListModel &to)
{
    std::vector<bool> goes(static_cast<size_t>(Count()));
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
    m_rows.Item(row).text = text;
    CellChanged(row);
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): a row and a column of it, as everywhere.
void ListModel::SetSubItem(int row, int subItem, const QString &text)
{
    QStringList &subItems = m_rows.Item(row).subItems;
    while (subItems.size() <= subItem)
        subItems.append(QString());
    subItems[subItem] = text;
    CellChanged(row);
}

void ListModel::SetKey(int row, const QString &key)
{
    m_rows.SetKey(row, key);
    CellChanged(row);
}

void ListModel::SetBold(int row, bool bold)
{
    ListItem &item = m_rows.Item(row);
    if (item.bold == bold)
        return;
    item.bold = bold;
    emit dataChanged(index(row, 0), index(row, 0), {BoldRole});
}

void ListModel::SetChecked(int row, bool checked)
{
    if (checked && m_exclusive) {
        for (const int other : CheckedRows()) {
            m_rows.Item(other).checked = false;
            CellChanged(other);
        }
    }
    m_rows.Item(row).checked = checked;
    CellChanged(row);
    emit Checked(row);
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

void ListModel::SelectKeys(const QStringList &keys)
{
    // One range per run of rows: Qt looks at every range of a selection whenever a row is painted.
    QItemSelection selection;
    for (const RowRun &run : RunsOf(RowsOf(keys)))
        selection.append({index(run.first, 0), index(run.end - 1, columnCount() - 1)});
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

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): a row and a column of it, as everywhere.
QString ListModel::Cell(int row, int column) const
{
    return column == 0 ? At(row).text : At(row).subItems.value(column - 1);
}

QVariant ListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ListItem &item = At(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return Cell(index.row(), index.column());
    case Qt::CheckStateRole:
        if (m_checkable && index.column() == 0)
            return item.checked ? Qt::Checked : Qt::Unchecked;
        break;
    case ImageRole:
        return item.image;
    case BoldRole:
        return item.bold;
    case StruckRole:
        return item.struck;
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
    QStringList cells;
    cells.reserve(Count());
    for (int row = 0; row < Count(); ++row)
        cells.append(Cell(row, column));
    const std::vector<int> rows = CellOrder(cells, order);
    m_rows.Reorder(rows);
    std::vector<int> newRowOf(rows.size());
    for (size_t row = 0; row < rows.size(); ++row)
        newRowOf[static_cast<size_t>(rows[row])] = static_cast<int>(row);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex &old : before)
        after.append(index(newRowOf[static_cast<size_t>(old.row())], old.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}
