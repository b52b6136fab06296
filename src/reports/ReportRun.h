#pragma once

#include <QString>

#include <functional>
#include <optional>

class Progress;

/// How a report ended.
struct ReportResult {
    bool written = false; ///< false: it was stopped, or a failure was reported; the report before it stands
    int held = 0;         ///< the people, organisations or characteristics in it
};

/// Writes a report between its head and its end. `body` gives what the report holds, or nothing when it was
/// stopped; a statement of it that fails is reported under `routineName`. A folder that takes no report is
/// told before `body` does any work.
ReportResult WriteReport(const char *routineName, const QString &title,
                         const std::function<std::optional<int>()> &body);
