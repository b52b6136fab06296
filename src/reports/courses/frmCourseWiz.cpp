#include "reports/courses/frmCourseWiz.h"

#include "core/session/Session.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Clock.h"
#include "reports/courses/CourseSubset.h"
#include "reports/courses/TransactionsReport.h"
#include "reports/writer/HTMLscript.h"
#include "reports/writer/ReportEnd.h"

#include <QLocale>

namespace
{
enum Page { WelcomePage, DatesPage };

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
    : WizardForm(QStringLiteral("frmCourseWiz"), QStringLiteral("Report Wizard"), parent)
    , m_courseSubset(CourseSubset::Load())
{
    BuildWelcome(
        m_pages->AddPage(QStringLiteral("Welcome"), QStringLiteral("Welcome to the Course Report Wizard")));
    BuildDates(m_pages->AddPage(QStringLiteral("Dates"), QStringLiteral("Selecting Date Period")));
    m_end = new ReportEnd(m_pages);
    Start(m_end->RunPage());
}

void frmCourseWiz::BuildWelcome(QWidget *page)
{
    m_reports.Fill({{QStringLiteral("?9"), QStringLiteral("Transactions")}});
    m_reports.SelectFirst();
    FormBuilder form(page);
    m_reportList = form.List(QStringLiteral("RepList"), QStringLiteral("&Select the report:"), m_reports);
    m_tableBorder = form.Check(QStringLiteral("HTMLopt"), QStringLiteral("Use &Table Border.."));
    m_tableBorder->setChecked(HTMLBorder == 1);
    connect(m_reportList, &ListView::Opened, this, &frmCourseWiz::OnNext);
}

void frmCourseWiz::BuildDates(QWidget *page)
{
    FormBuilder form(page);
    m_dateFrom = form.Date(QStringLiteral("DateFrom"), QStringLiteral("&Start Date:"));
    m_dateTo = form.Date(QStringLiteral("DateTo"), QStringLiteral("&End Date:"));
    m_noDates = form.Check(QStringLiteral("NoDates"),
                           QStringLiteral("&Don't consider dates. Show all possible information."));
    m_dateFrom->SetDay(DateOf(gFromDate));
    m_dateTo->SetDay(DateOf(gToDate));
    const auto keepInOrder = [this] {
        if (m_dateTo->Day() < m_dateFrom->Day())
            m_dateTo->SetDay(m_dateFrom->Day());
    };
    connect(m_dateFrom, &DateField::editingFinished, this, keepInOrder);
    connect(m_dateTo, &DateField::editingFinished, this, keepInOrder);
    connect(m_noDates, &QCheckBox::toggled, this, [this](bool all) {
        m_dateFrom->setDisabled(all);
        m_dateTo->setDisabled(all);
    });
}

WizardForm::Offer frmCourseWiz::Offered(int page) const
{
    return {.next = page == WelcomePage,
            .finish = page == DatesPage || m_end->IsDone(),
            .cancel = !m_end->IsDone()};
}

void frmCourseWiz::Enter(int page)
{
    if (page == WelcomePage)
        m_reportList->setFocus();
}

void frmCourseWiz::OnNext()
{
    if (!m_reports.SelectedRows().empty())
        SSWizardNavBar1->GoNext();
}

void frmCourseWiz::RememberChoices() const
{
    const QString form = QStringLiteral("dd/MM/yyyy");
    gFromDate = m_dateFrom->Day().toString(form);
    gToDate = m_dateTo->Day().toString(form);
    HTMLBorder = m_tableBorder->isChecked() ? 1 : 0;
    CourseSubset::Save(m_courseSubset);
}

void frmCourseWiz::OnFinish()
{
    if (m_end->IsDone())
        return accept();
    if (!m_noDates->isChecked() && !DaysAreReadable(this))
        return;
    RememberChoices();
    const ReportPeriod period{m_noDates->isChecked(), DateToInt(m_dateFrom->Day()),
                              DateToInt(m_dateTo->Day())};
    m_end->Run(
        SSWizardNavBar1, [&period](Progress &progress) { return Transactions_HTML(period, progress); },
        QStringLiteral("payment"), QStringLiteral("payments"));
}
