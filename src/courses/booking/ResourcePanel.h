#pragma once

#include "controls/ComboModel.h"
#include "courses/booking/EventHours.h"
#include "courses/booking/ResourceTree.h"

#include <QWidget>

#include <functional>

class ListModel;
class QPushButton;
class QTimer;
class TreeModel;
class TreeView;

/// A tree of resources with what can be done to it: one kind shown alone, and buttons whose captions follow
/// the selected node. It changes nothing but the tree.
class ResourcePanel final : public QWidget
{
    Q_OBJECT

public:
    /// Of a course the tree has its events, and `enrolled` ("?" and reference) are its students. Null for a
    /// series, whose tree has one node for all events to come.
    ResourcePanel(TreeModel &tree, const ListModel *enrolled, QWidget *parent = nullptr);

    TreeView *View() const { return m_view; }
    /// Tells when an event of the tree takes place, so that who is free then can be said.
    void SetHours(std::function<EventHours(EventRef)> hoursOf) { m_hoursOf = std::move(hoursOf); }
    /// What the user's rights allow; a locked tree can still be looked through.
    void Allow(bool change);

signals:
    void EventsAsked();                             ///< to be added
    void AttendeesAsked();                          ///< to be added to the selected events
    void InfoAsked(const ResourceTree::Node &node); ///< about an event or a person

private:
    void Build();
    void KeepWidth();
    void Connect();
    void BindKeys();
    void ShowKind();
    void EnableButtons();
    void EnableAttended(const ResourceTree::Node &current);
    bool HaveAllAttended() const;
    void Add();
    void AddByDialog(ResourceTree::Kind kind);
    void OpenSelected();
    void Remove();
    void SelectAlike();
    void ToggleAttended();
    void ToggleAttendedAndGoDown();
    void OpenMenu(const QPoint &at);

    TreeModel &m_tree;
    const ListModel *m_enrolled;
    std::function<EventHours(EventRef)> m_hoursOf;
    ComboModel m_kinds;
    bool m_mayChange = true;
    TreeView *m_view = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_remove = nullptr;
    QPushButton *m_selectAll = nullptr;
    QPushButton *m_info = nullptr;
    QPushButton *m_attended = nullptr;
    QTimer *m_later = nullptr;
};
