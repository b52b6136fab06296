#pragma once

#include <QObject>

#include <functional>

class Progress;
class ProgressBar;
class QLabel;

/// The last page of a wizard: the run with its progress bar.
class RunPage final : public QObject
{
    Q_OBJECT

public:
    /// `step` names what the run counts: "Line", "Record".
    RunPage(QWidget *page, const QString &step);
    /// Runs `work` to its end or until Cancel.
    void Run(const std::function<void(Progress &)> &work);
    bool IsRunning() const { return m_run; }
    void Cancel();

signals:
    void RunningChanged();

private:
    void SetRun(Progress *run);

    Progress *m_run = nullptr;
    ProgressBar *ProgBar;
    QLabel *m_done;
};
