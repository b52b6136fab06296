#pragma once

#include "exchange/ExportState.h"
#include "forms/FormDialog.h"

class DataSetPage;
class FilePage;
class ListView;
class RunPage;
class SSWizardNavBar;
class WizardPages;

/// Writes a data set to a CSV file, in four steps: what, which fields, to which file, run.
class frmExportWiz final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmExportWiz(QWidget *parent = nullptr);

protected:
    /// Cancel stops a running export; the form closes when the user has seen what became of it.
    bool MayLeave() override;

private:
    enum Step { Data, Fields, File, Exporting };
    void BuildFields(QWidget *page);
    void OnNext();
    void OnPageShown(int step);
    void ShowButtons();
    void RunExport();

    ExportState m_state;
    bool m_exported = false;
    WizardPages *m_pages;
    SSWizardNavBar *SSWizardNavBar1;
    DataSetPage *m_dataPage;
    ListView *ExportSel;
    FilePage *m_filePage;
    RunPage *m_runPage;
};
