#include "database/statements/DeletedMeanwhile.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Dialogs.h"

#include <algorithm>

namespace
{
constexpr int keysAtOnce = 500;
constexpr int namesTold = 10;

void Tell(const QString &text, const QString &title)
{
    Dialogs::MsgBox(text, title, Dialogs::Buttons::Ok, Dialogs::Icon::Information);
}

QString Condition(const QString &keyColumn, const QList<int> &keys)
{
    QStringList terms;
    for (const int key : keys)
        terms.append(keyColumn % u" = " % SqlNumber(key));
    return terms.join(QStringLiteral(" OR "));
}
} // namespace

std::optional<QSet<int>> ADO_LivingKeys(const QString &table, const QString &keyColumn, const QSet<int> &keys)
{
    return Reported("ADO_LivingKeys", std::optional<QSet<int>>(), [&] {
        QList<int> asked = keys.values();
        std::sort(asked.begin(), asked.end());
        QSet<int> living;
        for (int first = 0; first < asked.size(); first += keysAtOnce) {
            const Recordset rows = OpenRecordset(u"SELECT " % keyColumn % u" FROM " % table % u" WHERE " %
                                                 Condition(keyColumn, asked.mid(first, keysAtOnce)));
            for (const Recordset::Row row : rows)
                living.insert(static_cast<int>(row.Long(keyColumn)));
        }
        return living;
    });
}

int LivingKey(const QString &table, const QString &keyColumn, int key, const QString &what,
              const QString &title)
{
    const std::optional<QSet<int>> living = ADO_LivingKeys(table, keyColumn, {key});
    if (!living)
        return -1;
    if (living->contains(key))
        return key;
    Tell(u"Another user has deleted this " % what % u" meanwhile. Nothing was stored for it.", title);
    return 0;
}

bool LeaveOutDeleted(ListModel &list, const QString &table, const QString &keyColumn, const QString &title)
{
    return LeaveOutDeleted(
        list, table, keyColumn, title, [](const ListItem &row) { return KeyNumber(row.key); },
        [](const ListItem &row) { return row.text; });
}

bool LeaveOutDeleted(ListModel &list, const QString &table, const QString &keyColumn, const QString &title,
                     const std::function<int(const ListItem &row)> &keyOf,
                     const std::function<QString(const ListItem &row)> &nameOf)
{
    QSet<int> keys;
    for (int row = 0; row < list.Count(); ++row)
        keys.insert(keyOf(list.At(row)));
    const std::optional<QSet<int>> living = ADO_LivingKeys(table, keyColumn, keys);
    if (!living)
        return false;
    std::vector<int> gone;
    QStringList names;
    for (int row = 0; row < list.Count(); ++row) {
        if (living->contains(keyOf(list.At(row))))
            continue;
        gone.push_back(row);
        names.append(nameOf(list.At(row)));
    }
    names.removeDuplicates();
    list.Take(gone);
    TellLeftOut(names, title);
    return true;
}

void TellLeftOut(const QStringList &names, const QString &title)
{
    TellNames(QStringLiteral("Another user has deleted these meanwhile, and they are left out:"), names,
              title);
}

void TellNames(const QString &line, const QStringList &names, const QString &title)
{
    if (names.isEmpty())
        return;
    QString text = line;
    for (const QString &name : names.mid(0, namesTold))
        text += u"\n    " % name;
    if (names.size() > namesTold)
        text += u"\n    and " % QString::number(names.size() - namesTold) % u" more";
    Tell(text, title);
}
