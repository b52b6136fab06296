#include "exchange/csv/TableFixODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

namespace
{
QString SameName(const QString &value, const QString &table, const QString &field)
{
    return u"SELECT * FROM " % table % u" WHERE " % field % u"= '" % value % u"'";
}
} // namespace

int ADO_Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
                  const QString &extra)
{
    const QString sameName = SameName(value, table, field);
    const QString insert =
        extra.isEmpty() ? QString(u"INSERT INTO " % table % u" (" % field % u") VALUES ('" % value % u"')")
                        : QString(u"INSERT INTO " % table % u" (" % field % u",Addr1) VALUES ('" % value %
                                  u"','Not Known')");
    return Reported("ADO_Table_Fix", -1, [&] {
        return InOneStep(table, [&] {
            const Recordset found = OpenRecordset(sameName);
            if (!found.IsEmpty())
                return static_cast<int>(found.First().Long(idField));
            Execute(insert);
            return ReadKey(sameName, idField);
        });
    });
}

int Table_Fix(const QString &value, const QString &table, const QString &field, const QString &idField,
              const QString &extra)
{
    return ADO_Table_Fix(SqlSafeText(value), table, field, idField, extra);
}

int Table_Find(const QString &value, const QString &table, const QString &field, const QString &idField)
{
    return ReadKey(SameName(SqlSafeText(value), table, field), idField);
}
