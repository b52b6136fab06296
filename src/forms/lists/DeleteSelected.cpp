#include "forms/lists/DeleteSelected.h"

#include "controls/ListModel.h"
#include "platform/desktop/Dialogs.h"

bool MayDelete(const QString &what, const QString &goesWith)
{
    const QString question = u"Okay to delete " % what;
    return Dialogs::MsgBox(goesWith.isEmpty() ? question : QString(question % u'\n' % goesWith),
                           QStringLiteral("Confirm Deletion"), Dialogs::Buttons::YesNo,
                           Dialogs::Icon::Question, Dialogs::Answer::No) == Dialogs::Answer::Yes;
}

void DeleteSelected(ListModel &list, const std::function<Deletion(const ListItem &)> &erase,
                    const QString &word, const std::function<QString(const ListItem &)> &goesWith)
{
    for (const QString &key : list.SelectedKeys()) {
        const int row = list.Find(key);
        if (row < 0)
            continue;
        const ListItem item = list.At(row);
        const bool may = MayDelete(word % u" '" % item.text % u'\'', goesWith ? goesWith(item) : QString());
        const Deletion deletion = may ? erase(item) : Deletion::Kept;
        if (deletion == Deletion::Failed)
            return;
        if (deletion == Deletion::Done)
            list.RemoveKey(key);
        else
            list.Select(list.Find(key), false);
    }
}
