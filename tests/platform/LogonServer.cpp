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
constexpr char batch = 0x01;
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
    constexpr qsizetype mostInPacket = 4000;
    for (qsizetype at = 0; at < body.size(); at += mostInPacket) {
        const QByteArray part = body.mid(at, mostInPacket);
        const qsizetype size = part.size() + headerSize;
        QByteArray packet("\x04", 1);
        packet += at + part.size() == body.size() ? '\1' : '\0';
        packet += char(size >> 8);
        packet += char(size & 0xFF);
        packet += QByteArray("\0\0\1\0", 4) + part;
        if (send(client, packet.constData(), static_cast<size_t>(packet.size()), MSG_NOSIGNAL) < 0)
            return;
    }
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

/// In a language of the server's own: nothing may depend on the words.
QByteArray ErrorRecord(int error)
{
    const auto number = static_cast<quint32>(error);
    const QString message = u"Fehler Nummer "_qs + QString::number(error);
    const QByteArray body = LittleEndian(number, 4) + QByteArray("\1\16", 2) +
                            LittleEndian(static_cast<quint32>(message.size()), 2) + Wide(message) +
                            QByteArray("\0\0", 2) + LittleEndian(1, 4);
    return '\xAA' + LittleEndian(static_cast<quint32>(body.size()), 2) + body;
}

/// The text whose place and length are at `field` of a logon.
QByteArray Field(const QByteArray &body, qsizetype field)
{
    const char *at = body.constData() + field;
    return body.mid(qFromLittleEndian<quint16>(at), 2 * qFromLittleEndian<quint16>(at + 2));
}

QString FromWide(const QByteArray &bytes)
{
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData()), bytes.size() / 2);
}

QByteArray Done(int status)
{
    return '\xFD' + LittleEndian(static_cast<quint32>(status), 2) + QByteArray(10, '\0');
}

QByteArray Refused(const QList<int> &numbers)
{
    QByteArray answer;
    for (const int number : numbers)
        answer += ErrorRecord(number);
    return answer + Done(2);
}

/// The type of a value's column, and the value as it is in a row.
std::pair<QByteArray, QByteArray> Cell(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return {QByteArray("\x68\1", 2), '\1' + QByteArray(1, value.toBool() ? '\1' : '\0')};
    if (value.typeId() == QMetaType::Int)
        return {QByteArray("\x26\4", 2), '\4' + LittleEndian(static_cast<quint32>(value.toInt()), 4)};
    if (value.typeId() == QMetaType::Double) {
        const double number = value.toDouble();
        return {QByteArray("\x6D\x08", 2),
                '\x08' + QByteArray(reinterpret_cast<const char *>(&number), sizeof(number))};
    }
    const QByteArray text = Wide(value.toString());
    const QByteArray size = LittleEndian(static_cast<quint32>(text.size()), 4);
    QByteArray cell = size + QByteArray(4, '\0');
    if (!text.isEmpty())
        cell += size + text;
    return {QByteArray("\xE7\xFF\xFF\x09\x04\xD0\0\x34", 8), cell + QByteArray(4, '\0')};
}

QByteArray RowOf(const QVariantList &values)
{
    QByteArray columns = '\x81' + LittleEndian(static_cast<quint32>(values.size()), 2);
    QByteArray row("\xD1", 1);
    for (const QVariant &value : values) {
        const auto [type, cell] = Cell(value);
        columns += QByteArray("\0\0\0\0\x09\0", 6) + type + '\2' +
                   Wide(u'c' + QString::number(values.indexOf(value)));
        row += cell;
    }
    return columns + row + Done(0x10);
}
} // namespace

LogonServer::LogonServer(Answer answer)
    : LogonServer(QList<int>())
{
    m_answer = std::move(answer);
}

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
    Wait();
    close(m_listener);
}

void LogonServer::Wait()
{
    shutdown(m_listener, SHUT_RDWR);
    if (m_thread.joinable())
        m_thread.join();
}

void LogonServer::Serve()
{
    for (int client = accept(m_listener, nullptr, nullptr); client >= 0;
         client = accept(m_listener, nullptr, nullptr)) {
        Serve(client);
        close(client);
    }
}

void LogonServer::Serve(int client)
{
    QByteArray body;
    for (QByteArray header = Read(client, headerSize); !header.isEmpty(); header = Read(client, headerSize)) {
        body += Read(client, qFromBigEndian<quint16>(header.constData() + 2) - headerSize);
        if ((header.at(1) & 1) == 0)
            continue; // the rest comes in further packets
        if (header.at(0) == preLogin) {
            // Version 15, no encryption.
            ::Answer(client, QByteArray("\0\0\13\0\6\1\0\21\0\1\xFF\17\0\7\xD0\0\0\2", 18));
        } else if (header.at(0) == login) {
            ::Answer(client, AnswerLogon(body));
        } else if (header.at(0) == batch) {
            const QString sql = FromWide(body.mid(qFromLittleEndian<quint32>(body.constData())));
            statements += sql;
            const Reply reply = m_answer(sql);
            if (reply.hangsUp)
                return;
            ::Answer(client, !reply.errors.isEmpty() ? Refused(reply.errors)
                             : reply.row.isEmpty()   ? Done(0)
                                                     : RowOf(reply.row));
        }
        body.clear();
    }
}

QByteArray LogonServer::AnswerLogon(const QByteArray &body)
{
    ReadLogon(body);
    if (!m_answer)
        return Refused(m_refusals);
    const QByteArray accepted =
        QByteArray("\1\x74\0\0\4\1", 6) + Wide(u"S"_qs) + QByteArray("\17\0\7\xD0", 4);
    return '\xAD' + LittleEndian(static_cast<quint32>(accepted.size()), 2) + accepted + Done(0);
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
