#include "exchange/TableFixODBC.h"

#include "database/GlobalCode.h"
#include "database/MiscODBC.h"

int ADO_Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
                  const QString &extra)
{
    const QString sameName = u"SELECT * FROM " % table % u" WHERE " % field % u"= '" % value % u"'";
    return Reported("ADO_Table_Fix", -1, [&] {
        const Recordset found = OpenRecordset(sameName);
        if (!found.IsEmpty())
            return static_cast<int>(found.First().Long(idField));
        if (extra.isEmpty())
            Execute(u"INSERT INTO " % table % u" (" % field % u") VALUES ('" % value % u"')");
        else
            Execute(u"INSERT INTO " % table % u" (" % field % u",Addr1) VALUES ('" % value %
                    u"','Not Known')");
        return ReadKey(sameName, idField);
    });
}

int Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
              const QString &extra)
{
    return ADO_Table_Fix(SqlSafeText(value), table, field, idField, extra);
}
