#pragma once

#include "exchange/csv/CsvMap.h"

class ComboModel;
class ListModel;

/// The language section of the map that the wizards use.
inline const QString wizardLanguage = QStringLiteral("English");

/// Fills the first page of both wizards: the only kind of file there is, and the data sets of the map (key
/// "!" and the number), with the first selected.
void FillDataSets(const CsvMap &map, ComboModel &types, ListModel &sets);
