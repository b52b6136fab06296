#include "courses/events/AttendancePage.h"

#include "controls/ListModel.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"

#include <QKeyEvent>

AttendancePage::AttendancePage(ListModel &students, QWidget *parent)
    : QWidget(parent)
    , m_students(students)
{
    m_students.SetColumns({QStringLiteral("Contact"), QStringLiteral("Paid")});
    m_students.SetCheckable(true);
    FormBuilder form(this);
    m_view = form.List(QStringLiteral("Students"), QStringLiteral("Name && Attendance Check"), m_students);
    form.Label(QStringLiteral("lblName"));
    m_view->SetColumnChars({40, 14});
    m_view->SetEmptyText(QStringLiteral("Nobody is enrolled on this course yet."));
    m_view->installEventFilter(this);
    form.BeginButtons(FormBuilder::Align::Start);
    m_other = form.Button(QStringLiteral("AddStudentBtn"), QStringLiteral("&Other"));
    m_payments = form.Button(QStringLiteral("InfoBtn"), QStringLiteral("Payment &Record"));
    m_all = form.Button(QStringLiteral("AllBtn"), QStringLiteral("&All attended"));
    form.EndButtons();

    const auto askPayments = [this] {
        if (m_students.CurrentRow() >= 0)
            emit PaymentsAsked(m_students.CurrentRow());
    };
    connect(m_other, &QPushButton::clicked, this, &AttendancePage::OthersAsked);
    connect(m_payments, &QPushButton::clicked, this, askPayments);
    connect(m_all, &QPushButton::clicked, this, &AttendancePage::TickAll);
    connect(m_view, &ListView::Opened, this, askPayments);
    connect(m_students.Selection(), &QItemSelectionModel::currentChanged, this,
            &AttendancePage::EnableButtons);
    connect(&m_students, &ListModel::Changed, this, &AttendancePage::EnableButtons);
    EnableButtons();
}

void AttendancePage::Allow(bool change)
{
    m_mayChange = change;
    m_view->SetLocked(!change);
    EnableButtons();
}

bool AttendancePage::HaveAllAttended() const
{
    return !m_students.IsEmpty() && static_cast<int>(m_students.CheckedRows().size()) == m_students.Count();
}

void AttendancePage::EnableButtons()
{
    EnableButton(m_other, m_mayChange, m_view);
    EnableButton(m_payments, m_students.CurrentRow() >= 0, m_view);
    EnableButton(m_all, m_mayChange && !m_students.IsEmpty(), m_view);
    m_all->setText(HaveAllAttended() ? QStringLiteral("None &attended") : QStringLiteral("&All attended"));
}

void AttendancePage::TickAll()
{
    const bool attended = !HaveAllAttended();
    for (int row = 0; row < m_students.Count(); ++row)
        m_students.SetChecked(row, attended);
}

bool AttendancePage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_view || event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent *>(event)->key() != Qt::Key_Space || !m_mayChange)
        return QWidget::eventFilter(watched, event);
    const int row = m_students.CurrentRow();
    if (row < 0)
        return false;
    m_students.SetChecked(row, !m_students.At(row).checked);
    m_students.SelectOnly(qMin(row + 1, m_students.Count() - 1));
    m_view->ShowRow(m_students.CurrentRow());
    return true;
}
