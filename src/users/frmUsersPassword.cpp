#include "users/frmUsersPassword.h"

#include "core/session/Session.h"
#include "forms/fields/FieldFocus.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "users/UsersModule.h"

frmUsersPassword::frmUsersPassword(const ListItem &user, QWidget *parent)
    : FormDialog(QStringLiteral("frmUsersPassword"), QStringLiteral("Password"), parent)
    , m_id(KeyNumber(user.key))
{
    gDialogResult = 0;
    FormBuilder form(this);
    form.ReadOnly(QStringLiteral("UserName"), QStringLiteral("User:"))->setText(user.text);
    m_password = form.Password(QStringLiteral("NewPass1"), QStringLiteral("New Password:"));
    m_required.Add(form.Label(), m_password);
    m_confirm = form.Password(QStringLiteral("NewPass2"), QStringLiteral("Confirm Password:"));
    const OkCancel buttons = OkCancel::Add(form, this,
                                           {.ok = QStringLiteral("AddBtn"),
                                            .cancel = QStringLiteral("ExitBtn"),
                                            .okCaption = QStringLiteral("&Update")});

    connect(buttons.ok, &QPushButton::clicked, this, &frmUsersPassword::Save);
    m_password->setFocus();
}

void frmUsersPassword::Save()
{
    if (!m_required.Complete())
        return;
    if (!Users_PasswordsMatch(m_password->text(), m_confirm->text())) {
        FocusField(m_password);
        return;
    }
    if (!Users_ChangePassword(m_id, m_password->text()))
        return;
    gDialogResult = 1;
    accept();
}
