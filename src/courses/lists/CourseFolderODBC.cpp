#include "courses/lists/CourseFolderODBC.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/files/ErrorHandler.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"

#include <algorithm>

namespace
{
/// The links of a course are guarded with it, so that the save of one waits for nobody on its way.
const QString courseGuard = QStringLiteral("Courses");

Recordset LinksOf(CourseRef courseRef)
{
    return OpenRecordset(u"SELECT * FROM CoursesRelationships WHERE CourseRef = " % SqlNumber(courseRef));
}

void AddLink(CourseRef courseRef, FolderRef folderRef)
{
    Execute(u"INSERT INTO CoursesRelationships (CourseRef,CourseHierarchyRef) VALUES (" %
            SqlNumber(courseRef) % u',' % SqlNumber(folderRef) % u')');
}

/// Gives a course that lost its last link one to the root level. Another workstation may list it as well.
void AddRootLink(CourseRef courseRef)
{
    InOneStep(courseGuard, [&] {
        const bool isLost = LinksOf(courseRef).IsEmpty();
        if (isLost)
            AddLink(courseRef, FolderRef(0));
        return isLost;
    });
}

TreeNode NodeOf(const QString &key, const QString &text, const QString &image, bool withTicks)
{
    TreeNode node{key, text};
    if (withTicks)
        node.tick = TreeTick::Off;
    else
        node.image = image;
    return node;
}

void AddCourse(TreeModel &tree, CourseRef courseRef, FolderRef folderRef, const QString &title,
               bool withTicks)
{
    const QString course = u'?' % SqlNumber(courseRef);
    const QString folder = u'!' % SqlNumber(folderRef);
    const bool atRoot = !folderRef;
    tree.Add(atRoot ? QString() : folder,
             NodeOf(atRoot ? course : QString(course % folder), title, QStringLiteral("card"), withTicks));
}

/// Adds the folders below the top ones. Parents may come after their children: an engine gives rows in
/// whatever order it likes. A folder whose parent is missing altogether is reported and ends the listing.
void AddSubFolders(TreeModel &tree, const Recordset &rows, bool withTicks)
{
    std::vector<int> pending(static_cast<size_t>(rows.RowCount()));
    for (int row = 0; row < rows.RowCount(); ++row)
        pending[static_cast<size_t>(row)] = row;
    size_t before = pending.size() + 1;
    while (!pending.empty() && pending.size() < before) {
        before = pending.size();
        std::erase_if(pending, [&](int position) {
            const auto row = rows.At(position);
            return tree.Add(u'!' % row.Text(u"Parent"), NodeOf(u'!' % row.Text(u"HRef"), row.Text(u"Label"),
                                                               QStringLiteral("closed"), withTicks)) !=
                   nullptr;
        });
    }
    if (pending.empty())
        return;
    const auto lost = rows.At(pending.front());
    SetCurrentError({0,
                     QStringLiteral("Veltrane"),
                     u"The folder '" % lost.Text(u"Label") % u"' (No. " % lost.Text(u"HRef") %
                         u") is in no folder that exists, and is not shown.",
                     {}});
    HandleError(QStringLiteral("ADO_Course_ShowFolders"), 0);
}
} // namespace

bool ADO_Course_AddCourseRelations(CourseRef courseRef, FolderRef folderRef)
{
    return Reported("ADO_Course_AddCourseRelations", false, [&] {
        return InOneStep(courseGuard, [&] {
            if (HasRow(u"SELECT * FROM CoursesRelationships WHERE CourseRef = " % SqlNumber(courseRef) %
                       u" AND CourseHierarchyRef = " % SqlNumber(folderRef)))
                return false;
            AddLink(courseRef, folderRef);
            return true;
        });
    });
}

bool ADO_Course_UpdateCourseRelations(CourseRef courseRef, const TreeModel &folders)
{
    return Reported("ADO_Course_UpdateCourseRelations", false, [&] {
        WriteGroup group(gConnection);
        Execute(u"DELETE FROM CoursesRelationships WHERE CourseRef = " % SqlNumber(courseRef));
        bool ticked = false;
        for (const TreeNode *node : folders.Nodes()) {
            if (node->tick != TreeTick::On)
                continue;
            AddLink(courseRef, FolderRef(KeyNumber(node->key)));
            ticked = true;
        }
        if (!ticked)
            AddLink(courseRef, FolderRef(0));
        EndRows(group);
        return true;
    });
}

void ADO_Course_ShowCourseRelations(CourseRef courseRef, TreeModel &folders)
{
    Reported("ADO_Course_ShowCourseRelations", [&] {
        for (TreeNode *node : folders.Nodes())
            folders.SetTick(node, TreeTick::Off);
        for (const auto &row : LinksOf(courseRef)) {
            if (TreeNode *node = folders.Find(u'!' % row.Text(u"CourseHierarchyRef")))
                folders.SetTick(node, TreeTick::On);
        }
    });
}

void ADO_Course_ShowFolders(TreeModel &tree, bool withRootNode, bool withTicks)
{
    Reported("ADO_Course_ShowFolders", [&] {
        tree.Clear();
        const QString root = withRootNode ? QStringLiteral("!0") : QString();
        if (withRootNode) {
            TreeNode node =
                NodeOf(root, QStringLiteral("Root Level"), QStringLiteral("rootclosed"), withTicks);
            node.expanded = true;
            tree.Add({}, std::move(node));
        }
        const QString image = withRootNode ? QStringLiteral("closed") : QStringLiteral("rootclosed");
        const Recordset top = OpenRecordset(
            QStringLiteral("SELECT * FROM CoursesHierarchy WHERE Parent = 0 ORDER BY Label ASC"));
        for (const auto &row : top)
            tree.Add(root, NodeOf(u'!' % row.Text(u"HRef"), row.Text(u"Label"), image, withTicks));
        AddSubFolders(tree, OpenRecordset(QStringLiteral("SELECT * FROM CoursesHierarchy WHERE Parent > 0")),
                      withTicks);
    });
}

void ADO_Course_FillCourseList(TreeModel &tree, bool simpleList, bool withTicks)
{
    Reported("ADO_Course_FillCourseList", [&] {
        const Recordset courses = OpenRecordset(QStringLiteral("SELECT * FROM Courses ORDER BY Title ASC"));
        if (simpleList)
            tree.Clear();
        for (const auto &course : courses) {
            const CourseRef courseRef(static_cast<int>(course.Long(u"CourseRef")));
            const QString title = course.Text(u"Title");
            if (simpleList) {
                AddCourse(tree, courseRef, FolderRef(0), title, withTicks);
                continue;
            }
            const Recordset links = LinksOf(courseRef);
            if (links.IsEmpty()) {
                AddCourse(tree, courseRef, FolderRef(0), title, withTicks);
                AddRootLink(courseRef);
            }
            for (const auto &link : links)
                AddCourse(tree, courseRef, FolderRef(static_cast<int>(link.Long(u"CourseHierarchyRef"))),
                          title, withTicks);
        }
        tree.SelectFirst();
    });
}

void ADO_Course_NewCourseToList(TreeModel &tree, CourseRef courseRef, const QString &title)
{
    Reported("ADO_Course_NewCourseToList", [&] {
        for (const auto &link : LinksOf(courseRef))
            AddCourse(tree, courseRef, FolderRef(static_cast<int>(link.Long(u"CourseHierarchyRef"))), title,
                      false);
    });
}
