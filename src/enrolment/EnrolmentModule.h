#pragma once

#include "enrolment/EnrolmentODBC.h"

#include <QDate>

/// Enrolment for the screens: texts as typed, made safe for SQL here.

bool Course_UpdateStudent(int courseRef, int contactRef, StudentUpdate student);
/// Logs one act of paying on `date`; `receiptNo` as typed.
bool Course_LogTransaction(int courseRef, int contactRef, QDate date, const QString &receiptNo,
                           const Fees::Payments &act, int creditCardRef);
/// Called when a characteristic's percentage or amount was changed.
void Course_ChangePercentage(const QString &concessionName, double percentage, double hardDiscount,
                             Progress &progress);
/// True if `selected` contacts fit on the course; otherwise the user is told its limit.
bool Course_CheckLimit(int selected, int limit);
