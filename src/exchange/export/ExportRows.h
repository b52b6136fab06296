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
    Kind kind;
    bool required; ///< an import skips a record without it
};

/// The columns that the checked items of `fields` name, in the order of the items; bold items are required.
std::vector<ExportedField> FieldsToExport(const ListModel &fields, const Recordset &rows);
/// The header line of those fields: the texts of their items, quoted.
QString ExportHeader(const ListModel &fields, const Recordset &rows);

/// Counts what an import of the file will not bring back unchanged.
class ExportLosses final
{
public:
    void TakeText(std::u16string_view text);
    void TakeDate(const QString &written);
    /// Called after the values of a record.
    void EndRecord(bool isComplete);
    /// A line for each kind of loss, "" if there is none.
    QString Text() const;

private:
    int m_doubled = 0;
    int m_lineBreaks = 0; ///< in the record so far
    int m_tooLong = 0;    ///< records with too many lines
    int m_badDates = 0;
    int m_incomplete = 0; ///< records without a required field
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
    void AddText(const Recordset::Row &row, int column);
    void AddDate(const Recordset::Row &row, int column);
    void AddValue(const Recordset::Row &row, const ExportedField &field);
    bool HandOver();

    QFileDevice &m_file;
    const std::vector<ExportedField> &m_fields;
    std::u16string m_text;
    QByteArray m_bytes;
    ExportLosses m_losses;
    QStringEncoder m_encode{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
};
