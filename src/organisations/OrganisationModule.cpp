#include "organisations/OrganisationModule.h"

#include "contacts/ContactRecordODBC.h"
#include "controls/ListModel.h"
#include "core/Progress.h"
#include "core/Session.h"
#include "database/DeletedMeanwhile.h"
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

/// Stores the lists of an organisation. A step that fails or is stopped throws StatementGivenUp.
class LinkSave final
{
public:
    LinkSave(int organRef, const OrganisationLinks &links, Progress &progress)
        : m_organRef(organRef)
        , m_links(links)
        , m_progress(progress)
    {
    }
    void Run();

private:
    static void Demand(bool done)
    {
        if (!done)
            throw StatementGivenUp{};
    }
    /// Behind every row: what was done of it stays, and the user may stop the run here.
    void EndStep()
    {
        EndRow(m_group);
        m_progress.SetValue(++m_done);
        Demand(!m_progress.IsCancelled() || m_done == m_progress.Maximum());
    }
    bool Asks(Dialogs::RepeatedQuestion &question, const QString &text, const QString &title);
    void StoreOwned(const LinkKind &kind, ListModel &list, ListModel *refused);
    void StoreCharacteristics();
    void OfferCharacteristics();

    int m_organRef;
    const OrganisationLinks &m_links;
    Progress &m_progress;
    int m_done = 0;
    WriteGroup m_group{gConnection};
};

/// While a question stands, another workstation may delete the organisation: nothing is to hang on it then.
bool LinkSave::Asks(Dialogs::RepeatedQuestion &question, const QString &text, const QString &title)
{
    const bool agrees = question.Agrees(text, title);
    Demand(ADO_Organisation_CheckOrganisation(m_organRef).value_or(false));
    return agrees;
}

/// Stores a list of what belongs to the organisation. What the user leaves to another one goes from the list
/// to `refused`, or nowhere.
void LinkSave::StoreOwned(const LinkKind &kind, ListModel &list, ListModel *refused)
{
    Demand(kind.wipe(m_organRef));
    Dialogs::RepeatedQuestion question(Dialogs::Buttons::YesNo);
    for (int row = 0; row < list.Count(); EndStep()) {
        const ListItem &item = list.At(row);
        const int key = KeyNumber(item.key);
        // The organisation's own were just wiped, so that whoever has it now is another one.
        const QString owner = kind.check(key);
        if (owner.isEmpty() ||
            Asks(question,
                 kind.word % u" '" % item.text % u"' is already in Organisation '" % owner %
                     u"'\nWould you like to remove from '" % owner % u"' and add to this Organisation?",
                 u"Change " % kind.word % u" Organisation")) {
            Demand(kind.add(key, m_organRef));
            ++row;
            continue;
        }
        std::vector<ListItem> left = list.Take({row});
        if (refused) {
            refused->AddAll(std::move(left));
            refused->sort(0, Qt::AscendingOrder);
        }
    }
    EndRows(m_group);
}

void LinkSave::StoreCharacteristics()
{
    Demand(ADO_Organisation_ConcessionWipe(m_organRef));
    for (int row = 0; row < m_links.usedCriteria.Count(); ++row)
        Demand(ADO_Organisation_AddConcession(m_organRef, KeyNumber(m_links.usedCriteria.At(row).key)));
    EndRows(m_group);
}

void LinkSave::OfferCharacteristics()
{
    Dialogs::RepeatedQuestion question(Dialogs::Buttons::YesNo);
    for (int row = 0; row < m_links.contacts.Count(); ++row, EndStep()) {
        const ListItem &contact = m_links.contacts.At(row);
        const int contactRef = KeyNumber(contact.key);
        if (ADO_Organisation_CheckCharswithContact(m_organRef, contactRef) &&
            Asks(question,
                 u"Would you like to apply the Organisation Characteristics to contact '" % contact.text %
                     u"'?",
                 QStringLiteral("Organisation Characteristics")) &&
            ADO_Contact_CheckContact(contactRef).value_or(false))
            Demand(ADO_Organisation_AddSingleContactConcession(m_organRef, contactRef));
    }
    EndRows(m_group);
}

void LinkSave::Run()
{
    static const LinkKind contacts{QStringLiteral("Contact"), ADO_Organisation_WipeContacts,
                                   ADO_Organisation_CheckContact, ADO_Organisation_AddContact};
    static const LinkKind facilities{QStringLiteral("Facility"), ADO_Organisation_WipeFacility,
                                     ADO_Organisation_CheckFacility, ADO_Organisation_AddFacility};
    static const LinkKind venues{QStringLiteral("Venue"), ADO_Organisation_WipeVenue,
                                 ADO_Organisation_CheckVenue, ADO_Organisation_AddVenue};
    const QString title = QStringLiteral("Update Organisation");
    Demand(
        LeaveOutDeleted(m_links.contacts, QStringLiteral("Contacts"), QStringLiteral("ContactRef"), title) &&
        LeaveOutDeleted(m_links.usedCriteria, QStringLiteral("Concessions"), QStringLiteral("ConcessionRef"),
                        title) &&
        LeaveOutDeleted(m_links.usedFac, QStringLiteral("Facilities"), QStringLiteral("FacilityRef"),
                        title) &&
        LeaveOutDeleted(m_links.usedVenues, QStringLiteral("Venues"), QStringLiteral("VenueRef"), title));
    m_progress.Begin(2 * m_links.contacts.Count() + m_links.usedFac.Count() + m_links.usedVenues.Count());
    StoreOwned(contacts, m_links.contacts, nullptr);
    StoreCharacteristics();
    OfferCharacteristics();
    StoreOwned(facilities, m_links.usedFac, &m_links.availFac);
    StoreOwned(venues, m_links.usedVenues, &m_links.availVenues);
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

void Organisation_Show(OrganisationView &view, int organRef)
{
    ADO_Organisation_ShowOrganisation(view, organRef);
}

bool Organisation_Delete(int organRef)
{
    return ADO_Organisation_Delete(organRef);
}

bool Organisation_StoreLinks(int organRef, const OrganisationLinks &links, Progress &progress)
{
    return Reported("Organisation_StoreLinks", false, [&] {
        LinkSave(organRef, links, progress).Run();
        return true;
    });
}

void Organisation_TakeContacts(const ListModel &people, ListModel &contacts, Progress &progress)
{
    contacts.Clear();
    progress.Begin(people.Count());
    for (int row = 0; row < people.Count(); ++row) {
        const ListItem &person = people.At(row);
        const int added = contacts.Add({person.key, person.text});
        if (progress.IsCancelled())
            continue;
        if (!ADO_Organisation_UpdateContact(KeyNumber(person.key), contacts, added))
            contacts.Remove(added);
        progress.SetValue(row + 1);
    }
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
    for (const QString &key : contacts.SelectedKeys()) {
        const int row = contacts.Find(key);
        const int contactRef = KeyNumber(key);
        if (!ADO_Contact_UpdateJobTitle(contactRef, SqlSafeText(title)))
            return false;
        // It shows what is stored: somebody who is no more leaves the list instead.
        if (!ADO_Organisation_UpdateContact(contactRef, contacts, row))
            contacts.Remove(row);
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

bool Organisations_StoreAwardFlags(const ListModel &list, Progress &progress)
{
    return Reported("Organisations_StoreAwardFlags", false, [&] {
        WriteGroup group(gConnection);
        progress.Begin(list.Count());
        for (int row = 0; row < list.Count() && !progress.IsCancelled(); ++row) {
            if (!ADO_Organisations_SetAwardFlag(KeyNumber(list.At(row).key), list.At(row).checked))
                return false;
            EndRow(group);
            progress.SetValue(row + 1);
        }
        EndRows(group);
        return progress.Value() == progress.Maximum();
    });
}
