#include "courses/maintenance/ExclusionModule.h"

#include "database/statements/DeletedMeanwhile.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"

namespace
{
const QString periodExists = QStringLiteral("Same exclude dates already exist in database.");
const QString updatePeriod = QStringLiteral("Update Exclusion Dates");
} // namespace

int Exclusion_Add(const ExclusionPeriod &period)
{
    return TellDuplicate(ADO_Course_AddExclusionDate(period.from, period.to, SqlSafeText(period.referenceID)),
                         periodExists, QStringLiteral("Add Exclusion Dates"));
}

int Exclusion_Update(const ExclusionPeriod &period)
{
    const int living = LivingKey(QStringLiteral("ExclusionDates"), QStringLiteral("ExcludeRef"),
                                 period.excludeRef, QStringLiteral("period"), updatePeriod);
    return living < 1
               ? living
               : TellDuplicate(ADO_Course_UpdateExclusionDate(period.from, period.to, period.excludeRef,
                                                              SqlSafeText(period.referenceID)),
                               periodExists, updatePeriod);
}

QString Exclusion_Text(const ExclusionPeriod &period)
{
    return period.referenceID % u' ' % IntToDateText(int(period.from)) % u" - " %
           IntToDateText(int(period.to));
}
