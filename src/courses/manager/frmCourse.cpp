#include "courses/manager/frmCourse.h"

#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "courses/lists/TreeViewFunc.h"
#include "courses/manager/CourseMenu.h"
#include "courses/manager/FolderModule.h"
#include "courses/manager/frmCategory.h"
#include "courses/record/frmAddCourse.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentModule.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormSize.h"
#include "forms/frames/OtherScreens.h"
#include "forms/lists/DeleteSelected.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QScopedValueRollback>

namespace
{
const QString treeFile = QStringLiteral("coursetree.tmp");

void ShowWaitCursor(bool isBusy)
{
    if (isBusy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

/// What a question before deleting a folder says of the courses that go with it.
QString GoesWithFolder(int courses)
{
    if (courses == 0)
        return {};
    return courses == 1 ? QStringLiteral("\n1 course is in no other folder and will be deleted.")
                        : QString(u'\n' % QString::number(courses) %
                                  u" courses are in no other folder and will be deleted.");
}
} // namespace

frmCourse::frmCourse(QWidget *parent)
    : QWidget(parent)
    , m_tree(ShowWaitCursor)
{
    setObjectName(QStringLiteral("frmCourse"));
    setWindowTitle(QStringLiteral("Course Manager"));
    FormSize::Remember(this);
    Build();
    BuildMenu();
    Connect();
    Form_Refresh();
}

frmCourse::~frmCourse()
{
    if (!m_tree.IsSimpleList())
        SaveExpandedNodes(m_tree.Nodes(), Directories::WrittenFile(treeFile));
}

void frmCourse::Build()
{
    FormBuilder form(this);
    form.BeginGroup(QStringLiteral("Available Course(s):"), QStringLiteral("Frame1"));
    m_list = form.Tree(QStringLiteral("CourseList"), {}, m_tree.Nodes());
    m_list->setAccessibleName(QStringLiteral("Courses"));
    m_list->SetEmptyText(QStringLiteral("No courses yet."));
    m_simpleList = form.Check(QStringLiteral("CheckView"), QStringLiteral("Simple List"));
    form.Beside();
    m_find = form.Text(QStringLiteral("ID_Find"), QStringLiteral("Find:"));
    form.EndGroup();
    m_status = form.Line(QStringLiteral("StatBar"), {});
    m_description = form.Notes(QStringLiteral("Description"), QStringLiteral("Description:"));
    LockFields(m_description, true);
    m_description->setMaximumHeight(
        qMax(m_description->minimumSizeHint().height(), m_description->fontMetrics().lineSpacing() * 5));
    BuildButtons(form);
}

void frmCourse::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_add = form.Button(QStringLiteral("AddBtn"), QStringLiteral("&New Course"));
    m_addFolder = form.Button(QStringLiteral("AddCat"), QStringLiteral("New &Folder"));
    m_edit = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit/View"));
    m_delete = form.Button(QStringLiteral("DelBtn"), QStringLiteral("&Delete"));
    form.EndButtons();
    form.BeginButtons(FormBuilder::Align::Start);
    m_expand = form.Button(QStringLiteral("ExpandBtn"), QStringLiteral("Expand"));
    m_collapse = form.Button(QStringLiteral("CollaspeBtn"), QStringLiteral("Collapse"));
    m_refresh = form.Button(QStringLiteral("RefBtn"), QStringLiteral("Refresh"));
    m_reports = form.Button(QStringLiteral("RepBtn"), QStringLiteral("Reports"));
    form.Gap();
    m_exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
}

void frmCourse::Connect()
{
    connect(m_add, &QPushButton::clicked, this, &frmCourse::AddCourse);
    connect(m_addFolder, &QPushButton::clicked, this, &frmCourse::AddFolder);
    connect(m_edit, &QPushButton::clicked, this, &frmCourse::Edit);
    connect(m_delete, &QPushButton::clicked, this, &frmCourse::Delete);
    connect(m_expand, &QPushButton::clicked, this,
            [this] { Run([this] { ExpandAllNodes(m_tree.Nodes()); }); });
    connect(m_collapse, &QPushButton::clicked, this,
            [this] { Run([this] { CollapseAllNodes(m_tree.Nodes()); }); });
    connect(m_refresh, &QPushButton::clicked, this, &frmCourse::Refresh);
    connect(m_reports, &QPushButton::clicked, this,
            [this] { OtherScreens::Installed().courseReports(this); });
    connect(m_exit, &QPushButton::clicked, this, [this] {
        auto *frame = qobject_cast<QMdiSubWindow *>(parentWidget());
        frame ? frame->close() : close();
    });
    connect(m_simpleList, &QCheckBox::toggled, this, &frmCourse::ChooseView);
    connect(m_find, &QLineEdit::returnPressed, this, &frmCourse::Find);
    connect(m_list, &TreeView::Opened, this, [this](TreeNode *node) {
        if (CourseNode::IsCourse(node))
            m_edit->click();
        else
            m_tree.Nodes().SetExpanded(node, !node->expanded);
    });
    connect(m_list, &TreeView::DeletePressed, m_delete, &QPushButton::click);
    connect(m_tree.Nodes().Selection(), &QItemSelectionModel::selectionChanged, this, &frmCourse::ClickNode);
    // The editor is closed first: a box about the new text would take the focus from it.
    connect(
        &m_tree.Nodes(), &TreeModel::TextAsked, this,
        [this](const QString &key, const QString &text) { Run([&, this] { m_tree.Rename(key, text); }); },
        Qt::QueuedConnection);
}

void frmCourse::Form_Refresh()
{
    m_tree.Forget();
    Relist(Directories::WrittenFile(treeFile));
}

void frmCourse::Refresh()
{
    if (!m_tree.IsSimpleList())
        SaveExpandedNodes(m_tree.Nodes(), treeFile);
    Relist(treeFile);
}

void frmCourse::ChooseView()
{
    // The simple list has no folders to remember.
    if (!m_tree.IsSimpleList())
        SaveExpandedNodes(m_tree.Nodes(), treeFile);
    m_tree.SetSimpleList(m_simpleList->isChecked());
    m_list->setRootIsDecorated(!m_tree.IsSimpleList());
    Relist(treeFile);
}

void frmCourse::Relist(const QString &openFolders)
{
    Run([&, this] {
        m_tree.Fill();
        if (!m_tree.IsSimpleList())
            RestoreExpandedNodes(m_tree.Nodes(), openFolders);
    });
    m_list->ShowNode(m_tree.Nodes().Selected());
}

void frmCourse::Run(const Command &command)
{
    {
        const QScopedValueRollback quiet(m_quiet, true);
        command();
    }
    ClickNode();
}

void frmCourse::ClickNode()
{
    if (m_quiet)
        return;
    const QScopedValueRollback quiet(m_quiet, true);
    const CourseTree::Details selected = m_tree.ReadSelected();
    m_description->setPlainText(selected.description);
    m_status->setText(selected.status);
    ApplyRights();
}

void frmCourse::ApplyRights()
{
    const Level level = UserRight(Right::Courses);
    const bool isNode = m_tree.Nodes().Selected();
    const bool hasFolders = !m_tree.IsSimpleList();
    m_add->setEnabled(level >= Level::Add);
    EnableButton(m_addFolder, hasFolders && level >= Level::Edit, m_list);
    EnableButton(m_edit, isNode && level >= Level::View, m_list);
    EnableButton(m_delete, isNode && level >= Level::Full, m_list);
    EnableButton(m_expand, hasFolders, m_list);
    EnableButton(m_collapse, hasFolders, m_list);
    m_reports->setEnabled(UserMay(Right::CourseReports, Level::Full));
}

void frmCourse::Find()
{
    Run([this] { FindNode(m_tree.Nodes(), m_find->text()); });
    m_list->ShowNode(m_tree.Nodes().Selected());
}

void frmCourse::EditSelected()
{
    const TreeNode *node = m_tree.Nodes().Selected();
    m_list->ShowNode(node);
    if (node)
        m_list->EditText(node);
}

void frmCourse::AddCourse()
{
    frmAddCourse form(this);
    form.NewCourse(m_tree.Location());
    const int stored = form.Run();
    if (stored < 1)
        return;
    Run([&, this] { m_tree.ShowCourse(CourseRef(stored), form.CourseTitle()); });
    m_list->ShowNode(m_tree.Nodes().Selected());
}

void frmCourse::AddFolder()
{
    frmCategory form(Course_FolderStore(m_tree.Nodes()), this);
    form.NewFolder(m_tree.Location());
    form.Run();
    ClickNode();
}

void frmCourse::NewFolder(bool atRoot)
{
    bool isNew = false;
    Run([&, this] { isNew = m_tree.NewFolder(atRoot); });
    if (isNew)
        EditSelected();
}

void frmCourse::Edit()
{
    const TreeNode *node = m_tree.Nodes().Selected();
    if (const CourseRef courseRef = CourseNode::CourseOf(node))
        EditCourse(courseRef);
    else if (node)
        EditFolder(CourseNode::FolderOf(node));
}

void frmCourse::EditCourse(CourseRef courseRef)
{
    Run([&, this] {
        frmAddCourse form(this);
        if (ADO_Course_Description(courseRef) && form.EditCourse(courseRef) && form.Run() > 0)
            m_tree.ShowCourse(courseRef, form.CourseTitle());
    });
    m_list->ShowNode(m_tree.Nodes().Selected());
}

void frmCourse::EditFolder(FolderRef folderRef)
{
    Run([&, this] {
        if (ADO_Course_CheckFolder(folderRef).IsMissing())
            return;
        frmCategory form(Course_FolderStore(m_tree.Nodes()), this);
        form.EditFolder(folderRef);
        TreeNode *node = form.Run() > 0 ? m_tree.Nodes().Find(CourseNode::KeyOf(folderRef)) : nullptr;
        if (node)
            m_tree.Nodes().SetText(node, form.FolderName());
    });
}

void frmCourse::Delete()
{
    const TreeNode *node = m_tree.Nodes().Selected();
    if (!node)
        return;
    const CourseRef courseRef = CourseNode::CourseOf(node);
    const bool may =
        courseRef
            ? MayDelete(u"course '" % node->text % u'\'', Course_EnrolledText(courseRef))
            : Dialogs::MsgBox(u"Are you sure you want to remove '" % node->text % u"' and all its contents?" %
                                  GoesWithFolder(m_tree.CoursesOnlyIn(node)),
                              QStringLiteral("Confirm Deletion"), Dialogs::Buttons::YesNo,
                              Dialogs::Icon::Question, Dialogs::Answer::No) == Dialogs::Answer::Yes;
    Run([&, this] {
        if (may)
            m_tree.DeleteSelected();
    });
}

void frmCourse::PasteDuplicate()
{
    bool isNew = false;
    Run([&, this] { isNew = m_tree.PasteDuplicate(); });
    if (isNew)
        EditSelected();
}
