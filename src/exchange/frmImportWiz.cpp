#include "exchange/frmImportWiz.h"

#include "exchange/CsvPages.h"
#include "exchange/ImportPages.h"
#include "exchange/RunPage.h"
#include "reports/SSWizardNavBar.h"

frmImportWiz::frmImportWiz(QWidget *parent)
    : FormDialog(QStringLiteral("frmImportWiz"), QStringLiteral("Import Wizard"), parent)
    , m_state(CsvMap::Installed())
{
    m_pages = new WizardPages(this);
    m_dataPage = new DataSetPage(
        m_pages->AddPage(QStringLiteral("Step0"), QStringLiteral("Welcome to the Import Wizard")),
        {.types = QStringLiteral("ImportTypes"),
         .list = QStringLiteral("ImportList"),
         .listCaption = QStringLiteral("&Importing Data to:"),
         .empty = QStringLiteral("The map of import fields (csvmap.dat) offers nothing.")},
        m_state.ImportTypes, m_state.ImportList);
    m_filePage = new FilePage(m_pages->AddPage(QStringLiteral("Step1"), QStringLiteral("CSV Import")),
                              FilePage::Purpose::Open, QStringLiteral("Te&xt file:"),
                              QStringLiteral("The first line of the file names its fields.\n"
                                             "Dates are read as DD/MM/YYYY or YYYY-MM-DD."));
    m_mapPage = new ImportMapPage(m_pages->AddPage(QStringLiteral("Step2"), QStringLiteral("Field Mapping")),
                                  m_state);
    m_runPage = new RunPage(m_pages->AddPage(QStringLiteral("Step3"), QStringLiteral("Importing Data...")),
                            QStringLiteral("Line"));
    SSWizardNavBar1 = SSWizardNavBar::Below(m_pages, this);

    connect(SSWizardNavBar1, &SSWizardNavBar::Click, this, [this](int code) {
        if (code == SSWizardNavBar::Next)
            OnNext();
        else if (code == SSWizardNavBar::Finish)
            accept();
    });
    connect(SSWizardNavBar1, &SSWizardNavBar::PageShown, this, &frmImportWiz::OnPageShown);
    connect(m_dataPage, &DataSetPage::Chosen, this, &frmImportWiz::OnNext);
    connect(m_filePage, &FilePage::Changed, this, &frmImportWiz::ShowButtons);
    connect(m_runPage, &RunPage::RunningChanged, this, &frmImportWiz::ShowButtons);
    OnPageShown(Data);
}

void frmImportWiz::OnPageShown(int step)
{
    if (step == Data)
        m_dataPage->Enter();
    else if (step == File)
        m_filePage->Enter();
    else if (step == Mapping)
        m_mapPage->Enter();
    ShowButtons();
}

void frmImportWiz::ShowButtons()
{
    const int step = m_pages->currentIndex();
    const bool hasFile = !m_filePage->FileName().isEmpty();
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Next,
                                step == Data || step == Mapping || (step == File && hasFile));
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Finish, step == Importing && !m_runPage->IsRunning());
    SSWizardNavBar1->SetEnabled(SSWizardNavBar::Cancel, step != Importing || m_runPage->IsRunning());
    if (step == Importing)
        SSWizardNavBar1->SetEnabled(SSWizardNavBar::Back, false);
}

void frmImportWiz::OnNext()
{
    switch (m_pages->currentIndex()) {
    case Data:
        if (m_state.ChooseDataSet())
            SSWizardNavBar1->GoNext();
        break;
    case File:
        if (m_state.ChooseFile(m_filePage->FileName()))
            SSWizardNavBar1->GoNext();
        break;
    case Mapping:
        if (m_state.CheckMapping())
            RunImport();
        break;
    default:
        break;
    }
}

void frmImportWiz::RunImport()
{
    SSWizardNavBar1->GoNext();
    m_runPage->Run([this](Progress &progress) { m_state.Run(progress); });
}

bool frmImportWiz::MayLeave()
{
    if (!m_runPage->IsRunning())
        return true;
    m_runPage->Cancel();
    return false;
}
