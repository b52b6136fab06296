#pragma once

#include "forms/frames/FormDialog.h"

class QLineEdit;

/// Asks for the credentials of a secured database, gDBUser and gDBPassword. gDialogResult becomes 1 on OK and
/// is left unchanged on Cancel.
class frmDBLogon final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmDBLogon(QWidget *parent = nullptr);

    /// Shows the form and returns when it is closed.
    static void Ask();

private:
    void TakeCredentials();

    QLineEdit *m_user;
    QLineEdit *m_password;
};
