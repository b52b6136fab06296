#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <thread>

/// Listens on loopback for one client that speaks SQL Server's protocol, takes its logon apart and refuses
/// it. What the driver was given shows in what arrives.
class LogonServer final
{
public:
    /// `refusals`: the numbers of the errors that it answers with, in order.
    explicit LogonServer(const QList<int> &refusals);
    ~LogonServer();
    LogonServer(const LogonServer &) = delete;
    LogonServer &operator=(const LogonServer &) = delete;

    int Port() const { return m_port; }
    /// After the client has had its answer.
    void Wait() { m_thread.join(); }

    QString user;
    QString password;
    QString catalogue;
    int protocol = 0; ///< 0x74 for 7.4

private:
    void Serve();
    void ReadLogon(const QByteArray &body);
    QList<int> m_refusals;
    int m_listener = -1;
    int m_port = 0;
    std::thread m_thread;
};
