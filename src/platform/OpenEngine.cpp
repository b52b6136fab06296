#include "platform/ConnectionText.h"
#include "platform/DataSourceRegistry.h"
#include "platform/FileEngine.h"
#include "platform/OdbcEngine.h"

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

/// A data source of a file: its text then says which file it is.
std::unique_ptr<Engine> OpenFileSource(ConnectionParts parts, const QString &connectionText,
                                       EngineErrors &errors)
{
    parts.file =
        DataSourceRegistry::Read(u"Software\\ODBC\\odbc.ini\\" % parts.dataSource, QStringLiteral("DBQ"));
    return OpenFile(parts, connectionText % u";DBQ=" % parts.file % u';', errors);
}
} // namespace

std::unique_ptr<Engine> OpenEngine(const QString &connectionText, EngineErrors &errors)
{
    const ConnectionParts parts = TakeApart(connectionText);
    switch (parts.way) {
    case ConnectionParts::Way::File:
        return OpenFile(parts, connectionText, errors);
    case ConnectionParts::Way::DataSource:
        if (DataSourceRegistry::IsFileDriver(DataSourceRegistry::DriverName(parts.dataSource)))
            return OpenFileSource(parts, connectionText, errors);
        return OdbcEngine::Open(parts, connectionText, errors);
    case ConnectionParts::Way::Server:
        return OdbcEngine::Open(parts, connectionText, errors);
    case ConnectionParts::Way::Unknown:
        break;
    }
    errors = {{1, QStringLiteral("Veltrane Connection"),
               QStringLiteral("The connection text names no engine that this program has."), QString()}};
    return nullptr;
}
