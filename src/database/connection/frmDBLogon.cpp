#include "database/connection/frmDBLogon.h"

#include "core/session/Session.h"
#include "forms/frames/AskingWindow.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"

frmDBLogon::frmDBLogon(QWidget *parent)
    : FormDialog(QStringLiteral("frmDBLogon"), QStringLiteral("Database Logon"), parent)
{
    FormBuilder form(this);
    form.Line(QStringLiteral("Label1"),
              QStringLiteral(
                  "You are attempting to logon to a secured database which has a username and/or password. "
                  "Please enter the information and press OK or Cancel to exit."));
    m_user = form.Text(QStringLiteral("txtUID"), QStringLiteral("&User Name:"));
    m_user->setText(gDBUser);
    CaptionLabel *userLabel = form.Label(QStringLiteral("lblUID"));
    m_password = form.Password(QStringLiteral("txtPWD"), QStringLiteral("&Password:"));
    m_password->setText(gDBPassword);
    const OkCancel buttons =
        OkCancel::Add(form, this, {.ok = QStringLiteral("cmdOK"), .cancel = QStringLiteral("cmdCancel")});

    resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());

    connect(buttons.ok, &QPushButton::clicked, this, &frmDBLogon::TakeCredentials);

    const bool isFile = gDBQType == 1;
    m_user->setHidden(isFile);
    userLabel->setHidden(isFile);
    QLineEdit *first = isFile ? m_password : m_user;
    first->setFocus();
    first->selectAll();
}

void frmDBLogon::Ask()
{
    frmDBLogon(AskingWindow()).exec();
}

void frmDBLogon::TakeCredentials()
{
    gDBUser = m_user->text();
    gDBPassword = m_password->text();
    gDialogResult = 1;
    accept();
}
