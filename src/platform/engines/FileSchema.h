#pragma once

struct sqlite3;
class QString;

/// Checks the tables of a database file, and completes its indexes.
namespace FileSchema
{
/// Why the open file is not a database of this program; "" if it is one.
QString WhyForeign(sqlite3 *handle, const QString &file);

/// Adds the indexes that new databases have and this one lacks. One that cannot be made, because the file is
/// locked or still lacks the column, is left for the next time.
void AddMissingIndexes(sqlite3 *handle);

struct Index {
    const char *table;
    const char *name;
    const char *create;     ///< the statement that makes it
    const char *statistics; ///< the statement that tells the engine what a search by it finds
};
/// The last entry has no name.
extern const Index indexes[];
} // namespace FileSchema
