#include "courses/record/frmAddCourse.h"

#include "contacts/manager/frmSelectContacts.h"
#include "core/session/Session.h"
#include "courses/events/frmAddEvents.h"
#include "courses/events/frmEvent.h"
#include "courses/record/CharacteristicsPage.h"
#include "courses/record/CourseModule.h"
#include "courses/record/CoursePage.h"
#include "courses/record/CoursePeople.h"
#include "courses/record/ResourceVersion.h"
#include "courses/record/ResourcesPage.h"
#include "courses/record/StudentsPage.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/Security.h"
#include "forms/frames/FormBuilder.h"
#include "forms/progress/ProgressBox.h"

frmAddCourse::frmAddCourse(QWidget *parent)
    : FormDialog(QStringLiteral("frmAddCourse"), QStringLiteral("Add Course"), parent)
    , m_course(new CoursePage)
    , m_characteristics(new CharacteristicsPage)
    , m_students(new StudentsPage)
    , m_resources(new ResourcesPage)
{
    FormBuilder form(this);
    m_tabs = form.Tabs(QStringLiteral("TabStrip1"));
    m_tabs->addTab(m_course, QStringLiteral("Course"));
    m_tabs->addTab(m_characteristics, QStringLiteral("Characteristics"));
    m_tabs->addTab(m_students, QStringLiteral("Students"));
    m_tabs->addTab(m_resources, QStringLiteral("Resources && Attendance"));
    form.BeginButtons();
    m_add = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add Course"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    connect(m_add, &QPushButton::clicked, this, &frmAddCourse::Save);
    connect(exit, &QPushButton::clicked, this, &frmAddCourse::reject);
    connect(m_students, &StudentsPage::AddAsked, this, &frmAddCourse::AddStudents);
    connect(m_students, &StudentsPage::Enrolment, this, [this] {
        m_course->SetEnrolled(m_students->Enrolled());
        m_resources->SetEnrolled(m_students->Students());
        ApplyRights();
    });
    connect(m_resources, &ResourcesPage::EventAsked, this, &frmAddCourse::OpenEvent);
    connect(m_resources, &ResourcesPage::EventsAsked, this, &frmAddCourse::AddEvents);
    connect(m_course, &CoursePage::LimitChanged, this, &frmAddCourse::ApplyRights);

    m_modified = new ModifiedMark(m_add, this);
    m_course->Watch(*m_modified);
    m_characteristics->Watch(*m_modified);
    m_resources->Watch(*m_modified);
}

void frmAddCourse::NewCourse(const QString &location)
{
    m_course->ShowFolders(location);
    EnablePages(false);
    ApplyRights();
    m_modified->Clear();
}

bool frmAddCourse::EditCourse(CourseRef courseRef)
{
    m_course->ShowFolders({});
    const ReadRow<CourseFile> file = ADO_Course_ShowCourse(courseRef);
    if (!file)
        return false;
    m_record = file->course;
    m_course->ShowCourse(m_record);
    const bool isWhole = m_characteristics->Show(file->characteristics);
    RowExists(courseRef);
    m_seen = Course_Values(m_record, Lists());
    m_modified->Clear();
    return isWhole && m_resources->Resources().isWhole;
}

QString frmAddCourse::CourseTitle() const
{
    return m_course->Course().title;
}

CourseLists frmAddCourse::Lists()
{
    return {m_characteristics->Used(), m_course->Folders(), m_resources->Resources(),
            &m_characteristics->Available()};
}

/// A course that is not there yet has nothing but its own row and its folders.
void frmAddCourse::EnablePages(bool enabled)
{
    for (int page = 1; page < m_tabs->count(); ++page)
        m_tabs->setTabEnabled(page, enabled);
}

void frmAddCourse::RowExists(CourseRef courseRef)
{
    m_courseRef = courseRef;
    ShowTitle();
    m_add->setText(QStringLiteral("&Update Course"));
    EnablePages(true);
    ShowEvents();
    m_students->ShowStudents(courseRef);
}

void frmAddCourse::ShowTitle()
{
    setWindowTitle(QStringLiteral("Add Course: ") % CourseTitle());
}

void frmAddCourse::ApplyRights()
{
    // Who may only add fills in a new course, and can no longer change it once it is there.
    const Level level = UserRight(Right::Courses);
    const bool open = level >= (!m_courseRef ? Level::Add : Level::Edit) && m_resources->Resources().isWhole;
    m_course->SetLocked(!open, !UserMay(Right::CourseFee, Level::Full));
    m_characteristics->Allow(open);
    m_resources->Allow(open);
    m_add->setEnabled(open);
    const int limit = m_course->Limit();
    const bool hasPlaces = limit == 0 || limit > m_students->Enrolled();
    const Level students = UserRight(Right::Students);
    const QString whyNot =
        hasPlaces ? QString() : QString(u"All " % QString::number(limit) % u" places are taken.");
    m_students->Allow(open && hasPlaces && students >= Level::Add, open && students >= Level::Full, whyNot);
}

void frmAddCourse::Save()
{
    LeaveMoneyField(this);
    if (!m_add->isEnabled() || !m_course->Complete())
        return;
    CourseRecord course = m_course->Course();
    course.courseRef = m_courseRef;
    m_record = course;
    const RecordSaved saved = Store();
    if (saved.key < 1)
        return;
    if (m_record != course)
        m_course->ShowFields(m_record);
    m_saved = saved.key;
    if (m_courseRef) {
        ShowEvents();
    } else {
        m_characteristics->Show({});
        RowExists(CourseRef(saved.key));
    }
    ShowTitle();
    if (saved.isWhole)
        m_modified->Saved();
}

RecordSaved frmAddCourse::Store()
{
    const QString title = m_courseRef ? QStringLiteral("Update Course") : QStringLiteral("Add Course");
    RecordSaved saved;
    const bool isFinished = ProgressBox::Run(
        this, title, [&](Progress &progress) { saved = Course_Save(m_record, Lists(), m_seen, progress); });
    if (!isFinished && saved.key == 0)
        Dialogs::MsgBox(QStringLiteral("Stopped. Nothing on this screen was stored."), title,
                        Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return saved;
}

/// Reads the events, as they are stored now; what was changed in the tree is lost.
void frmAddCourse::ShowEvents()
{
    m_resources->ShowEvents(m_courseRef);
    const FieldValues now = Course_Values(m_course->Course(), Lists());
    if (now == m_seen || AsStored(now) == m_seen)
        m_modified->Clear();
    ApplyRights();
}

/// Asks about changes of the tree before something that reads it again. `what` begins the question.
bool frmAddCourse::MayReadEventsAgain(const QString &what)
{
    if (!ResourceVersion::IsChanged(m_resources->Resources()))
        return true;
    const Dialogs::Answer answer = Dialogs::MsgBox(
        what % u" reads the events again, and what was changed in their tree without being stored is lost.\n"
               u"Okay to update the course before?",
        QStringLiteral("Warning"), Dialogs::Buttons::YesNoCancel, Dialogs::Icon::Question);
    if (answer == Dialogs::Answer::Yes)
        Save();
    return answer == Dialogs::Answer::No ||
           (answer == Dialogs::Answer::Yes && !ResourceVersion::IsChanged(m_resources->Resources()));
}

void frmAddCourse::AddEvents()
{
    if (!MayReadEventsAgain(QStringLiteral("Adding events")))
        return;
    frmAddEvents form(m_courseRef, ADO_Course_CountEvents(m_courseRef) > 0, this);
    if (form.Run() > 0)
        ShowEvents();
}

void frmAddCourse::OpenEvent(EventRef eventRef)
{
    if (!MayReadEventsAgain(QStringLiteral("Opening the event")))
        return;
    const ReadRow<CourseEvent> event = ADO_Course_FindEvent(eventRef);
    if (event) {
        frmEvent form(m_courseRef, event->eventNo, frmEvent::Tab::Event, this);
        form.Run();
    } else if (event.IsMissing()) {
        TellLeftOut({m_resources->NameOf(eventRef)}, windowTitle());
    }
    ShowEvents();
}

bool frmAddCourse::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmAddCourse::AddStudents()
{
    frmSelectContacts picker(this);
    picker.Configure(frmSelectContacts::Mode::EnrolOnCourse, m_students->Students(),
                     CoursePeople::Students(m_courseRef, m_course->Limit()));
    picker.Run();
    m_students->ShowStudents(m_courseRef);
}

// The picker and the payment screen have results of their own, so this one is handed back at the end.
void frmAddCourse::done(int result)
{
    gDialogResult = m_saved;
    FormDialog::done(result);
}
