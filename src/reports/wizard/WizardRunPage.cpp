#include "reports/wizard/WizardRunPage.h"

#include "forms/frames/FormBuilder.h"
#include "forms/progress/ProgressBar.h"

#include <QLabel>
#include <QLocale>

WizardRunPage::WizardRunPage(QWidget *page, const QString &step)
    : QObject(page)
    , ProgBar(new ProgressBar(page))
{
    FormBuilder form(page);
    form.Stretch();
    m_notice = form.Line(QStringLiteral("Notice"), {});
    form.Place(ProgBar, QStringLiteral("ProgBar"));
    if (!step.isEmpty()) {
        m_done = form.Line(QStringLiteral("ProgText"), {});
        connect(ProgBar, &ProgressBar::Shown, this, [this, step](int done, int maximum) {
            const QLocale locale;
            const QString whole = maximum == 0 ? QString() : u" of " % locale.toString(maximum);
            m_done->setText(done == 0 ? QString() : step % u' ' % locale.toString(done) % whole);
        });
    }
    form.Stretch();
    ShowNotice({});
}

bool WizardRunPage::Run(const QString &notice, const std::function<void(Progress &)> &work)
{
    ShowNotice(notice);
    ProgBar->show();
    Progress run = ProgBar->NewRun();
    SetRun(&run);
    // A large query takes a moment to return its first row.
    run.Begin(0);
    work(run);
    if (m_done && run.IsCancelled())
        m_done->setText(QStringLiteral("Stopped."));
    SetRun(nullptr);
    return run.IsCancelled();
}

void WizardRunPage::SetRun(Progress *run)
{
    m_run = run;
    emit RunningChanged();
}

void WizardRunPage::Stop()
{
    if (!m_run)
        return;
    m_run->Cancel();
    if (m_done)
        m_done->setText(QStringLiteral("Stopping ..."));
}

void WizardRunPage::Tell(const QString &text)
{
    ShowNotice(text);
    ProgBar->hide();
    if (m_done)
        m_done->clear();
}

void WizardRunPage::ShowNotice(const QString &notice)
{
    m_notice->setText(notice);
    m_notice->setVisible(!notice.isEmpty());
}
