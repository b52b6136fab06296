#pragma once

#include "contacts/GroupODBC.h"
#include "controls/ComboModel.h"
#include "database/GlobalCode.h"
#include "forms/ItemDialog.h"

class QLineEdit;
class TypedCombo;

/// One group: its type, name and reference. On success Item() has the texts.
class frmGroupName final : public ItemDialog, private GroupNameView
{
    Q_OBJECT

public:
    explicit frmGroupName(QWidget *parent = nullptr);

    /// Loads a group to change instead of adding one.
    void EditItem(int groupRef);
    RefLabel Item() const;

private:
    void ShowLoading(const QString &notice) override;
    void ShowGroupName(const GroupName &group) override;
    void ShowLoaded() override;
    void LeaveFields() override;
    int Store() override;

    bool m_found = false;
    ComboModel m_types;
    TypedCombo *m_linkList;
    QLineEdit *m_groupName;
    QLineEdit *m_refName;
};
