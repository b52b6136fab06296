#include "reports/ReportRun.h"

#include "core/ErrorHandler.h"
#include "database/MiscODBC.h"
#include "reports/HTMLscript.h"

ReportResult WriteReport(const char *routineName, const QString &title,
                         const std::function<std::optional<int>()> &body)
{
    const ReportResult result = Reported(routineName, ReportResult(), [&]() -> ReportResult {
        const std::optional<int> held = HTML_Start(title) ? body() : 0;
        if (!held)
            return {};
        if (HTML_Finish(HtmlEnd::Small))
            return {true, *held};
        HandleError(QString::fromLatin1(routineName), 0);
        return {};
    });
    if (!result.written)
        HTML_Discard();
    return result;
}
