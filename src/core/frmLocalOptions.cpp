#include "core/frmLocalOptions.h"

#include "core/ColourPanel.h"
#include "core/Session.h"
#include "forms/FormBuilder.h"

frmLocalOptions::frmLocalOptions(QWidget *parent)
    : FormDialog(QStringLiteral("frmLocalOptions"), tr("Local Options"), parent)
    , m_warnColour(new ColourPanel(this))
{
    FormBuilder form(this);
    form.BeginGroup(tr("Screens"));
    form.Place(m_warnColour, QStringLiteral("WarnColour"), tr("&Empty required fields:"));
    m_showIDs = form.Check(QStringLiteral("ShowIDs"), tr("&Show IDs"));
    form.EndGroup();
    form.BeginButtons();
    QPushButton *ok = form.DefaultButton(QStringLiteral("OKBtn"), tr("&OK"));
    QPushButton *cancel = form.Button(QStringLiteral("CancelBtn"), tr("&Cancel"));
    form.EndButtons();

    m_warnColour->SetColour(gWarnColour);
    m_showIDs->setChecked(gShowIDs != 0);
    connect(ok, &QPushButton::clicked, this, &frmLocalOptions::Save);
    connect(cancel, &QPushButton::clicked, this, &frmLocalOptions::reject);
}

void frmLocalOptions::Save()
{
    gWarnColour = m_warnColour->Colour();
    gShowIDs = m_showIDs->isChecked() ? 1 : 0;
    accept();
}
