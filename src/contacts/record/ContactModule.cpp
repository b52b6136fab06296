#include "contacts/record/ContactModule.h"

#include "contacts/groups/GroupODBC.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "contacts/record/ContactHintODBC.h"
#include "contacts/record/ContactRecordODBC.h"
#include "controls/ComboModel.h"
#include "core/session/Session.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"

#include <array>

namespace
{
const std::array<ContactSectionInfo, 11> &Sections()
{
    static const std::array<ContactSectionInfo, 11> sections = {{
        {ContactSection::Contacts, "", "Contacts", "", "ContactRef", Right::Contacts},
        {ContactSection::Titles, "Titles", "Designation", "Title", "Designation_ID", Right::Titles},
        {ContactSection::Cities, "Cities", "City", "City", "City_ID", Right::Cities},
        {ContactSection::Counties, "Counties", "County", "County", "County_ID", Right::Counties},
        {ContactSection::Countries, "Countries", "Country", "Country", "Country_ID", Right::Countries},
        {ContactSection::EthnicTypes, "Ethnic Types", "EthnicGroup", "Type", "Ethnic_ID", Right::EthnicTypes},
        {ContactSection::Characteristics, "Characteristics", "Concessions", "Name", "ConcessionRef",
         Right::Characteristics},
        {ContactSection::GroupTypes, "Group Types", "LinkNames", "LinkName", "LinkRef", Right::GroupTypes},
        {ContactSection::Groups, "Groups", "GroupNames", "Name", "GroupRef", Right::Groups},
        {ContactSection::Organisations, "Organisations", "Organisations", "OrganName", "OrganRef",
         Right::Organisations},
        {ContactSection::Roles, "Roles", "RoleTypes", "Name", "RoleTypeRef", Right::Roles},
    }};
    return sections;
}

/// The row whose name, case and reference aside, is `name`, or -1.
int RowOfName(const ComboModel &list, const QString &name)
{
    const QString wanted = name.toUpper();
    for (int row = 0; row < list.Count(); ++row) {
        if (SplitRefLabel(list.At(row).text).name.toUpper() == wanted)
            return row;
    }
    return -1;
}

const QString itemExists = QStringLiteral("Item already exists in database.");
const QString concessionExists = QStringLiteral("Concession already exists in database.");
} // namespace

const ContactSectionInfo &ContactSectionOf(ContactSection code)
{
    return Sections()[static_cast<size_t>(code)];
}

std::span<const ContactSectionInfo> ContactSections()
{
    return std::span(Sections()).subspan(1);
}

void Contact_Show(ContactView &view, int contactRef)
{
    ADO_Contact_ShowContact(view, contactRef);
}

bool Contact_Check(int contactRef)
{
    return ADO_Contact_CheckContact(contactRef).value_or(false);
}

void Contact_FillInfo(int contactRef, ListModel &list)
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

void Contact_FillList(ContactSection code, ComboModel &list, bool withSelectRow)
{
    if (code == ContactSection::Contacts) {
        ADO_Contact_FillListC(list, withSelectRow);
        return;
    }
    const ContactSectionInfo &section = ContactSectionOf(code);
    ADO_Contact_FillList(list, section.nameColumn, section.keyColumn, section.table, withSelectRow);
}

void Contact_FillListView(ContactSection code, ListModel &list)
{
    if (code == ContactSection::Contacts) {
        ADO_Contact_Fill(list);
        return;
    }
    const ContactSectionInfo &section = ContactSectionOf(code);
    ADO_Contact_FillList2(list, section.nameColumn, section.keyColumn, section.table);
}

int Contact_AddItem(ContactSection code, const QString &name, const QString &referenceId)
{
    const ContactSectionInfo &section = ContactSectionOf(code);
    return TellDuplicate(ADO_Contact_AddItem(SqlSafeText(name), section.table, section.nameColumn,
                                             section.keyColumn, SqlSafeText(referenceId), QString()),
                         itemExists, QStringLiteral("Add Item"));
}

int Contact_UpdateItem(ContactSection code, int key, const QString &name, const QString &referenceId)
{
    const ContactSectionInfo &section = ContactSectionOf(code);
    const QString title = QStringLiteral("Update Item");
    const int living = LivingKey(section.table, section.keyColumn, key, QStringLiteral("item"), title);
    if (living < 1)
        return living;
    return TellDuplicate(ADO_Contact_UpdateItem(key, SqlSafeText(name), section.table, section.nameColumn,
                                                section.keyColumn, SqlSafeText(referenceId)),
                         itemExists, title);
}

void Contact_TakeTyped(ComboModel &list, const QString &typed,
                       const std::function<int(const RefLabel &item)> &add, const std::function<void()> &fill)
{
    const RefLabel item = SplitRefLabel(typed);
    const int before = list.CurrentData();
    const int key = add(item);
    fill();
    if (key >= 1) {
        list.ChooseData(key);
        return;
    }
    const int row = RowOfName(list, item.name);
    list.ChooseData(row >= 0 ? list.At(row).data : before);
}

void Contact_TakeTyped(ContactSection code, ComboModel &list, const QString &typed)
{
    const auto add = [code](const RefLabel &item) {
        return code == ContactSection::Characteristics ? Concession_Add(item.name, 0, 0, item.reference)
                                                       : Contact_AddItem(code, item.name, item.reference);
    };
    Contact_TakeTyped(list, typed, add, [&] { Contact_FillList(code, list, true); });
}

bool Contact_CheckChosen(ContactSection code, ComboModel &list)
{
    const int key = list.CurrentData();
    const ContactSectionInfo &section = ContactSectionOf(code);
    if (key <= 1)
        return true;
    const std::optional<QSet<int>> living = ADO_LivingKeys(section.table, section.keyColumn, {key});
    if (!living || living->contains(key))
        return true;
    TellLeftOut({list.CurrentText()}, QStringLiteral("Record Deleted"));
    Contact_FillList(code, list, true);
    return false;
}

ReadRow<RefLabel> Contact_ViewItem(ContactSection code, int key)
{
    const ContactSectionInfo &section = ContactSectionOf(code);
    return ADO_ViewItem(key, section.keyColumn, section.nameColumn, section.table);
}

bool Contact_DeleteItem(ContactSection code, int key)
{
    switch (code) {
    case ContactSection::Contacts:
        return ADO_Contact_Delete(key);
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
        return ADO_Contact_DeleteConcession(key);
    case ContactSection::GroupTypes:
        return ADO_Contact_DeleteLink(key);
    case ContactSection::Groups:
        return ADO_Contact_DeleteGroup(key);
    default:
        return false;
    }
}

int Concession_Add(const QString &name, double percentage, double hardDiscount, const QString &referenceId)
{
    return TellDuplicate(
        ADO_Contact_AddConcession(SqlSafeText(name), percentage, hardDiscount, SqlSafeText(referenceId)),
        concessionExists, QStringLiteral("Add Concession"));
}

int Concession_Check(int concessionRef, const QString &title)
{
    const ContactSectionInfo &section = ContactSectionOf(ContactSection::Characteristics);
    return LivingKey(section.table, section.keyColumn, concessionRef, QStringLiteral("characteristic"),
                     title);
}

int Concession_Update(int concessionRef, const QString &name, double percentage, double hardDiscount,
                      const QString &referenceId)
{
    const QString title = QStringLiteral("Update Concession");
    const int living = Concession_Check(concessionRef, title);
    if (living < 1)
        return living;
    return TellDuplicate(ADO_Contact_UpdateConcession(concessionRef, SqlSafeText(name), percentage,
                                                      hardDiscount, SqlSafeText(referenceId)),
                         concessionExists, title);
}

bool Concession_LeaveOutDeleted(ListModel &used)
{
    const ContactSectionInfo &section = ContactSectionOf(ContactSection::Characteristics);
    return LeaveOutDeleted(used, section.table, section.keyColumn, section.caption);
}

bool Concession_Store(int contactRef, const ListModel &used)
{
    return Reported("Concession_Store", false, [&] {
        // In one piece: a crash after the wipe would lose the characteristics.
        WriteGroup group(gConnection);
        bool stored = ADO_Contact_ConcessionWipe(contactRef);
        for (int row = 0; stored && row < used.Count(); ++row)
            stored = ADO_Contact_AddContactConcession(contactRef, KeyNumber(used.At(row).key));
        EndRows(group);
        return stored;
    });
}
