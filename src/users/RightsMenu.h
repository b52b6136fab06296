#pragma once

#include <QObject>

class QKeyEvent;
class QMenu;
class TreeView;
class UserRights;
struct TreeNode;

/// The pop-up menus of the rights tree: on a right click, the Menu key, Shift+F10 or the space bar the
/// selected right offers its levels, and the chosen one is stored and shown. The digit of a level sets it at
/// once. On a heading both set all rights below it. While the user is an administrator there is nothing to
/// choose, and a click or key says so.
class RightsMenu final : public QObject
{
    Q_OBJECT

public:
    RightsMenu(TreeView *view, UserRights &rights, QObject *parent = nullptr);

    /// Sets all rights of the tree to a level.
    void GrantAll(QChar level);
    /// A tree that can only be looked at has no menus.
    void SetReadOnly(bool readOnly) { m_readOnly = readOnly; }

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void RightChanged();

private:
    QMenu *NewMenu(const QString &name);
    void AddLevel(QMenu *menu, const QString &name, const QString &caption, QChar digit);
    bool RefuseForAdministrator();
    bool TakeKey(const QKeyEvent &key);
    void ChooseByDigit(QChar digit);
    void Open(const QPoint &globalPosition);
    void Choose(QChar digit);
    bool Has(const TreeNode &node, QChar level) const;
    void ShowChange();

    TreeView *m_view;
    UserRights &m_rights;
    QMenu *m_levels;
    QMenu *m_yesNo;
    bool m_readOnly = false;
};
