#include "users/frmUsersPassword.h"

#include "core/Session.h"
#include "forms/FormBuilder.h"
#include "users/UsersModule.h"

frmUsersPassword::frmUsersPassword(const ListItem &user, QWidget *parent)
    : FormDialog(QStringLiteral("frmUsersPassword"), tr("Password"), parent)
    , m_id(KeyNumber(user.key))
{
    gDialogResult = 0;
    FormBuilder form(this);
    form.ReadOnly(QStringLiteral("UserName"), tr("User:"))->setText(user.text);
    m_password = form.Password(QStringLiteral("NewPass1"), tr("New Password:"));
    m_required.Add(form.Label(), m_password);
    m_confirm = form.Password(QStringLiteral("NewPass2"), tr("Confirm Password:"));
    form.BeginButtons();
    QPushButton *save = form.DefaultButton(QStringLiteral("AddBtn"), tr("&Update"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), tr("&Cancel"));
    form.EndButtons();

    connect(save, &QPushButton::clicked, this, &frmUsersPassword::Save);
    connect(exit, &QPushButton::clicked, this, &frmUsersPassword::reject);
    m_password->setFocus();
}

void frmUsersPassword::Save()
{
    if (!m_required.Complete() || !Users_PasswordsMatch(m_password->text(), m_confirm->text()))
        return;
    if (!Users_ChangePassword(m_id, m_password->text()))
        return;
    gDialogResult = 1;
    accept();
}
