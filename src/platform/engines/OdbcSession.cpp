#include "platform/engines/OdbcSession.h"

#include "platform/engines/OdbcErrors.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <array>

namespace
{
constexpr int logonTimeout = 10; ///< seconds

SQLPOINTER AsPointer(quintptr value)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface takes whole numbers as pointers.
    return reinterpret_cast<SQLPOINTER>(value);
}
} // namespace

OdbcSession::~OdbcSession()
{
    Close();
}

bool OdbcSession::Open(const QString &driverText, EngineErrors &errors)
{
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment)) ||
        !SQL_SUCCEEDED(SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, AsPointer(SQL_OV_ODBC3), 0)) ||
        !SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection))) {
        errors = OdbcErrors::One(OdbcErrors::unnumbered, QStringLiteral("The ODBC manager does not answer."));
        Close();
        return false;
    }
    SQLSetConnectAttr(m_connection, SQL_ATTR_LOGIN_TIMEOUT, AsPointer(logonTimeout), SQL_IS_UINTEGER);
    QString text = driverText; // the manager's functions do not write to it, but do not accept a constant
    const SQLRETURN connected =
        SQLDriverConnectW(m_connection, nullptr, reinterpret_cast<SQLWCHAR *>(text.data()),
                          static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    m_isOpen = SQL_SUCCEEDED(connected);
    if (!m_isOpen) {
        Fail(errors);
        Close();
    }
    return m_isOpen;
}

void OdbcSession::Close()
{
    if (m_isOpen)
        SQLDisconnect(m_connection);
    if (m_connection)
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
    if (m_environment)
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    m_connection = nullptr;
    m_environment = nullptr;
    m_isOpen = false;
}

QString OdbcSession::ServerName() const
{
    std::array<char16_t, 128> name{};
    SQLSMALLINT bytes = 0;
    const SQLRETURN asked =
        SQLGetInfoW(m_connection, SQL_DBMS_NAME, name.data(), sizeof(name) - sizeof(char16_t), &bytes);
    return SQL_SUCCEEDED(asked) ? QString::fromUtf16(name.data()) : QString();
}

bool OdbcSession::SetAutoCommit(bool isOn, EngineErrors &errors)
{
    const quintptr mode = isOn ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
    return SQL_SUCCEEDED(
               SQLSetConnectAttr(m_connection, SQL_ATTR_AUTOCOMMIT, AsPointer(mode), SQL_IS_UINTEGER)) ||
           Fail(errors);
}

bool OdbcSession::EndTransaction(bool keeps, EngineErrors &errors)
{
    const SQLSMALLINT how = keeps ? SQL_COMMIT : SQL_ROLLBACK;
    return SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, m_connection, how)) || Fail(errors);
}

bool OdbcSession::Fail(EngineErrors &errors) const
{
    errors = OdbcErrors::ListOf(SQL_HANDLE_DBC, m_connection);
    return false;
}
