#include "courses/record/frmAddCourse.h"

#include "contacts/manager/frmSelectContacts.h"
#include "core/session/Session.h"
#include "courses/record/CourseModule.h"
#include "courses/record/CoursePage.h"
#include "courses/record/CoursePeople.h"
#include "courses/record/StudentsPage.h"
#include "database/statements/Security.h"
#include "forms/frames/FormBuilder.h"

frmAddCourse::frmAddCourse(QWidget *parent)
    : FormDialog(QStringLiteral("frmAddCourse"), QStringLiteral("Add Course"), parent)
    , m_course(new CoursePage)
    , m_students(new StudentsPage)
{
    FormBuilder form(this);
    m_tabs = form.Tabs(QStringLiteral("TabStrip1"));
    m_tabs->addTab(m_course, QStringLiteral("Course"));
    m_tabs->addTab(m_students, QStringLiteral("Students"));
    form.BeginButtons();
    m_add = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add Course"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    connect(m_add, &QPushButton::clicked, this, &frmAddCourse::Save);
    connect(exit, &QPushButton::clicked, this, &frmAddCourse::reject);
    connect(m_students, &StudentsPage::AddAsked, this, &frmAddCourse::AddStudents);
    connect(m_students, &StudentsPage::Enrolment, this, [this] {
        m_course->SetEnrolled(m_students->Enrolled());
        ApplyRights();
    });
    connect(m_course, &CoursePage::LimitChanged, this, &frmAddCourse::ApplyRights);

    m_modified = new ModifiedMark(m_add, this);
    m_course->Watch(*m_modified);
    m_modified->Watch(m_usedChar);
}

void frmAddCourse::NewCourse(const QString &location)
{
    m_course->ShowFolders(location);
    m_tabs->setTabEnabled(m_tabs->indexOf(m_students), false);
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
    m_usedChar.Fill(file->characteristics);
    m_seen = Course_Values(m_record, Lists());
    RowExists(courseRef);
    m_modified->Clear();
    return true;
}

QString frmAddCourse::CourseTitle() const
{
    return m_course->Course().title;
}

CourseLists frmAddCourse::Lists()
{
    return {m_usedChar, m_course->Folders()};
}

void frmAddCourse::RowExists(CourseRef courseRef)
{
    m_courseRef = courseRef;
    ShowTitle();
    m_add->setText(QStringLiteral("&Update Course"));
    m_tabs->setTabEnabled(m_tabs->indexOf(m_students), true);
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
    const bool open = level >= (!m_courseRef ? Level::Add : Level::Edit);
    m_course->SetLocked(!open, !UserMay(Right::CourseFee, Level::Full));
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
    const RecordSaved saved = Course_Save(m_record, Lists(), m_seen);
    if (saved.key < 1)
        return;
    if (m_record != course)
        m_course->ShowFields(m_record);
    m_saved = saved.key;
    if (!m_courseRef)
        RowExists(CourseRef(saved.key));
    ShowTitle();
    if (saved.isWhole)
        m_modified->Saved();
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
