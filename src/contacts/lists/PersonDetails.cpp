#include "contacts/lists/PersonDetails.h"

#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"

#include <array>

namespace
{
struct DetailInfo {
    PersonDetail detail;
    QString title;
    QString columns;
};

const std::array<DetailInfo, 4> &Details()
{
    static const std::array<DetailInfo, 4> details{{
        {PersonDetail::Telephone, "Telephone", ", Cust_TelDay, Cust_TelEve"},
        {PersonDetail::Town, "Town/City", ", Cust_City"},
        {PersonDetail::Email, "E-mail", ", Cust_Email"},
        {PersonDetail::Organisation, "Organisation", ", OrganRef"},
    }};
    return details;
}

const DetailInfo &InfoOf(PersonDetail detail)
{
    return Details()[static_cast<size_t>(detail)];
}

QHash<int, QString> Names(const QString &sql)
{
    QHash<int, QString> names;
    for (const Recordset::Row row : OpenRecordset(sql))
        names.insert(static_cast<int>(row.Long(0)), row.Text(1));
    return names;
}
} // namespace

const QList<PersonDetail> &AllPersonDetails()
{
    static const QList<PersonDetail> all{PersonDetail::Telephone, PersonDetail::Town, PersonDetail::Email,
                                         PersonDetail::Organisation};
    return all;
}

QString PersonDetailTitle(PersonDetail detail)
{
    return InfoOf(detail).title;
}

PersonDetails::PersonDetails(const QList<PersonDetail> &details)
    : m_details(details)
{
    for (const PersonDetail detail : details)
        m_columns += InfoOf(detail).columns;
    if (details.contains(PersonDetail::Town))
        m_towns = Names(QStringLiteral("SELECT City_ID, City FROM City"));
    if (details.contains(PersonDetail::Organisation))
        m_organisations = Names(QStringLiteral("SELECT OrganRef, OrganName FROM Organisations"));
}

QStringList PersonDetails::Of(const Recordset::Row &row, int first) const
{
    QStringList texts;
    if (m_details.isEmpty())
        return texts;
    texts.reserve(m_details.size());
    int column = first;
    for (const PersonDetail detail : m_details) {
        const int at = column++;
        switch (detail) {
        case PersonDetail::Telephone:
            texts.append(row.HasText(at) ? row.Text(at) : row.Text(column));
            ++column;
            break;
        case PersonDetail::Town:
            texts.append(m_towns.value(static_cast<int>(row.Long(at))));
            break;
        case PersonDetail::Email:
            texts.append(row.Text(at));
            break;
        case PersonDetail::Organisation:
            texts.append(m_organisations.value(static_cast<int>(row.Long(at))));
            break;
        }
    }
    return texts;
}
