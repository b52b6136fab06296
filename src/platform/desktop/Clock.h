#pragma once

#include <QDateTime>

/// The workstation's clock. Tests stop it at a chosen moment.
namespace Clock
{
QDate Today();
QDateTime Now();
/// Stops the clock at `moment`; an invalid moment lets it run again.
void StopAt(const QDateTime &moment);
} // namespace Clock
