#include "core/shell/frmLocalOptions.h"

#include "core/session/Session.h"
#include "core/shell/ColourPanel.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"

frmLocalOptions::frmLocalOptions(QWidget *parent)
    : FormDialog(QStringLiteral("frmLocalOptions"), QStringLiteral("Local Options"), parent)
    , m_warnColour(new ColourPanel(this))
{
    FormBuilder form(this);
    form.BeginGroup(QStringLiteral("Screens"));
    form.Place(m_warnColour, QStringLiteral("WarnColour"), QStringLiteral("&Empty required fields:"));
    m_showIDs = form.Check(QStringLiteral("ShowIDs"), QStringLiteral("&Show IDs"));
    form.EndGroup();
    const OkCancel buttons = OkCancel::Add(form, this);

    m_warnColour->SetColour(gWarnColour);
    m_showIDs->setChecked(gShowIDs != 0);
    connect(buttons.ok, &QPushButton::clicked, this, &frmLocalOptions::Save);
}

void frmLocalOptions::Save()
{
    gWarnColour = m_warnColour->Colour();
    gShowIDs = m_showIDs->isChecked() ? 1 : 0;
    accept();
}
