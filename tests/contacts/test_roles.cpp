#include "contacts/People.h"
#include "contacts/RoleModule.h"
#include "controls/ComboModel.h"
#include "database/GlobalCode.h"
#include "platform/Clock.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"

#include <QTest>

namespace
{
const QString exists = QStringLiteral("Role already exists in database.");
constexpr int anna = 7;

RoleType Role(const QString &name, double rate = 0, RoleStatus status = RoleStatus::Active)
{
    return {name, QString(), rate, status, QString()};
}

QStringList Names(const ComboModel &list)
{
    QStringList names;
    for (int row = 0; row < list.Count(); ++row)
        names.append(list.At(row).text);
    return names;
}

/// The rows of a person's roles, one text each.
QStringList Lines(const ListModel &roles)
{
    QStringList lines;
    for (int row = 0; row < roles.Count(); ++row)
        lines.append(QString(roles.At(row).text % u'|' % roles.At(row).subItems.join(u'|')));
    return lines;
}

QStringList Stored()
{
    return TestDatabase::Rows(
        QStringLiteral("SELECT RoleTypeRef, ChargeRate, StartDate, EndDate FROM ContactRoles "
                       "WHERE ContactRef = 7 ORDER BY RoleTypeRef"));
}

void Book(int contactRef, int roleTypeRef)
{
    Sql(u"INSERT INTO CourseStaff (CourseRef, ContactRef, RoleTypeRef) VALUES (1," % SqlNumber(contactRef) %
        u',' % SqlNumber(roleTypeRef) % u')');
}
} // namespace

class TestRoles : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void AddChangeGive();
    void NameAndReference();
    void ActiveOnes();
    void AddToList_data();
    void AddToList();
    void Remove_data();
    void Remove();
    void StoresWhatItShows();
    void InUse();
    void DeleteRole();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
};

void TestRoles::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    Clock::StopAt(QDateTime(QDate(2026, 3, 9), QTime(12, 0)));
}

void TestRoles::cleanup()
{
    Clock::StopAt({});
    m_dialogs.reset();
    m_database.reset();
}

void TestRoles::AddChangeGive()
{
    const int tutor = RoleType_Add({"Tutor's", "takes it's class", 1234.56, RoleStatus::NotActive, "T"});
    QVERIFY(tutor > 0);
    QCOMPARE(ADO_Contact_GetRoleChargeRate(tutor), 1234.56);
    QCOMPARE(ADO_Contact_GetRoleChargeRate(4711), 0.0);
    QCOMPARE(RoleType_Update(tutor, {"Tutor", "d", 20.5, RoleStatus::Active, "U"}), tutor);
    QCOMPARE(TestDatabase::Rows("SELECT Name, Description, ChargeRate, Status, ReferenceID FROM RoleTypes"),
             QStringList("Tutor|d|20.5|1|U"));

    QVERIFY(ADO_Contact_AddContactRole(anna, tutor, 1234.5, 20260301, 0));
    ListModel roles;
    QVERIFY(ADO_Contact_GetRoles(anna, roles));
    // A day that is not stored shows as today.
    QCOMPARE(Lines(roles), QStringList("Tutor|1,234.50|01/03/2026|09/03/2026"));
    QCOMPARE(roles.At(0).key, QString(u'?' % SqlNumber(tutor)));
    QVERIFY(roles.SelectedRows().empty());
}

void TestRoles::NameAndReference()
{
    const int plain = RoleType_Add(Role("Tutor"));
    m_dialogs->Expect("Add Role", exists);
    QCOMPARE(RoleType_Add(Role("Tutor", 5)), 0);
    RoleType evening = Role("Tutor");
    evening.referenceId = "E";
    const int other = RoleType_Add(evening);
    QVERIFY(other > plain);
    m_dialogs->Expect("Update Role", exists);
    QCOMPARE(RoleType_Update(other, Role("Tutor", 30)), 0);
    QCOMPARE(ADO_Contact_GetRoleChargeRate(other), 0.0);
}

void TestRoles::ActiveOnes()
{
    RoleType_Add(Role("Tutor"));
    const int driver = RoleType_Add(Role("Driver", 0, RoleStatus::NotActive));
    RoleType_Add(Role("Assessor"));
    ComboModel list;
    ADO_Contact_FillRoleTypeList(list, false);
    QCOMPARE(Names(list), QStringList({"Assessor", "Tutor"}));
    QCOMPARE(list.Current(), 0);
    ADO_Contact_FillRoleTypeList(list, true);
    QCOMPARE(Names(list), QStringList({"Assessor", "Driver", "Tutor"}));
    QCOMPARE(list.At(1).data, driver);
    // Who held it keeps it.
    ADO_Contact_AddContactRole(anna, driver, 1, 20260101, 20260102);
    ListModel roles;
    ADO_Contact_GetRoles(anna, roles);
    QCOMPARE(Texts(roles), QStringList("Driver"));
}

void TestRoles::AddToList_data()
{
    QTest::addColumn<int>("roleTypeRef");
    QTest::addColumn<Dialogs::Answer>("answer");
    QTest::addColumn<QStringList>("lines");
    const QString before = QStringLiteral("Tutor|10.00|01/01/2026|31/01/2026");
    QTest::newRow("new") << 2 << Dialogs::Answer::None
                         << QStringList({before, "Driver|1,500.00|01/03/2026|09/03/2026"});
    QTest::newRow("held, No") << 1 << Dialogs::Answer::No << QStringList(before);
    QTest::newRow("held, Yes") << 1 << Dialogs::Answer::Yes
                               << QStringList("Tutor|1,500.00|01/03/2026|09/03/2026");
}

void TestRoles::AddToList()
{
    QFETCH(int, roleTypeRef);
    QFETCH(Dialogs::Answer, answer);
    QFETCH(QStringList, lines);
    ListModel roles;
    roles.Fill({{"?1", "Tutor", {"10.00", "01/01/2026", "31/01/2026"}}});
    if (answer != Dialogs::Answer::None)
        m_dialogs->Expect("Update Role", "Contact already on this role, Do you want to update?", answer);
    Role_AddToList({roleTypeRef, "Driver", 1500, 20260301, 20260309}, roles);
    QCOMPARE(Lines(roles), lines);
}

void TestRoles::Remove_data()
{
    QTest::addColumn<Dialogs::Answer>("remove");
    QTest::addColumn<bool>("booked");
    QTest::addColumn<Dialogs::Answer>("endToday");
    QTest::addColumn<QString>("tutor"); ///< the row that is left of it
    const QString before = QStringLiteral("Tutor|10.00|01/01/2026|31/12/2026");
    QTest::newRow("No") << Dialogs::Answer::No << false << Dialogs::Answer::None << before;
    QTest::newRow("free") << Dialogs::Answer::Yes << false << Dialogs::Answer::None << QString();
    QTest::newRow("booked, stays") << Dialogs::Answer::Yes << true << Dialogs::Answer::No << before;
    // The day and month of the end are not padded.
    QTest::newRow("booked, ends today")
        << Dialogs::Answer::Yes << true << Dialogs::Answer::Yes << "Tutor|10.00|01/01/2026|9/3/2026";
}

void TestRoles::Remove()
{
    QFETCH(Dialogs::Answer, remove);
    QFETCH(bool, booked);
    QFETCH(Dialogs::Answer, endToday);
    QFETCH(QString, tutor);
    ListModel roles;
    roles.Fill({{"?1", "Tutor", {"10.00", "01/01/2026", "31/12/2026"}},
                {"?2", "Driver", {"5.00", "01/01/2026", "31/12/2026"}},
                {"?3", "Cook", {"7.00", "01/01/2026", "31/12/2026"}}});
    roles.Select(0);
    roles.Select(1);
    // Somebody else's booking does not count.
    Book(anna + 1, 2);
    if (booked)
        Book(anna, 1);
    m_dialogs->Expect("Remove Role", "Remove Role Tutor from this Contact?", remove);
    if (booked)
        m_dialogs->Expect(
            "Remove Role",
            "Contact has been appointed todo this Role!\nWould you like to sent the End Role Date "
            "to today?",
            endToday);
    m_dialogs->Expect("Remove Role", "Remove Role Driver from this Contact?", Dialogs::Answer::Yes);
    Role_RemoveSelected(anna, roles);
    QStringList left("Cook|7.00|01/01/2026|31/12/2026");
    if (!tutor.isEmpty())
        left.prepend(tutor);
    QCOMPARE(Lines(roles), left);
    QVERIFY(roles.SelectedRows().empty());
}

void TestRoles::StoresWhatItShows()
{
    const int tutor = RoleType_Add(Role("Tutor"));
    const int driver = RoleType_Add(Role("Driver"));
    ADO_Contact_AddContactRole(anna, tutor, 1234.5, 20260301, 20051332);
    ADO_Contact_AddContactRole(anna + 1, tutor, 1, 20260301, 20260302);
    ListModel roles;
    ADO_Contact_GetRoles(anna, roles);
    roles.Add({u'?' % SqlNumber(driver), "Driver", {"0.10", "9/3/2026", "10/12/2026"}});
    StatementLog log;
    QVERIFY(Role_Store(anna, roles));
    QCOMPARE(log.Statements().first(), QStringLiteral("DELETE FROM ContactRoles WHERE ContactRef = 7"));
    QCOMPARE(Stored(), QStringList({SqlNumber(tutor) % "|1234.5|20260301|20051332",
                                    SqlNumber(driver) % "|0.1|20260309|20261210"}));
    QCOMPARE(Rows("ContactRoles"), 3);
    roles.Clear();
    QVERIFY(Role_Store(anna, roles));
    QCOMPARE(Stored(), QStringList());
}

void TestRoles::InUse()
{
    Book(anna, 3);
    ADO_Contact_AddContactRole(anna, 4, 1, 20260301, 20260302);
    QVERIFY(ADO_Contact_GetRoleInUse(3, anna));
    QVERIFY(ADO_Contact_GetRoleInUse(3, 0));
    QVERIFY(!ADO_Contact_GetRoleInUse(3, anna + 1));
    // Bookings make a role used, not its being held.
    QVERIFY(!ADO_Contact_GetRoleInUse(4, anna));
    QVERIFY(!ADO_Contact_GetRoleInUse(4, 0));
}

void TestRoles::DeleteRole()
{
    const int tutor = RoleType_Add(Role("Tutor"));
    const int driver = RoleType_Add(Role("Driver"));
    ADO_Contact_AddContactRole(anna, tutor, 1, 20260301, 20260302);
    ADO_Contact_AddContactRole(anna, driver, 1, 20260301, 20260302);
    Book(anna, tutor);
    m_dialogs->Expect("Role Deletion", "Unable to delete Role 'Tutor' already in use!");
    QVERIFY(!RoleType_MayDelete(tutor, "Tutor"));
    QVERIFY(RoleType_MayDelete(driver, "Driver"));
    QVERIFY(ADO_Contact_DeleteRole(driver));
    QCOMPARE(Stored(), QStringList(QString(SqlNumber(tutor) % "|1|20260301|20260302")));
    QCOMPARE(TestDatabase::Rows("SELECT Name FROM RoleTypes"), QStringList("Tutor"));
}

QTEST_GUILESS_MAIN(TestRoles)
#include "test_roles.moc"
