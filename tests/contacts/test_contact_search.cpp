#include "contacts/People.h"
#include "contacts/manager/ContactSearchODBC.h"
#include "contacts/manager/ContactSelection.h"
#include "controls/TreeModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"
#include "support/StatementLog.h"
#include "support/TestTable.h"

#include <QFile>
#include <QTest>

namespace
{
const QString base = QStringLiteral(
    "SELECT Contacts.*, Organisations.Addr1 AS OrgAddr1, Organisations.City AS OrgCity, Organisations.County "
    "AS OrgCounty, Organisations.Country AS OrgCountry, Organisations.Postcode AS OrgPostcode, City.City AS "
    "City FROM (Contacts INNER JOIN Organisations ON Contacts.OrganRef = Organisations.OrganRef) INNER JOIN "
    "City ON Contacts.Cust_City = City.City_ID");
const QString order = QStringLiteral(" ORDER BY Contacts.Cust_Surname;");
constexpr int today = 20261123;

/// A search, and what it shows.
struct AskedSearch {
    QString Run()
    {
        return ADO_Contact_Search(criteria, found, [this](int number) { looked = number; });
    }
    void Ask(SearchField field, const QString &text, bool isNot = false, int key = -1)
    {
        criteria.Of(field) = {text, key, isNot};
    }
    void Aged(const QString &from, const QString &to, bool isNot = false)
    {
        Ask(SearchField::Age, from, isNot);
        criteria.ageTo = to;
    }

    ContactSearchCriteria criteria;
    ListModel found;
    int looked = 0;
};

using Setter = std::function<void(AskedSearch &)>;

Setter Text(SearchField field, const QString &text, bool isNot = false)
{
    return [=](AskedSearch &search) { search.Ask(field, text, isNot); };
}

Setter Choice(SearchField field, int key, bool isNot = false)
{
    return [=](AskedSearch &search) { search.Ask(field, QStringLiteral("Row"), isNot, key); };
}

Setter Ages(const QString &from, const QString &to, bool isNot = false)
{
    return [=](AskedSearch &search) { search.Aged(from, to, isNot); };
}

struct TickCase {
    std::vector<int> must{};
    std::vector<int> mustNot{};
};

/// Characteristics, or attributes, that people must have or must not have.
std::vector<SearchTick> Ticks(const TickCase &ticks)
{
    std::vector<SearchTick> result;
    for (const int key : ticks.must)
        result.push_back({key, u"C" % QString::number(key), false});
    for (const int key : ticks.mustNot)
        result.push_back({key, u"C" % QString::number(key), true});
    return result;
}
} // namespace

Q_DECLARE_METATYPE(Setter)
Q_DECLARE_METATYPE(TickCase)

class TestContactSearch final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void OneCriterion_data();
    void OneCriterion();
    void SeveralCriteria();
    void Found_data();
    void Found();
    void Characteristics_data();
    void Characteristics();
    void StatementsOfARow();
    void ApostropheFails_data();
    void ApostropheFails();
    void StoredSelection();

private:
    /// Runs a search that works: its summary is shown as it is returned, under the program's own title.
    QString Run(AskedSearch &search);

    std::unique_ptr<TestDatabase> m_database;
    Progress m_progress;
    Dialogs::Hooks m_outer;
    QStringList m_boxes; ///< title and text of each
};

void TestContactSearch::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_boxes.clear();
    m_outer = Dialogs::Installed();
    Dialogs::Installed().msgBox = [this](const QString &text, const QString &title, auto &&...) {
        m_boxes.append(title % u'|' % text);
        return Dialogs::Answer::Cancel;
    };
    Clock::StopAt(QDateTime(QDate(2026, 11, 23), QTime(10, 0)));
    gStop = false;
    // Towns 2 and 3, people 2 to 7, after the sentinels.
    Sql("INSERT INTO City (City,ReferenceID) VALUES ('York','')");
    Sql("INSERT INTO City (City,ReferenceID) VALUES ('Leeds','')");
    Sql("INSERT INTO Organisations (OrganName,Addr1,City,ReferenceID) VALUES ('Mill','2 Mill Lane',3,'')");
    for (const char *person :
         {"'Adams','Ann',2,20061123,2", "'Adams','Ben',3,20061124,1", "'Baker','Cleo',2,0,1",
          "'Lost','Town',99,19800101,1", "'Nameless','',2,19800101,1", "'Carter','Eve',1,19500606,1"})
        Sql(u"INSERT INTO Contacts (Cust_Addr1,Cust_Postcode,ReferenceID,Cust_Sex,Cust_Surname,Cust_Forename,"
            u"Cust_City,Cust_DOB,OrganRef) VALUES ('1 High Street','PO1','',1," %
            QLatin1String(person) % u')');
}

void TestContactSearch::cleanup()
{
    Clock::StopAt({});
    Dialogs::Installed() = m_outer;
    m_database.reset();
}

QString TestContactSearch::Run(AskedSearch &search)
{
    m_boxes.clear();
    const QString summary = search.Run();
    if (m_boxes != QStringList(u'|' % summary))
        QTest::qFail(qPrintable(m_boxes.join('\n')), __FILE__, __LINE__);
    return summary;
}

/// What each criterion adds to the statement and to the summary.
void TestContactSearch::OneCriterion_data()
{
    using F = SearchField;
    const TestTable<Setter, QString, QString> row{"set", "where", "line"};
    row("title", Choice(F::Title, 5), " Cust_Designation = 5 ", "Title = \"Row\"");
    row("not title", Choice(F::Title, 5, true), " Cust_Designation <> 5 ", "Title <> \"Row\"");
    row("forename", Text(F::Forename, "An"), " Cust_Forename  LIKE 'An%' ", "Forename = \"An\"");
    row("not surname", Text(F::Surname, "Ad", true), " Cust_Surname NOT LIKE 'Ad%' ", "Surname <> \"Ad\"");
    row("gender", Choice(F::Gender, 0), " Cust_Sex = 0 ", "Gender: = \"Row\"");
    row("age", Ages("20", "30"), " ((Cust_DOB <= 20061123) AND (Cust_DOB >= 19961123)) ",
        "Aged Between = 20 - 30");
    row("not aged", Ages("20", "30", true), " ((Cust_DOB >= 20061123) OR (Cust_DOB <= 19961123)) ",
        "Aged Between <> 20 - 30");
    row("no lower age", Ages("", "16"), " ((Cust_DOB <= 20261123) AND (Cust_DOB >= 20101123)) ",
        "Aged Between =  - 16");
    row("address", Text(F::Address, "1"), " Cust_Addr1  LIKE '1%' ", "Address = \"1\"");
    row("town", Choice(F::Town, 2), " Cust_City = 2 ", "Town/City = \"Row\"");
    row("county", Choice(F::County, 2), " Cust_County = 2 ", "State/County = \"Row\"");
    row("country", Choice(F::Country, 2), " Cust_Country = 2 ", "Country = \"Row\"");
    row("postcode", Text(F::Postcode, "P"), " Cust_Postcode  LIKE 'P%' ", "ZIP/Postcode = \"P\"");
    row("origin", Choice(F::EthnicOrigin, 2), " Cust_EthnicGroup = 2 ", "Ethnic origin = \"Row\"");
    row("its address", Text(F::OrgAddress, "2"), " Organisations.Addr1  LIKE '2%' ", "Address = \"2\"");
    row("its town", Choice(F::OrgTown, 3), " Organisations.City = 3 ", "Town/City = \"Row\"");
    row("its county", Choice(F::OrgCounty, 3), " Organisations.County = 3 ", "State/County = \"Row\"");
    row("its country", Choice(F::OrgCountry, 3, true), " Organisations.Country <> 3 ", " Country <> \"Row\"");
    row("its postcode", Text(F::OrgPostcode, "P"), " Organisations.Postcode  LIKE 'P%' ",
        "ZIP/Postcode = \"P\"");
}

void TestContactSearch::OneCriterion()
{
    QFETCH(Setter, set);
    QFETCH(QString, where);
    QFETCH(QString, line);
    AskedSearch search;
    set(search);
    const QString summary = u"Searching on the following fields:\n\n" % line % u"\n\n\n";
    ContactSearchQuery query = ContactSearch_Build(search.criteria, today);
    QCOMPARE(query.sql, QString(base % u" WHERE " % where % order));
    QCOMPARE(query.description, summary);
    // An OR is taken away with its blank.
    search.criteria.any = true;
    query = ContactSearch_Build(search.criteria, today);
    QCOMPARE(query.sql, QString(base % u" WHERE " % where.chopped(1) % order));
    Run(search);
}

void TestContactSearch::SeveralCriteria()
{
    AskedSearch search;
    search.Ask(SearchField::Surname, "A");
    search.Ask(SearchField::Town, "York", true, 2);
    search.criteria.characteristics = Ticks({{7}, {8}});
    search.criteria.attributes = Ticks({{}, {9, 10}});
    ContactSearchQuery query = ContactSearch_Build(search.criteria, today);
    QCOMPARE(query.sql, QString(base % u" WHERE  Cust_Surname  LIKE 'A%' AND  Cust_City <> 2 " % order));
    QCOMPARE(query.description,
             "Searching on the following fields:\n\nSurname = \"A\"\nTown/City <> \"York\"\n AND "
             "Characteristic = C7\n AND Characteristic <> C8\n AND Attribute <> C9\n AND Attribute <> "
             "C10\n\n\n");

    search.criteria.any = true;
    query = ContactSearch_Build(search.criteria, today);
    QCOMPARE(query.sql, QString(base % u" WHERE  Cust_Surname  LIKE 'A%' OR  Cust_City <> 2" % order));
    QVERIFY(query.description.contains("York\"\nCharacteristic = C7\nCharacteristic <> C8\nAttribute"));

    // Characteristics alone leave the statement bare, and the summary without its two empty lines.
    search.criteria.fields = {};
    query = ContactSearch_Build(search.criteria, today);
    QCOMPARE(query.sql, QString(base % order));
    QVERIFY(query.description.endsWith("Attribute <> C10\n"));
    // Nothing but a lower age asks for nothing.
    AskedSearch younger;
    younger.Aged("30", "");
    query = ContactSearch_Build(younger.criteria, today);
    QCOMPARE(query.sql, QString(base % order));
    QCOMPARE(query.description, "Nothing selected, All records shown\n");
}

void TestContactSearch::Found_data()
{
    using F = SearchField;
    const TestTable<Setter, QString> row{"set", "found"};
    row("all with a name and a town", Text(F::Surname, ""), "Adams, Ann;Adams, Ben;Baker, Cleo;Carter, Eve");
    row("beginning of a name, in any case", Text(F::Surname, "ada"), "Adams, Ann;Adams, Ben");
    row("not that beginning", Text(F::Surname, "Ada", true), "Baker, Cleo;Carter, Eve");
    row("not a town includes no town", Choice(F::Town, 2, true), "Adams, Ben;Carter, Eve");
    row("the organisation's town", Choice(F::OrgTown, 3), "Adams, Ann");
    row("a birthday today counts", Ages("20", "20"), "Adams, Ann");
    row("tomorrow it will", Ages("19", "19"), "");
    row("up to sixteen", Ages("", "20"), "Adams, Ann;Adams, Ben");
    row(
        "a town with an apostrophe in its name",
        [](AskedSearch &search) { search.Ask(F::Town, "King's Lynn", false, 2); }, "Adams, Ann;Baker, Cleo");
    row("an age of ten digits", Ages("0", "9999999999"), "Adams, Ann;Adams, Ben;Carter, Eve");
    row("outside of the ages", Ages("20", "60", true), "Adams, Ann;Adams, Ben;Baker, Cleo;Carter, Eve");
}

void TestContactSearch::Found()
{
    QFETCH(Setter, set);
    QFETCH(QString, found);
    AskedSearch search;
    search.found.Add({"?4711", "of the search before"});
    set(search);
    const QString summary = Run(search);
    QStringList names = Texts(search.found);
    names.sort(); // people of one surname come in any order
    QCOMPARE(names.join(';'), found);
    QVERIFY(summary.endsWith(u"\nNumber of records found = " % QString::number(search.found.Count())));
    QVERIFY(search.found.SelectedRows().empty());
    if (found.contains("Ann"))
        QCOMPARE(search.found.At(search.found.Find("?2")).subItems,
                 QStringList({"1 High Street", "York", "PO1"}));
}

/// Ann has the characteristics 1 and 2, Ben has 1, Cleo 3, Eve none. The database chooses by surname first.
void TestContactSearch::Characteristics_data()
{
    const TestTable<TickCase, QString, QString, QString> row{"ticks", "surname", "foundWithAnd",
                                                             "foundWithOr"};
    row("both", {{1, 2}}, "", "Ann", "Ann Ben");
    row("one", {{1}}, "", "Ann Ben", "Ann Ben");
    row("neither of two", {{}, {1, 2}}, "", "Ben Cleo Eve", "Cleo Eve");
    row("one and not another", {{1}, {2}}, "", "Ben", "Ben");
    row("nobody has both", {{1, 3}}, "", "", "Ann Ben Cleo");
    row("the name filters with OR too", {{3}}, "Adams", "", "");
    row("name and one", {{2}}, "Adams", "Ann", "Ann");
}

void TestContactSearch::Characteristics()
{
    QFETCH(TickCase, ticks);
    QFETCH(QString, surname);
    QFETCH(QString, foundWithAnd);
    QFETCH(QString, foundWithOr);
    const QList<std::pair<int, int>> held{{2, 1}, {2, 2}, {3, 1}, {4, 3}};
    for (const auto &[contact, value] : held) {
        const QString pair = QString::number(contact) % u',' % QString::number(value);
        Sql(u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (" % pair % u')');
        Sql(u"INSERT INTO AppliedAttributes (AppliesToRef,AttributeValueRef,RefSection) VALUES (" % pair %
            u",1)");
        // The same attributes of something that is no person.
        Sql(u"INSERT INTO AppliedAttributes (AppliesToRef,AttributeValueRef,RefSection) VALUES (7," %
            QString::number(value) % u",2)");
    }
    for (const bool any : {false, true}) {
        for (const bool attributes : {false, true}) {
            AskedSearch search;
            search.Ask(SearchField::Surname, surname);
            search.criteria.any = any;
            (attributes ? search.criteria.attributes : search.criteria.characteristics) = Ticks(ticks);
            Run(search);
            QStringList forenames;
            for (const QString &name : Texts(search.found))
                forenames.append(name.section(u' ', 1));
            forenames.sort(); // people of one surname come in any order
            QCOMPARE(forenames.join(' '), any ? foundWithOr : foundWithAnd);
        }
    }
}

void TestContactSearch::StatementsOfARow()
{
    Sql("INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (2,1)");
    AskedSearch search;
    search.Ask(SearchField::Surname, "Adams");
    search.criteria.characteristics = Ticks({{1, 3}, {2}});
    search.criteria.attributes = Ticks({{4}, {5}});
    search.criteria.any = true;
    const StatementLog log;
    Run(search);
    const QStringList expected{
        base % u" WHERE  Cust_Surname  LIKE 'Adams%'" % order,
        "SELECT * FROM ContactConcession WHERE ContactRef = 2 AND (ConcessionRef = 2 )",
        "SELECT * FROM ContactConcession WHERE ContactRef = 2 AND (ConcessionRef = 1 OR ConcessionRef = 3 )",
        "SELECT * FROM AppliedAttributes WHERE AppliesToRef = 2 AND RefSection = 1 AND (AttributeValueRef = "
        "5 )",
        "SELECT * FROM AppliedAttributes WHERE AppliesToRef = 2 AND RefSection = 1 AND (AttributeValueRef = "
        "4 )",
        "SELECT * FROM ContactConcession WHERE ContactRef = 3 AND (ConcessionRef = 2 )",
        "SELECT * FROM ContactConcession WHERE ContactRef = 3 AND (ConcessionRef = 1 OR ConcessionRef = 3 )",
    };
    QCOMPARE(log.Statements(), expected);
    QCOMPARE(search.looked, 2);
}

/// Nothing that is typed reaches the engine as SQL, whether its apostrophes are balanced or not.
void TestContactSearch::ApostropheFails_data()
{
    using F = SearchField;
    const TestTable<Setter> row{"set"};
    row("a name", Text(F::Surname, "O'Neil"));
    for (const F field : {F::Forename, F::Surname, F::Address, F::Postcode, F::OrgAddress, F::OrgPostcode})
        row(qPrintable(u"balanced in field " % QString::number(int(field))),
            Text(field, "x' OR EXISTS (SELECT * FROM Users WHERE Password LIKE 'a%') OR '1' LIKE '1"));
    row("lower age", Ages("1' OR '1'='1", "99"));
    row("upper age", Ages("1", "99' OR '1'='1"));
}

void TestContactSearch::ApostropheFails()
{
    QFETCH(Setter, set);
    AskedSearch search;
    search.found.Add({"?4711", "of the search before"});
    set(search);
    const StatementLog statements;
    QCOMPARE(search.Run(), "Search Error!");
    QCOMPARE(statements.Statements(), QStringList());
    QCOMPARE(m_boxes.size(), 1);
    QFile log(m_database->Directory() % u"/log.txt");
    QVERIFY(log.open(QIODevice::ReadOnly) && log.readAll().contains("Located in:ADO_Contact_Search"));
    QVERIFY(search.found.IsEmpty());
}

/// A statement that fails stops none of the steps after it, and nobody is asked.
void TestContactSearch::StoredSelection()
{
    std::vector<ListItem> many{{"!3", "no person"}};
    for (int i = 1; i <= 20'000; ++i)
        many.push_back({u'?' % QString::number(i), "Somebody"});
    ListModel people;
    people.Fill(std::move(many));
    Sql("INSERT INTO Ref (ContactRef) VALUES (30000)");
    SaveContactSelection(people, "Selection.txt", m_progress);
    QCOMPARE(Rows("Ref"), 20'000);
    QCOMPARE(Rows("Ref WHERE ContactRef = 30000"), 0);

    Sql("ALTER TABLE Ref RENAME TO Away");
    people.Fill({{"?2", "Adams, Ann"}, {"!3", "no person"}, {"?7", "Carter, Eve"}});
    SaveContactSelection(people, "Selection.txt", m_progress);
    QFile file(m_database->Directory() % u"/temp/Selection.txt");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "2\n7\n");
    QVERIFY(m_boxes.isEmpty());
}

QTEST_GUILESS_MAIN(TestContactSearch)
#include "test_contact_search.moc"
