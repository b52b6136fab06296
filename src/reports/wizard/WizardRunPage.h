#pragma once

#include <QObject>

#include <functional>

class Progress;
class ProgressBar;
class QLabel;

/// The page of a wizard on which its work runs, with a progress bar.
class WizardRunPage final : public QObject
{
    Q_OBJECT

public:
    /// `step` names what the run counts ("Line", "Record") in the line below the bar; "" = no such line.
    explicit WizardRunPage(QWidget *page, const QString &step = {});

    /// Runs `work` to its end, or until Stop, and shows how far it has got; true if it was stopped. The
    /// notice is shown above the bar; "" = none.
    bool Run(const QString &notice, const std::function<void(Progress &)> &work);
    bool IsRunning() const { return m_run != nullptr; }
    void Stop();
    /// Shows the text, which is longer than a notice, in place of the bar.
    void Tell(const QString &text);

signals:
    void RunningChanged();

private:
    void SetRun(Progress *run);
    void ShowNotice(const QString &notice);

    Progress *m_run = nullptr;
    QLabel *m_notice;
    ProgressBar *ProgBar;
    QLabel *m_done = nullptr;
};
