#include "courses/booking/HolderColumns.h"

#include "controls/ListModel.h"

void HolderColumns::Add(ListModel &available, Holders::Of what)
{
    m_columns.push_back({&available, what});
}

void HolderColumns::Show(const EventHours &hours, EventRef apartFrom, RoleTypeRef role) const
{
    for (const auto &[list, what] : m_columns) {
        if (list->IsEmpty())
            continue;
        const auto holders = Holders::At(what, hours, apartFrom, role);
        if (!holders)
            return;
        for (int row = 0; row < list->Count(); ++row) {
            const QString text = Holders::Text(*holders, KeyNumber(list->At(row).key));
            if (list->At(row).subItems.value(0) != text)
                list->SetSubItem(row, 0, text);
        }
    }
}
