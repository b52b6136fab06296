#include "users/RightsMenu.h"

#include "controls/TreeModel.h"
#include "forms/lists/TreeView.h"
#include "platform/desktop/Dialogs.h"
#include "users/UserRights.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace
{
/// The right of a node, or all rights below a heading.
std::vector<const TreeNode *> Subjects(const TreeNode &node)
{
    if (node.children.empty())
        return {&node};
    std::vector<const TreeNode *> rights;
    for (const auto &child : node.children)
        rights.push_back(child.get());
    return rights;
}
} // namespace

RightsMenu::RightsMenu(TreeView *view, UserRights &rights, QObject *parent)
    : QObject(parent)
    , m_view(view)
    , m_rights(rights)
    , m_levels(NewMenu(QStringLiteral("ID_SecurityMenu")))
    , m_yesNo(NewMenu(QStringLiteral("ID_YesNo")))
{
    AddLevel(m_levels, QStringLiteral("ID_NoAccess"), QStringLiteral("&No Access"), RightLevel::none);
    AddLevel(m_levels, QStringLiteral("ID_ViewOnly"), QStringLiteral("&View/Select Only"), RightLevel::view);
    AddLevel(m_levels, QStringLiteral("ID_Add"), QStringLiteral("&Add Data Access Only"), RightLevel::add);
    AddLevel(m_levels, QStringLiteral("ID_Add/Edit"), QStringLiteral("Add and &Edit Access Only"),
             RightLevel::edit);
    AddLevel(m_levels, QStringLiteral("ID_FullAccess"),
             QStringLiteral("&Full Access [Add, Edit and Delete]\u2026"), RightLevel::full);
    AddLevel(m_yesNo, QStringLiteral("ID_Yes"), QStringLiteral("&Yes"), RightLevel::full);
    AddLevel(m_yesNo, QStringLiteral("ID_No"), QStringLiteral("&No"), RightLevel::none);

    m_view->installEventFilter(this);
    m_view->viewport()->installEventFilter(this);
    connect(m_view, &TreeView::clicked, this, &RightsMenu::RefuseForAdministrator);
}

QMenu *RightsMenu::NewMenu(const QString &name)
{
    auto *menu = new QMenu(m_view);
    menu->setObjectName(name);
    return menu;
}

void RightsMenu::AddLevel(QMenu *menu, const QString &name, const QString &caption, QChar digit)
{
    QAction *action = menu->addAction(caption);
    action->setObjectName(name);
    action->setCheckable(true);
    action->setData(digit);
    connect(action, &QAction::triggered, this, [this, digit] { Choose(digit); });
}

bool RightsMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && TakeKey(*static_cast<QKeyEvent *>(event)))
        return true;
    if (event->type() == QEvent::ContextMenu) {
        const auto *asked = static_cast<QContextMenuEvent *>(event);
        const bool byKey = asked->reason() != QContextMenuEvent::Mouse;
        const QRect row = m_view->visualRect(m_view->currentIndex());
        if (byKey)
            Open(m_view->viewport()->mapToGlobal(row.bottomLeft()));
        else if (m_view->indexAt(asked->pos()).isValid())
            Open(asked->globalPos());
        return true;
    }
    return QObject::eventFilter(watched, event);
}

/// True if the key is one of ours.
bool RightsMenu::TakeKey(const QKeyEvent &key)
{
    if (key.key() == Qt::Key_Space) {
        const QRect row = m_view->visualRect(m_view->currentIndex());
        Open(m_view->viewport()->mapToGlobal(row.bottomLeft()));
        return true;
    }
    const bool isDigit = key.key() >= Qt::Key_0 && key.key() <= Qt::Key_9;
    if (!isDigit || (key.modifiers() & ~Qt::KeypadModifier))
        return false;
    ChooseByDigit(QChar(u'0' + (key.key() - Qt::Key_0)));
    return true;
}

/// A digit that is no level of the selected right changes nothing.
void RightsMenu::ChooseByDigit(QChar digit)
{
    const TreeNode *node = m_view->Model().Selected();
    if (!node || m_readOnly || RefuseForAdministrator())
        return;
    const QMenu *menu = RightOfKey(node->key).kind == RightKind::YesNo ? m_yesNo : m_levels;
    const QList<QAction *> levels = menu->actions();
    if (std::any_of(levels.begin(), levels.end(),
                    [digit](const QAction *level) { return level->data().toChar() == digit; }))
        Choose(digit);
}

bool RightsMenu::RefuseForAdministrator()
{
    if (m_readOnly || !m_rights.IsAdministrator())
        return false;
    Dialogs::MsgBox(QStringLiteral("Uncheck the SystemAdmin box to change value."));
    return true;
}

void RightsMenu::Open(const QPoint &globalPosition)
{
    const TreeNode *node = m_view->Model().Selected();
    if (!node || m_readOnly || RefuseForAdministrator())
        return;
    const RightOfKey right(node->key);
    if (right.position < 0 && node->children.empty())
        return;
    QMenu *menu = right.kind == RightKind::YesNo ? m_yesNo : m_levels;
    for (QAction *action : menu->actions())
        action->setChecked(Has(*node, action->data().toChar()));
    menu->popup(globalPosition);
}

/// Whether choosing that level would change nothing.
bool RightsMenu::Has(const TreeNode &node, QChar level) const
{
    UserRights changed = m_rights;
    for (const TreeNode *right : Subjects(node))
        changed.Grant(RightOfKey(right->key), level);
    return changed.Text() == m_rights.Text();
}

void RightsMenu::Choose(QChar digit)
{
    const TreeNode *node = m_view->Model().Selected();
    if (!node)
        return;
    for (const TreeNode *right : Subjects(*node))
        m_rights.Grant(RightOfKey(right->key), digit);
    ShowChange();
}

void RightsMenu::GrantAll(QChar level)
{
    for (const TreeNode *node : m_view->Model().Nodes())
        m_rights.Grant(RightOfKey(node->key), level);
    ShowChange();
}

void RightsMenu::ShowChange()
{
    RefreshRightTexts(m_view->Model(), m_rights);
    emit RightChanged();
}
