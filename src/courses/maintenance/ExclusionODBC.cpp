#include "courses/maintenance/ExclusionODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

namespace
{
using Periods = std::vector<ExclusionPeriod>;

ExclusionPeriod PeriodOf(const Recordset::Row &row)
{
    const auto number = [&](QStringView column) { return static_cast<int>(row.Long(column)); };
    return {number(u"ExcludeRef"), row.Text(u"ReferenceID"), number(u"DateFrom"), number(u"DateTo")};
}

std::optional<Periods> PeriodsOf(const char *routineName, const QString &sql)
{
    return Reported(routineName, std::optional<Periods>(), [&] {
        Periods periods;
        for (const auto &row : OpenRecordset(sql))
            periods.push_back(PeriodOf(row));
        return std::optional(std::move(periods));
    });
}

QString OnDays(int from, int to)
{
    return u"SELECT * FROM ExclusionDates WHERE DateFrom = " % SqlNumber(from) % u" AND DateTo = " %
           SqlNumber(to);
}
} // namespace

std::optional<Periods> ADO_Course_FillExclusionDates()
{
    return PeriodsOf("ADO_Course_FillExclusionDates",
                     QStringLiteral("SELECT * FROM ExclusionDates ORDER BY DateFrom ASC"));
}

std::optional<Periods> ADO_Course_FillExclusionDates2(int date)
{
    return PeriodsOf("ADO_Course_FillExclusionDates2", u"SELECT * FROM ExclusionDates WHERE DateTo >= " %
                                                           SqlNumber(date) % u" ORDER BY DateFrom ASC");
}

ReadRow<ExclusionPeriod> ADO_Course_ShowExclusionDate(int excludeRef)
{
    return ReadOne<ExclusionPeriod>(
        "ADO_Course_ShowExclusionDate",
        u"SELECT * FROM ExclusionDates WHERE ExcludeRef = " % SqlNumber(excludeRef), PeriodOf);
}

int ADO_Course_AddExclusionDate(int from, int to, const QString &referenceId)
{
    const QString same = OnDays(from, to) % u" AND ReferenceID = '" % referenceId % u'\'';
    return AddRow("ADO_Course_AddExclusionDate", same,
                  u"INSERT INTO ExclusionDates (ReferenceID,DateFrom, DateTo) VALUES ('" % referenceId %
                      u"'," % SqlNumber(from) % u',' % SqlNumber(to) % u')',
                  same, u"ExcludeRef");
}

int ADO_Course_UpdateExclusionDate(int from, int to, int excludeRef, const QString &referenceId)
{
    const QString key = SqlNumber(excludeRef);
    return UpdateRow("ADO_Course_UpdateExclusionDate",
                     OnDays(from, to) % u" And ExcludeRef <> " % key % u" AND ReferenceID = '" % referenceId %
                         u'\'',
                     u"UPDATE ExclusionDates SET DateFrom = " % SqlNumber(from) % u" ,DateTo = " %
                         SqlNumber(to) % u" ,ReferenceID = '" % referenceId % u"' WHERE ExcludeRef = " % key,
                     excludeRef);
}

bool ADO_Course_DeleteExclusionDate(int excludeRef)
{
    return RunWithKey("ADO_Course_DeleteExclusionDate", {u"DELETE FROM ExclusionDates WHERE ExcludeRef = "},
                      excludeRef);
}
