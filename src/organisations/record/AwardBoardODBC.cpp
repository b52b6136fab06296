#include "organisations/record/AwardBoardODBC.h"

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"
#include "database/values/GlobalCode.h"

namespace
{
QString Label(const Recordset::Row &row)
{
    return FormatRefLabel(row.Text(u"ReferenceID"), row.Text(u"OrganName"));
}
} // namespace

void ADO_Organisation_FillListAwardBoard(ComboModel &list)
{
    Reported("ADO_Organisation_FillListAwardBoard", [&] {
        list.Clear();
        std::vector<ComboItem> items;
        for (const Recordset::Row row : OpenRecordset(
                 QStringLiteral("SELECT ReferenceID,OrganRef,OrganName FROM Organisations WHERE OrganRef > 1 "
                                "AND Board = 1 ORDER BY OrganName ASC")))
            items.push_back({Label(row), static_cast<int>(row.Long(u"OrganRef"))});
        list.Fill(std::move(items));
        list.SetCurrent(0);
    });
}

void ADO_Organisations_GetAll(ListModel &list)
{
    Reported("ADO_Organisations_GetAll", [&] {
        list.Clear();
        std::vector<ListItem> items;
        for (const Recordset::Row row : OpenRecordset(
                 QStringLiteral("SELECT * FROM Organisations WHERE OrganRef >1 ORDER BY OrganName ASC"))) {
            ListItem item{u'?' % row.Text(u"OrganRef"), Label(row)};
            item.checked = row.Long(u"Board") == 1;
            items.push_back(std::move(item));
        }
        list.Fill(std::move(items));
    });
}

bool ADO_Organisations_SetAwardFlag(OrganRef organRef, bool flag)
{
    if (IsSentinel(organRef))
        return false;
    return Reported("ADO_Organisations_SetAwardFlag", false, [&] {
        Execute(u"UPDATE Organisations SET Board = " % SqlNumber(flag ? 1 : 0) % u" WHERE OrganRef = " %
                SqlNumber(organRef));
        return true;
    });
}
