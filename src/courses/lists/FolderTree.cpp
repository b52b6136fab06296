#include "courses/lists/FolderTree.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Session.h"
#include "courses/lists/FolderLinks.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"

#include <QHash>
#include <QSet>

namespace
{
QString WhereFolder(const FolderTables &tables, FolderRef folderRef)
{
    return tables.folders % u" WHERE HRef = " % SqlNumber(folderRef);
}

/// Finds another folder of that label in `parent`.
QString OtherFolder(const FolderTables &tables, const QString &label, FolderRef folderRef, FolderRef parent)
{
    return u"SELECT * FROM " % tables.folders % u" WHERE Label = '" % label % u"' AND HRef <> " %
           SqlNumber(folderRef) % u" AND Parent = " % SqlNumber(parent);
}

FolderTree::Folder FolderOf(const Recordset::Row &row)
{
    return {row.Text(u"Label"), row.Text(u"Description"), FolderRef(static_cast<int>(row.Long(u"Parent")))};
}

/// The folder and all folders in it, level by level. Folders that are in each other are met once.
std::vector<FolderRef> WithSubFolders(const FolderTables &tables, FolderRef folderRef)
{
    std::vector<FolderRef> folders{folderRef};
    QSet<FolderRef> known{folderRef};
    for (size_t at = 0; at < folders.size(); ++at) {
        for (const auto &row : OpenRecordset(u"SELECT HRef FROM " % tables.folders % u" WHERE Parent = " %
                                             SqlNumber(folders[at]))) {
            const FolderRef child(static_cast<int>(row.Long(u"HRef")));
            if (!known.contains(child))
                folders.push_back(child);
            known.insert(child);
        }
    }
    return folders;
}

/// What a copy is called: "X", "Copy (0) of X", ... and beside the original "Copy of X", "Copy (2) of X", ...
class CopyNames final
{
public:
    CopyNames(const QString &label, bool besideOriginal)
        : m_label(label)
        , m_counter(besideOriginal ? 2 : 0)
        , m_name(besideOriginal ? Cut(u"Copy of " % label) : label)
    {
    }
    const QString &Name() const { return m_name; }
    void Next() { m_name = Cut(u"Copy (" % QString::number(m_counter++) % u") of " % m_label); }

private:
    static QString Cut(const QString &name)
    {
        constexpr int longestName = 50;
        return name.left(longestName);
    }

    QString m_label;
    int m_counter;
    QString m_name;
};

int CopyOne(const char *routineName, const FolderTables &tables, const FolderTree::Folder &folder,
            FolderRef parent, bool besideOriginal)
{
    CopyNames names(folder.label, besideOriginal);
    while (true) {
        const int copy = FolderTree::Add(routineName, tables, parent, DoubledApostrophes(names.Name()),
                                         DoubledApostrophes(folder.description));
        if (copy != 0)
            return copy;
        names.Next();
    }
}

TreeModel::NewNode FolderNode(const QString &parentKey, const Recordset::Row &row, const QString &image,
                              bool withTicks)
{
    return {parentKey, FolderTree::NodeOf(u'!' % row.Text(u"HRef"), row.Text(u"Label"), image, withTicks)};
}

/// The folders below the top ones, parents before their children, which an engine may give in any order.
/// Those left over go into `lost`.
// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): parents, then children.
std::vector<TreeModel::NewNode> SubFolders(const Recordset &top, const Recordset &below, bool withTicks,
                                           QStringList &lost)
{
    QHash<qint64, std::vector<int>> rowsOfParent;
    for (int row = 0; row < below.RowCount(); ++row)
        rowsOfParent[below.At(row).Long(u"Parent")].push_back(row);
    std::vector<qint64> parents;
    for (const auto &row : top)
        parents.push_back(row.Long(u"HRef"));
    std::vector<TreeModel::NewNode> nodes;
    for (size_t at = 0; at < parents.size(); ++at) {
        const QString parentKey = u'!' % SqlNumber(parents[at]);
        for (const int position : rowsOfParent.take(parents[at])) {
            const auto row = below.At(position);
            nodes.push_back(FolderNode(parentKey, row, QStringLiteral("closed"), withTicks));
            parents.push_back(row.Long(u"HRef"));
        }
    }
    for (const auto &row : below) {
        if (rowsOfParent.contains(row.Long(u"Parent")))
            lost += row.Text(u"Label");
    }
    lost.sort(Qt::CaseInsensitive);
    return nodes;
}
} // namespace

ReadRow<FolderTree::Folder> FolderTree::Read(const char *routineName, const FolderTables &tables,
                                             FolderRef folderRef)
{
    return ReadOne<Folder>(routineName, u"SELECT * FROM " % WhereFolder(tables, folderRef), FolderOf);
}

int FolderTree::Add(const char *routineName, const FolderTables &tables, FolderRef parent,
                    const QString &label, const QString &description)
{
    const QString same = u"SELECT * FROM " % tables.folders % u" WHERE Label = '" % label %
                         u"' AND Parent = " % SqlNumber(parent);
    return AddRow(routineName, same,
                  u"INSERT INTO " % tables.folders % u" (Label,Parent,Description) VALUES ('" % label %
                      u"'," % SqlNumber(parent) % u",'" % description % u"')",
                  same, u"HRef");
}

int FolderTree::Update(const char *routineName, const FolderTables &tables, const Folder &folder,
                       FolderRef folderRef)
{
    return UpdateRow(routineName, OtherFolder(tables, folder.label, folderRef, folder.parent),
                     u"UPDATE " % tables.folders % u" SET Description = '" % folder.description %
                         u"' ,Label = '" % folder.label % u"' WHERE HRef = " % SqlNumber(folderRef),
                     folderRef.number);
}

int FolderTree::Rename(const char *routineName, const FolderTables &tables, const QString &label,
                       FolderRef folderRef, FolderRef parent)
{
    return UpdateRow(routineName, OtherFolder(tables, label, folderRef, parent),
                     u"UPDATE " % tables.folders % u" SET Label = '" % label % u"' WHERE HRef = " %
                         SqlNumber(folderRef),
                     folderRef.number);
}

bool FolderTree::Delete(const char *routineName, const FolderTables &tables, FolderRef folderRef)
{
    return Reported(routineName, false, [&] {
        WriteGroup group(gConnection);
        const std::vector<FolderRef> folders = WithSubFolders(tables, folderRef);
        for (auto at = folders.rbegin(); at != folders.rend(); ++at) {
            Execute(u"DELETE FROM " % tables.links % u" WHERE " % tables.folderRef % u" = " % SqlNumber(*at));
            Execute(u"DELETE FROM " % WhereFolder(tables, *at));
        }
        EndRows(group);
        return true;
    });
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): from the one to the other, as with copies of files.
int FolderTree::Copy(const char *routineName, const FolderTables &tables, FolderRef source, FolderRef target,
                     bool withLinks)
{
    return Reported(routineName, -1, [&] {
        WriteGroup group(gConnection);
        QHash<FolderRef, FolderRef> copies;
        for (const FolderRef original : WithSubFolders(tables, source)) {
            const ReadRow<Folder> folder = Read(routineName, tables, original);
            if (!folder)
                return -1;
            const int copy = CopyOne(routineName, tables, *folder, copies.value(folder->parent, target),
                                     folder->parent == target);
            if (copy < 0)
                return -1;
            copies.insert(original, FolderRef(copy));
            if (withLinks)
                FolderLinks::Copy(tables, original, FolderRef(copy));
        }
        EndRows(group);
        return copies.value(source).number;
    });
}

TreeNode FolderTree::NodeOf(const QString &key, const QString &text, const QString &image, bool withTick)
{
    TreeNode node{key, text};
    if (withTick)
        node.tick = TreeTick::Off;
    else
        node.image = image;
    return node;
}

QStringList FolderTree::Show(const char *routineName, const FolderTables &tables, TreeModel &tree,
                             bool withRootNode, bool withTicks)
{
    QStringList lost;
    Reported(routineName, [&] {
        tree.Clear();
        const QString root = withRootNode ? QStringLiteral("!0") : QString();
        if (withRootNode) {
            TreeNode node =
                NodeOf(root, QStringLiteral("Root Level"), QStringLiteral("rootclosed"), withTicks);
            node.expanded = true;
            tree.Add({}, std::move(node));
        }
        const QString image = withRootNode ? QStringLiteral("closed") : QStringLiteral("rootclosed");
        const Recordset top =
            OpenRecordset(u"SELECT * FROM " % tables.folders % u" WHERE Parent = 0 ORDER BY Label ASC");
        std::vector<TreeModel::NewNode> nodes;
        for (const auto &row : top)
            nodes.push_back(FolderNode(root, row, image, withTicks));
        tree.Add(std::move(nodes));
        const Recordset below = OpenRecordset(u"SELECT * FROM " % tables.folders % u" WHERE Parent > 0");
        tree.Add(SubFolders(top, below, withTicks, lost));
    });
    return lost;
}
