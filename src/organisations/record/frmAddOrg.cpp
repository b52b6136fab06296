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
    modified.Watch(UsedCriteria());
    modified.Watch(UsedFac());
    modified.Watch(UsedVenues());
    // Of the people only who they are belongs to the record; names and positions are stored elsewhere.
    connect(&ContactInfo(), &ListModel::rowsInserted, &modified, &ModifiedMark::Set);
    connect(&ContactInfo(), &ListModel::rowsRemoved, &modified, &ModifiedMark::Set);
    connect(&ContactInfo(), &ListModel::modelReset, &modified, &ModifiedMark::Set);
}

void frmAddOrg::EditRecords(const QStringList &keys, bool edit, QWidget *parent)
{
    frmAddOrg form(parent);
    form.OpenRecords(keys, edit ? Open::Edit : Open::View);
    form.exec();
}

bool frmAddOrg::Exists(int key)
{
    return ADO_Organisation_CheckOrganisation(key).value_or(true);
}

void frmAddOrg::ReadRecord(int key)
{
    // What the next one has not must not be that of the one before.
    m_details->Clear();
    m_seen.clear();
    Organisation_Show(*this, key);
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

void frmAddOrg::ShowLoaded()
{
    RecordForm::ShowLoaded();
    m_seen = Organisation_Values(m_record, Links());
}

OrganisationLinks frmAddOrg::Links()
{
    return {ContactInfo(), UsedCriteria(), AvailFac(), UsedFac(), AvailVenues(), UsedVenues()};
}

ListModel &frmAddOrg::AvailCriteria()
{
    return m_notes->AvailCriteria();
}

ListModel &frmAddOrg::UsedCriteria()
{
    return m_notes->UsedCriteria();
}

ListModel &frmAddOrg::ContactInfo()
{
    return m_contacts->ContactInfo();
}

ListModel &frmAddOrg::AvailFac()
{
    return m_places->AvailFac();
}

ListModel &frmAddOrg::UsedFac()
{
    return m_places->UsedFac();
}

ListModel &frmAddOrg::AvailVenues()
{
    return m_places->AvailVenues();
}

ListModel &frmAddOrg::UsedVenues()
{
    return m_places->UsedVenues();
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
    const RecordSaved saved = Organisation_Save(key, stored, Links(), m_seen, progress);
    // What joined shows even where nothing was stored: `m_seen` has it.
    if (stored != record)
        ShowRecord(stored);
    return saved;
}

bool frmAddOrg::AfterStore(int key)
{
    ProgressBox::Run(
        this, QStringLiteral("Organisation Characteristics"), QStringLiteral("contacts"),
        QStringLiteral("The rest were not offered them; the next update does so."),
        [&](Progress &progress) { Organisation_OfferCharacteristics(key, ContactInfo(), progress); });
    return true;
}

void frmAddOrg::ClearPages()
{
    m_details->Clear();
    m_notes->Clear();
    m_places->Clear();
    ContactInfo().Clear();
}

void frmAddOrg::EmptyPages()
{
    m_details->Clear();
    m_notes->SetNotes({});
    ADO_Organisation_ShowAvailable(*this);
}
