#include "reports/contacts/frmContactWiz.h"

#include "reports/contacts/ConcessionReport.h"
#include "reports/contacts/ContactReport.h"
#include "reports/contacts/ContactWizPages.h"
#include "reports/contacts/OrgReport.h"
#include "reports/writer/HTMLscript.h"
#include "reports/writer/ReportEnd.h"

namespace
{
enum Page { WelcomePage, ChoicePage, OrgPage };
using Report = ContactWizWelcomePage;

ContactOrdering OrderingOf(Report::Report report)
{
    switch (report) {
    case Report::ByCharacteristic:
        return ContactOrdering::Characteristic;
    case Report::ByGroupType:
        return ContactOrdering::GroupTypeThenGroup;
    case Report::ByGroup:
        return ContactOrdering::GroupThenGroupType;
    default:
        return ContactOrdering::None;
    }
}
} // namespace

frmContactWiz::frmContactWiz(QWidget *parent, Opener opener)
    : WizardForm(QStringLiteral("frmContactWiz"), QStringLiteral("Report Wizard"), parent)
{
    const auto page = [this](const QString &name, const QString &title) {
        return m_pages->AddPage(name, title);
    };
    m_welcome = new ContactWizWelcomePage(
        page(QStringLiteral("Welcome"), QStringLiteral("Welcome to the Contact Report Wizard")));
    m_choice = new ContactWizChoicePage(page(QStringLiteral("Choice"), QStringLiteral("Contact Report")));
    m_organisations = new ContactWizOrgPage(
        page(QStringLiteral("Organisations"), QStringLiteral("Selecting Relevant Information")));
    m_end = new ReportEnd(m_pages);
    m_choice->OfferSelected(opener != Opener::MainWindow, opener == Opener::PeopleSelected);

    connect(m_welcome, &ContactWizWelcomePage::Changed, this, &frmContactWiz::OnReportChanged);
    connect(m_welcome, &ContactWizWelcomePage::Chosen, this, [this] {
        if (SSWizardNavBar1->HasNext())
            OnNext();
        else
            OnFinish();
    });
    Start(m_end->RunPage());
}

/// Makes the pages available that the report needs; the list of characteristics needs none.
void frmContactWiz::OnReportChanged()
{
    const Report::Report report = m_welcome->Selected();
    m_pages->SetAvailable(OrgPage, report == Report::Organisations);
    m_pages->SetAvailable(ChoicePage, report != Report::Organisations && report != Report::Characteristics);
    ShowOffer();
}

WizardForm::Offer frmContactWiz::Offered(int page) const
{
    if (page == WelcomePage)
        return {.next = SSWizardNavBar1->HasNext(), .finish = !SSWizardNavBar1->HasNext()};
    return {.finish = page == ChoicePage || page == OrgPage || m_end->IsDone(), .cancel = !m_end->IsDone()};
}

void frmContactWiz::Enter(int page)
{
    if (page == WelcomePage) {
        OnReportChanged();
        m_welcome->Enter();
    } else if (page == ChoicePage) {
        m_choice->Enter(OrderingOf(m_welcome->Selected()) != ContactOrdering::None);
    } else if (page == OrgPage) {
        m_organisations->Enter();
    }
}

void frmContactWiz::OnFinish()
{
    if (m_end->IsDone())
        return accept();
    HTMLBorder = m_welcome->TableBorder() ? 1 : 0;
    const auto run = [this](const QString &one, const QString &many) {
        m_end->Run(
            SSWizardNavBar1, [this](Progress &progress) { return Write(progress); }, one, many);
    };
    const Report::Report kind = m_welcome->Selected();
    if (kind == Report::Characteristics)
        run(QStringLiteral("characteristic"), QStringLiteral("characteristics"));
    else if (kind == Report::Organisations)
        run(QStringLiteral("organisation"), QStringLiteral("organisations"));
    else
        run(QStringLiteral("person"), QStringLiteral("people"));
}

ReportResult frmContactWiz::Write(Progress &progress)
{
    const Report::Report kind = m_welcome->Selected();
    if (kind == Report::Characteristics)
        return Concession_Rep_HTML(progress);
    if (kind == Report::Organisations) {
        const OrgFlags flags = m_organisations->Choices();
        return m_organisations->Tabular() ? Org_Report_Tabular_HTML(flags, progress)
                                          : Org_Report_HTML(flags, progress);
    }
    ContactReport report = m_choice->Choices();
    report.staffOnly = kind == Report::Staff;
    report.ordering = OrderingOf(kind);
    return m_choice->Tabular() ? Contact_Rep_Tabular_HTML(report, progress)
                               : Contact_Rep_HTML(report, progress);
}
