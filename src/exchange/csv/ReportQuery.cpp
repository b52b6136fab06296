#include "exchange/csv/ReportQuery.h"

#include "database/statements/MiscODBC.h"

bool IsReportQuery(const QString &sql)
{
    const QString upper = sql.toUpper();
    return upper.left(upper.indexOf(u' ')) == QLatin1String("SELECT") &&
           !upper.contains(QLatin1String("USERS"));
}

std::optional<Recordset> OpenReportQuery(const QString &sql)
{
    return IsReportQuery(sql) ? std::optional(OpenRecordset(sql)) : std::nullopt;
}

bool ReadReportQuery(const QString &sql, const TakeRows &take)
{
    if (!IsReportQuery(sql))
        return false;
    ReadInPieces(sql, take);
    return true;
}
