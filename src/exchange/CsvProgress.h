#pragma once

#include <QElapsedTimer>

#include <functional>

/// The progress bar of an import or export, and the flag that stops it. About ten times a second, and at
/// both ends, the bar is shown anew and the window gets its events.
class CsvProgress final
{
public:
    CsvProgress() = default;
    explicit CsvProgress(std::function<void(int done, int maximum)> show);

    void Begin(int maximum);
    void SetValue(int done);
    /// Asks the run to stop behind the row that it is at.
    void Cancel() { m_cancelled = true; }
    bool IsCancelled() const { return m_cancelled; }
    int Value() const { return m_value; }
    int Maximum() const { return m_maximum; }

private:
    void Show();

    std::function<void(int, int)> m_show;
    QElapsedTimer m_sinceShown;
    int m_value = 0;
    int m_maximum = 0;
    bool m_cancelled = false;
};
