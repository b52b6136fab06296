#pragma once

#include "reports/writer/ReportRun.h"

#include <QObject>

#include <functional>

class QLabel;
class QPushButton;
class SSWizardNavBar;
class WizardPages;
class WizardRunPage;

/// The last two pages of a report wizard and what happens on them: the progress bar while a report is
/// written, and a summary of the finished one, which is opened automatically, and again, as PDF or on paper
/// on request.
class ReportEnd final : public QObject
{
    Q_OBJECT

public:
    using Write = std::function<ReportResult(Progress &)>;

    /// Adds the two pages after those of the wizard. Only Run leads to them.
    explicit ReportEnd(WizardPages *pages);
    WizardRunPage *RunPage() const { return m_run; }

    /// Writes a report and shows how much it contains, as `one` or `many` of something. If it was stopped,
    /// goes back to the previous page.
    void Run(SSWizardNavBar *navigation, const Write &write, const QString &one, const QString &many);
    /// Whether the finished report is shown and there is nothing left to do.
    bool IsDone() const;

private:
    void ShowHeld(const QString &held);
    void Open();
    void SavePdf();
    void Print();
    void Preview();
    /// Runs `work` on the page with the progress bar and returns to the finished report, which shows what
    /// `result` says of it.
    void RunAgain(const QString &notice, const std::function<void(Progress &)> &work,
                  const std::function<QString()> &result);

    WizardPages *m_pages;
    SSWizardNavBar *m_navigation = nullptr; ///< once Run has run
    int m_runPage;
    int m_donePage;
    WizardRunPage *m_run;
    QString m_title; ///< of the report that was written last

    QLabel *m_held;
    QLabel *m_letterhead;
    QLabel *m_saved;
    QPushButton *m_open;
};
