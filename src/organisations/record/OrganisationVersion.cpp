#include "organisations/record/OrganisationVersion.h"

#include "contacts/lists/VocabularyModule.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/RecordLists.h"
#include "database/values/GlobalCode.h"

namespace
{
using Column = MergedColumn<OrganisationRecord>;

const QString organisationExists = QStringLiteral("Organisation already exists in database.");
const QString contact = QStringLiteral("Contact");
const QString characteristic = QStringLiteral("Characteristic");
const QString facility = QStringLiteral("Facility");
const QString venue = QStringLiteral("Venue");

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

QString YesNo(const QString &value)
{
    return value == u"1" ? QStringLiteral("yes") : QStringLiteral("no");
}

const std::vector<Column> &Fields()
{
    static const std::vector<Column> columns{
        {"Name", &OrganisationRecord::name},
        {"Reference ID", &OrganisationRecord::referenceId},
        {"Address line 1", &OrganisationRecord::addr1},
        {"Address line 2", &OrganisationRecord::addr2},
        {"Address line 3", &OrganisationRecord::addr3},
        {"Address line 4", &OrganisationRecord::addr4},
        {"Town/City", &OrganisationRecord::city, Contact_NamesIn(ContactSection::Cities)},
        {"State/County", &OrganisationRecord::county, Contact_NamesIn(ContactSection::Counties)},
        {"ZIP/Postcode", &OrganisationRecord::postcode},
        {"Country", &OrganisationRecord::country, Contact_NamesIn(ContactSection::Countries)},
        {"Telephone", &OrganisationRecord::telDay},
        {"Out of hours", &OrganisationRecord::telOut},
        {"Fax", &OrganisationRecord::fax},
        {"E-mail", &OrganisationRecord::email},
        {"Website", &OrganisationRecord::url},
        {"Notes", &OrganisationRecord::notes},
        {"Award board", &OrganisationRecord::board, YesNo},
    };
    return columns;
}

RecordLists Beside(const OrganisationLists &links, StoredOrganisation &stored)
{
    RecordLists beside;
    beside.Add(RecordLists::List{contact, links.contacts, stored.contacts});
    beside.Add(RecordLists::List{characteristic, links.usedCriteria, stored.usedCriteria});
    beside.Add(RecordLists::List{facility, links.usedFac, stored.usedFac, &links.availFac});
    beside.Add(RecordLists::List{venue, links.usedVenues, stored.usedVenues, &links.availVenues});
    return beside;
}

FieldValues ReadValues(OrganRef organRef, StoredOrganisation &stored)
{
    return ReadStoredOrganisation(organRef, stored) ? Organisation_Values(stored.record, stored.Lists())
                                                    : FieldValues();
}

int Save(OrganRef organRef, OrganisationRecord &record, const OrganisationLists &links, FieldValues &base,
         bool writes)
{
    StoredOrganisation stored;
    const RecordLists beside = Beside(links, stored);
    MergedSave save =
        SaveOf(Fields(), beside, QStringLiteral("Organisations"), QStringLiteral("organisation"));
    save.read = [&] { return ReadValues(organRef, stored); };
    if (writes)
        save.write = [&](const FieldValues &values) {
            OrganisationRecord merged = record;
            PutValues(Fields(), values, merged);
            return ADO_Organisation_UpdateOrganisation(organRef, Safe(merged));
        };
    FieldValues values = Organisation_Values(record, links);
    const int key = SaveMerged("Organisation_Update", save, base, values);
    if (key > 0) {
        PutValues(Fields(), values, record);
        beside.Take(values);
    }
    return writes && key > 0 ? organRef.number : key;
}
} // namespace

FieldValues Organisation_Values(const OrganisationRecord &record, const OrganisationLists &links)
{
    OrganisationRecord shown = record;
    // A reference that is not there is shown and stored as none.
    for (int *reference : {&shown.city, &shown.county, &shown.country})
        *reference = qMax(1, *reference);
    FieldValues values = ValuesOf(Fields(), shown);
    AddRows(values, contact, links.contacts, false);
    AddRows(values, characteristic, links.usedCriteria, false);
    AddRows(values, facility, links.usedFac, false);
    AddRows(values, venue, links.usedVenues, false);
    return values;
}

FieldValues Organisation_StoredValues(OrganRef organRef)
{
    StoredOrganisation stored;
    return Reported("Organisation_StoredValues", FieldValues(), [&] { return ReadValues(organRef, stored); });
}

int Organisation_Add(const OrganisationRecord &record)
{
    return TellDuplicate(ADO_Organisation_AddOrganisation(Safe(record)), organisationExists,
                         QStringLiteral("Add Organisation"));
}

bool Organisation_Meet(OrganRef organRef, OrganisationRecord &record, const OrganisationLists &links,
                       FieldValues &base)
{
    return Save(organRef, record, links, base, false) > 0;
}

int Organisation_Update(OrganRef organRef, OrganisationRecord &record, const OrganisationLists &links,
                        FieldValues &base)
{
    return TellDuplicate(Save(organRef, record, links, base, true), organisationExists,
                         QStringLiteral("Update Organisation"));
}
