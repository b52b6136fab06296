#include "contacts/lists/VocabularyModule.h"

#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ContactListODBC.h"
#include "controls/ComboModel.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"

#include <array>

namespace
{
const std::array<ContactSectionInfo, 11> &Sections()
{
    static const std::array<ContactSectionInfo, 11> sections = {{
        {ContactSection::Contacts, "", "Contacts", "", "ContactRef", "person", Right::Contacts},
        {ContactSection::Titles, "Titles", "Designation", "Title", "Designation_ID", "title", Right::Titles},
        {ContactSection::Cities, "Cities", "City", "City", "City_ID", "town", Right::Cities},
        {ContactSection::Counties, "Counties", "County", "County", "County_ID", "county", Right::Counties},
        {ContactSection::Countries, "Countries", "Country", "Country", "Country_ID", "country",
         Right::Countries},
        {ContactSection::EthnicTypes, "Ethnic Types", "EthnicGroup", "Type", "Ethnic_ID", "ethnic type",
         Right::EthnicTypes},
        {ContactSection::Characteristics, "Characteristics", "Concessions", "Name", "ConcessionRef",
         "characteristic", Right::Characteristics},
        {ContactSection::GroupTypes, "Group Types", "LinkNames", "LinkName", "LinkRef", "group type",
         Right::GroupTypes},
        {ContactSection::Groups, "Groups", "GroupNames", "Name", "GroupRef", "group", Right::Groups},
        {ContactSection::Organisations, "Organisations", "Organisations", "OrganName", "OrganRef",
         "organisation", Right::Organisations},
        {ContactSection::Roles, "Roles", "RoleTypes", "Name", "RoleTypeRef", "role", Right::Roles},
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
} // namespace

const ContactSectionInfo &ContactSectionOf(ContactSection code)
{
    return Sections()[static_cast<size_t>(code)];
}

std::span<const ContactSectionInfo> ContactSections()
{
    return std::span(Sections()).subspan(1);
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
    const bool hadChoice = list.Current() >= 0;
    const int before = list.CurrentData();
    const int key = add(item);
    fill();
    if (key >= 1) {
        list.ChooseData(key);
        return;
    }
    const int row = RowOfName(list, item.name);
    if (row < 0 && !hadChoice)
        list.SetCurrent(-1);
    else
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

std::function<QString(const QString &key)> Contact_NamesIn(ContactSection code)
{
    return [code](const QString &key) {
        const auto item = Contact_ViewItem(code, key.toInt());
        return item ? item->name : QString();
    };
}

ReadRow<RefLabel> Contact_ViewItem(ContactSection code, int key)
{
    const ContactSectionInfo &section = ContactSectionOf(code);
    return ADO_ViewItem(key, section.keyColumn, section.nameColumn, section.table);
}
