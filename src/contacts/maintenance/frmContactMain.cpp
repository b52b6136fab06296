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
    : FormDialog(QStringLiteral("frmContactMain"), QStringLiteral("Contact Maintenance"), parent)
{
    for (const ContactSectionInfo &section : ContactSections())
        m_sections.Add({u'?' % QString::number(static_cast<int>(section.code)), section.caption});
    m_sections.SetColumns({QStringLiteral("Section")});
    Build();
    connect(m_sections.Selection(), &QItemSelectionModel::selectionChanged, this,
            &frmContactMain::ShowSection);
    connect(m_items.Selection(), &QItemSelectionModel::selectionChanged, this, &frmContactMain::ApplyRights);
    m_sections.SelectFirst();
    resize(fontMetrics().averageCharWidth() * 96, fontMetrics().lineSpacing() * 28);
}

void frmContactMain::Build()
{
    FormBuilder form(this);
    form.BeginColumns(2);
    ListView *sections = form.List(QStringLiteral("SecList"), {}, m_sections);
    sections->setAccessibleName(QStringLiteral("Sections"));
    form.NextColumn(5);
    m_list = form.List(QStringLiteral("MainList"), {}, m_items, ListView::Choice::Multi);
    m_list->setAccessibleName(QStringLiteral("Items of the section"));
    m_list->SetEmptyText(QStringLiteral("Nothing in this section yet."));
    form.EndColumns();
    m_buttons.emplace(form, m_list);

    connect(m_buttons->add, &QPushButton::clicked, this, &frmContactMain::AddItem);
    connect(m_buttons->edit, &QPushButton::clicked, this, &frmContactMain::EditItem);
    connect(m_buttons->del, &QPushButton::clicked, this, &frmContactMain::DeleteItems);
    connect(m_buttons->refresh, &QPushButton::clicked, this, &frmContactMain::Refresh);
    connect(m_buttons->exit, &QPushButton::clicked, this, &frmContactMain::reject);
    connect(sections, &ListView::Opened, this, [this] { m_list->setFocus(); });
}

ContactSection frmContactMain::Section() const
{
    const int row = qMax(0, m_sections.CurrentRow());
    return static_cast<ContactSection>(KeyNumber(m_sections.At(row).key));
}

Level frmContactMain::UserLevel() const
{
    return UserRight(ContactSectionOf(Section()).right);
}

void frmContactMain::ShowSection()
{
    m_items.SetColumns({ContactSectionOf(Section()).caption});
    Contact_FillListView(Section(), m_items);
    ApplyRights();
}

void frmContactMain::Refresh()
{
    const QStringList chosen = m_items.SelectedKeys();
    ShowSection();
    if (!chosen.isEmpty())
        SelectKey(u'?' % chosen.first().mid(1));
}

void frmContactMain::SelectKey(const QString &key)
{
    const int row = m_items.Find(key);
    if (row < 0)
        return;
    m_items.SelectOnly(row);
    m_list->ShowRow(row);
}

void frmContactMain::ApplyRights()
{
    const Level level = UserLevel();
    const bool chosen = m_items.Selection()->hasSelection();
    m_buttons->Apply(level, chosen);
    m_buttons->edit->setEnabled(level >= Level::Edit && chosen);
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
    const QString key = u'!' % SqlNumber(added->key);
    m_items.Add({key, FormatRefLabel(added->item.reference, added->item.name)});
    m_items.sort(0, Qt::AscendingOrder);
    m_list->KeepOrder();
    SelectKey(key);
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
        frmAddOrg::EditRecords(m_items.SelectedKeys(), true, this);
        Refresh();
        return;
    }
    const int row = m_items.SelectedRows().front();
    const int key = KeyNumber(m_items.At(row).key);
    // What another workstation deleted meanwhile leaves the list.
    if (const auto item = Contact_ViewItem(Section(), key); !item || item->name.isEmpty()) {
        Refresh();
        return;
    }
    if (const std::optional<Stored> stored = OpenDialog(key))
        m_items.SetText(row, FormatRefLabel(stored->item.reference, stored->item.name));
    else
        Refresh();
}

void frmContactMain::DeleteItems()
{
    const ContactSection section = Section();
    DeleteSelected(m_items, [section](const ListItem &item) { return Delete(section, item); });
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
