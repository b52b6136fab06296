#include "courses/lists/FolderLinks.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Session.h"
#include "courses/lists/TreeViewFunc.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"

namespace
{
QString WhereItem(const FolderTables &tables, int item)
{
    return tables.links % u" WHERE " % tables.itemRef % u" = " % SqlNumber(item);
}

QString WhereLink(const FolderTables &tables, int item, FolderRef folderRef)
{
    return WhereItem(tables, item) % u" AND " % tables.folderRef % u" = " % SqlNumber(folderRef);
}

void Insert(const FolderTables &tables, int item, FolderRef folderRef)
{
    Execute(u"INSERT INTO " % tables.links % u" (" % tables.itemRef % u',' % tables.folderRef %
            u") VALUES (" % SqlNumber(item) % u',' % SqlNumber(folderRef) % u')');
}
} // namespace

std::vector<FolderRef> FolderLinks::Of(const FolderTables &tables, int item)
{
    const Recordset links = OpenRecordset(u"SELECT * FROM " % WhereItem(tables, item));
    const int column = links.ColumnIndex(tables.folderRef);
    std::vector<FolderRef> folders;
    folders.reserve(static_cast<size_t>(links.RowCount()));
    for (const auto &link : links)
        folders.emplace_back(static_cast<int>(link.Long(column)));
    return folders;
}

bool FolderLinks::Add(const FolderTables &tables, int item, FolderRef folderRef)
{
    return InOneStep(tables.items, [&] {
        if (HasRow(u"SELECT * FROM " % WhereLink(tables, item, folderRef)))
            return false;
        Insert(tables, item, folderRef);
        return true;
    });
}

void FolderLinks::Remove(const FolderTables &tables, int item, FolderRef folderRef)
{
    Execute(u"DELETE FROM " % WhereLink(tables, item, folderRef));
}

void FolderLinks::IfLost(const FolderTables &tables, int item, const std::function<void()> &heal)
{
    InOneStep(tables.items, [&] {
        const bool isLost = Of(tables, item).empty();
        if (isLost)
            heal();
        return isLost;
    });
}

void FolderLinks::AddRootLink(const FolderTables &tables, int item)
{
    IfLost(tables, item, [&] { Insert(tables, item, FolderRef(0)); });
}

void FolderLinks::Replace(const FolderTables &tables, int item, const TreeModel &folders)
{
    WriteGroup group(gConnection);
    Execute(u"DELETE FROM " % WhereItem(tables, item));
    bool ticked = false;
    for (const TreeNode *node : folders.Nodes()) {
        if (!NodeIsTicked(node))
            continue;
        Insert(tables, item, FolderRef(KeyNumber(node->key)));
        ticked = true;
    }
    if (!ticked)
        Insert(tables, item, FolderRef(0));
    EndRows(group);
}

void FolderLinks::Show(const FolderTables &tables, int item, TreeModel &folders)
{
    folders.SetAllTicks(TreeTick::Off);
    for (const FolderRef folderRef : Of(tables, item)) {
        if (TreeNode *node = folders.Find(u'!' % SqlNumber(folderRef)))
            folders.SetTick(node, TreeTick::On);
    }
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): from the one to the other, as with copies of files.
void FolderLinks::Copy(const FolderTables &tables, FolderRef source, FolderRef target)
{
    for (const auto &link : OpenRecordset(u"SELECT * FROM " % tables.links % u" WHERE " % tables.folderRef %
                                          u" = " % SqlNumber(source)))
        Insert(tables, static_cast<int>(link.Long(tables.itemRef)), target);
}
