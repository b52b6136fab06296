#pragma once

#include "forms/frames/FormDialog.h"

class QLineEdit;

/// Changes the password of the open database file, with progress. The connection is closed meanwhile, since
/// the engine needs exclusive access to the file; a change that is stopped leaves the old password.
class frmDBPass final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmDBPass(QWidget *parent = nullptr);

signals:
    /// Emitted when the database could not be opened again afterwards; the session has to be started again.
    void DatabaseLost();

private:
    void ChangePassword();

    QLineEdit *m_old;
    QLineEdit *m_new;
    QLineEdit *m_confirm;
};
