#pragma once

#include "platform/connection/EngineError.h"
#include "platform/connection/Recordset.h"

class OdbcSession;

/// One statement of a session and its result, row by row.
class OdbcStatement final
{
public:
    explicit OdbcStatement(const OdbcSession &session);
    ~OdbcStatement();
    OdbcStatement(const OdbcStatement &) = delete;
    OdbcStatement &operator=(const OdbcStatement &) = delete;

    /// Runs it up to its first result that has rows, or to its end.
    bool Run(const QString &sql, EngineErrors &errors);
    /// Passes over what follows: a statement that fails after the first of a batch shows in no result before
    /// its own.
    bool PassResults(EngineErrors &errors);

    /// `knowsSizes`: the driver tells the true size of a text column.
    std::shared_ptr<const Columns> Describe(bool knowsSizes) const;
    enum class Step { Row, End, Failure };
    Step Next(EngineErrors &errors);
    /// Adds the row that Next() came to. A read that fails, in the middle of a text too, is a failure.
    bool AddRow(Recordset::Builder &rows, const Columns &columns, EngineErrors &errors);

private:
    bool HasRows() const;
    bool AddCell(Recordset::Builder &rows, int column, ColumnType type);
    bool AddText(Recordset::Builder &rows, int column);
    bool Fail(EngineErrors &errors) const;

    void *m_statement = nullptr; ///< the manager's handle
    QString m_text;
};
