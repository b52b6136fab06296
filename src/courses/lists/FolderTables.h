#pragma once

#include "database/values/Keys.h"

#include <QString>

/// The tables of a tree of folders. An item may be linked into any number of folders; folder 0 is the root
/// level, which has no row.
struct FolderTables {
    QString folders;   ///< of the folders: HRef, Label, Parent, Description
    QString links;     ///< of the links between items and folders
    QString itemRef;   ///< its column for the item
    QString folderRef; ///< its column for the folder
    QString items;     ///< of the items; names the steps about their links
};
