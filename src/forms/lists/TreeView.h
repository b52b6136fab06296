#pragma once

#include "forms/lists/EmptyText.h"

#include <QTreeView>

#include <functional>

class TreeModel;
struct TreeNode;

/// The view of a TreeModel: keeps the model's selection and expansion the same as its own, and shows the
/// ticks. A click on a tick, or the space bar on the selected node, asks for a change; the form decides what
/// changes.
class TreeView final : public QTreeView
{
    Q_OBJECT

public:
    explicit TreeView(TreeModel &model, QWidget *parent = nullptr);

    TreeModel &Model() const { return m_tree; }
    /// The text shown while there are no nodes.
    void SetEmptyText(const QString &text) { m_emptyText.Set(text); }
    /// Lets several nodes be selected.
    void AllowSeveral() { setSelectionMode(ExtendedSelection); }
    /// Shows only the nodes for which `shows` is true, and those below them; all others stay in the model.
    void ShowOnly(std::function<bool(const TreeNode &node)> shows);
    /// Opens or closes every node that has nodes below it.
    void SetAllExpanded(bool expanded);
    /// Opens the node's parents.
    void OpenAbove(const TreeNode *node);
    /// The same, and scrolls it into view.
    void ShowNode(const TreeNode *node);
    /// Lets the user type another text for the node, which the model then asks for.
    void EditText(const TreeNode *node);

signals:
    void TickAsked(TreeNode *node); ///< a click on the node's tick, or the space bar
    /// A double click on a node, or Enter on the selected one; where nobody listens, Enter goes on to the
    /// default button.
    void Opened(TreeNode *node);
    void DeletePressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    QSize sizeHint() const override;

private:
    void ShowOrHide(const QModelIndex &parent, int start, int end);
    void ShowOrHideAll();
    void ShowExpanded();

    TreeModel &m_tree;
    EmptyText m_emptyText;
    std::function<bool(const TreeNode &node)> m_shows;
};
