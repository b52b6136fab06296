#pragma once

#include <QString>

/// The shortest decimal text that reads back as `value`: no thousands separator, and no exponent for
/// ordinary amounts. A value that is not a number gives "0".
QString ShortestNumber(double value);
