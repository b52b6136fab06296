#include "contacts/record/ContactVersion.h"

#include "attributes/CustomAttribODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactRecordODBC.h"
#include "controls/TreeModel.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/RecordLists.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"

namespace
{
using Column = MergedColumn<ContactRecord>;

const QString personExists = QStringLiteral("Contact already exists in database.");
const QString characteristic = QStringLiteral("Characteristic");
const QString role = QStringLiteral("Role");
const QString attribute = QStringLiteral("Attribute");

ContactRecord Safe(ContactRecord record)
{
    QString *const texts[] = {
        &record.forename,    &record.surname,   &record.addr1,     &record.addr2,     &record.addr3,
        &record.addr4,       &record.postcode,  &record.telEve,    &record.telDay,    &record.telExt,
        &record.fax,         &record.email,     &record.url,       &record.notes,     &record.jobTitle,
        &record.referenceId, &record.altRef[0], &record.altRef[1], &record.altRef[2], &record.altRef[3],
    };
    for (QString *text : texts)
        *text = SqlSafeText(*text);
    return record;
}

QString Gender(const QString &value)
{
    return QStringList{QStringLiteral("Not Specified"), QStringLiteral("Female"), QStringLiteral("Male")}
        .value(value.toInt());
}

QString Person(const QString &value)
{
    ListModel list;
    if (value.toInt() > 1)
        ADO_Contact_FillContactInfo(ContactRef(value.toInt()), list);
    return list.IsEmpty() ? QString() : list.At(0).text;
}

std::function<QString &(ContactRecord &)> AltRef(size_t index)
{
    return [index](ContactRecord &record) -> QString & { return record.altRef[index]; };
}

const std::vector<Column> &Fields()
{
    static const std::vector<Column> columns{
        {"Title", &ContactRecord::designation, Contact_NamesIn(ContactSection::Titles)},
        {"Forename", &ContactRecord::forename},
        {"Surname", &ContactRecord::surname},
        {"Date of birth", &ContactRecord::dob,
         [](const QString &value) { return value == u"0" ? QString() : IntToDateText(value.toInt()); }},
        {"Gender", &ContactRecord::sex, Gender},
        {"Ethnicity", &ContactRecord::ethnicGroup, Contact_NamesIn(ContactSection::EthnicTypes)},
        {"Emergency Contact", &ContactRecord::contactContactRef, Person},
        {"Address line 1", &ContactRecord::addr1},
        {"Address line 2", &ContactRecord::addr2},
        {"Address line 3", &ContactRecord::addr3},
        {"Address line 4", &ContactRecord::addr4},
        {"Town/City", &ContactRecord::city, Contact_NamesIn(ContactSection::Cities)},
        {"State/County", &ContactRecord::county, Contact_NamesIn(ContactSection::Counties)},
        {"ZIP/Postcode", &ContactRecord::postcode},
        {"Country", &ContactRecord::country, Contact_NamesIn(ContactSection::Countries)},
        {"Reference ID", &ContactRecord::referenceId},
        {"Alt Ref ID 1", AltRef(0)},
        {"Alt Ref ID 2", AltRef(1)},
        {"Alt Ref ID 3", AltRef(2)},
        {"Alt Ref ID 4", AltRef(3)},
        {"Telephone", &ContactRecord::telDay},
        {"Ext", &ContactRecord::telExt},
        {"Tel (Eves)", &ContactRecord::telEve},
        {"Fax", &ContactRecord::fax},
        {"E-mail", &ContactRecord::email},
        {"Website", &ContactRecord::url},
        {"Organisation", &ContactRecord::organRef, Contact_NamesIn(ContactSection::Organisations)},
        {"Position", &ContactRecord::jobTitle},
        {"Notes", &ContactRecord::notes},
    };
    return columns;
}

FieldValues RecordValues(ContactRecord record)
{
    // A reference that is not there is shown and stored as none.
    for (int *reference : {&record.designation, &record.ethnicGroup, &record.contactContactRef, &record.city,
                           &record.county, &record.country, &record.organRef})
        *reference = qMax(1, *reference);
    return ValuesOf(Fields(), record);
}

QString SingleImage()
{
    return AttribImage(AttribType::Single);
}

RecordLists Beside(const ContactLists &lists, StoredContact &stored)
{
    RecordLists beside;
    beside.Add(
        RecordLists::List{characteristic, lists.characteristics, stored.usedCriteria, &lists.availCriteria});
    beside.Add(RecordLists::List{role, lists.roles, stored.roles, nullptr, true});
    beside.Add(RecordLists::Ticks{attribute, lists.attributes, stored.attributes, SingleImage()});
    return beside;
}

/// Whether an attribute has one value or many decides by which fields it is compared: in both versions as the
/// screen knows it.
void TakeKinds(TreeModel &stored, const TreeModel &shown)
{
    for (TreeNode *node : stored.Nodes()) {
        if (const TreeNode *known = shown.Find(node->key))
            node->image = known->image;
    }
}

FieldValues ReadValues(ContactRef contactRef, StoredContact &stored, const TreeModel *shown = nullptr)
{
    if (!ReadStoredContact(contactRef, stored))
        return {};
    if (shown)
        TakeKinds(stored.attributes, *shown);
    return Contact_Values(stored.record, stored.Lists());
}
} // namespace

FieldValues Contact_Values(const ContactRecord &record, const ContactLists &lists)
{
    FieldValues values = RecordValues(record);
    AddRows(values, characteristic, lists.characteristics, false);
    AddRows(values, role, lists.roles, true);
    AddTicks(values, attribute, lists.attributes, SingleImage());
    return values;
}

FieldValues Contact_StoredValues(ContactRef contactRef)
{
    StoredContact stored;
    return Reported("Contact_StoredValues", FieldValues(), [&] { return ReadValues(contactRef, stored); });
}

int Contact_Add(const ContactRecord &record)
{
    return TellDuplicate(ADO_Contact_AddContact(Safe(record)), personExists, QStringLiteral("Add Contact"));
}

int Contact_Update(ContactRef contactRef, ContactRecord &record, const ContactLists &lists, FieldValues &base)
{
    StoredContact stored;
    const RecordLists beside = Beside(lists, stored);
    MergedSave save = SaveOf(Fields(), beside, QStringLiteral("Contacts"), QStringLiteral("contact"));
    save.read = [&] { return ReadValues(contactRef, stored, &lists.attributes); };
    save.write = [&](const FieldValues &values) {
        ContactRecord merged = record;
        PutValues(Fields(), values, merged);
        return ADO_Contact_UpdateContact(contactRef, Safe(merged));
    };
    FieldValues values = Contact_Values(record, lists);
    const int key = TellDuplicate(SaveMerged("Contact_Update", save, base, values), personExists,
                                  QStringLiteral("Update Contact"));
    if (key > 0) {
        PutValues(Fields(), values, record);
        beside.Take(values);
    }
    return key;
}
