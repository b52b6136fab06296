#pragma once

#include "reports/writer/ReportRun.h"

/// Which payments a report looks at: those of the days `from` to `to` (date-ints, both included), or all.
struct ReportPeriod {
    bool noDates = false;
    int from = 0;
    int to = 0;
};

/// Writes the Transactions report: a row for each act of paying, a column for each payment kind (a voucher
/// kind without a name has none; the names are the present ones), and the totals. `held` counts payments.
/// Reads `Transactions` with the tables of its contact and course.
ReportResult Transactions_HTML(const ReportPeriod &period, Progress &progress);
