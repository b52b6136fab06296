#include "platform/engines/FileSchema.h"

#include "platform/engines/FileOpen.h"

#include <QDir>
#include <QSet>
#include <QString>
#include <QStringList>

#include <sqlite3.h>

#include <array>
#include <optional>

namespace
{
/// The names in the file's own list of its contents, in lower case; nullopt if it cannot be read.
std::optional<QSet<QByteArray>> NamesOf(sqlite3 *handle, const char *query)
{
    const auto take = [](void *names, int, char **values, char **) {
        static_cast<QSet<QByteArray> *>(names)->insert(QByteArray(values[0]).toLower());
        return 0;
    };
    QSet<QByteArray> names;
    if (sqlite3_exec(handle, query, take, &names, nullptr) != SQLITE_OK)
        return std::nullopt;
    return names;
}

std::optional<QSet<QByteArray>> Tables(sqlite3 *handle)
{
    return NamesOf(handle, "SELECT name FROM sqlite_master WHERE type = 'table'");
}
} // namespace

QString FileSchema::WhyForeign(sqlite3 *handle, const QString &file)
{
    // The tables that the program's first version had.
    constexpr std::array<const char *, 4> needed{"Contacts", "Courses", "System", "Users"};
    const std::optional<QSet<QByteArray>> tables = Tables(handle);
    QStringList missing;
    for (const char *table : needed) {
        if (tables && !tables->contains(QByteArray(table).toLower()))
            missing.append(QString::fromLatin1(table));
    }
    if (missing.isEmpty())
        return {};
    return QDir::toNativeSeparators(file) % u" is not a database of this program: it has no table " %
           missing.join(QStringLiteral(", ")) % u". Nothing was changed in it.";
}

void FileSchema::AddMissingIndexes(sqlite3 *handle)
{
    const auto found = NamesOf(handle, "SELECT name FROM sqlite_master WHERE type = 'index'");
    const auto tables = Tables(handle);
    if (!found || !tables)
        return;
    for (const Index *index = indexes; index->name; ++index) {
        if (found->contains(QByteArray(index->name).toLower()) ||
            !tables->contains(QByteArray(index->table).toLower()))
            continue;
        if (FileOpen::Runs(handle, index->create))
            FileOpen::Runs(handle, index->statistics);
    }
}
