#pragma once

#include <QString>

#include <optional>
#include <vector>

class ListModel;
class Progress;

/// What is wrong with a line of a file, or with one value of it.
struct ImportFault {
    int line = 0;  ///< of the file, from 1
    QString field; ///< "" where the whole line is meant
    QString value;
    QString why; ///< the end of a sentence
};

/// What an import of a file would do. Every line is of one of four kinds.
struct ImportCheck {
    int lines = 0;   ///< of the file; where the check was stopped, those that it came to
    int fresh = 0;   ///< would be added
    int changed = 0; ///< would change a record that is there, each after a question
    int same = 0;    ///< are there already as they stand
    int faulty = 0;  ///< would be skipped for what they hold
    int cut = 0;     ///< values, of lines of the other kinds, that do not fit their columns
    bool stopped = false;
    std::vector<ImportFault> faults{}; ///< of faulty lines, and the values that would be cut
};

/// Goes over a file as Import_CSV_File does and writes nothing. A line is told by the records that are there
/// and by the lines before it. Nothing if the file cannot be read or a statement failed, which the user was
/// told.
std::optional<ImportCheck> Check_CSV_File(const QString &fileName, const ListModel &fields,
                                          const QString &sql, const QString &keyColumn, const QString &table,
                                          Progress &progress);

/// Writes the faults as a CSV file with a line each. False, with a message, if it cannot be written.
bool SaveImportFaults(const QString &fileName, const std::vector<ImportFault> &faults);
