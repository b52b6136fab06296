#include "Bench.h"

#include "contacts/manager/ContactSearchODBC.h"
#include "contacts/manager/QuickFilter.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/values/DecodeDateFunc.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"
#include "platform/engines/FileText.h"
#include "support/TestDatabase.h"

#include <QElapsedTimer>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace
{
constexpr int people = 50'000;
constexpr int towns = 100;
constexpr std::array<const char *, 8> surnames{"Ashworth", "Barraclough", "Featherstone", "Hargreaves",
                                               "Oldroyd",  "Sutcliffe",   "Swale",        "Thwaite"};

/// 50,000 people in a hundred towns; two in three have the first characteristic, one in two the second and
/// one in three the attribute.
void FillDatabase()
{
    WriteGroup group(gConnection);
    for (int town = 2; town <= towns + 1; ++town)
        TestDatabase::Run(
            {u"INSERT INTO City (City,ReferenceID) VALUES ('Town " % QString::number(town) % u"','')"});
    for (int i = 0; i < people; ++i) {
        const QString key = QString::number(i + 2);
        TestDatabase::Run(
            {u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Addr1, Cust_Addr2, Cust_City, "
             u"Cust_Postcode, Cust_TelDay, Cust_Email, Cust_DOB, Cust_Sex, Cust_Notes, OrganRef, "
             u"ReferenceID) VALUES ('Margaret " %
             QString::number(i % 97) % u"','" %
             QString::fromLatin1(surnames[static_cast<size_t>(i) % surnames.size()]) % u' ' % key % u"','" %
             QString::number(i % 300) % u" Micklegate','The Old Granary'," %
             QString::number(2 + i / 7 % towns) % u",'YO1 6JH','01904 " % key % u"','m.f" % key %
             u"@example.org',19720314,1,'Uses a hearing loop.',1,'ST-" % key % u"')"});
        const auto give = [&key](QStringView insert) { TestDatabase::Run({insert % key % u')'}); };
        if (i % 3 != 0)
            give(u"INSERT INTO ContactConcession (ConcessionRef,ContactRef) VALUES (1,");
        if (i % 2 == 0)
            give(u"INSERT INTO ContactConcession (ConcessionRef,ContactRef) VALUES (2,");
        if (i % 3 == 1)
            give(u"INSERT INTO AppliedAttributes (AttributeRef,AttributeValueRef,RefSection,AppliesToRef) "
                 u"VALUES (1,1,1,");
        group.Tick();
    }
}

class Screen final
{
public:
    /// Searches only by the characteristics and the attribute, so that everybody is looked up.
    Screen() { AskForTicks(); }
    explicit Screen(bool any)
    {
        AskForTicks();
        m_criteria.Of(SearchField::Surname).text = QStringLiteral("S");
        m_criteria.Of(SearchField::Town) = {QStringLiteral("Town 5"), 5, true};
        m_criteria.any = any;
    }
    const ContactSearchCriteria &Criteria() const { return m_criteria; }
    void Search()
    {
        longestSilence = 0;
        m_sinceShown.start();
        ADO_Contact_Search(m_criteria, found, [this](int) {
            longestSilence = std::max(longestSilence, m_sinceShown.nsecsElapsed());
            m_sinceShown.start();
        });
    }

    ListModel found;
    qint64 longestSilence = 0; ///< the most nanoseconds that the window had to wait for the search

private:
    void AskForTicks()
    {
        m_criteria.characteristics = {{1, QStringLiteral("Student"), false},
                                      {2, QStringLiteral("Member"), false}};
        m_criteria.attributes = {{1, QStringLiteral("Vegan"), false}};
    }

    ContactSearchCriteria m_criteria;
    QElapsedTimer m_sinceShown;
};

/// The same search on a separate handle, with every statement prepared once and each row read as it comes.
class Twin final
{
public:
    explicit Twin(const Screen &screen)
    {
        Bench::Require(sqlite3_open(gDBQFilename.toUtf8().constData(), &m_handle) == SQLITE_OK,
                       QStringLiteral("the twin cannot open the database"));
        Bench::Require(InstallTextComparison(m_handle),
                       QStringLiteral("the twin has no comparison of names"));
        const ContactSearchCriteria criteria = screen.Criteria();
        const ContactSearchQuery query = ContactSearch_Build(criteria, DateToInt(Clock::Today()));
        m_any = criteria.any;
        m_people = Prepare(query.sql);
        m_characteristics = Prepare(u"SELECT * FROM ContactConcession WHERE ContactRef = ?1 AND (" %
                                    query.characteristics.condition % u')');
        m_attributes =
            Prepare(u"SELECT * FROM AppliedAttributes WHERE AppliesToRef = ?1 AND RefSection = 1 AND (" %
                    query.attributes.condition % u')');
        for (int column = 0; column < sqlite3_column_count(m_people); ++column)
            m_names.append(QString::fromUtf8(sqlite3_column_name(m_people, column)));
    }
    ~Twin()
    {
        for (sqlite3_stmt *statement : {m_people, m_characteristics, m_attributes})
            sqlite3_finalize(statement);
        sqlite3_close(m_handle);
    }
    Twin(const Twin &) = delete;
    Twin &operator=(const Twin &) = delete;

    /// The number of people found.
    int Search()
    {
        const int contactRef = Column("ContactRef");
        const std::array<int, 5> texts{Column("Cust_Surname"), Column("Cust_Forename"), Column("Cust_Addr1"),
                                       Column("City"), Column("Cust_Postcode")};
        std::vector<ListItem> found;
        while (sqlite3_step(m_people) == SQLITE_ROW) {
            const sqlite3_int64 key = sqlite3_column_int64(m_people, contactRef);
            const int held = Count(m_characteristics, key);
            if (held == 0 || (!m_any && held != 2))
                continue;
            if (Count(m_attributes, key) != 1 || key <= 1)
                continue;
            found.push_back({u'?' % QString::number(key),
                             Text(texts[0]) % u", " % Text(texts[1]),
                             {Text(texts[2]), Text(texts[3]), Text(texts[4])}});
        }
        sqlite3_reset(m_people);
        m_list.Fill(std::move(found));
        return m_list.Count();
    }

private:
    int Column(const char *name) const
    {
        return static_cast<int>(m_names.indexOf(QString::fromLatin1(name)));
    }
    QString Text(int column) const
    {
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_people, column));
        return QString::fromUtf8(text, sqlite3_column_bytes(m_people, column));
    }
    static int Count(sqlite3_stmt *statement, sqlite3_int64 key)
    {
        sqlite3_bind_int64(statement, 1, key);
        int rows = 0;
        while (sqlite3_step(statement) == SQLITE_ROW)
            ++rows;
        sqlite3_reset(statement);
        return rows;
    }
    sqlite3_stmt *Prepare(const QString &sql)
    {
        sqlite3_stmt *statement = nullptr;
        Bench::Require(sqlite3_prepare_v2(m_handle, sql.toUtf8().constData(), -1, &statement, nullptr) ==
                           SQLITE_OK,
                       QString::fromUtf8(sqlite3_errmsg(m_handle)));
        return statement;
    }

    sqlite3 *m_handle = nullptr;
    sqlite3_stmt *m_people = nullptr;
    sqlite3_stmt *m_characteristics = nullptr;
    sqlite3_stmt *m_attributes = nullptr;
    QStringList m_names;
    ListModel m_list;
    bool m_any = false;
};

struct Fixture {
    template <typename... Arguments>
    explicit Fixture(Arguments... arguments)
        : screen(arguments...)
    {
        FillDatabase();
        Dialogs::Installed().msgBox = [](auto &&...) { return Dialogs::Answer::Ok; };
        twin = std::make_unique<Twin>(screen);
    }

    TestDatabase database;
    Screen screen;
    std::unique_ptr<Twin> twin;
};

Bench::Case Searching(bool any)
{
    const auto fixture = std::make_shared<Fixture>(any);
    const auto expected = std::make_shared<int>(fixture->twin->Search());
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 1.5;
    benchmark.rounds = 15;
    benchmark.ours = [fixture, expected] {
        const double taken = Bench::Milliseconds([&] { fixture->screen.Search(); });
        Bench::Require(*expected > 1000 && fixture->screen.found.Count() == *expected,
                       QStringLiteral("the search found others than its twin"));
        return taken;
    };
    benchmark.twin = [fixture] { return Bench::Milliseconds([&] { fixture->twin->Search(); }); };
    return benchmark;
}

const Bench::Registration searchWithAnd("contacts: search 50,000 people, AND",
                                        [] { return Searching(false); });
/// What is typed key by key on the telephone, from what finds everybody to what finds nobody.
const QStringList typed{"0",    "01",         "0190", "01904",     "01904 49", "019044999", "m",
                        "marg", "margaret 1", "thw",  "thwaite 4", "@example", "yo1 6",     "zzz"};
constexpr int mostShown = 1000;

/// The same straight on the engine: one statement a key, over the same fields, with its own LIKE.
class FilterTwin final
{
public:
    FilterTwin()
    {
        Bench::Require(
            sqlite3_open(gDBQFilename.toUtf8().constData(), &m_handle) == SQLITE_OK &&
                InstallTextComparison(m_handle) &&
                sqlite3_prepare_v2(m_handle,
                                   "SELECT ContactRef, Cust_Surname, Cust_Forename, Cust_TelDay, Cust_Email, "
                                   "Cust_Postcode FROM Contacts WHERE instr(upper(Cust_Surname || ', ' || "
                                   "Cust_Forename || char(10) || Cust_TelDay || char(10) || "
                                   "COALESCE(Cust_TelEve, '') || char(10) || Cust_Email || char(10) || "
                                   "Cust_Postcode), upper(?1)) > 0 ORDER BY Cust_Surname, Cust_Forename",
                                   -1, &m_find, nullptr) == SQLITE_OK,
            QString::fromUtf8(sqlite3_errmsg(m_handle)));
    }
    ~FilterTwin()
    {
        sqlite3_finalize(m_find);
        sqlite3_close(m_handle);
    }
    FilterTwin(const FilterTwin &) = delete;
    FilterTwin &operator=(const FilterTwin &) = delete;

    int Find(const QString &entry)
    {
        const QByteArray bytes = entry.toUtf8();
        sqlite3_bind_text(m_find, 1, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
        std::vector<ListItem> found;
        int count = 0;
        while (sqlite3_step(m_find) == SQLITE_ROW) {
            if (++count > mostShown)
                continue;
            const auto text = [this](int column) {
                return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(m_find, column)));
            };
            found.push_back({u'?' % text(0), text(1) % u", " % text(2), {text(3), text(4), text(5)}});
        }
        sqlite3_reset(m_find);
        m_list.Fill(std::move(found));
        return count;
    }

private:
    sqlite3 *m_handle = nullptr;
    sqlite3_stmt *m_find = nullptr;
    ListModel m_list;
};

struct FilterFixture {
    FilterFixture()
    {
        FillDatabase();
        Bench::Require(filter.Read(), QStringLiteral("nobody was read"));
    }

    TestDatabase database;
    QuickFilter filter;
    ListModel found;
};

const Bench::Registration filterTyped("contacts: quick filter of 50,000 people, 14 keys", [] {
    const auto fixture = std::make_shared<FilterFixture>();
    const auto twin = std::make_shared<FilterTwin>();
    for (const QString &entry : typed) {
        // Blanks between the digits of a number matter to the twin alone.
        const int ours = fixture->filter.Find(entry, mostShown, fixture->found);
        Bench::Require(entry == u"019044999" || ours == twin->Find(entry),
                       u"the filter finds others than its twin: " % entry);
    }
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 0.5;
    benchmark.ours = [fixture] {
        return Bench::Milliseconds([&] {
            for (const QString &entry : typed)
                fixture->filter.Find(entry, mostShown, fixture->found);
        });
    };
    benchmark.twin = [twin] {
        return Bench::Milliseconds([&] {
            for (const QString &entry : typed)
                twin->Find(entry);
        });
    };
    return benchmark;
});
const Bench::Registration filterKey("contacts: slowest of those keys, of 50 ms", [] {
    const auto fixture = std::make_shared<FilterFixture>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.ours = [fixture] {
        double slowest = 0;
        for (const QString &entry : typed)
            slowest = std::max(slowest, Bench::Milliseconds(
                                            [&] { fixture->filter.Find(entry, mostShown, fixture->found); }));
        return slowest;
    };
    benchmark.twin = [] { return 50.0; };
    return benchmark;
});

/// The window gets its turn, and Stop is noticed, at least every tenth of a second; the first wait is for the
/// first row.
const Bench::Registration searchSilence("contacts: longest wait in that search, of 100 ms", [] {
    const auto fixture = std::make_shared<Fixture>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.rounds = 5;
    benchmark.ours = [fixture] {
        fixture->screen.Search();
        return static_cast<double>(fixture->screen.longestSilence) / 1e6;
    };
    benchmark.twin = [] { return 100.0; };
    return benchmark;
});
const Bench::Registration searchWithOr("contacts: search 50,000 people, OR", [] { return Searching(true); });
} // namespace
