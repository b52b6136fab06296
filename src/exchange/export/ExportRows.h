#pragma once

#include "platform/connection/Recordset.h"

#include <QByteArray>
#include <QString>
#include <QStringEncoder>

#include <string>
#include <string_view>
#include <vector>

class ListModel;
class QFileDevice;

/// A column of a query that goes to a CSV file, and how its values are written.
struct ExportedField {
    enum class Kind { Text, Number, Sex, Date };
    int column;
    QString name; ///< in the header line
    Kind kind;
    bool required; ///< an import skips a record without it
};

/// The columns that the checked items of `fields` name, in the order of the items; bold items are required.
std::vector<ExportedField> FieldsToExport(const ListModel &fields, const Recordset &rows);
/// The header line of those fields: the texts of their items, quoted.
QString ExportHeader(const ListModel &fields, const Recordset &rows);

/// Counts what an import of the file will not bring back unchanged, and notes the first of each kind.
class ExportLosses final
{
public:
    void TakeText(const ExportedField &field, std::u16string_view text);
    void TakeDate(const ExportedField &field, const QString &written);
    /// A required field that is empty.
    void TakeMissing(const ExportedField &field);
    /// Called after the values of a record.
    void EndRecord();
    /// For each kind of loss a line with how many there are, and one with where the first is; "" if there is
    /// none.
    QString Text() const;

private:
    struct Loss {
        int count = 0;
        QString first; ///< "record 3, field 'Notes': 'say "x"'"
    };
    void Add(Loss &loss, const QString &field = {}, QStringView value = {});

    Loss m_doubled;
    Loss m_tooLong; ///< records with too many lines
    Loss m_badDates;
    Loss m_incomplete;           ///< records without a required field
    int m_records = 0;           ///< that have ended
    int m_lineBreaks = 0;        ///< in the record so far
    bool m_isIncomplete = false; ///< the record so far
};

/// Writes lines to a file in UTF-8. The buffers are kept from line to line.
class ExportWriter final
{
public:
    ExportWriter(QFileDevice &file, const std::vector<ExportedField> &fields)
        : m_file(file)
        , m_fields(fields)
    {
    }
    /// Empties the file and starts it with the byte-order mark and the header. False if it cannot be written.
    bool Begin(const QString &header);
    /// False if the file cannot be written.
    bool Write(const Recordset::Row &row);
    bool Finish();
    /// The losses of the rows written since Begin.
    const ExportLosses &Losses() const { return m_losses; }

private:
    void AddText(const Recordset::Row &row, const ExportedField &field);
    void AddDate(const Recordset::Row &row, const ExportedField &field);
    void AddValue(const Recordset::Row &row, const ExportedField &field);
    bool HandOver();

    QFileDevice &m_file;
    const std::vector<ExportedField> &m_fields;
    std::u16string m_text;
    QByteArray m_bytes;
    ExportLosses m_losses;
    QStringEncoder m_encode{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
};
