#include "exchange/ReportQuery.h"

#include "database/MiscODBC.h"

std::optional<Recordset> OpenReportQuery(const QString &sql)
{
    const QString upper = sql.toUpper();
    const bool isSelect = upper.left(upper.indexOf(u' ')) == QLatin1String("SELECT");
    if (!isSelect || upper.contains(QLatin1String("USERS")))
        return std::nullopt;
    return OpenRecordset(sql);
}
