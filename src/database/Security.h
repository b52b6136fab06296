#pragma once

#include <QString>

constexpr int RightsCount = 256;

/// The level of right `index` in the logged-on user's rights: the digit at that position of gUserRights.
/// 0 where the string is shorter or the character is no digit.
int UserRight(int index);
/// The rights of a session when no user is defined: 256 nines.
QString RightsBlank();
