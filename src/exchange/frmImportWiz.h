#pragma once

#include "exchange/ImportState.h"
#include "forms/FormDialog.h"

class DataSetPage;
class FilePage;
class ImportMapPage;
class RunPage;
class SSWizardNavBar;
class WizardPages;

/// Takes a CSV file into the database, in four steps: what, from which file, which field goes where, run.
class frmImportWiz final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmImportWiz(QWidget *parent = nullptr);

protected:
    /// Cancel stops a running import; the form closes when the user has seen what it did.
    bool MayLeave() override;

private:
    enum Step { Data, File, Mapping, Importing };
    void OnNext();
    void OnPageShown(int step);
    void ShowButtons();
    void RunImport();

    ImportState m_state;
    WizardPages *m_pages;
    SSWizardNavBar *SSWizardNavBar1;
    DataSetPage *m_dataPage;
    FilePage *m_filePage;
    ImportMapPage *m_mapPage;
    RunPage *m_runPage;
};
