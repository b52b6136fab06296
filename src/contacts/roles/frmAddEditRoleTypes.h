#pragma once

#include "contacts/roles/RoleODBC.h"
#include "controls/ComboModel.h"
#include "database/values/GlobalCode.h"
#include "database/values/Keys.h"
#include "forms/frames/ItemDialog.h"

class MoneyField;
class QLineEdit;

/// One role that people can be engaged as: name, description, the rate it starts with, and whether it is
/// offered. On success Item() has the texts.
class frmAddEditRoleTypes final : public ItemDialog
{
    Q_OBJECT

public:
    explicit frmAddEditRoleTypes(QWidget *parent = nullptr);

    /// Loads a role to change instead of adding one.
    void EditItem(int key);
    RefLabel Item() const;

private:
    void ShowRoleType(const RoleType &role);
    void LeaveFields() override;
    int Store() override;

    ComboModel m_active;
    QLineEdit *m_roleName;
    QLineEdit *m_refName;
    QLineEdit *m_description;
    MoneyField *m_rate;
};
