#pragma once

#include "core/session/Progress.h"

#include <QProgressBar>

/// Shows how far a run has got. The bar must outlive the run.
class ProgressBar final : public QProgressBar
{
    Q_OBJECT

public:
    using QProgressBar::QProgressBar;

    /// A run that has not begun yet, to be shown by this bar.
    Progress NewRun();

signals:
    void Shown(int done, int maximum);
};
