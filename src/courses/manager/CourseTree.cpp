#include "courses/manager/CourseTree.h"

#include "core/session/Session.h"
#include "courses/lists/TreeViewFunc.h"
#include "courses/manager/DuplicateModule.h"
#include "courses/manager/FolderModule.h"
#include "courses/record/CourseModule.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"

#include <QSet>

#include <algorithm>

namespace
{
constexpr int longestText = 100;

const QString coursesTitle = QStringLiteral("Courses");

/// For as long as it lives, the user is shown that the program is busy.
class Busy final
{
public:
    explicit Busy(const std::function<void(bool)> &show)
        : m_show(show)
    {
        m_show(true);
    }
    ~Busy() { m_show(false); }
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

private:
    const std::function<void(bool)> &m_show;
};

QStringList KeysOf(const std::vector<TreeNode *> &nodes)
{
    QStringList keys;
    for (const TreeNode *node : nodes)
        keys += node->key;
    return keys;
}

bool IsInside(const TreeNode *node, const TreeNode *folder)
{
    while (node && node != folder)
        node = node->parent;
    return node;
}
} // namespace

CourseTree::CourseTree(std::function<void(bool)> showBusy)
    : m_showBusy(std::move(showBusy))
{
    m_nodes.SetEditable(true);
}

void CourseTree::Forget()
{
    m_clipboard.Clear();
    m_lost.clear();
}

void CourseTree::Fill()
{
    const TreeNode *before = m_nodes.Selected();
    const QString key = before ? before->key : QString();
    const CourseRef courseRef = CourseNode::CourseOf(before);
    const QStringList lost = m_isSimpleList ? QStringList() : ADO_Course_ShowFolders(m_nodes, false, false);
    ADO_Course_FillCourseList(m_nodes, m_isSimpleList, false);
    if (courseRef)
        SelectCourse(courseRef, key);
    else if (const TreeNode *node = m_nodes.Find(key))
        m_nodes.Select(node);
    if (m_isSimpleList || lost == m_lost)
        return;
    m_lost = lost;
    TellNames(QStringLiteral("These folders cannot be shown, since the folder that they are in is missing. "
                             "Courses that are in no other folder are listed at root level."),
              lost, coursesTitle);
}

CourseTree::Details CourseTree::ReadSelected()
{
    while (const TreeNode *node = m_nodes.Selected()) {
        const bool atRoot = CourseNode::IsAtRoot(node);
        if (const CourseRef courseRef = CourseNode::CourseOf(node)) {
            if (const std::optional<QString> description = ADO_Course_Description(courseRef))
                return {*description, node->text % (atRoot ? u" (Course)" : u" (Course in Folder)")};
            Dialogs::Tell(QStringLiteral("Course has been deleted."), coursesTitle);
            RemoveCourse(courseRef);
            continue;
        }
        const ReadRow<FolderTree::Folder> folder = ADO_Course_CheckFolder(CourseNode::FolderOf(node));
        if (!folder.IsMissing())
            return {folder ? folder->description : QString(),
                    node->text % (atRoot ? u" (Root Folder)" : u" (Sub Folder)")};
        Dialogs::Tell(QStringLiteral("Folder has been deleted."), coursesTitle);
        Remove({node->key});
    }
    return {};
}

int CourseTree::CoursesOnlyIn(const TreeNode *folder) const
{
    QSet<CourseRef> inside;
    QSet<CourseRef> outside;
    for (const TreeNode *node : m_nodes.Nodes()) {
        if (CourseNode::IsCourse(node))
            (IsInside(node, folder) ? inside : outside).insert(CourseNode::CourseOf(node));
    }
    return static_cast<int>((inside - outside).size());
}

QString CourseTree::Location() const
{
    return CourseNode::KeyOf(CourseNode::FolderOf(m_nodes.Selected()));
}

void CourseTree::ShowCourse(CourseRef courseRef, const QString &title)
{
    const TreeNode *selected = m_nodes.Selected();
    const QString key = selected ? selected->key : QString();
    for (const QString &old : KeysOf(CourseNode::NodesOf(m_nodes, courseRef)))
        m_nodes.Remove(old);
    AddNodes(courseRef, title);
    SelectCourse(courseRef, key);
}

const TreeNode *CourseTree::NewFolder(bool atRoot)
{
    const FolderRef parent = atRoot ? FolderRef(0) : CourseNode::FolderOf(m_nodes.Selected());
    if (!IsThere(parent))
        return nullptr;
    QString label;
    const FolderRef folderRef(Course_NewFolder(parent, label));
    if (!folderRef)
        return nullptr;
    AddFolderNode(m_nodes, folderRef, label, parent);
    const TreeNode *node = m_nodes.Find(CourseNode::KeyOf(folderRef));
    m_nodes.Select(node);
    return node;
}

void CourseTree::Rename(const QString &key, const QString &text)
{
    TreeNode *node = m_nodes.Find(key);
    if (!node)
        return;
    const QString cut = text.left(longestText);
    if (const CourseRef courseRef = CourseNode::CourseOf(node))
        RenameCourse(courseRef, cut);
    else if (Course_RenameFolder(cut, CourseNode::FolderOf(node), CourseNode::PlaceOf(node)) > 0)
        m_nodes.SetText(node, cut);
}

void CourseTree::RenameCourse(CourseRef courseRef, const QString &text)
{
    // The first course is renamed, but keeps its text here until the tree is listed again.
    constexpr int firstCourse = 1;
    if (Course_Rename(text, courseRef) <= firstCourse)
        return;
    for (TreeNode *node : CourseNode::NodesOf(m_nodes, courseRef))
        m_nodes.SetText(node, text);
}

void CourseTree::DeleteSelected()
{
    const TreeNode *node = m_nodes.Selected();
    if (!node)
        return;
    const Busy busy(m_showBusy);
    if (const CourseRef courseRef = CourseNode::CourseOf(node)) {
        if (ADO_Course_DeleteCourse(courseRef))
            RemoveCourse(courseRef);
        return;
    }
    const QString key = node->key;
    if (Course_DeleteFolder(CourseNode::FolderOf(node), m_nodes))
        Remove({key});
    else
        Fill();
}

void CourseTree::DeleteLink()
{
    const TreeNode *node = m_nodes.Selected();
    const CourseRef courseRef = CourseNode::CourseOf(node);
    if (!courseRef)
        return;
    const Busy busy(m_showBusy);
    const FolderRef place = CourseNode::PlaceOf(node);
    Reported("Course_DeleteLink", [&] {
        WriteGroup group(gConnection);
        if (!ADO_Course_RemoveCourseRelations(courseRef, place))
            return;
        Remove({node->key});
        ADO_Course_RepairCourseList(m_nodes, false);
        EndRows(group);
    });
    if (m_isSimpleList)
        Fill();
    SelectCourse(courseRef, {});
}

void CourseTree::Take(CourseClipboard::Pending pending)
{
    const TreeNode *node = m_nodes.Selected();
    if (!node)
        return;
    const bool isGone = CourseNode::IsCourse(node)
                            ? !ADO_Course_Description(CourseNode::CourseOf(node))
                            : ADO_Course_CheckFolder(CourseNode::FolderOf(node)).IsMissing();
    if (!isGone)
        m_clipboard.Take(pending, node);
}

void CourseTree::Paste()
{
    PasteInto(CourseNode::FolderOf(m_nodes.Selected()));
}

void CourseTree::PasteOnRoot()
{
    PasteInto(FolderRef(0));
}

void CourseTree::PasteInto(FolderRef target)
{
    if (m_clipboard.State() == CourseClipboard::Pending::Nothing || !SourceIsThere() || !IsThere(target))
        return;
    if (m_clipboard.Course())
        PasteCourse(target);
    else
        PasteFolder(target);
}

void CourseTree::PasteFolder(FolderRef target)
{
    const TreeNode *source = m_nodes.Find(m_clipboard.Key());
    const bool withLinks =
        source && !source->children.empty() &&
        Dialogs::MsgBox(QStringLiteral("Copy all Course Links as well?"), QStringLiteral("Folder Copy"),
                        Dialogs::Buttons::YesNo, Dialogs::Icon::Question) == Dialogs::Answer::Yes;
    const Busy busy(m_showBusy);
    const bool isCut = m_clipboard.State() == CourseClipboard::Pending::Cut;
    const FolderRef copy(Course_PasteFolder(m_clipboard.Folder(), target, withLinks, isCut));
    if (!copy)
        return;
    m_clipboard.Clear();
    Fill();
    ExpandAllNodes(m_nodes);
    if (const TreeNode *node = m_nodes.Find(CourseNode::KeyOf(copy)))
        m_nodes.Select(node);
}

void CourseTree::PasteCourse(FolderRef target)
{
    const CourseRef courseRef = m_clipboard.Course();
    const bool isCut = m_clipboard.State() == CourseClipboard::Pending::Cut;
    const bool moves = isCut && m_clipboard.Place() != target;
    const std::optional<FolderRef> cutFrom =
        moves ? std::optional<FolderRef>(m_clipboard.Place()) : std::nullopt;
    if (!Course_PasteLink(courseRef, target, cutFrom))
        return;
    const TreeNode *source = m_nodes.Find(m_clipboard.Key());
    const QString title = source ? source->text : m_clipboard.Text();
    const QString key = CourseNode::KeyOf(courseRef, m_isSimpleList ? FolderRef(0) : target);
    if (!m_nodes.Find(key)) {
        TreeNode node{key, title};
        node.image = QStringLiteral("card");
        m_nodes.Add(target && !m_isSimpleList ? CourseNode::KeyOf(target) : QString(), std::move(node));
    }
    if (const TreeNode *node = m_nodes.Find(key))
        m_nodes.Select(node);
    if (moves && m_clipboard.Key() != key)
        m_nodes.Remove(m_clipboard.Key());
    m_clipboard.Clear();
}

const TreeNode *CourseTree::PasteDuplicate()
{
    const FolderRef target = CourseNode::FolderOf(m_nodes.Selected());
    if (!SourceIsThere() || !IsThere(target))
        return nullptr;
    const TreeNode *source = m_nodes.Find(m_clipboard.Key());
    const QString name = source ? source->text : m_clipboard.Text();
    QString title;
    const Busy busy(m_showBusy);
    const CourseRef copy = Course_Duplicate(m_clipboard.Course(), name, target, gDupCourseOpt, title);
    m_clipboard.Clear();
    if (!copy)
        return nullptr;
    AddNodes(copy, title);
    SelectCourse(copy, CourseNode::KeyOf(copy, target));
    return m_nodes.Selected();
}

/// True if it exists; otherwise the user has been told, and it is no longer in the tree.
bool CourseTree::IsThere(CourseRef courseRef)
{
    if (ADO_Course_Description(courseRef))
        return true;
    Dialogs::Tell(QStringLiteral("Course has been deleted."), coursesTitle);
    RemoveCourse(courseRef);
    return false;
}

/// The same; the root level always exists.
bool CourseTree::IsThere(FolderRef folderRef)
{
    if (!folderRef)
        return true;
    const ReadRow<FolderTree::Folder> folder = ADO_Course_CheckFolder(folderRef);
    if (folder.IsMissing()) {
        Dialogs::Tell(QStringLiteral("Folder has been deleted."), coursesTitle);
        Remove({CourseNode::KeyOf(folderRef)});
    }
    return static_cast<bool>(folder);
}

/// Whether what was cut or copied exists; otherwise the clipboard is empty now.
bool CourseTree::SourceIsThere()
{
    const CourseRef courseRef = m_clipboard.Course();
    if (courseRef ? IsThere(courseRef) : IsThere(m_clipboard.Folder()))
        return true;
    m_clipboard.Clear();
    return false;
}

void CourseTree::AddNodes(CourseRef courseRef, const QString &title)
{
    if (!m_isSimpleList) {
        ADO_Course_NewCourseToList(m_nodes, courseRef, title);
        return;
    }
    TreeNode node{CourseNode::KeyOf(courseRef, FolderRef(0)), title};
    node.image = QStringLiteral("card");
    m_nodes.Add({}, std::move(node));
}

/// Removes nodes; if the selected one is among them, the node that takes its place is selected.
void CourseTree::Remove(const QStringList &keys)
{
    const TreeNode *selected = m_nodes.Selected();
    const int row = selected ? selected->row : 0;
    const QString parentKey = selected ? selected->parent->key : QString();
    for (const QString &key : keys)
        m_nodes.Remove(key);
    if (!selected || m_nodes.Selected())
        return;
    const TreeNode *parent = m_nodes.Find(parentKey);
    const QModelIndex at = m_nodes.IndexOf(parent);
    const int rows = m_nodes.rowCount(at);
    if (rows > 0)
        m_nodes.Select(m_nodes.NodeAt(m_nodes.index(std::clamp(row, 0, rows - 1), 0, at)));
    else
        m_nodes.Select(parent);
}

void CourseTree::RemoveCourse(CourseRef courseRef)
{
    Remove(KeysOf(CourseNode::NodesOf(m_nodes, courseRef)));
}

/// Selects the node of `preferredKey` if it is one of the course, otherwise the course's first.
void CourseTree::SelectCourse(CourseRef courseRef, const QString &preferredKey)
{
    const std::vector<TreeNode *> nodes = CourseNode::NodesOf(m_nodes, courseRef);
    if (nodes.empty())
        return;
    const auto preferred = std::find_if(nodes.begin(), nodes.end(),
                                        [&](const TreeNode *node) { return node->key == preferredKey; });
    m_nodes.Select(preferred == nodes.end() ? nodes.front() : *preferred);
}
