#pragma once

#include "exchange/import/ImportState.h"
#include "reports/wizard/WizardForm.h"

class DataSetPage;
class FilePage;
class ImportMapPage;

/// Imports a CSV file into the database in four steps: what, from which file, which field goes where, run.
class frmImportWiz final : public WizardForm
{
    Q_OBJECT

public:
    explicit frmImportWiz(QWidget *parent = nullptr);
    /// Proposes the file to import, which the user can still change.
    void ChooseFile(const QString &file);

protected:
    Offer Offered(int step) const override;
    void Enter(int step) override;
    void OnNext() override;

private:
    enum Step { Data, File, Mapping, Importing };
    void RunImport();

    ImportState m_state;
    bool m_hasBegun = false; ///< the import; it may have changed the database
    DataSetPage *m_dataPage;
    FilePage *m_filePage;
    ImportMapPage *m_mapPage;
    WizardRunPage *m_runPage;
};
