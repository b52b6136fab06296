#include "reports/frmContactWiz.h"

#include "core/File_Tools.h"
#include "core/Session.h"
#include "platform/Dialogs.h"
#include "reports/ConcessionReport.h"
#include "reports/ContactReport.h"
#include "reports/ContactWizPages.h"
#include "reports/HTMLscript.h"
#include "reports/OrgReport.h"
#include "reports/ReportPdf.h"
#include "reports/WizardRunPage.h"

#include <QDir>
#include <QFile>
#include <QLocale>

namespace
{
enum Page { WelcomePage, ChoicePage, OrgPage, ProgressPage, DonePage };
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

/// "1 person", "5,000 people".
QString CountText(int held, Report::Report report)
{
    const bool isOne = held == 1;
    QString kind = isOne ? QStringLiteral("person") : QStringLiteral("people");
    if (report == Report::Organisations)
        kind = isOne ? QStringLiteral("organisation") : QStringLiteral("organisations");
    else if (report == Report::Characteristics)
        kind = isOne ? QStringLiteral("characteristic") : QStringLiteral("characteristics");
    return QLocale().toString(held) % u' ' % kind;
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
    m_progress = new WizardRunPage(page(QStringLiteral("Progress"), QStringLiteral("Processing Report")));
    m_done = new ContactWizDonePage(page(QStringLiteral("Done"), QStringLiteral("Report Finished")));
    // Neither is walked to: the report itself goes there.
    m_pages->SetAvailable(ProgressPage, false);
    m_pages->SetAvailable(DonePage, false);
    m_choice->OfferSelected(opener != Opener::MainWindow, opener == Opener::PeopleSelected);

    connect(m_welcome, &ContactWizWelcomePage::Changed, this, &frmContactWiz::OnReportChanged);
    connect(m_welcome, &ContactWizWelcomePage::Chosen, this, [this] {
        if (SSWizardNavBar1->HasNext())
            OnNext();
        else
            OnFinish();
    });
    connect(m_done, &ContactWizDonePage::Open, this, [] { OpenDocument(HTML_OutputPath()); });
    connect(m_done, &ContactWizDonePage::SavePdf, this, &frmContactWiz::SavePdf);
    Start(m_progress);
}

/// The pages that the report needs; the list of characteristics needs none.
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
    return {.finish = page != ProgressPage};
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
    if (m_pages->currentIndex() == DonePage)
        return accept();
    HTMLBorder = m_welcome->TableBorder() ? 1 : 0;
    SSWizardNavBar1->GoTo(ProgressPage);
    ReportResult result;
    const bool stopped = m_progress->Run(QStringLiteral("The report is being generated..."),
                                         [&](Progress &progress) { result = Write(progress); });
    if (result.written) {
        ShowResult(result);
    } else if (stopped) {
        SSWizardNavBar1->GoBack();
    } else {
        m_progress->Tell(u"The report was not written: " % QDir::toNativeSeparators(HTML_OutputPath()));
    }
}

ReportResult frmContactWiz::Write(Progress &progress)
{
    const Report::Report kind = m_welcome->Selected();
    if (kind == Report::Characteristics) {
        m_title = QStringLiteral("Characteristics & Discounts");
        return Concession_Rep_HTML(progress);
    }
    if (kind == Report::Organisations) {
        m_title = QStringLiteral("Organisations");
        const OrgFlags flags = m_organisations->Choices();
        return m_organisations->Tabular() ? Org_Report_Tabular_HTML(flags, progress)
                                          : Org_Report_HTML(flags, progress);
    }
    ContactReport report = m_choice->Choices();
    report.staffOnly = kind == Report::Staff;
    report.ordering = OrderingOf(kind);
    m_title = BuildTitleString(report);
    return m_choice->Tabular() ? Contact_Rep_Tabular_HTML(report, progress)
                               : Contact_Rep_HTML(report, progress);
}

void frmContactWiz::ShowResult(const ReportResult &result)
{
    SSWizardNavBar1->GoTo(DonePage);
    m_done->Enter(u"The report \"" % m_title % u"\" holds " % CountText(result.held, m_welcome->Selected()) %
                      u'.',
                  HTML_HeaderFault());
    if (QFile::exists(HTML_OutputPath()))
        OpenDocument(HTML_OutputPath());
}

void frmContactWiz::SavePdf()
{
    const QString pdf =
        Dialogs::SaveFile({QStringLiteral("Save as PDF"), gDocDir, m_title % u".pdf",
                           QStringLiteral("PDF Documents (*.pdf);;All Files (*.*)"), QStringLiteral("pdf")});
    if (pdf.isEmpty())
        return;
    SSWizardNavBar1->GoTo(ProgressPage);
    QString fault;
    bool saved = false;
    m_progress->Run(QStringLiteral("The report is being saved as PDF..."), [&](Progress &progress) {
        saved = SaveReportAsPdf(HTML_OutputPath(), pdf, progress, fault);
    });
    m_pages->SetAvailable(DonePage, true);
    SSWizardNavBar1->GoBack();
    m_pages->SetAvailable(DonePage, false);
    if (saved)
        m_done->Tell(u"Saved as " % QDir::toNativeSeparators(pdf));
    else if (!fault.isEmpty())
        m_done->Tell(u"The PDF was not written: " % fault);
}
