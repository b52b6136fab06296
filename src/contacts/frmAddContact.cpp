#include "contacts/frmAddContact.h"

#include "attributes/AttributesPage.h"
#include "contacts/ContactCoursesPage.h"
#include "contacts/ContactDetailsPage.h"
#include "contacts/ContactGroupsPage.h"
#include "contacts/ContactModule.h"
#include "contacts/ContactNotesPage.h"
#include "contacts/ContactRolesPage.h"
#include "controls/ListModel.h"
#include "core/Session.h"
#include "database/Security.h"
#include "forms/FormBuilder.h"
#include "forms/RecordNavigator.h"
#include "organisations/OrganisationODBC.h"
#include "platform/Dialogs.h"

namespace
{
constexpr int mayAdd = 2;
constexpr int mayChange = 3;

bool MayWithContacts(int level)
{
    return UserRight(ContactSectionOf(ContactSection::Contacts).right) >= level;
}
} // namespace

frmAddContact::frmAddContact(QWidget *parent)
    : FormDialog(QStringLiteral("frmAddContact"), QStringLiteral("New Record"), parent)
{
    FormBuilder form(this);
    m_warn = form.Line(QStringLiteral("Warn"), QString());
    m_warn->hide();
    m_tabs = form.Tabs(QStringLiteral("SSActiveTabs1"));
    m_details = FormBuilder::AddTab(m_tabs, new ContactDetailsPage, QStringLiteral("Details"),
                                    QStringLiteral("Details"));
    m_notes = FormBuilder::AddTab(m_tabs, new ContactNotesPage, QStringLiteral("NotesAndCharacteristics"),
                                  QStringLiteral("Notes and Characteristics"));
    m_attributes = FormBuilder::AddTab(m_tabs, new AttributesPage, QStringLiteral("CustomAttributes"),
                                       QStringLiteral("Custom Attributes"));
    m_roles =
        FormBuilder::AddTab(m_tabs, new ContactRolesPage, QStringLiteral("Roles"), QStringLiteral("Roles"));
    m_groups = FormBuilder::AddTab(m_tabs, new ContactGroupsPage, QStringLiteral("Groups"),
                                   QStringLiteral("Groups"));
    m_courses = FormBuilder::AddTab(m_tabs, new ContactCoursesPage, QStringLiteral("Courses"),
                                    QStringLiteral("Courses"));
    BuildButtons(form);

    WatchChanges();
    m_navigator = new RecordNavigator(
        m_prevBtn, m_nextBtn, *m_modified, [this] { Save(); },
        [this](const QString &key) { ShowContact(KeyNumber(key)); }, this);

    connect(m_okBtn, &QPushButton::clicked, this, &frmAddContact::Save);
    connect(m_newBtn, &QPushButton::clicked, this, &frmAddContact::NewRecord);
    connect(m_editBtn, &QPushButton::clicked, this, &frmAddContact::ToggleEdit);
    connect(m_clearBtn, &QPushButton::clicked, this, &frmAddContact::ClearAll);
    connect(m_refreshBtn, &QPushButton::clicked, this, &frmAddContact::Refresh);
    connect(m_exitBtn, &QPushButton::clicked, this, &frmAddContact::reject);
    connect(m_tabs, &QTabWidget::currentChanged, this, &frmAddContact::ShowTab);

    m_details->FillLists();
    m_notes->FillLists();
    m_attributes->FillLists();
    m_roles->FillLists();
    m_groups->FillLists();
    SetState(State::NewRecord);
    ClearAll();
    m_modified->Clear();
    resize(140 * fontMetrics().averageCharWidth(), sizeHint().height());
}

void frmAddContact::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_okBtn = form.DefaultButton(QStringLiteral("OKBtn"), QStringLiteral("&Add Record"));
    m_newBtn = form.Button(QStringLiteral("NewBtn"), QStringLiteral("New &Contact"));
    m_editBtn = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit"));
    m_prevBtn = form.Button(QStringLiteral("PrevBtn"), QStringLiteral("<< &Prev"));
    m_nextBtn = form.Button(QStringLiteral("NextBtn"), QStringLiteral("&Next >>"));
    m_clearBtn = form.Button(QStringLiteral("ClearBtn"), QStringLiteral("&Clear All"));
    m_refreshBtn = form.Button(QStringLiteral("MainRefBtn"), QStringLiteral("&Refresh"));
    form.Gap();
    m_exitBtn = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
}

void frmAddContact::WatchChanges()
{
    m_modified = new ModifiedMark(m_okBtn, this);
    m_modified->Watch(m_details);
    m_modified->Watch(m_notes);
    m_modified->Watch(m_notes->UsedCriteria());
    m_modified->Watch(m_attributes->AttribList());
    // The fields of a role, and the choice of a group, are no part of the record before they are added.
    m_modified->Watch(m_roles->RolesInfo());
    connect(m_groups, &ContactGroupsPage::MembersChanged, m_modified, &ModifiedMark::Set);
    // Typing in the list of group types marks the forename by its own text: as it always was.
    connect(m_groups, &ContactGroupsPage::TypeEdited, m_details, &ContactDetailsPage::MarkForename);
}

int frmAddContact::AddRecord(QWidget *parent)
{
    gDialogResult = 0;
    frmAddContact form(parent);
    form.exec();
    return gDialogResult;
}

void frmAddContact::OpenRecords(const QStringList &keys, int index)
{
    m_navigator->SetKeys(keys, index);
    ShowContact(KeyNumber(m_navigator->Key()));
}

void frmAddContact::ShowContact(int contactRef)
{
    m_contactRef = contactRef;
    m_gone = true;
    Contact_Show(*this, contactRef);
    // A read that failed leaves the record locked, with the way to try again.
    SetState(State::View);
    m_warn->hide();
    m_modified->Clear();
    ShowTab(m_tabs->currentIndex());
}

void frmAddContact::ShowLoading(const QString &notice)
{
    m_tabs->setEnabled(false);
    m_editBtn->hide();
    m_warn->setText(notice);
    m_warn->show();
}

void frmAddContact::ShowDeleted(const QString &placeholder)
{
    m_details->ShowPlaceholder(placeholder);
}

void frmAddContact::ShowRecord(const ContactRecord &record)
{
    m_details->Load(record);
    m_notes->Load(record);
    m_groups->ForgetGroup();
}

ListModel &frmAddContact::AvailCriteria()
{
    return m_notes->AvailCriteria();
}

ListModel &frmAddContact::UsedCriteria()
{
    return m_notes->UsedCriteria();
}

TreeModel &frmAddContact::AttribList()
{
    return m_attributes->AttribList();
}

ListModel &frmAddContact::RolesInfo()
{
    return m_roles->RolesInfo();
}

ListModel &frmAddContact::GroupList()
{
    return m_groups->GroupList();
}

TreeModel &frmAddContact::GroupTree()
{
    return m_groups->GroupTree();
}

void frmAddContact::ShowLoaded()
{
    m_roles->SetContact(m_contactRef);
    m_groups->SetContact(m_contactRef, m_details->Name());
    m_gone = false;
}

void frmAddContact::SetState(State state)
{
    m_state = state;
    const bool isNew = state == State::NewRecord;
    const bool editing = state != State::View;
    m_details->SetLocked(!editing);
    m_notes->SetLocked(!editing);
    m_attributes->SetLocked(!editing);
    m_roles->SetLocked(!editing);
    m_groups->SetLocked(!editing);
    m_tabs->setEnabled(isNew || !m_gone);
    for (int tab = 1; tab < m_tabs->count(); ++tab)
        m_tabs->setTabEnabled(tab, !isNew);

    m_okBtn->setText(isNew ? QStringLiteral("&Add Record") : QStringLiteral("&Update Record"));
    m_okBtn->setEnabled(editing);
    m_clearBtn->setEnabled(editing);
    m_newBtn->setVisible(MayWithContacts(mayAdd));
    m_newBtn->setEnabled(!isNew);
    m_editBtn->setVisible(!isNew && !m_gone && MayWithContacts(mayChange));
    m_editBtn->setText(editing ? QStringLiteral("&View") : QStringLiteral("&Edit"));
    m_prevBtn->setVisible(!isNew && m_navigator->Count() > 0);
    m_nextBtn->setVisible(!isNew && m_navigator->Count() > 0);
    m_refreshBtn->setVisible(!isNew);
    ShowCaption();
}

void frmAddContact::ShowCaption()
{
    switch (m_state) {
    case State::NewRecord:
        setWindowTitle(QStringLiteral("New Record"));
        break;
    case State::View:
        setWindowTitle(m_details->Name() % m_navigator->Position());
        break;
    case State::Edit:
        setWindowTitle(u"Editing " % m_details->Name());
        break;
    }
}

void frmAddContact::ShowTab(int tab)
{
    if (m_tabs->widget(tab) == m_courses)
        m_courses->ShowHistory(m_gone ? 0 : m_contactRef);
}

bool frmAddContact::Save()
{
    if (!m_details->Required().MissingList().isEmpty())
        m_tabs->setCurrentIndex(0);
    if (!m_details->Required().Complete())
        return false;

    ContactRecord record;
    m_details->Store(record);
    m_notes->Store(record);
    const int saved =
        m_state == State::NewRecord ? Contact_Add(record) : Contact_Update(m_contactRef, record);
    if (saved <= 0)
        return false;
    m_contactRef = saved;
    m_gone = false;
    gDialogResult = saved;

    if (!StoreLists()) {
        // The person stands; what the pages show is still to be stored.
        SetState(State::Edit);
        return false;
    }
    const bool isGiven = OfferOrganisationCharacteristics(record.organRef);
    // They are stored before the record is shown anew, which ticks what is stored.
    if (!m_attributes->StoreAttributes(saved)) {
        SetState(State::Edit);
        return false;
    }
    if (isGiven)
        ShowContact(saved);
    m_modified->Clear();
    SetState(State::View);
    return true;
}

bool frmAddContact::StoreLists()
{
    m_roles->SetContact(m_contactRef);
    m_groups->SetContact(m_contactRef, m_details->Name());
    return m_groups->StoreGroup() && m_notes->StoreCharacteristics(m_contactRef) &&
           m_roles->StoreRoles(m_contactRef);
}

bool frmAddContact::OfferOrganisationCharacteristics(int organRef)
{
    if (organRef <= 1 || !ADO_Organisation_CheckCharswithContact(organRef, m_contactRef))
        return false;
    const Dialogs::Answer answer = Dialogs::MsgBox(
        QStringLiteral("Would you like to apply the Organisation Characteristics to this Contact?"),
        QStringLiteral("Organisation Characteristics"), Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
    if (answer != Dialogs::Answer::Yes)
        return false;
    ADO_Organisation_AddSingleContactConcession(organRef, m_contactRef);
    return true;
}

bool frmAddContact::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmAddContact::done(int result)
{
    gDialogResult = m_contactRef;
    FormDialog::done(result);
}

void frmAddContact::NewRecord()
{
    if (!MayLeave())
        return;
    m_contactRef = 0;
    m_gone = false;
    m_roles->SetContact(0);
    m_roles->RolesInfo().Clear();
    m_groups->SetContact(0, {});
    m_navigator->SetKeys({});
    m_tabs->setCurrentIndex(0);
    SetState(State::NewRecord);
    ClearAll();
    m_modified->Clear();
}

void frmAddContact::ToggleEdit()
{
    SetState(m_state == State::Edit ? State::View : State::Edit);
}

void frmAddContact::ClearAll()
{
    m_details->Clear();
    m_notes->Clear();
    m_attributes->Clear();
    m_roles->ClearFields();
    m_groups->Clear();
}

void frmAddContact::Refresh()
{
    if (MayLeave())
        ShowContact(m_contactRef);
}
