#include "courses/record/ResourcesPage.h"

#include "contacts/manager/frmSelectContacts.h"
#include "contacts/record/frmAddContact.h"
#include "courses/booking/ResourcePanel.h"
#include "forms/fields/ModifiedMark.h"
#include "forms/frames/FormBuilder.h"

#include <QLayout>

namespace
{
using ResourceTree::Kind;
using ResourceTree::Node;

/// What is open and selected in a tree, to be shown again once the tree was read anew.
class TreeState final
{
public:
    explicit TreeState(const TreeModel &tree)
    {
        for (const TreeNode *node : tree.Nodes()) {
            if (node->expanded)
                m_open.append(node->key);
        }
        for (const TreeNode *node : tree.SelectedNodes())
            m_selected.append(node->key);
        if (const TreeNode *current = tree.Selected())
            m_current = current->key;
    }

    void Restore(TreeModel &tree) const
    {
        for (const QString &key : m_open) {
            if (TreeNode *node = tree.Find(key))
                tree.SetExpanded(node, true);
        }
        std::vector<const TreeNode *> selected;
        for (const QString &key : m_selected) {
            if (const TreeNode *node = tree.Find(key))
                selected.push_back(node);
        }
        const TreeNode *current = tree.Find(m_current);
        tree.Select(current);
        if (selected.empty())
            tree.SelectFirst();
        else
            tree.SelectAll(selected);
    }

private:
    QStringList m_open;
    QStringList m_selected;
    QString m_current;
};

/// The picker takes everybody for a guest.
void NameStudents(CourseResources &resources)
{
    for (TreeNode *node : resources.tree.Nodes()) {
        const Node one = ResourceTree::Parse(node->key);
        const bool isEnrolled = one.kind == Kind::Attendance && one.IsItem() &&
                                resources.enrolled.Contains(u'?' % SqlNumber(one.itemRef));
        if (isEnrolled && node->text.endsWith(ResourceTree::notEnrolled))
            resources.tree.SetText(node, node->text.chopped(ResourceTree::notEnrolled.size()));
    }
}
} // namespace

ResourcesPage::ResourcesPage(QWidget *parent)
    : QWidget(parent)
{
    m_panel = new ResourcePanel(m_resources.tree, &m_resources.enrolled);
    FormBuilder form(this);
    form.Place(m_panel, QStringLiteral("ResourcePanel"), {}, true);
    m_panel->layout()->setContentsMargins({});
    m_panel->SetHours([this](EventRef eventRef) { return m_resources.hours.value(eventRef); });
    connect(m_panel, &ResourcePanel::AttendeesAsked, this, &ResourcesPage::PickAttendees);
    connect(m_panel, &ResourcePanel::EventsAsked, this, &ResourcesPage::EventsAsked);
    connect(m_panel, &ResourcePanel::InfoAsked, this, &ResourcesPage::ShowInfo);
}

bool ResourcesPage::ShowEvents(CourseRef courseRef)
{
    const TreeState state(m_resources.tree);
    const bool isRead = ADO_Course_ShowStaffEvents(courseRef, m_resources);
    state.Restore(m_resources.tree);
    return isRead;
}

void ResourcesPage::SetEnrolled(const ListModel &students)
{
    std::vector<ListItem> people;
    people.reserve(static_cast<size_t>(students.Count()));
    for (int row = 0; row < students.Count(); ++row)
        people.push_back({students.At(row).key, students.At(row).text});
    m_resources.enrolled.Fill(std::move(people));
}

QString ResourcesPage::NameOf(EventRef eventRef) const
{
    const TreeNode *node = m_resources.tree.Find(ResourceTree::Key({Kind::Event, eventRef}));
    return node ? node->text : QString();
}

void ResourcesPage::Allow(bool change)
{
    m_panel->Allow(change);
}

void ResourcesPage::Watch(ModifiedMark &modified)
{
    modified.Watch(m_resources.tree);
}

void ResourcesPage::ShowInfo(const Node &node)
{
    if (node.kind == Kind::Event)
        emit EventAsked(node.eventRef);
    else
        frmAddContact::ShowRecords({u'?' % SqlNumber(node.itemRef)}, this);
}

void ResourcesPage::PickAttendees()
{
    frmSelectContacts picker(this);
    picker.Configure(frmSelectContacts::Mode::AddToTree, m_resources.tree);
    if (picker.Run() > 0)
        NameStudents(m_resources);
}
