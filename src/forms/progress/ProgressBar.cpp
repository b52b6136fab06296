#include "forms/progress/ProgressBar.h"

Progress ProgressBar::NewRun()
{
    reset();
    return Progress([this](int done, int maximum) {
        setMaximum(maximum);
        setValue(done);
        emit Shown(done, maximum);
    });
}
