#include "exchange/frmExportWiz.h"

#include "exchange/CsvPages.h"
#include "exchange/RunPage.h"
#include "forms/FormBuilder.h"
#include "reports/SSWizardNavBar.h"

frmExportWiz::frmExportWiz(QWidget *parent)
    : FormDialog(QStringLiteral("frmExportWiz"), QStringLiteral("Export Wizard"), parent)
    , m_state(CsvMap::Installed())
{
    m_pages = new WizardPages(this);
    m_dataPage = new DataSetPage(
        m_pages->AddPage(QStringLiteral("Step0"), QStringLiteral("Welcome to the Export Wizard")),
        {.types = QStringLiteral("ExportTypes"),
         .list = QStringLiteral("ExportList"),
         .listCaption = QStringLiteral("&Select data for export:"),
         .empty = QStringLiteral("The map of export fields (csvmap.dat) offers nothing.")},
        m_state.ExportTypes, m_state.ExportList);
    BuildFields(m_pages->AddPage(QStringLiteral("Step1"), QStringLiteral("Select Fields")));
    m_filePage = new FilePage(m_pages->AddPage(QStringLiteral("Step2"), QStringLiteral("CSV Export")),
                              FilePage::Purpose::Save, QStringLiteral("Save &exported file as:"),
                              QStringLiteral("A file of this name is replaced once the export is complete."));
    m_runPage = new RunPage(m_pages->AddPage(QStringLiteral("Step3"), QStringLiteral("Exporting Data...")),
                            QStringLiteral("Record"));
    SSWizardNavBar1 = SSWizardNavBar::Below(m_pages, this);

    connect(SSWizardNavBar1, &SSWizardNavBar::Click, this, [this](int code) {
        if (code == SSWizardNavBar::Next)
            OnNext();
        else if (code == SSWizardNavBar::Finish)
            accept();
    });
    connect(SSWizardNavBar1, &SSWizardNavBar::PageShown, this, &frmExportWiz::OnPageShown);
    connect(m_dataPage, &DataSetPage::Chosen, this, &frmExportWiz::OnNext);
    connect(m_filePage, &FilePage::Changed, this, &frmExportWiz::ShowButtons);
    connect(m_runPage, &RunPage::RunningChanged, this, &frmExportWiz::ShowButtons);
    connect(this, &QDialog::finished, this, [this] { m_state.SaveMasks(); });
    OnPageShown(Data);
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
    connect(none, &QPushButton::clicked, this, [this] { m_state.TickAll(false); });
}

void frmExportWiz::OnPageShown(int step)
{
    if (step == Data)
        m_dataPage->Enter();
    else if (step == Fields)
        ExportSel->setFocus();
    else if (step == File)
        m_filePage->Enter();
    ShowButtons();
}

void frmExportWiz::ShowButtons()
{
    const int step = m_pages->currentIndex();
    const bool hasFile = !m_filePage->FileName().isEmpty();
    const bool isRunning = m_runPage->IsRunning();
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Next,
                                step == Data || step == Fields || (step == File && hasFile));
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Finish, step == Exporting && !isRunning);
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Cancel, step != Exporting || isRunning);
    // Where no file came of it, another may be named.
    if (step == Exporting)
        SSWizardNavBar1->SetEnabled(SSWizardNavBar::Back, !isRunning && !m_exported);
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
    m_runPage->Run(
        [this](Progress &progress) { m_exported = m_state.Run(m_filePage->FileName(), progress); });
}

bool frmExportWiz::MayLeave()
{
    if (!m_runPage->IsRunning())
        return true;
    m_runPage->Cancel();
    return false;
}
