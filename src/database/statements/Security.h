#pragma once

#include "database/statements/Rights.h"

#include <QString>

constexpr int RightsCount = 256;

/// The logged-on user's level of a right: the digit at its position in gUserRights. None where the string is
/// shorter or the character is no digit.
Level UserRight(Right right);
/// True where the logged-on user's level of a right is `level` or above it.
bool UserMay(Right right, Level level);
/// The rights of a session when no user is defined: 256 nines.
QString RightsBlank();
