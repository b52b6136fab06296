#pragma once

#include <QString>

#include <vector>

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

/// Reads table `System` into the session again; errors are ignored, and a row outside 0 to 20 is skipped.
void LoadSystemValues();
/// The value with that number, 0 to 20; "" if the database has none.
QString SystemValue(int index);
/// Replaces the value in table `System` (a DELETE and an INSERT) and in the session, both or neither. False
/// if it could not be stored, with the reason in the connection's Errors(); the session then keeps what the
/// database has.
bool SetSystemValue(int index, const QString &text);
struct NumberedValue {
    int index = 0;
    QString text;
};
/// The same for several values, all of them in one step.
bool SetSystemValues(const std::vector<NumberedValue> &values);
/// Tells the user which values could not be stored, and why.
void TellNotStored(const std::vector<NumberedValue> &values, const QString &title);
