#pragma once

#include <QString>

class ListModel;

/// Fills `fields` with the header fields of a CSV file: key "?" and the field's position from 1; a field
/// without a name is left out. Tells the user why and gives false where there are none.
bool CsvReadHeaders(const QString &fileName, ListModel &fields);
