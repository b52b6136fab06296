#include "exchange/RunPage.h"

#include "forms/FormBuilder.h"
#include "forms/ProgressBar.h"

#include <QLabel>
#include <QLocale>

RunPage::RunPage(QWidget *page, const QString &step)
    : QObject(page)
    , ProgBar(new ProgressBar(page))
{
    FormBuilder form(page);
    form.Place(ProgBar, QStringLiteral("ProgBar"));
    m_done = form.Line(QStringLiteral("ProgText"), QString());
    form.Stretch();
    connect(ProgBar, &ProgressBar::Shown, this, [this, step](int done, int maximum) {
        const QLocale locale;
        m_done->setText(step % u' ' % locale.toString(done) % u" of " % locale.toString(maximum));
    });
}

void RunPage::Run(const std::function<void(Progress &)> &work)
{
    Progress run = ProgBar->NewRun();
    SetRun(&run);
    work(run);
    if (run.IsCancelled())
        m_done->setText(QStringLiteral("Stopped."));
    SetRun(nullptr);
}

void RunPage::SetRun(Progress *run)
{
    m_run = run;
    emit RunningChanged();
}

void RunPage::Cancel()
{
    if (!m_run)
        return;
    m_run->Cancel();
    m_done->setText(QStringLiteral("Stopping ..."));
}
