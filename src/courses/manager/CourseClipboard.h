#pragma once

#include "courses/manager/CourseNode.h"

/// The node of the course tree that was cut or copied, and where it may be pasted. It is kept by its key:
/// listing the tree again makes other nodes of the same keys.
class CourseClipboard final
{
public:
    enum class Pending { Nothing, Cut, Copy };

    void Take(Pending pending, const TreeNode *node);
    void Clear() { *this = {}; }

    Pending State() const { return m_pending; }
    CourseRef Course() const { return m_course; } ///< 0 for a folder
    FolderRef Folder() const { return m_folder; } ///< 0 for a course
    FolderRef Place() const { return m_place; }   ///< the folder that it was taken from; 0 = root level
    const QString &Key() const { return m_key; }
    const QString &Text() const { return m_text; }

    /// Which commands can be used with a node selected.
    struct Offer {
        bool paste = false;
        bool pasteRoot = false;
        bool pasteDuplicate = false;
        QString pasteCaption = QStringLiteral("Paste");
    };
    Offer At(const TreeNode *selected) const;

private:
    Pending m_pending = Pending::Nothing;
    CourseRef m_course;
    FolderRef m_folder;
    FolderRef m_place;
    QString m_key;
    QString m_text;
};
