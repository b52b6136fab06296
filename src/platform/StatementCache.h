#pragma once

#include "platform/Recordset.h"

#include <QHash>
#include <QString>

#include <list>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// A prepared statement with what its columns are.
class PreparedStatement final
{
public:
    explicit PreparedStatement(sqlite3_stmt *statement)
        : m_statement(statement)
    {
    }
    ~PreparedStatement();
    PreparedStatement(const PreparedStatement &) = delete;
    PreparedStatement &operator=(const PreparedStatement &) = delete;

    sqlite3_stmt *Statement() const { return m_statement; }
    /// The columns, described once the statement has stepped: a change of the tables shows only then.
    const std::shared_ptr<const Columns> &DescribeColumns();

private:
    sqlite3_stmt *m_statement;
    std::shared_ptr<const Columns> m_columns;
    int m_preparations = -1; ///< by the engine, of its own accord, when m_columns was made
};

/// The prepared statements of the shapes that ran last.
class StatementCache final
{
public:
    /// Null where that shape is not kept.
    PreparedStatement *Find(const QString &shape);
    PreparedStatement *Add(const QString &shape, sqlite3_stmt *statement);
    void Clear();

private:
    struct Entry {
        QString shape;
        std::unique_ptr<PreparedStatement> statement;
    };
    std::list<Entry> m_entries; ///< the one used last comes first
    QHash<QString, std::list<Entry>::iterator> m_byShape;
};
