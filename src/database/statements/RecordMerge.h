#pragma once

#include "platform/desktop/Dialogs.h"

#include <QMap>
#include <QString>

#include <functional>
#include <utility>
#include <variant>
#include <vector>

/// Merges what two workstations changed in one record: a save compares what is stored with what its screen
/// was filled from, takes over what was changed only elsewhere, and asks where both changed a field.

/// One version of a record: its fields, as text, keyed by the names that the user knows. A row of a list that
/// is stored with the record is a field too, and is missing from a version without that row.
using FieldValues = QMap<QString, QString>;

struct FieldMerge {
    FieldValues values;   ///< yours, with what was changed only elsewhere
    QStringList here;     ///< changed in yours, and not in the same way elsewhere
    QStringList joined;   ///< changed elsewhere, and not in the same way in yours
    QStringList disputed; ///< changed in both, differently
};
/// `base` is the version that both sides started from.
FieldMerge MergeFields(const FieldValues &base, const FieldValues &yours, const FieldValues &theirs);

/// The fields as the database returns them once they are stored: a backtick comes back as two.
FieldValues AsStored(FieldValues values);

/// How one record is saved.
struct MergedSave {
    QString table; ///< the key of the step
    QString what;  ///< what a record is called within a sentence
    /// Reads what is stored now; empty if the record is gone. Runs inside the step.
    std::function<FieldValues()> read;
    /// Writes the record and returns its key, 0 for a duplicate, -1 on an error. Runs inside the step.
    /// Without it nothing is stored; the record on the screen is only merged with what is stored now.
    std::function<int(const FieldValues &values)> write;
    /// A value of a field, and its name, as the user reads them.
    std::function<QString(const QString &field, const QString &value)> shown;
    std::function<QString(const QString &field)> caption;
};

/// Stores `values` as one step, merged with what another workstation has changed since `base` was read; with
/// an empty `base` that is not checked. If both changed a field, the user settles it first. Afterwards
/// `values` is what was stored, and `base` is what is stored now. Returns the key, 0 for a duplicate, -1 on
/// an error or if the user went back to the record; nothing is written then.
int SaveMerged(const char *routineName, const MergedSave &save, FieldValues &base, FieldValues &values);

/// The version that a screen starts from after a save: `whole()` if everything was stored, `before` if
/// nothing was, or if `before` was unknown. After a save that ended half-way the record is read again, so
/// that what the save left is not taken for another workstation's change.
template <typename Saved, typename Whole, typename Read>
FieldValues SeenAfter(const Saved &saved, FieldValues before, Whole &&whole, Read &&read)
{
    if (saved.isWhole)
        return std::forward<Whole>(whole)();
    return saved.key < 1 || before.isEmpty() ? before : std::forward<Read>(read)();
}

/// A column of a record's own row.
template <typename Record>
struct MergedColumn {
    template <typename Value>
    using Field = std::function<Value &(Record &)>;

    QString name;
    std::variant<Field<QString>, Field<int>, Field<double>, Field<bool>> field;
    std::function<QString(const QString &value)> shown{}; ///< of a reference, for example; none = unchanged
};

QString FieldText(const QString &value);
QString FieldText(int value);
QString FieldText(double amount); ///< in hundredths
QString FieldText(bool value);
void ReadField(const QString &text, QString &value);
void ReadField(const QString &text, int &value);
void ReadField(const QString &text, double &amount);
void ReadField(const QString &text, bool &value);

template <typename Record>
FieldValues ValuesOf(const std::vector<MergedColumn<Record>> &columns, Record record)
{
    FieldValues values;
    for (const MergedColumn<Record> &column : columns)
        values[column.name] =
            std::visit([&record](const auto &field) { return FieldText(field(record)); }, column.field);
    return values;
}

/// Writes the values into the record's fields; a field that already has the value is left alone.
template <typename Record>
void PutValues(const std::vector<MergedColumn<Record>> &columns, const FieldValues &values, Record &record)
{
    const auto put = [&record](const auto &field, const QString &text) {
        if (FieldText(field(record)) != text)
            ReadField(text, field(record));
    };
    for (const MergedColumn<Record> &column : columns)
        std::visit([&](const auto &field) { put(field, values[column.name]); }, column.field);
}

/// The column with that name, or null.
template <typename Record>
const MergedColumn<Record> *ColumnOf(const std::vector<MergedColumn<Record>> &columns, const QString &name)
{
    for (const MergedColumn<Record> &column : columns) {
        if (column.name == name)
            return &column;
    }
    return nullptr;
}
