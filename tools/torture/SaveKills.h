#pragma once

#include <QString>

#include <functional>
#include <vector>

/// What the kills of saves work on. Version 0 is the state before a save, version 1 the one after it.
namespace SaveKills
{
struct Subject {
    QString name;        ///< "saving a person with lists"
    unsigned long pause; ///< microseconds before each statement of the save
    /// Makes version 0 of `key`, or of a new one if that is 0 or gone. Returns its key.
    std::function<int(int key)> prepare;
    /// Saves version 1; false if that failed.
    std::function<bool(int key)> save;
    /// Everything that the save writes, as it is stored.
    std::function<QString(int key)> state;
};

/// All subjects; they read what they need from the session's database.
const std::vector<Subject> &Subjects();
/// Fills an empty database with what the subjects choose from.
void MakeChoices();
} // namespace SaveKills
