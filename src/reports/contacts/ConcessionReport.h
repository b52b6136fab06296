#pragma once

#include "reports/writer/ReportRun.h"

/// Writes the characteristics with their discounts, ordered by name. `held` counts them. Reads `Concessions`.
ReportResult Concession_Rep_HTML(Progress &progress);
