#pragma once

#include "platform/connection/Recordset.h"
#include "reports/writer/HTMLscript.h"

#include <QString>

#include <functional>
#include <optional>

class Progress;

/// How a report ended.
struct ReportResult {
    bool written = false; ///< false: it was stopped, or a failure was reported; the report before it stands
    int held = 0;         ///< the people, organisations, characteristics or payments in it
    QString title{};
    QString fault{}; ///< the file that could not be written, and why; "" = no such failure
};

/// Writes a report between its head and its end. `body` gives what the report holds, or nothing when it was
/// stopped; a statement of it that fails is reported under `routineName`. Where the engine can, the whole of
/// it reads one state of the database. A folder that takes no report is told before `body` does any work.
ReportResult WriteReport(const char *routineName, const QString &title,
                         const std::function<std::optional<int>()> &body, HtmlEnd end = HtmlEnd::Small);

/// Has each record written, and tells `progress` of it. `write` gives whether the record counts. Gives how
/// many do, or nothing when it was stopped.
std::optional<int> WriteRecords(const Recordset &rows, Progress &progress,
                                const std::function<bool(const Recordset::Row &)> &write);
