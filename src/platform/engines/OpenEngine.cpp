// OpenEngine of Engine.h: picks one of the engines in this folder.
#include "platform/connection/ConnectionText.h"
#include "platform/connection/DataSourceRegistry.h"
#include "platform/engines/FileEngine.h"
#include "platform/engines/OdbcEngine.h"

namespace
{
std::unique_ptr<Engine> OpenFile(const ConnectionParts &parts, const QString &connectionText,
                                 EngineErrors &errors)
{
    FileEngine::Request request;
    request.file = parts.file;
    request.password = parts.password;
    request.lockWait = parts.lockWait;
    request.connectionText = connectionText;
    return FileEngine::Open(request, errors);
}

/// Opens a data source of a file, and adds the file to its connection text.
std::unique_ptr<Engine> OpenFileSource(ConnectionParts parts, const QString &connectionText,
                                       EngineErrors &errors)
{
    parts.file =
        DataSourceRegistry::Read(u"Software\\ODBC\\odbc.ini\\" % parts.dataSource, QStringLiteral("DBQ"));
    return OpenFile(parts, connectionText % u";DBQ=" % parts.file % u';', errors);
}

std::unique_ptr<Engine> OpenServerSource(ConnectionParts parts, const QString &connectionText,
                                         const ServerLogon &logon, EngineErrors &errors)
{
    if (logon.user.isEmpty() && logon.password.isEmpty())
        return OdbcEngine::Open(parts, connectionText, errors);
    parts.logon = logon;
    const qsizetype begin = connectionText.indexOf(QStringLiteral(";UID="), 0, Qt::CaseInsensitive);
    const qsizetype end = connectionText.lastIndexOf(QStringLiteral(";DSN="), -1, Qt::CaseInsensitive);
    const QString user = logon.user.isEmpty() ? parts.user : logon.user;
    const QString text =
        connectionText.left(begin) % u";UID=" % user % u";PWD=" % logon.password % connectionText.mid(end);
    return OdbcEngine::Open(parts, text, errors);
}
} // namespace

std::unique_ptr<Engine> OpenEngine(const QString &connectionText, const ServerLogon &logon,
                                   EngineErrors &errors)
{
    const ConnectionParts parts = TakeApart(connectionText);
    switch (parts.way) {
    case ConnectionParts::Way::File:
        return OpenFile(parts, connectionText, errors);
    case ConnectionParts::Way::DataSource:
        if (DataSourceRegistry::IsFileDriver(DataSourceRegistry::DriverName(parts.dataSource)))
            return OpenFileSource(parts, connectionText, errors);
        return OpenServerSource(parts, connectionText, logon, errors);
    case ConnectionParts::Way::Server:
        return OdbcEngine::Open(parts, connectionText, errors);
    case ConnectionParts::Way::Unknown:
        break;
    }
    errors = {{1, QStringLiteral("Veltrane Connection"),
               QStringLiteral("The connection text names no engine that this program has."), QString()}};
    return nullptr;
}
