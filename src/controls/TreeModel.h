#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QItemSelectionModel>

#include <memory>
#include <vector>

/// A node's picture, as its position in a tree's image list: it shows the state of a node in the tick and
/// criterion trees.
enum class TreeTick { None = 0, Off = 6, On = 7, Not = 8 };

struct TreeNode {
    QString key;
    QString text;
    QString image{};
    TreeTick tick = TreeTick::None;
    bool bold = false;
    bool expanded = false;

    TreeNode *parent = nullptr;
    int row = 0; ///< its position among the children of its parent
    std::vector<std::unique_ptr<TreeNode>> children{};
};

/// What a tree control holds: keyed nodes, their ticks, what is expanded, and the selected node. Keys are
/// unique in a tree.
class TreeModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit TreeModel(QObject *parent = nullptr);
    ~TreeModel() override;

    void Clear();
    /// Adds a node below the node with `parentKey` ("" = top level). Null if the parent is missing or the key
    /// exists already.
    TreeNode *Add(const QString &parentKey, TreeNode node);
    struct NewNode {
        QString parentKey; ///< "" = top level
        TreeNode node;
    };
    /// Adds many nodes, parents before their children; the views are told once. Those that cannot be added
    /// are left out.
    void Add(std::vector<NewNode> nodes);
    class Filling;
    void Remove(const QString &key);
    bool IsEmpty() const { return m_root->children.empty(); }
    int Count() const { return static_cast<int>(m_byKey.size()); }
    TreeNode *Find(const QString &key) const; ///< null if there is no such node
    /// Every node, parents before their children, in the order shown.
    std::vector<TreeNode *> Nodes() const;

    void SetText(TreeNode *node, const QString &text);
    void SetTick(TreeNode *node, TreeTick tick);
    /// Sets every node that has a tick.
    void SetAllTicks(TreeTick tick);
    void SetExpanded(TreeNode *node, bool expanded);
    /// The same for many nodes; the views are told once.
    void SetExpanded(const std::vector<TreeNode *> &nodes, bool expanded);
    /// Opens every node that has nodes below it, or closes every node.
    void SetAllExpanded(bool expanded);
    /// Lets the user type another text for a node, which asks for a change; the form decides what changes.
    void SetEditable(bool editable) { m_editable = editable; }

    QItemSelectionModel *Selection() { return m_selection; }
    void Select(const TreeNode *node); ///< null = no node selected
    /// Selects exactly these nodes. The one that the user is at stays if it is among them.
    void SelectAll(const std::vector<const TreeNode *> &nodes);
    /// The selected node; of several the one that the user is at. Null if there is none.
    TreeNode *Selected() const;
    /// All of them, in the order shown.
    std::vector<TreeNode *> SelectedNodes() const;
    void SelectFirst();

    QModelIndex IndexOf(const TreeNode *node) const;
    TreeNode *NodeAt(const QModelIndex &index) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    void Changed(); ///< nodes, texts or ticks changed; not for the selection or what is expanded
    void ExpandedChanged(const QModelIndex &index, bool expanded);
    void ManyExpandedChanged();
    /// The user typed another text, not blank, for the node of that key.
    void TextAsked(const QString &key, const QString &text);

private:
    /// Null if the key exists already.
    TreeNode *Insert(TreeNode *parentNode, TreeNode &&node);

    std::unique_ptr<TreeNode> m_root;
    QHash<QString, TreeNode *> m_byKey;
    QItemSelectionModel *m_selection;
    bool m_editable = false;
};

/// Adds very many nodes to a tree, for as long as it lives; the views are told once, at its end.
class TreeModel::Filling final
{
public:
    /// Makes room for about `count` nodes.
    Filling(TreeModel &tree, size_t count);
    ~Filling();
    Filling(const Filling &) = delete;
    Filling &operator=(const Filling &) = delete;

    /// Adds a node to `parentNode` (null = top level). Null if the key exists already.
    TreeNode *Add(TreeNode *parentNode, TreeNode &&node);

private:
    TreeModel &m_tree;
    const TreeNode *m_selected;
};
