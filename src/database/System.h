#pragma once

#include <QString>

/// The numbers of the values in table `System` that the program uses.
namespace SystemRef
{
constexpr int DatabaseName = 1;
constexpr int CurrencySymbol = 2;
constexpr int AltRefLabel = 3;  ///< to 6
constexpr int VoucherName = 10; ///< to 14
constexpr int TaxName = 16;
constexpr int TaxRate = 17; ///< percent, as text
} // namespace SystemRef

/// Reads table `System` into the session anew; errors are ignored, and a row outside 0 to 20 is passed over.
void LoadSystemValues();
/// The value of that number, 0 to 20; "" where the database has none.
QString SystemValue(int index);
/// Replaces the value in the session and in table `System` (a DELETE and an INSERT); errors are ignored.
void SetSystemValue(int index, const QString &text);
