#include "exchange/export/CsvExport.h"

#include "controls/ListModel.h"
#include "core/files/ErrorHandler.h"
#include "core/files/SaveFile.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "exchange/csv/CsvBoxes.h"
#include "exchange/csv/ReportQuery.h"
#include "exchange/export/ExportRows.h"
#include "platform/desktop/Dialogs.h"

namespace
{
enum class Outcome { Done, NoRecords, NoFields, Cancelled, FileFailed, Failed };

constexpr const char *routineName = "Export_CSV_File";

QString Title()
{
    return QStringLiteral("CSV Export");
}

/// One export. The rows are written as they are read to a file beside the one with that name, so that none is
/// kept in memory; it replaces the other once all are there and the user knows what will be lost.
class ExportRun final
{
public:
    ExportRun(const QString &fileName, const ListModel &items, const QString &sql, Progress &progress)
        : m_items(items)
        , m_sql(sql)
        , m_progress(progress)
        , m_file(fileName)
        , m_writer(m_file, m_fields)
    {
    }

    Outcome Run(); ///< only inside Reported
    int Written() const { return m_written; }
    const QSaveFile &File() const { return m_file; }

private:
    void CountRows();
    bool Begin(const Recordset &rows);
    bool Take(const Recordset &rows, int firstRow);
    bool Stop(Outcome outcome);
    bool MayLose() const;

    const ListModel &m_items;
    QString m_sql;
    Progress &m_progress;
    QSaveFile m_file;
    std::vector<ExportedField> m_fields;
    ExportWriter m_writer;
    Outcome m_outcome = Outcome::NoRecords;
    int m_written = 0;
};

/// Counts the rows for the progress bar. SQL Server does not accept such a query, and reads the whole result
/// before it hands over the first row.
void ExportRun::CountRows()
{
    if (gConnection.Kind() == DatabaseKind::SqlServer || !IsReportQuery(m_sql))
        return;
    const std::optional<Recordset> count =
        TryOpenRecordset(u"SELECT COUNT(*) FROM (" % m_sql % u") AS Counted");
    if (count && !count->IsEmpty())
        m_progress.Begin(static_cast<int>(count->First().Long(0)));
}

bool ExportRun::Stop(Outcome outcome)
{
    m_outcome = outcome;
    return false;
}

bool ExportRun::Begin(const Recordset &rows)
{
    m_fields = FieldsToExport(m_items, rows);
    if (m_fields.empty())
        return Stop(Outcome::NoFields);
    m_written = 0;
    if (m_progress.Maximum() == 0)
        m_progress.Begin(rows.RowCount());
    const bool isOpen = m_file.isOpen() || m_file.open(QIODevice::WriteOnly);
    return (isOpen && m_writer.Begin(ExportHeader(m_items, rows))) || Stop(Outcome::FileFailed);
}

bool ExportRun::Take(const Recordset &rows, int firstRow)
{
    if (firstRow == 0 && !rows.IsEmpty() && !Begin(rows))
        return false;
    for (const Recordset::Row row : rows) {
        if (!m_writer.Write(row))
            return Stop(Outcome::FileFailed);
        m_progress.SetValue(++m_written);
        if (m_progress.IsCancelled())
            break;
    }
    if (rows.IsEmpty())
        m_progress.SetValue(m_written);
    return !m_progress.IsCancelled() || Stop(Outcome::Cancelled);
}

bool ExportRun::MayLose() const
{
    const QString text = m_writer.Losses().Text();
    return text.isEmpty() ||
           Dialogs::MsgBox(u"An import of this file would not bring back everything unchanged:\n" % text %
                               u"Okay to export?",
                           Title(), Dialogs::Buttons::YesNo, Dialogs::Icon::Question) == Dialogs::Answer::Yes;
}

Outcome ExportRun::Run()
{
    m_progress.Begin(0);
    CountRows();
    ReadReportQuery(m_sql, [this](const Recordset &rows, int firstRow) { return Take(rows, firstRow); });
    if (m_outcome != Outcome::NoRecords || m_written == 0)
        return m_outcome;
    if (!m_writer.Finish())
        return Outcome::FileFailed;
    if (!MayLose())
        return Outcome::Cancelled;
    return m_file.commit() ? Outcome::Done : Outcome::FileFailed;
}
} // namespace

bool Export_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql, Progress &progress)
{
    ExportRun run(fileName, fields, sql, progress);
    const Outcome outcome = Reported(routineName, Outcome::Failed, [&run] { return run.Run(); });

    const QString failed = QStringLiteral("Export failed, maybe an invalid SQL query was passed.");
    switch (outcome) {
    case Outcome::Done:
        TellOfExport(u"Export complete:\n" % QString::number(run.Written()) % u" Records where exported.");
        break;
    case Outcome::NoRecords:
        TellOfExport(QStringLiteral("No Records found in database."));
        break;
    case Outcome::Cancelled:
        TellOfExport(QStringLiteral("Export cancelled, nothing was written."));
        break;
    case Outcome::FileFailed:
        SetCurrentError({0, Title(), UnableToWrite(run.File()), QString()});
        HandleError(QString::fromLatin1(routineName), 0);
        TellOfExport(failed % u"\n\n" % UnableToWrite(run.File()));
        break;
    case Outcome::Failed:
        TellOfExport(failed);
        break;
    case Outcome::NoFields:
        break;
    }
    return outcome == Outcome::Done;
}
