#pragma once

#include "exchange/csv/TextLines.h"
#include "exchange/import/ImportFault.h"

#include <optional>

class ListModel;
class Progress;

/// What an import of a file would do. Every line is of one of four kinds.
struct ImportCheck {
    int lines = 0;    ///< of the file; if the check was stopped, those that it reached
    int fresh = 0;    ///< would be added
    int changed = 0;  ///< would change an existing record, each after a question
    int same = 0;     ///< are already there unchanged
    int faulty = 0;   ///< would be skipped because of their contents
    int lost = 0;     ///< values, in lines of the other kinds, that would not be imported unchanged
    int mendable = 0; ///< faulty lines that are not empty
    bool stopped = false;
    qint64 faultCount = 0;             ///< of the faulty lines, and the values that would be lost
    std::vector<ImportFault> faults{}; ///< the first of them, with the beginnings of their values
    FileStamp file{};                  ///< of the file as it was checked
};

/// A file with the wrong data can have millions of faults.
constexpr size_t mostFaultsKept = 5000;

/// Goes through a file as Import_CSV_File does, without writing. A line is judged by the existing records and
/// by the lines before it. Nullopt, after telling the user, if the file cannot be read or a statement failed.
std::optional<ImportCheck> Check_CSV_File(const QString &fileName, const ListModel &fields,
                                          const QString &sql, const QString &keyColumn, const QString &table,
                                          Progress &progress);

/// Goes through `fileName` again and writes its faulty lines, except empty ones, to `target`: unchanged,
/// under the header, with two extra fields in front for the line's number and its fault. Once corrected, they
/// can be imported. False, with a message, if it cannot be written or `fileName` is no longer the file that
/// was checked; also false if the user stops it, which leaves no file.
bool SaveFaultyLines(const QString &target, const QString &fileName, const FileStamp &checked,
                     const ListModel &fields, const QString &sql, const QString &table, Progress &progress);
