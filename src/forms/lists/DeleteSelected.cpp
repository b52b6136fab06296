#include "forms/lists/DeleteSelected.h"

#include "controls/ListModel.h"
#include "platform/desktop/Dialogs.h"

void DeleteSelected(ListModel &list, const std::function<Deletion(const ListItem &)> &erase,
                    const QString &word)
{
    for (const QString &key : list.SelectedKeys()) {
        const int row = list.Find(key);
        if (row < 0)
            continue;
        const ListItem item = list.At(row);
        const Dialogs::Answer answer = Dialogs::MsgBox(u"Okay to delete " % word % u" '" % item.text % u'\'',
                                                       QStringLiteral("Confirm Deletion"),
                                                       Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
        const Deletion deletion = answer == Dialogs::Answer::Yes ? erase(item) : Deletion::Kept;
        if (deletion == Deletion::Failed)
            return;
        if (deletion == Deletion::Done)
            list.RemoveKey(key);
        else
            list.Select(list.Find(key), false);
    }
}
