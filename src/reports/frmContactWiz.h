#pragma once

#include "forms/FormDialog.h"
#include "reports/ReportRun.h"

class ContactWizChoicePage;
class ContactWizDonePage;
class ContactWizOrgPage;
class ContactWizProgressPage;
class ContactWizWelcomePage;
class Progress;
class SSWizardNavBar;
class WizardPages;

/// The report wizard of the contacts: picks one of seven reports and what it holds, writes it, opens it, and
/// saves it as PDF.
class frmContactWiz final : public FormDialog
{
    Q_OBJECT

public:
    /// Who opens it: the main window has no list of selected people in sight, so that all are reported; the
    /// Contact Manager has one, empty or not.
    enum class Opener { MainWindow, NothingSelected, PeopleSelected };

    explicit frmContactWiz(QWidget *parent = nullptr, Opener opener = Opener::MainWindow);

protected:
    bool MayLeave() override;

private:
    void OnPageShown(int page);
    void OnReportChanged();
    void OnNavigation(int code);
    void Finish();
    ReportResult Write(Progress &progress);
    void ShowResult(const ReportResult &result);
    void SavePdf();

    WizardPages *m_pages;
    SSWizardNavBar *m_navigation;
    ContactWizWelcomePage *m_welcome;
    ContactWizChoicePage *m_choice;
    ContactWizOrgPage *m_organisations;
    ContactWizProgressPage *m_progress;
    ContactWizDonePage *m_done;
    QString m_title; ///< of the report written last
};
