#pragma once

#include "courses/lists/FolderTree.h"
#include "database/statements/Rights.h"

#include <functional>

/// Where the dialog of a folder finds and stores folders; several trees have folders. Texts as typed.
struct FolderStore {
    Right right; ///< who may change them
    /// Lists them under a root node, with ticks.
    std::function<void(TreeModel &places)> list;
    /// Adds a folder to each ticked place; false if none was added.
    std::function<bool(const QString &label, const QString &description, TreeModel &places)> add;
    std::function<ReadRow<FolderTree::Folder>(FolderRef)> read;
    /// The folder; below 1 if it was not stored.
    std::function<int(const FolderTree::Folder &, FolderRef)> update;
};
