#include "platform/ConnectionText.h"
#include "platform/FileEngine.h"

std::unique_ptr<Engine> OpenEngine(const QString &connectionText, EngineErrors &errors)
{
    const ConnectionParts parts = TakeApart(connectionText);
    if (parts.way == ConnectionParts::Way::File) {
        FileEngine::Request request;
        request.file = parts.file;
        request.password = parts.password;
        request.lockWait = parts.lockWait;
        request.connectionText = connectionText;
        return FileEngine::Open(request, errors);
    }
    errors = {{1, QStringLiteral("Veltrane Connection"),
               QStringLiteral("The connection text names no engine that this program has."), QString()}};
    return nullptr;
}
