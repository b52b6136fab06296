#include "contacts/ContactSave.h"

#include "attributes/CustomAttribModule.h"
#include "contacts/ContactModule.h"
#include "contacts/GroupODBC.h"
#include "contacts/RoleModule.h"

bool Contact_LeaveOutDeleted(const ContactLists &lists)
{
    return Concession_LeaveOutDeleted(lists.characteristics) && Role_LeaveOutDeleted(lists.roles) &&
           CustomAttrib_LeaveOutDeleted(lists.attributes);
}

RecordSaved Contact_Save(int contactRef, const ContactRecord &record, const ContactLists &lists,
                         Progress &progress)
{
    return SaveWhole(
        "Contact_Save", progress,
        [&] { return contactRef > 0 ? Contact_Update(contactRef, record) : Contact_Add(record); },
        [&](int key) {
            return (lists.groupRef < 1 || ADO_Contact_UpdateGroup(lists.groupRef, lists.members, progress)) &&
                   Concession_Store(key, lists.characteristics) && Role_Store(key, lists.roles) &&
                   ADO_CustomAttrib_Store(lists.attributes, key, AttribSection::contacts);
        });
}
