#pragma once

#include "controls/ListModel.h"
#include "forms/fields/RequiredMarks.h"
#include "forms/frames/FormDialog.h"

class QLineEdit;

/// A new password for a user, a row of the list of users. gDialogResult is 1 if it was stored.
class frmUsersPassword final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmUsersPassword(const ListItem &user, QWidget *parent = nullptr);

private:
    void Save();

    int m_id;
    RequiredMarks m_required;
    QLineEdit *m_password;
    QLineEdit *m_confirm;
};
