#include "courses/booking/ResourceTree.h"

#include "controls/ListModel.h"

#include <QSet>
#include <QStringTokenizer>

#include <algorithm>
#include <array>
#include <charconv>

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

constexpr size_t mostNumbers = 3;

/// A key in one piece: trees have thousands of them.
QString Joined(char16_t mark, std::initializer_list<int> numbers)
{
    constexpr size_t mostDigits = 12;
    std::array<char, mostDigits * mostNumbers> text{};
    char *end = text.data();
    for (const int number : numbers) {
        *end = end == text.data() ? static_cast<char>(mark) : ';';
        ++end;
        end = std::to_chars(end, text.data() + text.size(), number).ptr;
    }
    return QString::fromLatin1(text.data(), end - text.data());
}

/// The numbers of a key, which are separated by ";".
struct Numbers {
    std::array<int, mostNumbers> at{};
    size_t count = 0;
};

Numbers NumbersOf(QStringView key)
{
    Numbers numbers;
    for (const QStringView number : QStringTokenizer(key.mid(1), u';')) {
        if (numbers.count < numbers.at.size())
            numbers.at[numbers.count++] = number.toInt();
    }
    return numbers;
}

QString ParentKey(const Node &item)
{
    if (item.kind == Kind::Staff)
        return ResourceTree::Key({Kind::Role, item.eventRef, 0, item.roleTypeRef});
    return ResourceTree::Key({item.kind, item.eventRef});
}

TreeNode ItemNode(const Node &item, const QString &name)
{
    return {ResourceTree::Key(item), name, LooksOf(item.kind)->itemImage};
}

TreeNode RoleNode(const QString &key, const QString &name)
{
    return {key, name, QStringLiteral("roletype")};
}

TreeNode EventNode(EventRef eventRef, const QString &text)
{
    return {ResourceTree::Key({Kind::Event, eventRef}), text, QStringLiteral("closed")};
}

std::vector<TreeNode> BranchNodes(EventRef eventRef, Kind apartFrom)
{
    std::vector<TreeNode> branches;
    branches.reserve(Branches().size());
    for (const Looks &branch : Branches()) {
        if (branch.kind != apartFrom)
            branches.push_back({ResourceTree::Key({branch.kind, eventRef}), branch.text, branch.branchImage});
    }
    return branches;
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
    const auto [at, count] = NumbersOf(key);
    if (kind == Kind::None || count == 0)
        return {};
    const EventRef eventRef(at[count - 1]);
    if (kind == Kind::Role)
        return {kind, eventRef, 0, RoleTypeRef(at[0])};
    if (count == 1)
        return {kind, eventRef};
    return {kind, eventRef, at[0], kind == Kind::Staff ? RoleTypeRef(at[1]) : RoleTypeRef()};
}

QString ResourceTree::Key(const Node &node)
{
    const int event = node.eventRef.number;
    switch (node.kind) {
    case Kind::None:
        return {};
    case Kind::Event:
        return Joined(u'?', {event});
    case Kind::Role:
        return Joined(u'R', {node.roleTypeRef.number, event});
    default:
        break;
    }
    const char16_t mark = LooksOf(node.kind)->mark;
    if (!node.IsItem())
        return Joined(mark, {event});
    return node.kind == Kind::Staff ? Joined(mark, {node.itemRef, node.roleTypeRef.number, event})
                                    : Joined(mark, {node.itemRef, event});
}

TreeNode *ResourceTree::AddEvent(TreeModel::Filling &filling, EventRef eventRef, const QString &text)
{
    TreeNode *event = filling.Add(nullptr, EventNode(eventRef, text));
    for (TreeNode &branch : BranchNodes(eventRef, Kind::None))
        filling.Add(event, std::move(branch));
    return event;
}

void ResourceTree::AddItem(TreeModel::Filling &filling, TreeNode *event, const Node &item,
                           const QString &name, const QString &roleName)
{
    TreeNode *parent = event->children[static_cast<size_t>(LooksOf(item.kind) - Branches().data())].get();
    if (item.kind == Kind::Staff) {
        const QString role = ParentKey(item);
        if (parent->children.empty() || parent->children.back()->key != role)
            filling.Add(parent, RoleNode(role, roleName));
        parent = parent->children.back().get();
    }
    filling.Add(parent, ItemNode(item, name));
}

void ResourceTree::AddEvent(TreeModel &tree, EventRef eventRef, const QString &text, Kind apartFrom)
{
    const TreeNode *event = tree.Add({}, EventNode(eventRef, text));
    if (!event)
        return;
    for (TreeNode &branch : BranchNodes(eventRef, apartFrom))
        tree.Add(event->key, std::move(branch));
}

TreeNode *ResourceTree::AddItem(TreeModel &tree, const Node &item, const QString &name)
{
    return tree.Add(ParentKey(item), ItemNode(item, name));
}

void ResourceTree::AddRole(TreeModel &tree, EventRef eventRef, RoleTypeRef roleTypeRef, const QString &name)
{
    tree.Add(Key({Kind::Staff, eventRef}), RoleNode(Key({Kind::Role, eventRef, 0, roleTypeRef}), name));
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

std::vector<Node> ResourceTree::Contents(const TreeModel &tree)
{
    std::vector<Node> contents;
    for (const TreeNode *node : tree.Nodes()) {
        const Node one = Parse(node->key);
        if (one.kind == Kind::Event || one.IsItem())
            contents.push_back(one);
    }
    return contents;
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
