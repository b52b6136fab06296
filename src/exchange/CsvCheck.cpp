#include "exchange/CsvCheck.h"

#include "controls/ListModel.h"
#include "core/Progress.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"
#include "exchange/CsvFields.h"
#include "exchange/ImportLine.h"
#include "exchange/ImportSource.h"
#include "platform/Dialogs.h"

#include <QSaveFile>

#include <unordered_map>

namespace
{
using Role = ImportColumn::Role;

void Tell(const QString &text)
{
    Dialogs::MsgBox(text, QStringLiteral("CSV Import"), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
}

class CheckRun final
{
public:
    CheckRun(const ImportSource &source, const QString &keyColumn, const QString &table)
        : m_source(source)
        , m_keyColumn(keyColumn)
        , m_table(table)
    {
    }

    void TakeLine();
    ImportCheck &Result() { return m_result; }

private:
    bool IsFaulty();
    void TakeCuts();
    void AddFault(const ImportColumn &column, const QString &why);
    void Classify();

    const ImportSource &m_source;
    QString m_keyColumn;
    QString m_table;
    ImportCheck m_result;
    /// What the lines before have brought in or changed: the identity of the record and all of it, as hashes.
    std::unordered_map<size_t, size_t> m_broughtIn;
};

void CheckRun::AddFault(const ImportColumn &column, const QString &why)
{
    m_result.faults.push_back(
        {m_source.Line().number, m_source.FieldName(column), m_source.Text(column), why});
}

bool CheckRun::IsFaulty()
{
    if (m_source.Line().unclosedQuote) {
        m_result.faults.push_back(
            {m_source.Line().number, {}, {}, QStringLiteral("opens a quotation mark and does not close it")});
        return true;
    }
    const size_t before = m_result.faults.size();
    for (const ImportColumn &column : m_source.Columns()) {
        const QString text = m_source.Text(column);
        if (column.ColumnRole() == Role::Required && text.isEmpty())
            AddFault(column, QStringLiteral("is required"));
        else if (const QString objection = column.Objection(text); !objection.isEmpty())
            AddFault(column, objection);
    }
    return m_result.faults.size() > before;
}

void CheckRun::TakeCuts()
{
    for (const ImportColumn &column : m_source.Columns()) {
        const QString text = m_source.Text(column);
        if (!column.Cuts(text))
            continue;
        ++m_result.cut;
        AddFault(column, u"has " % FormatNumber(static_cast<double>(text.size()), 0) %
                             u" characters, of which " % FormatNumber(column.Size(), 0) % u" fit");
    }
}

/// Compares as the database does: without regard to case, references by what they stand for.
void CheckRun::Classify()
{
    LineValues values;
    QString all;
    QString identity;
    bool allKnown = true;
    bool identityKnown = true;
    for (const ImportColumn &column : m_source.Columns()) {
        const QString text = m_source.Text(column);
        const QString value = column.KnownValue(text);
        const bool isKnown = !value.isEmpty();
        const QString compared = (isKnown ? value : u"new " % text).toLower() % u'\x1F';
        all += compared;
        allKnown = allKnown && isKnown;
        if (column.ColumnRole() != Role::Plain) {
            identity += compared;
            identityKnown = identityKnown && isKnown;
        }
        values.Add(column, value);
    }
    const size_t whole = qHash(all);
    const size_t record = identity.isEmpty() ? whole : qHash(identity);
    const auto before = m_broughtIn.find(record);
    if (before != m_broughtIn.end()) {
        ++(before->second == whole ? m_result.same : m_result.changed);
        before->second = whole;
        return;
    }
    const auto isThere = [this](const QString &test) {
        return HasRow(SelectKey(m_keyColumn, m_table, test));
    };
    if (allKnown && isThere(values.FullTest())) {
        ++m_result.same;
        return;
    }
    const bool changes = !identity.isEmpty() && identityKnown && isThere(values.IdentityTest());
    ++(changes ? m_result.changed : m_result.fresh);
    m_broughtIn.emplace(record, whole);
}

void CheckRun::TakeLine()
{
    ++m_result.lines;
    if (IsFaulty()) {
        ++m_result.faulty;
        return;
    }
    TakeCuts();
    Classify();
}
} // namespace

std::optional<ImportCheck> Check_CSV_File(const QString &fileName, const ListModel &fields,
                                          const QString &sql, const QString &keyColumn, const QString &table,
                                          Progress &progress)
{
    using Opened = ImportSource::Opened;
    constexpr const char *name = "Check_CSV_File";
    ImportSource source;
    CheckRun run(source, keyColumn, table);
    Opened opened = Opened::RefusedQuery;
    const bool ran = Reported(name, false, [&] {
        opened = source.Open(name, fileName, fields, sql, table);
        if (opened != Opened::Yes)
            return false;
        progress.Begin(source.Lines());
        for (int done = 1; !progress.IsCancelled() && source.Next(); ++done) {
            run.TakeLine();
            progress.SetValue(done);
        }
        return true;
    });
    if (!ran) {
        if (opened != Opened::Told)
            Tell(QStringLiteral("The file was not checked, maybe an invalid SQL query was passed."));
        return std::nullopt;
    }
    run.Result().stopped = run.Result().lines < source.Lines();
    return std::move(run.Result());
}

bool SaveImportFaults(const QString &fileName, const std::vector<ImportFault> &faults)
{
    QSaveFile file(fileName);
    bool isWritten = file.open(QIODevice::WriteOnly) &&
                     file.write("\xEF\xBB\xBF\"Line\",\"Column\",\"Value\",\"Fault\"\r\n") > 0;
    for (size_t at = 0; isWritten && at < faults.size(); ++at) {
        const ImportFault &fault = faults[at];
        const QString line = QString::number(fault.line) % u',' % CsvQuoteField(fault.field) % u',' %
                             CsvQuoteField(fault.value) % u',' % CsvQuoteField(fault.why) % u"\r\n";
        isWritten = file.write(line.toUtf8()) > 0;
    }
    if (isWritten && file.commit())
        return true;
    Tell(u"Unable to write '" % fileName % u"': " % file.errorString() % u'.');
    return false;
}
