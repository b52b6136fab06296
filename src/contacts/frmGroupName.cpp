#include "contacts/frmGroupName.h"

#include "contacts/ContactFields.h"
#include "contacts/GroupModule.h"
#include "core/Session.h"
#include "forms/FormBuilder.h"

#include <QLabel>

frmGroupName::frmGroupName(QWidget *parent)
    : FormDialog(QStringLiteral("frmGroupName"), QStringLiteral("Groups"), parent)
{
    FormBuilder form(this);
    m_warn = form.Line(QStringLiteral("Warn"), QString());
    m_warn->hide();
    m_linkList = form.Typed(QStringLiteral("LinkList"), QStringLiteral("Group Type:"), m_types);
    m_required.Add(form.Label(), m_linkList);
    m_groupName = form.Text(QStringLiteral("GroupName"), QStringLiteral("Group Name:"), 255);
    m_required.Add(form.Label(), m_groupName);
    ContactFields::FitChars(m_groupName, 30);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("Reference ID:"));
    form.BeginButtons();
    m_addBtn = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    QPushButton *exit = form.Button(QStringLiteral("CanBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    ContactFields::TakeTyped(m_linkList, ContactSection::GroupTypes);
    Contact_FillList(ContactSection::GroupTypes, m_types, true);
    m_modified = new ModifiedMark(m_addBtn, this);
    m_modified->Watch(this);
    connect(m_addBtn, &QPushButton::clicked, this, &frmGroupName::Save);
    connect(exit, &QPushButton::clicked, this, &frmGroupName::reject);
}

void frmGroupName::EditItem(int groupRef)
{
    m_groupRef = groupRef;
    m_addBtn->setText(QStringLiteral("&Update"));
    m_gone = true;
    ADO_Contact_ShowGroupName(*this, groupRef);
    m_addBtn->setEnabled(!m_gone);
    m_modified->Clear();
}

RefLabel frmGroupName::Item() const
{
    return {m_refName->text(), m_groupName->text()};
}

bool frmGroupName::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmGroupName::ShowLoading(const QString &notice)
{
    m_warn->setText(notice);
    m_warn->show();
}

void frmGroupName::ShowGroupName(const GroupName &group)
{
    m_groupName->setText(group.name);
    m_refName->setText(group.referenceId);
    m_types.SetCurrent(m_types.FindData(group.linkRef));
    m_gone = false;
}

void frmGroupName::ShowLoaded()
{
    m_warn->setText(m_gone ? QStringLiteral("This group is no more.") : QString());
    m_warn->setVisible(m_gone);
}

void frmGroupName::Save()
{
    m_linkList->Leave();
    if (m_gone || !m_required.Complete())
        return;
    const int typeRef = m_types.CurrentData();
    const RefLabel item = Item();
    const int key = m_groupRef > 0 ? GroupName_Update(m_groupRef, item.name, item.reference, typeRef)
                                   : GroupName_Add(item.name, item.reference, typeRef);
    if (key < 1)
        return;
    m_modified->Clear();
    gDialogResult = key;
    accept();
}
