#include "exchange/import/frmImportWiz.h"

#include "core/session/Progress.h"
#include "exchange/csv/CsvPages.h"
#include "exchange/import/ImportPages.h"
#include "reports/wizard/WizardRunPage.h"

frmImportWiz::frmImportWiz(QWidget *parent)
    : WizardForm(QStringLiteral("frmImportWiz"), QStringLiteral("Import Wizard"), parent)
    , m_state(CsvMap::Installed())
{
    m_dataPage = new DataSetPage(
        m_pages->AddPage(QStringLiteral("Step0"), QStringLiteral("Welcome to the Import Wizard")),
        {.types = QStringLiteral("ImportTypes"),
         .list = QStringLiteral("ImportList"),
         .listCaption = QStringLiteral("&Importing Data to:"),
         .empty = QStringLiteral("The map of import fields (csvmap.dat) offers nothing to import.")},
        m_state.ImportTypes, m_state.ImportList);
    m_filePage = new FilePage(m_pages->AddPage(QStringLiteral("Step1"), QStringLiteral("CSV Import")),
                              FilePage::Purpose::Open, QStringLiteral("Te&xt file:"),
                              QStringLiteral("The first line of the file names its fields.\n"
                                             "Dates are read as DD/MM/YYYY or YYYY-MM-DD."));
    m_mapPage = new ImportMapPage(m_pages->AddPage(QStringLiteral("Step2"), QStringLiteral("Field Mapping")),
                                  m_state);
    m_runPage =
        new WizardRunPage(m_pages->AddPage(QStringLiteral("Step3"), QStringLiteral("Importing Data...")),
                          QStringLiteral("Line"));

    connect(m_dataPage, &DataSetPage::Chosen, this, &frmImportWiz::OnNext);
    connect(m_filePage, &FilePage::Changed, this, &frmImportWiz::ShowOffer);
    Start(m_runPage);
}

void frmImportWiz::ChooseFile(const QString &file)
{
    m_filePage->SetFileName(file);
}

WizardForm::Offer frmImportWiz::Offered(int step) const
{
    const bool isOver = step == Importing;
    const bool hasFile = !m_filePage->FileName().isEmpty();
    return {.back = !isOver || !m_hasBegun,
            .next = step == Data || step == Mapping || (step == File && hasFile),
            .finish = isOver,
            .cancel = !isOver};
}

void frmImportWiz::Enter(int step)
{
    if (step == Data)
        m_dataPage->Enter();
    else if (step == File)
        m_filePage->Enter();
    else if (step == Mapping)
        m_mapPage->Enter();
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
        if (m_state.CheckMapping() && m_state.MayRun())
            RunImport();
        break;
    default:
        break;
    }
}

void frmImportWiz::RunImport()
{
    SSWizardNavBar1->GoNext();
    m_runPage->Run({}, [this](Progress &progress) {
        m_state.Run(progress);
        m_hasBegun = progress.Maximum() > 0;
    });
    if (!m_hasBegun)
        m_runPage->Tell(QStringLiteral("Nothing was imported."));
}
