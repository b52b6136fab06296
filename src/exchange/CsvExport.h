#pragma once

#include <QString>

class ListModel;
class Progress;

/// Writes the rows of a query to a CSV file (UTF-8 with a byte-order mark, lines ending in CR LF). The rows
/// are written beside the file of that name, which they replace only when they are complete. The checked
/// items of `fields` are written: their keys are column names, their texts the header. Tells the user what
/// came of it, and asks first where rows hold what an import does not read back as it stands. True if the
/// file was written.
bool Export_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql,
                     Progress &progress);
