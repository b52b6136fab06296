#include "platform/LogonServer.h"

#include <QtEndian>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
constexpr char preLogin = 0x12;
constexpr char login = 0x10;
constexpr qsizetype headerSize = 8;

QByteArray Read(int client, qsizetype size)
{
    QByteArray data;
    while (data.size() < size) {
        QByteArray part(size - data.size(), '\0');
        const ssize_t got = read(client, part.data(), static_cast<size_t>(part.size()));
        if (got <= 0)
            return {};
        data += part.left(got);
    }
    return data;
}

void Answer(int client, const QByteArray &body)
{
    QByteArray packet("\x04\x01", 2);
    packet += char((body.size() + headerSize) >> 8);
    packet += char((body.size() + headerSize) & 0xFF);
    packet += QByteArray("\0\0\1\0", 4) + body;
    Q_UNUSED(!write(client, packet.constData(), static_cast<size_t>(packet.size())));
}

QByteArray LittleEndian(quint32 value, int bytes)
{
    QByteArray result(4, '\0');
    qToLittleEndian(value, result.data());
    return result.left(bytes);
}

QByteArray Wide(const QString &text)
{
    return {reinterpret_cast<const char *>(text.utf16()), text.size() * 2};
}

QString TextOf(int number)
{
    return number == 4060 ? u"Cannot open database \"Train ing\" requested by the login. The "
                            "login failed."_qs
                          : u"Login failed for user 'clerk'."_qs;
}

QByteArray ErrorRecord(quint32 number, const QString &message)
{
    const QByteArray body = LittleEndian(number, 4) + QByteArray("\1\16", 2) +
                            LittleEndian(static_cast<quint32>(message.size()), 2) + Wide(message) +
                            QByteArray("\0\0", 2) + LittleEndian(1, 4);
    return '\xAA' + LittleEndian(static_cast<quint32>(body.size()), 2) + body;
}

/// The text whose place and length stand at `field` of a logon.
QByteArray Field(const QByteArray &body, qsizetype field)
{
    const char *at = body.constData() + field;
    return body.mid(qFromLittleEndian<quint16>(at), 2 * qFromLittleEndian<quint16>(at + 2));
}

QString FromWide(const QByteArray &bytes)
{
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData()), bytes.size() / 2);
}
} // namespace

LogonServer::LogonServer(const QList<int> &refusals)
    : m_refusals(refusals)
    , m_listener(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto *plain = reinterpret_cast<sockaddr *>(&address);
    if (bind(m_listener, plain, size) == 0 && listen(m_listener, 1) == 0 &&
        getsockname(m_listener, plain, &size) == 0)
        m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { Serve(); });
}

LogonServer::~LogonServer()
{
    shutdown(m_listener, SHUT_RDWR);
    if (m_thread.joinable())
        m_thread.join();
    close(m_listener);
}

void LogonServer::Serve()
{
    const int client = accept(m_listener, nullptr, nullptr);
    while (client >= 0) {
        const QByteArray header = Read(client, headerSize);
        if (header.isEmpty())
            break;
        const QByteArray body = Read(client, qFromBigEndian<quint16>(header.constData() + 2) - headerSize);
        if (header.at(0) == preLogin) {
            // Version 15, no encryption.
            Answer(client, QByteArray("\0\0\13\0\6\1\0\21\0\1\xFF\17\0\7\xD0\0\0\2", 18));
        } else if (header.at(0) == login) {
            ReadLogon(body);
            QByteArray answer;
            for (const int number : m_refusals)
                answer += ErrorRecord(static_cast<quint32>(number), TextOf(number));
            Answer(client, answer + QByteArray("\xFD\2\0\0\0\0\0\0\0\0\0\0\0", 13));
        }
    }
    if (client >= 0)
        close(client);
}

void LogonServer::ReadLogon(const QByteArray &body)
{
    protocol = static_cast<quint8>(body.at(7));
    user = FromWide(Field(body, 40));
    catalogue = FromWide(Field(body, 68));
    QByteArray hidden = Field(body, 44);
    for (char &c : hidden) {
        const auto byte = static_cast<quint8>(static_cast<quint8>(c) ^ 0xA5);
        c = static_cast<char>((byte >> 4) | (byte << 4));
    }
    password = FromWide(hidden);
}
