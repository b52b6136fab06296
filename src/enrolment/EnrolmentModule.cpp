#include "enrolment/EnrolmentModule.h"

#include "database/DecodeDateFunc.h"
#include "database/GlobalCode.h"
#include "enrolment/TransactionODBC.h"
#include "platform/Dialogs.h"

bool Course_UpdateStudent(int courseRef, int contactRef, StudentUpdate student)
{
    student.notes = SqlSafeText(student.notes);
    student.concession = SqlSafeText(student.concession);
    student.receipt = SqlSafeText(student.receipt);
    student.taxName = SqlSafeText(student.taxName);
    return ADO_Course_UpdateStudent(courseRef, contactRef, student);
}

bool Course_LogTransaction(int courseRef, int contactRef, QDate date, const QString &receiptNo,
                           const Fees::Payments &act, int creditCardRef)
{
    return ADO_Course_Log_Transaction(courseRef, contactRef, DateToInt(date), SqlSafeText(receiptNo), act,
                                      creditCardRef);
}

void Course_ChangePercentage(const QString &concessionName, double percentage, double hardDiscount,
                             Progress &progress)
{
    ADO_Course_ChangePercentage(SqlSafeText(concessionName), percentage, hardDiscount, progress);
}

bool Course_CheckLimit(int selected, int limit)
{
    if (limit <= 0 || selected <= limit)
        return true;
    Dialogs::MsgBox(u"This Course has a max limit of " % QString::number(limit) %
                        u" enrollments.\nPlease remove some and try again.",
                    QStringLiteral("Course Enrollment"), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return false;
}
