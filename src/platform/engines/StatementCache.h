#pragma once

#include "platform/connection/Recordset.h"
#include "platform/engines/FileWholeNumbers.h"

#include <QHashFunctions>

#include <cstring>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// A prepared statement with the description of its columns.
class PreparedStatement final
{
public:
    explicit PreparedStatement(sqlite3_stmt *statement, std::vector<WholeTarget> wholeNumbers = {})
        : m_statement(statement)
        , m_wholeNumbers(std::move(wholeNumbers))
    {
    }
    ~PreparedStatement();
    PreparedStatement(const PreparedStatement &) = delete;
    PreparedStatement &operator=(const PreparedStatement &) = delete;

    sqlite3_stmt *Statement() const { return m_statement; }
    const std::vector<WholeTarget> &WholeNumbers() const { return m_wholeNumbers; }
    /// The columns. Call it after the first step of a run, because only then is a change of the tables
    /// noticed.
    const std::shared_ptr<const Columns> &DescribeColumns();

private:
    sqlite3_stmt *m_statement;
    std::vector<WholeTarget> m_wholeNumbers;
    std::shared_ptr<const Columns> m_columns;
    int m_preparations =
        -1; ///< how often the engine had prepared the statement again by itself when m_columns was made
};

/// The prepared statements of the most recent shapes.
class StatementCache final
{
public:
    /// Null if that shape is not in the cache.
    PreparedStatement *Find(std::u16string_view shape);
    PreparedStatement *Add(std::u16string_view shape, std::unique_ptr<PreparedStatement> statement);
    void Clear();

private:
    struct Entry {
        std::u16string shape;
        std::unique_ptr<PreparedStatement> statement;
    };
    struct Hash {
        size_t operator()(std::u16string_view shape) const
        {
            return qHashBits(shape.data(), shape.size() * sizeof(char16_t));
        }
    };
    struct Same {
        bool operator()(std::u16string_view a, std::u16string_view b) const
        {
            return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
        }
    };
    std::list<Entry> m_entries; ///< the most recently used first
    std::unordered_map<std::u16string_view, std::list<Entry>::iterator, Hash, Same>
        m_byShape; ///< of the entries' texts
};
