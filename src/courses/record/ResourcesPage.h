#pragma once

#include "courses/record/ResourceTreeODBC.h"

#include <QWidget>

class ModifiedMark;
class ResourcePanel;

/// The "Resources && Attendance" tab: the events of a course with what is booked on them and who came. It is
/// stored with the course.
class ResourcesPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ResourcesPage(QWidget *parent = nullptr);

    /// Reads the tree of a saved course, with what was open and selected before. False on an error.
    bool ShowEvents(CourseRef courseRef);
    /// Those who are on the course now, by "?" keys.
    void SetEnrolled(const ListModel &students);
    QString NameOf(EventRef eventRef) const;
    CourseResources &Resources() { return m_resources; }
    /// What the user's rights allow; a locked tree can still be looked through.
    void Allow(bool change);
    void Watch(ModifiedMark &modified);

signals:
    void EventAsked(EventRef eventRef); ///< to be opened
    void EventsAsked();                 ///< to be added

private:
    void ShowInfo(const ResourceTree::Node &node);
    void PickAttendees();

    CourseResources m_resources;
    ResourcePanel *m_panel = nullptr;
};
