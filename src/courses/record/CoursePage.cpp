#include "courses/record/CoursePage.h"

#include "courses/lists/CourseFolderODBC.h"
#include "courses/lists/TreeViewFunc.h"
#include "database/statements/System.h"
#include "forms/fields/FieldLock.h"
#include "forms/fields/ModifiedMark.h"
#include "forms/frames/FormBuilder.h"

CoursePage::CoursePage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    m_title = form.Text(QStringLiteral("Title"), QStringLiteral("Course Name:"), 100);
    m_required.Add(form.Label(), m_title);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("Reference ID:"), 50);
    m_description = form.Notes(QStringLiteral("CourseDescript"), QStringLiteral("Description:"));
    constexpr MoneyField::KeyRule feeKeys{8, 9, true};
    m_fee = form.Money(QStringLiteral("Fee"), u"Fee " % SystemValue(SystemRef::CurrencySymbol), feeKeys);
    form.Beside();
    m_limit = form.Digits(QStringLiteral("Limit"), QStringLiteral("Course Enrollment Limit [0 = no limit]:"));
    TreeView *tree = form.Tree(QStringLiteral("CatList"), QStringLiteral("Folder location:"), m_folders);

    m_limit->SetLeaveHandler([this] { LeaveLimit(); });
    connect(m_limit, &QLineEdit::textChanged, this, &CoursePage::LimitChanged);
    connect(tree, &TreeView::TickAsked, this, [this](TreeNode *node) {
        if (!m_locked)
            ToggleNodeTick(m_folders, node);
    });
    m_fee->SetValue(0);
    m_limit->setText(QStringLiteral("0"));
}

void CoursePage::ShowFolders(const QString &location)
{
    ADO_Course_ShowFolders(m_folders, true, true);
    if (TreeNode *node = m_folders.Find(location))
        m_folders.SetTick(node, TreeTick::On);
    m_folders.SelectFirst();
}

void CoursePage::ShowCourse(const CourseRecord &course)
{
    ShowFields(course);
    ADO_Course_ShowCourseRelations(course.courseRef, m_folders);
}

void CoursePage::ShowFields(const CourseRecord &course)
{
    m_title->setText(course.title);
    m_refName->setText(course.referenceID);
    m_description->setPlainText(course.description);
    m_fee->SetValue(course.fee);
    m_limit->setText(QString::number(course.limit));
}

CourseRecord CoursePage::Course() const
{
    return {{}, m_title->text(), m_refName->text(), m_description->toPlainText(), m_fee->Value(), Limit()};
}

int CoursePage::Limit() const
{
    return m_limit->text().toInt();
}

void CoursePage::SetEnrolled(int count)
{
    m_enrolled = count;
}

void CoursePage::LeaveLimit()
{
    const int limit = Limit();
    m_limit->setText(QString::number(limit > 0 ? std::max(limit, m_enrolled) : 0));
}

void CoursePage::SetLocked(bool locked, bool feeLocked)
{
    m_locked = locked;
    for (QWidget *field : {static_cast<QWidget *>(m_title), static_cast<QWidget *>(m_refName),
                           static_cast<QWidget *>(m_description), static_cast<QWidget *>(m_limit)})
        LockFields(field, locked);
    LockFields(m_fee, locked || feeLocked);
}

void CoursePage::Watch(ModifiedMark &modified)
{
    modified.Watch(this);
    modified.Watch(m_folders);
}
