#pragma once

#include "attributes/CustomAttribModule.h"
#include "controls/TreeModel.h"
#include "support/TestDatabase.h"

#include <QStringList>

/// A tree as it is seen: attributes as "one of" or "any of", their values ticked ("x"), not ticked ("o") or
/// without a box ("-").
inline QStringList Seen(const TreeModel &tree)
{
    QStringList lines;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->key.startsWith('!')) {
            const bool single = node->image == AttribImage(AttribType::Single);
            lines.append((single ? "one of " : "any of ") + node->text);
            continue;
        }
        const QString tick = node->tick == TreeTick::On ? "x " : node->tick == TreeTick::Off ? "o " : "- ";
        lines.append(tick + node->text);
    }
    return lines;
}

/// The node of that text, which must be there.
inline TreeNode *NodeOf(const TreeModel &tree, const QString &text)
{
    for (TreeNode *node : tree.Nodes()) {
        if (node->text == text)
            return node;
    }
    qFatal("no node %s", qPrintable(text));
}

/// The attributes that the tests work with; references as the database gave them.
struct SiteAttributes {
    AttributeRef colour{CustomAttrib_AddAttrib({"Colour", AttribType::Single})};
    AttributeValueRef red{CustomAttrib_AddAttribVal("Red", colour)};
    AttributeValueRef blue{CustomAttrib_AddAttribVal("Blue", colour)};
    AttributeRef diet{CustomAttrib_AddAttrib({"Diet", AttribType::Multi})};
    AttributeValueRef vegan{CustomAttrib_AddAttribVal("Vegan", diet)};
    AttributeValueRef halal{CustomAttrib_AddAttribVal("Halal", diet)};
};

/// What a person has, as a tree shows it that has just been opened.
inline QStringList SeenOf(int contactRef)
{
    TreeModel tree;
    ADO_CustomAttrib_Show(tree, AttribSection::Contacts);
    ADO_CustomAttrib_Get(tree, contactRef, AttribSection::Contacts);
    return Seen(tree);
}

/// Gives a person exactly these values.
inline void Give(int contactRef, const QStringList &values)
{
    TreeModel tree;
    ADO_CustomAttrib_Show(tree, AttribSection::Contacts);
    for (const QString &value : values)
        tree.SetTick(NodeOf(tree, value), TreeTick::On);
    ADO_CustomAttrib_Store(tree, contactRef, AttribSection::Contacts);
}
