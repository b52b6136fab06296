#pragma once

#include "exchange/ImportFault.h"
#include "exchange/TextLines.h"

#include <optional>

class ListModel;
class Progress;

/// What an import of a file would do. Every line is of one of four kinds.
struct ImportCheck {
    /// A line that would be skipped for what it holds, to be mended and imported again.
    struct FaultyLine {
        int number = 0; ///< of the file, from 1
        QString fault;
        QString text;
    };

    int lines = 0;   ///< of the file; where the check was stopped, those that it came to
    int fresh = 0;   ///< would be added
    int changed = 0; ///< would change a record that is there, each after a question
    int same = 0;    ///< are there already as they stand
    int faulty = 0;  ///< would be skipped for what they hold
    int lost = 0;    ///< values, of lines of the other kinds, that would not go in as they stand
    bool stopped = false;
    std::vector<ImportFault> faults{}; ///< of the faulty lines, and the values that would be lost
    QString header{};
    std::vector<FaultyLine> faultyLines{}; ///< but for empty ones
    FileStamp file{};                      ///< of the file as it was checked
};

/// Goes over a file as Import_CSV_File does and writes nothing. A line is told by the records that are there
/// and by the lines before it. Nothing if the file cannot be read or a statement failed, which the user was
/// told.
std::optional<ImportCheck> Check_CSV_File(const QString &fileName, const ListModel &fields,
                                          const QString &sql, const QString &keyColumn, const QString &table,
                                          Progress &progress);

/// Writes the faulty lines as they stand, under the header and behind two more fields, which tell the line's
/// number and its fault: once mended, the file can be imported. False, with a message, if it cannot be
/// written.
bool SaveFaultyLines(const QString &fileName, const ImportCheck &check);
