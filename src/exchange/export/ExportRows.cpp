#include "exchange/export/ExportRows.h"

#include "controls/ListModel.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "exchange/csv/CsvFields.h"
#include "exchange/csv/CsvReader.h"
#include "exchange/import/ImportColumn.h"

#include <QFileDevice>

#include <string_view>
#include <utility>

using Kind = ExportedField::Kind;

namespace
{
Kind KindOf(const RecordsetColumn &column)
{
    if (column.name.compare(u"CUST_SEX", Qt::CaseInsensitive) == 0)
        return Kind::Sex;
    if (column.name.compare(u"CUST_DOB", Qt::CaseInsensitive) == 0)
        return Kind::Date;
    switch (column.type) {
    case ColumnType::VarWChar:
    case ColumnType::VarChar:
    case ColumnType::Char:
        return Kind::Text;
    default:
        return Kind::Number;
    }
}
} // namespace

std::vector<ExportedField> FieldsToExport(const ListModel &fields, const Recordset &rows)
{
    std::vector<ExportedField> exported;
    for (const int row : fields.CheckedRows()) {
        const int column = rows.ColumnIndex(fields.At(row).key);
        if (column >= 0)
            exported.push_back(
                {column, fields.At(row).text, KindOf(rows.Column(column)), fields.At(row).bold});
    }
    return exported;
}

QString ExportHeader(const ListModel &fields, const Recordset &rows)
{
    QString header;
    for (const int row : fields.CheckedRows()) {
        if (rows.ColumnIndex(fields.At(row).key) >= 0)
            header += u',' % CsvQuoteField(fields.At(row).text);
    }
    return header.mid(1);
}

void ExportLosses::Add(Loss &loss, const QString &field, QStringView value)
{
    constexpr qsizetype shown = 40; // characters
    if (++loss.count > 1)
        return;
    loss.first = u"record " % QString::number(m_records + 1);
    if (!field.isEmpty())
        loss.first += u", field '" % field % u'\'';
    if (!value.isEmpty())
        loss.first += u": '" % FlattenLines(value.left(shown).toString()) %
                      QLatin1String(value.size() > shown ? "...'" : "'");
}

void ExportLosses::TakeText(const ExportedField &field, std::u16string_view text)
{
    bool doubled = false;
    bool afterReturn = false;
    for (const char16_t c : text) {
        doubled = doubled || c == u'"' || c == u'`';
        m_lineBreaks += c == u'\r' || (c == u'\n' && !afterReturn) ? 1 : 0;
        afterReturn = c == u'\r';
    }
    if (doubled)
        Add(m_doubled, field.name, text);
}

void ExportLosses::TakeDate(const ExportedField &field, const QString &written)
{
    if (!ImportedDate(written).isValid())
        Add(m_badDates, field.name, written);
}

void ExportLosses::TakeMissing(const ExportedField &field)
{
    if (!std::exchange(m_isIncomplete, true))
        Add(m_incomplete, field.name);
}

void ExportLosses::EndRecord()
{
    if (m_lineBreaks >= mostLinesOfRecord)
        Add(m_tooLong);
    m_lineBreaks = 0;
    m_isIncomplete = false;
    ++m_records;
}

QString ExportLosses::Text() const
{
    QString text;
    const auto add = [&text](const Loss &loss, const char *one, const char *many, const char *why) {
        if (loss.count > 0)
            text += u"    " % FormatNumber(loss.count, 0) % u' ' %
                    QLatin1String(loss.count == 1 ? one : many) % QLatin1String(why) % u"\n        " %
                    (loss.count == 1 ? u"It is in " : u"The first is in ") % loss.first % u".\n";
    };
    add(m_doubled, "value with quotation marks or backticks", "values with quotation marks or backticks",
        ": an import doubles them.");
    add(m_tooLong, "record of over 500 lines", "records of over 500 lines", ": an import skips the record.");
    add(m_badDates, "date of birth that is not a date", "dates of birth that are not dates",
        ": an import skips the record.");
    add(m_incomplete, "record without a field that is shown in bold",
        "records without a field that is shown in bold", ": an import skips the record.");
    return text;
}

bool ExportWriter::Begin(const QString &header)
{
    m_text = u"\uFEFF";
    m_text.append(header.toStdU16String()).append(u"\r\n");
    m_losses = {};
    return m_file.resize(0) && m_file.seek(0);
}

bool ExportWriter::Write(const Recordset::Row &row)
{
    constexpr size_t worthIt = 32 * 1024; // characters
    bool isFirst = true;
    for (const ExportedField &field : m_fields) {
        if (!std::exchange(isFirst, false))
            m_text.push_back(u',');
        AddValue(row, field);
        if (field.required && !row.HasText(field.column))
            m_losses.TakeMissing(field);
    }
    m_text.append(u"\r\n");
    m_losses.EndRecord();
    return m_text.size() < worthIt || HandOver();
}

bool ExportWriter::Finish()
{
    return HandOver() && m_file.flush();
}

void ExportWriter::AddValue(const Recordset::Row &row, const ExportedField &field)
{
    switch (field.kind) {
    case Kind::Text:
        AddText(row, field);
        break;
    case Kind::Number:
        if (row.IsNull(field.column))
            m_text.push_back(u'0');
        else
            row.AppendText(field.column, m_text);
        break;
    case Kind::Sex: {
        const qint64 sex = row.Long(field.column);
        m_text.append(sex == 0 ? u"\"Not Specified\"" : sex == 1 ? u"\"Female\"" : u"\"Male\"");
        break;
    }
    case Kind::Date:
        AddDate(row, field);
        break;
    }
}

void ExportWriter::AddText(const Recordset::Row &row, const ExportedField &field)
{
    m_text.push_back(u'"');
    const size_t begin = m_text.size();
    row.AppendText(field.column, m_text);
    m_losses.TakeText(field, std::u16string_view(m_text).substr(begin));
    for (size_t at = m_text.find(u'"', begin); at != std::u16string::npos; at = m_text.find(u'"', at + 2))
        m_text.insert(at, 1, u'"');
    m_text.push_back(u'"');
}

void ExportWriter::AddDate(const Recordset::Row &row, const ExportedField &field)
{
    m_text.push_back(u'"');
    // An unknown date would be written, and imported again, as today's.
    const int date = static_cast<int>(row.Long(field.column));
    if (date != 0) {
        const QString text = IntToDateText(int(date));
        m_losses.TakeDate(field, text);
        m_text.append(text.toStdU16String());
    }
    m_text.push_back(u'"');
}

bool ExportWriter::HandOver()
{
    m_bytes.resize(m_encode.requiredSpace(static_cast<qsizetype>(m_text.size())));
    const char *const end = m_encode.appendToBuffer(m_bytes.data(), m_text);
    m_text.clear();
    // A disk that gets full accepts a part without an error; the next write says why.
    for (const char *at = m_bytes.constData(); at != end;) {
        const qint64 taken = m_file.write(at, end - at);
        if (taken <= 0)
            return false;
        at += taken;
    }
    return true;
}
