#include "contacts/record/frmAddContact.h"

#include "attributes/AttributesPage.h"
#include "contacts/record/ContactCoursesPage.h"
#include "contacts/record/ContactDetailsPage.h"
#include "contacts/record/ContactGroupsPage.h"
#include "contacts/record/ContactHint.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/ContactNotesPage.h"
#include "contacts/record/ContactRolesPage.h"
#include "contacts/record/ContactSave.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "forms/frames/FormBuilder.h"
#include "organisations/lists/OrganisationODBC.h"
#include "platform/desktop/Dialogs.h"

#include <algorithm>

frmAddContact::frmAddContact(QWidget *parent)
    : RecordForm({.form = QStringLiteral("frmAddContact"),
                  .okBtn = QStringLiteral("OKBtn"),
                  .newCaption = QStringLiteral("New &Contact"),
                  .word = QStringLiteral("contact"),
                  .loading = QStringLiteral("Loading Contact Information"),
                  .deleted = QStringLiteral("#Contact Deleted#"),
                  .right = Right::Contacts,
                  .canRefresh = true},
                 parent)
{
    BuildPages();
    BuildButtons(m_hint);
    WatchChanges();
    connect(Tabs(), &QTabWidget::currentChanged, this, &frmAddContact::ShowTab);

    m_details->FillLists();
    m_notes->FillLists();
    m_attributes->FillLists();
    m_roles->FillLists();
    m_groups->FillLists();
    StartRecord();
    resize(140 * fontMetrics().averageCharWidth(), sizeHint().height());
}

bool frmAddContact::ShowRecords(const QStringList &keys, QWidget *parent)
{
    frmAddContact form(parent);
    form.OpenRecords(keys);
    return form.Run() > 0;
}

void frmAddContact::OpenBeside(const QStringList &keys, QWidget *caller, const std::function<void()> &changed)
{
    const QList<frmAddContact *> open = caller->window()->findChildren<frmAddContact *>();
    for (frmAddContact *form : open) {
        if (keys.size() == 1 && form->isVisible() && form->Key() == KeyNumber(keys.first())) {
            form->activateWindow();
            form->raise();
            return;
        }
    }
    auto *form = new frmAddContact(caller->window());
    if (!keys.isEmpty())
        form->OpenRecords(keys);
    const auto isTaken = [form](const frmAddContact *other) {
        return other->isVisible() && other->StepsAside() == form->StepsAside();
    };
    while (std::any_of(open.begin(), open.end(), isTaken))
        form->StepAside();
    form->RecordForm::OpenBeside(caller, changed);
}

void frmAddContact::BuildPages()
{
    m_details = FormBuilder::AddTab(Tabs(), new ContactDetailsPage, QStringLiteral("Details"),
                                    QStringLiteral("Details"));
    m_notes = FormBuilder::AddTab(Tabs(), new ContactNotesPage, QStringLiteral("NotesAndCharacteristics"),
                                  QStringLiteral("Notes and Characteristics"));
    m_attributes = FormBuilder::AddTab(Tabs(), new AttributesPage, QStringLiteral("CustomAttributes"),
                                       QStringLiteral("Custom Attributes"));
    m_roles =
        FormBuilder::AddTab(Tabs(), new ContactRolesPage, QStringLiteral("Roles"), QStringLiteral("Roles"));
    m_groups = FormBuilder::AddTab(Tabs(), new ContactGroupsPage, QStringLiteral("Groups"),
                                   QStringLiteral("Groups"));
    m_courses = FormBuilder::AddTab(Tabs(), new ContactCoursesPage, QStringLiteral("Courses"),
                                    QStringLiteral("Courses"));
    m_hint = new ContactHint(m_details->Typed(), this);
    m_hint->setObjectName(QStringLiteral("SimilarHint"));
    connect(m_hint, &ContactHint::Opened, this, [this](const QStringList &keys) { ShowRecords(keys, this); });
}

void frmAddContact::WatchChanges()
{
    ModifiedMark &modified = Modified();
    modified.Watch(m_details);
    modified.Watch(m_notes);
    modified.Watch(m_notes->UsedCriteria());
    modified.Watch(m_attributes->AttribList());
    // The fields of a role, and the choice of a group, are no part of the record before they are added.
    modified.Watch(m_roles->RolesInfo());
    connect(m_groups, &ContactGroupsPage::MembersChanged, &modified, &ModifiedMark::Set);
    // Typing in the list of group types marks the forename by its own text: as it always was.
    connect(m_groups, &ContactGroupsPage::TypeEdited, m_details, &ContactDetailsPage::MarkForename);
}

bool frmAddContact::Exists(int key)
{
    return ADO_Contact_CheckContact(ContactRef(key)).value_or(true);
}

RecordForm::Found frmAddContact::ReadRecord(int key)
{
    // A record that cannot be read must not leave the fields of the one before it.
    m_details->Clear();
    m_seen.clear();
    const ReadRow<ContactFile> file =
        Contact_Show(ContactRef(key), Lists(), {m_groups->GroupList(), m_groups->GroupTree()});
    if (file)
        ShowRecord(file->record);
    if (file && file->isWhole) {
        TellPages(ContactRef(key));
        m_seen = Contact_Values(m_record, Lists());
    }
    return FoundIn(file);
}

void frmAddContact::RecordRead()
{
    ShowTab(Tabs()->currentIndex());
}

void frmAddContact::ShowPlaceholder(const QString &text)
{
    m_details->ShowPlaceholder(text);
}

void frmAddContact::ShowRecord(const ContactRecord &record)
{
    m_details->Load(record);
    m_notes->Load(record);
    m_groups->ReadGroupAgain();
    m_record = record;
}

ContactLists frmAddContact::Lists()
{
    return {m_notes->AvailCriteria(), m_notes->UsedCriteria(), m_roles->RolesInfo(),
            m_attributes->AttribList()};
}

void frmAddContact::TellPages(ContactRef contactRef)
{
    m_roles->SetContact(contactRef);
    m_groups->SetContact(contactRef, contactRef ? m_details->Name() : QString());
}

void frmAddContact::ApplyState(State state)
{
    const bool isNew = state == State::NewRecord;
    const bool locked = state == State::View;
    m_details->SetLocked(locked);
    m_notes->SetLocked(locked);
    m_attributes->SetLocked(locked);
    m_roles->SetLocked(locked);
    m_groups->SetLocked(locked);
    for (int tab = 1; tab < Tabs()->count(); ++tab)
        Tabs()->setTabEnabled(tab, !isNew);
    m_hint->Watch(isNew);
}

void frmAddContact::ShowTab(int tab)
{
    if (Tabs()->widget(tab) == m_courses)
        m_courses->ShowHistory(ContactRef(IsGone() ? 0 : Key()));
}

const RequiredMarks &frmAddContact::Required() const
{
    return m_details->Required();
}

QString frmAddContact::RecordName() const
{
    return m_details->Name();
}

RecordSaved frmAddContact::StoreRecord(int key, Progress &progress)
{
    if (!DaysAreReadable(m_details))
        return {};
    ContactRecord record;
    m_details->Store(record);
    m_notes->Store(record);
    if (!m_groups->LeaveOutDeleted())
        return {};
    if (!Contact_LeaveOutDeleted(Lists()))
        return {};
    m_record = record;
    const RecordSaved saved =
        Contact_Save(ContactRef(key), m_record, Lists(), m_groups->Changed(), m_seen, progress);
    if (saved.key < 1)
        return saved;
    if (m_record != record) {
        m_details->Load(m_record);
        m_notes->Load(m_record);
    }
    TellPages(ContactRef(saved.key));
    return saved;
}

bool frmAddContact::AfterStore(int key)
{
    if (m_groups->Changed().groupRef)
        m_groups->ShowStored();
    const OrganRef organRef(m_details->OrganRef());
    const bool isGiven = WantsOrganisationCharacteristics(organRef, ContactRef(key));
    // Another workstation may have deleted the person while the question stood.
    if (isGiven && Exists(key))
        ADO_Organisation_AddSingleContactConcession(organRef, ContactRef(key));
    return isGiven;
}

bool frmAddContact::WantsOrganisationCharacteristics(OrganRef organRef, ContactRef contactRef) const
{
    return organRef.number > 1 && ADO_Organisation_CheckCharswithContact(organRef, contactRef) &&
           Dialogs::MsgBox(
               QStringLiteral("Would you like to apply the Organisation Characteristics to this Contact?"),
               QStringLiteral("Organisation Characteristics"), Dialogs::Buttons::YesNo,
               Dialogs::Icon::Question) == Dialogs::Answer::Yes;
}

void frmAddContact::ClearPages()
{
    m_details->Clear();
    m_notes->Clear();
    m_attributes->Clear();
    m_roles->ClearFields();
    m_groups->Clear();
}

void frmAddContact::EmptyPages()
{
    TellPages(ContactRef(0));
    m_roles->RolesInfo().Clear();
    ClearPages();
}

void frmAddContact::DetachPages()
{
    m_groups->ForgetGroup();
    TellPages(ContactRef(0));
}
