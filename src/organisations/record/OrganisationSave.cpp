#include "organisations/record/OrganisationSave.h"

#include "contacts/record/ContactRecordODBC.h"
#include "controls/ListModel.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/values/GlobalCode.h"
#include "organisations/lists/OrganisationLinkODBC.h"
#include "organisations/lists/OrganisationODBC.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/OrganisationRecordODBC.h"
#include "platform/desktop/Dialogs.h"

#include <QSet>

#include <optional>
#include <vector>

namespace
{
/// What people, facilities and venues differ in when they are stored.
struct LinkKind {
    QString word;
    std::optional<QSet<int>> (*own)(OrganRef organRef);
    QString (*check)(int key);
    bool (*wipe)(OrganRef organRef);
    bool (*add)(int key, OrganRef organRef);
};

/// The functions of one kind, for the rows of a list, whose keys are plain numbers.
template <typename Ref, auto check>
QString Owner(int key)
{
    return check(Ref(key));
}
template <typename Ref, auto add>
bool Give(int key, OrganRef organRef)
{
    return add(Ref(key), organRef);
}

const LinkKind contactLinks{QStringLiteral("Contact"), ADO_Organisation_OwnContacts,
                            Owner<ContactRef, ADO_Organisation_CheckContact>, ADO_Organisation_WipeContacts,
                            Give<ContactRef, ADO_Organisation_AddContact>};
const LinkKind facilityLinks{QStringLiteral("Facility"), ADO_Organisation_OwnFacilities,
                             Owner<FacilityRef, ADO_Organisation_CheckFacility>,
                             ADO_Organisation_WipeFacility, Give<FacilityRef, ADO_Organisation_AddFacility>};
const LinkKind venueLinks{QStringLiteral("Venue"), ADO_Organisation_OwnVenues,
                          Owner<VenueRef, ADO_Organisation_CheckVenue>, ADO_Organisation_WipeVenue,
                          Give<VenueRef, ADO_Organisation_AddVenue>};

QString OwnerQuestion(const QString &word, const QString &text, const QString &owner)
{
    return word % u" '" % text % u"' is already in Organisation '" % owner %
           u"'\nWould you like to remove from '" % owner % u"' and add to this Organisation?";
}

/// While a question is open, another workstation may delete the organisation: nothing is to hang on it then.
bool Exists(OrganRef organRef)
{
    return !organRef || ADO_Organisation_CheckOrganisation(organRef).value_or(false);
}

/// The lists of an organisation on their way into the database.
class LinkSave final
{
public:
    LinkSave(OrganRef organRef, const OrganisationLists &links, Progress &progress)
        : m_organRef(organRef)
        , m_links(links)
        , m_progress(progress)
    {
    }
    /// False on an error.
    bool LeaveOutDeleted() const;
    /// Reads and asks. False on an error, where the run is cancelled, and where the organisation was deleted.
    bool Ask();
    /// Writes, without a question; false likewise.
    bool Store(OrganRef organRef);

private:
    /// False where the user stops the run.
    bool EndStep()
    {
        m_progress.SetValue(++m_done);
        return !m_progress.IsCancelled();
    }
    bool AskOwners(const LinkKind &kind, ListModel &list, ListModel *refused);
    bool StoreOwned(const LinkKind &kind, const ListModel &list, OrganRef organRef);
    bool StoreCharacteristics(OrganRef organRef) const;

    OrganRef m_organRef;
    const OrganisationLists &m_links;
    Progress &m_progress;
    int m_done = 0;
};

bool LinkSave::LeaveOutDeleted() const
{
    const QString title = QStringLiteral("Update Organisation");
    const auto leaveOut = [&title](ListModel &list, const QString &table, const QString &keyColumn) {
        return ::LeaveOutDeleted(list, table, keyColumn, title);
    };
    return leaveOut(m_links.contacts, QStringLiteral("Contacts"), QStringLiteral("ContactRef")) &&
           leaveOut(m_links.usedCriteria, QStringLiteral("Concessions"), QStringLiteral("ConcessionRef")) &&
           leaveOut(m_links.usedFac, QStringLiteral("Facilities"), QStringLiteral("FacilityRef")) &&
           leaveOut(m_links.usedVenues, QStringLiteral("Venues"), QStringLiteral("VenueRef"));
}

/// Asks about each of a list that belongs to another organisation. What the user leaves there goes from the
/// list to `refused`, or nowhere.
bool LinkSave::AskOwners(const LinkKind &kind, ListModel &list, ListModel *refused)
{
    const std::optional<QSet<int>> own = !m_organRef ? QSet<int>() : kind.own(m_organRef);
    if (!own)
        return false;
    Dialogs::RepeatedQuestion question(Dialogs::Buttons::YesNo);
    for (int row = 0; row < list.Count();) {
        const int key = KeyNumber(list.At(row).key);
        const QString owner = own->contains(key) ? QString() : kind.check(key);
        const bool joins =
            owner.isEmpty() || question.Agrees(OwnerQuestion(kind.word, list.At(row).text, owner),
                                               u"Change " % kind.word % u" Organisation");
        if (!owner.isEmpty() && !Exists(m_organRef))
            return false;
        if (joins) {
            ++row;
        } else {
            std::vector<ListItem> left = list.Take({row});
            if (refused) {
                refused->AddAll(std::move(left));
                refused->sort(0, Qt::AscendingOrder);
            }
        }
        if (!EndStep())
            return false;
    }
    return true;
}

bool LinkSave::Ask()
{
    m_progress.Begin(2 * (m_links.contacts.Count() + m_links.usedFac.Count() + m_links.usedVenues.Count()));
    return AskOwners(contactLinks, m_links.contacts, nullptr) &&
           AskOwners(facilityLinks, m_links.usedFac, &m_links.availFac) &&
           AskOwners(venueLinks, m_links.usedVenues, &m_links.availVenues);
}

bool LinkSave::StoreOwned(const LinkKind &kind, const ListModel &list, OrganRef organRef)
{
    bool isStored = kind.wipe(organRef);
    for (int row = 0; isStored && row < list.Count(); ++row)
        isStored = kind.add(KeyNumber(list.At(row).key), organRef) && EndStep();
    return isStored;
}

bool LinkSave::StoreCharacteristics(OrganRef organRef) const
{
    bool isStored = ADO_Organisation_ConcessionWipe(organRef);
    for (int row = 0; isStored && row < m_links.usedCriteria.Count(); ++row)
        isStored = ADO_Organisation_AddConcession(organRef,
                                                  ConcessionRef(KeyNumber(m_links.usedCriteria.At(row).key)));
    return isStored;
}

bool LinkSave::Store(OrganRef organRef)
{
    return StoreOwned(contactLinks, m_links.contacts, organRef) && StoreCharacteristics(organRef) &&
           StoreOwned(facilityLinks, m_links.usedFac, organRef) &&
           StoreOwned(venueLinks, m_links.usedVenues, organRef);
}
} // namespace

RecordSaved Organisation_Save(OrganRef organRef, OrganisationRecord &record, const OrganisationLists &links,
                              FieldValues &base, Progress &progress)
{
    LinkSave lists(organRef, links, progress);
    if (!lists.LeaveOutDeleted())
        return {organRef.number, false};
    // Before the questions: nobody is to be asked about somebody who was taken out elsewhere.
    if (organRef && !Organisation_Meet(organRef, record, links, base))
        return {-1, false};
    if (!lists.Ask())
        return {progress.IsCancelled() ? 0 : organRef.number, false};
    const auto storeRecord = [&] {
        return organRef ? Organisation_Update(organRef, record, links, base) : Organisation_Add(record);
    };
    FieldValues before = base;
    const RecordSaved saved = SaveWhole("Organisation_Save", progress, storeRecord,
                                        [&](int key) { return lists.Store(OrganRef(key)); });
    base = SeenAfter(
        saved, std::move(before), [&] { return AsStored(Organisation_Values(record, links)); },
        [&] { return Organisation_StoredValues(OrganRef(saved.key)); });
    return saved;
}

bool Organisation_OfferCharacteristics(OrganRef organRef, const ListModel &contacts, Progress &progress)
{
    return Reported("Organisation_OfferCharacteristics", false, [&] {
        Dialogs::RepeatedQuestion question(Dialogs::Buttons::YesNo);
        WriteGroup group(gConnection);
        progress.Begin(contacts.Count());
        for (int row = 0; row < contacts.Count() && !progress.IsCancelled(); ++row) {
            const QString name = contacts.At(row).text;
            const ContactRef contactRef(KeyNumber(contacts.At(row).key));
            if (ADO_Organisation_CheckCharswithContact(organRef, contactRef) &&
                question.Agrees(u"Would you like to apply the Organisation Characteristics to contact '" %
                                    name % u"'?",
                                QStringLiteral("Organisation Characteristics"))) {
                if (!Exists(organRef))
                    return false;
                if (ADO_Contact_CheckContact(contactRef).value_or(false) &&
                    !ADO_Organisation_AddSingleContactConcession(organRef, contactRef))
                    return false;
            }
            EndRow(group);
            progress.SetValue(row + 1);
        }
        EndRows(group);
        return progress.Value() == progress.Maximum();
    });
}
