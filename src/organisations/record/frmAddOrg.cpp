#include "organisations/record/frmAddOrg.h"

#include "contacts/lists/NotesPage.h"
#include "contacts/lists/VocabularyModule.h"
#include "controls/ListModel.h"
#include "forms/frames/FormBuilder.h"
#include "forms/progress/ProgressBox.h"
#include "organisations/record/OrganisationContactsPage.h"
#include "organisations/record/OrganisationDetailsPage.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/OrganisationPlacesPage.h"
#include "organisations/record/OrganisationSave.h"
#include "platform/desktop/Dialogs.h"

frmAddOrg::frmAddOrg(QWidget *parent)
    : RecordForm({.form = QStringLiteral("frmAddOrg"),
                  .okBtn = QStringLiteral("OkBtn"),
                  .newCaption = QStringLiteral("New &Org"),
                  .word = QStringLiteral("organisation"),
                  .loading = QStringLiteral("Loading Organisation Information"),
                  .deleted = QStringLiteral("#Organisation Deleted#"),
                  .right = Right::Organisations},
                 parent)
{
    BuildPages();
    BuildButtons();
    WatchChanges();
    m_details->FillLists();
    StartRecord();
    resize(120 * fontMetrics().averageCharWidth(), sizeHint().height());
}

void frmAddOrg::BuildPages()
{
    m_details = FormBuilder::AddTab(Tabs(), new OrganisationDetailsPage, QStringLiteral("Details"),
                                    QStringLiteral("Details"));
    m_notes =
        FormBuilder::AddTab(Tabs(),
                            new NotesPage({QStringLiteral("Additonal notes about this organisation."),
                                           QStringLiteral("App&lied to this organisation:"), QString()}),
                            QStringLiteral("NotesCharacteristics"), QStringLiteral("Notes/Characteristics"));
    m_contacts = FormBuilder::AddTab(Tabs(), new OrganisationContactsPage, QStringLiteral("Contacts"),
                                     QStringLiteral("Contacts"));
    m_places = FormBuilder::AddTab(Tabs(), new OrganisationPlacesPage, QStringLiteral("FacilitiesVenues"),
                                   QStringLiteral("Facilities/Venues"));
}

void frmAddOrg::WatchChanges()
{
    ModifiedMark &modified = Modified();
    modified.Watch(m_details);
    modified.Watch(m_notes);
    const OrganisationLists lists = Lists();
    modified.Watch(lists.usedCriteria);
    modified.Watch(lists.usedFac);
    modified.Watch(lists.usedVenues);
    // Of the people only who they are belongs to the record; names and positions are stored elsewhere.
    connect(&lists.contacts, &ListModel::rowsInserted, &modified, &ModifiedMark::Set);
    connect(&lists.contacts, &ListModel::rowsRemoved, &modified, &ModifiedMark::Set);
    connect(&lists.contacts, &ListModel::modelReset, &modified, &ModifiedMark::Set);
}

void frmAddOrg::EditRecords(const QStringList &keys, bool edit, QWidget *parent)
{
    frmAddOrg form(parent);
    form.OpenRecords(keys, edit ? Open::Edit : Open::View);
    form.Run();
}

bool frmAddOrg::Exists(int key)
{
    return ADO_Organisation_CheckOrganisation(OrganRef(key)).value_or(true);
}

RecordForm::Found frmAddOrg::ReadRecord(int key)
{
    // A record that cannot be read must not leave the fields of the one before it.
    m_details->Clear();
    m_seen.clear();
    const ReadRow<OrganisationFile> file = Organisation_Show(OrganRef(key), Lists());
    if (file)
        ShowRecord(file->record);
    if (file && file->isWhole)
        m_seen = Organisation_Values(m_record, Lists());
    return FoundIn(file);
}

void frmAddOrg::ShowPlaceholder(const QString &text)
{
    m_details->ShowPlaceholder(text);
}

void frmAddOrg::ShowRecord(const OrganisationRecord &record)
{
    m_details->Load(record);
    m_notes->SetNotes(record.notes);
    m_record = record;
}

OrganisationLists frmAddOrg::Lists()
{
    return {m_notes->AvailCriteria(), m_notes->UsedCriteria(), m_contacts->ContactInfo(),
            m_places->AvailFac(),     m_places->UsedFac(),     m_places->AvailVenues(),
            m_places->UsedVenues()};
}

void frmAddOrg::ApplyState(State state)
{
    const bool locked = state == State::View;
    m_details->SetLocked(locked);
    m_notes->SetLocked(locked);
    m_contacts->SetLocked(locked);
    m_places->SetLocked(locked);
    if (state == State::NewRecord)
        NewBtn()->hide();
}

const RequiredMarks &frmAddOrg::Required() const
{
    return m_details->Required();
}

QString frmAddOrg::RecordName() const
{
    return m_details->Name();
}

bool frmAddOrg::MayStartNew()
{
    return Dialogs::MsgBox(QStringLiteral("Clear forms?"), QStringLiteral("New Record"),
                           Dialogs::Buttons::YesNo, Dialogs::Icon::Question) == Dialogs::Answer::Yes;
}

RecordSaved frmAddOrg::StoreRecord(int key, Progress &progress)
{
    OrganisationRecord record;
    m_details->Store(record);
    record.notes = m_notes->Notes();
    OrganisationRecord stored = record;
    const RecordSaved saved = Organisation_Save(OrganRef(key), stored, Lists(), m_seen, progress);
    // What joined shows even where nothing was stored: `m_seen` has it.
    if (stored != record)
        ShowRecord(stored);
    return saved;
}

bool frmAddOrg::AfterStore(int key)
{
    ProgressBox::Run(
        this, QStringLiteral("Organisation Characteristics"), QStringLiteral("contacts"),
        QStringLiteral("The rest were not offered them; the next update does so."), [&](Progress &progress) {
            Organisation_OfferCharacteristics(OrganRef(key), m_contacts->ContactInfo(), progress);
        });
    return true;
}

void frmAddOrg::ClearPages()
{
    m_details->Clear();
    m_notes->Clear();
    m_places->Clear();
    m_contacts->ContactInfo().Clear();
}

void frmAddOrg::EmptyPages()
{
    m_details->Clear();
    m_notes->SetNotes({});
    ADO_Organisation_ShowAvailable(Lists());
}
