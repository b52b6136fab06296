#include "exchange/import/CsvCheck.h"

#include "core/files/SaveFile.h"
#include "core/session/Progress.h"
#include "database/statements/MiscODBC.h"
#include "exchange/csv/CsvBoxes.h"
#include "exchange/csv/CsvFields.h"
#include "exchange/import/ImportForecast.h"
#include "exchange/import/ImportSource.h"

namespace
{
constexpr qsizetype keptOfValue = 1000;

std::vector<ImportFault> FaultsOf(const ImportSource &source)
{
    std::vector<ImportFault> faults = Objections(source);
    if (!source.Line().unclosedQuote) {
        const std::vector<ImportFault> missing = Missing(source);
        faults.insert(faults.end(), missing.begin(), missing.end());
    }
    return faults;
}

void Note(ImportCheck &check, const std::vector<ImportFault> &faults)
{
    check.faultCount += static_cast<qint64>(faults.size());
    for (const ImportFault &fault : faults) {
        if (check.faults.size() == mostFaultsKept)
            return;
        check.faults.push_back(fault);
        check.faults.back().value.truncate(keptOfValue);
    }
}

void AddTaken(ImportCheck &check, const ImportSource &source, ImportForecast::Kind kind)
{
    using Kind = ImportForecast::Kind;
    ++(kind == Kind::Fresh ? check.fresh : kind == Kind::Changed ? check.changed : check.same);
    const std::vector<ImportFault> losses = Losses(source);
    check.lost += static_cast<int>(losses.size());
    Note(check, losses);
}

void CheckLine(ImportCheck &check, const ImportSource &source, ImportForecast &forecast)
{
    ++check.lines;
    const std::vector<ImportFault> faults = FaultsOf(source);
    if (faults.empty())
        return AddTaken(check, source, forecast.Take(source));
    ++check.faulty;
    check.mendable += source.IsBlank() ? 0 : 1;
    Note(check, faults);
}

/// Number, fault and text of the current line of `source`, as a line of a file; "" if there is nothing to
/// correct.
QString LineToMend(const ImportSource &source)
{
    const std::vector<ImportFault> faults = source.IsBlank() ? std::vector<ImportFault>() : FaultsOf(source);
    QStringList texts;
    for (const ImportFault &fault : faults)
        texts.append(fault.Text());
    if (texts.isEmpty())
        return {};
    return QString::number(source.Line().number) % u',' % CsvQuoteField(texts.join(QStringLiteral("; "))) %
           u',' % source.Line().text % u"\r\n";
}

/// False if the file cannot be written.
bool WriteFaultyLines(QSaveFile &file, ImportSource &source, Progress &progress)
{
    const auto write = [&file](const QString &text) {
        return text.isEmpty() || file.write(text.toUtf8()) > 0;
    };
    progress.Begin(source.Lines());
    bool isWritten = write(u"\uFEFF\"Line\",\"Fault\"," % source.Header() % u"\r\n");
    for (int line = 1; isWritten && !progress.IsCancelled() && source.Next(); ++line) {
        isWritten = write(LineToMend(source));
        progress.SetValue(line);
    }
    return isWritten;
}

/// What to say after a failure of the database, which has been reported.
QString NotChecked(const ImportSource &source, bool isOpen, const QString &fileName, const QString &table)
{
    if (!isOpen)
        return u'\'' % fileName %
               u"' was not checked, and nothing was changed: the query that csvmap.dat has for the table " %
               table % u" failed.";
    return u"Line " % QString::number(source.Line().number) % u" of '" % fileName %
           u"' could not be compared with the database, and the check stopped there. Nothing was changed. "
           u"Please check the file again.";
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
            TellOfImport(NotChecked(source, opened == Opened::Yes, fileName, table));
        return std::nullopt;
    }
    check.stopped = check.lines < source.Lines();
    check.file = source.Stamp();
    return check;
}

bool SaveFaultyLines(const QString &target, const QString &fileName, const FileStamp &checked,
                     const ListModel &fields, const QString &sql, const QString &table, Progress &progress)
{
    constexpr const char *name = "SaveFaultyLines";
    ImportSource source;
    QSaveFile file(target);
    return Reported(name, false, [&] {
        if (source.Open(name, fileName, fields, sql, table) != ImportSource::Opened::Yes)
            return false;
        if (source.Stamp() != checked)
            return TellOfImport(u'\'' % fileName %
                                u"' has changed since it was checked. Please check it again.");
        if (!file.open(QIODevice::WriteOnly) || !WriteFaultyLines(file, source, progress))
            return TellOfImport(UnableToWrite(file));
        if (progress.IsCancelled())
            return false;
        return file.commit() || TellOfImport(UnableToWrite(file));
    });
}
