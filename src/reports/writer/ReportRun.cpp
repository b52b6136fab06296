#include "reports/writer/ReportRun.h"

#include "core/files/ErrorHandler.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"

ReportResult WriteReport(const char *routineName, const QString &title,
                         const std::function<std::optional<int>()> &body, HtmlEnd end)
{
    ReportResult result;
    result.title = title;
    Reported(routineName, [&] {
        std::optional<int> held = 0;
        if (HTML_Start(title)) {
            const ReadSnapshot snapshot(gConnection);
            held = body();
        }
        if (!held)
            return;
        result.held = *held;
        result.written = HTML_Finish(end, &result.fault);
        if (!result.written)
            HandleError(QString::fromLatin1(routineName), 0);
    });
    if (!result.written)
        HTML_Discard();
    return result;
}

std::optional<int> WriteRecords(const Recordset &rows, Progress &progress,
                                const std::function<bool(const Recordset::Row &)> &write)
{
    int held = 0;
    int done = 0;
    for (const auto &row : rows) {
        if (write(row))
            ++held;
        if (!progress(++done, rows.RowCount()))
            return std::nullopt;
    }
    return held;
}
