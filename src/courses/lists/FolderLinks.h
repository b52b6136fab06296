#pragma once

#include "courses/lists/FolderTables.h"

#include <functional>
#include <vector>

class TreeModel;

/// The links between the items of a tree and its folders, table `FolderTables::links`; only inside Reported.
namespace FolderLinks
{
/// The item's folders.
std::vector<FolderRef> Of(const FolderTables &tables, int item);
/// True if the link was made, false if it stood already.
bool Add(const FolderTables &tables, int item, FolderRef folderRef);
void Remove(const FolderTables &tables, int item, FolderRef folderRef);
/// Runs `heal` if the item has no link, in one step with that test: another workstation may list it as well.
void IfLost(const FolderTables &tables, int item, const std::function<void()> &heal);
/// Gives an item that lost its last link one to the root level.
void AddRootLink(const FolderTables &tables, int item);
/// Replaces the item's links by the ticked nodes of the tree; none ticked is the root level.
void Replace(const FolderTables &tables, int item, const TreeModel &folders);
/// Ticks the item's folders in the tree, and clears all other ticks.
void Show(const FolderTables &tables, int item, TreeModel &folders);
/// Links everything that is in one folder to another as well.
void Copy(const FolderTables &tables, FolderRef source, FolderRef target);
} // namespace FolderLinks
