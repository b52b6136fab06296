#pragma once

#include "platform/connection/EngineError.h"

#include <QString>

/// Empties `log.txt` and writes its first line. Failures of the log itself are ignored.
void LogStart();
/// Writes the last line of `log.txt`.
void LogFinish();
/// Appends the current report text and the routine's name to `log.txt`, three lines.
void LogError(const QString &routineName);

/// Notes the failure that the next HandleError reports.
void SetCurrentError(const EngineError &error);

/// The one place where a caught error becomes a message and a line in the log. Returns 4 when the user
/// chose to retry; 0 for an error whose number is `ignoredNumber` (0 = none); any other value means giving
/// up. A retry is offered only for an error in the file engine's own list.
int HandleError(const QString &routineName, int ignoredNumber);
