#include "platform/engines/OdbcStatement.h"

#include "platform/connection/ColumnTypes.h"
#include "platform/engines/OdbcErrors.h"
#include "platform/engines/OdbcSession.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <array>

namespace
{
ColumnType TypeOf(SQLSMALLINT type)
{
    switch (type) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
        return ColumnType::SmallInt;
    case SQL_INTEGER:
    case SQL_BIGINT:
        return ColumnType::Integer;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return ColumnType::Double;
    default:
        return ColumnType::VarWChar;
    }
}
} // namespace

OdbcStatement::OdbcStatement(const OdbcSession &session)
{
    if (session.m_connection)
        SQLAllocHandle(SQL_HANDLE_STMT, session.m_connection, &m_statement);
}

OdbcStatement::~OdbcStatement()
{
    if (m_statement)
        SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
}

bool OdbcStatement::Run(const QString &sql, EngineErrors &errors)
{
    QString text = sql; // the manager does not accept a constant
    const SQLRETURN result = SQLExecDirectW(m_statement, reinterpret_cast<SQLWCHAR *>(text.data()),
                                            static_cast<SQLINTEGER>(text.size()));
    // Drivers answer "no data" to a statement that defines a table or changes no row.
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        return Fail(errors);
    while (!HasRows()) {
        const SQLRETURN next = SQLMoreResults(m_statement);
        if (next == SQL_NO_DATA)
            return true;
        if (!SQL_SUCCEEDED(next))
            return Fail(errors);
    }
    return true;
}

bool OdbcStatement::HasRows() const
{
    SQLSMALLINT columns = 0;
    return SQL_SUCCEEDED(SQLNumResultCols(m_statement, &columns)) && columns > 0;
}

bool OdbcStatement::PassResults(EngineErrors &errors)
{
    while (true) {
        const SQLRETURN result = SQLMoreResults(m_statement);
        if (result == SQL_NO_DATA)
            return true;
        if (!SQL_SUCCEEDED(result))
            return Fail(errors);
    }
}

std::shared_ptr<const Columns> OdbcStatement::Describe(bool knowsSizes) const
{
    auto columns = std::make_shared<Columns>();
    SQLSMALLINT count = 0;
    SQLNumResultCols(m_statement, &count);
    for (SQLSMALLINT i = 1; i <= count; ++i) {
        std::array<char16_t, 256> name{};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
        SQLDescribeColW(m_statement, static_cast<SQLUSMALLINT>(i), reinterpret_cast<SQLWCHAR *>(name.data()),
                        static_cast<SQLSMALLINT>(name.size() - 1), &length, &type, &size, nullptr, nullptr);
        RecordsetColumn column;
        column.name = QString::fromUtf16(name.data());
        column.type = TypeOf(type);
        if (column.type == ColumnType::VarWChar) {
            const bool isLimited = knowsSizes && size > 0 && size < SQLULEN(ColumnTypes::unlimitedSize);
            column.definedSize = isLimited ? static_cast<int>(size) : ColumnTypes::unlimitedSize;
        }
        columns->push_back(column);
    }
    return columns;
}

OdbcStatement::Step OdbcStatement::Next(EngineErrors &errors)
{
    if (!HasRows())
        return Step::End;
    const SQLRETURN result = SQLFetch(m_statement);
    if (result == SQL_NO_DATA)
        return Step::End;
    if (SQL_SUCCEEDED(result))
        return Step::Row;
    Fail(errors);
    return Step::Failure;
}

bool OdbcStatement::AddRow(Recordset::Builder &rows, const Columns &columns, EngineErrors &errors)
{
    for (size_t i = 0; i < columns.size(); ++i) {
        if (!AddCell(rows, static_cast<int>(i) + 1, columns[i].type))
            return Fail(errors);
    }
    return true;
}

bool OdbcStatement::AddCell(Recordset::Builder &rows, int column, ColumnType type)
{
    if (type == ColumnType::VarWChar)
        return AddText(rows, column);
    const auto place = static_cast<SQLUSMALLINT>(column);
    SQLLEN told = 0;
    SQLBIGINT whole = 0;
    SQLDOUBLE real = 0;
    const bool isReal = type == ColumnType::Double;
    const SQLRETURN result =
        isReal ? SQLGetData(m_statement, place, SQL_C_DOUBLE, &real, sizeof(real), &told)
               : SQLGetData(m_statement, place, SQL_C_SBIGINT, &whole, sizeof(whole), &told);
    if (!SQL_SUCCEEDED(result))
        return false;
    if (told == SQL_NULL_DATA)
        rows.AddNull();
    else if (isReal)
        rows.AddDouble(real);
    else
        rows.AddLong(whole);
    return true;
}

/// A text comes in pieces, as wide characters. Drivers need not say how long a piece is if more follows; it
/// then fills its buffer.
bool OdbcStatement::AddText(Recordset::Builder &rows, int column)
{
    std::array<char16_t, 4096> piece; // NOLINT: the driver fills it
    constexpr qsizetype most = piece.size() - 1;
    m_text.clear();
    SQLRETURN result = SQL_SUCCESS_WITH_INFO;
    while (result == SQL_SUCCESS_WITH_INFO) {
        SQLLEN told = 0;
        result = SQLGetData(m_statement, static_cast<SQLUSMALLINT>(column), SQL_C_WCHAR, piece.data(),
                            sizeof(piece), &told);
        if (result == SQL_NO_DATA)
            break;
        if (!SQL_SUCCEEDED(result))
            return false;
        if (told == SQL_NULL_DATA) {
            rows.AddNull();
            return true;
        }
        const qsizetype left = told / qsizetype(sizeof(char16_t));
        m_text.append(reinterpret_cast<const QChar *>(piece.data()),
                      told == SQL_NO_TOTAL || left > most ? most : left);
    }
    rows.AddText(m_text);
    return true;
}

bool OdbcStatement::Fail(EngineErrors &errors) const
{
    errors = OdbcErrors::ListOf(SQL_HANDLE_STMT, m_statement);
    return false;
}
