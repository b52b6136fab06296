#include "database/connection/frmDBPass.h"

#include "core/session/Session.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/Registry.h"
#include "forms/fields/FieldFocus.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "forms/progress/ProgressBox.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/engines/FileDatabase.h"

#include <functional>

namespace
{
/// False if the user stopped it, so that the old password still applies.
bool GiveNewPassword(QWidget *form, const QString &newPassword)
{
    const QString file = gDBQUseODBC ? DSNFile(gDBQName) : gDBQFilename;
    const auto database = FileDatabase::OpenExclusive(file, gDBPassword);
    if (!database) {
        Dialogs::Tell(
            QStringLiteral(
                "Unable to open the database for exclusive access, may already be in use elsewhere."),
            QStringLiteral("Password"), Dialogs::Icon::Exclamation);
        return true;
    }
    bool changed = false;
    ProgressBox::Run(form, QStringLiteral("Password"), [&](Progress &progress) {
        progress.Begin(1);
        changed = database->NewPassword(newPassword, std::ref(progress));
        progress.SetValue(progress.Maximum());
    });
    if (!changed && !EngineErrorList().isEmpty())
        Dialogs::Tell(EngineErrorList().first().description, QStringLiteral("Password"),
                      Dialogs::Icon::Exclamation);
    return changed || !EngineErrorList().isEmpty();
}
} // namespace

frmDBPass::frmDBPass(QWidget *parent)
    : FormDialog(QStringLiteral("frmDBPass"), QStringLiteral("Database Password"), parent)
{
    FormBuilder form(this);
    form.Line(QStringLiteral("Label4"),
              QStringLiteral(
                  "Passwords can contain up to 14 alphanumeric characters.  To remove a passwork, leave the "
                  "\"New Password\" and \"Confirm Password\" fields blank."));
    m_old = form.Password(QStringLiteral("OldPass"), QStringLiteral("O&ld Password:"));
    m_new = form.Password(QStringLiteral("NewPass1"), QStringLiteral("&New Password:"));
    m_confirm = form.Password(QStringLiteral("NewPass2"), QStringLiteral("Con&firm Password:"));
    const OkCancel buttons = OkCancel::Add(form, this);

    resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());

    connect(buttons.ok, &QPushButton::clicked, this, &frmDBPass::ChangePassword);
    m_old->setFocus();
}

void frmDBPass::ChangePassword()
{
    const QString newPassword = m_new->text();
    if (newPassword != m_confirm->text()) {
        Dialogs::Tell(QStringLiteral("New Password doesn't match Confirm Password!"),
                      QStringLiteral("Security"), Dialogs::Icon::Stop);
        FocusField(m_new);
        return;
    }
    if (m_old->text() != gDBPassword) {
        Dialogs::Tell(QStringLiteral("Invalid Password!"), QStringLiteral("Security"), Dialogs::Icon::Stop);
        FocusField(m_old);
        return;
    }
    gConnection.Close();
    const bool wasStopped = !GiveNewPassword(this, newPassword);
    if (!wasStopped)
        gDBPassword = newPassword;
    if (ConnectDatabase(false)) {
        Dialogs::Tell(wasStopped ? QStringLiteral("Stopped: the database keeps its old password.")
                                 : QStringLiteral("Password Changed!"),
                      QStringLiteral("Password"), Dialogs::Icon::Information);
        accept();
        return;
    }
    reject();
    emit DatabaseLost();
}
