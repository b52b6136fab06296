#pragma once

#include "exchange/export/ExportState.h"
#include "reports/wizard/WizardForm.h"

class DataSetPage;
class FilePage;
class ListView;

/// Writes a data set to a CSV file in four steps: what, which fields, to which file, run.
class frmExportWiz final : public WizardForm
{
    Q_OBJECT

public:
    explicit frmExportWiz(QWidget *parent = nullptr);

protected:
    Offer Offered(int step) const override;
    void Enter(int step) override;
    void OnNext() override;

private:
    enum Step { Data, Fields, File, Exporting };
    void BuildFields(QWidget *page);
    void RunExport();

    ExportState m_state;
    bool m_exported = false;
    DataSetPage *m_dataPage;
    ListView *ExportSel;
    FilePage *m_filePage;
    WizardRunPage *m_runPage;
};
