#pragma once

#include "reports/writer/ReportRun.h"

/// Which payments a report covers: those of the days `from` to `to` (date-ints, both inclusive), or all.
struct ReportPeriod {
    bool noDates = false;
    int from = 0;
    int to = 0;
};

/// Writes the Transactions report: a row for each payment, a column for each payment kind (a voucher kind
/// without a name has none; the names are the current ones), and the totals. `held` counts payments. Reads
/// `Transactions` with the tables of its contact and course.
ReportResult Transactions_HTML(const ReportPeriod &period, Progress &progress);
