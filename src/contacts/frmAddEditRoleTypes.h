#pragma once

#include "contacts/RoleODBC.h"
#include "controls/ComboModel.h"
#include "database/GlobalCode.h"
#include "forms/FormDialog.h"
#include "forms/RequiredMarks.h"

class MoneyField;
class QLabel;
class QLineEdit;
class QPushButton;

/// One role that people can be engaged as: name, description, the rate it starts with, and whether it is
/// offered. On success gDialogResult has the role's key, and Item() the texts.
class frmAddEditRoleTypes final : public FormDialog, private RoleTypeView
{
    Q_OBJECT

public:
    explicit frmAddEditRoleTypes(QWidget *parent = nullptr);

    /// Loads a role to change instead of adding one.
    void EditItem(int roleTypeRef);
    RefLabel Item() const;

protected:
    bool MayLeave() override;

private:
    void ShowLoading(int roleTypeRef) override;
    void ShowRoleType(const RoleType &role) override;
    void ShowLoaded() override;
    void Save();

    int m_roleTypeRef = 0; ///< the role to change; 0 to add one
    bool m_gone = false;
    ComboModel m_active;
    RequiredMarks m_required;
    QLabel *m_warn;
    QLineEdit *m_roleName;
    QLineEdit *m_refName;
    QLineEdit *m_description;
    MoneyField *m_rate;
    QPushButton *m_addBtn;
    ModifiedMark *m_modified;
};
