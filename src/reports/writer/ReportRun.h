#pragma once

#include "platform/connection/Recordset.h"
#include "reports/writer/HTMLscript.h"

#include <QString>

#include <functional>
#include <optional>

class Progress;

/// How a report ended.
struct ReportResult {
    bool written =
        false;    ///< false: it was stopped, or a failure was reported; the previous report is still there
    int held = 0; ///< the people, organisations, characteristics or payments in it
    QString title{};
    QString fault{}; ///< the file that could not be written, and why; "" = no such failure
};

/// Writes a report between its head and its end. `body` returns how much the report contains, or nullopt if
/// it was stopped; a statement in it that fails is reported under `routineName`. If the engine can do so, all
/// of it reads one state of the database. If the folder cannot be written, that is reported before `body`
/// does any work.
ReportResult WriteReport(const char *routineName, const QString &title,
                         const std::function<std::optional<int>()> &body, HtmlEnd end = HtmlEnd::Small);

/// Calls `write` for each record, and updates `progress`. `write` returns whether the record counts. Returns
/// how many do, or nullopt if it was stopped.
std::optional<int> WriteRecords(const Recordset &rows, Progress &progress,
                                const std::function<bool(const Recordset::Row &)> &write);
