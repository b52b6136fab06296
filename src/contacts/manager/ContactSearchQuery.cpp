#include "contacts/manager/ContactSearchQuery.h"

#include "database/values/GlobalCode.h"

#include <algorithm>

namespace
{
enum class Kind { List, Text, Gender, Age };

struct SearchedField {
    Kind kind;
    QStringView column;
    QStringView caption;
};

/// By SearchField.
constexpr SearchedField searchedFields[searchFieldCount] = {
    {Kind::List, u"Cust_Designation", u"Title"},
    {Kind::Text, u"Cust_Forename", u"Forename"},
    {Kind::Text, u"Cust_Surname", u"Surname"},
    {Kind::Gender, u"Cust_Sex", u"Gender:"},
    {Kind::Age, u"Cust_DOB", u"Aged Between"},
    {Kind::Text, u"Cust_Addr1", u"Address"},
    {Kind::List, u"Cust_City", u"Town/City"},
    {Kind::List, u"Cust_County", u"State/County"},
    {Kind::List, u"Cust_Country", u"Country"},
    {Kind::Text, u"Cust_Postcode", u"ZIP/Postcode"},
    {Kind::List, u"Cust_EthnicGroup", u"Ethnic origin"},
    {Kind::Text, u"Organisations.Addr1", u"Address"},
    {Kind::List, u"Organisations.City", u"Town/City"},
    {Kind::List, u"Organisations.County", u"State/County"},
    {Kind::List, u"Organisations.Country", u" Country"},
    {Kind::Text, u"Organisations.Postcode", u"ZIP/Postcode"},
};

/// Condition and description grow side by side, a criterion at a time.
class Builder final
{
public:
    Builder(const ContactSearchCriteria &criteria, int today)
        : m_criteria(criteria)
        , m_today(today)
        , m_connector(criteria.any ? QStringLiteral(" OR ") : QStringLiteral(" AND "))
    {
    }

    ContactSearchQuery Build();

private:
    void AddField(const SearchedField &field, const SearchCriterion &criterion);
    void AddAge(const SearchedField &field, const SearchCriterion &criterion);
    void Add(const QString &condition, QStringView caption, QStringView op, const QString &value);
    void AddTicks(const std::vector<SearchTick> &ticks, QStringView column, QStringView caption,
                  SearchTickList &must, SearchTickList &mustNot);

    const ContactSearchCriteria &m_criteria;
    int m_today;
    QString m_connector;
    QString m_where;
    ContactSearchQuery m_query;
};

/// The boxes take three digits; the data function takes any text.
int Age(const QString &text)
{
    constexpr double oldest = 999;
    return static_cast<int>(std::min(ParseNumber(text), oldest));
}

QString Quoted(const QString &text)
{
    return u'"' % text % u'"';
}

void Builder::Add(const QString &condition, QStringView caption, QStringView op, const QString &value)
{
    m_where += condition % m_connector;
    m_query.description += caption % u' ' % op % u' ' % value % u'\n';
}

/// Ages are counted on the number that a date is kept as, so that a birthday counts from its day on.
void Builder::AddAge(const SearchedField &field, const SearchCriterion &criterion)
{
    const int from = Age(criterion.text);
    const int to = Age(m_criteria.ageTo);
    if (to <= 0)
        return;
    const QString youngest = SqlNumber(m_today - from * 10000);
    const QString oldest = SqlNumber(m_today - to * 10000);
    const QStringView atYoungest = criterion.isNot ? u">= " : u"<= ";
    const QStringView between = criterion.isNot ? u"OR" : u"AND";
    const QStringView atOldest = criterion.isNot ? u"<= " : u">= ";
    Add(u" ((" % field.column % u' ' % atYoungest % youngest % u") " % between % u" (" % field.column % u' ' %
            atOldest % oldest % u"))",
        field.caption, criterion.isNot ? u"<>" : u"=", criterion.text % u" - " % m_criteria.ageTo);
}

void Builder::AddField(const SearchedField &field, const SearchCriterion &criterion)
{
    const QStringView op = criterion.isNot ? u"<>" : u"=";
    switch (field.kind) {
    case Kind::List:
        if (criterion.key >= 0 && !criterion.text.isEmpty())
            Add(u' ' % field.column % u' ' % op % u' ' % SqlNumber(criterion.key), field.caption, op,
                Quoted(criterion.text));
        break;
    case Kind::Text:
        if (!criterion.text.isEmpty())
            Add(u' ' % field.column % u' ' % QStringView(criterion.isNot ? u"NOT" : u"") % u" LIKE '" %
                    criterion.text % u"%'",
                field.caption, op, Quoted(criterion.text));
        break;
    case Kind::Gender:
        if (criterion.key > -1)
            Add(u' ' % field.column % u" = " % SqlNumber(criterion.key), field.caption, u"=",
                Quoted(criterion.text));
        break;
    case Kind::Age:
        AddAge(field, criterion);
        break;
    }
}

void Builder::AddTicks(const std::vector<SearchTick> &ticks, QStringView column, QStringView caption,
                       SearchTickList &must, SearchTickList &mustNot)
{
    for (const SearchTick &tick : ticks) {
        SearchTickList &list = tick.isNot ? mustNot : must;
        ++list.count;
        list.condition += column % u" = " % SqlNumber(tick.key) % u" OR ";
        if (!m_criteria.any)
            m_query.description += m_connector;
        m_query.description +=
            caption % u' ' % QStringView(tick.isNot ? u"<>" : u"=") % u' ' % tick.text % u'\n';
    }
    must.condition.chop(3);
    mustNot.condition.chop(3);
}

ContactSearchQuery Builder::Build()
{
    for (size_t field = 0; field < searchFieldCount; ++field)
        AddField(searchedFields[field], m_criteria.fields[field]);
    AddTicks(m_criteria.characteristics, u"ConcessionRef", u"Characteristic", m_query.characteristics,
             m_query.notCharacteristics);
    AddTicks(m_criteria.attributes, u"AttributeValueRef", u"Attribute", m_query.attributes,
             m_query.notAttributes);

    m_query.sql = QStringLiteral(
        "SELECT Contacts.*, Organisations.Addr1 AS OrgAddr1, Organisations.City AS OrgCity, "
        "Organisations.County AS OrgCounty, Organisations.Country AS OrgCountry, Organisations.Postcode AS "
        "OrgPostcode, City.City AS City FROM (Contacts INNER JOIN Organisations ON Contacts.OrganRef = "
        "Organisations.OrganRef) INNER JOIN City ON Contacts.Cust_City = City.City_ID");
    // Four characters are an OR whole and an AND but for a blank, which does no harm.
    if (!m_where.isEmpty())
        m_query.sql += u" WHERE " % m_where.chopped(4);
    m_query.sql += u" ORDER BY Contacts.Cust_Surname;";

    QString &description = m_query.description;
    if (description.isEmpty())
        description = QStringLiteral("Nothing selected, All records shown\n");
    else
        description = u"Searching on the following fields:\n\n" % description %
                      QStringView(m_where.isEmpty() ? u"" : u"\n\n");
    return std::move(m_query);
}
} // namespace

QString TypedApostrophe(const ContactSearchCriteria &criteria)
{
    for (size_t field = 0; field < searchFieldCount; ++field) {
        const SearchedField &searched = searchedFields[field];
        const bool isAge = searched.kind == Kind::Age;
        const QString &text = criteria.fields[field].text;
        for (const QString &typed : {text, isAge ? criteria.ageTo : QString()}) {
            if ((isAge || searched.kind == Kind::Text) && typed.contains(u'\''))
                return searched.caption % u' ' % Quoted(typed);
        }
    }
    return {};
}

ContactSearchQuery ContactSearch_Build(const ContactSearchCriteria &criteria, int today)
{
    return Builder(criteria, today).Build();
}
