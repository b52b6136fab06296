#include "organisations/record/OrganisationContactsPage.h"

#include "contacts/lists/ContactFields.h"
#include "contacts/manager/PeopleRun.h"
#include "contacts/manager/frmSelectContacts.h"
#include "contacts/record/frmAddContact.h"
#include "core/session/Session.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "organisations/record/OrganisationModule.h"

#include <QKeyEvent>

namespace
{
std::vector<ListItem> Items(const ListModel &list)
{
    std::vector<ListItem> items;
    items.reserve(static_cast<size_t>(list.Count()));
    for (int row = 0; row < list.Count(); ++row)
        items.push_back(list.At(row));
    return items;
}
} // namespace

OrganisationContactsPage::OrganisationContactsPage(QWidget *parent)
    : QWidget(parent)
{
    m_contacts.SetColumns({QStringLiteral("Contact"), QStringLiteral("Job Title")});
    FormBuilder form(this);
    ListView *list = form.List(QStringLiteral("ContactInfo"), {}, m_contacts, ListView::Choice::Multi);
    list->setAccessibleName(QStringLiteral("Contacts"));
    list->SetEmptyText(QStringLiteral("Nobody belongs to this organisation."));
    list->SetColumnChars({40, 30});
    form.BeginButtons(FormBuilder::Align::Start);
    m_addBtn = form.Button(QStringLiteral("AddContactBtn"), QStringLiteral("Add Contact(s)"));
    m_deleteBtn = form.Button(QStringLiteral("DeleteContactBtn"), QStringLiteral("Remove Contact(s)"));
    m_viewBtn = form.Button(QStringLiteral("ViewBtn"), QStringLiteral("View Contact(s)"));
    form.EndButtons();
    m_jobTitle = form.Text(QStringLiteral("JobTitle"), QStringLiteral("Job Title of the selected:"));
    form.Beside();
    m_updateBtn = form.Button(QStringLiteral("UpdateJTitleBtn"), QStringLiteral("Update"));
    m_updateBtn->setToolTip(QStringLiteral("Give the selected contacts this job title at once"));

    m_jobTitle->installEventFilter(this);
    connect(m_addBtn, &QPushButton::clicked, this, &OrganisationContactsPage::AddContacts);
    connect(m_deleteBtn, &QPushButton::clicked, this, &OrganisationContactsPage::RemoveContacts);
    connect(m_viewBtn, &QPushButton::clicked, this, &OrganisationContactsPage::ViewContacts);
    connect(m_updateBtn, &QPushButton::clicked, this, &OrganisationContactsPage::UpdateJobTitle);
    connect(list, &ListView::Opened, m_viewBtn, &QPushButton::click);
    connect(list, &ListView::DeletePressed, m_deleteBtn, &QPushButton::click);
    connect(&m_contacts, &ListModel::Changed, this, &OrganisationContactsPage::EnableButtons);
    connect(m_contacts.Selection(), &QItemSelectionModel::selectionChanged, this,
            &OrganisationContactsPage::EnableButtons);
    EnableButtons();
}

void OrganisationContactsPage::SetLocked(bool locked)
{
    m_locked = locked;
    LockFields(m_jobTitle, locked);
    EnableButtons();
}

void OrganisationContactsPage::EnableButtons()
{
    const bool chosen = m_contacts.Selection()->hasSelection();
    m_addBtn->setEnabled(!m_locked);
    m_deleteBtn->setEnabled(!m_locked && chosen);
    m_viewBtn->setEnabled(!m_contacts.IsEmpty());
    m_updateBtn->setEnabled(!m_locked && chosen);
}

/// Enter would otherwise store the organisation and forget the job title.
bool OrganisationContactsPage::eventFilter(QObject *watched, QEvent *event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event)->key() : 0;
    if (watched != m_jobTitle || (key != Qt::Key_Return && key != Qt::Key_Enter) || !m_updateBtn->isEnabled())
        return QWidget::eventFilter(watched, event);
    m_updateBtn->click();
    return true;
}

void OrganisationContactsPage::AddContacts()
{
    // The picker rewrites its target; what it leaves as it was is no change of the record.
    ListModel chosen;
    chosen.SetColumns({QStringLiteral("Contact"), QStringLiteral("Job Title")});
    chosen.Fill(Items(m_contacts));
    frmSelectContacts picker(this);
    PeopleStore store;
    store.take = [&chosen](QWidget *form, const ListModel &selected, const QSet<QString> &) {
        PeopleRun::Run(form, form->windowTitle(),
                       QStringLiteral("The rest are there too, without their positions."),
                       [&](Progress &progress) { Organisation_TakeContacts(selected, chosen, progress); });
        return true;
    };
    picker.Configure(frmSelectContacts::Mode::OrganisationContacts, chosen, store);
    picker.Run();
    if (chosen.Keys() != m_contacts.Keys())
        m_contacts.Fill(Items(chosen));
    Organisation_RefreshContacts(m_contacts);
}

void OrganisationContactsPage::RemoveContacts()
{
    Organisation_RemoveContacts(m_contacts);
}

void OrganisationContactsPage::ViewContacts()
{
    const QStringList chosen = m_contacts.SelectedKeys();
    frmAddContact::ShowRecords(chosen.isEmpty() ? m_contacts.Keys() : chosen, this);
    Organisation_RefreshContacts(m_contacts);
}

void OrganisationContactsPage::UpdateJobTitle()
{
    Organisation_UpdateJobTitles(m_contacts, m_jobTitle->text());
}
