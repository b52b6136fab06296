#pragma once

#include <QAbstractListModel>

#include <vector>

struct ComboItem {
    QString text;
    int data = 0; ///< the reference of what the item names
};

/// What a drop-down list holds: texts, each with a reference, and which one is chosen.
class ComboModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit ComboModel(QObject *parent = nullptr);

    int Count() const { return static_cast<int>(m_items.size()); }
    const ComboItem &At(int row) const { return m_items[static_cast<size_t>(row)]; }

    void Clear();
    /// Replaces all items in one reset; nothing is chosen afterwards.
    void Fill(std::vector<ComboItem> items);
    int Add(const QString &text, int data = 0);
    void SetText(int row, const QString &text);

    int Current() const { return m_current; } ///< -1 = none
    void SetCurrent(int row);                 ///< a row outside the list chooses nothing
    int CurrentData() const;                  ///< 0 when none is chosen
    QString CurrentText() const;              ///< "" when none is chosen
    /// The row whose data is `data`, or -1.
    int FindData(int data) const;
    /// The row whose upper-cased text equals the upper-cased `text`, or -1.
    int FindText(const QString &text) const;
    /// Chooses the item with that data; a value that is not in the list leaves the choice unchanged.
    void ChooseData(int data);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

signals:
    void CurrentChanged(int row);

private:
    std::vector<ComboItem> m_items;
    int m_current = -1;
};
