#include "contacts/record/ContactGroupsPage.h"

#include "contacts/groups/GroupModule.h"
#include "contacts/groups/GroupODBC.h"
#include "contacts/lists/ContactFields.h"
#include "contacts/record/frmAddContact.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OtherScreens.h"
#include "forms/progress/ProgressBox.h"
#include "platform/desktop/Dialogs.h"

namespace
{
const QString groupings = QStringLiteral("Groupings");
} // namespace

ContactGroupsPage::ContactGroupsPage(QWidget *parent)
    : QWidget(parent)
{
    m_members.SetColumns({QStringLiteral("Contact"), QStringLiteral("Grouped on")});
    {
        FormBuilder form(this);
        m_linkList = form.Typed(QStringLiteral("LinkList"), QStringLiteral("Group Type:"), m_types);
        form.Beside();
        m_groupNameList = form.Typed(QStringLiteral("GroupNameList"), QStringLiteral("GROUP:"), m_names);
        form.BeginColumns();
        BuildPeople(form);
        form.NextColumn();
        BuildMembers(form);
        form.NextColumn();
        BuildTree(form);
        form.EndColumns();
    }
    ContactFields::TakeTyped(m_linkList, ContactSection::GroupTypes);
    m_groupNameList->AllowTyping(UserMay(Right::Groups, Level::Edit));
    m_groupNameList->SetNewTextHandler(
        [this](const QString &typed) { GroupName_TakeTyped(LinkRef(m_types.CurrentData()), m_names, typed); },
        ContactSectionOf(ContactSection::Groups).word);
    Connect();
}

void ContactGroupsPage::BuildPeople(FormBuilder &form)
{
    m_groupList = form.List(QStringLiteral("GroupList"), QStringLiteral("Contacts:"), m_people,
                            ListView::Choice::Multi);
    form.BeginButtons(FormBuilder::Align::Start);
    m_selectBtn = form.Button(QStringLiteral("SelectBtn"), QStringLiteral("Add Contacts"));
    m_remGBtn = form.Button(QStringLiteral("RemGBtn"), QStringLiteral("Remove"));
    m_clearGBtn = form.Button(QStringLiteral("ClearGBtn"), QStringLiteral("Clear All"));
    form.EndButtons();
    form.BeginButtons(FormBuilder::Align::Start);
    m_makeLinkBtn = form.Button(QStringLiteral("MakeLinkBtn"), QStringLiteral("Add to Group"));
    form.EndButtons();
}

void ContactGroupsPage::BuildMembers(FormBuilder &form)
{
    m_linkInfo = form.List(QStringLiteral("LinkInfo"), QStringLiteral("&Members of the group:"), m_members,
                           ListView::Choice::Multi);
    m_linkInfo->SetColumnChars({20, 12});
    form.BeginButtons(FormBuilder::Align::Start);
    m_remBtn = form.Button(QStringLiteral("RemBtn"), QStringLiteral("Remove"));
    m_clearLinksBtn = form.Button(QStringLiteral("ClearLinksBtn"), QStringLiteral("Clear All"));
    form.EndButtons();
    form.BeginButtons(FormBuilder::Align::Start);
    m_viewBtn = form.Button(QStringLiteral("ViewBtn"), QStringLiteral("View"));
    form.EndButtons();
}

void ContactGroupsPage::BuildTree(FormBuilder &form)
{
    m_groupTree =
        form.Tree(QStringLiteral("GroupTree"), QStringLiteral("Re&lations of this person:"), m_tree);
    m_groupTree->SetEmptyText(QStringLiteral("In no group."));
    form.BeginButtons(FormBuilder::Align::Start);
    m_refBtn = form.Button(QStringLiteral("RefBtn"), QStringLiteral("Refresh"));
    form.EndButtons();
}

void ContactGroupsPage::Connect()
{
    connect(&m_types, &ComboModel::CurrentChanged, this, &ContactGroupsPage::ShowType);
    connect(&m_names, &ComboModel::CurrentChanged, this, &ContactGroupsPage::ShowGroup);
    if (QLineEdit *typed = m_linkList->lineEdit())
        connect(typed, &QLineEdit::textEdited, this, &ContactGroupsPage::TypeEdited);

    connect(m_selectBtn, &QPushButton::clicked, this, &ContactGroupsPage::SelectContacts);
    connect(m_remGBtn, &QPushButton::clicked, this, &ContactGroupsPage::RemovePeople);
    connect(m_groupList, &ListView::DeletePressed, m_remGBtn, &QPushButton::click);
    connect(m_clearGBtn, &QPushButton::clicked, this, &ContactGroupsPage::ClearPeople);
    connect(m_makeLinkBtn, &QPushButton::clicked, this, &ContactGroupsPage::AddMembers);
    connect(m_remBtn, &QPushButton::clicked, this, &ContactGroupsPage::RemoveMembers);
    connect(m_linkInfo, &ListView::DeletePressed, m_remBtn, &QPushButton::click);
    connect(m_clearLinksBtn, &QPushButton::clicked, this, &ContactGroupsPage::ClearMembers);
    connect(m_viewBtn, &QPushButton::clicked, this, &ContactGroupsPage::ViewMembers);
    connect(m_linkInfo, &ListView::Opened, m_viewBtn, &QPushButton::click);
    connect(m_refBtn, &QPushButton::clicked, this, &ContactGroupsPage::Refresh);
    connect(m_groupTree, &TreeView::Opened, this, &ContactGroupsPage::OpenLeaf);

    for (ListModel *list : {&m_people, &m_members}) {
        connect(list, &ListModel::Changed, this, &ContactGroupsPage::EnableButtons);
        connect(list->Selection(), &QItemSelectionModel::selectionChanged, this,
                &ContactGroupsPage::EnableButtons);
    }
    EnableButtons();
}

void ContactGroupsPage::FillLists()
{
    Contact_FillList(ContactSection::GroupTypes, m_types, true);
}

void ContactGroupsPage::SetContact(ContactRef contactRef, const QString &name)
{
    m_contact = contactRef ? ListItem{u'?' % SqlNumber(contactRef), name} : ListItem();
    if (const int row = m_people.Find(m_contact.key); row >= 0)
        m_people.SetText(row, name);
    else
        ClearPeople();
}

void ContactGroupsPage::ForgetGroup()
{
    ForgetChoice();
    m_members.Clear();
    m_seen = {};
}

void ContactGroupsPage::ReadGroupAgain()
{
    m_groupRef = {};
    m_members.Clear();
    m_seen = {};
    ShowGroup();
}

bool ContactGroupsPage::LeaveOutDeleted()
{
    const GroupRef groupRef = Changed().groupRef;
    if (!groupRef)
        return true;
    const int living = Group_LeaveOutDeleted(groupRef, m_members);
    if (living == 0)
        ForgetDeleted();
    return living >= 0;
}

void ContactGroupsPage::ShowStored()
{
    m_changed = false;
    ADO_Contact_ShowGroup_Tree(ContactRef(KeyNumber(m_contact.key)), m_tree);
    Group_TellElsewhere(m_groupName, m_seen);
}

void ContactGroupsPage::Clear()
{
    ForgetGroup();
    m_types.SetCurrent(0);
    m_tree.Clear();
    ClearPeople();
}

void ContactGroupsPage::SetLocked(bool locked)
{
    m_locked = locked;
    LockFields(this, locked);
    // Looking at another group changes nothing; typing would add one.
    for (TypedCombo *list : {m_linkList, m_groupNameList}) {
        LockFields(list, false);
        if (QLineEdit *typed = list->lineEdit())
            typed->setReadOnly(locked);
    }
    EnableButtons();
}

void ContactGroupsPage::ShowType()
{
    // While the list is filled again it has no choice for a moment.
    const LinkRef typeRef(m_types.CurrentData());
    if (!typeRef || typeRef == m_typeRef)
        return;
    if (!OfferToStore()) {
        m_types.ChooseData(m_typeRef.number);
        return;
    }
    m_typeRef = typeRef;
    ADO_Contact_FillGroupNames(typeRef, m_names);
    ForgetChoice();
    // Beside a type without groups the members shown last stay to be read.
    if (m_names.Count() > 0)
        m_members.Clear();
}

void ContactGroupsPage::ShowGroup()
{
    const GroupRef groupRef(m_names.CurrentData());
    if (!groupRef || groupRef == m_groupRef)
        return;
    if (!OfferToStore()) {
        m_names.ChooseData(m_groupRef.number);
        return;
    }
    m_groupRef = groupRef;
    m_groupName = m_names.CurrentText();
    m_changed = false;
    const int living = Group_Check(groupRef);
    if (living == 0)
        ADO_Contact_FillGroupNames(m_typeRef, m_names);
    // Members that could not be read would be lost by the next write.
    if (living < 1 || !ADO_Contact_ShowGroup(groupRef, m_members))
        ForgetGroup();
    else
        m_seen.See(m_members);
}

void ContactGroupsPage::ForgetChoice()
{
    m_groupRef = {};
    m_groupName.clear();
    m_changed = false;
    m_names.SetCurrent(-1);
}

/// False if the members were to be written and could not be.
bool ContactGroupsPage::OfferToStore()
{
    if (!m_groupRef || !m_changed)
        return true;
    const Dialogs::Answer answer =
        Dialogs::MsgBox(u"Okay to update relationships for group '" % m_groupName % u"' ?", groupings,
                        Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
    return answer != Dialogs::Answer::Yes || StoreMembers(m_groupRef);
}

bool ContactGroupsPage::StoreMembers(GroupRef groupRef)
{
    int stored = 0;
    const bool finished = ProgressBox::Run(this, groupings, [&](Progress &progress) {
        stored = Group_Update(groupRef, m_members, m_seen, progress);
    });
    if (stored < 0) {
        if (!finished)
            Dialogs::MsgBox(u"Stopped. The group '" % m_groupName %
                                u"' keeps the members that it had; those shown are not stored.",
                            groupings, Dialogs::Buttons::Ok, Dialogs::Icon::Information);
        return false;
    }
    if (stored == 0 && GroupRef(m_names.CurrentData()) == groupRef)
        ForgetDeleted();
    ShowStored();
    return true;
}

void ContactGroupsPage::ForgetDeleted()
{
    ADO_Contact_FillGroupNames(m_typeRef, m_names);
    ForgetGroup();
}

void ContactGroupsPage::SetChanged()
{
    m_changed = true;
    emit MembersChanged();
}

void ContactGroupsPage::SelectContacts()
{
    OtherScreens::Installed().pickPeople(m_people, this);
}

void ContactGroupsPage::RemovePeople()
{
    std::vector<int> rows = m_people.SelectedRows();
    std::erase_if(rows, [this](int row) { return m_people.At(row).key == m_contact.key; });
    m_people.Take(rows);
}

void ContactGroupsPage::ClearPeople()
{
    m_people.Clear();
    if (!m_contact.key.isEmpty())
        m_people.Add(m_contact);
}

void ContactGroupsPage::AddMembers()
{
    m_linkList->Leave();
    m_groupNameList->Leave();
    if (Group_AddMembers(m_types, m_names, m_people, m_members))
        SetChanged();
}

void ContactGroupsPage::RemoveMembers()
{
    m_members.Take(m_members.SelectedRows());
    SetChanged();
}

void ContactGroupsPage::ClearMembers()
{
    m_members.Clear();
    SetChanged();
}

void ContactGroupsPage::ViewMembers()
{
    // Somebody who is a member under two types is one record.
    QStringList keys;
    for (const QString &key : m_members.SelectedKeys())
        keys.append(key.section(u'!', 0, 0));
    keys.removeDuplicates();
    OpenContacts(keys);
}

void ContactGroupsPage::OpenLeaf(const TreeNode *node)
{
    if (node->key.startsWith(u'?'))
        OpenContacts({QString(node->key)});
}

void ContactGroupsPage::OpenContacts(const QStringList &keys)
{
    if (frmAddContact::ShowRecords(keys, this)) {
        ADO_Contact_ShowGroup_Tree(ContactRef(KeyNumber(m_contact.key)), m_tree);
        if (m_groupRef && !m_changed && ADO_Contact_ShowGroup(m_groupRef, m_members))
            m_seen.See(m_members);
    }
}

void ContactGroupsPage::Refresh()
{
    if (!OfferToStore())
        return;
    const LinkRef typeRef = m_typeRef;
    const GroupRef groupRef = m_groupRef;
    m_typeRef = {};
    m_names.Clear();
    ForgetGroup();
    Contact_FillList(ContactSection::GroupTypes, m_types, true);
    m_types.ChooseData(typeRef.number);
    m_names.ChooseData(groupRef.number);
    ADO_Contact_ShowGroup_Tree(ContactRef(KeyNumber(m_contact.key)), m_tree);
}

void ContactGroupsPage::EnableButtons()
{
    const bool mayChange = !m_locked;
    m_linkInfo->SetEmptyText(m_groupRef ? QStringLiteral("Nobody is in this group.")
                                        : QStringLiteral("Choose a group to see its members."));
    m_selectBtn->setEnabled(mayChange);
    m_remGBtn->setEnabled(mayChange && m_people.Selection()->hasSelection());
    m_clearGBtn->setEnabled(mayChange);
    m_makeLinkBtn->setEnabled(mayChange);
    m_remBtn->setEnabled(mayChange && m_members.Selection()->hasSelection());
    m_clearLinksBtn->setEnabled(mayChange && !m_members.IsEmpty());
    m_viewBtn->setEnabled(m_members.Selection()->hasSelection());
}
