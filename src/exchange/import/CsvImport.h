#pragma once

#include <QString>

class Progress;
class ListModel;

/// Imports the data lines of a CSV file into `table`. The checked rows of `fields` are imported; their key is
/// the tag of the target ("*" required, "?" optional), the field's position in the file, "-" and the name of
/// a column of `sql`, which gives types and sizes. Texts of reference tables become keys, with new rows where
/// needed. A record is recognised by its required columns and `ReferenceID`, and the user is asked before
/// each update.
///
/// Dates are DD/MM/YYYY or YYYY-MM-DD. A line with any other date, with too large a number, or with a quote
/// that is not closed is skipped, like one without a required value. These, and values that are not imported
/// unchanged, are named in a box after the summary. Besides `table` it writes Designation, City, County,
/// Country, EthnicGroup and Organisations for new names, and repairs Contacts and Organisations at the end.
/// Lines are written in groups; a cancelled or failed run keeps the lines before it, each whole, and says how
/// far it got. False if the run did not reach the end of the file.
bool Import_CSV_File(const QString &fileName, const ListModel &fields, const QString &sql,
                     const QString &keyColumn, const QString &table, Progress &progress);
