#pragma once

#include "courses/manager/CourseClipboard.h"

#include <QStringList>

#include <functional>

/// The tree of the Course Manager: folders and courses, or the simple list of courses, and what can be done
/// with them. What another workstation deleted is told and leaves the tree, and nothing is written for it.
class CourseTree final
{
public:
    /// `showBusy` is told when a longer work begins and when it ends.
    explicit CourseTree(std::function<void(bool isBusy)> showBusy);

    TreeModel &Nodes() { return m_nodes; }
    const TreeModel &Nodes() const { return m_nodes; }
    const CourseClipboard &Clipboard() const { return m_clipboard; }
    bool IsSimpleList() const { return m_isSimpleList; }
    void SetSimpleList(bool isSimpleList) { m_isSimpleList = isSimpleList; }
    /// Forgets what belongs to a database, before another one is shown.
    void Forget();
    /// Lists everything again, and selects what was selected. Folders that cannot be shown are told of once.
    void Fill();

    struct Details {
        QString description;
        QString status; ///< "Pottery (Course)"
    };
    /// The selected node; what was deleted in the meantime is told and leaves the tree until one is there.
    Details ReadSelected();
    /// The courses that are in no folder but this one and those in it.
    int CoursesOnlyIn(const TreeNode *folder) const;

    /// The key of the folder that a new course goes into, "!0" for the root level.
    QString Location() const;
    /// Shows a new or a changed course, and selects it.
    void ShowCourse(CourseRef courseRef, const QString &title);
    /// Adds a folder where the selected node is, or at root level. The new node, null if there is none.
    const TreeNode *NewFolder(bool atRoot);
    /// Gives the node of that key another text.
    void Rename(const QString &key, const QString &text);

    void DeleteSelected();
    void DeleteLink();
    void Take(CourseClipboard::Pending pending);
    void Paste();
    void PasteOnRoot();
    /// The new course, null if there is none.
    const TreeNode *PasteDuplicate();

private:
    bool IsThere(CourseRef courseRef);
    bool IsThere(FolderRef folderRef);
    bool SourceIsThere();
    void PasteInto(FolderRef target);
    void PasteFolder(FolderRef target);
    void PasteCourse(FolderRef target);
    void AddNodes(CourseRef courseRef, const QString &title);
    void Remove(const QStringList &keys);
    void RemoveCourse(CourseRef courseRef);
    void RenameCourse(CourseRef courseRef, const QString &text);
    void SelectCourse(CourseRef courseRef, const QString &preferredKey);

    TreeModel m_nodes;
    CourseClipboard m_clipboard;
    std::function<void(bool)> m_showBusy;
    QStringList m_lost; ///< the folders that the user was told of
    bool m_isSimpleList = false;
};
