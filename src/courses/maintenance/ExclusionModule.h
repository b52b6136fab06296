#pragma once

#include "courses/maintenance/ExclusionODBC.h"

/// Periods as typed: makes the text safe for SQL, and tells the user when a period exists already. Results as
/// of the data functions.
int Exclusion_Add(const ExclusionPeriod &period);
int Exclusion_Update(const ExclusionPeriod &period);
/// "Easter 26/03/2027 - 05/04/2027", in the form of the choice of periods.
QString Exclusion_Text(const ExclusionPeriod &period);
