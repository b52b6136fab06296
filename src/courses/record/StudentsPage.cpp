#include "courses/record/StudentsPage.h"

#include "enrolment/EnrolmentModule.h"
#include "enrolment/frmStudentInfo.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"

StudentsPage::StudentsPage(QWidget *parent)
    : QWidget(parent)
{
    m_students.SetColumns({QStringLiteral("Contact"), QStringLiteral("Paid")});
    FormBuilder form(this);
    m_view = form.List(QStringLiteral("Students"), {}, m_students, ListView::Choice::Multi);
    m_view->setAccessibleName(QStringLiteral("Students"));
    m_view->SetColumnChars({40, 12});
    m_view->SetEmptyText(QStringLiteral("Nobody is enrolled on this course yet."));
    form.BeginButtons(FormBuilder::Align::Start);
    m_add = form.Button(QStringLiteral("AddStudentBtn"), QStringLiteral("Add &Students"));
    m_remove = form.Button(QStringLiteral("RemBtn"), QStringLiteral("&Remove"));
    m_info = form.Button(QStringLiteral("InfoBtn"), QStringLiteral("&Info"));
    form.EndButtons();
    m_whyNot = form.Line(QStringLiteral("WhyNot"), {});
    m_whyNot->hide();

    connect(m_add, &QPushButton::clicked, this, &StudentsPage::AddAsked);
    connect(m_remove, &QPushButton::clicked, this, &StudentsPage::Remove);
    connect(m_info, &QPushButton::clicked, this, &StudentsPage::OpenStudent);
    connect(m_view, &ListView::Opened, this, &StudentsPage::OpenStudent);
    connect(m_students.Selection(), &QItemSelectionModel::selectionChanged, this,
            &StudentsPage::EnableButtons);
    connect(&m_students, &ListModel::Changed, this, &StudentsPage::EnableButtons);
    EnableButtons();
}

void StudentsPage::ShowStudents(CourseRef courseRef)
{
    m_courseRef = courseRef;
    ADO_Course_ShowEnrolledStudents(courseRef, m_students);
    m_students.sort(0, Qt::AscendingOrder);
    m_view->KeepOrder();
    m_students.SelectFirst();
    emit Enrolment();
}

void StudentsPage::Allow(bool add, bool remove, const QString &whyNot)
{
    m_mayAdd = add;
    m_mayRemove = remove;
    m_add->setToolTip(whyNot);
    m_whyNot->setText(whyNot);
    m_whyNot->setVisible(!whyNot.isEmpty());
    EnableButtons();
}

void StudentsPage::EnableButtons()
{
    const size_t selected = m_students.SelectedRows().size();
    EnableButton(m_add, m_mayAdd, m_view);
    EnableButton(m_remove, m_mayRemove && selected > 0, m_view);
    EnableButton(m_info, selected == 1, m_view);
}

void StudentsPage::Remove()
{
    Course_RemoveStudents(m_courseRef, m_students.SelectedKeys());
    ShowStudents(m_courseRef);
}

void StudentsPage::OpenStudent()
{
    const int row = m_students.CurrentRow();
    if (row < 0)
        return;
    frmStudentInfo form(m_courseRef, m_students, m_students.At(row).key, this);
    form.Run();
}
