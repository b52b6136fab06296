#pragma once

struct sqlite3;
class QString;

/// What the tables of a database file must be, before and after the program's own work on it.
namespace FileSchema
{
/// Why the open file is no database of this program; "" if it is one.
QString WhyForeign(sqlite3 *handle, const QString &file);

/// Adds the indexes that new databases have and this one lacks. One that cannot be made, since the file is
/// locked or lacks the column still, is left to the next time.
void AddMissingIndexes(sqlite3 *handle);

struct Index {
    const char *table;
    const char *name;
    const char *create;     ///< the statement that makes it
    const char *statistics; ///< the statement that tells the engine what a search by it finds
};
/// Ends with one without a name.
extern const Index indexes[];
} // namespace FileSchema
