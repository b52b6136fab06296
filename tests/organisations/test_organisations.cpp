#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "core/session/Progress.h"
#include "database/connection/ReferenceRepair.h"
#include "organisations/Companies.h"
#include "organisations/lists/OrganisationLinkODBC.h"
#include "organisations/lists/OrganisationODBC.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/OrganisationSave.h"
#include "support/ScriptedDialogs.h"
#include "support/SeenElsewhere.h"
#include "support/StatementLog.h"

#include <QRegularExpression>
#include <QTest>

using Dialogs::Answer;

namespace
{
std::vector<QString *> TextFields(OrganisationRecord &r)
{
    return {&r.name,   &r.referenceId, &r.addr1, &r.addr2, &r.addr3, &r.addr4, &r.postcode,
            &r.telOut, &r.telDay,      &r.fax,   &r.email, &r.url,   &r.notes};
}

/// Every field with a value of its own, so that two that are mixed up show.
OrganisationRecord FullCompany(const QString &mark)
{
    OrganisationRecord r;
    int number = 2;
    for (int *field : {&r.county, &r.city, &r.country})
        *field = number++ + static_cast<int>(mark.size());
    for (QString *field : TextFields(r))
        *field = u"It's %1 " % QString::number(number++) % mark;
    r.board = mark.isEmpty();
    return r;
}

QStringList Fields(OrganisationRecord r)
{
    QStringList texts{SqlNumber(r.county), SqlNumber(r.city), SqlNumber(r.country),
                      SqlNumber(r.board ? 1 : 0)};
    for (const QString *field : TextFields(r))
        texts += *field;
    return texts;
}

/// The lists of an organisation's screen, and what is stored of them.
class Lists final
{
public:
    explicit Lists(int organRef)
        : m_organRef(organRef)
    {
        view.record = Organisation_Show(OrganRef(organRef), view.Lists())->record;
    }
    bool Store()
    {
        Progress progress;
        return Organisation_Save(OrganRef(m_organRef), view.record, view.Lists(), m_seen, progress).isWhole &&
               Organisation_OfferCharacteristics(OrganRef(m_organRef), view.contacts, progress);
    }
    StoredOrganisation view;

private:
    int m_organRef;
    FieldValues m_seen;
};

QString Question(const QString &kind, const QString &text, const QString &owner)
{
    return kind % u" '" % text % u"' is already in Organisation '" % owner %
           u"'\nWould you like to remove from '" % owner % u"' and add to this Organisation?";
}
} // namespace

class TestOrganisations : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<LogicFixture>(); }
    void cleanup() { m.reset(); }
    void AddFindChangeDelete();
    void NoReferenceIsEmpty();
    void NameAndReference();
    void FailedReadIsNotWhole();
    void DeleteLetsGo();
    void ShowsLists();
    void OwnedByAnother_data();
    void OwnedByAnother();
    void OrderOfASave();
    void StoredAndDeletedInOnePiece();
    void CharacteristicsSpread();
    void AnsweredForAll();
    void DeletedWhileAsked();
    void HalfDoneSave();
    void RemovingAndTitles();

private:
    std::unique_ptr<LogicFixture> m;
};

void TestOrganisations::AddFindChangeDelete()
{
    const int key = Organisation_Add(FullCompany({}));
    QVERIFY(key > 1);
    StoredOrganisation view;
    QCOMPARE(Fields(Organisation_Show(OrganRef(key), view.Lists())->record), Fields(FullCompany({})));
    QCOMPARE(Update(key, FullCompany("'; --")), key);
    QCOMPARE(Fields(Organisation_Show(OrganRef(key), view.Lists())->record), Fields(FullCompany("'; --")));
    QVERIFY(Organisation_Delete(OrganRef(key)));
    QCOMPARE(Rows("Organisations"), 1);
}

/// Reports and searches join the references of an organisation that has nothing but a name.
void TestOrganisations::NoReferenceIsEmpty()
{
    const int acme = Contact_AddItem(ContactSection::Organisations, "Acme", "");
    const QString references =
        u"SELECT City, County, Country FROM Organisations WHERE OrganRef = " % SqlNumber(acme);
    QCOMPARE(TestDatabase::Rows(references), QStringList("1|1|1"));
    // As an older database has them.
    Sql("UPDATE Organisations SET City = NULL, Country = NULL");
    RepairReferences();
    QCOMPARE(TestDatabase::Rows(references), QStringList("1|1|1"));
    const StatementLog log;
    RepairReferences();
    QCOMPARE(log.Statements().size(), 1);
}

void TestOrganisations::NameAndReference()
{
    const QString exists = QStringLiteral("Organisation already exists in database.");
    const int acme = Organisation_Add(Company("Acme"));
    OrganisationRecord elsewhere = Company("Acme");
    elsewhere.addr1 = QStringLiteral("another street");
    m->dialogs.Expect("Add Organisation", exists);
    QCOMPARE(Organisation_Add(elsewhere), 0);
    // A second Acme at the same address under a reference of its own gives the key of the first.
    QCOMPARE(Organisation_Add(Company("Acme", "North")), acme);
    elsewhere.referenceId = QStringLiteral("South");
    QVERIFY(Organisation_Add(elsewhere) > acme);
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Acme'"), 3);

    const int beta = Organisation_Add(Company("Beta", "B"));
    m->dialogs.Expect("Update Organisation", exists);
    QCOMPARE(Update(beta, Company("Acme")), 0);
    QCOMPARE(Update(beta, Company("Acme", "B")), beta);
    QCOMPARE(Update(acme, Company("Acme")), acme);
}

void TestOrganisations::FailedReadIsNotWhole()
{
    const int acme = Organisation_Add(Company("Acme"));
    Sql("ALTER TABLE Facilities RENAME TO FacilitiesAway");
    m->dialogs.Expect("Veltrane Connection",
                      "A number of errors have been detected, please seek technical support.");
    StoredOrganisation view;
    const auto file = Organisation_Show(OrganRef(acme), view.Lists());
    QVERIFY(file && !file->isWhole);
}

void TestOrganisations::DeleteLetsGo()
{
    const int acme = Organisation_Add(Company("Acme"));
    Employee("Anna", "Bell", acme);
    Venue("Hall", acme);
    Facility("Lathe", acme);
    Sql(u"INSERT INTO Exam (ExamName,OrganRef) VALUES ('Test'," % SqlNumber(acme) % u")");
    ADO_Organisation_AddConcession(OrganRef(acme), ConcessionRef(5));
    StatementLog log;
    QVERIFY(Organisation_Delete(OrganRef(acme)));
    const QStringList tables{"Contacts", "Venues", "Facilities", "Exam"};
    QStringList expected;
    for (const QString &table : tables)
        expected.append(u"UPDATE " % table % u" SET OrganRef = 1 WHERE OrganRef = " % SqlNumber(acme));
    expected.append(u"DELETE FROM Organisations WHERE OrganRef = " % SqlNumber(acme));
    QCOMPARE(log.Statements(), expected);
    for (const QString &table : tables)
        QCOMPARE(Rows(table % u" WHERE OrganRef = " % SqlNumber(acme)), 0);
    QCOMPARE(Rows("OrganChars"), 1);
}

void TestOrganisations::ShowsLists()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    const int hall = Venue("Hall", acme);
    Venue("Attic", 1);
    const int lathe = Facility("Lathe", acme);
    Facility("Anvil", 1);
    Concession_Add("Member", 0, 0, "");
    const int staff = Concession_Add("Staff", 0, 0, "");
    for (const int characteristic : {staff, staff, 4711})
        ADO_Organisation_AddConcession(OrganRef(acme), ConcessionRef(characteristic));
    QCOMPARE(Rows("OrganChars"), 2);

    StoredOrganisation view;
    view.contacts.Add({"?99", "left over"});
    view.usedFac.Add({"!99", "left over"});
    QVERIFY(Organisation_Show(OrganRef(acme), view.Lists())->isWhole);
    QCOMPARE(Keys(view.contacts), QStringList(Key(anna)));
    QCOMPARE(Texts(view.contacts), QStringList("Bell, Anna"));
    QCOMPARE(Keys(view.usedFac), QStringList(PlaceKey(lathe)));
    QCOMPARE(Texts(view.availFac), QStringList("Anvil"));
    // The row that stands for no venue is none to choose.
    QCOMPARE(Texts(view.availVenues), QStringList("Attic"));
    QCOMPARE(Keys(view.usedVenues), QStringList(PlaceKey(hall)));
    QCOMPARE(Keys(view.usedCriteria), QStringList(Key(staff)));
    QCOMPARE(Texts(view.availCriteria), QStringList("Member"));

    QVERIFY(ADO_Organisation_ShowAvailable(view.Lists()));
    QVERIFY(view.contacts.IsEmpty() && view.usedFac.IsEmpty() && view.usedVenues.IsEmpty());
    QCOMPARE(Texts(view.availFac), QStringList({"Anvil", "Lathe"}));
}

void TestOrganisations::OwnedByAnother_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<Answer>("answer");
    for (const char *kind : {"Contact", "Facility", "Venue"}) {
        QTest::addRow("%s, yes", kind) << QString(kind) << Answer::Yes;
        QTest::addRow("%s, no", kind) << QString(kind) << Answer::No;
    }
}

/// What belongs to nobody joins at once, what belongs to another after a question, and what is not in the
/// list any more is let go.
void TestOrganisations::OwnedByAnother()
{
    QFETCH(QString, kind);
    QFETCH(Answer, answer);
    const bool isPerson = kind == "Contact";
    const auto make = [&](const QString &name, int organRef) {
        return isPerson             ? Employee("Cy", name, organRef)
               : kind == "Facility" ? Facility(name, organRef)
                                    : Venue(name, organRef);
    };
    const auto check = [&](int key) {
        return isPerson             ? ADO_Organisation_CheckContact(ContactRef(key))
               : kind == "Facility" ? ADO_Organisation_CheckFacility(FacilityRef(key))
                                    : ADO_Organisation_CheckVenue(VenueRef(key));
    };
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int own = make("Own", acme);
    const int dropped = make("Dropped", acme);
    const int free = make("Free", 1);
    const int theirs = make("Theirs", beta);
    Lists lists(acme);
    ListModel &used = isPerson             ? lists.view.contacts
                      : kind == "Facility" ? lists.view.usedFac
                                           : lists.view.usedVenues;
    ListModel &available = kind == "Facility" ? lists.view.availFac : lists.view.availVenues;
    const auto key = [isPerson](int reference) { return isPerson ? Key(reference) : PlaceKey(reference); };
    used.RemoveKey(key(dropped));
    used.Add({key(theirs), "the other's"});
    used.Add({key(free), "nobody's"});
    for (const int moved : {theirs, free})
        available.RemoveKey(key(moved));
    m->dialogs.Expect(u"Change " % kind % u" Organisation", Question(kind, "the other's", "Beta"), answer);
    QVERIFY(lists.Store());
    const bool moves = answer == Answer::Yes;
    QCOMPARE(check(own), u"Acme"_qs);
    QCOMPARE(check(free), u"Acme"_qs);
    QCOMPARE(check(dropped), QString());
    QCOMPARE(check(theirs), moves ? u"Acme"_qs : u"Beta"_qs);
    QCOMPARE(used.Contains(key(theirs)), moves);
    if (!isPerson)
        QCOMPARE(available.Contains(key(theirs)), !moves);
}

void TestOrganisations::OrderOfASave()
{
    const int acme = Organisation_Add(Company("Acme"));
    const QString a = SqlNumber(acme);
    const QString anna = SqlNumber(Employee("Anna", "Bell", acme));
    const int attic = Venue("Attic", Organisation_Add(Company("Beta")));
    const QString hall = SqlNumber(attic);
    Lists lists(acme);
    lists.view.availVenues.MoveKeys({PlaceKey(attic)}, lists.view.usedVenues);
    m->dialogs.Expect("Change Venue Organisation", Question("Venue", "Attic", "Beta"), Answer::Yes);
    StatementLog log;
    QVERIFY(lists.Store());
    // All that is read and asked comes before the first write: a question would end the transaction.
    const qsizetype record = log.Statements().indexOf(QRegularExpression("^UPDATE Organisations .*"));
    QStringList statements = log.Statements();
    statements.remove(record - 1, 2);
    const auto owner = [](const QString &table, const QString &column, const QString &key) -> QString {
        return u"SELECT Organisations.OrganName FROM " % table % u" INNER JOIN Organisations ON " % table %
               u".OrganRef = Organisations.OrganRef WHERE " % table % u".OrganRef >1 AND " % column % u" = " %
               key;
    };
    QCOMPARE(statements, QStringList({u"SELECT ContactRef FROM Contacts WHERE ContactRef = " % anna,
                                      u"SELECT VenueRef FROM Venues WHERE VenueRef = " % hall,
                                      u"SELECT ContactRef FROM Contacts WHERE OrganRef = " % a,
                                      u"SELECT FacilityRef FROM Facilities WHERE OrganRef = " % a,
                                      u"SELECT VenueRef FROM Venues WHERE OrganRef = " % a,
                                      owner("Venues", "VenueRef", hall),
                                      u"SELECT OrganRef FROM Organisations WHERE OrganRef = " % a,
                                      u"UPDATE Contacts SET OrganRef = 1 WHERE OrganRef = " % a,
                                      u"UPDATE Contacts SET OrganRef = " % a % u" WHERE ContactRef = " % anna,
                                      u"DELETE FROM OrganChars WHERE OrganRef = " % a,
                                      u"UPDATE Facilities SET OrganRef = 1 WHERE OrganRef = " % a,
                                      u"UPDATE Venues SET OrganRef = 1 WHERE OrganRef = " % a,
                                      u"UPDATE Venues SET OrganRef = " % a % u" WHERE VenueRef = " % hall,
                                      u"SELECT ConcessionRef FROM OrganChars WHERE OrganRef = " % a}));
}

/// Another workstation never sees its people without it, nor half of it deleted.
void TestOrganisations::StoredAndDeletedInOnePiece()
{
    const int acme = Organisation_Add(Company("Acme"));
    for (const char *name : {"A", "B", "C"})
        Employee("Ann", name, acme);
    const QString people = u"SELECT COUNT(*) FROM Contacts WHERE OrganRef = " % SqlNumber(acme);
    Lists lists(acme);
    QCOMPARE(SeenElsewhere(m->database, people, [&] { QVERIFY(lists.Store()); }), QSet<QString>{"3"});
    QCOMPARE(SeenElsewhere(m->database, people, [&] { QVERIFY(Organisation_Delete(OrganRef(acme))); }),
             QSet<QString>{"3"});
    QCOMPARE(Rows("Contacts WHERE OrganRef > 1"), 0);
}

void TestOrganisations::CharacteristicsSpread()
{
    const auto question = [](const QString &who) -> QString {
        return u"Would you like to apply the Organisation Characteristics to contact '" % who % u"'?";
    };
    const auto holds = [](int contactRef) {
        return Rows(u"ContactConcession WHERE ContactRef = " % SqlNumber(contactRef)) == 1;
    };
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    const int ben = Employee("Ben", "Carter", acme);
    const int member = Concession_Add("Member", 10, 0, "");
    Lists lists(acme);
    QVERIFY(lists.Store()); // no characteristics, no question

    lists.view.availCriteria.MoveKeys({Key(member)}, lists.view.usedCriteria);
    m->dialogs.Expect("Organisation Characteristics", question("Bell, Anna"), Answer::No);
    m->dialogs.Expect("Organisation Characteristics", question("Carter, Ben"), Answer::Yes);
    QVERIFY(lists.Store());
    QVERIFY(!holds(anna) && holds(ben));
    // Every save asks again for who lacks some.
    m->dialogs.Expect("Organisation Characteristics", question("Bell, Anna"), Answer::Yes);
    QVERIFY(lists.Store());
    QVERIFY(holds(anna));
    QVERIFY(lists.Store());
    QCOMPARE(Rows("OrganChars"), 1);
}

/// The first question is asked for one; from the second on it can be answered for all the rest.
void TestOrganisations::AnsweredForAll()
{
    const int beta = Organisation_Add(Company("Beta"));
    for (const char *name : {"A", "B", "C", "D"})
        Employee("Ann", name, beta);
    for (const auto &[answer, moved] : {std::pair(Answer::NoToAll, 1), std::pair(Answer::YesToAll, 3)}) {
        const int acme = Organisation_Add(Company(u"Acme " % QString::number(moved)));
        Lists lists(acme);
        ADO_Organisation_ShowContacts(OrganRef(beta), lists.view.contacts);
        m->dialogs.Expect("Change Contact Organisation",
                          Question("Contact", lists.view.contacts.At(0).text, "Beta"), Answer::Yes);
        m->dialogs.Expect("Change Contact Organisation",
                          Question("Contact", lists.view.contacts.At(1).text, "Beta"), answer);
        QVERIFY(lists.Store());
        QCOMPARE(lists.view.contacts.Count(), moved);
        QCOMPARE(Rows(u"Contacts WHERE OrganRef = " % SqlNumber(acme)), moved);
    }
}

/// Nobody is given to an organisation that another workstation deletes while a question is open.
void TestOrganisations::DeletedWhileAsked()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int theirs = Employee("Cy", "Dodd", beta);
    Lists lists(acme);
    lists.view.contacts.Add({Key(theirs), "Dodd, Cy"});
    Dialogs::Installed().msgBox = [acme](auto &&...) {
        Organisation_Delete(OrganRef(acme));
        return Answer::Yes;
    };
    QVERIFY(!lists.Store());
    QCOMPARE(OrganisationOf(theirs), beta);
}

void TestOrganisations::HalfDoneSave()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    Lists lists(acme);
    Sql("ALTER TABLE OrganChars RENAME TO OrganCharsAway");
    m->dialogs.Expect("Veltrane Connection",
                      "A number of errors have been detected, please seek technical support.");
    QVERIFY(!lists.Store());
    QCOMPARE(OrganisationOf(anna), acme);
    Sql("ALTER TABLE OrganCharsAway RENAME TO OrganChars");
    QVERIFY(lists.Store());
}

void TestOrganisations::RemovingAndTitles()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    const int ben = Employee("Ben", "Carter", acme);
    const int cy = Employee("Cy", "Dodd", acme);
    ListModel list;
    ADO_Organisation_ShowContacts(OrganRef(acme), list);
    for (const int chosen : {anna, ben})
        list.Select(list.Find(Key(chosen)));
    const QString question = "Okay to update Contact(s) to Job Title 'Head's aide'?";
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        m->dialogs.Expect("Update Job Title(s)", question, answer);
        QCOMPARE(Organisation_UpdateJobTitles(list, "Head's aide"), answer == Answer::Yes);
        QCOMPARE(Rows("Contacts WHERE JobTitle = 'Head''s aide'"), answer == Answer::Yes ? 2 : 0);
    }
    QCOMPARE(list.At(list.Find(Key(anna))).subItems, QStringList("Head's aide"));

    m->dialogs.Expect("Remove Role", "Remove Contact Bell, Anna from this Organisation?", Answer::No);
    m->dialogs.Expect("Remove Role", "Remove Contact Carter, Ben from this Organisation?", Answer::Yes);
    Organisation_RemoveContacts(list);
    QCOMPARE(Keys(list), QStringList({Key(anna), Key(cy)}));
    QVERIFY(list.SelectedRows().empty());
    QCOMPARE(OrganisationOf(ben), acme); // until the save
}

QTEST_GUILESS_MAIN(TestOrganisations)
#include "test_organisations.moc"
