#include "core/session/Session.h"
#include "support/TestDatabase.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>

/// What only a server does: locks between workstations, and a connection that breaks.
class TestServer : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        QVERIFY(m_other.Open(m_database->ConnectionText()));
        m_process = TestDatabase::Value("SELECT pg_backend_pid()");
    }
    void cleanup()
    {
        m_other.Close();
        m_database.reset();
    }

    void lockedByAnother()
    {
        const QString update = u"UPDATE City SET ReferenceID = 'x' WHERE City_ID = 1"_qs;
        {
            WriteGroup group(m_other);
            QVERIFY(m_other.Execute(update));
            QVERIFY(gConnection.Execute("SET lock_timeout = 300"));
            QElapsedTimer waited;
            waited.start();
            QVERIFY(!gConnection.Execute(update));
            QVERIFY(waited.elapsed() >= 300);
            QVERIFY(!gConnection.Errors().first().description.isEmpty());
            QVERIFY(gConnection.OpenRecordset("SELECT * FROM City"));
        }
        QVERIFY(gConnection.Execute(update));
    }

    void brokenConnection()
    {
        BreakSession();
        QVERIFY(!gConnection.OpenRecordset("SELECT * FROM City"));
        const QString told = gConnection.Errors().first().description;
        QVERIFY2(told.startsWith(u"The connection to the server was lost"_qs), qPrintable(told));
        QVERIFY2(gConnection.OpenRecordset("SELECT * FROM City"), "the next statement connects again");
    }

    /// A database that was set up to take a backslash for an escape would let a typed text end early.
    void settingsOfTheDatabaseDoNotCount()
    {
        const QString alter = u"ALTER DATABASE "_qs % TestDatabase::Value("SELECT current_database()");
        TestDatabase::Run({alter % u" SET standard_conforming_strings = off",
                           alter % u" SET extra_float_digits = 0", alter % u" SET lock_timeout = 0"});
        const bool reconnected = m_database->Reconnect();
        TestDatabase::Run({alter % u" RESET ALL",
                           u"INSERT INTO Users (UserName, Password) VALUES ('Ann', 'x')"_qs,
                           u"INSERT INTO Transactions (MoneyPaid) VALUES (0.1234567890123456)"_qs});
        QVERIFY(reconnected);
        QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM Users WHERE UserName = '\\' AND "
                                     "Password = ' OR 1=1 --'"),
                 u"0"_qs);
        QCOMPARE(TestDatabase::Value("SELECT MoneyPaid FROM Transactions"), u"0.1234567890123456"_qs);
        QCOMPARE(TestDatabase::Value("SHOW lock_timeout"), u"10s"_qs);
    }

    /// What a group had not committed is gone with the server, and the group says so.
    void brokenInAGroup()
    {
        const QString insert = u"INSERT INTO City (City) VALUES ('x')"_qs;
        {
            WriteGroup group(gConnection);
            QVERIFY(gConnection.Execute(insert));
            BreakSession();
            QVERIFY(!gConnection.Execute(insert));
            QVERIFY(!WriteGroup::CommitRunning()); // as before the box that tells of it
            QVERIFY2(!gConnection.Execute(insert), "a retry would go on over the gap");
            QVERIFY(!group.Finish());
            QVERIFY(!gConnection.Errors().first().description.isEmpty());
        }
        WriteGroup next(gConnection);
        QVERIFY(gConnection.Execute(insert) && next.Finish());
        QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM City WHERE City = 'x'"), u"1"_qs);
    }

private:
    /// Ends the session's connection from the server's side.
    void BreakSession()
    {
        QVERIFY(m_other.OpenRecordset(u"SELECT pg_terminate_backend(" % m_process % u")"));
    }
    std::unique_ptr<TestDatabase> m_database;
    Connection m_other; ///< another workstation
    QString m_process;  ///< of the server, which serves the session
};

QTEST_GUILESS_MAIN(TestServer)
#include "test_server.moc"
