#pragma once

#include "database/values/Keys.h"

#include <QString>

/// The courses of a person as a text for a fixed-pitch font: a block a course with the fee, what was taken
/// off and put on, what was paid in each kind and what is owing, and the sum of all that is owing.
QString Contact_CourseHistoryText(ContactRef contactRef);
