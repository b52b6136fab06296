#pragma once

#include <QString>

class Progress;
class ListModel;

/// Writes the rows of a query to a CSV file (UTF-8 with a byte-order mark, lines ending in CR LF), which
/// replaces the file of that name only when it is complete. The checked items of `fields` are written:
/// their keys are column names, their texts the header. Tells the user what came of it.
void Export_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql,
                     Progress &progress);
