#include "reports/contacts/ConcessionReport.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "reports/contacts/ReportFields.h"
#include "reports/writer/HTMLscript.h"

namespace
{
bool WriteRow(const Recordset::Row &row)
{
    HTML_RowStart();
    WriteValueCell(row.Text(u"Name"), 300);
    WriteValueCell(FormatNumber(row.Double(u"Percentage"), 2) % u'%', 100);
    WriteValueCell(MoneyText(Money::Of(row.Double(u"HardDiscount"))), 100);
    HTML_RowEnd();
    return true;
}

std::optional<int> WriteTable(Progress &progress)
{
    const Recordset characteristics =
        OpenRecordset(QStringLiteral("SELECT * FROM Concessions ORDER BY Name"));
    if (characteristics.IsEmpty())
        return 0;
    HTML_Table();
    HTML_RowStart();
    WriteTitleCell(QStringLiteral("Name"), 300);
    WriteTitleCell(QStringLiteral("Discount<br>%"), 100);
    WriteTitleCell(QStringLiteral("Discount<br>Value"), 100);
    HTML_RowEnd();
    const std::optional<int> held = WriteRecords(characteristics, progress, WriteRow);
    HTML_TableEnd();
    return held;
}
} // namespace

ReportResult Concession_Rep_HTML(Progress &progress)
{
    return WriteReport("Concession_Rep_HTML", QStringLiteral("Characteristics & Discounts"),
                       [&progress] { return WriteTable(progress); });
}
