#pragma once

#include "core/session/Progress.h"

#include <QDialog>

#include <functional>

class ProgressBar;

/// Stands before a form while a long run of its own is under way: how far it is, and a button that stops it.
/// A run that is over at once shows nothing. From its first moment nothing but the box and what the run asks
/// takes input; the rest of the program is only painted.
class ProgressBox final : public QDialog
{
    Q_OBJECT

public:
    /// Runs `work`, which tells its progress and stops where that is cancelled. False if it was cancelled.
    static bool Run(QWidget *form, const QString &title, const std::function<void(Progress &progress)> &work);
    /// The same; where it was cancelled before its end the user is told how far it came, and what that means:
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
    const QWidget *m_frontBefore; ///< the modal window that the run began under; it stays open below it
};
