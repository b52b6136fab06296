#pragma once

#include "controls/ListModel.h"
#include "exchange/import/CsvCheck.h"
#include "forms/frames/FormDialog.h"

#include <functional>

class ImportState;
class Progress;
class ProgressBar;
class ListView;
class QLabel;
class QPushButton;

/// Checks the file of an import without writing: how many lines are new, changed, the same and faulty, and
/// what is wrong with the faulty ones. The check starts when the form is shown.
class frmCheckFile final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmCheckFile(ImportState &state, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    /// The first press stops a running check, the second leaves.
    bool MayLeave() override;

private:
    void Run();
    /// Shows the bar while `work` runs; the first press of the exit button cancels it.
    void RunUnderBar(const std::function<void(Progress &run)> &work);
    void ShowResult();
    void ShowWhole();
    void SaveLines();

    ImportState &m_state;
    ImportCheck m_check;
    ListModel m_faults;
    Progress *m_run = nullptr;
    bool m_started = false;
    QLabel *m_notice;
    ListView *m_list;
    QLabel *m_whole; ///< the selected fault
    ProgressBar *ProgBar;
    QPushButton *SaveBtn;
    QPushButton *ExitBtn;
};
