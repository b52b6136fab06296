#include "contacts/record/ContactSave.h"

#include "attributes/CustomAttribModule.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/roles/RoleModule.h"

bool Contact_LeaveOutDeleted(const ContactLists &lists)
{
    return Concession_LeaveOutDeleted(lists.characteristics) && Role_LeaveOutDeleted(lists.roles) &&
           CustomAttrib_LeaveOutDeleted(lists.attributes);
}

RecordSaved Contact_Save(ContactRef contactRef, ContactRecord &record, const ContactLists &lists,
                         const ChangedGroup &group, FieldValues &base, Progress &progress)
{
    const auto storeRecord = [&] {
        return contactRef ? Contact_Update(contactRef, record, lists, base) : Contact_Add(record);
    };
    const auto storeLists = [&](int key) {
        return (!group.groupRef ||
                ADO_Contact_UpdateGroup(group.groupRef, group.members, group.seen, progress)) &&
               Concession_Store(ContactRef(key), lists.characteristics) &&
               Role_Store(ContactRef(key), lists.roles) &&
               ADO_CustomAttrib_Store(lists.attributes, key, AttribSection::Contacts);
    };
    FieldValues before = base;
    const RecordSaved saved = SaveWhole("Contact_Save", progress, storeRecord, storeLists);
    base = SeenAfter(
        saved, std::move(before), [&] { return AsStored(Contact_Values(record, lists)); },
        [&] { return Contact_StoredValues(ContactRef(saved.key)); });
    return saved;
}
