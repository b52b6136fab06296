#include "platform/engines/SqlServerBrowser.h"

#include <QByteArray>
#include <QList>
#include <QScopeGuard>

#include <array>
#include <vector>

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
constexpr int tries = 3;         // a datagram may be lost
constexpr int waitPerTry = 1000; // milliseconds
constexpr char askForInstance = 4;
constexpr char answer = 5;

/// A socket for each address of the service.
std::vector<pollfd> SocketsTo(const QString &host)
{
    std::vector<pollfd> sockets;
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_DGRAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(host.toUtf8().constData(), "1434", &wanted, &found) != 0)
        return sockets;
    for (const addrinfo *address = found; address; address = address->ai_next) {
        const int handle = socket(address->ai_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        if (handle < 0)
            continue;
        if (connect(handle, address->ai_addr, address->ai_addrlen) == 0)
            sockets.push_back({handle, POLLIN, 0});
        else
            close(handle);
    }
    freeaddrinfo(found);
    return sockets;
}

/// The port in "...;InstanceName;X;...;tcp;49152;...", which follows three bytes; -1 if it names none.
int PortIn(const QByteArray &told)
{
    if (told.isEmpty() || told.front() != answer)
        return -1;
    const QList<QByteArray> parts = told.mid(3).split(';');
    const qsizetype tcp = parts.indexOf("tcp");
    const int port = tcp < 0 ? 0 : parts.value(tcp + 1).toInt();
    return port > 0 ? port : -1;
}
} // namespace

int InstancePort(const QString &host, const QString &instance)
{
    std::vector<pollfd> sockets = SocketsTo(host);
    const auto closing = qScopeGuard([&sockets] {
        for (const pollfd &open : sockets)
            close(open.fd);
    });
    const QByteArray question = askForInstance + instance.toUtf8() + '\0';
    for (int i = 0; i < tries && !sockets.empty(); ++i) {
        for (const pollfd &open : sockets)
            Q_UNUSED(!send(open.fd, question.constData(), static_cast<size_t>(question.size()), 0));
        if (poll(sockets.data(), sockets.size(), waitPerTry) <= 0)
            continue;
        for (const pollfd &open : sockets) {
            std::array<char, 2048> told{};
            const ssize_t size = recv(open.fd, told.data(), told.size(), MSG_DONTWAIT);
            if (size > 0)
                return PortIn(QByteArray(told.data(), size));
        }
    }
    return -1;
}
