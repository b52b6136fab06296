#pragma once

#include <QString>

class ListModel;
class Progress;

/// Writes the rows of a query to a CSV file (UTF-8 with a byte-order mark, lines ending in CR LF). The
/// checked items of `fields` are written: their keys are column names, their texts the header, and bold ones
/// are required by an import. Asks first if an import of the file would not bring back what the database has.
/// The rows are written beside the file with that name, which they replace only when they are complete. Tells
/// the user the outcome. True if the file was written. No table is written.
bool Export_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql,
                     Progress &progress);
