#pragma once

#include "courses/lists/FolderTree.h"
#include "database/values/Keys.h"

#include <QString>
#include <QStringList>

class TreeModel;

/// Data functions of the folders, table `CoursesHierarchy`, and of the links between courses and folders,
/// table `CoursesRelationships`, where folder 0 is the root level. Nodes are keyed "!" and folder, "?" and
/// course at root level, "?" course "!" folder below one. Texts come already safe for SQL.

/// Reads a folder; missing where another workstation deleted it.
ReadRow<FolderTree::Folder> ADO_Course_CheckFolder(FolderRef folderRef);
/// The new folder; 0 if `parent` has one of that label, -1 on an error.
int ADO_Course_AddFolder(FolderRef parent, const QString &label, const QString &description);
/// `folderRef`; 0 if `folder.parent` has another folder of that label, -1 on an error. The folder stays where
/// it is.
int ADO_Course_UpdateFolder(const FolderTree::Folder &folder, FolderRef folderRef);
/// The same for the label alone.
int ADO_Course_RenameFolder(const QString &label, FolderRef folderRef, FolderRef parent);
/// Deletes the folder and all folders in it, each with its links. False if it stopped at an error.
bool ADO_Course_DeleteFolder(FolderRef folderRef);
/// Copies the folder and all folders in it into `target`, with the links of each if `withLinks`. The copy of
/// the folder itself, -1 if it stopped half-way.
int ADO_Course_CopyFolder(FolderRef source, FolderRef target, bool withLinks);
struct FoldersAdded {
    int made = 0;
    int taken = 0; ///< places that have a folder of that label
};
/// Adds a folder to each ticked node of `places`, or to the root level if none is ticked, and to `tree`. It
/// stops at an error. Texts as typed.
FoldersAdded ADO_Course_AddCat(const QString &label, const QString &description, const TreeModel &places,
                               TreeModel &tree);

enum class CourseLink { Made, WasThere, Failed };
CourseLink ADO_Course_AddCourseRelations(CourseRef courseRef, FolderRef folderRef);
/// False on an error.
bool ADO_Course_RemoveCourseRelations(CourseRef courseRef, FolderRef folderRef);
/// Replaces the course's links by the ticked nodes of the tree; none ticked is the root level. False on an
/// error.
bool ADO_Course_UpdateCourseRelations(CourseRef courseRef, const TreeModel &folders);
/// Ticks the course's folders in the tree, and clears all other ticks.
void ADO_Course_ShowCourseRelations(CourseRef courseRef, TreeModel &folders);

/// Adds the node of a folder in `parent` to a tree without a root node.
void AddFolderNode(TreeModel &tree, FolderRef folderRef, const QString &label, FolderRef parent);
/// Fills the tree with all folders, under a node "Root Level" if `withRootNode`; `withTicks` gives each node
/// a tick, cleared, in place of its picture. Returns the labels of the folders that cannot be shown, since
/// the folder that they are in does not exist, or is in one of them.
QStringList ADO_Course_ShowFolders(TreeModel &tree, bool withRootNode, bool withTicks);
/// Adds all courses by title, as one flat list if `simpleList`, else each below its folders. A course that
/// lost its last link gets one to the root level. One that is only in folders that are not shown is added at
/// the top, under the key that it would have in the first of them. The first node is selected.
void ADO_Course_FillCourseList(TreeModel &tree, bool simpleList, bool withTicks);
/// Deals with the courses without a link: with `deleteOrphans` their rows in `Courses` are deleted, otherwise
/// they get a link to the root level and a node. False on an error.
bool ADO_Course_RepairCourseList(TreeModel &tree, bool deleteOrphans);
/// Adds a node for each link of one course.
void ADO_Course_NewCourseToList(TreeModel &tree, CourseRef courseRef, const QString &title);
