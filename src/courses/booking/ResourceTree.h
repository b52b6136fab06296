#pragma once

#include "controls/TreeModel.h"
#include "database/values/Keys.h"

#include <QString>

#include <compare>
#include <vector>

class ListModel;

/// Trees of events with their attendees, facilities, staff and venues: of the events of a course, or of one
/// that stands for every event of a series. Several nodes can be selected; the current one decides what the
/// others are selected for, so that a stray one of another kind takes no part.
namespace ResourceTree
{
/// What is added to the name of an attendee who is not on the course.
inline const QString notEnrolled = QStringLiteral(" [not enrolled]");

enum class Kind { None, Event, Attendance, Facilities, Staff, Venues, Role };

/// What a node's key says.
struct Node {
    Kind kind = Kind::None;    ///< of an item that of its branch
    EventRef eventRef{};       ///< none (0) where the node stands for every event
    int itemRef = 0;           ///< contact, facility or venue, below 0 a post that nobody fills; 0 = no item
    RoleTypeRef roleTypeRef{}; ///< of a role and its staff

    bool IsItem() const { return itemRef != 0; }
    // NOLINTNEXTLINE(modernize-use-nullptr): what it returns is compared with a zero by the compiler.
    friend auto operator<=>(const Node &, const Node &) = default;
};
Node Parse(const QString &key);
QString Key(const Node &node);

/// Adds an event with its empty branches to a tree that is filled.
TreeNode *AddEvent(TreeModel::Filling &filling, EventRef eventRef, const QString &text);
/// Adds an item to such an event. Staff come role by role, and the first of a role brings it.
void AddItem(TreeModel::Filling &filling, TreeNode *event, const Node &item, const QString &name,
             const QString &roleName);

/// Adds an event with an empty branch for each kind but `apartFrom`. Does nothing if it is there already.
void AddEvent(TreeModel &tree, EventRef eventRef, const QString &text, Kind apartFrom = Kind::None);
/// Adds a facility, venue or attendee to its branch, and a member of staff to his role. Null if it is there
/// already, or if there is no such branch.
TreeNode *AddItem(TreeModel &tree, const Node &item, const QString &name);
/// Adds a role to the staff of an event, unless it is there already.
void AddRole(TreeModel &tree, EventRef eventRef, RoleTypeRef roleTypeRef, const QString &name);
/// Removes a node with what is below it, and the role that has nobody left then.
void Remove(TreeModel &tree, const QString &key);

/// The events and the items, in the order of the tree.
std::vector<Node> Contents(const TreeModel &tree);
/// The node that the user is at; kind None without a selection.
Node Current(const TreeModel &tree);
/// The selected nodes of the current one's kind, and of its role where it is a role.
std::vector<Node> Chosen(const TreeModel &tree);
/// The events that the branches of that kind are selected of, by themselves or by anything in them; each
/// once.
std::vector<EventRef> ChosenEvents(const TreeModel &tree, Kind kind);

/// Adds the rows of a list ("!" and reference) to each selected branch of that kind.
void AddToChosen(TreeModel &tree, Kind kind, const ListModel &items);
/// Adds them as the staff of a role.
void AddStaffToChosen(TreeModel &tree, RoleTypeRef roleTypeRef, const QString &roleName,
                      const ListModel &staff);
/// Removes the chosen items, roles and events; of a chosen branch everything in it. What they were in, or the
/// next event, is selected then.
void RemoveChosen(TreeModel &tree);
/// Selects every node that is what the current one is: all events, all branches of its kind, all items of
/// that kind or all roles of its name.
void SelectAlike(TreeModel &tree);

/// Whether all `people` ("?" and reference) attended the event, and anybody at all.
bool HaveAttended(const TreeModel &tree, EventRef eventRef, const ListModel &people);
/// Adds them to those who attended the event, or removes everybody who did.
void SetAttended(TreeModel &tree, EventRef eventRef, const ListModel &people, bool attended);

/// Whether a tree that is to show only one kind (None = all) shows the node.
bool IsShown(const TreeNode &node, Kind only);
} // namespace ResourceTree
