#pragma once

#include <QElapsedTimer>

#include <functional>

/// How far a long run has got, and the flag that stops it. Some twenty times a second, and at both ends, it
/// calls what shows the progress and serves the window's events.
class Progress final
{
public:
    using Shown = std::function<void(int done, int maximum)>;

    Progress() = default;
    /// `showEvery` is in milliseconds; with 0 every step is shown.
    explicit Progress(Shown show, int showEvery = 50);

    void Begin(int maximum);
    void SetValue(int done);
    /// Sets the length and a step at once, for a loop that learns its length late. False when the run is to
    /// stop.
    bool operator()(int done, int maximum);
    /// Asks the run to stop after its current row.
    void Cancel() { m_cancelled = true; }
    bool IsCancelled() const { return m_cancelled; }
    int Value() const { return m_value; }
    int Maximum() const { return m_maximum; }

private:
    void Show();

    Shown m_show;
    int m_showEvery = 50;
    QElapsedTimer m_sinceShown;
    int m_value = 0;
    int m_maximum = 0;
    bool m_cancelled = false;
};
