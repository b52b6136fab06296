#pragma once

#include "database/statements/RecordMerge.h"

class ListModel;
class TreeModel;

/// The lists and trees of a screen that are stored with its record, together with what is stored of them now.
class RecordLists final
{
public:
    struct List {
        QString word;     ///< what a row is: "Characteristic"
        ListModel &yours; ///< the rows on the screen
        ListModel &theirs;
        ListModel *available = nullptr; ///< the list that rows of `yours` come from and go back to
        bool hasValues = false;         ///< whether the sub-items of a row are stored too
    };
    struct Ticks {
        QString word;
        TreeModel &yours;
        TreeModel &theirs;
        QString singleImage{}; ///< of the nodes below which only one node can be ticked
    };

    void Add(const List &list) { m_lists.push_back(list); }
    void Add(const Ticks &ticks) { m_ticks.push_back(ticks); }

    void AddYours(FieldValues &values) const;
    void AddTheirs(FieldValues &values) const;
    /// Makes the lists on the screen show `values`; a row that they lack is taken from what is stored.
    void Take(const FieldValues &values) const;
    /// A row's name, and its value, as the user reads them; a null value means that the row is missing.
    QString Caption(const QString &field) const;
    QString Shown(const QString &field, const QString &value) const;

private:
    std::vector<List> m_lists;
    std::vector<Ticks> m_ticks;
};

/// The rows of a list as fields of a record.
void AddRows(FieldValues &values, const QString &word, const ListModel &list, bool hasValues);
/// The ticks of a tree as fields of a record. Below a node of `singleImage` they are one field.
void AddTicks(FieldValues &values, const QString &word, const TreeModel &tree, const QString &singleImage);

/// How a record with those columns and lists is described to the user; `read` and `write` are left to the
/// caller.
template <typename Record>
MergedSave SaveOf(const std::vector<MergedColumn<Record>> &columns, const RecordLists &lists,
                  const QString &table, const QString &what)
{
    MergedSave save{table, what, {}, {}, {}, {}};
    save.shown = [&columns, &lists](const QString &field, const QString &value) {
        const MergedColumn<Record> *column = ColumnOf(columns, field);
        if (!column)
            return lists.Shown(field, value);
        return column->shown ? column->shown(value) : value;
    };
    save.caption = [&columns, &lists](const QString &field) {
        return ColumnOf(columns, field) ? field : lists.Caption(field);
    };
    return save;
}
