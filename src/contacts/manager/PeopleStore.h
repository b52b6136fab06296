#pragma once

#include <QSet>
#include <QStringList>

#include <functional>
#include <optional>

class ListModel;
class Progress;
class QWidget;

/// Where the picker's selected people go if that is more than a list on the screen. It is defined by
/// the subject that stores them: a course's students, an event's attendees, an assessment's candidates.
struct PeopleStore {
    /// The "?" keys of those who are stored now, whose place the selection takes; nothing on an error. Not
    /// set where nobody is stored yet.
    std::function<std::optional<QStringList>()> stored{};
    /// Makes `selected` those who are stored, with their names and addresses; `shown` is the caller's list.
    /// Not set where that list is what the selection starts with.
    std::function<void(const ListModel &shown, ListModel &selected, Progress &progress)> start{};
    /// Stores the selected people. `known` are those who were stored when the selection was drawn up. False
    /// leaves the picker open.
    std::function<bool(QWidget *picker, const ListModel &selected, const QSet<QString> &known)> take{};
};
