#pragma once

#include "exchange/csv/TextLines.h"
#include "exchange/import/ImportFault.h"

#include <optional>

class ListModel;
class Progress;

/// What an import of a file would do. Every line is of one of four kinds.
struct ImportCheck {
    int lines = 0;    ///< of the file; where the check was stopped, those that it came to
    int fresh = 0;    ///< would be added
    int changed = 0;  ///< would change a record that is there, each after a question
    int same = 0;     ///< are there already as they stand
    int faulty = 0;   ///< would be skipped for what they hold
    int lost = 0;     ///< values, of lines of the other kinds, that would not go in as they stand
    int mendable = 0; ///< faulty lines that are not empty
    bool stopped = false;
    qint64 faultCount = 0;             ///< of the faulty lines, and the values that would be lost
    std::vector<ImportFault> faults{}; ///< the first of them, with the beginnings of their values
    FileStamp file{};                  ///< of the file as it was checked
};

/// A file of other data than was meant can have millions of faults.
constexpr size_t mostFaultsKept = 5000;

/// Goes over a file as Import_CSV_File does and writes nothing. A line is told by the records that are there
/// and by the lines before it. Nothing if the file cannot be read or a statement failed, which the user was
/// told.
std::optional<ImportCheck> Check_CSV_File(const QString &fileName, const ListModel &fields,
                                          const QString &sql, const QString &keyColumn, const QString &table,
                                          Progress &progress);

/// Goes over `fileName` once more and writes its faulty lines but for empty ones to `target`: as they stand,
/// under the header and after two more fields, which tell the line's number and its fault. Once mended, they
/// can be imported. False, with a message, if it cannot be written or `fileName` is not any more the file
/// that was checked; false too where the user stops it, which leaves no file.
bool SaveFaultyLines(const QString &target, const QString &fileName, const FileStamp &checked,
                     const ListModel &fields, const QString &sql, const QString &table, Progress &progress);
