#include "Bench.h"

#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "support/TestDatabase.h"

#include <sqlite3.h>

#include <memory>

namespace
{
constexpr int people = 2000;
constexpr int statements = 2'000;

/// A database of some people, and a second handle on its file for the twin.
struct People {
    People()
    {
        {
            WriteGroup group(gConnection);
            for (int i = 0; i < people; ++i)
                database.Run(
                    {u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_City) VALUES ('Ann','Smith" %
                     QString::number(i) % u"',1)"});
        }
        Bench::Require(sqlite3_open(gDBQFilename.toUtf8().constData(), &handle) == SQLITE_OK,
                       QStringLiteral("the twin cannot open the database"));
    }
    ~People() { sqlite3_close(handle); }
    People(const People &) = delete;
    People &operator=(const People &) = delete;

    TestDatabase database;
    sqlite3 *handle = nullptr;
};

QString Statement(int number)
{
    return u"SELECT ContactRef, Cust_Surname, Cust_Forename FROM Contacts WHERE ContactRef = " %
           QString::number(2 + number * 7919 % people);
}

qsizetype ReadByText(sqlite3 *handle, const QString &sql)
{
    const QByteArray text = sql.toUtf8();
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(handle, text.constData(), -1, &statement, nullptr);
    qsizetype read = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const auto *surname = reinterpret_cast<const char *>(sqlite3_column_text(statement, 1));
        read += QString::fromUtf8(surname).size() + sqlite3_column_int64(statement, 0);
    }
    sqlite3_finalize(statement);
    return read;
}

qsizetype ReadByRecordset(const QString &sql)
{
    qsizetype read = 0;
    for (const auto &row : OpenRecordset(sql))
        read += row.Text(u"Cust_Surname").size() + row.Long(u"ContactRef");
    return read;
}

double MicrosecondsEach(const std::function<qsizetype(const QString &)> &read)
{
    qsizetype sum = 0;
    const double all = Bench::Milliseconds([&] {
        for (int i = 0; i < statements; ++i)
            sum += read(Statement(i));
    });
    Bench::Require(sum > statements, QStringLiteral("nothing was read"));
    return all * 1000 / statements;
}

const Bench::Registration smallSelect("statement: small indexed select", [] {
    const auto data = std::make_shared<People>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("us");
    benchmark.bar = 0.7;
    benchmark.rounds = 101; // short ones, so that some of each are not disturbed by other work on the machine
    benchmark.ours = [data] { return MicrosecondsEach(ReadByRecordset); };
    benchmark.twin = [data] {
        return MicrosecondsEach([&data](const QString &sql) { return ReadByText(data->handle, sql); });
    };
    return benchmark;
});
} // namespace
