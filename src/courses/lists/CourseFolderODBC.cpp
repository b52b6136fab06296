#include "courses/lists/CourseFolderODBC.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Session.h"
#include "courses/lists/FolderLinks.h"
#include "courses/lists/TreeViewFunc.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"

namespace
{
const FolderTables tables{QStringLiteral("CoursesHierarchy"), QStringLiteral("CoursesRelationships"),
                          QStringLiteral("CourseRef"), QStringLiteral("CourseHierarchyRef"),
                          QStringLiteral("Courses")};

Recordset AllCourses()
{
    return OpenRecordset(QStringLiteral("SELECT * FROM Courses ORDER BY Title ASC"));
}

/// Nodes of courses, gathered while statements run and added to the tree at once.
class CourseNodes final
{
public:
    CourseNodes(TreeModel &tree, bool withTicks)
        : m_tree(tree)
        , m_withTicks(withTicks)
    {
    }
    ~CourseNodes() { m_tree.Add(std::move(m_nodes)); }
    CourseNodes(const CourseNodes &) = delete;
    CourseNodes &operator=(const CourseNodes &) = delete;

    void AddAtTop(CourseRef courseRef, const QString &title) { Add({}, u'?' % SqlNumber(courseRef), title); }

    void AddInFolders(CourseRef courseRef, const QString &title, const std::vector<FolderRef> &folders)
    {
        const size_t before = m_nodes.size();
        for (const FolderRef folderRef : folders) {
            const QString folder = u'!' % SqlNumber(folderRef);
            if (!folderRef)
                AddAtTop(courseRef, title);
            else if (m_tree.Find(folder))
                Add(folder, u'?' % SqlNumber(courseRef) % folder, title);
        }
        // No course is hidden with its folder.
        if (m_nodes.size() == before && !folders.empty())
            Add({}, u'?' % SqlNumber(courseRef) % u'!' % SqlNumber(folders.front()), title);
    }

private:
    void Add(const QString &parentKey, const QString &key, const QString &title)
    {
        m_nodes.push_back({parentKey, FolderTree::NodeOf(key, title, QStringLiteral("card"), m_withTicks)});
    }

    TreeModel &m_tree;
    bool m_withTicks;
    std::vector<TreeModel::NewNode> m_nodes;
};

CourseRef CourseOf(const Recordset::Row &course)
{
    return CourseRef(static_cast<int>(course.Long(u"CourseRef")));
}
} // namespace

ReadRow<FolderTree::Folder> ADO_Course_CheckFolder(FolderRef folderRef)
{
    return FolderTree::Read("ADO_Course_CheckFolder", tables, folderRef);
}

int ADO_Course_AddFolder(FolderRef parent, const QString &label, const QString &description)
{
    return FolderTree::Add("ADO_Course_AddFolder", tables, parent, label, description);
}

int ADO_Course_UpdateFolder(const FolderTree::Folder &folder, FolderRef folderRef)
{
    return FolderTree::Update("ADO_Course_UpdateFolder", tables, folder, folderRef);
}

int ADO_Course_RenameFolder(const QString &label, FolderRef folderRef, FolderRef parent)
{
    return FolderTree::Rename("ADO_Course_RenameFolder", tables, label, folderRef, parent);
}

bool ADO_Course_DeleteFolder(FolderRef folderRef)
{
    return FolderTree::Delete("ADO_Course_DeleteFolder", tables, folderRef);
}

int ADO_Course_CopyFolder(FolderRef source, FolderRef target, bool withLinks)
{
    return FolderTree::Copy("ADO_Course_CopyFolder", tables, source, target, withLinks);
}

FoldersAdded ADO_Course_AddCat(const QString &label, const QString &description, const TreeModel &places,
                               TreeModel &tree)
{
    QStringList ticked;
    for (const TreeNode *node : places.Nodes()) {
        if (NodeIsTicked(node))
            ticked += node->key;
    }
    if (ticked.isEmpty())
        ticked += QStringLiteral("!0");
    FoldersAdded result;
    Reported("ADO_Course_AddCat", [&] {
        WriteGroup group(gConnection);
        for (const QString &place : ticked) {
            const FolderRef parent(KeyNumber(place));
            const int folder = ADO_Course_AddFolder(parent, SqlSafeText(label), SqlSafeText(description));
            if (folder < 0)
                break;
            result.taken += folder == 0 ? 1 : 0;
            result.made += folder > 0 ? 1 : 0;
            if (folder > 0)
                AddFolderNode(tree, FolderRef(folder), label, parent);
        }
        EndRows(group);
    });
    return result;
}

void AddFolderNode(TreeModel &tree, FolderRef folderRef, const QString &label, FolderRef parent)
{
    const QString image = parent ? QStringLiteral("closed") : QStringLiteral("rootclosed");
    tree.Add(parent ? QString(u'!' % SqlNumber(parent)) : QString(),
             FolderTree::NodeOf(u'!' % SqlNumber(folderRef), label, image, false));
}

CourseLink ADO_Course_AddCourseRelations(CourseRef courseRef, FolderRef folderRef)
{
    return Reported("ADO_Course_AddCourseRelations", CourseLink::Failed, [&] {
        return FolderLinks::Add(tables, courseRef.number, folderRef) ? CourseLink::Made
                                                                     : CourseLink::WasThere;
    });
}

bool ADO_Course_RemoveCourseRelations(CourseRef courseRef, FolderRef folderRef)
{
    return Reported("ADO_Course_RemoveCourseRelations", false, [&] {
        FolderLinks::Remove(tables, courseRef.number, folderRef);
        return true;
    });
}

bool ADO_Course_UpdateCourseRelations(CourseRef courseRef, const TreeModel &folders)
{
    return Reported("ADO_Course_UpdateCourseRelations", false, [&] {
        FolderLinks::Replace(tables, courseRef.number, folders);
        return true;
    });
}

void ADO_Course_ShowCourseRelations(CourseRef courseRef, TreeModel &folders)
{
    Reported("ADO_Course_ShowCourseRelations", [&] { FolderLinks::Show(tables, courseRef.number, folders); });
}

QStringList ADO_Course_ShowFolders(TreeModel &tree, bool withRootNode, bool withTicks)
{
    return FolderTree::Show("ADO_Course_ShowFolders", tables, tree, withRootNode, withTicks);
}

void ADO_Course_FillCourseList(TreeModel &tree, bool simpleList, bool withTicks)
{
    Reported("ADO_Course_FillCourseList", [&] {
        const Recordset courses = AllCourses();
        if (simpleList)
            tree.Clear();
        CourseNodes nodes(tree, withTicks);
        for (const auto &course : courses) {
            const CourseRef courseRef = CourseOf(course);
            const QString title = course.Text(u"Title");
            const std::vector<FolderRef> folders =
                simpleList ? std::vector<FolderRef>{FolderRef(0)} : FolderLinks::Of(tables, courseRef.number);
            if (!folders.empty()) {
                nodes.AddInFolders(courseRef, title, folders);
                continue;
            }
            nodes.AddAtTop(courseRef, title);
            FolderLinks::AddRootLink(tables, courseRef.number);
        }
    });
    tree.SelectFirst();
}

bool ADO_Course_RepairCourseList(TreeModel &tree, bool deleteOrphans)
{
    return Reported("ADO_Course_RepairCourseList", false, [&] {
        WriteGroup group(gConnection);
        CourseNodes nodes(tree, false);
        for (const auto &course : AllCourses()) {
            const CourseRef courseRef = CourseOf(course);
            if (!FolderLinks::Of(tables, courseRef.number).empty())
                continue;
            if (deleteOrphans) {
                FolderLinks::IfLost(tables, courseRef.number, [&] {
                    Execute(u"DELETE FROM Courses WHERE CourseRef = " % SqlNumber(courseRef));
                });
                continue;
            }
            nodes.AddAtTop(courseRef, course.Text(u"Title"));
            FolderLinks::AddRootLink(tables, courseRef.number);
        }
        EndRows(group);
        return true;
    });
}

void ADO_Course_NewCourseToList(TreeModel &tree, CourseRef courseRef, const QString &title)
{
    Reported("ADO_Course_NewCourseToList", [&] {
        CourseNodes nodes(tree, false);
        nodes.AddInFolders(courseRef, title, FolderLinks::Of(tables, courseRef.number));
    });
}
