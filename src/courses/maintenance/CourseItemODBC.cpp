#include "courses/maintenance/CourseItemODBC.h"

#include "database/statements/MiscODBC.h"

int ADO_Course_AddItem(const CourseItemTable &table, const QString &name, const QString &referenceId)
{
    const QString same = u"SELECT * FROM " % table.table % u" WHERE " % table.nameColumn % u"= '" % name %
                         u"' AND ReferenceID = '" % referenceId % u'\'';
    return AddRow("ADO_Course_AddItem", same,
                  u"INSERT INTO " % table.table % u" (ReferenceID, " % table.nameColumn % u") VALUES ('" %
                      referenceId % u"','" % name % u"')",
                  same, table.keyColumn);
}

int ADO_Course_UpdateItem(const CourseItemTable &table, int key, const QString &name,
                          const QString &referenceId)
{
    const QString number = SqlNumber(key);
    return UpdateRow(
        "ADO_Course_UpdateItem",
        u"SELECT * FROM " % table.table % u" WHERE " % table.nameColumn % u"= '" % name %
            u"' AND ReferenceID = '" % referenceId % u"' AND " % table.keyColumn % u" <> " % number,
        u"UPDATE " % table.table % u" SET " % table.nameColumn % u" = '" % name % u"' ,ReferenceID = '" %
            referenceId % u"' WHERE " % table.keyColumn % u" = " % number,
        key);
}

bool ADO_Course_DeleteConcession(ConcessionRef concessionRef)
{
    return RunWithKey("ADO_Course_DeleteConcession",
                      {u"DELETE FROM CourseChar WHERE ConcessionRef = ",
                       u"DELETE FROM CourseCharNames WHERE ConcessionRef = "},
                      concessionRef.number);
}
