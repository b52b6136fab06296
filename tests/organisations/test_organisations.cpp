#include "contacts/ConcessionODBC.h"
#include "controls/ComboModel.h"
#include "core/Progress.h"
#include "core/Session.h"
#include "organisations/AwardBoardODBC.h"
#include "organisations/Companies.h"
#include "organisations/OrganisationLinkODBC.h"
#include "organisations/OrganisationModule.h"
#include "organisations/OrganisationODBC.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"

#include <QTest>

using Dialogs::Answer;

namespace
{
/// Every field of its own, so that two that are mixed up show.
OrganisationRecord FullCompany()
{
    OrganisationRecord r;
    r.name = QStringLiteral("O'Neil & Co");
    r.referenceId = QStringLiteral("R-1");
    r.addr1 = QStringLiteral("addr1");
    r.addr2 = QStringLiteral("addr2");
    r.addr3 = QStringLiteral("addr3");
    r.addr4 = QStringLiteral("addr4");
    r.county = 3;
    r.postcode = QStringLiteral("AB1 2CD");
    r.city = 4;
    r.country = 5;
    r.telOut = QStringLiteral("out");
    r.telDay = QStringLiteral("day");
    r.fax = QStringLiteral("fax");
    r.email = QStringLiteral("a@b.example");
    r.url = QStringLiteral("b.example");
    r.notes = QStringLiteral("'; DELETE FROM Organisations; -- %1");
    r.board = true;
    return r;
}

QStringList Fields(const OrganisationRecord &r)
{
    return {r.name,
            r.referenceId,
            r.addr1,
            r.addr2,
            r.addr3,
            r.addr4,
            QString::number(r.county),
            r.postcode,
            QString::number(r.city),
            QString::number(r.country),
            r.telOut,
            r.telDay,
            r.fax,
            r.email,
            r.url,
            r.notes,
            r.board ? QStringLiteral("board") : QString()};
}

/// The lists of an organisation's screen, and what is stored of them.
class Lists final
{
public:
    explicit Lists(int organRef)
        : m_organRef(organRef)
    {
        Organisation_Show(view, organRef);
    }
    bool Store()
    {
        Progress progress;
        return Organisation_StoreLinks(m_organRef,
                                       {view.contacts, view.usedCriteria, view.availFac, view.usedFac,
                                        view.availVenues, view.usedVenues},
                                       progress);
    }
    FakeOrganisationView view;

private:
    int m_organRef;
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
    void init();
    void cleanup();
    void AddFindChangeDelete();
    void NameAndReference();
    void TwoReadBacks();
    void ShowWhatIsNotThere();
    void FailedReadIsNotWhole();
    void TypedNameAlone();
    void DeleteLetsGo();
    void OwnersAndLists();
    void ContactOfAnother_data();
    void ContactOfAnother();
    void PlaceOfAnother_data();
    void PlaceOfAnother();
    void EmptiedList();
    void OrderOfASave();
    void CharacteristicsSpread();
    void AnsweredForAll();
    void DeletedWhileAsked();
    void HalfDoneSave();
    void RemovingAndTitles();
    void AwardBoards();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
};

void TestOrganisations::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    gShowIDs = 0;
}

void TestOrganisations::cleanup()
{
    gShowIDs = 0;
    m_dialogs.reset();
    m_database.reset();
}

void TestOrganisations::AddFindChangeDelete()
{
    const int key = Organisation_Add(FullCompany());
    QVERIFY(key > 1);
    FakeOrganisationView view;
    Organisation_Show(view, key);
    QCOMPARE(view.calls, QStringList({"Loading Organisation Information", "record", "loaded"}));
    QCOMPARE(Fields(view.record), Fields(FullCompany()));

    OrganisationRecord changed = FullCompany();
    for (QString *text : {&changed.name, &changed.referenceId, &changed.addr1, &changed.addr2, &changed.addr3,
                          &changed.addr4, &changed.postcode, &changed.telOut, &changed.telDay, &changed.fax,
                          &changed.email, &changed.url, &changed.notes})
        text->append(QStringLiteral(" new"));
    changed.county = 13;
    changed.city = 14;
    changed.country = 15;
    changed.board = false;
    QCOMPARE(Organisation_Update(key, changed), key);
    Organisation_Show(view, key);
    QCOMPARE(Fields(view.record), Fields(changed));

    QVERIFY(Organisation_Delete(key));
    QCOMPARE(Rows("Organisations"), 1);
}

void TestOrganisations::NameAndReference()
{
    const QString exists = QStringLiteral("Organisation already exists in database.");
    const int acme = Organisation_Add(Company("Acme"));
    OrganisationRecord elsewhere = Company("Acme");
    elsewhere.addr1 = QStringLiteral("another street");
    m_dialogs->Expect("Add Organisation", exists);
    QCOMPARE(Organisation_Add(elsewhere), 0);
    const int beta = Organisation_Add(Company("Beta", "B"));
    m_dialogs->Expect("Update Organisation", exists);
    QCOMPARE(Organisation_Update(beta, Company("Acme")), 0);
    QCOMPARE(Organisation_Update(beta, Company("Acme", "B")), beta);
    QCOMPARE(Organisation_Update(acme, Company("Acme")), acme);
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Acme'"), 2);
}

/// Staff who add a second Acme at the same address under a reference of its own get the first one back.
void TestOrganisations::TwoReadBacks()
{
    const int first = Organisation_Add(Company("Acme"));
    QCOMPARE(Organisation_Add(Company("Acme", "North")), first);
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Acme'"), 2);
    OrganisationRecord elsewhere = Company("Acme", "South");
    elsewhere.addr1 = QStringLiteral("another street");
    const int third = Organisation_Add(elsewhere);
    QVERIFY(third > first);
    QCOMPARE(Rows(u"Organisations WHERE ReferenceID = 'South' AND OrganRef = " % SqlNumber(third)), 1);
}

void TestOrganisations::ShowWhatIsNotThere()
{
    FakeOrganisationView view;
    Organisation_Show(view, 4711);
    QCOMPARE(view.calls, QStringList({"Loading Organisation Information", "#Organisation Deleted#"}));
}

void TestOrganisations::FailedReadIsNotWhole()
{
    const int acme = Organisation_Add(Company("Acme"));
    Sql("ALTER TABLE Facilities RENAME TO FacilitiesAway");
    m_dialogs->Expect("Veltrane Connection",
                      "A number of errors have been detected, please seek technical support.");
    FakeOrganisationView view;
    Organisation_Show(view, acme);
    QVERIFY(!view.calls.contains("loaded"));
}

/// A name typed in a list makes an organisation without address, town and award flag.
void TestOrganisations::TypedNameAlone()
{
    const int key = Contact_AddItem(ContactSection::Organisations, "Typed", "");
    FakeOrganisationView view;
    Organisation_Show(view, key);
    QCOMPARE(Fields(view.record),
             QStringList({"Typed", "", "", "", "", "", "-1", "", "-1", "-1", "", "", "", "", "", "", ""}));
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Typed' AND Addr1 = 'Not Known'"), 0);
}

void TestOrganisations::DeleteLetsGo()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    Venue("Hall", acme);
    Facility("Lathe", acme);
    Sql(u"INSERT INTO Exam (ExamName,OrganRef) VALUES ('Test'," % SqlNumber(acme) % u")");
    ADO_Organisation_AddConcession(acme, 5);

    StatementLog log;
    QVERIFY(Organisation_Delete(acme));
    QStringList expected{
        "UPDATE Contacts SET OrganRef = 1 WHERE OrganRef = ",
        "UPDATE Venues SET OrganRef = 1 WHERE OrganRef = ",
        "UPDATE Facilities SET OrganRef = 1 WHERE OrganRef = ",
        "UPDATE Exam SET OrganRef = 1 WHERE OrganRef = ", "DELETE FROM Organisations WHERE OrganRef = "};
    QCOMPARE(log.Statements(), expected.replaceInStrings(QRegularExpression("$"), SqlNumber(acme)));
    QCOMPARE(OrganisationOf(anna), 1);
    QCOMPARE(Rows("Venues WHERE Description = 'Hall' AND OrganRef = 1"), 1);
    QCOMPARE(Rows("Facilities WHERE Name = 'Lathe' AND OrganRef = 1"), 1);
    QCOMPARE(Rows("Exam WHERE ExamName = 'Test' AND OrganRef = 1"), 1);
    QCOMPARE(Rows("OrganChars"), 1);
}

void TestOrganisations::OwnersAndLists()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    const int ben = Employee("Ben", "Carter", 1);
    const int hall = Venue("Hall", acme);
    const int attic = Venue("Attic", 1);
    const int lathe = Facility("Lathe", acme);
    const int anvil = Facility("Anvil", 1);
    const int member = Concession_Add("Member", 0, 0, "");
    const int staff = Concession_Add("Staff", 0, 0, "");
    ADO_Organisation_AddConcession(acme, staff);
    ADO_Organisation_AddConcession(acme, staff);
    ADO_Organisation_AddConcession(acme, 4711);
    QCOMPARE(Rows("OrganChars"), 2);

    QCOMPARE(ADO_Organisation_CheckContact(anna), QStringLiteral("Acme"));
    QCOMPARE(ADO_Organisation_CheckContact(ben), QString());
    QCOMPARE(ADO_Organisation_CheckFacility(lathe), QStringLiteral("Acme"));
    QCOMPARE(ADO_Organisation_CheckFacility(anvil), QString());
    QCOMPARE(ADO_Organisation_CheckVenue(hall), QStringLiteral("Acme"));
    QCOMPARE(ADO_Organisation_CheckVenue(attic), QString());

    FakeOrganisationView view;
    view.contacts.Add({"?99", "left over"});
    view.usedFac.Add({"!99", "left over"});
    Organisation_Show(view, acme);
    QCOMPARE(Keys(view.contacts), QStringList({Key(anna)}));
    QCOMPARE(Texts(view.contacts), QStringList({"Bell, Anna"}));
    QCOMPARE(Keys(view.usedFac), QStringList({PlaceKey(lathe)}));
    QCOMPARE(Keys(view.availFac), QStringList({PlaceKey(anvil)}));
    // The row that stands for no venue is none to choose.
    QCOMPARE(Texts(view.availVenues), QStringList({"Attic"}));
    QCOMPARE(Keys(view.usedVenues), QStringList({PlaceKey(hall)}));
    QCOMPARE(Keys(view.usedCriteria), QStringList({Key(staff)}));
    QCOMPARE(Keys(view.availCriteria), QStringList({Key(member)}));

    QVERIFY(ADO_Organisation_ShowAvailable(view));
    QVERIFY(view.contacts.IsEmpty() && view.usedFac.IsEmpty() && view.usedVenues.IsEmpty());
    QCOMPARE(Texts(view.availFac), QStringList({"Anvil", "Lathe"}));
}

void TestOrganisations::ContactOfAnother_data()
{
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<bool>("moves");
    QTest::newRow("yes") << Answer::Yes << true;
    QTest::newRow("no") << Answer::No << false;
}

void TestOrganisations::ContactOfAnother()
{
    QFETCH(Answer, answer);
    QFETCH(bool, moves);
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int own = Employee("Anna", "Bell", acme);
    const int free = Employee("Ben", "Carter", 1);
    const int theirs = Employee("Cy", "Dodd", beta);
    const QString before = TestDatabase::Rows(u"SELECT Cust_Surname, Cust_Forename, JobTitle, Cust_City FROM "
                                              u"Contacts WHERE ContactRef = " %
                                              SqlNumber(theirs))
                               .join(u'|');

    Lists lists(acme);
    lists.view.contacts.Add({Key(theirs), "Dodd, Cy"});
    lists.view.contacts.Add({Key(free), "Carter, Ben"});
    m_dialogs->Expect("Change Contact Organisation", Question("Contact", "Dodd, Cy", "Beta"), answer);
    QVERIFY(lists.Store());
    QCOMPARE(OrganisationOf(own), acme);
    QCOMPARE(OrganisationOf(free), acme);
    QCOMPARE(OrganisationOf(theirs), moves ? acme : beta);
    QCOMPARE(lists.view.contacts.Contains(Key(theirs)), moves);
    QCOMPARE(TestDatabase::Rows(u"SELECT Cust_Surname, Cust_Forename, JobTitle, Cust_City FROM Contacts "
                                u"WHERE ContactRef = " %
                                SqlNumber(theirs))
                 .join(u'|'),
             before);
}

void TestOrganisations::PlaceOfAnother_data()
{
    QTest::addColumn<bool>("isVenue");
    QTest::addColumn<Answer>("answer");
    QTest::newRow("facility, yes") << false << Answer::Yes;
    QTest::newRow("facility, no") << false << Answer::No;
    QTest::newRow("venue, yes") << true << Answer::Yes;
    QTest::newRow("venue, no") << true << Answer::No;
}

void TestOrganisations::PlaceOfAnother()
{
    QFETCH(bool, isVenue);
    QFETCH(Answer, answer);
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int theirs = isVenue ? Venue("Hall", beta) : Facility("Hall", beta);
    const int own = isVenue ? Venue("Attic", acme) : Facility("Attic", acme);

    Lists lists(acme);
    ListModel &available = isVenue ? lists.view.availVenues : lists.view.availFac;
    ListModel &used = isVenue ? lists.view.usedVenues : lists.view.usedFac;
    available.MoveKeys({PlaceKey(theirs)}, used);
    const QString kind = isVenue ? QStringLiteral("Venue") : QStringLiteral("Facility");
    m_dialogs->Expect(u"Change " % kind % u" Organisation", Question(kind, "Hall", "Beta"), answer);
    QVERIFY(lists.Store());
    const auto check = isVenue ? ADO_Organisation_CheckVenue : ADO_Organisation_CheckFacility;
    const bool moved = answer == Answer::Yes;
    QCOMPARE(check(theirs), moved ? QStringLiteral("Acme") : QStringLiteral("Beta"));
    QCOMPARE(check(own), QStringLiteral("Acme"));
    QCOMPARE(used.Contains(PlaceKey(theirs)), moved);
    QCOMPARE(available.Contains(PlaceKey(theirs)), !moved);
}

void TestOrganisations::EmptiedList()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    const int hall = Venue("Hall", acme);
    Lists lists(acme);
    lists.view.contacts.Clear();
    lists.view.usedVenues.Clear();
    QVERIFY(lists.Store());
    QCOMPARE(OrganisationOf(anna), 1);
    QCOMPARE(ADO_Organisation_CheckVenue(hall), QString());
}

void TestOrganisations::OrderOfASave()
{
    const int acme = Organisation_Add(Company("Acme"));
    const QString a = SqlNumber(acme);
    const QString anna = SqlNumber(Employee("Anna", "Bell", acme));
    const QString hall = SqlNumber(Venue("Hall", acme));
    Lists lists(acme);
    StatementLog log;
    QVERIFY(lists.Store());
    QCOMPARE(
        log.Statements(),
        QStringList(
            {u"UPDATE Contacts SET OrganRef = 1 WHERE OrganRef = " % a,
             u"SELECT Organisations.OrganName FROM Contacts INNER JOIN Organisations ON Contacts.OrganRef = "
             u"Organisations.OrganRef WHERE Contacts.OrganRef >1 AND ContactRef = " %
                 anna,
             u"UPDATE Contacts SET OrganRef = " % a % u" WHERE ContactRef = " % anna,
             u"DELETE FROM OrganChars WHERE OrganRef = " % a,
             u"SELECT ConcessionRef FROM OrganChars WHERE OrganRef = " % a,
             u"UPDATE Facilities SET OrganRef = 1 WHERE OrganRef = " % a,
             u"UPDATE Venues SET OrganRef = 1 WHERE OrganRef = " % a,
             u"SELECT Organisations.OrganName FROM Venues INNER JOIN Organisations ON Venues.OrganRef = "
             u"Organisations.OrganRef WHERE Venues.OrganRef >1 AND VenueRef = " %
                 hall,
             u"UPDATE Venues SET OrganRef = " % a % u" WHERE VenueRef = " % hall}));
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
    m_dialogs->Expect("Organisation Characteristics", question("Bell, Anna"), Answer::No);
    m_dialogs->Expect("Organisation Characteristics", question("Carter, Ben"), Answer::Yes);
    QVERIFY(lists.Store());
    QVERIFY(!holds(anna) && holds(ben));
    // Every save asks again for who lacks some.
    m_dialogs->Expect("Organisation Characteristics", question("Bell, Anna"), Answer::Yes);
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
        ADO_Organisation_ShowContacts(beta, lists.view.contacts);
        m_dialogs->Expect("Change Contact Organisation",
                          Question("Contact", lists.view.contacts.At(0).text, "Beta"), Answer::Yes);
        m_dialogs->Expect("Change Contact Organisation",
                          Question("Contact", lists.view.contacts.At(1).text, "Beta"), answer);
        QVERIFY(lists.Store());
        QCOMPARE(lists.view.contacts.Count(), moved);
        QCOMPARE(Rows(u"Contacts WHERE OrganRef = " % SqlNumber(acme)), moved);
    }
}

/// Nobody is given to an organisation that another workstation deletes while a question stands.
void TestOrganisations::DeletedWhileAsked()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int theirs = Employee("Cy", "Dodd", beta);
    Lists lists(acme);
    lists.view.contacts.Add({Key(theirs), "Dodd, Cy"});
    Dialogs::Installed().msgBox = [acme](auto &&...) {
        Organisation_Delete(acme);
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
    m_dialogs->Expect("Veltrane Connection",
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
    ADO_Organisation_ShowContacts(acme, list);

    list.Select(list.Find(Key(anna)));
    list.Select(list.Find(Key(ben)));
    m_dialogs->Expect("Update Job Title(s)", "Okay to update Contact(s) to Job Title 'Head's aide'?",
                      Answer::No);
    QVERIFY(!Organisation_UpdateJobTitles(list, "Head's aide"));
    m_dialogs->Expect("Update Job Title(s)", "Okay to update Contact(s) to Job Title 'Head's aide'?",
                      Answer::Yes);
    QVERIFY(Organisation_UpdateJobTitles(list, "Head's aide"));
    QCOMPARE(list.At(list.Find(Key(anna))).subItems, QStringList("Head's aide"));
    QCOMPARE(TestDatabase::Rows("SELECT Cust_Forename FROM Contacts WHERE JobTitle = 'Head''s aide' ORDER BY "
                                "Cust_Forename"),
             QStringList({"Anna", "Ben"}));

    m_dialogs->Expect("Remove Role", "Remove Contact Bell, Anna from this Organisation?", Answer::No);
    m_dialogs->Expect("Remove Role", "Remove Contact Carter, Ben from this Organisation?", Answer::Yes);
    Organisation_RemoveContacts(list);
    QCOMPARE(Keys(list), QStringList({Key(anna), Key(cy)}));
    QVERIFY(list.SelectedRows().empty());
    QCOMPARE(OrganisationOf(ben), acme); // until the save

    Sql(u"UPDATE Contacts SET Cust_Surname = 'Ash' WHERE ContactRef = " % SqlNumber(anna));
    Sql(u"DELETE FROM Contacts WHERE ContactRef = " % SqlNumber(cy));
    Organisation_RefreshContacts(list);
    QCOMPARE(Texts(list), QStringList({"Ash, Anna"}));
}

void TestOrganisations::AwardBoards()
{
    const int acme = Organisation_Add(Company("Acme", "A"));
    OrganisationRecord board = Company("City Board", "CB");
    board.board = true;
    const int city = Organisation_Add(board);
    gShowIDs = 1;
    ListModel list;
    list.SetCheckable(true);
    ADO_Organisations_GetAll(list);
    QCOMPARE(Texts(list), QStringList({"[A] Acme", "[CB] City Board"}));
    QVERIFY(!list.At(0).checked && list.At(1).checked && list.SelectedRows().empty());
    ComboModel boards;
    ADO_Organisation_FillListAwardBoard(boards);
    QCOMPARE(boards.Count(), 1);
    QCOMPARE(boards.CurrentData(), city);
    QCOMPARE(boards.CurrentText(), QStringLiteral("[CB] City Board"));

    list.SetChecked(0, true);
    list.SetChecked(1, false);
    QVERIFY(Organisations_StoreAwardFlags(list));
    ADO_Organisation_FillListAwardBoard(boards);
    QCOMPARE(boards.Count(), 1);
    QCOMPARE(boards.CurrentData(), acme);
}

QTEST_GUILESS_MAIN(TestOrganisations)
#include "test_organisations.moc"
