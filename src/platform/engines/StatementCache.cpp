#include "platform/engines/StatementCache.h"

#include "platform/connection/ColumnTypes.h"

#include <sqlite3.h>

namespace
{
/// The system has some 400 statements, and a screen uses a few dozen of them.
constexpr size_t mostStatements = 300;

RecordsetColumn DescribeColumn(sqlite3_stmt *statement, int index)
{
    RecordsetColumn column;
    if (const char *declared = sqlite3_column_decltype(statement, index)) {
        column = ColumnOfDeclaredType(QString::fromUtf8(declared));
    } else {
        // A count or a sum has no declared type, so the type of its value is used.
        switch (sqlite3_column_type(statement, index)) {
        case SQLITE_INTEGER:
            column.type = ColumnType::Integer;
            break;
        case SQLITE_FLOAT:
            column.type = ColumnType::Double;
            break;
        default:
            column.definedSize = ColumnTypes::unlimitedSize;
            break;
        }
    }
    column.name = QString::fromUtf8(sqlite3_column_name(statement, index));
    return column;
}
} // namespace

PreparedStatement::~PreparedStatement()
{
    sqlite3_finalize(m_statement);
}

const std::shared_ptr<const Columns> &PreparedStatement::DescribeColumns()
{
    const int preparations = sqlite3_stmt_status(m_statement, SQLITE_STMTSTATUS_REPREPARE, 0);
    if (m_columns && m_preparations == preparations)
        return m_columns;
    auto columns = std::make_shared<Columns>();
    const int count = sqlite3_column_count(m_statement);
    columns->reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        columns->push_back(DescribeColumn(m_statement, i));
    m_columns = std::move(columns);
    m_preparations = preparations;
    return m_columns;
}

PreparedStatement *StatementCache::Find(std::u16string_view shape)
{
    const auto found = m_byShape.find(shape);
    if (found == m_byShape.end())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    return m_entries.front().statement.get();
}

PreparedStatement *StatementCache::Add(std::u16string_view shape,
                                       std::unique_ptr<PreparedStatement> statement)
{
    if (m_byShape.size() >= mostStatements) {
        m_byShape.erase(m_entries.back().shape);
        m_entries.pop_back();
    }
    m_entries.push_front({std::u16string(shape), std::move(statement)});
    m_byShape.emplace(m_entries.front().shape, m_entries.begin());
    return m_entries.front().statement.get();
}

void StatementCache::Clear()
{
    m_byShape.clear();
    m_entries.clear();
}
