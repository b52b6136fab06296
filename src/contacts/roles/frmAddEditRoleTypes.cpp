#include "contacts/roles/frmAddEditRoleTypes.h"

#include "contacts/lists/ContactFields.h"
#include "contacts/roles/RoleModule.h"
#include "database/statements/Security.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"

frmAddEditRoleTypes::frmAddEditRoleTypes(QWidget *parent)
    : ItemDialog(QStringLiteral("frmAddEditRoleTypes"), QStringLiteral("Role"), parent)
{
    m_active.Fill({{QStringLiteral("Yes"), static_cast<int>(RoleStatus::Active)},
                   {QStringLiteral("No"), static_cast<int>(RoleStatus::NotActive)}});
    m_active.SetCurrent(0);
    FormBuilder form(this);
    AddNotice(form);
    m_roleName = form.Text(QStringLiteral("RoleName"), QStringLiteral("Role Name:"), 255);
    Required().Add(form.Label(), m_roleName);
    ContactFields::FitChars(m_roleName, 30);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("Reference:"));
    m_description = form.Text(QStringLiteral("Description"), QStringLiteral("Description:"));
    m_rate = form.Money(QStringLiteral("Rate"), QStringLiteral("Charge Rate"));
    m_rate->SetValue(0);
    LockFields(m_rate, !UserMay(Right::StaffRates, Level::Full));
    form.Combo(QStringLiteral("ActiveList"), QStringLiteral("Active:"), m_active);
    AddButtons(form);
}

void frmAddEditRoleTypes::EditItem(int key)
{
    BeginEditing(key);
    const ReadRow<RoleType> role = ADO_Contact_ShowRoleType(RoleTypeRef(key));
    if (role)
        ShowRoleType(*role);
    EndReading(static_cast<bool>(role), QStringLiteral("role"));
}

RefLabel frmAddEditRoleTypes::Item() const
{
    return {m_refName->text(), m_roleName->text()};
}

void frmAddEditRoleTypes::ShowRoleType(const RoleType &role)
{
    ContactFields::Show(m_roleName, role.name);
    ContactFields::Show(m_refName, role.referenceId);
    ContactFields::Show(m_description, role.description);
    m_rate->SetValue(role.chargeRate);
    m_active.ChooseData(static_cast<int>(role.status));
}

void frmAddEditRoleTypes::LeaveFields()
{
    m_rate->Leave();
}

int frmAddEditRoleTypes::Store()
{
    const RoleType role{m_roleName->text(), m_description->text(), m_rate->Value(),
                        static_cast<RoleStatus>(m_active.CurrentData()), m_refName->text()};
    return Key() > 0 ? RoleType_Update(RoleTypeRef(Key()), role) : RoleType_Add(role);
}
