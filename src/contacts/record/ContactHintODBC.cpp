#include "contacts/record/ContactHintODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

#include <algorithm>

namespace
{
void Find(const QString &condition, int most, std::vector<ListItem> &people)
{
    const std::optional<Recordset> found =
        TryOpenRecordset(u"SELECT TOP " % SqlNumber(most) %
                         u" ContactRef, Cust_Surname, Cust_Forename, Cust_Addr1 FROM Contacts WHERE " %
                         condition % u" ORDER BY Cust_Surname,Cust_Forename ASC");
    if (!found)
        return;
    for (const Recordset::Row row : *found) {
        ListItem person{u'?' % row.Text(u"ContactRef"),
                        row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename"),
                        {row.Text(u"Cust_Addr1")}};
        const auto same = [&person](const ListItem &other) { return other.key == person.key; };
        if (std::none_of(people.begin(), people.end(), same))
            people.push_back(std::move(person));
    }
}
} // namespace

std::vector<ListItem> ADO_Contact_FindSimilar(const QString &forename, const QString &surname,
                                              const QString &email, int most)
{
    std::vector<ListItem> people;
    if (!surname.isEmpty() && !forename.isEmpty() && forename.at(0).isLetter())
        Find(u"Cust_Surname = '" % surname % u"' AND Cust_Forename LIKE '" % forename.at(0) % u"%'", most,
             people);
    if (!email.isEmpty())
        Find(u"Cust_Email = '" % email % u'\'', most, people);
    return people;
}
