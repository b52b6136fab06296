#pragma once

#include "controls/TreeModel.h"
#include "database/values/Keys.h"

/// What a node of the course tree stands for. Its key tells: "!" and folder, "?" and course at root level,
/// "?" course "!" folder below one.
namespace CourseNode
{
bool IsCourse(const TreeNode *node); ///< false for no node
bool IsFolder(const TreeNode *node);
bool IsAtRoot(const TreeNode *node);
CourseRef CourseOf(const TreeNode *node);
/// The folder that the node is in; 0 = root level. For a course at the top since its folder is not shown,
/// that folder.
FolderRef PlaceOf(const TreeNode *node);
/// The folder itself, or the one that a course is in; 0 for no node.
FolderRef FolderOf(const TreeNode *node);
QString KeyOf(FolderRef folderRef);
/// The key of a course in a folder, or at root level.
QString KeyOf(CourseRef courseRef, FolderRef folderRef);
/// All nodes of a course.
std::vector<TreeNode *> NodesOf(const TreeModel &tree, CourseRef courseRef);
} // namespace CourseNode
