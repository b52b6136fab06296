#include "exchange/csv/CsvHeaders.h"

#include "controls/ListModel.h"
#include "exchange/csv/CsvBoxes.h"
#include "exchange/csv/CsvFields.h"
#include "exchange/csv/CsvReader.h"

#include <QFileInfo>

namespace
{
QString UnableToOpen(const QString &fileName, const QString &why)
{
    const QString text = u"Unable to open '" % fileName % u"'.";
    return QFileInfo::exists(fileName) ? text % u'\n' % why : text;
}
} // namespace

bool CsvReadHeaders(const QString &fileName, ListModel &fields)
{
    CsvReader reader;
    if (!reader.Open(fileName))
        return TellOfImport(UnableToOpen(fileName, reader.Problem()));
    CsvLine line;
    const bool hasLine = reader.Next(line);
    RemoveNul(line.text);
    if (!hasLine || line.text.isEmpty())
        return TellOfImport(QStringLiteral("File contains no data."));
    if (line.unclosedQuote)
        return TellOfImport(u"Line 1 of '" % fileName % u"' has a quotation mark that is not closed.");

    const QString header = line.text % u' ';
    std::vector<ListItem> items;
    int field = 0;
    for (const QString &name : CsvGetFields(header, u',')) {
        ++field;
        if (!name.isEmpty())
            items.push_back({u'?' % QString::number(field), name});
    }
    fields.Fill(std::move(items));
    return !fields.IsEmpty() || TellOfImport(QStringLiteral("No field header names found."));
}
