// A part of frmCourse.h.
#include "courses/manager/frmCourse.h"

#include "courses/manager/CourseMenu.h"
#include "courses/manager/frmDuplicateOpts.h"
#include "database/statements/Security.h"
#include "forms/lists/TreeView.h"

#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

namespace
{
using Tool = CourseMenu::Tool;
using Pending = CourseClipboard::Pending;

std::function<QString()> Caption(const QString &text)
{
    return [text] { return text; };
}

Tool LikeButton(const QString &name, const QString &caption, QPushButton *button)
{
    return {name, Caption(caption), [button] { button->click(); }, [button] { return button->isEnabled(); }};
}
} // namespace

void frmCourse::BuildMenu()
{
    m_menu = new CourseMenu(m_list);
    AddFolderTools();
    m_menu->addSeparator();
    AddClipboardTools();
    m_menu->addSeparator();
    AddNodeTools();
    m_menu->addSeparator();
    BindFind();
    m_menu->Add(LikeButton(QStringLiteral("ID_Refresh"), QStringLiteral("Refresh"), m_refresh), Qt::Key_F5);
}

void frmCourse::AddFolderTools()
{
    m_menu->Add({QStringLiteral("ID_NewRootFolder"), Caption(QStringLiteral("Root Folder")),
                 [this] { NewFolder(true); }, [this] { return m_addFolder->isEnabled(); }});
    m_menu->Add({QStringLiteral("ID_NewFolder"), Caption(QStringLiteral("Folder")),
                 [this] { NewFolder(false); },
                 [this] { return m_addFolder->isEnabled() && MayChange(false); }});
    m_menu->Add(LikeButton(QStringLiteral("ID_SubItem"), QStringLiteral("Course"), m_add), QKeySequence::New);
}

void frmCourse::AddClipboardTools()
{
    const auto take = [this](Pending pending) {
        return [this, pending] { Run([this, pending] { m_tree.Take(pending); }); };
    };
    const auto mayTake = [this] { return MayChange(false); };
    const auto paste = [this] {
        Run([this] { m_tree.Paste(); });
        m_list->ShowNode(m_tree.Nodes().Selected());
    };
    const auto pasteOnRoot = [this] {
        Run([this] { m_tree.PasteOnRoot(); });
        m_list->ShowNode(m_tree.Nodes().Selected());
    };
    m_menu->Add({QStringLiteral("ID_Cut"), Caption(QStringLiteral("Cut")), take(Pending::Cut), mayTake},
                QKeySequence::Cut, CourseMenu::Key::OfTree);
    m_menu->Add({QStringLiteral("ID_Copy"), Caption(QStringLiteral("Copy")), take(Pending::Copy), mayTake},
                QKeySequence::Copy, CourseMenu::Key::OfTree);
    m_menu->Add({QStringLiteral("ID_Paste"), [this] { return Offer().pasteCaption; }, paste,
                 [this] { return Offer().paste; }},
                QKeySequence::Paste);
    m_menu->Add({QStringLiteral("ID_PasteRoot"), Caption(QStringLiteral("Paste on Root")), pasteOnRoot,
                 [this] { return Offer().pasteRoot; }});
    // On a course at root level the key pastes there.
    m_menu->Bind(QKeySequence::Paste, [this, paste] {
        if (Offer().pasteRoot)
            paste();
    });
    m_menu->Add({QStringLiteral("ID_PasteDuplicate"), Caption(QStringLiteral("Paste Duplicate")),
                 [this] { PasteDuplicate(); }, [this] { return Offer().pasteDuplicate; }});
    m_menu->Add({QStringLiteral("ID_DuplicateOptions"), Caption(QStringLiteral("Duplicate Options")),
                 [this] { frmDuplicateOpts(this).exec(); }, [this] { return MayChange(true); }});
}

void frmCourse::AddNodeTools()
{
    m_menu->Add(LikeButton(QStringLiteral("ID_Edit"), QStringLiteral("Edit/View"), m_edit));
    m_menu->Add({QStringLiteral("ID_DeleteLink"), Caption(QStringLiteral("Delete Link")),
                 [this] { Run([this] { m_tree.DeleteLink(); }); }, [this] { return MayChange(true); }});
    m_menu->Add(LikeButton(QStringLiteral("ID_Delete"), QStringLiteral("Delete"), m_delete),
                QKeySequence::Delete);
    m_menu->Add({QStringLiteral("ID_Rename"), Caption(QStringLiteral("Rename")), [this] { EditSelected(); },
                 [this] { return MayChange(false); }},
                Qt::Key_F2, CourseMenu::Key::OfTree);
}

void frmCourse::BindFind()
{
    const auto find = [this] {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
    };
    m_menu->Add({QStringLiteral("ID_Find"), Caption(QStringLiteral("Find")), find, [] { return true; }},
                QKeySequence::Find);
    auto *key = new QShortcut(QKeySequence::Find, this);
    key->setContext(Qt::WidgetWithChildrenShortcut);
    connect(key, &QShortcut::activated, this, find);
}

/// Whether the user may change the selected node, if there is one.
bool frmCourse::MayChange(bool courseAlone) const
{
    const TreeNode *node = m_tree.Nodes().Selected();
    return node && (!courseAlone || CourseNode::IsCourse(node)) && UserMay(Right::Courses, Level::Edit);
}

CourseClipboard::Offer frmCourse::Offer() const
{
    return m_tree.Clipboard().At(m_tree.Nodes().Selected());
}
