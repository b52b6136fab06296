#include "database/statements/RecordLists.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"

namespace
{
const QString separator = QStringLiteral(", ");
const QString keySeparator = QStringLiteral(";");

bool IsSingle(const TreeNode &node, const QString &singleImage)
{
    return !singleImage.isEmpty() && node.parent && node.parent->image == singleImage;
}

bool IsTicked(const FieldValues &values, const RecordLists::Ticks &ticks, const TreeNode &node)
{
    if (!IsSingle(node, ticks.singleImage))
        return values.contains(ticks.word % node.key);
    return values.value(ticks.word % node.parent->key).split(keySeparator).contains(node.key);
}

void AlignRows(const FieldValues &values, const RecordLists::List &list)
{
    QStringList left;
    QStringList joined;
    for (int row = 0; row < list.yours.Count(); ++row) {
        if (!values.contains(list.word % list.yours.At(row).key))
            left.append(list.yours.At(row).key);
    }
    for (int row = 0; row < list.theirs.Count(); ++row) {
        const ListItem &theirs = list.theirs.At(row);
        const int here = list.yours.Find(theirs.key);
        const bool isIn = values.contains(list.word % theirs.key);
        if (isIn && here < 0)
            joined.append(theirs.key);
        else if (isIn && list.hasValues && list.yours.At(here).subItems != theirs.subItems &&
                 values[list.word % theirs.key] == theirs.subItems.join(separator))
            for (int i = 0; i < theirs.subItems.size(); ++i)
                list.yours.SetSubItem(here, i, theirs.subItems.at(i));
    }
    ListModel nowhere;
    list.yours.MoveKeys(left, list.available ? *list.available : nowhere);
    if (list.available)
        list.available->MoveKeys(joined, list.yours);
    for (const QString &key : std::as_const(joined)) {
        if (!list.yours.Contains(key))
            list.yours.Add(list.theirs.At(list.theirs.Find(key)));
    }
}

/// What another workstation ticked may be something that it has only just created.
void AddNode(TreeModel &tree, const TreeNode &from)
{
    const QString parentKey = from.parent ? from.parent->key : QString();
    if (!parentKey.isEmpty() && !tree.Find(parentKey))
        AddNode(tree, *from.parent);
    TreeNode node{from.key, from.text, from.image};
    node.tick = from.tick == TreeTick::None ? TreeTick::None : TreeTick::Off;
    tree.Add(parentKey, std::move(node));
}

void TakeTicks(const FieldValues &values, const RecordLists::Ticks &ticks)
{
    for (const TreeNode *theirs : ticks.theirs.Nodes()) {
        if (theirs->tick == TreeTick::On && !ticks.yours.Find(theirs->key))
            AddNode(ticks.yours, *theirs);
    }
    for (TreeNode *node : ticks.yours.Nodes()) {
        const TreeTick tick = IsTicked(values, ticks, *node) ? TreeTick::On : TreeTick::Off;
        if (node->tick != TreeTick::None && node->tick != tick)
            ticks.yours.SetTick(node, tick);
    }
}

const TreeNode *FindNode(const RecordLists::Ticks &ticks, const QString &key)
{
    const TreeNode *node = ticks.yours.Find(key);
    return node ? node : ticks.theirs.Find(key);
}

/// A field of several ticks holds their keys.
QString ShownTicks(const RecordLists::Ticks &ticks, const QString &value)
{
    QStringList texts;
    for (const QString &key : value.split(keySeparator, Qt::SkipEmptyParts)) {
        if (const TreeNode *node = FindNode(ticks, key))
            texts.append(node->text);
    }
    return texts.join(separator);
}

QString InOrNot(const QString &value)
{
    return value.isNull() ? QStringLiteral("no") : QStringLiteral("yes");
}
} // namespace

void AddRows(FieldValues &values, const QString &word, const ListModel &list, bool hasValues)
{
    for (int row = 0; row < list.Count(); ++row) {
        const ListItem &item = list.At(row);
        values[word % item.key] = hasValues ? item.subItems.join(separator) : QStringLiteral("");
    }
}

void AddTicks(FieldValues &values, const QString &word, const TreeModel &tree, const QString &singleImage)
{
    for (const TreeNode *node : tree.Nodes()) {
        if (node->tick != TreeTick::On)
            continue;
        if (!IsSingle(*node, singleImage)) {
            values[word % node->key] = QStringLiteral("");
            continue;
        }
        QString &ticked = values[word % node->parent->key];
        ticked += ticked.isEmpty() ? node->key : QString(keySeparator % node->key);
    }
}

void RecordLists::AddYours(FieldValues &values) const
{
    for (const List &list : m_lists)
        AddRows(values, list.word, list.yours, list.hasValues);
    for (const Ticks &ticks : m_ticks)
        AddTicks(values, ticks.word, ticks.yours, ticks.singleImage);
}

void RecordLists::AddTheirs(FieldValues &values) const
{
    for (const List &list : m_lists)
        AddRows(values, list.word, list.theirs, list.hasValues);
    for (const Ticks &ticks : m_ticks)
        AddTicks(values, ticks.word, ticks.theirs, ticks.singleImage);
}

void RecordLists::Take(const FieldValues &values) const
{
    for (const List &list : m_lists)
        AlignRows(values, list);
    for (const Ticks &ticks : m_ticks)
        TakeTicks(values, ticks);
}

QString RecordLists::Caption(const QString &field) const
{
    for (const List &list : m_lists) {
        if (!field.startsWith(list.word))
            continue;
        const QString key = field.mid(list.word.size());
        const ListModel &holder = list.yours.Contains(key) ? list.yours : list.theirs;
        if (const int row = holder.Find(key); row >= 0)
            return list.word % u" " % holder.At(row).text;
    }
    for (const Ticks &ticks : m_ticks) {
        if (!field.startsWith(ticks.word))
            continue;
        if (const TreeNode *node = FindNode(ticks, field.mid(ticks.word.size())))
            return ticks.word % u" " % node->text;
    }
    return field;
}

QString RecordLists::Shown(const QString &field, const QString &value) const
{
    for (const List &list : m_lists) {
        if (field.startsWith(list.word))
            return list.hasValues && !value.isNull() ? value : InOrNot(value);
    }
    for (const Ticks &ticks : m_ticks) {
        if (field.startsWith(ticks.word))
            return value.isEmpty() ? InOrNot(value) : ShownTicks(ticks, value);
    }
    return value;
}
