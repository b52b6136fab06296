#pragma once

#include <QString>

class ListModel;

/// Fills `fields` with the header fields of a CSV file; the key is "?" and the field's position from 1. A
/// field without a name is left out. If there are none, tells the user why and returns false.
bool CsvReadHeaders(const QString &fileName, ListModel &fields);
