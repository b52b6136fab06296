#include "courses/manager/FolderModule.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "courses/lists/TreeViewFunc.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/WholeSave.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Dialogs.h"

namespace
{
const QString folderTable = QStringLiteral("CoursesHierarchy");
const QString folderKey = QStringLiteral("HRef");
const QString folderExists =
    QStringLiteral("Folder with this name already exists in the database at this level.");

int LivingFolder(FolderRef folderRef, const QString &title)
{
    return LivingKey(folderTable, folderKey, folderRef.number, QStringLiteral("folder"), title);
}

std::vector<TreeNode *> Ticked(const TreeModel &places)
{
    std::vector<TreeNode *> ticked = places.Nodes();
    std::erase_if(ticked, [](const TreeNode *node) { return !NodeIsTicked(node); });
    return ticked;
}

/// Takes the ticked places that are gone out of the tree, and tells their names. False on an error.
bool LeaveOutDeletedPlaces(TreeModel &places, const QString &title)
{
    QSet<int> asked;
    for (const TreeNode *node : Ticked(places))
        asked.insert(KeyNumber(node->key));
    const std::optional<QSet<int>> living = ADO_LivingKeys(folderTable, folderKey, asked);
    if (!living)
        return false;
    QStringList gone;
    for (const TreeNode *node : Ticked(places)) {
        const int folder = KeyNumber(node->key);
        if (folder > 0 && !living->contains(folder))
            gone += node->key;
    }
    QStringList names;
    for (const QString &key : gone) {
        if (const TreeNode *node = places.Find(key))
            names += node->text;
        places.Remove(key);
    }
    TellLeftOut(names, title);
    return true;
}
} // namespace

int Course_NewFolder(FolderRef parent, QString &label)
{
    constexpr int lastTry = 65535;
    label = QStringLiteral("New Folder");
    int folder = ADO_Course_AddFolder(parent, label, {});
    for (int counter = 2; folder == 0 && counter < lastTry; ++counter) {
        label = u"New Folder (" % QString::number(counter) % u')';
        folder = ADO_Course_AddFolder(parent, label, {});
    }
    return folder;
}

bool Course_AddCat(const QString &label, const QString &description, TreeModel &places, TreeModel &tree)
{
    const QString title = QStringLiteral("Add Folder");
    const size_t wanted = Ticked(places).size();
    if (!LeaveOutDeletedPlaces(places, title) || (wanted > 0 && Ticked(places).empty()))
        return false;
    const FoldersAdded added = ADO_Course_AddCat(label, description, places, tree);
    if (added.taken > 0)
        TellDuplicate(0, folderExists, title);
    return added.made > 0;
}

int Course_UpdateFolder(const FolderTree::Folder &folder, FolderRef folderRef)
{
    const QString title = QStringLiteral("Update Folder");
    const int living = LivingFolder(folderRef, title);
    if (living < 1)
        return living;
    const FolderTree::Folder safe{SqlSafeText(folder.label), SqlSafeText(folder.description), folder.parent};
    return TellDuplicate(ADO_Course_UpdateFolder(safe, folderRef), folderExists, title);
}

int Course_RenameFolder(const QString &label, FolderRef folderRef, FolderRef parent)
{
    return TellDuplicate(ADO_Course_RenameFolder(SqlSafeText(label), folderRef, parent), folderExists,
                         QStringLiteral("Rename Folder"));
}

int Course_PasteFolder(FolderRef source, FolderRef target, bool withLinks, bool isCut)
{
    const RecordSaved saved = SaveWhole(
        "Course_PasteFolder", Progress(), [&] { return ADO_Course_CopyFolder(source, target, withLinks); },
        [&](int) { return !isCut || ADO_Course_DeleteFolder(source); });
    if (saved.key < 0)
        Dialogs::Tell(QStringLiteral("Folder copying terminated unexpectly."), QStringLiteral("Folder Copy"),
                      Dialogs::Icon::Exclamation);
    return saved.key;
}

bool Course_DeleteFolder(FolderRef folderRef, TreeModel &tree)
{
    const RecordSaved saved = SaveWhole(
        "Course_DeleteFolder", Progress(),
        [&] { return ADO_Course_DeleteFolder(folderRef) ? folderRef.number : -1; },
        [&](int) { return ADO_Course_RepairCourseList(tree, true); });
    return saved.isWhole;
}

bool Course_PasteLink(CourseRef courseRef, FolderRef target, std::optional<FolderRef> cutFrom)
{
    CourseLink link = CourseLink::Failed;
    const RecordSaved saved = SaveWhole(
        "Course_PasteLink", Progress(),
        [&] {
            link = ADO_Course_AddCourseRelations(courseRef, target);
            return link == CourseLink::Made ? courseRef.number : 0;
        },
        [&](int) { return !cutFrom || ADO_Course_RemoveCourseRelations(courseRef, *cutFrom); });
    if (link == CourseLink::WasThere)
        Dialogs::Tell(QStringLiteral("Course already exists at this level"), QStringLiteral("Courses"),
                      Dialogs::Icon::Information);
    return saved.isWhole;
}

FolderStore Course_FolderStore(TreeModel &tree)
{
    FolderStore store;
    store.right = Right::Courses;
    store.list = [](TreeModel &places) { ADO_Course_ShowFolders(places, true, true); };
    store.add = [&tree](const QString &label, const QString &description, TreeModel &places) {
        return Course_AddCat(label, description, places, tree);
    };
    store.read = ADO_Course_CheckFolder;
    store.update = Course_UpdateFolder;
    return store;
}
