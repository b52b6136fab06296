#include "courses/booking/ResourcePanel.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "courses/booking/frmSelectFacilities.h"
#include "courses/booking/frmSelectStaff.h"
#include "courses/booking/frmSelectVenues.h"
#include "forms/fields/FieldLock.h"
#include "forms/fields/FormKeys.h"
#include "forms/frames/FormBuilder.h"

#include <QMenu>
#include <QShortcut>
#include <QTimer>

#include <algorithm>

namespace
{
using ResourceTree::Kind;
using ResourceTree::Node;

struct Captions {
    QString add;
    QString what;   ///< that are removed, and selected together
    QString info{}; ///< "" = nothing to tell
};

/// A role is named by its node, whose name may be of any length.
Captions CaptionsOf(const Node &node, const QString &roleName)
{
    switch (node.kind) {
    case Kind::Attendance:
        return {QStringLiteral("Other"), QStringLiteral("Attendees"), QStringLiteral("Contact &Info")};
    case Kind::Facilities:
        return {QStringLiteral("Facilities"), QStringLiteral("Facilities")};
    case Kind::Staff:
        return {QStringLiteral("Staff"), QStringLiteral("Staff"), QStringLiteral("Contact &Info")};
    case Kind::Venues:
        return {QStringLiteral("Venues"), QStringLiteral("Venues")};
    case Kind::Role:
        return {roleName, roleName};
    default:
        return {QStringLiteral("Events"), QStringLiteral("Events"), QStringLiteral("Event &Info")};
    }
}

QString ButtonName(const TreeNode *node, const QFontMetrics &metrics)
{
    constexpr int mostChars = 10; // as many as "Attendees" has
    return node ? metrics.elidedText(node->text, Qt::ElideRight, mostChars * metrics.averageCharWidth())
                      .replace(u'&', QStringLiteral("&&"))
                : QString();
}
} // namespace

ResourcePanel::ResourcePanel(TreeModel &tree, const ListModel *enrolled, QWidget *parent)
    : QWidget(parent)
    , m_tree(tree)
    , m_enrolled(enrolled)
    , m_later(new QTimer(this))
{
    m_later->setSingleShot(true);
    m_kinds.Add(QStringLiteral("All Items"), static_cast<int>(Kind::None));
    if (m_enrolled)
        m_kinds.Add(QStringLiteral("Attendance Only"), static_cast<int>(Kind::Attendance));
    m_kinds.Add(QStringLiteral("Facilities Only"), static_cast<int>(Kind::Facilities));
    m_kinds.Add(QStringLiteral("Staff Only"), static_cast<int>(Kind::Staff));
    m_kinds.Add(QStringLiteral("Venues Only"), static_cast<int>(Kind::Venues));
    m_kinds.SetCurrent(0);
    Build();
    Connect();
    BindKeys();
    EnableButtons();
}

void ResourcePanel::Build()
{
    FormBuilder form(this);
    ComboBox *kinds = form.Combo(QStringLiteral("ShowEventList"), QStringLiteral("&Show:"), m_kinds);
    connect(kinds, &QComboBox::activated, this, &ResourcePanel::ShowKind);
    form.Beside();
    QPushButton *expand = form.Button(QStringLiteral("ExpandBtn"), QStringLiteral("Ex&pand"));
    form.Beside();
    QPushButton *collapse = form.Button(QStringLiteral("CollaspeBtn"), QStringLiteral("&Collapse"));
    m_view = form.Tree(QStringLiteral("ResourceList"), {}, m_tree);
    m_view->setAccessibleName(QStringLiteral("Resources and attendance"));
    m_view->AllowSeveral();
    m_view->SetEmptyText(QStringLiteral("This course has no events yet."));
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    form.BeginButtons(FormBuilder::Align::Start);
    m_add = form.Button(QStringLiteral("AddResourceBtn"), QStringLiteral("&Add Events"));
    m_remove = form.Button(QStringLiteral("DeleteResourceBtn"), QStringLiteral("&Remove"));
    m_selectAll = form.Button(QStringLiteral("SelectAllResourceBtn"), QStringLiteral("Select A&ll"));
    if (m_enrolled) {
        m_info = form.Button(QStringLiteral("ViewResourceBtn"), QStringLiteral("Event &Info"));
        m_attended = form.Button(QStringLiteral("MiscResourceBtn"), QStringLiteral("All a&ttended"));
    }
    form.EndButtons();
    KeepWidth();
    connect(expand, &QPushButton::clicked, this, [this] { m_view->SetAllExpanded(true); });
    connect(collapse, &QPushButton::clicked, this, [this] { m_view->SetAllExpanded(false); });
}

/// The form must not grow with the captions of what is selected.
void ResourcePanel::KeepWidth()
{
    m_selectAll->setText(QStringLiteral("Select A&ll Attendees"));
    m_selectAll->setMinimumWidth(m_selectAll->sizeHint().width());
    for (QPushButton *button : {m_info, m_attended}) {
        if (!button)
            continue;
        QSizePolicy policy = button->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        button->setSizePolicy(policy);
    }
}

void ResourcePanel::Connect()
{
    connect(m_add, &QPushButton::clicked, this, &ResourcePanel::Add);
    connect(m_remove, &QPushButton::clicked, this, &ResourcePanel::Remove);
    connect(m_selectAll, &QPushButton::clicked, this, &ResourcePanel::SelectAlike);
    connect(m_view, &TreeView::DeletePressed, m_remove, &QPushButton::click);
    connect(m_view, &QWidget::customContextMenuRequested, this, &ResourcePanel::OpenMenu);
    if (m_enrolled) {
        const auto tell = [this] { emit InfoAsked(ResourceTree::Current(m_tree)); };
        connect(m_info, &QPushButton::clicked, this, tell);
        connect(m_view, &TreeView::Opened, m_info, &QPushButton::click);
        connect(m_attended, &QPushButton::clicked, this, &ResourcePanel::ToggleAttended);
    }
    connect(m_tree.Selection(), &QItemSelectionModel::selectionChanged, this, &ResourcePanel::EnableButtons);
    // A tree that is filled changes thousands of times.
    connect(&m_tree, &TreeModel::Changed, m_later, [this] { m_later->start(0); });
    connect(m_later, &QTimer::timeout, this, &ResourcePanel::EnableButtons);
}

void ResourcePanel::BindKeys()
{
    FormKeys::Bind(m_view, Qt::Key_Insert, m_add, QStringLiteral("Add to what is selected"));
    FormKeys::Bind(m_view, QKeySequence::SelectAll, m_selectAll,
                   QStringLiteral("Select everything like what is selected"));
    m_remove->setToolTip(QStringLiteral("Remove what is selected (Del)"));
    if (!m_enrolled)
        return;
    m_attended->setToolTip(QStringLiteral("Everybody on the course came, or nobody (Space: and go down)"));
    auto *space = new QShortcut(Qt::Key_Space, m_view);
    space->setContext(Qt::WidgetShortcut);
    connect(space, &QShortcut::activated, this, &ResourcePanel::ToggleAttendedAndGoDown);
}

void ResourcePanel::Allow(bool change)
{
    m_mayChange = change;
    EnableButtons();
}

void ResourcePanel::ShowKind()
{
    const auto only = static_cast<Kind>(m_kinds.CurrentData());
    m_view->ShowOnly([only](const TreeNode &node) { return ResourceTree::IsShown(node, only); });
}

void ResourcePanel::EnableButtons()
{
    const Node current = ResourceTree::Current(m_tree);
    const Captions captions = CaptionsOf(current, ButtonName(m_tree.Selected(), fontMetrics()));
    const bool isOfEvents = current.kind == Kind::None || current.kind == Kind::Event;
    const bool isOneEvent = current.kind == Kind::Event && ResourceTree::Chosen(m_tree).size() == 1;
    m_add->setText(u"&Add " % captions.add);
    m_remove->setText(isOneEvent ? QStringLiteral("&Remove Event") : QString(u"&Remove " % captions.what));
    m_selectAll->setText(u"Select A&ll " % captions.what);
    const bool isSelected = current.kind != Kind::None;
    // The node for all events of a series is there for its branches.
    EnableButton(m_add, m_mayChange && (m_enrolled || !isOfEvents), m_view);
    EnableButton(m_remove, m_mayChange && isSelected && (m_enrolled || !isOfEvents), m_view);
    EnableButton(m_selectAll, isSelected && (m_enrolled || !isOfEvents), m_view);
    if (!m_enrolled)
        return;
    m_info->setVisible(!captions.info.isEmpty());
    m_info->setText(captions.info);
    EnableButton(m_info, current.kind == Kind::Event || current.itemRef > 0, m_view);
    EnableAttended(current);
}

void ResourcePanel::EnableAttended(const Node &current)
{
    const bool isOfAttendance = current.kind == Kind::Attendance;
    m_attended->setVisible(isOfAttendance);
    if (!isOfAttendance)
        return;
    const bool haveAll = HaveAllAttended();
    m_attended->setText(haveAll ? QStringLiteral("None a&ttended") : QStringLiteral("All a&ttended"));
    EnableButton(m_attended, m_mayChange && (haveAll || !m_enrolled->IsEmpty()), m_view);
}

bool ResourcePanel::HaveAllAttended() const
{
    return std::ranges::all_of(ResourceTree::ChosenEvents(m_tree, Kind::Attendance), [this](EventRef event) {
        return ResourceTree::HaveAttended(m_tree, event, *m_enrolled);
    });
}

void ResourcePanel::Add()
{
    const Kind kind = ResourceTree::Current(m_tree).kind;
    if (kind == Kind::Attendance)
        emit AttendeesAsked();
    else if (kind == Kind::None || kind == Kind::Event)
        emit EventsAsked();
    else
        AddByDialog(kind);
    EnableButtons();
}

void ResourcePanel::AddByDialog(Kind kind)
{
    const Node current = ResourceTree::Current(m_tree);
    const auto events = ResourceTree::ChosenEvents(m_tree, kind == Kind::Role ? Kind::Staff : kind);
    SelectTarget target{m_tree};
    if (m_hoursOf && events.size() == 1) {
        target.eventRef = events.front();
        target.hours = m_hoursOf(target.eventRef);
    }
    if (kind == Kind::Facilities)
        frmSelectFacilities(target, this).Run();
    else if (kind == Kind::Venues)
        frmSelectVenues(target, this).Run();
    else
        frmSelectStaff(target, current.roleTypeRef, this).Run();
    OpenSelected();
}

/// So that what was added is seen.
void ResourcePanel::OpenSelected()
{
    for (TreeNode *node : m_tree.SelectedNodes()) {
        m_tree.SetExpanded(node, true);
        for (const auto &child : node->children)
            m_tree.SetExpanded(child.get(), true);
    }
}

void ResourcePanel::Remove()
{
    ResourceTree::RemoveChosen(m_tree);
    EnableButtons();
}

void ResourcePanel::SelectAlike()
{
    ResourceTree::SelectAlike(m_tree);
    for (const TreeNode *node : m_tree.SelectedNodes())
        m_view->OpenAbove(node);
}

void ResourcePanel::ToggleAttended()
{
    const bool attended = !HaveAllAttended();
    for (const EventRef event : ResourceTree::ChosenEvents(m_tree, Kind::Attendance))
        ResourceTree::SetAttended(m_tree, event, *m_enrolled, attended);
    OpenSelected();
    EnableButtons();
}

/// So that a whole term can be ticked by one key.
void ResourcePanel::ToggleAttendedAndGoDown()
{
    if (!m_attended->isVisible() || !m_attended->isEnabled())
        return;
    const EventRef event = ResourceTree::Current(m_tree).eventRef;
    m_attended->click();
    bool isPast = false;
    for (const TreeNode *node : m_tree.Nodes()) {
        const Node one = ResourceTree::Parse(node->key);
        if (isPast && one.kind == Kind::Attendance && one.eventRef != event) {
            m_tree.Select(node);
            m_view->ShowNode(node);
            return;
        }
        isPast = isPast || one.eventRef == event;
    }
}

void ResourcePanel::OpenMenu(const QPoint &at)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("ResourceMenu"));
    for (QPushButton *button : {m_add, m_remove, m_selectAll, m_info, m_attended}) {
        if (button && button->isVisible())
            menu.addAction(button->text(), button, &QPushButton::click)->setEnabled(button->isEnabled());
    }
    menu.exec(m_view->viewport()->mapToGlobal(at));
}
