#pragma once

#include "platform/connection/EngineError.h"

/// A connection of the ODBC manager. Its statements must be destroyed before it closes.
class OdbcSession final
{
public:
    OdbcSession() = default;
    ~OdbcSession();
    OdbcSession(const OdbcSession &) = delete;
    OdbcSession &operator=(const OdbcSession &) = delete;

    /// Connects with a text in the driver's own form. Gives up on a server that does not answer within some
    /// seconds. False on a failure, with nothing left open.
    bool Open(const QString &driverText, EngineErrors &errors);
    void Close();

    /// The server's name for itself: "PostgreSQL", "Microsoft SQL Server".
    QString ServerName() const;
    /// With auto-commit off, a transaction runs until it is ended.
    bool SetAutoCommit(bool isOn, EngineErrors &errors);
    bool EndTransaction(bool keeps, EngineErrors &errors);

private:
    friend class OdbcStatement;
    bool Fail(EngineErrors &errors) const;

    // The manager's handles.
    void *m_environment = nullptr;
    void *m_connection = nullptr;
    bool m_isOpen = false;
};
