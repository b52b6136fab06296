#pragma once

#include "reports/writer/ReportRun.h"

/// Writes the characteristics with their discounts, in order of name. `held` counts them. Reads
/// `Concessions`.
ReportResult Concession_Rep_HTML(Progress &progress);
