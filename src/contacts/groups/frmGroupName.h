#pragma once

#include "contacts/groups/GroupODBC.h"
#include "controls/ComboModel.h"
#include "database/values/GlobalCode.h"
#include "database/values/Keys.h"
#include "forms/frames/ItemDialog.h"

class QLineEdit;
class TypedCombo;

/// One group: its type, name and reference. On success Item() has the texts.
class frmGroupName final : public ItemDialog
{
    Q_OBJECT

public:
    explicit frmGroupName(QWidget *parent = nullptr);

    /// Loads a group to change instead of adding one.
    void EditItem(int key);
    RefLabel Item() const;

private:
    void ShowGroupName(const GroupName &group);
    void LeaveFields() override;
    int Store() override;

    ComboModel m_types;
    TypedCombo *m_linkList;
    QLineEdit *m_groupName;
    QLineEdit *m_refName;
};
