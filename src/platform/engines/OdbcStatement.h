#pragma once

#include "platform/connection/EngineError.h"
#include "platform/connection/Recordset.h"

class OdbcSession;

/// A statement of a session and its result, row by row.
class OdbcStatement final
{
public:
    explicit OdbcStatement(const OdbcSession &session);
    ~OdbcStatement();
    OdbcStatement(const OdbcStatement &) = delete;
    OdbcStatement &operator=(const OdbcStatement &) = delete;

    /// Runs the statement up to its first result with rows, or to its end.
    bool Run(const QString &sql, EngineErrors &errors);
    /// Reads past the remaining results, since a failure of a later statement in a batch shows only in that
    /// statement's own result.
    bool PassResults(EngineErrors &errors);

    /// `knowsSizes`: the driver tells the true size of a text column.
    std::shared_ptr<const Columns> Describe(bool knowsSizes) const;
    enum class Step { Row, End, Failure };
    Step Next(EngineErrors &errors);
    /// Adds the row that Next() reached. False if a read fails, even in the middle of a text.
    bool AddRow(Recordset::Builder &rows, const Columns &columns, EngineErrors &errors);

private:
    bool HasRows() const;
    bool AddCell(Recordset::Builder &rows, int column, ColumnType type);
    bool AddText(Recordset::Builder &rows, int column);
    bool Fail(EngineErrors &errors) const;

    void *m_statement = nullptr; ///< the manager's handle
    QString m_text;
};
