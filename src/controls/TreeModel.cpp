#include "controls/TreeModel.h"

#include "controls/ItemRoles.h"

#include <QSet>

namespace
{
constexpr size_t fewNodes = 10;
} // namespace

TreeModel::TreeModel(QObject *parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<TreeNode>())
    , m_selection(new QItemSelectionModel(this, this))
{
}

TreeModel::~TreeModel() = default;

void TreeModel::Clear()
{
    beginResetModel();
    m_root->children.clear();
    m_byKey.clear();
    endResetModel();
    emit Changed();
}

TreeNode *TreeModel::Add(const QString &parentKey, TreeNode node)
{
    TreeNode *parentNode = parentKey.isEmpty() ? m_root.get() : Find(parentKey);
    if (!parentNode || m_byKey.contains(node.key))
        return nullptr;
    const int row = static_cast<int>(parentNode->children.size());
    beginInsertRows(IndexOf(parentNode), row, row);
    TreeNode *added = Insert(parentNode, std::move(node));
    endInsertRows();
    if (added->expanded)
        emit ExpandedChanged(IndexOf(added), true);
    emit Changed();
    return added;
}

void TreeModel::Add(std::vector<NewNode> nodes)
{
    // A few are not worth laying out everything again.
    if (nodes.size() < fewNodes) {
        for (NewNode &added : nodes)
            Add(added.parentKey, std::move(added.node));
        return;
    }
    Filling filling(*this, nodes.size());
    for (NewNode &added : nodes) {
        TreeNode *parentNode = Find(added.parentKey);
        if (parentNode || added.parentKey.isEmpty())
            filling.Add(parentNode, std::move(added.node));
    }
}

TreeModel::Filling::Filling(TreeModel &tree, size_t count)
    : m_tree(tree)
    , m_selected(tree.Selected())
{
    m_tree.beginResetModel();
    m_tree.m_byKey.reserve(m_tree.m_byKey.size() + static_cast<qsizetype>(count));
}

TreeModel::Filling::~Filling()
{
    m_tree.endResetModel();
    if (m_selected)
        m_tree.Select(m_selected);
    emit m_tree.Changed();
}

TreeNode *TreeModel::Filling::Add(TreeNode *parentNode, TreeNode &&node)
{
    return m_tree.Insert(parentNode ? parentNode : m_tree.m_root.get(), std::move(node));
}

TreeNode *TreeModel::Insert(TreeNode *parentNode, TreeNode &&node)
{
    TreeNode *&added = m_byKey[node.key];
    if (added)
        return nullptr;
    const int row = static_cast<int>(parentNode->children.size());
    parentNode->children.push_back(std::make_unique<TreeNode>(std::move(node)));
    added = parentNode->children.back().get();
    added->parent = parentNode;
    added->row = row;
    return added;
}

void TreeModel::Remove(const QString &key)
{
    TreeNode *node = Find(key);
    if (!node)
        return;
    const QModelIndex at = IndexOf(node);
    beginRemoveRows(at.parent(), at.row(), at.row());
    std::vector<const TreeNode *> gone{node};
    for (size_t i = 0; i < gone.size(); ++i) {
        for (const auto &child : gone[i]->children)
            gone.push_back(child.get());
    }
    for (const TreeNode *one : gone)
        m_byKey.remove(one->key);
    auto &siblings = node->parent->children;
    siblings.erase(siblings.begin() + at.row());
    for (size_t row = static_cast<size_t>(at.row()); row < siblings.size(); ++row)
        siblings[row]->row = static_cast<int>(row);
    endRemoveRows();
    emit Changed();
}

TreeNode *TreeModel::Find(const QString &key) const
{
    return m_byKey.value(key, nullptr);
}

std::vector<TreeNode *> TreeModel::Nodes() const
{
    std::vector<TreeNode *> pending{m_root.get()};
    std::vector<TreeNode *> nodes;
    nodes.reserve(static_cast<size_t>(m_byKey.size()));
    while (!pending.empty()) {
        TreeNode *node = pending.back();
        pending.pop_back();
        if (node != m_root.get())
            nodes.push_back(node);
        for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
            pending.push_back(child->get());
    }
    return nodes;
}

void TreeModel::SetText(TreeNode *node, const QString &text)
{
    node->text = text;
    emit dataChanged(IndexOf(node), IndexOf(node));
    emit Changed();
}

void TreeModel::SetTick(TreeNode *node, TreeTick tick)
{
    node->tick = tick;
    emit dataChanged(IndexOf(node), IndexOf(node));
    emit Changed();
}

void TreeModel::SetAllTicks(TreeTick tick)
{
    for (TreeNode *node : Nodes()) {
        if (node->tick != TreeTick::None && node->tick != tick)
            SetTick(node, tick);
    }
}

void TreeModel::SetExpanded(TreeNode *node, bool expanded)
{
    if (node->expanded == expanded)
        return;
    node->expanded = expanded;
    emit ExpandedChanged(IndexOf(node), expanded);
}

void TreeModel::SetAllExpanded(bool expanded)
{
    std::vector<TreeNode *> nodes = Nodes();
    std::erase_if(nodes, [expanded](const TreeNode *node) { return expanded && node->children.empty(); });
    SetExpanded(nodes, expanded);
}

void TreeModel::SetExpanded(const std::vector<TreeNode *> &nodes, bool expanded)
{
    for (TreeNode *node : nodes)
        node->expanded = expanded;
    emit ManyExpandedChanged();
}

void TreeModel::Select(const TreeNode *node)
{
    if (node)
        m_selection->setCurrentIndex(IndexOf(node), QItemSelectionModel::ClearAndSelect);
    else
        m_selection->clear();
}

void TreeModel::SelectAll(const std::vector<const TreeNode *> &nodes)
{
    QItemSelection selection;
    for (const TreeNode *node : nodes) {
        const QModelIndex at = IndexOf(node);
        if (!selection.isEmpty() && selection.last().parent() == at.parent() &&
            selection.last().bottom() + 1 == at.row())
            selection.last() = {selection.last().topLeft(), at};
        else
            selection.append({at, at});
    }
    m_selection->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!nodes.empty() && !m_selection->isSelected(m_selection->currentIndex()))
        m_selection->setCurrentIndex(IndexOf(nodes.front()), QItemSelectionModel::NoUpdate);
}

TreeNode *TreeModel::Selected() const
{
    const QModelIndex current = m_selection->currentIndex();
    if (m_selection->isSelected(current))
        return NodeAt(current);
    const QItemSelection &selected = m_selection->selection();
    return selected.isEmpty() ? nullptr : NodeAt(selected.first().topLeft());
}

std::vector<TreeNode *> TreeModel::SelectedNodes() const
{
    const QModelIndexList indexes = m_selection->selectedIndexes();
    if (indexes.isEmpty())
        return {};
    if (indexes.size() == 1)
        return {NodeAt(indexes.front())};
    QSet<const TreeNode *> selected;
    for (const QModelIndex &index : indexes)
        selected.insert(NodeAt(index));
    std::vector<TreeNode *> nodes = Nodes();
    std::erase_if(nodes, [&selected](const TreeNode *node) { return !selected.contains(node); });
    return nodes;
}

void TreeModel::SelectFirst()
{
    if (!IsEmpty())
        Select(m_root->children.front().get());
}

QModelIndex TreeModel::IndexOf(const TreeNode *node) const
{
    if (!node || node == m_root.get())
        return {};
    return createIndex(node->row, 0, node);
}

TreeNode *TreeModel::NodeAt(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<TreeNode *>(index.internalPointer()) : nullptr;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex &parent) const
{
    const TreeNode *node = parent.isValid() ? NodeAt(parent) : m_root.get();
    if (column != 0 || row < 0 || row >= static_cast<int>(node->children.size()))
        return {};
    return createIndex(row, column, node->children[static_cast<size_t>(row)].get());
}

QModelIndex TreeModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? IndexOf(NodeAt(child)->parent) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex &parent) const
{
    const TreeNode *node = parent.isValid() ? NodeAt(parent) : m_root.get();
    return static_cast<int>(node->children.size());
}

int TreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant TreeModel::data(const QModelIndex &index, int role) const
{
    const TreeNode *node = NodeAt(index);
    if (!node)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return node->text;
    case ImageRole:
        return node->image;
    case BoldRole:
        return node->bold;
    case TickRole:
        return static_cast<int>(node->tick);
    default:
        return {};
    }
}

bool TreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const TreeNode *node = NodeAt(index);
    const QString text = value.toString();
    if (!node || role != Qt::EditRole || text.trimmed().isEmpty() || text == node->text)
        return false;
    emit TextAsked(node->key, text);
    return true;
}

Qt::ItemFlags TreeModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return {};
    const Qt::ItemFlags shown = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return m_editable ? shown | Qt::ItemIsEditable : shown;
}
