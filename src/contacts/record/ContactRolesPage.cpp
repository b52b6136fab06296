#include "contacts/record/ContactRolesPage.h"

#include "contacts/roles/RoleModule.h"
#include "database/statements/Security.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Clock.h"

namespace
{
void ShowDay(DateField *field, int day)
{
    const QDate date = IntToDate(day);
    field->SetDay(date.isValid() ? date : Clock::Today());
}
} // namespace

ContactRolesPage::ContactRolesPage(QWidget *parent)
    : QWidget(parent)
{
    m_roles.SetColumns({QStringLiteral("Role"), QStringLiteral("Charge Rate"), QStringLiteral("Start Date"),
                        QStringLiteral("End Date")});
    FormBuilder form(this);
    m_roleList = form.Combo(QStringLiteral("RoleList"), QStringLiteral("Role:"), m_types);
    form.Beside();
    m_rate = form.Money(QStringLiteral("Rate"), QStringLiteral("Charge Rate"));
    m_start = form.Date(QStringLiteral("StartDate"), QStringLiteral("Start Date:"));
    form.Beside();
    m_end = form.Date(QStringLiteral("EndDate"), QStringLiteral("End Date:"));
    form.BeginButtons(FormBuilder::Align::Start);
    m_addBtn = form.Button(QStringLiteral("AddRoleBtn"), QStringLiteral("Add Role"));
    m_deleteBtn = form.Button(QStringLiteral("DeleteRoleBtn"), QStringLiteral("Delete Role(s)"));
    form.EndButtons();
    m_list = form.List(QStringLiteral("RolesInfo"), QStringLiteral("Ro&les of this person:"), m_roles,
                       ListView::Choice::Multi);
    m_list->SetColumnChars({40, 16, 14, 14});
    m_list->SetEmptyText(QStringLiteral("No roles."));

    connect(&m_types, &ComboModel::CurrentChanged, this, &ContactRolesPage::EnableButtons);
    // Choosing the same role again starts it again.
    connect(m_roleList, &QComboBox::activated, this, &ContactRolesPage::ShowType);
    connect(m_roles.Selection(), &QItemSelectionModel::selectionChanged, this,
            &ContactRolesPage::ShowSelected);
    connect(&m_roles, &ListModel::Changed, this, &ContactRolesPage::EnableButtons);
    connect(m_addBtn, &QPushButton::clicked, this, &ContactRolesPage::AddRole);
    connect(m_deleteBtn, &QPushButton::clicked, this, &ContactRolesPage::DeleteRoles);
    connect(m_list, &ListView::DeletePressed, m_deleteBtn, &QPushButton::click);
    ClearFields();
}

void ContactRolesPage::FillLists()
{
    ADO_Contact_FillRoleTypeList(m_types, false);
    ShowType();
}

void ContactRolesPage::ClearFields()
{
    m_types.SetCurrent(0);
    ShowType();
}

void ContactRolesPage::SetLocked(bool locked)
{
    m_locked = locked;
    LockFields(this, locked);
    LockFields(m_rate, locked || !UserMay(Right::StaffRates, Level::Full));
    EnableButtons();
}

void ContactRolesPage::ShowType()
{
    m_rate->SetValue(
        m_types.CurrentData() > 0 ? ADO_Contact_GetRoleChargeRate(RoleTypeRef(m_types.CurrentData())) : 0);
    m_start->SetDay(Clock::Today());
    m_end->SetDay(Clock::Today());
    EnableButtons();
}

void ContactRolesPage::ShowSelected()
{
    EnableButtons();
    const std::vector<int> rows = m_roles.SelectedRows();
    if (rows.size() != 1)
        return;
    const ContactRole role = Role_Of(m_roles, rows.front());
    // A role that is no longer offered is in nobody's list: it must not be taken for the one chosen before.
    m_types.SetCurrent(m_types.FindData(role.roleTypeRef.number));
    m_rate->SetValue(role.chargeRate);
    ShowDay(m_start, role.startDate);
    ShowDay(m_end, role.endDate);
}

void ContactRolesPage::AddRole()
{
    m_rate->Leave();
    if (!DaysAreReadable(this))
        return;
    Role_AddToList({RoleTypeRef(m_types.CurrentData()), m_types.CurrentText(), m_rate->Value(),
                    DateToInt(m_start->Day()), DateToInt(m_end->Day())},
                   m_roles);
}

void ContactRolesPage::DeleteRoles()
{
    Role_RemoveSelected(m_contactRef, m_roles);
    if (m_roles.IsEmpty())
        ClearFields();
}

void ContactRolesPage::EnableButtons()
{
    m_addBtn->setEnabled(!m_locked && m_types.CurrentData() > 0);
    m_deleteBtn->setEnabled(!m_locked && m_roles.Selection()->hasSelection());
}
