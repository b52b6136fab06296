#include "reports/frmCourseWiz.h"

#include "core/File_Tools.h"
#include "core/Session.h"
#include "database/DecodeDateFunc.h"
#include "forms/FormBuilder.h"
#include "forms/ProgressBar.h"
#include "platform/Clock.h"
#include "reports/CourseSubset.h"
#include "reports/HTMLscript.h"
#include "reports/SSWizardNavBar.h"
#include "reports/TransactionsReport.h"

#include <QDir>
#include <QFile>
#include <QLocale>

namespace
{
enum Page { WelcomePage, DatesPage, ProgressPage };

/// The settings file may hold a date in this form or in the short form of the workstation.
QDate DateOf(const QString &text)
{
    const QDate date = QDate::fromString(text, QStringLiteral("dd/MM/yyyy"));
    if (date.isValid())
        return date;
    const QDate local = QLocale().toDate(text, QLocale::ShortFormat);
    return local.isValid() ? local : Clock::Today();
}
} // namespace

frmCourseWiz::frmCourseWiz(QWidget *parent)
    : FormDialog(QStringLiteral("frmCourseWiz"), QStringLiteral("Report Wizard"), parent)
    , m_pages(new WizardPages(this))
    , m_courseSubset(CourseSubset::Load())
{
    m_pages->setObjectName(QStringLiteral("SSActiveTabs1"));
    BuildWelcome(
        m_pages->AddPage(QStringLiteral("Welcome"), QStringLiteral("Welcome to the Course Report Wizard")));
    BuildDates(m_pages->AddPage(QStringLiteral("Dates"), QStringLiteral("Selecting Date Period")));
    BuildProgress(m_pages->AddPage(QStringLiteral("Progress"), QStringLiteral("Processing Report")));
    m_navigation = SSWizardNavBar::Below(m_pages, this);

    connect(m_navigation, &SSWizardNavBar::Click, this, &frmCourseWiz::OnNavigation);
    connect(m_navigation, &SSWizardNavBar::PageShown, this, &frmCourseWiz::OnPageShown);
    OnPageShown(WelcomePage);
    m_reportList->setFocus();
}

void frmCourseWiz::BuildWelcome(QWidget *page)
{
    m_reports.Fill({{QStringLiteral("?9"), QStringLiteral("Transactions")}});
    m_reports.SelectFirst();
    FormBuilder form(page);
    m_reportList = form.List(QStringLiteral("RepList"), QStringLiteral("&Select the report:"), m_reports);
    m_tableBorder = form.Check(QStringLiteral("HTMLopt"), QStringLiteral("Use &Table Border.."));
    m_tableBorder->setChecked(HTMLBorder == 1);
    connect(m_reportList, &ListView::Opened, this, [this] { OnNavigation(SSWizardNavBar::Next); });
}

void frmCourseWiz::BuildDates(QWidget *page)
{
    FormBuilder form(page);
    m_dateFrom = form.Date(QStringLiteral("DateFrom"), QStringLiteral("&Start Date:"));
    m_dateTo = form.Date(QStringLiteral("DateTo"), QStringLiteral("&End Date:"));
    m_noDates = form.Check(QStringLiteral("NoDates"),
                           QStringLiteral("&Don't consider dates. Show all possible information."));
    m_dateFrom->setDate(DateOf(gFromDate));
    m_dateTo->setDate(DateOf(gToDate));
    const auto keepInOrder = [this] {
        if (m_dateTo->date() < m_dateFrom->date())
            m_dateTo->setDate(m_dateFrom->date());
    };
    connect(m_dateFrom, &QDateEdit::editingFinished, this, keepInOrder);
    connect(m_dateTo, &QDateEdit::editingFinished, this, keepInOrder);
    connect(m_noDates, &QCheckBox::toggled, this, [this](bool all) {
        m_dateFrom->setDisabled(all);
        m_dateTo->setDisabled(all);
    });
}

void frmCourseWiz::BuildProgress(QWidget *page)
{
    FormBuilder form(page);
    m_notice = form.Line(QStringLiteral("Notice"), {});
    m_progress = new ProgressBar;
    form.Place(m_progress, QStringLiteral("ProgBar"));
}

void frmCourseWiz::OnPageShown(int page)
{
    m_navigation->SetEnabled(SSWizardNavBar::Next, page == WelcomePage);
    m_navigation->SetEnabled(SSWizardNavBar::Finish, page == DatesPage);
}

void frmCourseWiz::OnNavigation(int code)
{
    if (code == SSWizardNavBar::Next && !m_reports.SelectedRows().empty())
        m_navigation->GoNext();
    else if (code == SSWizardNavBar::Finish)
        Finish();
}

bool frmCourseWiz::MayLeave()
{
    if (m_run)
        m_run->Cancel();
    return !m_run;
}

void frmCourseWiz::RememberChoices() const
{
    const QString form = QStringLiteral("dd/MM/yyyy");
    gFromDate = m_dateFrom->date().toString(form);
    gToDate = m_dateTo->date().toString(form);
    HTMLBorder = m_tableBorder->isChecked() ? 1 : 0;
    CourseSubset::Save(m_courseSubset);
}

void frmCourseWiz::Finish()
{
    RememberChoices();
    m_navigation->GoTo(ProgressPage);
    m_navigation->SetEnabled(SSWizardNavBar::Back, false);
    m_notice->setText(QStringLiteral("The report is being generated..."));
    Progress run = m_progress->NewRun();
    m_run = &run;
    const ReportPeriod period{m_noDates->isChecked(), DateToInt(m_dateFrom->date()),
                              DateToInt(m_dateTo->date())};
    const bool written = Transactions_HTML(period, run);
    m_run = nullptr;

    if (run.IsCancelled() && !written) {
        m_navigation->GoBack();
    } else if (!written) {
        m_notice->setText(u"The report was not written: " % QDir::toNativeSeparators(HTML_OutputPath()));
        m_navigation->SetEnabled(SSWizardNavBar::Back, true);
    } else if (QFile::exists(HTML_OutputPath())) {
        accept();
        OpenDocument(HTML_OutputPath());
    }
}
