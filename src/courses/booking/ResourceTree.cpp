#include "courses/booking/ResourceTree.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace
{
using ResourceTree::Kind;
using ResourceTree::Node;

/// What the nodes of one kind look like.
struct Looks {
    Kind kind;
    char16_t mark; ///< the first character of their keys
    QString text;  ///< of the branch
    QString branchImage;
    QString itemImage;
};

const std::array<Looks, 4> &Branches()
{
    static const std::array<Looks, 4> branches{{
        {Kind::Attendance, u'A', QStringLiteral("Attendance"), QStringLiteral("attendance"),
         QStringLiteral("user")},
        {Kind::Facilities, u'F', QStringLiteral("Facilities"), QStringLiteral("facilities"),
         QStringLiteral("facility")},
        {Kind::Staff, u'S', QStringLiteral("Staff"), QStringLiteral("staff"), QStringLiteral("user")},
        {Kind::Venues, u'V', QStringLiteral("Venues"), QStringLiteral("venues"), QStringLiteral("venue")},
    }};
    return branches;
}

const Looks *LooksOf(Kind kind)
{
    const auto *looks = std::ranges::find(Branches(), kind, &Looks::kind);
    return looks == Branches().end() ? nullptr : looks;
}

Kind KindOf(QChar mark)
{
    if (mark == u'?')
        return Kind::Event;
    if (mark == u'R')
        return Kind::Role;
    const auto *looks = std::ranges::find(Branches(), mark.unicode(), &Looks::mark);
    return looks == Branches().end() ? Kind::None : looks->kind;
}

QString ParentKey(const Node &item)
{
    if (item.kind == Kind::Staff)
        return ResourceTree::Key({Kind::Role, item.eventRef, 0, item.roleTypeRef});
    return ResourceTree::Key({item.kind, item.eventRef});
}

/// Whether the node is of the same sort as the current one.
bool IsAlike(const Node &node, const Node &current)
{
    return node.kind == current.kind && (node.kind != Kind::Role || node.roleTypeRef == current.roleTypeRef);
}

/// Whether the node is a branch of that kind or in one.
bool IsIn(const Node &node, Kind kind)
{
    return node.kind == kind || (kind == Kind::Staff && node.kind == Kind::Role);
}

bool IsBranch(const Node &node)
{
    return !node.IsItem() && LooksOf(node.kind);
}

/// What the user is at once those keys are removed: what an item or a role was in, or another event.
const TreeNode *Remaining(const TreeModel &tree, const Node &current, const QStringList &removed)
{
    const QSet<QString> gone(removed.begin(), removed.end());
    const TreeNode *remaining = nullptr;
    bool isPast = false;
    for (const TreeNode *node : tree.Nodes()) {
        const Node one = ResourceTree::Parse(node->key);
        isPast = isPast || one == current;
        const bool isCandidate = current.kind == Kind::Event ? one.kind == Kind::Event
                                                             : IsBranch(one) && IsIn(current, one.kind) &&
                                                                   one.eventRef == current.eventRef;
        if (isCandidate && !gone.contains(node->key))
            remaining = node;
        if (remaining && isPast)
            break;
    }
    return remaining;
}

QStringList KeysBelow(const TreeModel &tree, const QString &key)
{
    QStringList keys;
    if (const TreeNode *node = tree.Find(key)) {
        for (const auto &child : node->children)
            keys.append(child->key);
    }
    return keys;
}
} // namespace

Node ResourceTree::Parse(const QString &key)
{
    if (key.isEmpty())
        return {};
    const Kind kind = KindOf(key.front());
    const QList<QStringView> numbers = QStringView(key).mid(1).split(u';');
    const auto number = [&numbers](qsizetype at) { return numbers.value(at).toInt(); };
    const EventRef eventRef(numbers.last().toInt());
    switch (kind) {
    case Kind::None:
        return {};
    case Kind::Role:
        return {kind, eventRef, 0, RoleTypeRef(number(0))};
    default:
        break;
    }
    if (numbers.size() == 1)
        return {kind, eventRef};
    return {kind, eventRef, number(0), kind == Kind::Staff ? RoleTypeRef(number(1)) : RoleTypeRef()};
}

QString ResourceTree::Key(const Node &node)
{
    const QString event = SqlNumber(node.eventRef);
    switch (node.kind) {
    case Kind::None:
        return {};
    case Kind::Event:
        return u'?' % event;
    case Kind::Role:
        return u'R' % SqlNumber(node.roleTypeRef) % u';' % event;
    default:
        break;
    }
    const QChar mark(LooksOf(node.kind)->mark);
    if (!node.IsItem())
        return mark % event;
    const QString item = mark % SqlNumber(node.itemRef) % u';';
    return node.kind == Kind::Staff ? QString(item % SqlNumber(node.roleTypeRef) % u';' % event)
                                    : QString(item % event);
}

void ResourceTree::AddEvent(TreeModel &tree, EventRef eventRef, const QString &text, Kind apartFrom)
{
    const QString key = Key({Kind::Event, eventRef});
    if (!tree.Add({}, {key, text, QStringLiteral("closed")}))
        return;
    for (const Looks &branch : Branches()) {
        if (branch.kind != apartFrom)
            tree.Add(key, {Key({branch.kind, eventRef}), branch.text, branch.branchImage});
    }
}

TreeNode *ResourceTree::AddItem(TreeModel &tree, const Node &item, const QString &name)
{
    return tree.Add(ParentKey(item), {Key(item), name, LooksOf(item.kind)->itemImage});
}

void ResourceTree::AddRole(TreeModel &tree, EventRef eventRef, RoleTypeRef roleTypeRef, const QString &name)
{
    tree.Add(Key({Kind::Staff, eventRef}),
             {Key({Kind::Role, eventRef, 0, roleTypeRef}), name, QStringLiteral("roletype")});
}

void ResourceTree::Remove(TreeModel &tree, const QString &key)
{
    tree.Remove(key);
    const Node node = Parse(key);
    if (node.kind != Kind::Staff || !node.IsItem())
        return;
    const QString role = ParentKey(node);
    if (KeysBelow(tree, role).isEmpty())
        tree.Remove(role);
}

Node ResourceTree::Current(const TreeModel &tree)
{
    const TreeNode *node = tree.Selected();
    return node ? Parse(node->key) : Node();
}

std::vector<Node> ResourceTree::Chosen(const TreeModel &tree)
{
    const Node current = Current(tree);
    std::vector<Node> chosen;
    for (const TreeNode *node : tree.SelectedNodes()) {
        const Node one = Parse(node->key);
        if (IsAlike(one, current))
            chosen.push_back(one);
    }
    return chosen;
}

std::vector<EventRef> ResourceTree::ChosenEvents(const TreeModel &tree, Kind kind)
{
    std::vector<EventRef> events;
    for (const TreeNode *node : tree.SelectedNodes()) {
        const Node one = Parse(node->key);
        if (IsIn(one, kind) && (events.empty() || events.back() != one.eventRef))
            events.push_back(one.eventRef);
    }
    return events;
}

void ResourceTree::AddToChosen(TreeModel &tree, Kind kind, const ListModel &items)
{
    for (const EventRef eventRef : ChosenEvents(tree, kind)) {
        for (int row = 0; row < items.Count(); ++row)
            AddItem(tree, {kind, eventRef, KeyNumber(items.At(row).key)}, items.At(row).text);
    }
}

void ResourceTree::AddStaffToChosen(TreeModel &tree, RoleTypeRef roleTypeRef, const QString &roleName,
                                    const ListModel &staff)
{
    for (const EventRef eventRef : ChosenEvents(tree, Kind::Staff)) {
        if (!staff.IsEmpty())
            AddRole(tree, eventRef, roleTypeRef, roleName);
        for (int row = 0; row < staff.Count(); ++row)
            AddItem(tree, {Kind::Staff, eventRef, KeyNumber(staff.At(row).key), roleTypeRef},
                    staff.At(row).text);
    }
}

void ResourceTree::RemoveChosen(TreeModel &tree)
{
    const Node current = Current(tree);
    QStringList keys;
    for (const Node &node : Chosen(tree)) {
        if (IsBranch(node))
            keys += KeysBelow(tree, Key(node));
        else
            keys.append(Key(node));
    }
    // With each removed node the selection would go on to another one.
    if (!IsBranch(current))
        tree.Select(Remaining(tree, current, keys));
    for (const QString &key : std::as_const(keys))
        Remove(tree, key);
}

bool ResourceTree::HaveAttended(const TreeModel &tree, EventRef eventRef, const ListModel &people)
{
    for (int row = 0; row < people.Count(); ++row) {
        if (!tree.Find(Key({Kind::Attendance, eventRef, KeyNumber(people.At(row).key)})))
            return false;
    }
    const TreeNode *branch = tree.Find(Key({Kind::Attendance, eventRef}));
    return branch && !branch->children.empty();
}

void ResourceTree::SetAttended(TreeModel &tree, EventRef eventRef, const ListModel &people, bool attended)
{
    if (attended) {
        for (int row = 0; row < people.Count(); ++row)
            AddItem(tree, {Kind::Attendance, eventRef, KeyNumber(people.At(row).key)}, people.At(row).text);
        return;
    }
    for (const QString &key : KeysBelow(tree, Key({Kind::Attendance, eventRef})))
        tree.Remove(key);
}

void ResourceTree::SelectAlike(TreeModel &tree)
{
    const Node current = Current(tree);
    std::vector<const TreeNode *> alike;
    for (const TreeNode *node : tree.Nodes()) {
        const Node one = Parse(node->key);
        if (IsAlike(one, current) && one.IsItem() == current.IsItem())
            alike.push_back(node);
    }
    tree.SelectAll(alike);
}

bool ResourceTree::IsShown(const TreeNode &node, Kind only)
{
    const Node one = Parse(node.key);
    return only == Kind::None || one.kind == Kind::Event || IsIn(one, only);
}
