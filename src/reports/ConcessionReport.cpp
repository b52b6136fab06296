#include "reports/ConcessionReport.h"

#include "core/Progress.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"
#include "reports/ContactHistory.h"
#include "reports/HTMLscript.h"
#include "reports/ReportFields.h"

namespace
{
/// What it holds; nothing when it was stopped.
std::optional<int> WriteTable(const Recordset &characteristics, Progress &progress)
{
    HTML_Table();
    HTML_RowStart();
    WriteTitleCell(QStringLiteral("Name"), 300);
    WriteTitleCell(QStringLiteral("Discount<br>%"), 100);
    WriteTitleCell(QStringLiteral("Discount<br>Value"), 100);
    HTML_RowEnd();
    int done = 0;
    for (const auto &row : characteristics) {
        HTML_RowStart();
        WriteValueCell(row.Text(u"Name"), 300);
        WriteValueCell(FormatNumber(row.Double(u"Percentage"), 2) % u'%', 100);
        WriteValueCell(ContactHistory::Money(row.Double(u"HardDiscount")), 100);
        HTML_RowEnd();
        if (!progress(++done, characteristics.RowCount()))
            return std::nullopt;
    }
    HTML_TableEnd();
    return done;
}
} // namespace

ReportResult Concession_Rep_HTML(Progress &progress)
{
    return WriteReport("Concession_Rep_HTML", QStringLiteral("Characteristics & Discounts"),
                       [&]() -> std::optional<int> {
                           const Recordset characteristics =
                               OpenRecordset(QStringLiteral("SELECT * FROM Concessions ORDER BY Name"));
                           return characteristics.IsEmpty() ? 0 : WriteTable(characteristics, progress);
                       });
}
