#pragma once

#include "database/statements/Rights.h"

#include <QString>

constexpr int RightsCount = 256;

/// The logged-on user's level for a right: the digit at its position in gUserRights. None if the string is
/// shorter or the character is not a digit.
Level UserRight(Right right);
/// The same of a user with those rights.
Level RightIn(const QString &rights, Right right);
/// True if the logged-on user's level for a right is `level` or higher.
bool UserMay(Right right, Level level);
/// The rights of a session if no user is defined: 256 nines.
QString RightsBlank();
