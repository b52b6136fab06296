#include "exchange/CsvCheck.h"

#include "core/Progress.h"
#include "database/MiscODBC.h"
#include "exchange/CsvBoxes.h"
#include "exchange/CsvFields.h"
#include "exchange/ImportForecast.h"
#include "exchange/ImportSource.h"
#include "exchange/SaveFile.h"

namespace
{
void AddFaulty(ImportCheck &check, const ImportSource &source, const std::vector<ImportFault> &faults)
{
    ++check.faulty;
    check.faults.insert(check.faults.end(), faults.begin(), faults.end());
    if (source.IsBlank())
        return;
    QStringList texts;
    for (const ImportFault &fault : faults)
        texts.append(fault.Text());
    check.faultyLines.push_back({source.Line().number, texts.join(QStringLiteral("; ")), source.Line().text});
}

void AddTaken(ImportCheck &check, const ImportSource &source, ImportForecast::Kind kind)
{
    using Kind = ImportForecast::Kind;
    ++(kind == Kind::Fresh ? check.fresh : kind == Kind::Changed ? check.changed : check.same);
    const std::vector<ImportFault> losses = Losses(source);
    check.lost += static_cast<int>(losses.size());
    check.faults.insert(check.faults.end(), losses.begin(), losses.end());
}

void CheckLine(ImportCheck &check, const ImportSource &source, ImportForecast &forecast)
{
    ++check.lines;
    std::vector<ImportFault> faults = Objections(source);
    if (!source.Line().unclosedQuote) {
        const std::vector<ImportFault> missing = Missing(source);
        faults.insert(faults.end(), missing.begin(), missing.end());
    }
    if (faults.empty())
        AddTaken(check, source, forecast.Take(source));
    else
        AddFaulty(check, source, faults);
}
} // namespace

std::optional<ImportCheck> Check_CSV_File(const QString &fileName, const ListModel &fields,
                                          const QString &sql, const QString &keyColumn, const QString &table,
                                          Progress &progress)
{
    using Opened = ImportSource::Opened;
    constexpr const char *name = "Check_CSV_File";
    ImportCheck check;
    ImportSource source;
    ImportForecast forecast(keyColumn, table);
    Opened opened = Opened::RefusedQuery;
    const bool ran = Reported(name, false, [&] {
        opened = source.Open(name, fileName, fields, sql, table);
        if (opened != Opened::Yes)
            return false;
        progress.Begin(source.Lines());
        while (!progress.IsCancelled() && source.Next()) {
            CheckLine(check, source, forecast);
            progress.SetValue(check.lines);
        }
        return true;
    });
    if (!ran) {
        if (opened != Opened::Told)
            TellOfImport(QStringLiteral("The file was not checked, maybe an invalid SQL query was passed."));
        return std::nullopt;
    }
    check.stopped = check.lines < source.Lines();
    check.header = source.Header();
    check.file = source.Stamp();
    return check;
}

bool SaveFaultyLines(const QString &fileName, const ImportCheck &check)
{
    QSaveFile file(fileName);
    const auto write = [&file](const QString &line) { return file.write(line.toUtf8()) > 0; };
    bool isWritten =
        file.open(QIODevice::WriteOnly) && write(u"\uFEFF\"Line\",\"Fault\"," % check.header % u"\r\n");
    for (size_t at = 0; isWritten && at < check.faultyLines.size(); ++at) {
        const ImportCheck::FaultyLine &line = check.faultyLines[at];
        isWritten = write(QString::number(line.number) % u',' % CsvQuoteField(line.fault) % u',' % line.text %
                          u"\r\n");
    }
    if (isWritten && file.commit())
        return true;
    return TellOfImport(UnableToWrite(file));
}
