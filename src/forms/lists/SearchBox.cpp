#include "forms/lists/SearchBox.h"

#include "controls/ListModel.h"
#include "forms/lists/ListView.h"

#include <QLineEdit>

#include <algorithm>

namespace
{
void Search(const QString &entry, ListView *list)
{
    if (entry.size() < 2)
        return;
    ListModel &rows = list->Model();
    const QString wanted = entry.toUpper();
    const int count = rows.Count();
    const int start = std::max(0, rows.CurrentRow());
    for (int step = 0; step < count; ++step) {
        const int row = (start + step) % count;
        // Upper-casing may lengthen a text and never shortens it.
        if (!rows.At(row).text.left(wanted.size()).toUpper().startsWith(wanted))
            continue;
        rows.SelectOnly(row);
        list->ShowRow(row);
        return;
    }
}
} // namespace

void BindSearchBox(QLineEdit *box, ListView *list)
{
    QObject::connect(box, &QLineEdit::textChanged, list,
                     [list](const QString &entry) { Search(entry, list); });
}
