#include "exchange/import/ImportColumn.h"

#include "controls/ListModel.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "exchange/csv/TableFixODBC.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

/// A column whose text names a row of another table.
struct ImportColumn::Lookup {
    QString into;   ///< the table that is imported
    QString column; ///< as in the data set's query
    QString target; ///< the column that takes the key
    QString table;
    QString name;
    QString key;
    QString extra;
};

namespace
{
/// The number that `count` digits spell; -1 if one of them is not a digit.
int Digits(QStringView text, qsizetype at, qsizetype count)
{
    int number = 0;
    for (const QChar c : text.mid(at, count)) {
        if (c < u'0' || c > u'9')
            return -1;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number;
}

QDate DateOf(int year, int month, int day)
{
    return year > 0 && month > 0 && day > 0 ? QDate(year, month, day) : QDate();
}
} // namespace

QDate ImportedDate(QStringView text)
{
    if (text.size() != 10)
        return {};
    if (text[2] == u'/' && text[5] == u'/')
        return DateOf(Digits(text, 6, 4), Digits(text, 3, 2), Digits(text, 0, 2));
    if (text[4] == u'-' && text[7] == u'-')
        return DateOf(Digits(text, 0, 4), Digits(text, 5, 2), Digits(text, 8, 2));
    return {};
}

QString CutSafeText(const QString &text, int size)
{
    QString safe = SqlSafeText(text);
    if (size <= 0 || safe.size() <= size)
        return safe;
    safe.truncate(size);
    if (safe.back().isHighSurrogate())
        safe.chop(1);
    qsizetype apostrophes = 0;
    while (apostrophes < safe.size() && safe.at(safe.size() - 1 - apostrophes) == u'\'')
        ++apostrophes;
    if (apostrophes % 2 == 1)
        safe.chop(1);
    return safe;
}

const ImportColumn::Lookup *ImportColumn::LookupOf(const QString &table, const QString &column)
{
    static const std::array<Lookup, 9> lookups{{
        {"CONTACTS", "TITLE", "Cust_Designation", "Designation", "Title", "Designation_ID", ""},
        {"CONTACTS", "CITY", "Cust_City", "City", "City", "City_ID", ""},
        {"CONTACTS", "COUNTY", "Cust_County", "County", "County", "County_ID", ""},
        {"CONTACTS", "COUNTRY", "Cust_Country", "Country", "Country", "Country_ID", ""},
        {"CONTACTS", "TYPE", "Cust_Ethnicgroup", "EthnicGroup", "Type", "Ethnic_ID", ""},
        {"CONTACTS", "ORGANNAME", "OrganRef", "Organisations", "OrganName", "OrganRef", " "},
        {"ORGANISATIONS", "CITY5", "City", "City", "City", "City_ID", ""},
        {"ORGANISATIONS", "COUNTY5", "County", "County", "County", "County_ID", ""},
        {"ORGANISATIONS", "COUNTRY5", "Country", "Country", "Country", "Country_ID", ""},
    }};
    const auto found = std::find_if(lookups.begin(), lookups.end(), [&](const Lookup &lookup) {
        return table == lookup.into && column == lookup.column;
    });
    return found == lookups.end() ? nullptr : &*found;
}

ImportColumn::Kind ImportColumn::KindOf(ColumnType type)
{
    switch (type) {
    case ColumnType::SmallInt:
    case ColumnType::Integer:
        return Kind::Whole;
    case ColumnType::Double:
        return Kind::Number;
    default:
        return Kind::Text;
    }
}

/// The largest number that the column takes.
double ImportColumn::LargestOf(ColumnType type)
{
    switch (type) {
    case ColumnType::SmallInt:
        return std::numeric_limits<qint16>::max();
    case ColumnType::Integer:
        return std::numeric_limits<qint32>::max();
    default:
        return std::numeric_limits<double>::max();
    }
}

ImportColumn::ImportColumn(const QString &field, const RecordsetColumn &about, const QString &table,
                           int position, Role role)
    : m_lookup(LookupOf(table.toUpper(), field.toUpper()))
    , m_target(m_lookup ? m_lookup->target : field)
    , m_assignment(m_target % u" = ")
    , m_kind(m_lookup ? Kind::Lookup : KindOf(about.type))
    , m_largest(LargestOf(about.type))
    , m_size(about.definedSize)
    , m_position(position)
    , m_role(role)
{
    const QString column = field.toUpper();
    if (table.toUpper() != QLatin1String("CONTACTS"))
        return;
    if (column == QLatin1String("CUST_SEX"))
        m_kind = Kind::Sex;
    else if (column == QLatin1String("CUST_DOB"))
        m_kind = Kind::Date;
}

QString ImportColumn::Objection(const QString &text) const
{
    if (m_kind == Kind::Date && !text.isEmpty() && !ImportedDate(text).isValid())
        return QStringLiteral("is not a date (DD/MM/YYYY or YYYY-MM-DD)");
    if ((m_kind == Kind::Whole || m_kind == Kind::Number) && ParseNumber(text) > m_largest)
        return QStringLiteral("is too large a number");
    return {};
}

bool ImportColumn::Cuts(const QString &text) const
{
    if (m_size <= 0 || (m_kind != Kind::Text && m_kind != Kind::Lookup))
        return false;
    if (text.size() * 2 <= m_size)
        return false;
    return m_kind == Kind::Lookup ? text.size() > m_size : SqlSafeText(text).size() > m_size;
}

QString ImportColumn::Value(const QString &text) const
{
    switch (m_kind) {
    case Kind::Whole:
        return SqlNumber(std::trunc(ParseNumber(text)));
    case Kind::Number:
        return SqlNumber(ParseNumber(text));
    case Kind::Sex: {
        const QString first = text.left(1).toUpper();
        return SqlNumber(first == u"M" ? 2 : first == u"F" ? 1 : 0);
    }
    case Kind::Date:
        return SqlNumber(DateToInt(ImportedDate(text)));
    case Kind::Lookup: {
        const int key =
            Table_Fix(LookedUp(text), m_lookup->table, m_lookup->name, m_lookup->key, m_lookup->extra);
        return key < 0 ? QString() : SqlNumber(key);
    }
    case Kind::Text:
        break;
    }
    return u'\'' % CutSafeText(text, m_size) % u'\'';
}

QString ImportColumn::KnownValue(const QString &text) const
{
    if (m_kind != Kind::Lookup)
        return Value(text);
    const int key = Table_Find(LookedUp(text), m_lookup->table, m_lookup->name, m_lookup->key);
    return key == 0 ? QString() : SqlNumber(key);
}

std::vector<ImportColumn> ImportColumns(const ListModel &fields, const Recordset &query, const QString &table)
{
    using Role = ImportColumn::Role;
    const QString reference = QStringLiteral("ReferenceID");
    std::vector<ImportColumn> columns;
    bool hasReference = false;
    for (const int row : fields.CheckedRows()) {
        const QString &key = fields.At(row).key;
        const qsizetype hyphen = key.indexOf(u'-');
        const QString field = hyphen < 0 ? QString() : key.mid(hyphen + 1);
        const int column = query.ColumnIndex(field);
        if (column < 0)
            continue;
        const bool isReference = field.compare(reference, Qt::CaseInsensitive) == 0;
        const Role role = key.startsWith(u'*') ? Role::Required : isReference ? Role::Reference : Role::Plain;
        hasReference = hasReference || isReference;
        columns.emplace_back(field, query.Column(column), table, KeyNumber(key), role);
    }
    const int column = query.ColumnIndex(reference);
    if (!hasReference && column >= 0)
        columns.emplace_back(reference, query.Column(column), table, 0, Role::Reference);
    return columns;
}
