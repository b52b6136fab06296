#include "courses/booking/StaffPicks.h"

#include "controls/ListModel.h"
#include "database/values/GlobalCode.h"

namespace
{
const QString openPost = QStringLiteral("-");

QString FreePostKey(const ListModel &used)
{
    int number = -1;
    while (used.Contains(openPost % SqlNumber(number)))
        --number;
    return openPost % SqlNumber(number);
}

void AddStaff(ListModel &available, ListModel &used)
{
    QStringList people;
    for (const int row : available.SelectedRows()) {
        const ListItem &item = available.At(row);
        if (item.key == openPost)
            used.Add({FreePostKey(used), item.text});
        else
            people.append(item.key);
    }
    available.MoveKeys(people, used);
}

void RemoveStaff(const QStringList &keys, ListModel &available, ListModel &used)
{
    QStringList people;
    for (const QString &key : keys) {
        if (key.startsWith(openPost))
            used.RemoveKey(key);
        else
            people.append(key);
    }
    used.MoveKeys(people, available);
    available.sort(0, Qt::AscendingOrder);
}
} // namespace

UsedAvailable::Actions StaffPicks::Actions(ListModel &available, ListModel &used)
{
    UsedAvailable::Actions actions;
    actions.add = [&] { AddStaff(available, used); };
    actions.remove = [&] { RemoveStaff(used.SelectedKeys(), available, used); };
    actions.clear = [&] { RemoveStaff(used.Keys(), available, used); };
    return actions;
}
