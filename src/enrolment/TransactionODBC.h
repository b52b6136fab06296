#pragma once

#include "database/values/Keys.h"
#include "enrolment/Fees.h"

#include <QString>

/// Adds a row to `Transactions`, the log of each act of paying, with the names that the vouchers have now.
/// `date` is a date-int, `act` the amounts of this act alone, `creditCardRef` 0 without a card. The receipt
/// number comes already safe for SQL. False on an error.
bool ADO_Course_Log_Transaction(CourseRef courseRef, ContactRef contactRef, int date,
                                const QString &receiptNo, const Fees::Payments &act,
                                CreditCardRef creditCardRef);
