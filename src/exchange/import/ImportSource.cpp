#include "exchange/import/ImportSource.h"

#include "controls/ListModel.h"
#include "core/files/ErrorHandler.h"
#include "exchange/csv/CsvBoxes.h"
#include "exchange/csv/CsvFields.h"
#include "exchange/csv/ReportQuery.h"

#include <algorithm>

namespace
{
constexpr QChar delimiter = u',';

ImportSource::Opened Say(const QString &text)
{
    TellOfImport(text);
    return ImportSource::Opened::Told;
}
} // namespace

ImportSource::Opened ImportSource::Open(const char *routineName, const QString &fileName,
                                        const ListModel &fields, const QString &sql, const QString &table)
{
    const std::optional<Recordset> query = OpenReportQuery(sql);
    if (!query) {
        SetCurrentError({0, QStringLiteral("CSV Import"),
                         u"The query that csvmap.dat has for the table " % table %
                             u" reads nothing that can be imported.",
                         QString()});
        HandleError(QString::fromLatin1(routineName), 0);
        return Opened::RefusedQuery;
    }
    if (!m_reader.Open(fileName))
        return Say(u"Unable to open '" % fileName % u"'.\n" % m_reader.Problem());
    CsvLine header;
    m_lines = m_reader.Next(header) ? m_reader.CountRest() : 0;
    if (m_lines == 0)
        return Say(QStringLiteral("No Records found to import."));
    RemoveNul(header.text);
    m_header = header.text;
    m_names = CsvGetFields(m_header, delimiter);
    if (HeaderDiffers(fields))
        return Say(u"The fields of '" % fileName %
                   u"' have changed since you chose it. Please choose the file again.");
    m_columns = ImportColumns(fields, *query, table);
    return Opened::Yes;
}

/// Whether the mapping was made for a different header than the file has now.
bool ImportSource::HeaderDiffers(const ListModel &fields) const
{
    for (const int row : fields.CheckedRows()) {
        const ListItem &field = fields.At(row);
        if (field.key.contains(u'-') && m_names.value(KeyNumber(field.key) - 1) != field.text)
            return true;
    }
    return false;
}

bool ImportSource::Next()
{
    if (!m_reader.Next(m_line))
        return false;
    m_texts = CsvGetFields(m_line.text, delimiter);
    m_withNul.clear();
    if (!RemoveNul(m_line.text))
        return true;
    for (qsizetype field = 0; field < m_texts.size(); ++field) {
        if (RemoveNul(m_texts[field]))
            m_withNul.append(field);
    }
    return true;
}

QString ImportSource::TextAfterHeader() const
{
    for (qsizetype field = m_names.size(); field < m_texts.size(); ++field) {
        if (!m_texts.at(field).isEmpty())
            return m_texts.at(field);
    }
    return {};
}

bool ImportSource::IsBlank() const
{
    return std::all_of(m_texts.begin(), m_texts.end(), [](const QString &text) { return text.isEmpty(); });
}
