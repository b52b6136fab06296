#pragma once

#include "controls/ListRows.h"

#include <QAbstractTableModel>
#include <QItemSelectionModel>

/// What a list control holds, without a widget: rows with keys, columns, check marks and the selection,
/// so that "the first item is selected" works in the data layer and in tests. Views adopt the model and its
/// selection. Sorting reorders the rows themselves: a column that holds only amounts or only days is sorted
/// by their values, any other by its texts.
class ListModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ListModel(QObject *parent = nullptr);

    /// Column titles; the first is the item's text, the rest its sub-items.
    void SetColumns(const QStringList &titles);
    /// Rows show a check box in the first column.
    void SetCheckable(bool checkable, bool exclusive = false);

    int Count() const { return m_rows.Count(); }
    bool IsEmpty() const { return m_rows.Count() == 0; }
    const ListItem &At(int row) const { return m_rows.At(row); }
    /// The row with that key, or -1. Keys compare exactly.
    int Find(const QString &key) const { return m_rows.Find(key); }
    bool Contains(const QString &key) const { return Find(key) >= 0; }

    void Clear();
    /// Replaces all rows in one reset; nothing is selected afterwards.
    void Fill(std::vector<ListItem> items);
    int Add(ListItem item);
    /// Adds rows at the end, in one step.
    void AddAll(std::vector<ListItem> items);
    void Remove(int row);
    /// Takes rows (ascending) out of the list, one step for each run of rows, or one step for all if there
    /// are many runs.
    std::vector<ListItem> Take(const std::vector<int> &rows);
    void RemoveKey(const QString &key);
    /// Moves the rows with those keys to the end of `to`, in the order of the keys; unknown keys are skipped.
    void MoveKeys(const QStringList &keys, ListModel &to);
    void SetText(int row, const QString &text);
    void SetSubItem(int row, int subItem, const QString &text); ///< sub-items count from 0
    void SetKey(int row, const QString &key);
    void SetBold(int row, bool bold); ///< only a mark; the contents of the list do not count as changed
    void SetChecked(int row, bool checked);
    std::vector<int> CheckedRows() const { return m_rows.CheckedRows(); }

    QItemSelectionModel *Selection() { return m_selection; }
    void Select(int row, bool selected = true);
    /// Makes `row` the current and only selected one.
    void SelectOnly(int row);
    void SelectFirst()
    {
        if (!IsEmpty())
            SelectOnly(0);
    }
    void SelectAll();
    /// The rows with those keys, ascending; unknown keys are skipped.
    std::vector<int> RowsOf(const QStringList &keys) const { return m_rows.RowsOf(keys); }
    /// Selects exactly the rows with those keys, in one step; unknown keys are skipped.
    void SelectKeys(const QStringList &keys);
    void ClearSelection();
    bool IsSelected(int row) const;
    std::vector<int> SelectedRows() const; ///< ascending
    QStringList SelectedKeys() const;      ///< in row order
    /// Of all rows, in their order.
    QStringList Keys() const { return m_rows.Keys(); }
    int CurrentRow() const; ///< -1 = none

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    void sort(int column, Qt::SortOrder order) override;
    QStringList mimeTypes() const override;
    /// What is dragged tells only which list it comes from: the rows are those selected there.
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    /// Whether rows of this list, in this program, are dragged.
    bool IsDragged(const QMimeData &data) const;

signals:
    /// Emitted when rows were added, removed or replaced, or a text or check mark changed; not for a new
    /// selection.
    void Changed();
    void Checked(int row);

private:
    std::vector<ListItem> TakeScattered(const std::vector<int> &rows);
    QString Cell(int row, int column) const;
    void CellChanged(int row);
    QByteArray DragMark() const;

    ListRows m_rows;
    QStringList m_titles;
    QItemSelectionModel *m_selection;
    bool m_checkable = false;
    bool m_exclusive = false;
};
