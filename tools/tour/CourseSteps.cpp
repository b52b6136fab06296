#include "tour/TourDriver.h"
#include "tour/TourPlan.h"

#include <QFile>

namespace
{
/// The row of `Students` that begins with `name`, as "name | word".
QString RowOf(QWidget &screen, const QString &name)
{
    const QStringList rows = Hands::Rows(screen, QStringLiteral("Students"));
    const QStringList found = rows.filter(name);
    return found.isEmpty() ? QString() : found.first();
}

void OpenStudent(TourDriver &tour, TourPlan &plan, int student)
{
    tour.On(QStringLiteral("frmAddCourse"), QStringLiteral("open a student"),
            [&plan, student](QWidget &screen) {
                Hands::DoubleClickRow(screen, QStringLiteral("Students"), plan.students.at(student));
            });
}

/// Types an amount into a payment box of the open student, and shows the screen.
void Tender(TourDriver &tour, const QString &what, const QString &due, const QString &box,
            const QString &amount)
{
    tour.On(QStringLiteral("frmStudentInfo"), what, [&tour, due, box, amount](QWidget &screen) {
        tour.Expect(Hands::Text(screen, QStringLiteral("TotalAmountDue")) == due,
                    u"the fee is " % Hands::Text(screen, QStringLiteral("TotalAmountDue")) % u" and not " %
                        due);
        Hands::Type(screen, box, amount);
    });
    tour.See(QStringLiteral("frmStudentInfo"), what,
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("OkBtn")); });
}

void ExpectWord(TourDriver &tour, TourPlan &plan, int student, const QString &word)
{
    tour.On(
        QStringLiteral("frmAddCourse"), u"the word " % word, [&tour, &plan, student, word](QWidget &screen) {
            const QString row = RowOf(screen, plan.students.at(student));
            tour.Expect(row.endsWith(u" | " % word), u"the student's row reads " % row % u" and not " % word);
        });
}
} // namespace

void AddCourse(TourDriver &tour)
{
    tour.On(QStringLiteral("frmMain"), QStringLiteral("courses"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_CourseManager")); });
    tour.On(QStringLiteral("frmCourse"), QStringLiteral("new course"),
            [](QWidget &screen) { Hands::Press(screen, QStringLiteral("AddBtn")); });
    tour.On(QStringLiteral("frmAddCourse"), QStringLiteral("the course"), [](QWidget &screen) {
        Hands::Type(screen, QStringLiteral("Title"), QStringLiteral("Beginner's Bookkeeping"));
        Hands::Type(screen, QStringLiteral("RefName"), QStringLiteral("BK-1"));
        Hands::Type(screen, QStringLiteral("CourseDescript"), QStringLiteral("Ten evenings; 50% practice."));
        Hands::Type(screen, QStringLiteral("Fee"), QStringLiteral("100"));
        Hands::Type(screen, QStringLiteral("Limit"), QStringLiteral("3"));
    });
    tour.See(QStringLiteral("frmAddCourse"), QStringLiteral("new course"), [](QWidget &screen) {
        Hands::Press(screen, QStringLiteral("AddBtn"));
        Hands::Tab(screen, QStringLiteral("Students"));
    });
}

void AddEnrolment(TourDriver &tour, TourPlan &plan)
{
    tour.On(QStringLiteral("frmAddCourse"), QStringLiteral("add students"),
            [](QWidget &screen) { Hands::Press(screen, QStringLiteral("AddStudentBtn")); });
    tour.On(QStringLiteral("frmSelectContacts"), QStringLiteral("four people"), [&plan](QWidget &screen) {
        Hands::ClickRow(screen, QStringLiteral("ContactList"), plan.students.at(0));
        for (int i = 1; i < plan.students.size(); ++i)
            Hands::ClickRow(screen, QStringLiteral("ContactList"), plan.students.at(i), Qt::ControlModifier);
        Hands::Press(screen, QStringLiteral("AddCBtn"));
        Hands::Press(screen, QStringLiteral("ExitBtn"));
    });
    tour.Box(
        QStringLiteral("Course Enrollment"),
        QStringLiteral("This Course has a max limit of 3 enrollments.\nPlease remove some and try again."),
        QStringLiteral("OK"));
    tour.On(QStringLiteral("frmSelectContacts"), QStringLiteral("one too many"), [&plan](QWidget &screen) {
        Hands::ClickRow(screen, QStringLiteral("SelectedList"), plan.students.at(3));
        Hands::Press(screen, QStringLiteral("RemCBtn"));
    });
    tour.See(QStringLiteral("frmSelectContacts"), QStringLiteral("picker"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("ExitBtn")); });
    for (int student = 0; student < 3; ++student)
        ExpectWord(tour, plan, student, QStringLiteral("No"));
    tour.See(QStringLiteral("frmAddCourse"), QStringLiteral("enrolled"));
}

void AddPayments(TourDriver &tour, TourPlan &plan)
{
    OpenStudent(tour, plan, 0);
    Tender(tour, QStringLiteral("cash"), QStringLiteral("90.00"), QStringLiteral("Payment"),
           QStringLiteral("90"));
    ExpectWord(tour, plan, 0, QStringLiteral("Yes"));

    OpenStudent(tour, plan, 1);
    Tender(tour, QStringLiteral("cheque"), QStringLiteral("84.00"), QStringLiteral("ChequePayment"),
           QStringLiteral("50"));
    ExpectWord(tour, plan, 1, QStringLiteral("Part"));

    OpenStudent(tour, plan, 2);
    Tender(tour, QStringLiteral("voucher, too much"), QStringLiteral("120.00"), QStringLiteral("VPayment_0"),
           QStringLiteral("120.01"));
    tour.Box(QStringLiteral("Warning"),
             QStringLiteral("Amount tendered exceeds the amount due\nNo Action Taken"), QStringLiteral("OK"));
    Tender(tour, QStringLiteral("voucher"), QStringLiteral("120.00"), QStringLiteral("VPayment_0"),
           QStringLiteral("120"));
    ExpectWord(tour, plan, 2, QStringLiteral("Yes"));
    tour.See(QStringLiteral("frmAddCourse"), QStringLiteral("status words"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("ExitBtn")); });
}

void AddReport(TourDriver &tour, TourPlan &plan)
{
    tour.On(QStringLiteral("frmMain"), QStringLiteral("course reports"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_CourseReports")); });
    tour.See(QStringLiteral("frmCourseWiz"), QStringLiteral("report wizard"), [](QWidget &screen) {
        Hands::Press(screen, QStringLiteral("HTMLopt"));
        Hands::Press(screen, QStringLiteral("cmdNav_2"));
    });
    tour.See(QStringLiteral("frmCourseWiz"), QStringLiteral("report dates"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("cmdNav_3")); });
    tour.SeeFile(plan.programFolder % u"/opened.txt", QStringLiteral("report opened"), [&tour, &plan] {
        QFile report(plan.programFolder % u"/Reports/temp.htm");
        tour.Expect(report.open(QIODevice::ReadOnly), QStringLiteral("there is no report"));
        const QString text = QString::fromLatin1(report.readAll());
        for (const auto *amount : {"90.00", "50.00", "120.00", "260.00", "Learning Voucher"})
            tour.Expect(text.contains(QLatin1String(amount)), u"the report lacks " % QLatin1String(amount));
    });
    tour.See(QStringLiteral("frmCourseWiz"), QStringLiteral("report held"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("cmdNav_3")); });
}
