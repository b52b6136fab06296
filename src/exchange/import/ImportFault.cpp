#include "exchange/import/ImportFault.h"

#include "database/values/GlobalCode.h"
#include "exchange/import/ImportSource.h"

namespace
{
ImportFault OfLine(const ImportSource &source, const QString &value, const QString &why)
{
    return {source.Line().number, {}, value, why};
}

ImportFault OfValue(const ImportSource &source, const ImportColumn &column, const QString &why)
{
    return {source.Line().number, source.FieldName(column), source.Text(column), why};
}
} // namespace

QString ImportFault::Text(int shown) const
{
    const QString start = value.size() > shown ? value.left(shown) % u"..." : value;
    const QString place = field.isEmpty() ? QString() : u"field '" % field % u"': ";
    const bool hasValue = !value.isEmpty() || !field.isEmpty();
    return place % (hasValue ? u'\'' % FlattenLines(start) % u"' " : QString()) % why;
}

QString ImportFault::Sentence(int shown) const
{
    return u"Line " % QString::number(line) % QLatin1String(field.isEmpty() ? ": " : ", ") % Text(shown) %
           u'.';
}

std::vector<ImportFault> Objections(const ImportSource &source)
{
    if (source.Line().unclosedQuote)
        return {
            OfLine(source, source.Line().text, QStringLiteral("has a quotation mark that is not closed"))};
    std::vector<ImportFault> faults;
    for (const ImportColumn &column : source.Columns()) {
        const QString objection = column.Objection(source.Text(column));
        if (!objection.isEmpty())
            faults.push_back(OfValue(source, column, objection));
    }
    return faults;
}

std::vector<ImportFault> Missing(const ImportSource &source)
{
    if (source.IsBlank())
        return {OfLine(source, {}, QStringLiteral("is empty"))};
    std::vector<ImportFault> faults;
    for (const ImportColumn &column : source.Columns()) {
        if (column.ColumnRole() == ImportColumn::Role::Required && source.Text(column).isEmpty())
            faults.push_back(OfValue(source, column, QStringLiteral("is required")));
    }
    return faults;
}

std::vector<ImportFault> Losses(const ImportSource &source)
{
    std::vector<ImportFault> faults;
    for (const ImportColumn &column : source.Columns()) {
        const QString text = source.Text(column);
        if (column.Cuts(text))
            faults.push_back(OfValue(source, column,
                                     u"has " % FormatNumber(static_cast<double>(text.size()), 0) %
                                         u" characters, of which " % FormatNumber(column.Size(), 0) %
                                         u" fit"));
        if (source.HasNul(column))
            faults.push_back(
                OfValue(source, column, QStringLiteral("contains NUL characters, which are left out")));
    }
    if (source.Line().isOdd)
        faults.push_back(OfLine(source, {},
                                u"is not in " % source.EncodingName() %
                                    u" like most of the file; please check its accents"));
    const QString rest = source.TextAfterHeader();
    if (!rest.isEmpty())
        faults.push_back(
            OfLine(source, rest, QStringLiteral("comes after the last field that the header names")));
    return faults;
}
