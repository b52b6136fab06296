#include "forms/lists/TreeView.h"

#include "controls/TreeModel.h"
#include "forms/lists/ItemDelegate.h"

#include <QKeyEvent>
#include <QMetaMethod>

TreeView::TreeView(TreeModel &model, QWidget *parent)
    : QTreeView(parent)
    , m_tree(model)
    , m_emptyText(this)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setItemDelegate(new ItemDelegate(this));
    setModel(&m_tree);
    QItemSelectionModel *unused = selectionModel();
    setSelectionModel(m_tree.Selection());
    delete unused;

    ShowExpanded();
    connect(&m_tree, &TreeModel::Changed, viewport(), qOverload<>(&QWidget::update));
    connect(&m_tree, &TreeModel::modelReset, this, [this] {
        ShowExpanded();
        if (m_shows)
            ShowOrHideAll();
    });
    connect(&m_tree, &TreeModel::ManyExpandedChanged, this, &TreeView::ShowExpanded);
    connect(&m_tree, &TreeModel::ExpandedChanged, this, &TreeView::setExpanded);
    connect(this, &TreeView::expanded, this,
            [this](const QModelIndex &at) { m_tree.SetExpanded(m_tree.NodeAt(at), true); });
    connect(this, &TreeView::collapsed, this,
            [this](const QModelIndex &at) { m_tree.SetExpanded(m_tree.NodeAt(at), false); });
}

void TreeView::ShowOnly(std::function<bool(const TreeNode &node)> shows)
{
    m_shows = std::move(shows);
    ShowOrHideAll();
    // What is hidden takes no part in what is done with the selected nodes.
    if (const TreeNode *selected = m_tree.Selected(); selected && !m_shows(*selected))
        m_tree.Select(nullptr);
}

void TreeView::ShowOrHideAll()
{
    ShowOrHide({}, 0, m_tree.rowCount() - 1);
    for (const TreeNode *node : m_tree.Nodes())
        ShowOrHide(m_tree.IndexOf(node), 0, static_cast<int>(node->children.size()) - 1);
}

void TreeView::ShowOrHide(const QModelIndex &parent, int start, int end)
{
    for (int row = start; row <= end; ++row) {
        const bool isHidden = !m_shows(*m_tree.NodeAt(m_tree.index(row, 0, parent)));
        if (isHidden != isRowHidden(row, parent))
            setRowHidden(row, parent, isHidden);
    }
}

void TreeView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    if (m_shows)
        ShowOrHide(parent, start, end);
}

void TreeView::SetAllExpanded(bool expanded)
{
    m_tree.SetAllExpanded(expanded);
}

void TreeView::OpenAbove(const TreeNode *node)
{
    for (TreeNode *above = node->parent; above && above->parent; above = above->parent)
        m_tree.SetExpanded(above, true);
}

void TreeView::ShowNode(const TreeNode *node)
{
    if (!node)
        return;
    OpenAbove(node);
    scrollTo(m_tree.IndexOf(node));
}

void TreeView::ShowExpanded()
{
    // Everything is laid out once, at the end.
    scheduleDelayedItemsLayout();
    for (const TreeNode *node : m_tree.Nodes()) {
        if (node->expanded || !node->children.empty())
            setExpanded(m_tree.IndexOf(node), node->expanded);
    }
}

void TreeView::EditText(const TreeNode *node)
{
    setFocus(Qt::OtherFocusReason);
    edit(m_tree.IndexOf(node));
}

void TreeView::keyPressEvent(QKeyEvent *event)
{
    // What the editor of a text does not take is not meant for the node.
    if (state() == EditingState)
        return;
    TreeNode *node = m_tree.Selected();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (node && enter && isSignalConnected(QMetaMethod::fromSignal(&TreeView::Opened)))
        emit Opened(node);
    else if (node && event->key() == Qt::Key_Space && node->tick != TreeTick::None)
        emit TickAsked(node);
    else if (event->key() == Qt::Key_Delete)
        emit DeletePressed();
    else {
        QTreeView::keyPressEvent(event);
        return;
    }
    event->accept();
}

void TreeView::mouseReleaseEvent(QMouseEvent *event)
{
    QTreeView::mouseReleaseEvent(event);
    TreeNode *node = m_tree.NodeAt(indexAt(event->pos()));
    if (!node || node->tick == TreeTick::None || event->button() != Qt::LeftButton)
        return;
    const QRect row = visualRect(m_tree.IndexOf(node));
    const int tickWidth = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
                          2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this);
    const int fromStart =
        layoutDirection() == Qt::RightToLeft ? row.right() - event->pos().x() : event->pos().x() - row.left();
    if (fromStart >= 0 && fromStart <= tickWidth + 2)
        emit TickAsked(node);
}

void TreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The click selects the node, whereupon a form may remove a node that is gone.
    const QPersistentModelIndex at(indexAt(event->pos()));
    QTreeView::mouseDoubleClickEvent(event);
    if (at.isValid() && event->button() == Qt::LeftButton)
        emit Opened(m_tree.NodeAt(at));
}

void TreeView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    m_emptyText.Paint();
}

QSize TreeView::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 36, metrics.height() * 12};
}
