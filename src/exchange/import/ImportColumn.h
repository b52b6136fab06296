#pragma once

#include "platform/connection/Recordset.h"

#include <QDate>
#include <QString>

#include <vector>

class ListModel;

/// A date from an imported file, DD/MM/YYYY or YYYY-MM-DD; invalid for any other text.
QDate ImportedDate(QStringView text);

/// `text` made safe for SQL and cut to `size` characters (0 = any number), never in the middle of a doubled
/// apostrophe.
QString CutSafeText(const QString &text, int size);

/// A column that an import writes, and the position of its text in the file.
class ImportColumn final
{
public:
    enum class Role { Plain, Required, Reference };

    /// `field` is the column's name as spelled in the map; servers return their own spelling.
    ImportColumn(const QString &field, const RecordsetColumn &about, const QString &table, int position,
                 Role role);

    int Position() const { return m_position; } ///< in the file, from 1; 0 = not in the file
    Role ColumnRole() const { return m_role; }
    const QString &Target() const { return m_target; }         ///< the column of the table
    const QString &Assignment() const { return m_assignment; } ///< "Target = ", to put before a value

    /// Why the column does not accept the text, as the end of a sentence; "" if it does.
    QString Objection(const QString &text) const;
    /// Whether the text is too long for the column and will be cut.
    bool Cuts(const QString &text) const;
    int Size() const { return m_size; }
    /// The text as an SQL value. Looks a reference up, and adds it if there is none; "" after an error in
    /// that, which has been reported. Only inside Reported.
    QString Value(const QString &text) const;
    /// The same without adding anything: "" for a reference that does not exist yet. Only inside Reported.
    QString KnownValue(const QString &text) const;
    /// The part of the text by which a reference is looked up.
    QString LookedUp(const QString &text) const { return m_size > 0 ? text.left(m_size) : text; }

private:
    enum class Kind { Text, Whole, Number, Sex, Date, Lookup };
    struct Lookup;
    static const Lookup *LookupOf(const QString &table, const QString &column);
    static Kind KindOf(ColumnType type);
    static double LargestOf(ColumnType type);

    const Lookup *m_lookup;
    QString m_target;
    QString m_assignment;
    Kind m_kind;
    double m_largest;
    int m_size;
    int m_position;
    Role m_role;
};

/// The columns of `query` that the checked rows of `fields` name, in the order of the rows. A `ReferenceID`
/// that no row names comes last, not in any field, so that it is empty.
std::vector<ImportColumn> ImportColumns(const ListModel &fields, const Recordset &query,
                                        const QString &table);
