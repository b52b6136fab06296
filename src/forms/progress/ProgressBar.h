#pragma once

#include "core/session/Progress.h"

#include <QProgressBar>

/// Shows how far a run is. The bar must outlive the run.
class ProgressBar final : public QProgressBar
{
    Q_OBJECT

public:
    using QProgressBar::QProgressBar;

    /// A run that has not begun, which this bar will show.
    Progress NewRun();

signals:
    void Shown(int done, int maximum);
};
