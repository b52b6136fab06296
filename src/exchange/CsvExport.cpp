#include "exchange/CsvExport.h"

#include "controls/ListModel.h"
#include "core/ErrorHandler.h"
#include "core/Progress.h"
#include "database/DecodeDateFunc.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"
#include "exchange/CsvFields.h"
#include "exchange/ReportQuery.h"
#include "platform/Dialogs.h"

#include <QSaveFile>
#include <QStringEncoder>

#include <vector>

namespace
{
enum class Outcome { Done, NoRecords, NoFields, Cancelled, FileFailed, Failed };

QString Title()
{
    return QStringLiteral("CSV Export");
}

void Tell(const QString &text)
{
    Dialogs::MsgBox(text, Title(), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
}

struct ExportedField {
    enum class Kind { Text, Number, Sex, Date };
    int column;
    Kind kind;
};

struct ExportedFields {
    std::vector<ExportedField> fields;
    QString header;
};

ExportedField::Kind KindOf(const RecordsetColumn &column)
{
    if (column.name.compare(u"CUST_SEX", Qt::CaseInsensitive) == 0)
        return ExportedField::Kind::Sex;
    if (column.name.compare(u"CUST_DOB", Qt::CaseInsensitive) == 0)
        return ExportedField::Kind::Date;
    switch (column.type) {
    case ColumnType::VarWChar:
    case ColumnType::VarChar:
    case ColumnType::Char:
        return ExportedField::Kind::Text;
    default:
        return ExportedField::Kind::Number;
    }
}

ExportedFields FieldsToExport(const ListModel &fields, const Recordset &rows)
{
    ExportedFields found;
    for (const int row : fields.CheckedRows()) {
        const int column = rows.ColumnIndex(fields.At(row).key);
        if (column < 0)
            continue;
        found.fields.push_back({column, KindOf(rows.Column(column))});
        found.header += u',' % CsvQuoteField(fields.At(row).text);
    }
    return found;
}

/// What the file holds other than the database does, as the import reads it.
struct Changed {
    int doubled = 0;
    int lineBreaks = 0;
    int dates = 0;

    QString Text() const
    {
        QString text;
        const auto add = [&text](int count, const char *one, const char *many, const char *why) {
            if (count > 0)
                text += u"    " % FormatNumber(count, 0) % u' ' % QLatin1String(count == 1 ? one : many) %
                        QLatin1String(why) % u'\n';
        };
        add(doubled, "value with quotation marks or backticks", "values with quotation marks or backticks",
            ": an import doubles them.");
        add(lineBreaks, "value with line breaks", "values with line breaks",
            ": other programs may take these for the end of a record.");
        add(dates, "unknown date of birth", "unknown dates of birth", ": today's date stands in the file.");
        return text;
    }
};

/// Makes the lines of the file. The buffers are kept from row to row.
class LineWriter final
{
public:
    LineWriter(QSaveFile &file, const std::vector<ExportedField> &fields)
        : m_file(file)
        , m_fields(fields)
    {
    }

    void Take(const Recordset::Row &row);
    /// A line as it stands.
    void Take(QStringView line) { m_text.append(line.utf16(), static_cast<size_t>(line.size())).append(end); }
    /// Hands over what is waiting once it is worth it, or all of it.
    bool Write(bool all);
    const Changed &Differences() const { return m_changed; }

private:
    static constexpr std::u16string_view end = u"\r\n";
    void TakeText(const Recordset::Row &row, int column);
    void TakeDate(const Recordset::Row &row, int column);

    QSaveFile &m_file;
    const std::vector<ExportedField> &m_fields;
    std::u16string m_text;
    QByteArray m_bytes;
    QStringEncoder m_encode{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
    Changed m_changed;
};

void LineWriter::TakeText(const Recordset::Row &row, int column)
{
    m_text.push_back(u'"');
    const size_t begin = m_text.size();
    row.AppendText(column, m_text);
    bool doubled = false;
    bool lineBreak = false;
    for (size_t at = begin; at < m_text.size(); ++at) {
        const char16_t c = m_text[at];
        doubled = doubled || c == u'"' || c == u'`';
        lineBreak = lineBreak || c == u'\n' || c == u'\r';
        if (c == u'"')
            m_text.insert(at++, 1, u'"');
    }
    m_text.push_back(u'"');
    m_changed.doubled += doubled ? 1 : 0;
    m_changed.lineBreaks += lineBreak ? 1 : 0;
}

void LineWriter::TakeDate(const Recordset::Row &row, int column)
{
    m_text.push_back(u'"');
    if (!row.IsNull(column)) {
        const int date = static_cast<int>(row.Long(column));
        m_text.append(IntToDateText(int(date)).toStdU16String());
        m_changed.dates += date == 0 ? 1 : 0;
    }
    m_text.push_back(u'"');
}

void LineWriter::Take(const Recordset::Row &row)
{
    bool isFirst = true;
    for (const ExportedField &field : m_fields) {
        if (!std::exchange(isFirst, false))
            m_text.push_back(u',');
        switch (field.kind) {
        case ExportedField::Kind::Text:
            TakeText(row, field.column);
            break;
        case ExportedField::Kind::Number:
            if (row.IsNull(field.column))
                m_text.push_back(u'0');
            else
                row.AppendText(field.column, m_text);
            break;
        case ExportedField::Kind::Sex: {
            const qint64 sex = row.Long(field.column);
            m_text.append(sex == 0 ? u"\"Not Specified\"" : sex == 1 ? u"\"Female\"" : u"\"Male\"");
            break;
        }
        case ExportedField::Kind::Date:
            TakeDate(row, field.column);
            break;
        }
    }
    m_text.append(end);
}

bool LineWriter::Write(bool all)
{
    constexpr size_t worthIt = 32 * 1024; // characters
    if (!all && m_text.size() < worthIt)
        return true;
    m_bytes.resize(m_encode.requiredSpace(static_cast<qsizetype>(m_text.size())));
    const char *const behind = m_encode.appendToBuffer(m_bytes.data(), m_text);
    m_text.clear();
    // A disk that gets full takes a part without an error; the next write says why.
    for (const char *at = m_bytes.constData(); at != behind;) {
        const qint64 taken = m_file.write(at, behind - at);
        if (taken <= 0)
            return false;
        at += taken;
    }
    return true;
}

/// Asks before the file takes the place of the one that may be there.
bool MayChange(const Changed &changed)
{
    const QString text = changed.Text();
    return text.isEmpty() ||
           Dialogs::MsgBox(u"The file does not carry all of it as it stands:\n" % text % u"Okay to export?",
                           Title(), Dialogs::Buttons::YesNo, Dialogs::Icon::Question) == Dialogs::Answer::Yes;
}

Outcome WriteRows(QSaveFile &file, const Recordset &rows, const ExportedFields &exported, Progress &progress)
{
    if (!file.open(QIODevice::WriteOnly) || file.write("\xEF\xBB\xBF") != 3)
        return Outcome::FileFailed;
    LineWriter lines(file, exported.fields);
    lines.Take(QStringView(exported.header).mid(1));
    int done = 0;
    for (const Recordset::Row row : rows) {
        lines.Take(row);
        if (!lines.Write(false))
            return Outcome::FileFailed;
        progress.SetValue(++done);
        if (progress.IsCancelled())
            return Outcome::Cancelled;
    }
    if (!lines.Write(true) || !file.flush())
        return Outcome::FileFailed;
    if (!MayChange(lines.Differences()))
        return Outcome::Cancelled;
    return file.commit() ? Outcome::Done : Outcome::FileFailed;
}
} // namespace

bool Export_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql, Progress &progress)
{
    QSaveFile file(fileName);
    int count = 0;
    const Outcome outcome = Reported("Export_CSV_File", Outcome::Failed, [&] {
        progress.Begin(0);
        const std::optional<Recordset> rows = OpenReportQuery(sql);
        if (!rows || rows->IsEmpty())
            return Outcome::NoRecords;
        count = rows->RowCount();
        progress.Begin(count);
        const ExportedFields exported = FieldsToExport(fields, *rows);
        return exported.fields.empty() ? Outcome::NoFields : WriteRows(file, *rows, exported, progress);
    });

    const QString failed = QStringLiteral("Export failed, maybe an invalid SQL query was passed.");
    switch (outcome) {
    case Outcome::Done:
        Tell(u"Export complete:\n" % QString::number(count) % u" Records where exported.");
        break;
    case Outcome::NoRecords:
        Tell(QStringLiteral("No Records found in database."));
        break;
    case Outcome::Cancelled:
        Tell(QStringLiteral("Export cancelled, nothing was written."));
        break;
    case Outcome::FileFailed:
        SetCurrentError({0, Title(), file.errorString(), QString()});
        HandleError(QStringLiteral("Export_CSV_File"), 0);
        Tell(failed % u"\n\nUnable to write '" % fileName % u"': " % file.errorString() % u'.');
        break;
    case Outcome::Failed:
        Tell(failed);
        break;
    case Outcome::NoFields:
        break;
    }
    return outcome == Outcome::Done;
}
