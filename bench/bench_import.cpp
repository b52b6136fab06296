#include "Bench.h"

#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "exchange/import/ImportState.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "support/TestDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <vector>

namespace
{
constexpr int lines = 10'000;
constexpr double longestImport = 3225; // milliseconds
constexpr double longestSave = 1000;   // milliseconds

/// One line of the file; its last six fields are looked up.
struct Person {
    QByteArray forename, surname, address, postcode, telephone, title, city, county, country, ethnic,
        organisation;

    explicit Person(int i)
        : forename("Forename" + QByteArray::number(i % 211))
        , surname("Surname" + QByteArray::number(i))
        , address(QByteArray::number(i % 300) + " High Street")
        , postcode("AB" + QByteArray::number(i % 90) + " 1CD")
        , telephone("01632 960" + QByteArray::number(i % 1000))
        , title("Title" + QByteArray::number(i % 7))
        , city("City" + QByteArray::number(i % 400))
        , county("County" + QByteArray::number(i % 60))
        , country("Country" + QByteArray::number(i % 12))
        , ethnic("Group" + QByteArray::number(i % 17))
        , organisation("Organisation" + QByteArray::number(i % 900))
    {
    }
};

QByteArray File(int people)
{
    QByteArray text(
        "Forename,Surname,Address,Postcode,Telephone,Title,City,County,Country,Ethnic,Organisation\n");
    for (int i = 0; i < people; ++i) {
        const Person p(i);
        text += QByteArrayList{p.forename, p.surname, p.address, p.postcode, p.telephone,   p.title,
                               p.city,     p.county,  p.country, p.ethnic,   p.organisation}
                    .join(',') +
                '\n';
    }
    return text;
}

/// Workstations that keep saving until the import is done.
class Clerks final
{
public:
    explicit Clerks(int count)
    {
        for (int i = 0; i < count; ++i) {
            auto &clerk = m_clerks.emplace_back(std::make_unique<QProcess>());
            clerk->start(QCoreApplication::applicationDirPath() + "/clerk_probe",
                         {gConnection.ConnectionText()});
            Bench::Require(clerk->waitForReadyRead(), "a clerk does not begin");
        }
    }

    /// Ends them. Each must have kept saving until now, and none may have waited for long.
    void Finish()
    {
        for (const auto &clerk : m_clerks) {
            clerk->waitForFinished(0);
            Bench::Require(clerk->state() == QProcess::Running, "a clerk's save failed");
            clerk->kill();
            clerk->waitForFinished();
            for (const QByteArray &took : clerk->readAllStandardOutput().split('\n'))
                Bench::Require(took.toDouble() <= longestSave,
                               "a clerk waited " + QString::fromUtf8(took) + " ms");
        }
    }

private:
    std::vector<std::unique_ptr<QProcess>> m_clerks;
};

/// How long the import of as many people takes while clerks save, in milliseconds.
double Import(int people = lines, int clerkCount = 0)
{
    const TestDatabase database;
    const QString name = database.Directory() + "/people.csv";
    QFile file(name);
    Bench::Require(file.open(QIODevice::WriteOnly) && file.write(File(people)) > 0,
                   "the file cannot be written");
    file.close();

    QString told;
    Dialogs::Installed().msgBox = [&told](const QString &text, auto...) {
        told = text;
        return Dialogs::Answer::Ok;
    };
    ImportState state(CsvMap::Installed());
    Bench::Require(state.ChooseDataSet() && state.ChooseFile(name) && state.CheckMapping(), told);
    bool completed = false;
    Clerks clerks(clerkCount);
    const double took = Bench::Milliseconds([&] {
        Progress progress;
        completed = state.Run(progress);
    });
    clerks.Finish();
    Bench::Require(completed && told.contains(QString::number(people) + " Records where imported."), told);
    return took;
}

/// The import's statements by hand: each prepared once, in transactions of the same length.
class Twin final
{
public:
    explicit Twin(const QString &file)
    {
        Bench::Require(sqlite3_open(file.toUtf8().constData(), &m_handle) == SQLITE_OK,
                       "the twin cannot open");
    }
    ~Twin()
    {
        for (const auto &[sql, statement] : m_statements)
            sqlite3_finalize(statement);
        sqlite3_close(m_handle);
    }
    Twin(const Twin &) = delete;
    Twin &operator=(const Twin &) = delete;

    /// Runs a statement with these values and returns its first column, 0 without a row.
    qint64 Run(const std::string &sql, std::initializer_list<QByteArray> texts,
               std::initializer_list<qint64> numbers = {})
    {
        sqlite3_stmt *&statement = m_statements[sql];
        if (!statement)
            Bench::Require(sqlite3_prepare_v3(m_handle, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT,
                                              &statement, nullptr) == SQLITE_OK,
                           QString::fromStdString(sql));
        int at = 0;
        for (const QByteArray &text : texts)
            sqlite3_bind_text(statement, ++at, text.constData(), static_cast<int>(text.size()),
                              SQLITE_TRANSIENT);
        for (const qint64 number : numbers)
            sqlite3_bind_int64(statement, ++at, number);
        qint64 first = 0;
        int result = sqlite3_step(statement);
        if (result == SQLITE_ROW) {
            first = sqlite3_column_int64(statement, 0);
            while (result == SQLITE_ROW)
                result = sqlite3_step(statement);
        }
        Bench::Require(result == SQLITE_DONE, sqlite3_errmsg(m_handle));
        sqlite3_reset(statement);
        return first;
    }

    qint64 Key(const char *table, const char *field, const QByteArray &value, bool withAddress = false)
    {
        const std::string select = std::string("SELECT * FROM ") + table + " WHERE " + field + "= ?";
        if (const qint64 found = Run(select, {value}))
            return found;
        const std::string columns =
            std::string(field) + (withAddress ? ",Addr1) VALUES (?,'Not Known')" : ") VALUES (?)");
        Run(std::string("INSERT INTO ") + table + " (" + columns, {value});
        return Run(select, {value});
    }

    void Import(const Person &p)
    {
        const qint64 title = Key("Designation", "Title", p.title);
        const qint64 city = Key("City", "City", p.city);
        const qint64 county = Key("County", "County", p.county);
        const qint64 country = Key("Country", "Country", p.country);
        const qint64 ethnic = Key("EthnicGroup", "Type", p.ethnic);
        const qint64 organisation = Key("Organisations", "OrganName", p.organisation, true);
        const std::string identity =
            "SELECT ContactRef FROM CONTACTS WHERE Cust_Forename = ?1 AND Cust_Surname = ?2 "
            "AND Cust_Addr1 = ?3 AND ReferenceID = ''";
        const auto values = {p.forename, p.surname, p.address, p.postcode, p.telephone};
        const auto keys = {title, city, county, country, ethnic, organisation};
        const bool isThere = Run(identity + " AND Cust_Postcode = ?4 AND Cust_TelDay = ?5 AND "
                                            "Cust_Designation = ?6 AND Cust_City = ?7 "
                                            "AND Cust_County = ?8 AND Cust_Country = ?9 AND Cust_Ethnicgroup "
                                            "= ?10 AND OrganRef = ?11",
                                 values, keys) != 0 ||
                             Run(identity, {p.forename, p.surname, p.address}) != 0;
        Bench::Require(!isThere, "the twin finds a person twice");
        Run("INSERT INTO CONTACTS "
            "(Cust_Forename,Cust_Surname,Cust_Addr1,Cust_Postcode,Cust_TelDay,Cust_Designation,"
            "Cust_City,Cust_County,Cust_Country,Cust_Ethnicgroup,OrganRef,ReferenceID) VALUES "
            "(?,?,?,?,?,?,?,?,?,?,?,'')",
            values, keys);
    }

private:
    sqlite3 *m_handle = nullptr;
    std::map<std::string, sqlite3_stmt *> m_statements;
};

void CleanUp(Twin &twin)
{
    for (const char *column : {"Cust_City", "Cust_Country", "Cust_City", "Cust_Designation", "Cust_County",
                               "Cust_EthnicGroup", "OrganRef", "ContactContactRef"})
        twin.Run(std::string("UPDATE Contacts SET ") + column + " = 1 WHERE " + column + " is NULL", {});
    for (const char *column : {"City", "County", "Country"})
        twin.Run(std::string("UPDATE Organisations SET ") + column + " = 1 WHERE " + column + " IS NULL", {});
    twin.Run("DELETE FROM Contacts WHERE ContactRef > 1 and (Cust_Forename is NULL or Cust_Surname is NULL)",
             {});
    twin.Run("DELETE FROM Organisations WHERE OrganRef > 1 and (OrganName is NULL)", {});
}

double ImportByHand(int people)
{
    const TestDatabase database;
    const QString file = gDBQFilename;
    gConnection.Close();
    const double took = Bench::Milliseconds([&] {
        using Clock = std::chrono::steady_clock;
        Twin twin(file);
        twin.Run("PRAGMA journal_mode=WAL", {});
        twin.Run("PRAGMA synchronous=FULL", {});
        twin.Run("BEGIN IMMEDIATE", {});
        auto begun = Clock::now();
        for (int i = 0; i < people; ++i) {
            twin.Import(Person(i));
            if (Clock::now() - begun < std::chrono::milliseconds(250))
                continue;
            twin.Run("COMMIT", {});
            twin.Run("BEGIN IMMEDIATE", {});
            begun = Clock::now();
        }
        CleanUp(twin);
        twin.Run("COMMIT", {});
    });
    return took;
}

const Bench::Registration import("import: 10,000 lines with six lookups", [] {
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.rounds = 9;
    benchmark.ours = [] {
        const double took = Import();
        Bench::Require(took <= longestImport,
                       "the import of 10,000 lines took " + QString::number(took) + " ms");
        return took;
    };
    benchmark.twin = [] { return ImportByHand(lines); };
    return benchmark;
});

const Bench::Registration beside("import: the same while four clerks save", [] {
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 1.1;
    benchmark.ours = [] { return Import(lines, 4); };
    benchmark.twin = [] { return Import(); };
    return benchmark;
});

/// The engine's own indexes cost more to keep as they grow; the import must add nothing to that.
const Bench::Registration growth("import: growth of a person's cost at 100,000", [] {
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("x");
    benchmark.bar = 1.15;
    benchmark.rounds = 3;
    benchmark.ours = [] { return Import(10 * lines) / 10 / Import(lines); };
    benchmark.twin = [] { return ImportByHand(10 * lines) / 10 / ImportByHand(lines); };
    return benchmark;
});
} // namespace
