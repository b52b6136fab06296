#include "contacts/maintenance/frmContactMain.h"

#include "contacts/groups/frmGroupName.h"
#include "contacts/lists/frmContactMainAddEdit.h"
#include "contacts/record/ContactModule.h"
#include "contacts/roles/RoleModule.h"
#include "contacts/roles/frmAddEditRoleTypes.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "forms/frames/FormBuilder.h"
#include "forms/lists/DeleteSelected.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/frmAddOrg.h"

namespace
{
/// Shows a section's dialog, on the row of `key` where that is not 0; what was stored, if anything.
template <typename Form>
std::optional<frmContactMain::Stored> RunDialog(Form &form, int key)
{
    if (key > 0)
        form.EditItem(key);
    const int stored = form.Run();
    if (stored <= 0)
        return {};
    return frmContactMain::Stored{stored, form.Item()};
}

Deletion Delete(ContactSection section, const ListItem &item)
{
    const int key = KeyNumber(item.key);
    bool done = false;
    if (section == ContactSection::Organisations) {
        done = Organisation_Delete(OrganRef(key));
    } else if (section == ContactSection::Roles) {
        if (!RoleType_MayDelete(RoleTypeRef(key), item.text))
            return Deletion::Kept;
        done = ADO_Contact_DeleteRole(RoleTypeRef(key));
    } else {
        done = Contact_DeleteItem(section, key);
    }
    return done ? Deletion::Done : Deletion::Failed;
}
} // namespace

frmContactMain::frmContactMain(QWidget *parent)
    : SectionsDialog(QStringLiteral("frmContactMain"), QStringLiteral("Contact Maintenance"), parent)
{
    QList<std::pair<int, QString>> sections;
    for (const ContactSectionInfo &section : ContactSections())
        sections.append({static_cast<int>(section.code), section.caption});
    ShowSections(sections);
}

void frmContactMain::FillItems()
{
    Items().SetColumns({ContactSectionOf(Section()).caption});
    Contact_FillListView(Section(), Items());
}

void frmContactMain::ApplyRights(bool chosen)
{
    const Level level = UserRight(ContactSectionOf(Section()).right);
    Buttons().Apply(level, chosen);
    Buttons().edit->setEnabled(level >= Level::Edit && chosen);
}

void frmContactMain::AddItem()
{
    if (Section() == ContactSection::Organisations) {
        AddOrganisation();
        return;
    }
    const std::optional<Stored> added = OpenDialog(0);
    if (!added)
        return;
    AddRow(u'!' % SqlNumber(added->key), FormatRefLabel(added->item.reference, added->item.name));
}

void frmContactMain::AddOrganisation()
{
    const int added = frmAddOrg::AddRecord(this);
    if (added <= 0)
        return;
    const QString key = u'?' % QString::number(added);
    // It opens once more, to be looked over and completed.
    frmAddOrg::EditRecords({key}, true, this);
    ShowSection();
    SelectKey(key);
}

void frmContactMain::EditItem()
{
    if (Section() == ContactSection::Organisations) {
        frmAddOrg::EditRecords(Items().SelectedKeys(), true, this);
        Refresh();
        return;
    }
    const int row = Items().SelectedRows().front();
    const int key = KeyNumber(Items().At(row).key);
    // What another workstation deleted meanwhile leaves the list.
    if (const auto item = Contact_ViewItem(Section(), key); !item || item->name.isEmpty()) {
        Refresh();
        return;
    }
    if (const std::optional<Stored> stored = OpenDialog(key))
        Items().SetText(row, FormatRefLabel(stored->item.reference, stored->item.name));
    else
        Refresh();
}

void frmContactMain::DeleteItems()
{
    const ContactSection section = Section();
    DeleteSelected(Items(), [section](const ListItem &item) { return Delete(section, item); });
}

std::optional<frmContactMain::Stored> frmContactMain::OpenDialog(int key)
{
    switch (Section()) {
    case ContactSection::Groups: {
        frmGroupName form(this);
        return RunDialog(form, key);
    }
    case ContactSection::Roles: {
        frmAddEditRoleTypes form(this);
        return RunDialog(form, key);
    }
    default: {
        const QString caption = ContactSectionOf(Section()).caption;
        frmContactMainAddEdit form(Section(), this);
        form.SetCaptions(caption, caption % u':');
        return RunDialog(form, key);
    }
    }
}
