#include "exchange/import/CsvImport.h"

#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"
#include "exchange/csv/CsvBoxes.h"
#include "exchange/import/ImportLine.h"
#include "exchange/import/ImportNotes.h"
#include "exchange/import/ImportSource.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"

#include <QFileInfo>

#include <array>

namespace
{
struct ImportCounts {
    int imported = 0;
    int updated = 0;
    int skipped = 0;
};

/// One run over the lines of a file.
class ImportRun final
{
public:
    ImportRun(ImportSource &source, const QString &keyColumn, const QString &table)
        : m_source(source)
        , m_keyColumn(keyColumn)
        , m_table(table)
    {
    }

    void TakeLine();
    const ImportCounts &Counts() const { return m_counts; }
    const ImportNotes &Notes() const { return m_notes; }

private:
    LineValues ValuesOf() const;
    void Write(const LineValues &values);
    qint64 AddUnlessThere(const LineValues &values);
    void Update(const LineValues &values, qint64 key);
    bool MayUpdate(const LineValues &values);

    ImportSource &m_source;
    QString m_keyColumn;
    QString m_table;
    ImportCounts m_counts;
    ImportNotes m_notes;
    Dialogs::RepeatedQuestion m_update;
};

LineValues ImportRun::ValuesOf() const
{
    LineValues values;
    for (const ImportColumn &column : m_source.Columns()) {
        const QString text = m_source.Text(column);
        const QString value = column.Value(text);
        if (value.isEmpty())
            throw StatementGivenUp{};
        if (column.ColumnRole() == ImportColumn::Role::Required && text.isEmpty())
            return {};
        values.Add(column, value);
    }
    return values;
}

bool ImportRun::MayUpdate(const LineValues &values)
{
    return m_update.Agrees(values.Display() % u" already exists.\nOkay to update?",
                           QStringLiteral("CSV Import"));
}

void ImportRun::Update(const LineValues &values, qint64 key)
{
    if (IsSentinel(m_table, key)) {
        ++m_counts.skipped;
        return;
    }
    if (!MayUpdate(values))
        return;
    Execute(u"UPDATE " % m_table % u" SET " % values.Updates() % u" WHERE " % m_keyColumn % u" = " %
            QString::number(key));
    ++m_counts.updated;
}

void ImportRun::Write(const LineValues &values)
{
    // Another workstation may be importing the same people, or typing them in.
    const qint64 same = InOneStep(m_table, [&] { return AddUnlessThere(values); });
    if (same > 0)
        Update(values, same);
}

/// The key of the row that the line is to update; 0 if the line was added or is already there unchanged.
qint64 ImportRun::AddUnlessThere(const LineValues &values)
{
    if (HasRow(SelectKey(m_keyColumn, m_table, values.FullTest()))) {
        ++m_counts.skipped;
        return 0;
    }
    const QString identity = values.IdentityTest();
    if (!identity.isEmpty()) {
        const Recordset same = OpenRecordset(SelectKey(m_keyColumn, m_table, identity));
        if (!same.IsEmpty())
            return same.First().Long(m_keyColumn);
    }
    Execute(u"INSERT INTO " % m_table % u" (" % values.Columns() % u") VALUES (" % values.Values() % u")");
    ++m_counts.imported;
    return 0;
}

void ImportRun::TakeLine()
{
    const std::vector<ImportFault> objections = Objections(m_source);
    const LineValues values = objections.empty() ? ValuesOf() : LineValues();
    if (values.IsEmpty()) {
        ++m_counts.skipped;
        if (!m_source.IsBlank())
            m_notes.LineSkipped(objections.empty() ? Missing(m_source) : objections);
        return;
    }
    m_notes.ValuesLost(Losses(m_source));
    Write(values);
}

/// Each of these may change every row, so others get their turn in between.
void CleanUp(WriteGroup &group)
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
    for (const char *const statement : statements) {
        Execute(QString::fromLatin1(statement));
        EndRow(group);
    }
}

QString CountsText(const ImportCounts &counts)
{
    return QString::number(counts.imported) % u" Records where imported.\n" %
           QString::number(counts.updated) % u" Records where updated.\n" % QString::number(counts.skipped) %
           u" Records where skipped.";
}

/// "record 12 of 500 of 'people.csv'".
QString Reached(const Progress &progress, const QString &fileName)
{
    return u"record " % QString::number(progress.Value()) % u" of " % QString::number(progress.Maximum()) %
           u" of '" % QFileInfo(fileName).fileName() % u'\'';
}

void ImportLines(ImportRun &run, ImportSource &source, WriteGroup &group, Progress &progress)
{
    for (int done = 1; !progress.IsCancelled() && source.Next(); ++done) {
        run.TakeLine();
        EndRow(group);
        progress.SetValue(done);
    }
    CleanUp(group);
    EndRows(group);
}

void TellNotes(const ImportNotes &notes, const ImportSource &source, const QString &fileName)
{
    QString text = notes.IsEmpty() ? QString() : notes.Text(fileName);
    if (FileStamp::Of(fileName) != source.Stamp()) {
        text +=
            (text.isEmpty() ? u"" : u"\n\n") %
            QString(u'\'' % fileName % u"' changed in the meantime. It was imported as it was at the start.");
    }
    if (!text.isEmpty())
        TellOfImport(text);
}
} // namespace

bool Import_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql,
                     const QString &keyColumn, const QString &table, Progress &progress)
{
    using Opened = ImportSource::Opened;
    constexpr const char *name = "Import_CSV_File";
    ImportSource source;
    ImportRun run(source, keyColumn, table);
    WriteGroup group(gConnection);
    Opened opened = Opened::RefusedQuery;
    const bool ran = Reported(name, false, [&] {
        opened = source.Open(name, fileName, fields, sql, table);
        if (opened != Opened::Yes)
            return false;
        progress.Begin(source.Lines());
        ImportLines(run, source, group, progress);
        return true;
    });
    const bool isStored = group.Finish();
    if (opened == Opened::Told)
        return false;
    if (!ran || !isStored)
        TellOfImport(QStringLiteral("Import failed, maybe an invalid SQL query was passed."));
    if (opened != Opened::Yes)
        return false;

    const QString counts = CountsText(run.Counts());
    const QString reached = Reached(progress, fileName);
    const QString stays = QStringLiteral(". What it had done so far stays in the database:\n");
    if (!isStored)
        TellOfImport(
            u"The database could not store the last records before " % reached %
            u". When it can again, import the file once more: records that are already there are skipped.");
    else if (!ran)
        TellOfImport(u"The import stopped after " % reached % stays % counts);
    else if (progress.IsCancelled())
        TellOfImport(u"Import cancelled after " % reached % stays % counts);
    else
        TellOfImport(u"Import complete:\n" % counts);
    TellNotes(run.Notes(), source, fileName);
    return isStored && ran && !progress.IsCancelled();
}
