#pragma once

#include "forms/lists/EmptyText.h"

#include <QTreeView>

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
    /// Opens the node's parents and scrolls it into view.
    void ShowNode(const TreeNode *node);

signals:
    void TickAsked(TreeNode *node); ///< a click on the node's tick, or the space bar
    void Opened(TreeNode *node);    ///< a double click on a node, or Enter on the selected one
    void DeletePressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    QSize sizeHint() const override;

private:
    TreeModel &m_tree;
    EmptyText m_emptyText;
};
