#include "Bench.h"

#include "contacts/lists/ContactListODBC.h"
#include "contacts/record/ContactRecordODBC.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "platform/engines/FileText.h"
#include "support/TestDatabase.h"

#include <malloc.h>
#include <sqlite3.h>

#include <memory>
#include <optional>
#include <vector>

namespace
{
constexpr int added = 10'000;
constexpr int listed = 100'000;
constexpr double mostMegabytes = 40;
constexpr double quarterOfASecond = 250;

ContactRecord Person(int number)
{
    ContactRecord record;
    record.forename = u"Margaret " % QString::number(number % 97);
    record.surname = u"Featherstone " % QString::number(number);
    record.addr1 = QString::number(number % 300) % u" Micklegate";
    record.addr2 = QStringLiteral("The Old Granary");
    record.postcode = QStringLiteral("YO1 6JH");
    record.telDay = u"01904 " % QString::number(100'000 + number);
    record.email = u"m.f" % QString::number(number) % u"@example.org";
    record.dob = 19720314;
    record.sex = 1;
    record.notes = QStringLiteral("Uses a hearing loop.");
    record.jobTitle = QStringLiteral("Head of Procurement");
    record.referenceId = u"ST-" % QString::number(number);
    return record;
}

/// The same statements as the program's, prepared once on a separate handle.
class Twin final
{
public:
    Twin()
    {
        Bench::Require(sqlite3_open(gDBQFilename.toUtf8().constData(), &m_handle) == SQLITE_OK,
                       QStringLiteral("the twin cannot open the database"));
        // Names compare as in the database's indexes, in every alphabet.
        Bench::Require(InstallTextComparison(m_handle),
                       QStringLiteral("the twin has no comparison of names"));
        Run("PRAGMA synchronous=FULL");
        m_find = Prepare("SELECT ContactRef FROM Contacts WHERE Cust_Forename = ?1 AND Cust_Surname = ?2 AND "
                         "Cust_Addr1 = ?3 AND ReferenceID = ?4");
        m_insert = Prepare(
            "INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Addr1,Cust_Addr2,Cust_Addr3,Cust_Addr4 "
            ", "
            "Cust_City,Cust_Country, Cust_TelDay, Cust_TelEve, Cust_TelExt, Cust_Fax, Cust_Email, Cust_URL, "
            "Cust_Designation , Cust_Postcode,Cust_County,Cust_Ethnicgroup, Cust_DOB, Cust_Sex, Cust_Notes, "
            "OrganRef,ContactContactRef, JobTitle, ReferenceID, AltRef1, AltRef2, AltRef3, AltRef4) VALUES "
            "(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
        m_list = Prepare("SELECT ContactRef, Cust_Surname, Cust_Forename, ReferenceID FROM Contacts ORDER BY "
                         "Cust_Surname,Cust_Forename ASC");
        m_details =
            Prepare("SELECT ContactRef, Cust_Surname, Cust_Forename, ReferenceID, Cust_TelDay, "
                    "Cust_TelEve, Cust_Email, City FROM Contacts LEFT JOIN (SELECT City_ID, City FROM "
                    "City) ON City_ID = Cust_City ORDER BY Cust_Surname,Cust_Forename ASC");
    }
    ~Twin()
    {
        for (sqlite3_stmt *statement : {m_find, m_insert, m_list, m_details})
            sqlite3_finalize(statement);
        sqlite3_close(m_handle);
    }
    Twin(const Twin &) = delete;
    Twin &operator=(const Twin &) = delete;

    void Run(const char *sql)
    {
        Bench::Require(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK,
                       QString::fromUtf8(sqlite3_errmsg(m_handle)));
    }

    int Add(const ContactRecord &record)
    {
        if (Find(record) > 0)
            return 0;
        Insert(record);
        return Find(record);
    }

    /// Reads every row of the list's query into values of the program's kind, and drops them.
    qsizetype ReadList() { return ReadAll(m_list); }
    /// The same with telephone, town and e-mail.
    qsizetype ReadDetails() { return ReadAll(m_details); }

private:
    static qsizetype ReadAll(sqlite3_stmt *statement)
    {
        qsizetype read = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            read += sqlite3_column_int64(statement, 0) > 0 ? 1 : 0;
            for (int column = 1; column < sqlite3_column_count(statement); ++column) {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
                read += QString::fromUtf8(text, sqlite3_column_bytes(statement, column)).size();
            }
        }
        sqlite3_reset(statement);
        return read;
    }
    sqlite3_stmt *Prepare(const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        Bench::Require(sqlite3_prepare_v2(m_handle, sql, -1, &statement, nullptr) == SQLITE_OK,
                       QString::fromUtf8(sqlite3_errmsg(m_handle)));
        return statement;
    }

    static void Bind(sqlite3_stmt *statement, int at, const QString &text)
    {
        const QByteArray bytes = text.toUtf8();
        sqlite3_bind_text(statement, at, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    }

    int Find(const ContactRecord &record)
    {
        int at = 0;
        for (const QString &text : {record.forename, record.surname, record.addr1, record.referenceId})
            Bind(m_find, ++at, text);
        const int key = sqlite3_step(m_find) == SQLITE_ROW ? sqlite3_column_int(m_find, 0) : 0;
        sqlite3_reset(m_find);
        return key;
    }

    void Insert(const ContactRecord &r)
    {
        int at = 0;
        const auto texts = [&](std::initializer_list<QString> values) {
            for (const QString &value : values)
                Bind(m_insert, ++at, value);
        };
        const auto numbers = [&](std::initializer_list<int> values) {
            for (const int value : values)
                sqlite3_bind_int(m_insert, ++at, value);
        };
        texts({r.forename, r.surname, r.addr1, r.addr2, r.addr3, r.addr4});
        numbers({r.city, r.country});
        texts({r.telDay, r.telEve, r.telExt, r.fax, r.email, r.url});
        numbers({r.designation});
        texts({r.postcode});
        numbers({r.county, r.ethnicGroup, r.dob, r.sex});
        texts({r.notes});
        numbers({r.organRef, r.contactContactRef});
        texts({r.jobTitle, r.referenceId, r.altRef[0], r.altRef[1], r.altRef[2], r.altRef[3]});
        Bench::Require(sqlite3_step(m_insert) == SQLITE_DONE, QString::fromUtf8(sqlite3_errmsg(m_handle)));
        sqlite3_reset(m_insert);
    }

    sqlite3 *m_handle = nullptr;
    sqlite3_stmt *m_find = nullptr;
    sqlite3_stmt *m_insert = nullptr;
    sqlite3_stmt *m_list = nullptr;
    sqlite3_stmt *m_details = nullptr;
};

/// A single save commits at once, a long loop every quarter of a second.
enum class Commits { EachPerson, InGroups };

/// A database and people to put into it.
struct Fixture {
    explicit Fixture(int count)
    {
        people.reserve(static_cast<size_t>(count));
        for (int number = 0; number < count; ++number)
            people.push_back(Person(number));
    }

    double AddAll(Commits commits)
    {
        TestDatabase::Run({QStringLiteral("DELETE FROM Contacts WHERE ContactRef > 1")});
        return Bench::Milliseconds([&] {
            std::optional<WriteGroup> group;
            if (commits == Commits::InGroups)
                group.emplace(gConnection);
            for (const ContactRecord &person : people) {
                Bench::Require(ADO_Contact_AddContact(person) > 1, QStringLiteral("a person was not added"));
                if (group)
                    group->Tick();
            }
        });
    }

    double AddAllByHand(Commits commits)
    {
        twin.Run("DELETE FROM Contacts WHERE ContactRef > 1");
        return Bench::Milliseconds([&] {
            const auto add = [this](const ContactRecord &person) {
                Bench::Require(twin.Add(person) > 1, QStringLiteral("a person was not added"));
            };
            if (commits == Commits::EachPerson) {
                for (const ContactRecord &person : people)
                    add(person);
                return;
            }
            double sinceCommit = 0;
            twin.Run("BEGIN IMMEDIATE");
            for (const ContactRecord &person : people) {
                sinceCommit += Bench::Milliseconds([&] { add(person); });
                if (sinceCommit < quarterOfASecond)
                    continue;
                twin.Run("COMMIT");
                twin.Run("BEGIN IMMEDIATE");
                sinceCommit = 0;
            }
            twin.Run("COMMIT");
        });
    }

    TestDatabase database;
    Twin twin;
    std::vector<ContactRecord> people;
};

std::shared_ptr<Fixture> ManyPeople()
{
    auto fixture = std::make_shared<Fixture>(listed);
    fixture->AddAllByHand(Commits::InGroups);
    return fixture;
}

double MegabytesInUse()
{
    const struct mallinfo2 memory = mallinfo2();
    return static_cast<double>(memory.uordblks + memory.hblkhd) / (1024 * 1024);
}

Bench::Case Adding(Commits commits)
{
    const auto fixture = std::make_shared<Fixture>(added);
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.ours = [fixture, commits] { return fixture->AddAll(commits); };
    benchmark.twin = [fixture, commits] { return fixture->AddAllByHand(commits); };
    return benchmark;
}

const Bench::Registration addPeople("contacts: add 10,000 people", [] {
    Bench::Case benchmark = Adding(Commits::EachPerson);
    benchmark.bar = 1.3;
    benchmark.rounds = 3; // it waits for the disk ten thousand times
    return benchmark;
});

const Bench::Registration addPeopleInGroups("contacts: add 10,000 people in groups", [] {
    Bench::Case benchmark = Adding(Commits::InGroups);
    benchmark.bar = 2; // what an import may take
    benchmark.rounds = 15;
    return benchmark;
});

Bench::Case Filling(const QList<PersonDetail> &details, qsizetype (Twin::*read)())
{
    const auto fixture = ManyPeople();
    const auto list = std::make_shared<ListModel>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.rounds = 25;
    benchmark.ours = [fixture, list, details] {
        list->Clear();
        const double taken = Bench::Milliseconds([&] { ADO_Contact_Fill(*list, details); });
        Bench::Require(list->Count() == listed, QStringLiteral("the list is not full"));
        return taken;
    };
    benchmark.twin = [fixture, read] {
        qsizetype characters = 0;
        const double taken = Bench::Milliseconds([&] { characters = (fixture->twin.*read)(); });
        Bench::Require(characters > listed, QStringLiteral("nothing was read"));
        return taken;
    };
    return benchmark;
}

const Bench::Registration fillPeople("contacts: fill a list of 100,000 people",
                                     [] { return Filling({}, &Twin::ReadList); });
const Bench::Registration fillDetails("contacts: fill that list with telephone, town and e-mail", [] {
    return Filling({PersonDetail::Telephone, PersonDetail::Town, PersonDetail::Email}, &Twin::ReadDetails);
});

const Bench::Registration memoryOfPeople("contacts: memory of that list, of 40 MB", [] {
    const auto fixture = ManyPeople();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("MB");
    benchmark.rounds = 1;
    benchmark.ours = [fixture] {
        {
            ListModel first; // fills the engine's own cache, which is not part of the list
            ADO_Contact_Fill(first);
        }
        const double before = MegabytesInUse();
        ListModel list;
        ADO_Contact_Fill(list);
        // The first search by key builds the index of the keys, which counts too.
        Bench::Require(list.Find(list.At(listed - 1).key) == listed - 1, QStringLiteral("a key is missing"));
        return MegabytesInUse() - before;
    };
    benchmark.twin = [] { return mostMegabytes; };
    return benchmark;
});
} // namespace
