#include "exchange/import/ImportPages.h"

#include "exchange/import/ImportState.h"
#include "exchange/import/frmChangeMap.h"
#include "exchange/import/frmCheckFile.h"
#include "forms/frames/FormBuilder.h"

ImportMapPage::ImportMapPage(QWidget *page, ImportState &state)
    : QObject(page)
    , m_state(state)
{
    FormBuilder form(page);
    ImportSel = form.List(QStringLiteral("ImportSel"), QStringLiteral("Fiel&ds to import:"), state.ImportSel);
    ImportSel->SetColumnChars({28, 28});
    ImportSel->setMinimumSize(ImportSel->fontMetrics().averageCharWidth() * 68,
                              ImportSel->fontMetrics().height() * 16);
    form.BeginButtons();
    MapBtn = form.Button(QStringLiteral("MapBtn"), QStringLiteral("&Change Field Mapping..."));
    CheckBtn = form.Button(QStringLiteral("CheckBtn"), QStringLiteral("Chec&k File..."));
    form.EndButtons();
    connect(MapBtn, &QPushButton::clicked, this, &ImportMapPage::ChangeMap);
    connect(CheckBtn, &QPushButton::clicked, this, &ImportMapPage::CheckFile);
    connect(ImportSel, &ListView::Opened, this, &ImportMapPage::ChangeMap);
}

void ImportMapPage::Enter()
{
    MapBtn->setEnabled(!m_state.ImportSel.IsEmpty());
    CheckBtn->setEnabled(!m_state.ImportSel.IsEmpty());
    ImportSel->setFocus();
}

void ImportMapPage::ChangeMap()
{
    const int row = m_state.ImportSel.CurrentRow();
    if (row < 0)
        return;
    frmChangeMap form(m_state, row, ImportSel->window());
    if (form.exec() == QDialog::Accepted)
        m_state.SetTarget(row, form.Target());
}

void ImportMapPage::CheckFile()
{
    if (m_state.CheckMapping())
        frmCheckFile(m_state, ImportSel->window()).exec();
}
