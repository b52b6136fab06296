#pragma once

#include "controls/TreeModel.h"

#include <QStringList>

/// A tree as one line: each node with its depth in dots, its text, its tick and its key.
inline QString Drawn(const TreeModel &tree)
{
    QStringList lines;
    for (const TreeNode *node : tree.Nodes()) {
        QString depth;
        for (const TreeNode *at = node->parent; at->parent; at = at->parent)
            depth += u'.';
        lines += depth % node->text % (node->tick == TreeTick::On ? u"*" : u"") % node->key;
    }
    return lines.join(u' ');
}
