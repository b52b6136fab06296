#pragma once

#include <QHash>
#include <QStringList>

#include <vector>

/// A row of a list: its key is a one-character mark followed by the reference ("?12", "!12").
struct ListItem {
    QString key;
    QString text;
    QStringList subItems{};
    bool checked = false;
    bool bold = false;
    QString image{};
    bool struck = false; ///< crossed out
};

/// The number after the one-character mark of a key, up to the first character that is not a digit (a leading
/// minus counts); 0 if there is none.
int KeyNumber(const QString &key);

/// Consecutive rows: the first of them, and the one after the last.
struct RowRun {
    int first;
    int end;
};
/// The runs of rows (ascending; the same row may come twice).
std::vector<RowRun> RunsOf(const std::vector<int> &rows);

/// The rows of a list, found by their keys.
class ListRows final
{
public:
    int Count() const { return static_cast<int>(m_items.size()); }
    const ListItem &At(int row) const { return m_items[static_cast<size_t>(row)]; }
    /// For changing anything but the key.
    ListItem &Item(int row) { return m_items[static_cast<size_t>(row)]; }
    void SetKey(int row, const QString &key);

    /// The row with that key, the first of several, or -1. Keys compare exactly.
    int Find(const QString &key) const;
    /// The rows with those keys, ascending; unknown keys are skipped.
    std::vector<int> RowsOf(const QStringList &keys) const;
    QStringList Keys() const; ///< of all rows, in their order
    std::vector<int> CheckedRows() const;

    void Assign(std::vector<ListItem> items);
    void Add(ListItem item);
    void AddAll(std::vector<ListItem> items);
    /// Takes the rows of the run out.
    std::vector<ListItem> TakeRun(RowRun run);
    /// Takes rows (ascending) out, going through all rows once.
    std::vector<ListItem> Take(const std::vector<int> &rows);
    /// Puts the rows into this order: the positions that they have now.
    void Reorder(const std::vector<int> &order);

private:
    void Reindex() const;

    std::vector<ListItem> m_items;
    mutable QHash<QString, int> m_rowOfKey;
    mutable bool m_indexed = false;
};
