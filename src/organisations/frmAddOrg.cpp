#include "organisations/frmAddOrg.h"

#include "contacts/ContactModule.h"
#include "contacts/NotesPage.h"
#include "controls/ListModel.h"
#include "core/Session.h"
#include "database/Security.h"
#include "forms/FormBuilder.h"
#include "forms/RecordNavigator.h"
#include "organisations/OrganisationContactsPage.h"
#include "organisations/OrganisationDetailsPage.h"
#include "organisations/OrganisationModule.h"
#include "organisations/OrganisationPlacesPage.h"
#include "platform/Dialogs.h"

namespace
{
constexpr int mayAdd = 2;
constexpr int mayChange = 3;

bool MayWithOrganisations(int level)
{
    return UserRight(ContactSectionOf(ContactSection::Organisations).right) >= level;
}
} // namespace

frmAddOrg::frmAddOrg(QWidget *parent)
    : FormDialog(QStringLiteral("frmAddOrg"), QStringLiteral("New Record"), parent)
{
    FormBuilder form(this);
    m_warn = form.Line(QStringLiteral("Warn"), QString());
    m_warn->hide();
    m_tabs = form.Tabs(QStringLiteral("SSActiveTabs1"));
    m_details = FormBuilder::AddTab(m_tabs, new OrganisationDetailsPage, QStringLiteral("Details"),
                                    QStringLiteral("Details"));
    m_notes =
        FormBuilder::AddTab(m_tabs,
                            new NotesPage({QStringLiteral("Additonal notes about this organisation."),
                                           QStringLiteral("App&lied to this organisation:"), QString()}),
                            QStringLiteral("NotesCharacteristics"), QStringLiteral("Notes/Characteristics"));
    m_contacts = FormBuilder::AddTab(m_tabs, new OrganisationContactsPage, QStringLiteral("Contacts"),
                                     QStringLiteral("Contacts"));
    m_places = FormBuilder::AddTab(m_tabs, new OrganisationPlacesPage, QStringLiteral("FacilitiesVenues"),
                                   QStringLiteral("Facilities/Venues"));
    BuildButtons(form);
    WatchChanges();

    connect(m_okBtn, &QPushButton::clicked, this, &frmAddOrg::Save);
    connect(m_newBtn, &QPushButton::clicked, this, [this] {
        if (Dialogs::MsgBox(QStringLiteral("Clear forms?"), QStringLiteral("New Record"),
                            Dialogs::Buttons::YesNo, Dialogs::Icon::Question) == Dialogs::Answer::Yes)
            NewRecord();
    });
    connect(m_editBtn, &QPushButton::clicked, this, &frmAddOrg::ToggleEdit);
    connect(m_clearBtn, &QPushButton::clicked, this, &frmAddOrg::ClearAll);
    connect(m_exitBtn, &QPushButton::clicked, this, &frmAddOrg::reject);

    m_details->FillLists();
    NewRecord();
    resize(120 * fontMetrics().averageCharWidth(), sizeHint().height());
}

void frmAddOrg::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_okBtn = form.DefaultButton(QStringLiteral("OkBtn"), QStringLiteral("&Add Record"));
    m_newBtn = form.Button(QStringLiteral("NewBtn"), QStringLiteral("New &Org"));
    m_editBtn = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit"));
    m_prevBtn = form.Button(QStringLiteral("PrevBtn"), QStringLiteral("<< &Prev"));
    m_nextBtn = form.Button(QStringLiteral("NextBtn"), QStringLiteral("&Next >>"));
    m_clearBtn = form.Button(QStringLiteral("ClearBtn"), QStringLiteral("&Clear All"));
    form.Gap();
    m_exitBtn = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
}

void frmAddOrg::WatchChanges()
{
    m_modified = new ModifiedMark(m_okBtn, this);
    m_modified->Watch(m_details);
    m_modified->Watch(m_notes);
    m_modified->Watch(UsedCriteria());
    m_modified->Watch(UsedFac());
    m_modified->Watch(UsedVenues());
    // Of the people only who they are belongs to the record; names and positions are stored elsewhere.
    connect(&ContactInfo(), &ListModel::rowsInserted, m_modified, &ModifiedMark::Set);
    connect(&ContactInfo(), &ListModel::rowsRemoved, m_modified, &ModifiedMark::Set);
    connect(&ContactInfo(), &ListModel::modelReset, m_modified, &ModifiedMark::Set);
    m_navigator = new RecordNavigator(
        m_prevBtn, m_nextBtn, *m_modified, [this] { Save(); },
        [this](const QString &key) { ShowOrganisation(KeyNumber(key)); }, this);
}

int frmAddOrg::AddRecord(QWidget *parent)
{
    gDialogResult = 0;
    frmAddOrg form(parent);
    form.exec();
    return gDialogResult;
}

void frmAddOrg::EditRecords(const QStringList &keys, bool edit, QWidget *parent)
{
    frmAddOrg form(parent);
    form.OpenRecords(keys, edit);
    form.exec();
}

void frmAddOrg::OpenRecords(const QStringList &keys, bool edit)
{
    m_navigator->SetKeys(keys);
    ShowOrganisation(KeyNumber(m_navigator->Key()));
    if (edit && !m_gone && MayWithOrganisations(mayChange))
        SetState(State::Edit);
}

void frmAddOrg::ShowOrganisation(int organRef)
{
    m_organRef = organRef;
    m_gone = true;
    Organisation_Show(*this, organRef);
    // A read that failed leaves the record locked.
    SetState(State::View);
    m_warn->hide();
    m_modified->Clear();
}

void frmAddOrg::ShowLoading(const QString &notice)
{
    m_tabs->setEnabled(false);
    m_editBtn->hide();
    m_warn->setText(notice);
    m_warn->show();
}

void frmAddOrg::ShowDeleted(const QString &placeholder)
{
    m_details->ShowPlaceholder(placeholder);
    m_notes->SetNotes({});
    for (ListModel *list : {&UsedCriteria(), &ContactInfo(), &UsedFac(), &UsedVenues()})
        list->Clear();
}

void frmAddOrg::ShowRecord(const OrganisationRecord &record)
{
    m_details->Load(record);
    m_notes->SetNotes(record.notes);
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

void frmAddOrg::ShowLoaded()
{
    m_gone = false;
}

void frmAddOrg::SetState(State state)
{
    m_state = state;
    const bool isNew = state == State::NewRecord;
    const bool editing = state != State::View;
    m_details->SetLocked(!editing);
    m_notes->SetLocked(!editing);
    m_contacts->SetLocked(!editing);
    m_places->SetLocked(!editing);
    m_tabs->setEnabled(isNew || !m_gone);

    m_okBtn->setText(isNew ? QStringLiteral("&Add Record") : QStringLiteral("&Update Record"));
    m_okBtn->setEnabled(editing);
    m_clearBtn->setEnabled(editing);
    m_newBtn->setVisible(!isNew && MayWithOrganisations(mayAdd));
    m_editBtn->setVisible(!isNew && !m_gone && MayWithOrganisations(mayChange));
    m_editBtn->setText(editing ? QStringLiteral("&View") : QStringLiteral("&Edit"));
    m_prevBtn->setVisible(!isNew && m_navigator->Count() > 0);
    m_nextBtn->setVisible(!isNew && m_navigator->Count() > 0);
    ShowCaption();
}

void frmAddOrg::ShowCaption()
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

bool frmAddOrg::IsDeleted()
{
    if (m_state == State::NewRecord || Organisation_Check(m_organRef))
        return false;
    ShowOrganisation(m_organRef);
    return true;
}

bool frmAddOrg::Save()
{
    if (!m_details->Required().MissingList().isEmpty())
        m_tabs->setCurrentIndex(0);
    // People must not be given to an organisation that is no more.
    if (!m_details->Required().Complete() || IsDeleted())
        return false;

    OrganisationRecord record;
    m_details->Store(record);
    record.notes = m_notes->Notes();
    const int saved =
        m_state == State::NewRecord ? Organisation_Add(record) : Organisation_Update(m_organRef, record);
    if (saved <= 0)
        return false;
    m_organRef = saved;
    m_gone = false;
    gDialogResult = saved;
    if (!Organisation_StoreLinks(
            saved, {ContactInfo(), UsedCriteria(), AvailFac(), UsedFac(), AvailVenues(), UsedVenues()})) {
        // The organisation stands; what the lists show is still to be stored.
        SetState(State::Edit);
        m_modified->Set();
        return false;
    }
    ShowOrganisation(saved);
    return true;
}

bool frmAddOrg::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmAddOrg::done(int result)
{
    gDialogResult = m_organRef;
    FormDialog::done(result);
}

void frmAddOrg::NewRecord()
{
    m_organRef = 0;
    m_gone = false;
    m_navigator->SetKeys({});
    m_tabs->setCurrentIndex(0);
    ADO_Organisation_ShowAvailable(*this);
    m_details->Clear();
    m_notes->SetNotes({});
    SetState(State::NewRecord);
    m_modified->Clear();
}

void frmAddOrg::ToggleEdit()
{
    SetState(m_state == State::Edit ? State::View : State::Edit);
}

void frmAddOrg::ClearAll()
{
    m_details->Clear();
    m_notes->Clear();
    m_places->Clear();
    ContactInfo().Clear();
}
