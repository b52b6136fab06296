#include "database/frmDBLogon.h"

#include "core/Session.h"
#include "forms/FormBuilder.h"

#include <QApplication>

frmDBLogon::frmDBLogon(QWidget *parent)
    : FormDialog(QStringLiteral("frmDBLogon"), tr("Database Logon"), parent)
{
    FormBuilder form(this);
    form.Line(QStringLiteral("Label1"),
              tr("You are attempting to logon to a secured database which has a username and/or password. "
                 "Please enter the information and press OK or Cancel to exit."));
    m_user = form.Text(QStringLiteral("txtUID"), tr("&User Name:"));
    m_user->setText(gDBUser);
    CaptionLabel *userLabel = form.Label(QStringLiteral("lblUID"));
    m_password = form.Password(QStringLiteral("txtPWD"), tr("&Password:"));
    m_password->setText(gDBPassword);
    form.BeginButtons();
    QPushButton *ok = form.DefaultButton(QStringLiteral("cmdOK"), tr("OK"));
    QPushButton *cancel = form.Button(QStringLiteral("cmdCancel"), tr("&Cancel"));
    form.EndButtons();

    resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());

    connect(ok, &QPushButton::clicked, this, &frmDBLogon::TakeCredentials);
    connect(cancel, &QPushButton::clicked, this, &frmDBLogon::reject);

    const bool isFile = gDBQType == 1;
    m_user->setHidden(isFile);
    userLabel->setHidden(isFile);
    QLineEdit *first = isFile ? m_password : m_user;
    first->setFocus();
    first->selectAll();
}

void frmDBLogon::Ask()
{
    frmDBLogon(QApplication::activeWindow()).exec();
}

void frmDBLogon::TakeCredentials()
{
    gDBUser = m_user->text();
    gDBPassword = m_password->text();
    gDialogResult = 1;
    accept();
}
