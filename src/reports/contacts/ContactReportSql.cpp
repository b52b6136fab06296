#include "reports/contacts/ContactReportSql.h"

#include "database/statements/MiscODBC.h"
#include "database/statements/System.h"
#include "database/values/GlobalCode.h"

#include <QSet>

#include <algorithm>

namespace
{
/// What a ticked item adds to the statement: columns, and the join that they come from.
struct Part {
    int flag;
    const char *columns;
    const char *join;
};

constexpr Part personalParts[] = {
    {ContactItem::Gender, ", Contacts.Cust_Sex", ""},
    {ContactItem::DateOfBirth, ", Contacts.Cust_DOB", ""},
    {ContactItem::Address,
     ", Contacts.Cust_Addr1, Contacts.Cust_Addr2, Contacts.Cust_Addr3, Contacts.Cust_Addr4", ""},
    {ContactItem::City, ", City.City", ") INNER JOIN City ON Contacts.Cust_City = City.City_ID"},
    {ContactItem::County, ", County.County",
     ") INNER JOIN County ON Contacts.Cust_County = County.County_ID"},
    {ContactItem::Postcode, ", Contacts.Cust_Postcode", ""},
    {ContactItem::Country, ", Country.Country",
     ") INNER JOIN Country ON Contacts.Cust_Country = Country.Country_ID"},
    {ContactItem::Telephone, ", Contacts.Cust_TelDay, Contacts.Cust_TelEve", ""},
    {ContactItem::Fax, ", Contacts.Cust_Fax", ""},
    {ContactItem::Email, ", Contacts.Cust_Email", ""},
    {ContactItem::Website, ", Contacts.Cust_URL", ""},
};

constexpr const char *organisationJoin =
    ") INNER JOIN Organisations ON Contacts.OrganRef = Organisations.OrganRef";

constexpr Part laterParts[] = {
    {ContactItem::Organisation, ", Organisations.OrganName", ""},
    {ContactItem::OrgAddress,
     ", Organisations.Addr1 AS OrgAddr1, Organisations.Addr2 AS OrgAddr2, Organisations.Addr3 AS OrgAddr3, "
     "Organisations.Addr4 AS OrgAddr4",
     ""},
    {ContactItem::OrgCity, ", City2.City AS OrgCity",
     ") INNER JOIN City As City2 ON Organisations.City = City2.City_ID"},
    {ContactItem::OrgCounty, ", County2.County AS OrgCounty",
     ") INNER JOIN County As County2 ON Organisations.County = County2.County_ID"},
    {ContactItem::OrgPostcode, ", Organisations.Postcode AS OrgPostcode", ""},
    {ContactItem::OrgCountry, ", Country2.Country AS OrgCountry",
     ") INNER JOIN Country As Country2 ON Organisations.Country = Country2.Country_ID"},
    {ContactItem::OrgTelephone, ", Organisations.TelDay AS OrgTel", ""},
    {ContactItem::OrgFax, ", Organisations.Fax AS OrgFax", ""},
    {ContactItem::OrgEmail, ", Organisations.Email AS OrgEmail", ""},
    {ContactItem::OrgWebsite, ", Organisations.URL AS OrgWebsite", ""},
    {ContactItem::OrgTelOut, ", Organisations.TelOut AS OrgOOHTel", ""},
    {ContactItem::OrgReference, ", Organisations.ReferenceID AS OrgRefID", ""},
    {ContactItem::OrgNotes, ", Organisations.Notes AS OrgNotes", ""},
    {ContactItem::Position, ", Contacts.JobTitle", ""},
    {ContactItem::Ethnic, ", EthnicGroup.Type",
     ") INNER JOIN EthnicGroup ON Contacts.Cust_Ethnicgroup = EthnicGroup.Ethnic_ID"},
    {ContactItem::Emergency,
     ", Contacts_1.Cust_Forename AS Contact_Fname, Contacts_1.Cust_Surname AS Contact_Sname, "
     "Contacts_1.Cust_TelDay AS ContactTel",
     ") INNER JOIN Contacts AS Contacts_1 ON Contacts.ContactContactRef = Contacts_1.ContactRef "},
};

constexpr Part orgParts[] = {
    {OrgItem::Reference, ", Organisations.ReferenceID", ""},
    {OrgItem::Address, ", Organisations.Addr1, Organisations.Addr2, Organisations.Addr3, Organisations.Addr4",
     ""},
    {OrgItem::City, ", City.City", ") INNER JOIN City ON Organisations.City = City.City_ID"},
    {OrgItem::County, ", County.County", ") INNER JOIN County ON Organisations.County = County.County_ID"},
    {OrgItem::Postcode, ", Organisations.Postcode", ""},
    {OrgItem::Country, ", Country.Country",
     ") INNER JOIN Country ON Organisations.Country = Country.Country_ID"},
    {OrgItem::Telephone, ", Organisations.TelDay", ""},
    {OrgItem::TelOut, ", Organisations.TelOut", ""},
    {OrgItem::Fax, ", Organisations.Fax", ""},
    {OrgItem::Email, ", Organisations.Email", ""},
    {OrgItem::Website, ", Organisations.URL", ""},
};

/// A growing statement: columns and joins are added at the end, each join with brackets around everything
/// before it.
class Layout final
{
public:
    // NOLINTNEXTLINE(bugprone-easily-swappable-parameters): in the order of the statement.
    Layout(const char *select, const char *from)
        : m_select(QString::fromLatin1(select))
        , m_from(QString::fromLatin1(from))
    {
    }

    void AddColumns(const char *columns) { m_select += QLatin1String(columns); }
    /// Adds columns in front of all others.
    void AddFirst(const char *columns)
    {
        m_select.insert(QStringLiteral("SELECT ").size(), QLatin1String(columns));
    }
    /// Servers accept no brackets around a single table: the first join has a blank instead.
    void AddJoin(const char *join)
    {
        if (*join == '\0')
            return;
        const bool isFirst = !m_from.contains(u" JOIN ");
        m_from = QLatin1Char(isFirst ? ' ' : '(') % m_from % QLatin1String(join + (isFirst ? 1 : 0));
    }
    template <typename Flags, size_t count>
    void AddParts(const Part (&parts)[count], const Flags &flags)
    {
        for (const Part &part : parts) {
            if (flags[static_cast<size_t>(part.flag)] == 0)
                continue;
            AddColumns(part.columns);
            AddJoin(part.join);
        }
    }
    QString Sql() const { return m_select % u" FROM " % m_from; }

private:
    QString m_select;
    QString m_from;
};

template <typename Flags>
bool NothingTicked(const Flags &flags)
{
    return std::all_of(flags.begin(), flags.end(), [](int flag) { return flag == 0; });
}

bool NeedsOrganisation(const ContactFlags &flags)
{
    return flags[ContactItem::Organisation] != 0 ||
           std::any_of(flags.begin() + ContactItem::OrgAddress, flags.begin() + ContactItem::OrgReference + 1,
                       [](int flag) { return flag != 0; });
}

Layout ContactLayout(const ContactFlags &flags)
{
    if (NothingTicked(flags))
        return {"SELECT *", "Contacts"};
    Layout layout(
        "SELECT Contacts.ContactRef, Designation.Title, Contacts.Cust_Forename, Contacts.Cust_Surname",
        "Contacts INNER JOIN Designation ON Contacts.Cust_Designation = "
        "Designation.Designation_ID");
    if (flags[ContactItem::References] != 0) {
        layout.AddColumns(", Contacts.ReferenceID");
        static constexpr const char *columns[] = {", Contacts.AltRef1", ", Contacts.AltRef2",
                                                  ", Contacts.AltRef3", ", Contacts.AltRef4"};
        for (int i = 0; i < 4; ++i) {
            if (!SystemValue(SystemRef::AltRefLabel + i).isEmpty())
                layout.AddColumns(columns[i]);
        }
    }
    layout.AddParts(personalParts, flags);
    if (NeedsOrganisation(flags))
        layout.AddJoin(organisationJoin);
    layout.AddParts(laterParts, flags);
    return layout;
}

/// The terms as a condition, without the last " OR ".
QString Where(QString terms)
{
    if (terms.isEmpty())
        terms = QStringLiteral("Contacts.ContactRef = 1 OR ");
    terms.chop(4);
    return u"WHERE " % terms;
}

void AddTerm(QString &terms, qint64 contactRef)
{
    terms += u"Contacts.ContactRef = " % SqlNumber(contactRef) % u" OR ";
}
} // namespace

std::optional<QString> BuildWhereString(const ContactReport &report)
{
    if (!report.selectedOnly)
        return QString();
    return Reported("BuildWhereString", std::optional<QString>(), [] {
        QString terms;
        for (const auto &row : OpenRecordset(QStringLiteral("SELECT * FROM Ref;")))
            AddTerm(terms, row.Long(u"ContactRef"));
        return Where(terms);
    });
}

std::optional<QString> BuildStaffWhereString(const ContactReport &report)
{
    return Reported("BuildStaffWhereString", std::optional<QString>(), [&] {
        const Recordset staff =
            OpenRecordset(QStringLiteral("SELECT DISTINCT ContactRoles.ContactRef FROM ContactRoles;"));
        QString terms;
        QSet<qint64> withRole;
        for (const auto &row : staff) {
            if (report.selectedOnly)
                withRole.insert(row.Long(u"ContactRef"));
            else
                AddTerm(terms, row.Long(u"ContactRef"));
        }
        if (report.selectedOnly) {
            for (const auto &row : OpenRecordset(QStringLiteral("SELECT * FROM Ref;"))) {
                if (withRole.contains(row.Long(u"ContactRef")))
                    AddTerm(terms, row.Long(u"ContactRef"));
            }
        }
        return Where(terms);
    });
}

QString BuildTitleString(const ContactReport &report)
{
    QString title = report.staffOnly ? QStringLiteral("Staff Details") : QStringLiteral("Contact Details");
    if (report.selectedOnly)
        title.prepend(u"Selected ");
    switch (report.ordering) {
    case ContactOrdering::Characteristic:
        return title % u", ordered by Characteristic";
    case ContactOrdering::GroupTypeThenGroup:
        return title % u", ordered by Group Type then Group";
    case ContactOrdering::GroupThenGroupType:
        return title % u", Ordered by Group then Group Type";
    case ContactOrdering::None:
        break;
    }
    return title;
}

QString BuildLayoutSqlString(const ContactFlags &flags, ContactOrdering ordering)
{
    Layout layout = ContactLayout(flags);
    if (ordering == ContactOrdering::None)
        return layout.Sql();
    if (ordering == ContactOrdering::Characteristic) {
        layout.AddFirst("Concessions.Name AS CharName,");
        layout.AddJoin(
            ") INNER JOIN ContactConcession ON Contacts.ContactRef = ContactConcession.ContactRef");
        layout.AddJoin(
            ") INNER JOIN Concessions ON ContactConcession.ConcessionRef = Concessions.ConcessionRef");
    } else {
        layout.AddFirst("LinkNames.LinkName, GroupNames.Name AS GroupName,");
        layout.AddJoin(") INNER JOIN Groups ON Contacts.ContactRef = Groups.ContactRef");
        layout.AddJoin(") INNER JOIN LinkNames ON Groups.LinkRef = LinkNames.LinkRef");
        layout.AddJoin(") INNER JOIN GroupNames ON Groups.GroupRef = GroupNames.GroupRef");
    }
    return layout.Sql();
}

QString OrderBy(ContactOrdering ordering)
{
    switch (ordering) {
    case ContactOrdering::Characteristic:
        return QStringLiteral(
            " ORDER BY Concessions.Name, Contacts.Cust_Surname, Contacts.Cust_Forename ASC;");
    case ContactOrdering::GroupTypeThenGroup:
        return QStringLiteral(" ORDER BY LinkNames.LinkName, GroupNames.Name, Contacts.Cust_Surname, "
                              "Contacts.Cust_Forename ASC;");
    case ContactOrdering::GroupThenGroupType:
        return QStringLiteral(
            " ORDER BY GroupNames.Name, Contacts.Cust_Surname, Contacts.Cust_Forename ASC;");
    case ContactOrdering::None:
        break;
    }
    return QStringLiteral(" ORDER BY Contacts.Cust_Surname, Contacts.Cust_Forename ASC;");
}

QString BuildOrgSqlString(const OrgFlags &flags)
{
    if (NothingTicked(flags))
        return QStringLiteral("SELECT * FROM Organisations");
    Layout layout("SELECT Organisations.OrganRef, Organisations.OrganName", "Organisations");
    layout.AddParts(orgParts, flags);
    return layout.Sql();
}
