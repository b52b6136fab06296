#pragma once

#include "reports/wizard/WizardForm.h"
#include "reports/writer/ReportRun.h"

class ContactWizChoicePage;
class ContactWizOrgPage;
class ContactWizWelcomePage;
class Progress;
class ReportEnd;

/// The report wizard of the contacts: the user picks one of seven reports and its contents; it is written,
/// opened, and saved as PDF on request.
class frmContactWiz final : public WizardForm
{
    Q_OBJECT

public:
    /// Who opens it: the main window has no list of selected people, so everybody is reported; the Contact
    /// Manager has one, empty or not.
    enum class Opener { MainWindow, NothingSelected, PeopleSelected };

    explicit frmContactWiz(QWidget *parent = nullptr, Opener opener = Opener::MainWindow);

protected:
    Offer Offered(int page) const override;
    void Enter(int page) override;
    void OnFinish() override;

private:
    void OnReportChanged();
    ReportResult Write(Progress &progress);

    ContactWizWelcomePage *m_welcome;
    ContactWizChoicePage *m_choice;
    ContactWizOrgPage *m_organisations;
    ReportEnd *m_end;
};
