#pragma once

#include "core/session/Session.h"
#include "platform/connection/Connection.h"

#include <QStringList>

/// Records the statements that reach the session connection while it lives.
class StatementLog final
{
public:
    StatementLog()
    {
        gConnection.ObserveStatements([this](const QString &sql) { m_statements.append(sql); });
    }
    ~StatementLog() { gConnection.ObserveStatements({}); }
    StatementLog(const StatementLog &) = delete;
    StatementLog &operator=(const StatementLog &) = delete;

    const QStringList &Statements() const { return m_statements; }
    void Clear() { m_statements.clear(); }

private:
    QStringList m_statements;
};
