#pragma once

#include <QString>

class Progress;
class ListModel;

/// Takes the data lines of a CSV file into `table`. The checked rows of `fields` are imported; their key is
/// the tag of the target ("*" required, "?" optional), the field's position in the file, "-" and the name of
/// a column of `sql`, which tells types and sizes. Texts of reference tables become keys, with new rows
/// where needed. A record is recognised by its required columns and `ReferenceID`, and the user is asked
/// before each update.
///
/// Dates are DD/MM/YYYY or YYYY-MM-DD. A line with any other date, with too large a number, or with a quote
/// that it does not close counts as skipped, as one without a required value does. These, and values that do
/// not go in as they stand, are named in a box after the summary. Besides `table` it writes Designation,
/// City, County, Country, EthnicGroup and Organisations where a name is new, and mends Contacts and
/// Organisations at the end. Lines are written in groups; a cancelled or failed run leaves the lines before
/// it whole, and says how far it came. False if the run did not get to the end of the file.
bool Import_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql,
                     const QString &keyColumn, const QString &table, Progress &progress);
