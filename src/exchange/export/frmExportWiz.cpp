#include "exchange/export/frmExportWiz.h"

#include "exchange/csv/CsvPages.h"
#include "forms/frames/FormBuilder.h"
#include "reports/wizard/WizardRunPage.h"

#include <QDir>

frmExportWiz::frmExportWiz(QWidget *parent)
    : WizardForm(QStringLiteral("frmExportWiz"), QStringLiteral("Export Wizard"), parent)
    , m_state(CsvMap::Installed())
{
    m_dataPage = new DataSetPage(
        m_pages->AddPage(QStringLiteral("Step0"), QStringLiteral("Welcome to the Export Wizard")),
        {.types = QStringLiteral("ExportTypes"),
         .list = QStringLiteral("ExportList"),
         .listCaption = QStringLiteral("&Select data for export:"),
         .empty = QStringLiteral("The map of export fields (csvmap.dat) offers nothing to export.")},
        m_state.ExportTypes, m_state.ExportList);
    BuildFields(m_pages->AddPage(QStringLiteral("Step1"), QStringLiteral("Select Fields")));
    m_filePage = new FilePage(m_pages->AddPage(QStringLiteral("Step2"), QStringLiteral("CSV Export")),
                              FilePage::Purpose::Save, QStringLiteral("Save &exported file as:"),
                              QStringLiteral("A file of this name is replaced once the export is complete."));
    m_runPage =
        new WizardRunPage(m_pages->AddPage(QStringLiteral("Step3"), QStringLiteral("Exporting Data...")),
                          QStringLiteral("Record"));

    connect(m_dataPage, &DataSetPage::Chosen, this, &frmExportWiz::OnNext);
    connect(m_filePage, &FilePage::Changed, this, &frmExportWiz::ShowOffer);
    connect(this, &QDialog::finished, this, [this] { m_state.SaveMasks(); });
    Start(m_runPage);
}

void frmExportWiz::BuildFields(QWidget *page)
{
    FormBuilder form(page);
    ExportSel = form.List(QStringLiteral("ExportSel"),
                          QStringLiteral("Select the fiel&ds you wish to Export:"), m_state.ExportSel);
    ExportSel->SetEmptyText(QStringLiteral("The map names no fields for this data."));
    ExportSel->setMinimumSize(ExportSel->fontMetrics().averageCharWidth() * 60,
                              ExportSel->fontMetrics().height() * 16);
    form.BeginButtons();
    QPushButton *all = form.Button(QStringLiteral("AllBtn"), QStringLiteral("Select &All"));
    QPushButton *none = form.Button(QStringLiteral("NoneBtn"), QStringLiteral("Select N&one"));
    form.EndButtons();
    connect(all, &QPushButton::clicked, this, [this] { m_state.TickAll(true); });
    // As in the import wizard's mapping, Enter and a double click act on the row.
    connect(ExportSel, &ListView::Opened, this,
            [this](int row) { m_state.ExportSel.SetChecked(row, !m_state.ExportSel.At(row).checked); });
    connect(none, &QPushButton::clicked, this, [this] { m_state.TickAll(false); });
}

WizardForm::Offer frmExportWiz::Offered(int step) const
{
    const bool isOver = step == Exporting;
    const bool hasFile = !m_filePage->FileName().isEmpty();
    // If no file was written, the user may name another.
    return {.back = !isOver || !m_exported,
            .next = step == Data || step == Fields || (step == File && hasFile),
            .finish = isOver,
            .cancel = !isOver};
}

void frmExportWiz::Enter(int step)
{
    if (step == Data)
        m_dataPage->Enter();
    else if (step == Fields)
        ExportSel->setFocus();
    else if (step == File)
        m_filePage->Enter();
}

void frmExportWiz::OnNext()
{
    switch (m_pages->currentIndex()) {
    case Data:
        if (m_state.ChooseDataSet()) {
            m_filePage->Propose(m_state.DataSet() % u".csv");
            SSWizardNavBar1->GoNext();
        }
        break;
    case Fields:
        if (m_state.ChooseFields())
            SSWizardNavBar1->GoNext();
        break;
    case File:
        RunExport();
        break;
    default:
        break;
    }
}

void frmExportWiz::RunExport()
{
    SSWizardNavBar1->GoNext();
    m_runPage->Run(QDir::toNativeSeparators(m_filePage->FileName()), [this](Progress &progress) {
        m_exported = m_state.Run(m_filePage->FileName(), progress);
    });
    if (!m_exported)
        m_runPage->Tell(QStringLiteral("Nothing was written."));
}
