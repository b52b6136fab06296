#include "database/connection/ReferenceRepair.h"

#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"

#include <QStringList>

#include <array>

namespace
{
struct References {
    const char *table;
    QStringList columns;
};

const std::array<References, 6> &AllReferences()
{
    static const std::array<References, 6> references{{
        {"Contacts",
         {"Cust_City", "Cust_County", "Cust_Country", "Cust_Designation", "Cust_Ethnicgroup", "OrganRef",
          "ContactContactRef"}},
        {"Organisations", {"City", "County", "Country"}},
        {"Venues", {"OrganRef"}},
        {"Facilities", {"OrganRef"}},
        {"Exam", {"ExamNameRef", "ExamTypeRef", "OrganRef", "VenueRef"}},
        {"AwardNames", {"Board"}},
    }};
    return references;
}

bool HasEmptyReferences()
{
    QStringList counts;
    for (const References &references : AllReferences())
        counts.append(u"SELECT COUNT(*) AS Missing FROM " % QLatin1String(references.table) % u" WHERE " %
                      references.columns.join(QStringLiteral(" IS NULL OR ")) % u" IS NULL");
    const std::optional<Recordset> missing = TryOpenRecordset(counts.join(QStringLiteral(" UNION ALL ")));
    if (!missing)
        return false;
    for (const Recordset::Row row : *missing) {
        if (row.Long(0) > 0)
            return true;
    }
    return false;
}
} // namespace

void RepairReferences()
{
    if (!HasEmptyReferences())
        return;
    WriteGroup group(gConnection);
    for (const References &references : AllReferences()) {
        for (const QString &column : references.columns)
            TryExecute(u"UPDATE " % QLatin1String(references.table) % u" SET " % column % u" = 1 WHERE " %
                       column % u" IS NULL");
    }
    group.Finish();
}
