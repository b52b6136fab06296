#pragma once

#include "courses/lists/CourseFolderODBC.h"
#include "courses/manager/FolderStore.h"

/// Folders of courses for the screens: texts as typed, made safe for SQL here, and the boxes about names that
/// are taken.

/// Adds a folder called "New Folder", or "New Folder (2)" and so on where that is taken, and gives its
/// `label`. The new folder, below 1 where there is none.
int Course_NewFolder(FolderRef parent, QString &label);
/// Adds a folder to each ticked place, and to `tree`; false if none was added. Places that another
/// workstation deleted leave the list.
bool Course_AddCat(const QString &label, const QString &description, TreeModel &places, TreeModel &tree);
/// `folderRef`; 0 if the name is taken or the folder is gone, of which the user is told, -1 on an error.
int Course_UpdateFolder(const FolderTree::Folder &folder, FolderRef folderRef);
/// The same for the label alone.
int Course_RenameFolder(const QString &label, FolderRef folderRef, FolderRef parent);
/// Copies a folder with all in it into `target`, and deletes the original if it was cut, in one transaction.
/// The copy; -1 if the copying stopped, of which the user is told.
int Course_PasteFolder(FolderRef source, FolderRef target, bool withLinks, bool isCut);
/// Deletes a folder with all in it, and the courses that are then in no folder, in one transaction. False on
/// an error.
bool Course_DeleteFolder(FolderRef folderRef, TreeModel &tree);
/// Links the course to `target`, and takes it out of `cutFrom` if there is such a place, in one transaction.
/// False on an error, and if it was there already, of which the user is told.
bool Course_PasteLink(CourseRef courseRef, FolderRef target, std::optional<FolderRef> cutFrom);

/// The folders of courses; new ones are added to `tree` as well.
FolderStore Course_FolderStore(TreeModel &tree);
