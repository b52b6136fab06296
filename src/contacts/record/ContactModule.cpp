#include "contacts/record/ContactModule.h"

#include "contacts/groups/GroupODBC.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "contacts/record/ContactHintODBC.h"

ReadRow<ContactFile> Contact_Show(ContactRef contactRef, const ContactLists &lists,
                                  const ContactGroups &groups)
{
    return ADO_Contact_ShowContact(contactRef, lists, groups);
}

bool Contact_Check(ContactRef contactRef)
{
    return ADO_Contact_CheckContact(contactRef).value_or(false);
}

void Contact_FillInfo(ContactRef contactRef, ListModel &list)
{
    ADO_Contact_FillContactInfo(contactRef, list);
}

std::vector<ListItem> Contact_FindSimilar(const QString &forename, const QString &surname,
                                          const QString &email)
{
    constexpr int most = 4;
    return ADO_Contact_FindSimilar(forename.trimmed(), SqlSafeText(surname.trimmed()),
                                   SqlSafeText(email.trimmed()), most);
}

bool Contact_DeleteItem(ContactSection code, int key)
{
    switch (code) {
    case ContactSection::Contacts:
        return ADO_Contact_Delete(ContactRef(key));
    case ContactSection::Titles:
        return ADO_Contact_DeleteDesignation(key);
    case ContactSection::Cities:
        return ADO_Contact_DeleteCity(key);
    case ContactSection::Counties:
        return ADO_Contact_DeleteCounty(key);
    case ContactSection::Countries:
        return ADO_Contact_DeleteCountry(key);
    case ContactSection::EthnicTypes:
        return ADO_Contact_DeleteEthnic(key);
    case ContactSection::Characteristics:
        return ADO_Contact_DeleteConcession(ConcessionRef(key));
    case ContactSection::GroupTypes:
        return ADO_Contact_DeleteLink(LinkRef(key));
    case ContactSection::Groups:
        return ADO_Contact_DeleteGroup(GroupRef(key));
    default:
        return false;
    }
}
