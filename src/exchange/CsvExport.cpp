#include "exchange/CsvExport.h"

#include "controls/ListModel.h"
#include "core/ErrorHandler.h"
#include "core/Progress.h"
#include "database/DecodeDateFunc.h"
#include "database/MiscODBC.h"
#include "exchange/CsvFields.h"
#include "exchange/ReportQuery.h"
#include "platform/Dialogs.h"

#include <QSaveFile>

#include <vector>

namespace
{
enum class Outcome { Done, NoRecords, NoFields, Cancelled, FileFailed, Failed };

void Tell(const QString &text)
{
    Dialogs::MsgBox(text, QStringLiteral("CSV Export"), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
}

QString SexName(qint64 sex)
{
    if (sex == 0)
        return QStringLiteral("\"Not Specified\"");
    return sex == 1 ? QStringLiteral("\"Female\"") : QStringLiteral("\"Male\"");
}

QString ExportedValue(const Recordset::Row &row, int column, const RecordsetColumn &about)
{
    const QString name = about.name.toUpper();
    const bool isNull = row.IsNull(column);
    const QString noText = QStringLiteral("\"\"");
    if (name == QLatin1String("CUST_SEX"))
        return SexName(row.Long(column));
    if (name == QLatin1String("CUST_DOB"))
        return isNull ? noText : CsvQuoteField(IntToDateText(static_cast<int>(row.Long(column))));
    switch (about.type) {
    case ColumnType::VarWChar:
    case ColumnType::VarChar:
    case ColumnType::Char:
        return isNull ? noText : CsvQuoteField(row.Text(column));
    default:
        return isNull ? QStringLiteral("0") : row.Text(column);
    }
}

struct ExportedFields {
    std::vector<int> columns;
    QString header;
};

ExportedFields FieldsToExport(const ListModel &fields, const Recordset &rows)
{
    ExportedFields found;
    for (const int row : fields.CheckedRows()) {
        const int column = rows.ColumnIndex(fields.At(row).key);
        if (column < 0)
            continue;
        found.columns.push_back(column);
        found.header += u',' % CsvQuoteField(fields.At(row).text);
    }
    return found;
}

Outcome WriteRows(QSaveFile &file, const Recordset &rows, const ExportedFields &fields, Progress &progress)
{
    const auto write = [&file](const QString &line) {
        const QByteArray bytes = line.mid(1).toUtf8() + "\r\n";
        return file.write(bytes) == bytes.size();
    };
    if (!file.open(QIODevice::WriteOnly) || file.write("\xEF\xBB\xBF") != 3 || !write(fields.header))
        return Outcome::FileFailed;
    int done = 0;
    for (const Recordset::Row row : rows) {
        QString line;
        for (const int column : fields.columns)
            line += u',' % ExportedValue(row, column, rows.Column(column));
        if (!write(line))
            return Outcome::FileFailed;
        progress.SetValue(++done);
        if (progress.IsCancelled())
            return Outcome::Cancelled;
    }
    return file.flush() && file.commit() ? Outcome::Done : Outcome::FileFailed;
}
} // namespace

void Export_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql, Progress &progress)
{
    QSaveFile file(fileName);
    file.setDirectWriteFallback(true);
    int count = 0;
    const Outcome outcome = Reported("Export_CSV_File", Outcome::Failed, [&] {
        progress.Begin(0);
        const std::optional<Recordset> rows = OpenReportQuery(sql);
        if (!rows || rows->IsEmpty())
            return Outcome::NoRecords;
        count = rows->RowCount();
        progress.Begin(count);
        const ExportedFields exported = FieldsToExport(fields, *rows);
        return exported.columns.empty() ? Outcome::NoFields : WriteRows(file, *rows, exported, progress);
    });

    const QString failed = QStringLiteral("Export failed, maybe an invalid SQL query was passed.");
    switch (outcome) {
    case Outcome::Done:
        return Tell(u"Export complete:\n" % QString::number(count) % u" Records where exported.");
    case Outcome::NoRecords:
        return Tell(QStringLiteral("No Records found in database."));
    case Outcome::Cancelled:
        return Tell(QStringLiteral("Export cancelled, nothing was written."));
    case Outcome::FileFailed:
        SetCurrentError({0, QStringLiteral("CSV Export"), file.errorString(), QString()});
        HandleError(QStringLiteral("Export_CSV_File"), 0);
        return Tell(failed % u"\n\nUnable to write '" % fileName % u"': " % file.errorString() % u'.');
    case Outcome::Failed:
        return Tell(failed);
    case Outcome::NoFields:
        return;
    }
}
