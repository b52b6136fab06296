#pragma once

#include "contacts/GroupODBC.h"
#include "controls/ComboModel.h"
#include "database/GlobalCode.h"
#include "forms/FormDialog.h"
#include "forms/RequiredMarks.h"

class QLabel;
class QLineEdit;
class QPushButton;
class TypedCombo;

/// One group: its type, name and reference. On success gDialogResult has the group's key, and Item() the
/// texts.
class frmGroupName final : public FormDialog, private GroupNameView
{
    Q_OBJECT

public:
    explicit frmGroupName(QWidget *parent = nullptr);

    /// Loads a group to change instead of adding one.
    void EditItem(int groupRef);
    RefLabel Item() const;

protected:
    bool MayLeave() override;

private:
    void ShowLoading(const QString &notice) override;
    void ShowGroupName(const GroupName &group) override;
    void ShowLoaded() override;
    void Save();

    int m_groupRef = 0; ///< the group to change; 0 to add one
    bool m_gone = false;
    ComboModel m_types;
    RequiredMarks m_required;
    QLabel *m_warn;
    TypedCombo *m_linkList;
    QLineEdit *m_groupName;
    QLineEdit *m_refName;
    QPushButton *m_addBtn;
    ModifiedMark *m_modified;
};
