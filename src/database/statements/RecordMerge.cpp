#include "database/statements/RecordMerge.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

#include <QSet>

#include <algorithm>

namespace
{
bool AreEqual(const FieldValues &one, const FieldValues &other, const QString &name)
{
    return one.contains(name) == other.contains(name) && one.value(name) == other.value(name);
}

void TakeField(FieldValues &to, const FieldValues &from, const QString &name)
{
    if (from.contains(name))
        to[name] = from[name];
    else
        to.remove(name);
}

/// Takes a stored value so that it can be written back unchanged: writing doubles its backticks again.
void TakeStored(FieldValues &to, const FieldValues &stored, const QString &name)
{
    TakeField(to, stored, name);
    if (to.contains(name))
        to[name].replace(QStringLiteral("``"), QStringLiteral("`"));
}

/// The fields that were changed, with those that both changed first.
QList<Dialogs::FieldChange> ChangesOf(const MergedSave &save, const FieldMerge &merge,
                                      const FieldValues &yours, const FieldValues &theirs, QStringList &names)
{
    names = merge.disputed;
    for (const QString &name : merge.here + merge.joined) {
        if (!names.contains(name))
            names.append(name);
    }
    const auto shown = [&save](const QString &name, const FieldValues &values) {
        return save.shown(name, values.contains(name) ? values[name] : QString());
    };
    QList<Dialogs::FieldChange> changes;
    for (const QString &name : std::as_const(names)) {
        const bool isChangedHere = merge.here.contains(name);
        changes.append({save.caption(name), shown(name, yours), shown(name, theirs), isChangedHere,
                        merge.joined.contains(name), !isChangedHere});
    }
    return changes;
}

/// True if the user settled every field: has seen what is now stored in it, and decided which version to
/// keep.
bool Settle(const MergedSave &save, const FieldMerge &merge, const FieldValues &theirs, FieldValues &base,
            FieldValues &yours)
{
    QStringList names;
    QList<Dialogs::FieldChange> changes = ChangesOf(save, merge, yours, theirs, names);
    if (!Dialogs::SettleChanges(save.what, changes))
        return false;
    for (int i = 0; i < names.size(); ++i) {
        TakeField(base, theirs, names.at(i));
        if (changes.at(i).takesTheirs)
            TakeField(yours, theirs, names.at(i));
    }
    return true;
}
} // namespace

FieldMerge MergeFields(const FieldValues &base, const FieldValues &yours, const FieldValues &theirs)
{
    FieldMerge merge{yours, {}, {}, {}};
    QSet<QString> names;
    for (const FieldValues *version : {&base, &yours, &theirs}) {
        for (auto field = version->keyBegin(); field != version->keyEnd(); ++field)
            names.insert(*field);
    }
    QStringList sorted = names.values();
    sorted.sort();
    for (const QString &name : std::as_const(sorted)) {
        if (AreEqual(yours, theirs, name))
            continue;
        const bool isChangedHere = !AreEqual(base, yours, name);
        const bool isChangedElsewhere = !AreEqual(base, theirs, name);
        if (isChangedHere)
            merge.here.append(name);
        if (isChangedElsewhere)
            merge.joined.append(name);
        if (isChangedHere && isChangedElsewhere)
            merge.disputed.append(name);
        else if (isChangedElsewhere)
            TakeStored(merge.values, theirs, name);
    }
    return merge;
}

FieldValues AsStored(FieldValues values)
{
    for (QString &value : values)
        value.replace(QStringLiteral("`"), QStringLiteral("``"));
    return values;
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): what was loaded before what is shown.
int SaveMerged(const char *routineName, const MergedSave &save, FieldValues &base, FieldValues &values)
{
    // The record on the screen stays as it was until it is stored, whatever the user settles.
    FieldValues seen = base;
    FieldValues yours = values;
    while (true) {
        FieldMerge merge;
        FieldValues theirs;
        const int key = Reported(routineName, -1, [&] {
            return InOneStep(save.table, [&] {
                theirs = seen.isEmpty() ? FieldValues() : save.read();
                merge = theirs.isEmpty() ? FieldMerge{yours, {}, {}, {}} : MergeFields(seen, yours, theirs);
                if (!merge.disputed.isEmpty())
                    return -1;
                return save.write ? save.write(merge.values) : 1;
            });
        });
        if (merge.disputed.isEmpty()) {
            if (key > 0) {
                values = merge.values;
                base = save.write ? AsStored(merge.values) : theirs;
            }
            return key;
        }
        if (!Settle(save, merge, theirs, seen, yours))
            return -1;
    }
}

QString FieldText(const QString &value)
{
    return value;
}

QString FieldText(int value)
{
    return SqlNumber(value);
}

QString FieldText(double amount)
{
    constexpr int places = 2;
    return QString::number(amount, 'f', places);
}

QString FieldText(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

void ReadField(const QString &text, QString &value)
{
    value = text;
}

void ReadField(const QString &text, int &value)
{
    value = text.toInt();
}

void ReadField(const QString &text, double &amount)
{
    amount = text.toDouble();
}

void ReadField(const QString &text, bool &value)
{
    value = text == u"1";
}
