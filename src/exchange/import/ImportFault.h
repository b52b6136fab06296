#pragma once

#include <QString>

#include <vector>

class ImportSource;

/// What is wrong with a line of an imported file, or with one value of it.
struct ImportFault {
    int line = 0;  ///< of the file, from 1
    QString field; ///< the header's name; "" where the line is meant
    QString value; ///< "" where there is none to show
    QString why;   ///< the end of a sentence

    /// "field 'Born': 'soon' is no date", with so many characters of the value.
    QString Text(int shown = 40) const;
    /// "Line 5, field 'Born': 'soon' is no date."
    QString Sentence(int shown = 40) const;
};

// What an import has to say of the line at which `source` stands. A check and the import itself ask the same.

/// Why the line is not taken, before anything of it is written; one for each value.
std::vector<ImportFault> Objections(const ImportSource &source);
/// The required values that it has not, without which it is skipped too.
std::vector<ImportFault> Missing(const ImportSource &source);
/// What goes in other than it stands in the file, or not at all.
std::vector<ImportFault> Losses(const ImportSource &source);
