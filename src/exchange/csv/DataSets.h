#pragma once

#include "exchange/csv/CsvMap.h"

class ComboModel;
class ListModel;

/// The language of the map that the wizards ask for.
inline const QString wizardLanguage = QStringLiteral("English");

/// The first page of both wizards: the one kind of file there is, and the data sets of the map (key "!" and
/// the number), of which the first is selected.
void FillDataSets(const CsvMap &map, ComboModel &types, ListModel &sets);
