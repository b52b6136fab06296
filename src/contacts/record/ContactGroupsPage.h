#pragma once

#include "contacts/record/ContactSave.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "database/values/Keys.h"

#include <QWidget>

#include <algorithm>

class FormBuilder;
class ListView;
class QPushButton;
class TreeView;
class TypedCombo;

/// The "Groups" tab of a person: the members of a group, the people to put into it, and all relations of the
/// person as a tree. Members are written when the person is saved, or when another group is chosen.
class ContactGroupsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ContactGroupsPage(QWidget *parent = nullptr);

    void FillLists();
    /// Whose tab it is, 0 for a new person, who comes first among the people to put in a group, and cannot be
    /// taken out of them.
    void SetContact(ContactRef contactRef, const QString &name);
    /// Chooses no group: what was done to its members and not written is dropped.
    void ForgetGroup();
    /// Keeps the group and reads its members again, which drops what was not written.
    void ReadGroupAgain();
    /// The group whose members were changed and not written yet.
    ChangedGroup Changed()
    {
        return {GroupRef(m_changed ? std::max(m_names.CurrentData(), 0) : 0), m_members, m_seen};
    }
    /// Takes out of the changed members who was deleted, and forgets a group that was; the user is told.
    /// False on an error.
    bool LeaveOutDeleted();
    /// What was changed is written, and shows among the relations.
    void ShowStored();
    void Clear();
    void SetLocked(bool locked);

    ListModel &GroupList() { return m_people; }
    TreeModel &GroupTree() { return m_tree; }

signals:
    void MembersChanged();
    /// The user typed in the list of types.
    void TypeEdited(const QString &text);

private:
    void BuildPeople(FormBuilder &form);
    void BuildMembers(FormBuilder &form);
    void BuildTree(FormBuilder &form);
    void Connect();
    void ShowType();
    void ShowGroup();
    void ForgetChoice();
    bool OfferToStore();
    bool StoreMembers(GroupRef groupRef);
    void ForgetDeleted();
    void SetChanged();
    void SelectContacts();
    void RemovePeople();
    void ClearPeople();
    void AddMembers();
    void RemoveMembers();
    void ClearMembers();
    void ViewMembers();
    void OpenLeaf(const TreeNode *node);
    void OpenContacts(const QStringList &keys);
    void Refresh();
    void EnableButtons();

    ComboModel m_types;
    ComboModel m_names;
    ListModel m_people;
    ListModel m_members;
    SeenMembers m_seen;
    TreeModel m_tree;
    ListItem m_contact;     ///< the person whose tab it is
    LinkRef m_typeRef;      ///< the type whose groups are listed
    GroupRef m_groupRef;    ///< the group whose members are shown; 0 = none
    QString m_groupName;    ///< as the list has it
    bool m_changed = false; ///< its members are not written yet
    bool m_locked = false;

    TypedCombo *m_linkList;
    TypedCombo *m_groupNameList;
    ListView *m_groupList;
    QPushButton *m_selectBtn;
    QPushButton *m_remGBtn;
    QPushButton *m_clearGBtn;
    QPushButton *m_makeLinkBtn;
    ListView *m_linkInfo;
    QPushButton *m_remBtn;
    QPushButton *m_clearLinksBtn;
    QPushButton *m_viewBtn;
    TreeView *m_groupTree;
    QPushButton *m_refBtn;
};
