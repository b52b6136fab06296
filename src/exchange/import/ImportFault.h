#pragma once

#include <QString>

#include <vector>

class ImportSource;

/// What is wrong with a line of an imported file, or with one value of it.
struct ImportFault {
    int line = 0;  ///< of the file, from 1
    QString field; ///< the header's name; "" if the whole line is meant
    QString value; ///< "" if there is none to show
    QString why;   ///< the end of a sentence

    /// "field 'Born': 'soon' is not a date", with at most that many characters of the value.
    QString Text(int shown = 40) const;
    /// "Line 5, field 'Born': 'soon' is not a date."
    QString Sentence(int shown = 40) const;
};

// What an import has to say about the current line of `source`. The check and the import itself use the same.

/// Why the line is refused, before anything of it is written; one for each value.
std::vector<ImportFault> Objections(const ImportSource &source);
/// The required values that it lacks, for which it is skipped too.
std::vector<ImportFault> Missing(const ImportSource &source);
/// What is not imported unchanged, or not at all.
std::vector<ImportFault> Losses(const ImportSource &source);
