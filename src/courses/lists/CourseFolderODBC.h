#pragma once

#include "database/values/Keys.h"

#include <QString>

class TreeModel;

/// Data functions of the folders, table `CoursesHierarchy`, and of the links between courses and folders,
/// table `CoursesRelationships`, where folder 0 is the root level. Nodes are keyed "!" and folder, "?" and
/// course at root level, "?" course "!" folder below one.

/// True if the link was made, false if it stood already or on an error.
bool ADO_Course_AddCourseRelations(CourseRef courseRef, FolderRef folderRef);
/// Replaces the course's links by the ticked nodes of the tree; none ticked is the root level. False on an
/// error.
bool ADO_Course_UpdateCourseRelations(CourseRef courseRef, const TreeModel &folders);
/// Ticks the course's folders in the tree, and clears all other ticks.
void ADO_Course_ShowCourseRelations(CourseRef courseRef, TreeModel &folders);
/// Fills the tree with all folders, under a node "Root Level" if `withRootNode`; `withTicks` gives each node
/// a tick, cleared, in place of its picture.
void ADO_Course_ShowFolders(TreeModel &tree, bool withRootNode, bool withTicks);
/// Adds all courses by title, as one flat list if `simpleList`, else each below its folders. A course that
/// lost its last link gets one to the root level. The first node is selected.
void ADO_Course_FillCourseList(TreeModel &tree, bool simpleList, bool withTicks);
/// Adds a node for each link of one course.
void ADO_Course_NewCourseToList(TreeModel &tree, CourseRef courseRef, const QString &title);
