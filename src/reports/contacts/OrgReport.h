#pragma once

#include "reports/contacts/ReportChoices.h"
#include "reports/writer/ReportRun.h"

/// Writes all organisations one item per line. `held` counts organisations. The empty organisation 1 is
/// never written. Reads `Organisations`, `City`, `County`, `Country` and the people of each.
ReportResult Org_Report_HTML(const OrgFlags &flags, Progress &progress);
/// The same as one table, with a column for each item.
ReportResult Org_Report_Tabular_HTML(const OrgFlags &flags, Progress &progress);
