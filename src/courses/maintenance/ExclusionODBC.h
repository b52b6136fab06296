#pragma once

#include "database/statements/ReadRow.h"

#include <QString>

#include <optional>
#include <vector>

/// Data functions of the periods that a series of events can leave out, table `ExclusionDates`. Both days of
/// a period, date-ints, belong to it. Texts come already safe for SQL.

struct ExclusionPeriod {
    int excludeRef = 0;
    QString referenceID;
    int from = 0;
    int to = 0;
};

/// All periods by their first day; nothing on an error.
std::optional<std::vector<ExclusionPeriod>> ADO_Course_FillExclusionDates();
/// Those that end on that day or later.
std::optional<std::vector<ExclusionPeriod>> ADO_Course_FillExclusionDates2(int date);
ReadRow<ExclusionPeriod> ADO_Course_ShowExclusionDate(int excludeRef);
/// The new key; 0 where days and reference exist, -1 on an error.
int ADO_Course_AddExclusionDate(int from, int to, const QString &referenceId);
/// `excludeRef`; 0 where another period has days and reference, -1 on an error.
int ADO_Course_UpdateExclusionDate(int from, int to, int excludeRef, const QString &referenceId);
/// False on an error.
bool ADO_Course_DeleteExclusionDate(int excludeRef);
