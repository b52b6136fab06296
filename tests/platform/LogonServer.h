#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <thread>

/// Listens on loopback for clients that speak SQL Server's protocol, one after the other, and takes their
/// logon apart. What the driver was given shows in what arrives.
class LogonServer final
{
public:
    /// What a statement is answered with: errors, or one row, or nothing but that it is done.
    struct Reply {
        QVariantList row{}; ///< texts, whole numbers, flags (bool) and doubles, each a column "c0", "c1", ...
        QList<int> errors{}; ///< numbers, in order
        bool hangsUp = false;
    };
    using Answer = std::function<Reply(const QString &sql)>;

    /// `refusals`: the numbers of the errors that it refuses the logon with, in order.
    explicit LogonServer(const QList<int> &refusals);
    /// Lets the client in and answers its statements.
    explicit LogonServer(Answer answer);
    ~LogonServer();
    LogonServer(const LogonServer &) = delete;
    LogonServer &operator=(const LogonServer &) = delete;

    int Port() const { return m_port; }
    /// Ends it when its client has gone; what it was told can then be read.
    void Wait();

    QStringList statements;
    QString user;
    QString password;
    QString catalogue;
    int protocol = 0; ///< 0x74 for 7.4

private:
    void Serve();
    void Serve(int client);
    QByteArray AnswerLogon(const QByteArray &body);
    void ReadLogon(const QByteArray &body);
    QList<int> m_refusals;
    Answer m_answer;
    int m_listener = -1;
    int m_port = 0;
    std::thread m_thread;
};
