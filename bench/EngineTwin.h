#pragma once

#include "Bench.h"
#include "core/session/Session.h"

#include <sqlite3.h>

#include <map>
#include <string>

/// A separate handle that runs the program's statements by hand.
class EngineTwin final
{
public:
    EngineTwin()
    {
        Bench::Require(sqlite3_open(gDBQFilename.toUtf8().constData(), &m_handle) == SQLITE_OK,
                       "the twin cannot open the database");
        for (const char *setting : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=FULL"})
            sqlite3_exec(m_handle, setting, nullptr, nullptr, nullptr);
    }
    ~EngineTwin()
    {
        for (const auto &[sql, statement] : m_statements)
            sqlite3_finalize(statement);
        sqlite3_close(m_handle);
    }
    EngineTwin(const EngineTwin &) = delete;
    EngineTwin &operator=(const EngineTwin &) = delete;

    /// Returns the first column of the first row, 0 without a row; every row is stepped over.
    qint64 Run(const std::string &sql, std::initializer_list<int> values = {})
    {
        sqlite3_stmt *&statement = m_statements[sql];
        if (!statement)
            statement = Prepared(sql, SQLITE_PREPARE_PERSISTENT);
        int at = 0;
        for (const int value : values)
            sqlite3_bind_int(statement, ++at, value);
        const qint64 first = Step(statement);
        sqlite3_reset(statement);
        return first;
    }

    /// The same for a statement that is sent as a text, values and all.
    qint64 Send(const QString &sql)
    {
        sqlite3_stmt *statement = Prepared(sql.toStdString(), 0);
        const qint64 first = Step(statement);
        sqlite3_finalize(statement);
        return first;
    }

    /// Reads every row into values of the program's kind, and drops them. Returns how many there were.
    int Read(const QString &sql)
    {
        sqlite3_stmt *statement = Prepared(sql.toStdString(), 0);
        int rows = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            ++rows;
            for (int column = 0; column < sqlite3_column_count(statement); ++column) {
                if (sqlite3_column_type(statement, column) != SQLITE_TEXT) {
                    m_read += static_cast<qsizetype>(sqlite3_column_int64(statement, column));
                    continue;
                }
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
                m_read += QString::fromUtf8(text, sqlite3_column_bytes(statement, column)).size();
            }
        }
        sqlite3_finalize(statement);
        return rows;
    }

private:
    sqlite3_stmt *Prepared(const std::string &sql, unsigned flags)
    {
        sqlite3_stmt *statement = nullptr;
        Bench::Require(sqlite3_prepare_v3(m_handle, sql.c_str(), -1, flags, &statement, nullptr) == SQLITE_OK,
                       QString::fromStdString(sql));
        return statement;
    }

    qint64 Step(sqlite3_stmt *statement)
    {
        int result = sqlite3_step(statement);
        const qint64 first = result == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : 0;
        while (result == SQLITE_ROW)
            result = sqlite3_step(statement);
        Bench::Require(result == SQLITE_DONE, QString::fromUtf8(sqlite3_errmsg(m_handle)));
        return first;
    }

    sqlite3 *m_handle = nullptr;
    std::map<std::string, sqlite3_stmt *> m_statements;
    qsizetype m_read = 0; ///< of all values, so that reading them cannot be left out
};
