#include "courses/lists/TreeViewFunc.h"

#include "controls/TreeModel.h"
#include "platform/desktop/OwnFile.h"

#include <QFile>

#include <algorithm>

void ExpandAllNodes(TreeModel &tree)
{
    tree.SetAllExpanded(true);
    tree.SelectFirst();
}

void CollapseAllNodes(TreeModel &tree)
{
    tree.SetAllExpanded(false);
    tree.SelectFirst();
}

bool FindNode(TreeModel &tree, const QString &text)
{
    const QString wanted = text.toUpper();
    const std::vector<TreeNode *> nodes = tree.Nodes();
    const auto selected = std::find(nodes.begin(), nodes.end(), tree.Selected());
    const auto found =
        std::find_if(selected == nodes.end() ? nodes.begin() : selected + 1, nodes.end(),
                     [&wanted](const TreeNode *node) { return node->text.toUpper().contains(wanted); });
    if (found == nodes.end())
        return false;
    tree.Select(*found);
    return true;
}

void SaveExpandedNodes(const TreeModel &tree, const QString &file)
{
    QFile out(file);
    if (!OpenOwnFile(out, QIODevice::WriteOnly | QIODevice::Text))
        return;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->expanded)
            out.write(node->key.toUtf8() + '\n');
    }
}

void RestoreExpandedNodes(TreeModel &tree, const QString &file)
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    std::vector<TreeNode *> nodes;
    for (const QByteArray &key : in.readAll().split('\n')) {
        if (TreeNode *node = tree.Find(QString::fromUtf8(key)))
            nodes.push_back(node);
    }
    tree.SetExpanded(nodes, true);
}

void ToggleNodeTick(TreeModel &tree, TreeNode *node)
{
    tree.SetTick(node, node->tick == TreeTick::Off ? TreeTick::On : TreeTick::Off);
}

bool NodeIsTicked(const TreeNode *node)
{
    return node->tick == TreeTick::On;
}
