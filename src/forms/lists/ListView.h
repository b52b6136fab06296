#pragma once

#include "forms/lists/EmptyText.h"

#include <QList>
#include <QTreeView>

#include <functional>

class ListModel;
class QLabel;

/// The view of a ListModel: adopts the model and its selection, sorts on a click on a column title, copies
/// the selected rows with Ctrl+C, prints with Ctrl+P, finds a row when its start is typed, and stays fast
/// with 100,000 rows. A list without a pop-up menu of its own gets one for copying and printing.
class ListView final : public QTreeView
{
    Q_OBJECT

public:
    enum class Choice { Single, Multi };

    explicit ListView(ListModel &model, Choice choice = Choice::Single, QWidget *parent = nullptr);

    ListModel &Model() const { return m_list; }
    /// The widths of the columns in average characters. Each column gets its share of the list's width until
    /// the user sets one; the last takes what is left. A list that is too narrow for them squeezes or
    /// scrolls.
    enum class Narrow { Squeeze, Scroll };
    void SetColumnChars(const QList<int> &chars, Narrow narrow = Narrow::Squeeze);
    /// The text shown while there are no rows.
    void SetEmptyText(const QString &text) { m_emptyText.Set(text); }
    /// Makes `label` show how many rows there are and, if several are selected, how many.
    void CountOn(QLabel *label);
    /// Check marks cannot be changed by the user while it is locked; rows can still be selected.
    void SetLocked(bool locked);
    /// What Enter does on the current row, where it is not what a double click does.
    void SetEnterHandler(std::function<void()> handler) { m_enter = std::move(handler); }
    /// Rows selected in `source` can be dragged here; `dropped` is called when the drag is over.
    void TakeDropsFrom(ListView &source, std::function<void()> dropped);
    /// Scrolls `row` into view.
    void ShowRow(int row);
    /// Sorts again by the column that the user asked for, if any, since rows added to a list are at first the
    /// last.
    void KeepOrder();
    /// Asks for a printer and prints all rows.
    void Print();

signals:
    /// A double click on a row, or Enter on the current one if it has no handler. Enter goes on to the
    /// default button where nobody listens.
    void Opened(int row);
    void DeletePressed();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    QSize sizeHint() const override;

private:
    void ShowTitles();
    void ShareWidth();
    void CopySelected() const;
    void TellCount();
    void AcceptDrag(QDropEvent *event) const;

    ListModel &m_list;
    EmptyText m_emptyText;
    QList<int> m_shares;  ///< of the columns; empty once the user has set their widths
    int m_leastWidth = 0; ///< in pixels, of all columns together
    bool m_sharing = false;
    QLabel *m_count = nullptr;
    std::function<void()> m_enter;
    const ListModel *m_dragSource = nullptr; ///< whose rows are taken here
    std::function<void()> m_dropped;
    bool m_canBeDragged = false;
    bool m_locked = false;
};
