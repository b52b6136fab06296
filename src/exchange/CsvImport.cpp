#include "exchange/CsvImport.h"

#include "controls/ListModel.h"
#include "core/ErrorHandler.h"
#include "core/Progress.h"
#include "core/Session.h"
#include "database/MiscODBC.h"
#include "exchange/CsvFields.h"
#include "exchange/CsvReader.h"
#include "exchange/ImportColumn.h"
#include "exchange/ImportNotes.h"
#include "exchange/ReportQuery.h"
#include "platform/Connection.h"
#include "platform/Dialogs.h"

#include <array>

namespace
{
constexpr QChar delimiter = u',';

struct ImportCounts {
    int imported = 0;
    int updated = 0;
    int skipped = 0;
};

void Tell(const QString &text)
{
    Dialogs::MsgBox(text, QStringLiteral("CSV Import"), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
}

/// What a line brings in, column by column, and the texts of SQL that are made of it.
class LineValues final
{
public:
    void Add(const ImportColumn &column, const QString &value) { m_cells.push_back({&column, value}); }
    void Clear() { m_cells.clear(); }
    bool IsEmpty() const { return m_cells.empty(); }

    /// "A,B"
    QString Columns() const
    {
        return Joined(u",", [](QString &text, const Cell &cell) { text += cell.column->Target(); });
    }
    /// "1,'b'"
    QString Values() const
    {
        return Joined(u",", [](QString &text, const Cell &cell) { text += cell.value; });
    }
    /// "A = 1,B = 'b'"
    QString Updates() const { return Joined(u",", AddPair); }
    /// "A = 1 AND B = 'b'", of every column.
    QString FullTest() const { return Joined(u" AND ", AddPair); }
    /// The same of the columns by which a record is recognised.
    QString IdentityTest() const { return Joined(u" AND ", AddPair, &LineValues::Identifies); }
    /// The values of the required columns, to show to the user.
    QString Display() const
    {
        return Joined(
            u",", [](QString &text, const Cell &cell) { text += cell.value; },
            [](const Cell &cell) { return cell.column->ColumnRole() == ImportColumn::Role::Required; });
    }

private:
    struct Cell {
        const ImportColumn *column;
        QString value;
    };
    static bool Every(const Cell &) { return true; }
    static bool Identifies(const Cell &cell)
    {
        return cell.column->ColumnRole() != ImportColumn::Role::Plain;
    }
    static void AddPair(QString &text, const Cell &cell)
    {
        text.append(cell.column->Target()).append(QStringView(u" = ")).append(cell.value);
    }
    template <typename Add, typename Filter = bool (*)(const Cell &)>
    QString Joined(QStringView separator, Add add, Filter isWanted = &LineValues::Every) const
    {
        constexpr size_t ordinary = 48; // characters of a column with its value
        QString text;
        text.reserve(static_cast<qsizetype>(m_cells.size() * ordinary));
        for (const Cell &cell : m_cells) {
            if (!isWanted(cell))
                continue;
            if (!text.isEmpty())
                text.append(separator);
            add(text, cell);
        }
        return text;
    }

    std::vector<Cell> m_cells;
};

/// One run over the lines of a file.
class ImportRun final
{
public:
    ImportRun(const QString &keyColumn, const QString &table, std::vector<ImportColumn> columns,
              const QString &header)
        : m_keyColumn(keyColumn)
        , m_table(table)
        , m_columns(std::move(columns))
        , m_header(header)
    {
    }

    void TakeLine(const CsvLine &line);
    const ImportCounts &Counts() const { return m_counts; }
    const ImportNotes &Notes() const { return m_notes; }

private:
    bool IsRefused(const CsvLine &line, const QStringList &fields);
    LineValues ValuesOf(const CsvLine &line, const QStringList &fields);
    void Write(const LineValues &values);
    void Update(const LineValues &values, qint64 key);
    QString Select(const QString &test) const;
    QString FieldName(const ImportColumn &column) const;

    QString m_keyColumn;
    QString m_table;
    std::vector<ImportColumn> m_columns;
    QString m_header;
    ImportCounts m_counts;
    ImportNotes m_notes;
};

QString ImportRun::FieldName(const ImportColumn &column) const
{
    return CsvGetField(m_header, delimiter, column.Position());
}

/// Looks before anything of the line is written.
bool ImportRun::IsRefused(const CsvLine &line, const QStringList &fields)
{
    if (line.unclosedQuote) {
        m_notes.LineWithUnclosedQuote(line.number);
        return true;
    }
    for (const ImportColumn &column : m_columns) {
        const QString text = fields.value(column.Position() - 1);
        const QString objection = column.Objection(text);
        if (!objection.isEmpty()) {
            m_notes.LineRefused(line.number, FieldName(column), text, objection);
            return true;
        }
    }
    return false;
}

LineValues ImportRun::ValuesOf(const CsvLine &line, const QStringList &fields)
{
    LineValues values;
    for (const ImportColumn &column : m_columns) {
        const QString text = fields.value(column.Position() - 1);
        const QString value = column.Value(text);
        if (value.isEmpty())
            throw StatementGivenUp{};
        if (column.ColumnRole() == ImportColumn::Role::Required && text.isEmpty()) {
            values.Clear();
            break;
        }
        values.Add(column, value);
        if (column.Cuts(text))
            m_notes.ValueCut(line.number, FieldName(column), text.size(), column.Size());
    }
    return values;
}

QString ImportRun::Select(const QString &test) const
{
    return u"SELECT " % m_keyColumn % u" FROM " % m_table % u" WHERE " % test;
}

void ImportRun::Update(const LineValues &values, qint64 key)
{
    const Dialogs::Answer answer =
        Dialogs::MsgBox(values.Display() % u" already exists.\nOkay to update?", QStringLiteral("CSV Import"),
                        Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
    if (answer != Dialogs::Answer::Yes)
        return;
    Execute(u"UPDATE " % m_table % u" SET " % values.Updates() % u" WHERE " % m_keyColumn % u" = " %
            QString::number(key));
    ++m_counts.updated;
}

void ImportRun::Write(const LineValues &values)
{
    if (HasRow(Select(values.FullTest()))) {
        ++m_counts.skipped;
        return;
    }
    const QString identity = values.IdentityTest();
    if (!identity.isEmpty()) {
        const Recordset same = OpenRecordset(Select(identity));
        if (!same.IsEmpty())
            return Update(values, same.First().Long(m_keyColumn));
    }
    Execute(u"INSERT INTO " % m_table % u" (" % values.Columns() % u") VALUES (" % values.Values() % u")");
    ++m_counts.imported;
}

void ImportRun::TakeLine(const CsvLine &line)
{
    const QStringList fields = CsvGetFields(line.text, delimiter);
    const LineValues values = IsRefused(line, fields) ? LineValues() : ValuesOf(line, fields);
    if (values.IsEmpty())
        ++m_counts.skipped;
    else
        Write(values);
}

void CleanUp()
{
    static constexpr std::array statements{
        "UPDATE Contacts SET Cust_City = 1 WHERE Cust_City is NULL",
        "UPDATE Contacts SET Cust_Country = 1 WHERE Cust_Country is NULL",
        "UPDATE Contacts SET Cust_City = 1 WHERE Cust_City is NULL",
        "UPDATE Contacts SET Cust_Designation = 1 WHERE Cust_Designation is NULL",
        "UPDATE Contacts SET Cust_County = 1 WHERE Cust_County is NULL",
        "UPDATE Contacts SET Cust_EthnicGroup = 1 WHERE Cust_EthnicGroup is NULL",
        "UPDATE Contacts SET OrganRef = 1 WHERE OrganRef is NULL",
        "UPDATE Contacts SET ContactContactRef = 1 WHERE ContactContactRef is NULL",
        "UPDATE Organisations SET City = 1 WHERE City IS NULL",
        "UPDATE Organisations SET County = 1 WHERE County IS NULL",
        "UPDATE Organisations SET Country = 1 WHERE Country IS NULL",
        "DELETE FROM Contacts WHERE ContactRef > 1 and (Cust_Forename is NULL or Cust_Surname is NULL)",
        "DELETE FROM Organisations WHERE OrganRef > 1 and (OrganName is NULL)",
    };
    for (const char *const statement : statements)
        Execute(QString::fromLatin1(statement));
}

/// The mapping was made on another header than the file has now.
bool HeaderDiffers(const ListModel &fields, const QString &header)
{
    for (const int row : fields.CheckedRows()) {
        const ListItem &field = fields.At(row);
        if (field.key.contains(u'-') && CsvGetField(header, delimiter, KeyNumber(field.key)) != field.text)
            return true;
    }
    return false;
}

QString CountsText(const ImportCounts &counts)
{
    return QString::number(counts.imported) % u" Records where imported.\n" %
           QString::number(counts.updated) % u" Records where updated.\n" % QString::number(counts.skipped) %
           u" Records where skipped.";
}

/// "line 12 of 500", by the data lines of the file.
QString Reached(const Progress &progress)
{
    return u"line " % QString::number(progress.Value()) % u" of " % QString::number(progress.Maximum());
}

void ImportLines(ImportRun &run, CsvReader &reader, WriteGroup &group, Progress &progress)
{
    CsvLine line;
    for (int done = 1; !progress.IsCancelled() && reader.Next(line); ++done) {
        run.TakeLine(line);
        EndRow(group);
        progress.SetValue(done);
    }
    CleanUp();
    EndRows(group);
}

/// Reports a query that OpenReportQuery refused, as a failed one is reported.
void ReportRefusedQuery()
{
    SetCurrentError({0, QStringLiteral("CSV Import"),
                     QStringLiteral("The query of the data set does not read what can be imported."),
                     QString()});
    HandleError(QStringLiteral("Import_CSV_File"), 0);
}

enum class Outcome { Ran, Failed, Told };

Outcome Say(const QString &text)
{
    Tell(text);
    return Outcome::Told;
}

/// Opens the file and makes the run for it; the lines behind the header are left to read.
Outcome Prepare(std::optional<ImportRun> &run, CsvReader &reader, const QString &fileName,
                const ListModel &fields, const QString &sql, const QString &keyColumn, const QString &table)
{
    const std::optional<Recordset> query = OpenReportQuery(sql);
    if (!query) {
        ReportRefusedQuery();
        return Outcome::Failed;
    }
    if (!reader.Open(fileName))
        return Say(u"Unable to open '" % fileName % u"'.\n" % reader.Problem());
    CsvLine header;
    if (!reader.Next(header) || reader.CountRest() == 0)
        return Say(QStringLiteral("No Records found to import."));
    if (HeaderDiffers(fields, header.text))
        return Say(u"The fields of '" % fileName %
                   u"' are not any more what they were when you chose it. Please choose the file again.");
    run.emplace(keyColumn, table, ImportColumns(fields, *query, table), header.text);
    return Outcome::Ran;
}

void TellNotes(const ImportNotes &notes, const CsvReader &reader, const QString &fileName)
{
    QString text = notes.IsEmpty() ? QString() : notes.Text(fileName);
    if (reader.FileChanged()) {
        text += (text.isEmpty() ? u"" : u"\n\n") %
                QString(u'\'' % fileName %
                        u"' changed in the meantime. Its lines were taken as they stood at the start.");
    }
    if (!text.isEmpty())
        Tell(text);
}
} // namespace

bool Import_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql,
                     const QString &keyColumn, const QString &table, Progress &progress)
{
    CsvReader reader;
    std::optional<ImportRun> run;
    WriteGroup group(gConnection);
    const Outcome outcome = Reported("Import_CSV_File", Outcome::Failed, [&] {
        const Outcome prepared = Prepare(run, reader, fileName, fields, sql, keyColumn, table);
        if (prepared == Outcome::Ran) {
            progress.Begin(reader.CountRest());
            ImportLines(*run, reader, group, progress);
        }
        return prepared;
    });
    const bool isStored = group.Finish();
    if (outcome == Outcome::Told)
        return false;
    if (outcome == Outcome::Failed || !isStored)
        Tell(QStringLiteral("Import failed, maybe an invalid SQL query was passed."));
    if (!run)
        return false;

    const QString counts = CountsText(run->Counts());
    if (!isStored)
        Tell(u"The database did not take the last lines before " % Reached(progress) %
             u". When it does again, import the file once more: the records that are there are skipped.");
    else if (outcome == Outcome::Failed)
        Tell(u"The import stopped behind " % Reached(progress) %
             u". What it did before stays in the database:\n" % counts);
    else if (progress.IsCancelled())
        Tell(u"Import cancelled behind " % Reached(progress) % u":\n" % counts);
    else
        Tell(u"Import complete:\n" % counts);
    TellNotes(run->Notes(), reader, fileName);
    return isStored && outcome == Outcome::Ran && !progress.IsCancelled();
}
