#include "courses/record/ResourceVersion.h"

#include "database/statements/DeletedMeanwhile.h"
#include "database/values/DecodeDateFunc.h"

#include <algorithm>
#include <array>

namespace
{
using ResourceTree::Kind;
using ResourceTree::Node;

const QString word = QStringLiteral("Resource ");
const QString separator = QStringLiteral(" ");

QString EventField(EventRef eventRef)
{
    return word % ResourceTree::Key({Kind::Event, eventRef});
}

Node NodeOf(const QString &field)
{
    return ResourceTree::Parse(field.mid(word.size()));
}

QString HoursValue(const EventHours &hours)
{
    return SqlNumber(hours.date) % separator % SqlNumber(hours.from) % separator % SqlNumber(hours.to);
}

void Add(FieldValues &values, const std::vector<Node> &contents, const QHash<EventRef, EventHours> &hours)
{
    for (const Node &one : contents)
        values[word % ResourceTree::Key(one)] =
            one.kind == Kind::Event ? HoursValue(hours.value(one.eventRef)) : QStringLiteral("");
}

QString ItemWord(Kind kind)
{
    switch (kind) {
    case Kind::Attendance:
        return QStringLiteral("Attendance");
    case Kind::Facilities:
        return QStringLiteral("Facility");
    case Kind::Venues:
        return QStringLiteral("Venue");
    default:
        return QStringLiteral("Staff member");
    }
}

QString NameIn(const CourseResources &mine, const CourseResources &stored, const QString &key)
{
    const TreeNode *node = mine.tree.Find(key);
    if (!node)
        node = stored.tree.Find(key);
    return node ? node->text : QString();
}

/// What of the tree is in no field any more. Items go with their event.
QStringList Gone(const FieldValues &values, const TreeModel &tree)
{
    QStringList gone;
    for (const TreeNode *node : tree.Nodes()) {
        const Node one = ResourceTree::Parse(node->key);
        if ((one.kind == Kind::Event || one.IsItem()) && !values.contains(word % node->key))
            gone.append(node->key);
    }
    return gone;
}

/// Adds a node of another tree, where its event is there.
void AddFrom(TreeModel &tree, const TreeNode &from)
{
    const Node one = ResourceTree::Parse(from.key);
    if (one.kind == Kind::Event) {
        ResourceTree::AddEvent(tree, one.eventRef, from.text);
        return;
    }
    if (one.kind == Kind::Staff)
        ResourceTree::AddRole(tree, one.eventRef, one.roleTypeRef, from.parent->text);
    ResourceTree::AddItem(tree, one, from.text);
}

/// A table that nodes of the tree refer to.
struct Referred {
    QString table;
    QString key;
    std::array<Kind, 2> kinds;
};

const std::array<Referred, 4> &ReferredTables()
{
    static const std::array<Referred, 4> tables{{
        {QStringLiteral("Contacts"), QStringLiteral("ContactRef"), {Kind::Attendance, Kind::Staff}},
        {QStringLiteral("Facilities"), QStringLiteral("FacilityRef"), {Kind::Facilities, Kind::Facilities}},
        {QStringLiteral("Venues"), QStringLiteral("VenueRef"), {Kind::Venues, Kind::Venues}},
        {QStringLiteral("RoleTypes"), QStringLiteral("RoleTypeRef"), {Kind::Role, Kind::Role}},
    }};
    return tables;
}

/// What the node refers to in the table; 0 = nothing. A post that nobody fills refers to nobody.
int ReferenceOf(const Node &node, const Referred &referred)
{
    if (node.kind != referred.kinds.front() && node.kind != referred.kinds.back())
        return 0;
    return node.kind == Kind::Role ? node.roleTypeRef.number : std::max(node.itemRef, 0);
}

std::optional<QStringList> Deleted(const TreeModel &tree, const Referred &referred)
{
    QSet<int> references;
    QList<std::pair<QString, int>> nodes;
    for (const TreeNode *node : tree.Nodes()) {
        if (const int reference = ReferenceOf(ResourceTree::Parse(node->key), referred)) {
            references.insert(reference);
            nodes.append({node->key, reference});
        }
    }
    if (references.isEmpty())
        return QStringList();
    const std::optional<QSet<int>> living = ADO_LivingKeys(referred.table, referred.key, references);
    if (!living)
        return std::nullopt;
    QStringList deleted;
    for (const auto &[key, reference] : nodes) {
        if (!living->contains(reference))
            deleted.append(key);
    }
    return deleted;
}
} // namespace

void ResourceVersion::AddFields(FieldValues &values, const CourseResources &resources)
{
    Add(values, ResourceTree::Contents(resources.tree), resources.hours);
}

void ResourceVersion::AddReadFields(FieldValues &values, const CourseResources &resources)
{
    Add(values, resources.read, resources.hours);
}

bool ResourceVersion::IsChanged(const CourseResources &resources)
{
    std::vector<Node> contents = ResourceTree::Contents(resources.tree);
    std::vector<Node> read = resources.read;
    std::ranges::sort(contents);
    std::ranges::sort(read);
    // Something may be stored twice, and is in the tree once.
    read.erase(std::unique(read.begin(), read.end()), read.end());
    return contents != read;
}

FieldValues ResourceVersion::Folded(const FieldValues &values, const CourseResources &mine)
{
    FieldValues folded;
    for (auto field = values.begin(); field != values.end(); ++field) {
        const Node one = IsField(field.key()) ? NodeOf(field.key()) : Node();
        const bool isMine = mine.tree.Find(ResourceTree::Key({Kind::Event, one.eventRef}));
        if (!one.IsItem() || isMine)
            folded[field.key()] = field.value();
    }
    for (auto field = values.begin(); field != values.end(); ++field) {
        if (!folded.contains(field.key()) && folded.contains(EventField(NodeOf(field.key()).eventRef)))
            folded[EventField(NodeOf(field.key()).eventRef)] += separator % field.key().mid(word.size());
    }
    return folded;
}

QStringList ResourceVersion::Take(const FieldValues &values, CourseResources &mine,
                                  const CourseResources &stored)
{
    QStringList events;
    for (const QString &key : Gone(values, mine.tree)) {
        const TreeNode *node = mine.tree.Find(key);
        if (node && ResourceTree::Parse(key).kind == Kind::Event)
            events.append(node->text);
        ResourceTree::Remove(mine.tree, key);
    }
    QSet<EventRef> joined;
    for (const TreeNode *node : stored.tree.Nodes()) {
        const Node one = ResourceTree::Parse(node->key);
        const bool isNew = values.contains(word % node->key) && !mine.tree.Find(node->key);
        if (isNew && one.kind == Kind::Event) {
            joined.insert(one.eventRef);
            mine.hours.insert(one.eventRef, stored.hours.value(one.eventRef));
        }
        if (isNew || (one.IsItem() && joined.contains(one.eventRef)))
            AddFrom(mine.tree, *node);
    }
    return events;
}

bool ResourceVersion::IsField(const QString &field)
{
    return field.startsWith(word);
}

QString ResourceVersion::Caption(const QString &field, const CourseResources &mine,
                                 const CourseResources &stored)
{
    const Node one = NodeOf(field);
    const QString event = NameIn(mine, stored, ResourceTree::Key({Kind::Event, one.eventRef}));
    return one.IsItem() ? QString(ItemWord(one.kind) % separator %
                                  NameIn(mine, stored, field.mid(word.size())) % u", " % event)
                        : event;
}

QString ResourceVersion::Shown(const QString &value)
{
    if (value.isNull())
        return QStringLiteral("no");
    const QStringList hours = value.split(separator);
    if (hours.size() < 3 || hours.at(0) == u"0")
        return QStringLiteral("yes");
    return IntToDateText(hours.at(0).toInt()) % u", " % TimesText(hours.at(1).toInt(), hours.at(2).toInt());
}

bool ResourceVersion::LeaveOutDeleted(CourseResources &resources, const QString &title)
{
    QStringList names;
    for (const Referred &referred : ReferredTables()) {
        const std::optional<QStringList> deleted = Deleted(resources.tree, referred);
        if (!deleted)
            return false;
        for (const QString &key : *deleted) {
            names.append(resources.tree.Find(key)->text);
            ResourceTree::Remove(resources.tree, key);
        }
    }
    names.removeDuplicates();
    TellLeftOut(names, title);
    return true;
}
