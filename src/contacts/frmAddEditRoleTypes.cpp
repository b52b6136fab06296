#include "contacts/frmAddEditRoleTypes.h"

#include "contacts/ContactFields.h"
#include "contacts/RoleModule.h"
#include "core/Session.h"
#include "database/Security.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"

namespace
{
constexpr int rightRate = 36;
constexpr int fullAccess = 9;
} // namespace

frmAddEditRoleTypes::frmAddEditRoleTypes(QWidget *parent)
    : FormDialog(QStringLiteral("frmAddEditRoleTypes"), QStringLiteral("Role"), parent)
{
    m_active.Fill({{QStringLiteral("Yes"), static_cast<int>(RoleStatus::Active)},
                   {QStringLiteral("No"), static_cast<int>(RoleStatus::NotActive)}});
    m_active.SetCurrent(0);
    FormBuilder form(this);
    m_warn = form.Line(QStringLiteral("Warn"), QStringLiteral("This role is no more."));
    m_warn->hide();
    m_roleName = form.Text(QStringLiteral("RoleName"), QStringLiteral("Role Name:"), 255);
    m_required.Add(form.Label(), m_roleName);
    ContactFields::FitChars(m_roleName, 30);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("Reference:"));
    m_description = form.Text(QStringLiteral("Description"), QStringLiteral("Description:"));
    m_rate = form.Money(QStringLiteral("Rate"), QStringLiteral("Charge Rate"));
    m_rate->SetValue(0);
    form.Combo(QStringLiteral("ActiveList"), QStringLiteral("Active:"), m_active);
    form.BeginButtons();
    m_addBtn = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    QPushButton *exit = form.Button(QStringLiteral("CanBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    m_modified = new ModifiedMark(m_addBtn, this);
    m_modified->Watch(this);
    connect(m_addBtn, &QPushButton::clicked, this, &frmAddEditRoleTypes::Save);
    connect(exit, &QPushButton::clicked, this, &frmAddEditRoleTypes::reject);
}

void frmAddEditRoleTypes::EditItem(int roleTypeRef)
{
    m_addBtn->setText(QStringLiteral("&Update"));
    m_gone = true;
    ADO_Contact_ShowRoleType(*this, roleTypeRef);
    LockFields(m_rate, UserRight(rightRate) < fullAccess);
    m_modified->Clear();
}

RefLabel frmAddEditRoleTypes::Item() const
{
    return {m_refName->text(), m_roleName->text()};
}

bool frmAddEditRoleTypes::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmAddEditRoleTypes::ShowLoading(int roleTypeRef)
{
    m_roleTypeRef = roleTypeRef;
    m_addBtn->setEnabled(false);
}

void frmAddEditRoleTypes::ShowRoleType(const RoleType &role)
{
    m_roleName->setText(role.name);
    m_refName->setText(role.referenceId);
    m_description->setText(role.description);
    m_rate->SetValue(role.chargeRate);
    m_active.ChooseData(static_cast<int>(role.status));
    m_gone = false;
}

void frmAddEditRoleTypes::ShowLoaded()
{
    m_addBtn->setEnabled(!m_gone);
    m_warn->setVisible(m_gone);
}

void frmAddEditRoleTypes::Save()
{
    m_rate->Leave();
    if (m_gone || !m_required.Complete())
        return;
    const RoleType role{m_roleName->text(), m_description->text(), m_rate->Value(),
                        static_cast<RoleStatus>(m_active.CurrentData()), m_refName->text()};
    const int key = m_roleTypeRef > 0 ? RoleType_Update(m_roleTypeRef, role) : RoleType_Add(role);
    if (key < 1)
        return;
    m_modified->Clear();
    gDialogResult = key;
    accept();
}
