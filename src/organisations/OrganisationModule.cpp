#include "organisations/OrganisationModule.h"

#include "contacts/ContactRecordODBC.h"
#include "controls/ListModel.h"
#include "core/Session.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"
#include "organisations/AwardBoardODBC.h"
#include "organisations/OrganisationLinkODBC.h"
#include "organisations/OrganisationODBC.h"
#include "organisations/OrganisationRecordODBC.h"
#include "platform/Connection.h"
#include "platform/Dialogs.h"

namespace
{
OrganisationRecord Safe(OrganisationRecord record)
{
    QString *const texts[] = {
        &record.name,  &record.referenceId, &record.addr1,  &record.addr2,  &record.addr3,
        &record.addr4, &record.postcode,    &record.telOut, &record.telDay, &record.fax,
        &record.email, &record.url,         &record.notes,
    };
    for (QString *text : texts)
        *text = SqlSafeText(*text);
    return record;
}

const QString organisationExists = QStringLiteral("Organisation already exists in database.");

bool Agrees(const QString &question, const QString &title)
{
    return Dialogs::MsgBox(question, title, Dialogs::Buttons::YesNo, Dialogs::Icon::Question) ==
           Dialogs::Answer::Yes;
}

/// What people, facilities and venues differ in when they are stored.
struct LinkKind {
    QString word;
    bool (*wipe)(int organRef);
    QString (*check)(int key);
    bool (*add)(int key, int organRef);
};

/// Stores a list of what belongs to the organisation. What the user leaves to another one goes from the list
/// to `refused`, or nowhere.
void StoreOwned(WriteGroup &group, int organRef, const LinkKind &kind, ListModel &list, ListModel *refused)
{
    if (!kind.wipe(organRef))
        throw StatementGivenUp{};
    for (int row = 0; row < list.Count();) {
        const ListItem &item = list.At(row);
        const int key = KeyNumber(item.key);
        // The organisation's own were just wiped, so that whoever has it now is another one.
        const QString owner = kind.check(key);
        if (!owner.isEmpty() &&
            !Agrees(kind.word % u" '" % item.text % u"' is already in Organisation '" % owner %
                        u"'\nWould you like to remove from '" % owner % u"' and add to this Organisation?",
                    u"Change " % kind.word % u" Organisation")) {
            std::vector<ListItem> left = list.Take({row});
            if (refused) {
                refused->AddAll(std::move(left));
                refused->sort(0, Qt::AscendingOrder);
            }
            continue;
        }
        if (!kind.add(key, organRef))
            throw StatementGivenUp{};
        EndRow(group);
        ++row;
    }
    EndRows(group);
}

void StoreCharacteristics(int organRef, const ListModel &used)
{
    bool stored = ADO_Organisation_ConcessionWipe(organRef);
    for (int row = 0; stored && row < used.Count(); ++row)
        stored = ADO_Organisation_AddConcession(organRef, KeyNumber(used.At(row).key));
    if (!stored)
        throw StatementGivenUp{};
}

void OfferCharacteristics(WriteGroup &group, int organRef, const ListModel &contacts)
{
    for (int row = 0; row < contacts.Count(); ++row) {
        const int contactRef = KeyNumber(contacts.At(row).key);
        if (!ADO_Organisation_CheckCharswithContact(organRef, contactRef) ||
            !Agrees(u"Would you like to apply the Organisation Characteristics to contact '" %
                        contacts.At(row).text % u"'?",
                    QStringLiteral("Organisation Characteristics")))
            continue;
        if (!ADO_Organisation_AddSingleContactConcession(organRef, contactRef))
            throw StatementGivenUp{};
        EndRow(group);
    }
    EndRows(group);
}
} // namespace

int Organisation_Add(const OrganisationRecord &record)
{
    return TellDuplicate(ADO_Organisation_AddOrganisation(Safe(record)), organisationExists,
                         QStringLiteral("Add Organisation"));
}

int Organisation_Update(int organRef, const OrganisationRecord &record)
{
    return TellDuplicate(ADO_Organisation_UpdateOrganisation(organRef, Safe(record)), organisationExists,
                         QStringLiteral("Update Organisation"));
}

bool Organisation_Check(int organRef)
{
    return ADO_Organisation_CheckOrganisation(organRef);
}

void Organisation_Show(OrganisationView &view, int organRef)
{
    ADO_Organisation_ShowOrganisation(view, organRef);
}

bool Organisation_Delete(int organRef)
{
    return ADO_Organisation_Delete(organRef);
}

bool Organisation_StoreLinks(int organRef, const OrganisationLinks &links)
{
    static const LinkKind contacts{QStringLiteral("Contact"), ADO_Organisation_WipeContacts,
                                   ADO_Organisation_CheckContact, ADO_Organisation_AddContact};
    static const LinkKind facilities{QStringLiteral("Facility"), ADO_Organisation_WipeFacility,
                                     ADO_Organisation_CheckFacility, ADO_Organisation_AddFacility};
    static const LinkKind venues{QStringLiteral("Venue"), ADO_Organisation_WipeVenue,
                                 ADO_Organisation_CheckVenue, ADO_Organisation_AddVenue};
    return Reported("Organisation_StoreLinks", false, [&] {
        WriteGroup group(gConnection);
        StoreOwned(group, organRef, contacts, links.contacts, nullptr);
        StoreCharacteristics(organRef, links.usedCriteria);
        EndRows(group);
        OfferCharacteristics(group, organRef, links.contacts);
        StoreOwned(group, organRef, facilities, links.usedFac, &links.availFac);
        StoreOwned(group, organRef, venues, links.usedVenues, &links.availVenues);
        return true;
    });
}

void Organisation_TakeContacts(const ListModel &people, ListModel &contacts)
{
    contacts.Clear();
    for (int row = 0; row < people.Count(); ++row)
        contacts.Add({people.At(row).key, people.At(row).text});
    Organisation_RefreshContacts(contacts);
}

void Organisation_RemoveContacts(ListModel &contacts)
{
    for (const QString &key : contacts.SelectedKeys()) {
        const int row = contacts.Find(key);
        // The title is that of the roles; users know it from there and here.
        if (Agrees(u"Remove Contact " % contacts.At(row).text % u" from this Organisation?",
                   QStringLiteral("Remove Role")))
            contacts.Remove(row);
        else
            contacts.Select(row, false);
    }
}

bool Organisation_UpdateJobTitles(ListModel &contacts, const QString &title)
{
    if (!Agrees(u"Okay to update Contact(s) to Job Title '" % title % u"'?",
                QStringLiteral("Update Job Title(s)")))
        return false;
    for (const int row : contacts.SelectedRows()) {
        if (!ADO_Contact_UpdateJobTitle(KeyNumber(contacts.At(row).key), SqlSafeText(title)))
            return false;
        contacts.SetSubItem(row, 0, title);
    }
    return true;
}

void Organisation_RefreshContacts(ListModel &contacts)
{
    for (int row = contacts.Count() - 1; row >= 0; --row) {
        if (!ADO_Organisation_UpdateContact(KeyNumber(contacts.At(row).key), contacts, row))
            contacts.Remove(row);
    }
}

bool Organisations_StoreAwardFlags(const ListModel &list)
{
    return Reported("Organisations_StoreAwardFlags", false, [&] {
        WriteGroup group(gConnection);
        for (int row = 0; row < list.Count(); ++row) {
            if (!ADO_Organisations_SetAwardFlag(KeyNumber(list.At(row).key), list.At(row).checked))
                return false;
            EndRow(group);
        }
        EndRows(group);
        return true;
    });
}
