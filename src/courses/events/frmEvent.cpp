#include "courses/events/frmEvent.h"

#include "contacts/manager/frmSelectContacts.h"
#include "contacts/roles/RoleODBC.h"
#include "core/session/Session.h"
#include "courses/booking/StaffPicks.h"
#include "courses/events/AttendancePage.h"
#include "courses/events/EventPeople.h"
#include "courses/lists/CourseListODBC.h"
#include "database/statements/Security.h"
#include "database/values/DecodeDateFunc.h"
#include "enrolment/frmStudentInfo.h"
#include "forms/fields/FieldLock.h"
#include "platform/desktop/Clock.h"

#include <QTimer>

frmEvent::frmEvent(CourseRef courseRef, int eventNo, Tab tab, QWidget *parent)
    : FormDialog(QStringLiteral("frmEvent"), QStringLiteral("Edit Event"), parent)
    , m_courseRef(courseRef)
    , m_title(ADO_Course_Title(courseRef))
    , m_holderTimer(new QTimer(this))
{
    if (!m_title.isEmpty())
        setWindowTitle(u"Edit Event: " % m_title);
    FormBuilder form(this);
    m_tabs = form.Tabs(QStringLiteral("TabStrip1"));
    BuildEvent();
    m_attendance = FormBuilder::AddTab(m_tabs, new AttendancePage(m_file.students),
                                       QStringLiteral("AttendancePage"), QStringLiteral("Attendance"));
    BuildStaff();
    BuildPair(QStringLiteral("Facilities Employed"),
              {QStringLiteral("FacAvail"), QStringLiteral("Facilities &Available"), QStringLiteral("FacUsed"),
               QStringLiteral("Fa&cilities Used")},
              m_file.facilitiesAvailable, m_file.facilities);
    BuildPair(QStringLiteral("Venues Employed"),
              {QStringLiteral("VenueAvail"), QStringLiteral("Venues &Available"), QStringLiteral("VenueUsed"),
               QStringLiteral("&Venues Used"), QStringLiteral("AddVBtn"), QStringLiteral("RemVBtn"),
               QStringLiteral("ClearVBtn")},
              m_file.venuesAvailable, m_file.venues);
    BuildButtons(form);
    m_holders.Add(m_file.venuesAvailable, Holders::Of::Venues);
    m_holders.Add(m_file.facilitiesAvailable, Holders::Of::Facilities);
    m_holders.Add(m_file.staffAvailable, Holders::Of::Staff);

    m_modified = new ModifiedMark(m_update, this);
    m_modified->Ignore(m_role);
    m_modified->Watch(this);
    for (ListModel *list : {&m_file.students, &m_file.venues, &m_file.facilities, &m_file.staff})
        m_modified->Watch(*list);
    Connect();
    ADO_Contact_FillRoleTypeList(m_roles, true);
    ShowEvent(eventNo);
    m_tabs->setCurrentIndex(static_cast<int>(tab));
    resize(fontMetrics().averageCharWidth() * 120, fontMetrics().lineSpacing() * 26);
}

void frmEvent::BuildEvent()
{
    FormBuilder form(FormBuilder::AddTab(m_tabs, QStringLiteral("EventPage"), QStringLiteral("Event")));
    m_date = form.Date(QStringLiteral("EDate"), QStringLiteral("Da&te:"));
    form.Beside();
    m_from = form.Time(QStringLiteral("TimeFrom"), QStringLiteral("&Start Time:"));
    form.Beside();
    m_to = form.Time(QStringLiteral("TimeTo"), QStringLiteral("&End Time:"));
    m_description = form.Notes(QStringLiteral("Description"), QStringLiteral("&Description:"));
}

void frmEvent::BuildStaff()
{
    FormBuilder form(
        FormBuilder::AddTab(m_tabs, QStringLiteral("StaffPage"), QStringLiteral("Staff Employed")));
    m_role = form.Combo(QStringLiteral("RoleList"), QStringLiteral("Ro&le:"), m_roles);
    const FormBuilder::Pair pair = form.UsedAvailablePair(
        {QStringLiteral("StaffAvail"), QStringLiteral("&Available Staff for Role:"),
         QStringLiteral("StaffUsed"), QStringLiteral("(s) employed:"), QStringLiteral("AddTBtn"),
         QStringLiteral("RemTBtn"), QStringLiteral("ClearTBtn")},
        m_file.staffAvailable, m_file.staff);
    m_employed = form.Label(QStringLiteral("Label3"));
    Watch(pair, m_file.staffAvailable);
    pair.moves->SetActions(StaffPicks::Actions(m_file.staffAvailable, m_file.staff));
}

void frmEvent::BuildPair(const QString &tab, const FormBuilder::PairNames &names, ListModel &available,
                         ListModel &used)
{
    FormBuilder form(FormBuilder::AddTab(m_tabs, names.used % u"Page", tab));
    Watch(form.UsedAvailablePair(names, available, used), available);
}

/// A pair of what is available, with who holds it, and what the event uses.
void frmEvent::Watch(const FormBuilder::Pair &pair, ListModel &available)
{
    available.SetColumns({QStringLiteral("Name"), QStringLiteral("Free or taken")});
    pair.available->SetColumnChars({24, 26});
    pair.available->SetEmptyText(QStringLiteral("Nothing more is available."));
    pair.used->SetEmptyText(QStringLiteral("Nothing is booked."));
    m_moves.push_back(pair.moves);
    connect(pair.moves, &UsedAvailable::Moved, this, &frmEvent::ShowHolders);
}

void frmEvent::BuildButtons(FormBuilder &form)
{
    form.BeginButtons();
    m_prev = form.Button(QStringLiteral("PrevBtn"), QStringLiteral("<< &Prev"));
    m_next = form.Button(QStringLiteral("NextBtn"), QStringLiteral("&Next >>"));
    m_position = new QLabel(this);
    m_position->setObjectName(QStringLiteral("EventLbl"));
    form.Gap(m_position);
    m_update = form.DefaultButton(QStringLiteral("UpBtn"), QStringLiteral("&Update"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    connect(exit, &QPushButton::clicked, this, &frmEvent::reject);
}

void frmEvent::Connect()
{
    m_holderTimer->setSingleShot(true);
    connect(m_holderTimer, &QTimer::timeout, this, &frmEvent::ShowHolders);
    // Typing changes a text several times; who holds what is asked once.
    for (QLineEdit *field :
         {static_cast<QLineEdit *>(m_date), static_cast<QLineEdit *>(m_from), static_cast<QLineEdit *>(m_to)})
        connect(field, &QLineEdit::textChanged, this, [this] { m_holderTimer->start(0); });
    connect(m_to, &TimeField::Left, this, [this] { PutInOrder(m_from, m_to); });
    connect(m_role, &QComboBox::activated, this, &frmEvent::ChooseRole);
    connect(m_prev, &QPushButton::clicked, this, [this] { Go(-1); });
    connect(m_next, &QPushButton::clicked, this, [this] { Go(1); });
    connect(m_update, &QPushButton::clicked, this, &frmEvent::Save);
    connect(m_attendance, &AttendancePage::OthersAsked, this, &frmEvent::PickOthers);
    connect(m_attendance, &AttendancePage::PaymentsAsked, this, &frmEvent::OpenPayments);
}

void frmEvent::ShowEvent(int eventNo)
{
    m_eventNo = eventNo;
    m_count = ADO_Course_CountEvents(m_courseRef);
    const EventRead read = Event_Show(m_file, m_courseRef, eventNo, RoleTypeRef(m_roles.CurrentData()));
    m_isGone = read != EventRead::Found;
    if (!m_isGone)
        ShowFields();
    ShowPosition();
    ApplyRights();
    m_modified->Clear();
}

void frmEvent::ShowFields()
{
    const QDate day = IntToDate(m_file.event.hours.date);
    m_date->SetDay(day.isValid() ? day : Clock::Today());
    m_from->SetTime(m_file.event.hours.from);
    m_to->SetTime(m_file.event.hours.to);
    m_description->setPlainText(m_file.event.description);
    m_file.students.sort(0, Qt::AscendingOrder);
    m_file.students.SelectFirst();
    m_roles.ChooseData(m_file.role.number);
    m_employed->setText(m_roles.CurrentText() % u"(s) employed:");
    ShowHolders();
}

void frmEvent::ShowPosition()
{
    m_position->setText(
        m_isGone ? QStringLiteral("#Event Deleted#")
                 : QString(u"Event " % QString::number(m_eventNo) % u'/' % QString::number(m_count)));
    EnableButton(m_prev, m_eventNo > 1, m_tabs);
    EnableButton(m_next, m_eventNo < m_count, m_tabs);
}

void frmEvent::ShowHolders()
{
    m_holders.Show(Hours(), m_file.event.eventRef, m_file.role);
}

void frmEvent::ApplyRights()
{
    const bool open = !m_isGone && UserMay(Right::Courses, Level::Edit);
    for (QWidget *field : {static_cast<QWidget *>(m_date), static_cast<QWidget *>(m_from),
                           static_cast<QWidget *>(m_to), static_cast<QWidget *>(m_description)})
        LockFields(field, !open);
    m_attendance->Allow(open);
    for (UsedAvailable *moves : m_moves)
        moves->Allow(open);
    m_update->setEnabled(open);
}

EventHours frmEvent::Hours() const
{
    return {DateToInt(m_date->Day()), m_from->Time(), m_to->Time()};
}

bool frmEvent::Save()
{
    if (!m_update->isEnabled() || !DaysAreReadable(this) || !TimesAreReadable(this))
        return false;
    PutInOrder(m_from, m_to);
    m_file.event.hours = Hours();
    m_file.event.description = m_description->toPlainText();
    const RecordSaved saved = Event_Save(m_file);
    if (saved.key < 0)
        return false;
    const bool isStored = saved.key > 0;
    ShowEvent(m_file.event.eventNo);
    if (!isStored) {
        m_isGone = true;
        ShowPosition();
        ApplyRights();
        return false;
    }
    gDialogResult = 1;
    if (saved.isWhole)
        m_modified->Saved();
    return saved.isWhole;
}

bool frmEvent::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

/// Whether the changes on the screen are stored or not wanted, before another event or role is shown.
bool frmEvent::SettledChanges()
{
    if (!m_modified->IsSet())
        return true;
    const Dialogs::Answer answer =
        Dialogs::MsgBox(QStringLiteral("Okay to update event?"), QStringLiteral("Event Changed"),
                        Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
    return answer != Dialogs::Answer::Yes || Save();
}

void frmEvent::Go(int step)
{
    if (SettledChanges())
        ShowEvent(m_eventNo + step);
}

/// The lists hold the staff of one role; what was changed for the one before must be stored first.
void frmEvent::ChooseRole()
{
    const RoleTypeRef role(m_roles.CurrentData());
    if (role == m_file.role)
        return;
    if (!SettledChanges()) {
        m_roles.ChooseData(m_file.role.number);
        return;
    }
    const bool isModified = m_modified->IsSet();
    m_roles.ChooseData(role.number);
    Event_ShowRole(m_file, role);
    m_employed->setText(m_roles.CurrentText() % u"(s) employed:");
    ShowHolders();
    if (!isModified)
        m_modified->Clear();
}

void frmEvent::PickOthers()
{
    frmSelectContacts picker(this);
    picker.setWindowTitle(u"Add Contacts in " % m_title % u" on Event " % QString::number(m_eventNo));
    picker.Configure(frmSelectContacts::Mode::Attendance, m_file.students,
                     EventPeople::Attendees(m_courseRef, m_file.event.eventRef));
    if (picker.Run() < 1)
        return;
    const bool wasModified = m_modified->IsSet();
    Event_ShowStudents(m_file);
    m_file.students.sort(0, Qt::AscendingOrder);
    if (!wasModified)
        m_modified->Clear();
}

void frmEvent::OpenPayments(int row)
{
    const bool wasModified = m_modified->IsSet();
    frmStudentInfo form(m_courseRef, m_file.students, m_file.students.At(row).key, this);
    form.Run();
    // The word for what is paid is not a part of the event.
    if (!wasModified)
        m_modified->Clear();
}
