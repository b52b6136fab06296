#pragma once

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "forms/fields/RequiredMarks.h"
#include "forms/frames/FormDialog.h"
#include "users/UserRights.h"

class ComboBox;
class FormBuilder;
class QCheckBox;
class QLineEdit;
class QPushButton;
class RightsMenu;

/// A new user with name, password and rights, or the rights of existing users. gDialogResult is the new
/// UserID, or 1 after an update, or 0 if nothing was done.
class frmAddEditUser final : public FormDialog
{
    Q_OBJECT

public:
    /// For a new user.
    explicit frmAddEditUser(QWidget *parent = nullptr);
    /// For the rights of `users`, rows of the list of users; the form starts with those of the first. With
    /// `readOnly` they can only be looked at.
    frmAddEditUser(std::vector<ListItem> users, bool readOnly, QWidget *parent = nullptr);

    /// The name of the added user.
    const QString &AddedName() const { return m_addedName; }

protected:
    bool MayLeave() override;

private:
    void Build();
    void BuildUserFields(FormBuilder &form);
    void BuildUserList(FormBuilder &form);
    void BuildRights(FormBuilder &form);
    void Connect();
    void LoadFirstUser();
    void Lock();

    void Save();
    bool AddUser();
    bool UpdateUsers();
    void OnAdministrator(bool on);
    void OnCopyFrom(bool on);
    void CopyFromChosen();
    void ShowRights();
    void Preset(QChar level);
    void ShowWhatIsOpen();

    bool IsNew() const { return m_users.IsEmpty(); }

    ListModel m_users; ///< whose rights are set; empty for a new user
    bool m_readOnly = false;
    QString m_addedName;
    UserRights m_rights;
    TreeModel m_tree;
    ComboModel m_others;
    RequiredMarks m_required;
    ModifiedMark *m_modified = nullptr;

    QLineEdit *m_name = nullptr;
    QLineEdit *m_password = nullptr;
    QLineEdit *m_confirm = nullptr;
    QCheckBox *m_copyFrom = nullptr;
    ComboBox *m_copyList = nullptr;
    QCheckBox *m_administrator = nullptr;
    RightsMenu *m_menu = nullptr;
    QPushButton *m_lookOnly = nullptr;
    QPushButton *m_everything = nullptr;
    QPushButton *m_save = nullptr;
};
