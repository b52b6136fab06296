#pragma once

#include "courses/lists/FolderTables.h"
#include "database/statements/ReadRow.h"

#include <QStringList>

class TreeModel;
struct TreeNode;

/// The folders of a tree, whatever it holds, table `FolderTables::folders`. Texts come already safe for SQL.
/// `routineName` is the data function that a failure is reported under.
namespace FolderTree
{
struct Folder {
    QString label;
    QString description;
    FolderRef parent;
};
/// Reads a folder, which another workstation may have deleted.
ReadRow<Folder> Read(const char *routineName, const FolderTables &tables, FolderRef folderRef);

/// The new folder; 0 if `parent` has one of that label, -1 on an error.
int Add(const char *routineName, const FolderTables &tables, FolderRef parent, const QString &label,
        const QString &description);
/// `folderRef`; 0 if `parent` has another folder of that label, -1 on an error.
int Update(const char *routineName, const FolderTables &tables, const Folder &folder, FolderRef folderRef);
/// The same for the label alone.
int Rename(const char *routineName, const FolderTables &tables, const QString &label, FolderRef folderRef,
           FolderRef parent);
/// Deletes the folder and all folders in it, the deepest first, each with its links. False if it stopped at
/// an error, with those before it deleted.
bool Delete(const char *routineName, const FolderTables &tables, FolderRef folderRef);
/// Copies the folder and all folders in it into `target`, with the links of each if `withLinks`. Where its
/// name is taken, and always beside the original, the copy gets another. The copy of the folder itself; -1 if
/// it stopped at an error or at a folder that is gone, with those before it copied.
int Copy(const char *routineName, const FolderTables &tables, FolderRef source, FolderRef target,
         bool withLinks);

/// Fills the tree with all folders, under a node "Root Level" if `withRootNode`; `withTicks` gives each node
/// a tick, cleared, in place of its picture. Returns the labels of the folders that cannot be shown, since
/// the folder that they are in does not exist, or is in one of them.
QStringList Show(const char *routineName, const FolderTables &tables, TreeModel &tree, bool withRootNode,
                 bool withTicks);
/// A node of the tree, with a tick, cleared, or with a picture.
TreeNode NodeOf(const QString &key, const QString &text, const QString &image, bool withTick);
} // namespace FolderTree
