#include "courses/manager/frmCourse.h"

#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "courses/record/CourseModule.h"
#include "courses/record/frmAddCourse.h"
#include "database/statements/Security.h"
#include "database/values/GlobalCode.h"
#include "enrolment/EnrolmentModule.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormSize.h"
#include "forms/frames/OtherScreens.h"
#include "forms/lists/DeleteSelected.h"
#include "platform/desktop/Dialogs.h"

#include <QMdiSubWindow>
#include <QMenu>
#include <QScopedValueRollback>

#include <algorithm>

namespace
{
bool IsCourse(const TreeNode *node)
{
    return node && node->key.startsWith(u'?');
}
} // namespace

frmCourse::frmCourse(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmCourse"));
    setWindowTitle(QStringLiteral("Course Manager"));
    FormSize::Remember(this);
    Build();
    BuildMenu();
    Connect();
    Form_Refresh();
}

void frmCourse::Build()
{
    FormBuilder form(this);
    form.BeginGroup(QStringLiteral("Available Course(s):"), QStringLiteral("Frame1"));
    m_list = form.Tree(QStringLiteral("CourseList"), {}, m_courses);
    m_list->setAccessibleName(QStringLiteral("Courses"));
    m_list->setRootIsDecorated(false);
    m_list->SetEmptyText(QStringLiteral("No courses yet."));
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_simpleList = form.Check(QStringLiteral("CheckView"), QStringLiteral("Simple List"));
    m_simpleList->setChecked(true);
    m_simpleList->setEnabled(false);
    form.EndGroup();
    m_status = form.Line(QStringLiteral("StatBar"), {});
    m_description = form.Notes(QStringLiteral("Description"), QStringLiteral("Description:"));
    LockFields(m_description, true);
    m_description->setMaximumHeight(m_description->fontMetrics().lineSpacing() * 5);
    BuildButtons(form);
}

void frmCourse::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_add = form.Button(QStringLiteral("AddBtn"), QStringLiteral("&New Course"));
    QPushButton *folder = form.Button(QStringLiteral("AddCat"), QStringLiteral("New &Folder"));
    m_edit = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit/View"));
    m_delete = form.Button(QStringLiteral("DelBtn"), QStringLiteral("&Delete"));
    form.EndButtons();
    form.BeginButtons(FormBuilder::Align::Start);
    QPushButton *expand = form.Button(QStringLiteral("ExpandBtn"), QStringLiteral("Expand"));
    QPushButton *collapse = form.Button(QStringLiteral("CollaspeBtn"), QStringLiteral("Collapse"));
    m_refresh = form.Button(QStringLiteral("RefBtn"), QStringLiteral("Refresh"));
    m_reports = form.Button(QStringLiteral("RepBtn"), QStringLiteral("Reports"));
    form.Gap();
    m_exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    // Folders are not shown in the simple list.
    for (QPushButton *button : {folder, expand, collapse})
        button->setEnabled(false);
}

void frmCourse::BuildMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("ID_Folder"));
    const auto tool = [this](const QString &name, const QString &caption, QPushButton *same = nullptr) {
        QAction *action = m_menu->addAction(caption);
        action->setObjectName(name);
        action->setEnabled(same != nullptr);
        if (!same)
            return;
        connect(action, &QAction::triggered, same, &QPushButton::click);
        connect(m_menu, &QMenu::aboutToShow, action,
                [action, same] { action->setEnabled(same->isEnabled()); });
    };
    tool(QStringLiteral("ID_NewRootFolder"), QStringLiteral("Root Folder"));
    tool(QStringLiteral("ID_NewFolder"), QStringLiteral("Folder"));
    tool(QStringLiteral("ID_SubItem"), QStringLiteral("Course\tCtrl+N"), m_add);
    m_menu->addSeparator();
    tool(QStringLiteral("ID_Cut"), QStringLiteral("Cut"));
    tool(QStringLiteral("ID_Copy"), QStringLiteral("Copy"));
    tool(QStringLiteral("ID_Paste"), QStringLiteral("Paste"));
    tool(QStringLiteral("ID_PasteRoot"), QStringLiteral("Paste on Root"));
    tool(QStringLiteral("ID_PasteDuplicate"), QStringLiteral("Paste Duplicate"));
    tool(QStringLiteral("ID_DuplicateOptions"), QStringLiteral("Duplicate Options"));
    m_menu->addSeparator();
    tool(QStringLiteral("ID_Edit"), QStringLiteral("Edit/View"), m_edit);
    tool(QStringLiteral("ID_DeleteLink"), QStringLiteral("Delete Link"));
    tool(QStringLiteral("ID_Delete"), QStringLiteral("Delete"), m_delete);
    tool(QStringLiteral("ID_Rename"), QStringLiteral("Rename"));
    m_menu->addSeparator();
    tool(QStringLiteral("ID_Refresh"), QStringLiteral("Refresh\tF5"), m_refresh);
}

void frmCourse::Connect()
{
    connect(m_add, &QPushButton::clicked, this, &frmCourse::AddCourse);
    connect(m_edit, &QPushButton::clicked, this, &frmCourse::EditCourse);
    connect(m_delete, &QPushButton::clicked, this, &frmCourse::DeleteCourse);
    connect(m_refresh, &QPushButton::clicked, this, &frmCourse::Refresh);
    connect(m_reports, &QPushButton::clicked, this,
            [this] { OtherScreens::Installed().courseReports(this); });
    connect(m_exit, &QPushButton::clicked, this, [this] {
        auto *frame = qobject_cast<QMdiSubWindow *>(parentWidget());
        frame ? frame->close() : close();
    });
    connect(m_list, &TreeView::Opened, m_edit, &QPushButton::click);
    connect(m_list, &TreeView::DeletePressed, m_delete, &QPushButton::click);
    connect(m_list, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { m_menu->popup(m_list->viewport()->mapToGlobal(at)); });
    connect(m_courses.Selection(), &QItemSelectionModel::selectionChanged, this, &frmCourse::ClickNode);
}

void frmCourse::Form_Refresh()
{
    Refresh();
}

void frmCourse::Refresh()
{
    {
        const QScopedValueRollback quiet(m_quiet, true);
        ADO_Course_FillCourseList(m_courses, m_simpleList->isChecked(), false);
    }
    ClickNode();
}

void frmCourse::ApplyRights()
{
    const Level level = UserRight(Right::Courses);
    const bool isCourse = SelectedCourse() > 0;
    m_add->setEnabled(level >= Level::Add);
    EnableButton(m_edit, isCourse && level >= Level::View, m_list);
    EnableButton(m_delete, isCourse && level >= Level::Full, m_list);
    m_reports->setEnabled(UserMay(Right::CourseReports, Level::Full));
}

int frmCourse::SelectedCourse() const
{
    const TreeNode *node = m_courses.Selected();
    return IsCourse(node) ? KeyNumber(node->key) : 0;
}

void frmCourse::ClickNode()
{
    if (m_quiet)
        return;
    const QScopedValueRollback quiet(m_quiet, true);
    while (const CourseRef courseRef = CourseRef(SelectedCourse())) {
        if (const std::optional<QString> description = ADO_Course_Description(courseRef)) {
            m_description->setPlainText(*description);
            m_status->setText(m_courses.Selected()->text % u" (Course)");
            break;
        }
        Dialogs::MsgBox(QStringLiteral("Course has been deleted."), QStringLiteral("Courses"));
        RemoveNodes(courseRef);
    }
    if (!m_courses.Selected()) {
        m_description->clear();
        m_status->clear();
    }
    ApplyRights();
}

std::vector<TreeNode *> frmCourse::NodesOf(CourseRef courseRef) const
{
    std::vector<TreeNode *> nodes = m_courses.Nodes();
    std::erase_if(nodes, [courseRef](const TreeNode *node) {
        return !IsCourse(node) || CourseRef(KeyNumber(node->key)) != courseRef;
    });
    return nodes;
}

/// Removes the course from the tree and selects the node that takes its place.
void frmCourse::RemoveNodes(CourseRef courseRef)
{
    const QScopedValueRollback quiet(m_quiet, true);
    const QModelIndex at = m_courses.IndexOf(m_courses.Selected());
    const int row = at.row();
    const QPersistentModelIndex parent(at.parent());
    for (const TreeNode *node : NodesOf(courseRef))
        m_courses.Remove(QString(node->key));
    const int rows = m_courses.rowCount(parent);
    if (rows > 0)
        m_courses.Select(m_courses.NodeAt(m_courses.index(std::clamp(row, 0, rows - 1), 0, parent)));
}

void frmCourse::AddCourse()
{
    frmAddCourse form(this);
    form.NewCourse(QStringLiteral("!0"));
    const int stored = form.Run();
    if (stored < 1)
        return;
    TreeNode node{u'?' % SqlNumber(stored), form.CourseTitle()};
    node.image = QStringLiteral("card");
    const TreeNode *added = m_courses.Add({}, std::move(node));
    m_list->ShowNode(added);
    // A course that is gone again by now leaves the tree as it is selected.
    m_courses.Select(added);
}

void frmCourse::EditCourse()
{
    const CourseRef courseRef(SelectedCourse());
    frmAddCourse form(this);
    if (!courseRef || !ADO_Course_Description(courseRef) || !form.EditCourse(courseRef)) {
        ClickNode();
        return;
    }
    if (form.Run() > 0) {
        for (TreeNode *node : NodesOf(courseRef))
            m_courses.SetText(node, form.CourseTitle());
    }
    ClickNode();
}

void frmCourse::DeleteCourse()
{
    const CourseRef courseRef(SelectedCourse());
    if (!courseRef)
        return;
    const bool may =
        MayDelete(u"course '" % m_courses.Selected()->text % u'\'', Course_EnrolledText(courseRef));
    if (may && ADO_Course_DeleteCourse(courseRef))
        RemoveNodes(courseRef);
    ClickNode();
}
