#pragma once

#include "core/session/Progress.h"

#include <QDialog>

#include <functional>

class ProgressBar;

/// A box in front of a form during a long run: shows how far the run has got, and has a button to stop it. A
/// run that is over at once shows nothing. From the first moment only the box and the questions of the run
/// take input; the rest of the program is only painted.
class ProgressBox final : public QDialog
{
    Q_OBJECT

public:
    /// Runs `work`, which reports its progress and stops when that is cancelled. False if it was cancelled.
    static bool Run(QWidget *form, const QString &title, const std::function<void(Progress &progress)> &work);
    /// The same; if it was cancelled before its end, the user is told how far it got and what that means:
    /// "Stopped after 3 of 10 contacts. " and `stopped`. `rows` is what is counted.
    static bool Run(QWidget *form, const QString &title, const QString &rows, const QString &stopped,
                    const std::function<void(Progress &progress)> &work);

    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ProgressBox(QWidget *form, const QString &title);
    void ShowIfLong(int done, int maximum);

    ProgressBar *m_bar;
    Progress m_progress;
    QElapsedTimer m_since;
    const QWidget *m_frontBefore; ///< the modal window from which the run was started; it stays open
};
