#pragma once

#include <QString>

class TreeModel;
struct TreeNode;

/// What can be done with a tree whatever it holds.

/// Opens all nodes that have nodes below them, and selects the first.
void ExpandAllNodes(TreeModel &tree);
/// Closes all nodes, and selects the first.
void CollapseAllNodes(TreeModel &tree);
/// Selects the first node after the selected one whose text contains `text`, regardless of case. False if
/// there is none: the selection stays.
bool FindNode(TreeModel &tree, const QString &text);

/// Replaces `file` by the keys of the open nodes, one in a line. Failures are ignored: it is a convenience.
void SaveExpandedNodes(const TreeModel &tree, const QString &file);
/// Opens the nodes whose keys are in `file`; keys that the tree does not have, and a file that is not there,
/// are passed over.
void RestoreExpandedNodes(TreeModel &tree, const QString &file);

void ToggleNodeTick(TreeModel &tree, TreeNode *node);
bool NodeIsTicked(const TreeNode *node);
