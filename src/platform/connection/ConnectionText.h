#pragma once

#include <QString>

/// What a user entered when asked for a logon; handed to a server's data source separately from the
/// connection text, which is the same for everybody.
struct ServerLogon {
    QString user{};
    QString password{};
};

/// The connection texts of the system, taken apart. A value is found by the text around it, since a password
/// may contain any character, semicolons included.
struct ConnectionParts {
    enum class Way { Unknown, File, Server, DataSource };
    Way way = Way::Unknown;
    QString file;       ///< of way File
    QString server;     ///< of way Server
    QString catalogue;  ///< of way Server
    QString dataSource; ///< of way DataSource
    QString user;
    QString password;
    ServerLogon logon{};
    int lockWait = 10'000; ///< milliseconds; `LockWait=` of a file's text, before its password
};

ConnectionParts TakeApart(const QString &connectionText);
