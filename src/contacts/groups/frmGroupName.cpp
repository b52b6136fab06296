#include "contacts/groups/frmGroupName.h"

#include "contacts/groups/GroupModule.h"
#include "contacts/lists/ContactFields.h"
#include "forms/frames/FormBuilder.h"

frmGroupName::frmGroupName(QWidget *parent)
    : ItemDialog(QStringLiteral("frmGroupName"), QStringLiteral("Groups"), parent)
{
    FormBuilder form(this);
    AddNotice(form);
    m_linkList = form.Typed(QStringLiteral("LinkList"), QStringLiteral("Group Type:"), m_types);
    Required().Add(form.Label(), m_linkList);
    m_groupName = form.Text(QStringLiteral("GroupName"), QStringLiteral("Group Name:"), 255);
    Required().Add(form.Label(), m_groupName);
    ContactFields::FitChars(m_groupName, 30);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("Reference ID:"));
    ContactFields::TakeTyped(m_linkList, ContactSection::GroupTypes);
    Contact_FillList(ContactSection::GroupTypes, m_types, true);
    AddButtons(form);
}

void frmGroupName::EditItem(int key)
{
    BeginEditing(key);
    Notify(QStringLiteral("Loading Group Information"));
    const ReadRow<GroupName> group = ADO_Contact_ShowGroupName(GroupRef(key));
    Notify({});
    if (group)
        ShowGroupName(*group);
    EndReading(static_cast<bool>(group), QStringLiteral("group"));
}

RefLabel frmGroupName::Item() const
{
    return {m_refName->text(), m_groupName->text()};
}

void frmGroupName::ShowGroupName(const GroupName &group)
{
    ContactFields::Show(m_groupName, group.name);
    ContactFields::Show(m_refName, group.referenceId);
    m_types.SetCurrent(m_types.FindData(group.linkRef.number));
}

void frmGroupName::LeaveFields()
{
    m_linkList->Leave();
}

int frmGroupName::Store()
{
    const LinkRef typeRef(m_types.CurrentData());
    const RefLabel item = Item();
    return Key() > 0 ? GroupName_Update(GroupRef(Key()), item.name, item.reference, typeRef)
                     : GroupName_Add(item.name, item.reference, typeRef);
}
