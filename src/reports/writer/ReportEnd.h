#pragma once

#include "reports/writer/ReportRun.h"

#include <QObject>

#include <functional>

class QLabel;
class QPushButton;
class SSWizardNavBar;
class WizardPages;
class WizardRunPage;

/// The last two pages of a report wizard and what happens on them: the bar of a report that is being written,
/// and what the finished one holds, which opens by itself, and again or as PDF on demand.
class ReportEnd final : public QObject
{
    Q_OBJECT

public:
    using Write = std::function<ReportResult(Progress &)>;

    /// Adds the two pages, which Run alone leads to, behind those of the wizard.
    explicit ReportEnd(WizardPages *pages);
    WizardRunPage *RunPage() const { return m_run; }

    /// Writes a report and shows what it holds, told as `one` or `many` of something. One that was stopped
    /// leads back to the page before.
    void Run(SSWizardNavBar *navigation, const Write &write, const QString &one, const QString &many);
    /// Whether the finished report is shown, so that there is nothing left to do.
    bool IsDone() const;

private:
    void ShowHeld(const QString &held);
    void SavePdf();

    WizardPages *m_pages;
    SSWizardNavBar *m_navigation = nullptr; ///< once Run ran
    int m_runPage;
    int m_donePage;
    WizardRunPage *m_run;
    QString m_title; ///< of the report that was written last

    QLabel *m_held;
    QLabel *m_letterhead;
    QLabel *m_saved;
    QPushButton *m_open;
};
