#include "contacts/ContactForm.h"
#include "contacts/roles/RoleModule.h"
#include "contacts/roles/frmAddEditRoleTypes.h"
#include "database/values/GlobalCode.h"
#include "forms/fields/DateField.h"
#include "platform/desktop/Clock.h"
#include "support/Keyboard.h"
#include "support/RightsTable.h"
#include "support/StatementLog.h"

#include <QTest>

namespace
{
const QString exists = QStringLiteral("Role already exists in database.");
const QString askToSave = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");
const QString removeRole = QStringLiteral("Remove Role");
const QString bookedAsk = QStringLiteral(
    "Contact has been appointed todo this Role!\nWould you like to sent the End Role Date to today?");

/// The rows of a list with their sub-items, one text each.
QStringList Lines(const ListModel &list)
{
    QStringList lines;
    for (int row = 0; row < list.Count(); ++row)
        lines.append(QString(list.At(row).text % u'|' % list.At(row).subItems.join(u'|')));
    return lines;
}

} // namespace

class TestRoles final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void RolesWithDatesByKeys();
    void RoleTypes();
    void InactiveOnesAreOfferedToNobody();
    void EndOfABookedRoleIsTodayWithoutPadding();
    void StoresWhatItShows();
    void BookingsAloneMakeARoleUsed();
    void OneRowFillsTheFields();
    void UnreadableListsLockTheRecord();
    void RightOfTheRate();
    void RoleDialog();
    void DeletedMeanwhile();

private:
    std::unique_ptr<frmAddContact> Editing() const { return EditingOn("Roles", {Key(m_anna)}); }
    QStringList Held() const;
    void Give(int roleTypeRef, int endDate = 20260304) const;
    void Book(int contactRef, int roleTypeRef) const;

    std::unique_ptr<ContactFixture> m;
    int m_anna = 0;
    int m_driver = 0;
    int m_tutor = 0;
    int m_cook = 0; ///< not active
};

void TestRoles::init()
{
    m = std::make_unique<ContactFixture>();
    Clock::StopAt(QDateTime(QDate(2026, 3, 9), QTime(12, 0)));
    m_anna = Contact_Add(Person("Anna", "Bell"));
    m_driver = RoleType_Add({"Driver", "", 12.5, RoleStatus::Active, ""});
    m_tutor = RoleType_Add({"Tutor", "", 1500, RoleStatus::Active, ""});
    m_cook = RoleType_Add({"Cook", "", 9, RoleStatus::NotActive, ""});
}

void TestRoles::cleanup()
{
    Clock::StopAt({});
    m.reset();
}

/// Anna's roles as they are stored.
QStringList TestRoles::Held() const
{
    return TestDatabase::Rows(
        u"SELECT RoleTypes.Name, ContactRoles.ChargeRate, StartDate, EndDate FROM ContactRoles INNER JOIN "
        u"RoleTypes ON ContactRoles.RoleTypeRef = RoleTypes.RoleTypeRef WHERE ContactRef = " %
        QString::number(m_anna) % u" ORDER BY RoleTypes.Name");
}

void TestRoles::Give(int roleTypeRef, int endDate) const
{
    ADO_Contact_AddContactRole(ContactRef(m_anna), RoleTypeRef(roleTypeRef), 7.25, 20260102, endDate);
}

void TestRoles::Book(int contactRef, int roleTypeRef) const
{
    Sql(u"INSERT INTO CourseStaff (CourseRef, ContactRef, RoleTypeRef) VALUES (1," % SqlNumber(contactRef) %
        u',' % SqlNumber(roleTypeRef) % u')');
}

/// Without a mouse: two roles, one for a time, one at a rate of its own; then one is taken away again.
void TestRoles::RolesWithDatesByKeys()
{
    frmAddContact form;
    form.OpenRecords({Key(m_anna)});
    const Keyboard keys(form);
    keys.Alt(Qt::Key_E);
    for (int tab = 0; tab < 3; ++tab)
        keys.Press(Qt::Key_Tab, Qt::ControlModifier);
    keys.TypeAt("RoleList", "t");
    QCOMPARE(Find<QLineEdit>(form, "Rate")->text(), u"1,500.00"_qs);
    keys.TypeAt("EndDate", "31012027");
    const auto add = [&keys] {
        keys.TabTo("AddRoleBtn");
        keys.Press(Qt::Key_Space);
    };
    add();
    keys.TabTo("RoleList");
    keys.Press(Qt::Key_Home);
    // Another role starts today again.
    QCOMPARE(Chosen(form, "RoleList"), u"Driver"_qs);
    QCOMPARE(Find<DateField>(form, "EndDate")->Day(), QDate(2026, 3, 9));
    keys.TypeAt("Rate", "13");
    add();
    QCOMPARE(Held(), QStringList());
    keys.Alt(Qt::Key_U);
    QCOMPARE(Held(), QStringList({"Driver|13|20260309|20260309", "Tutor|1500|20260309|20270131"}));

    keys.Alt(Qt::Key_E);
    keys.TabTo("RolesInfo");
    keys.Press(Qt::Key_Space);
    m->dialogs.Expect(removeRole, "Remove Role Tutor from this Contact?", Dialogs::Answer::Yes);
    keys.Press(Qt::Key_Delete);
    m->dialogs.Expect("Warning", askToSave, Dialogs::Answer::Yes);
    keys.Press(Qt::Key_Escape);
    QCOMPARE(Held(), QStringList("Driver|13|20260309|20260309"));
}

void TestRoles::RoleTypes()
{
    m->dialogs.Expect("Add Role", exists);
    QCOMPARE(RoleType_Add({"TUTOR", "", 5, RoleStatus::Active, ""}), 0);
    const int evening = RoleType_Add({"Tutor", "", 5, RoleStatus::Active, "E"});
    QVERIFY(evening > m_cook);
    m->dialogs.Expect("Update Role", exists);
    QCOMPARE(RoleType_Update(RoleTypeRef(evening), {"Tutor", "", 30, RoleStatus::Active, ""}), 0);
    const QString name = QString(245, 'x') % "100% [O'N]";
    QCOMPARE(RoleType_Update(RoleTypeRef(evening), {name, "it's", 1234.56, RoleStatus::NotActive, "U"}),
             evening);
    QCOMPARE(TestDatabase::Rows(u"SELECT Name, Description, ChargeRate, Status, ReferenceID FROM RoleTypes "
                                u"WHERE RoleTypeRef = " %
                                SqlNumber(evening)),
             QStringList(QString(name % "|it's|1234.56|2|U")));
    QCOMPARE(ADO_Contact_GetRoleChargeRate(RoleTypeRef(evening)), 1234.56);
    QCOMPARE(ADO_Contact_GetRoleChargeRate(RoleTypeRef(4711)), 0.0);
}

void TestRoles::InactiveOnesAreOfferedToNobody()
{
    ComboModel list;
    ADO_Contact_FillRoleTypeList(list, false);
    QCOMPARE(list.Count(), 2);
    QCOMPARE(list.CurrentText(), u"Driver"_qs);
    ADO_Contact_FillRoleTypeList(list, true);
    QCOMPARE(list.CurrentText(), u"Cook"_qs);
    // Who held it keeps it. A day that is not stored shows as today.
    Give(m_cook, 0);
    ListModel roles;
    ADO_Contact_GetRoles(ContactRef(m_anna), roles);
    QCOMPARE(Lines(roles), QStringList("Cook|7.25|02/01/2026|09/03/2026"));
    QVERIFY(roles.SelectedRows().empty());
}

/// A role that the person is booked for stays. Its new end has no leading zeros.
void TestRoles::EndOfABookedRoleIsTodayWithoutPadding()
{
    const QString before = "Tutor|10.00|01/01/2026|31/12/2026";
    const QString cook = "Cook|7.00|01/01/2026|31/12/2026";
    const auto none = Dialogs::Answer::None;
    for (const auto &[remove, endToday, left] :
         {std::tuple(Dialogs::Answer::No, none, QStringList({before, cook})),
          {Dialogs::Answer::Yes, none, {cook}},
          {Dialogs::Answer::Yes, Dialogs::Answer::No, {before, cook}},
          {Dialogs::Answer::Yes, Dialogs::Answer::Yes, {"Tutor|10.00|01/01/2026|9/3/2026", cook}}}) {
        ListModel roles;
        roles.Fill({{"?1", "Tutor", {"10.00", "01/01/2026", "31/12/2026"}},
                    {"?2", "Driver", {"5.00", "01/01/2026", "31/12/2026"}},
                    {"?3", "Cook", {"7.00", "01/01/2026", "31/12/2026"}}});
        roles.Select(0);
        roles.Select(1);
        Book(m_anna + 1, 2); // somebody else's does not count
        m->dialogs.Expect(removeRole, "Remove Role Tutor from this Contact?", remove);
        if (endToday != none) {
            Book(m_anna, 1);
            m->dialogs.Expect(removeRole, bookedAsk, endToday);
        }
        m->dialogs.Expect(removeRole, "Remove Role Driver from this Contact?", Dialogs::Answer::Yes);
        Role_RemoveSelected(ContactRef(m_anna), roles);
        QCOMPARE(Lines(roles), left);
        QVERIFY(roles.SelectedRows().empty());
    }
}

/// What is no date as well, and an end without padding.
void TestRoles::StoresWhatItShows()
{
    Give(m_tutor, 20051332);
    ADO_Contact_AddContactRole(ContactRef(m_anna + 1), RoleTypeRef(m_tutor), 1, 20260301, 20260302);
    ListModel roles;
    ADO_Contact_GetRoles(ContactRef(m_anna), roles);
    roles.Add({u'?' % SqlNumber(m_driver), "Driver", {"1,000.10", "9/3/2026", "10/12/2026"}});
    QVERIFY(Role_Store(ContactRef(m_anna), roles));
    QCOMPARE(Held(), QStringList({"Driver|1000.1|20260309|20261210", "Tutor|7.25|20260102|20051332"}));
    QCOMPARE(Rows("ContactRoles"), 3);
}

void TestRoles::BookingsAloneMakeARoleUsed()
{
    Give(m_driver);
    Book(m_anna, m_tutor);
    QVERIFY(ADO_Contact_GetRoleInUse(RoleTypeRef(m_tutor), ContactRef(m_anna)));
    QVERIFY(!ADO_Contact_GetRoleInUse(RoleTypeRef(m_tutor), ContactRef(m_anna + 1)));
    m->dialogs.Expect("Role Deletion", "Unable to delete Role 'Tutor' already in use!");
    QVERIFY(!RoleType_MayDelete(RoleTypeRef(m_tutor), "Tutor"));
    QVERIFY(RoleType_MayDelete(RoleTypeRef(m_driver), "Driver"));
    StatementLog log;
    QVERIFY(ADO_Contact_DeleteRole(RoleTypeRef(m_driver)));
    QCOMPARE(log.Statements().size(), 2);
    QVERIFY(log.Statements().first().startsWith("DELETE FROM ContactRoles"));
    QCOMPARE(Rows("ContactRoles") + Rows("RoleTypes"), 2);
}

void TestRoles::OneRowFillsTheFields()
{
    for (const int role : {m_driver, m_cook})
        Give(role);
    const auto form = Editing();
    ListModel &roles = List(*form, "RolesInfo");
    roles.SelectOnly(roles.Find(u'?' % QString::number(m_driver)));
    QCOMPARE(Chosen(*form, "RoleList"), u"Driver"_qs);
    QCOMPARE(Find<QLineEdit>(*form, "Rate")->text(), u"7.25"_qs);
    QCOMPARE(Find<DateField>(*form, "StartDate")->Day(), QDate(2026, 1, 2));
    QCOMPARE(Find<DateField>(*form, "EndDate")->Day(), QDate(2026, 3, 4));
    // It can be changed and added again.
    TypeInto(*form, "Rate", "1500");
    for (const auto &[answer, rate] :
         {std::pair(Dialogs::Answer::No, "7.25"), {Dialogs::Answer::Yes, "1,500.00"}}) {
        m->dialogs.Expect("Update Role", "Contact already on this role, Do you want to update?", answer);
        Press(*form, "AddRoleBtn");
        QCOMPARE(Lines(roles).filter("Driver"),
                 QStringList(QString("Driver|" % QString(rate) % "|02/01/2026|04/03/2026")));
    }
    // The same role chosen again starts again.
    auto *types = Find<QComboBox>(*form, "RoleList");
    types->showPopup();
    QTest::keyClick(types->view(), Qt::Key_Return);
    QCOMPARE(Find<QLineEdit>(*form, "Rate")->text(), u"12.50"_qs);
    QCOMPARE(Find<DateField>(*form, "EndDate")->Day(), QDate(2026, 3, 9));
    // A role out of use shows, and is offered no more.
    roles.SelectOnly(roles.Find(u'?' % QString::number(m_cook)));
    QCOMPARE(Chosen(*form, "RoleList"), QString());
    QVERIFY(!Find<QPushButton>(*form, "AddRoleBtn")->isEnabled());
    // Two rows at once say nothing about one role.
    Choose(*form, "RoleList", "Tutor");
    roles.SelectAll();
    QCOMPARE(Chosen(*form, "RoleList"), u"Tutor"_qs);

    // A new person has none of them.
    m->dialogs.Expect("Warning", askToSave, Dialogs::Answer::No);
    Press(*form, "NewBtn");
    TypeName(*form, "Carl", "Moor");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("ContactRoles"), 2);
    QVERIFY(roles.IsEmpty());
}

/// A save writes roles and attributes again: a record where they could not be read must not be saved.
void TestRoles::UnreadableListsLockTheRecord()
{
    Give(m_driver);
    for (const QString &table : {u"ContactRoles"_qs, u"AppliedAttributes"_qs}) {
        m->dialogs.Expect(FailureTitle(), engineFailure);
        Sql(u"ALTER TABLE " % table % u" RENAME TO Away");
        frmAddContact form;
        form.OpenRecords({Key(m_anna)});
        QVERIFY(!IsShown(form, "EditBtn"));
        QVERIFY(!Find<QPushButton>(form, "OKBtn")->isEnabled());
        Sql(u"ALTER TABLE Away RENAME TO " % table);
        Press(form, "MainRefBtn");
        QCOMPARE(List(form, "RolesInfo").Count(), 1);
        QVERIFY(IsShown(form, "EditBtn"));
    }
}

void TestRoles::RightOfTheRate()
{
    CheckRights([this] { return Editing(); },
                {{36, 0, "Rate", Left::Locked}, {36, 9, "Rate", Left::Editable}});
    const auto changing = [this] {
        auto type = std::make_unique<frmAddEditRoleTypes>();
        type->EditItem(m_tutor);
        return type;
    };
    CheckRights(changing, {{36, 0, "Rate", Left::Locked},
                           {36, 0, "RoleName", Left::Editable},
                           {36, 9, "Rate", Left::Editable}});
    CheckRights([] { return std::make_unique<frmAddEditRoleTypes>(); },
                {{36, 0, "Rate", Left::Locked}, {36, 9, "Rate", Left::Editable}});
    frmAddContact looking;
    looking.OpenRecords({Key(m_anna)});
    for (const char *field : {"RoleList", "AddRoleBtn"})
        QVERIFY2(!Find<QWidget>(looking, field)->isEnabled(), field);
    for (const char *field : {"StartDate", "EndDate", "Rate"})
        QVERIFY2(IsReadOnly(looking, field), field);
}

void TestRoles::RoleDialog()
{
    frmAddEditRoleTypes adding;
    adding.show();
    QCOMPARE(Chosen(adding, "ActiveList"), u"Yes"_qs);
    m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Role Name\n");
    Press(adding, "AddBtn");
    for (const auto &[typed, shown] : {std::pair("free", "0.00"), {"", "0.00"}, {"7.255", "7.26"}}) {
        TypeInto(adding, "Rate", typed);
        Find<MoneyField>(adding, "Rate")->Leave();
        QCOMPARE(Find<QLineEdit>(adding, "Rate")->text(), QString(shown));
    }
    TypeInto(adding, "RoleName", "Tutor");
    m->dialogs.Expect("Add Role", exists);
    Press(adding, "AddBtn");
    TypeInto(adding, "RefName", "E");
    Press(adding, "AddBtn");
    QVERIFY(!adding.isVisible() && gDialogResult > m_cook);
    QCOMPARE(ADO_Contact_GetRoleChargeRate(RoleTypeRef(gDialogResult)), 7.26);

    frmAddEditRoleTypes changing;
    changing.EditItem(m_cook);
    changing.show();
    QCOMPARE(Chosen(changing, "ActiveList"), u"No"_qs);
    Choose(changing, "ActiveList", "Yes");
    Press(changing, "AddBtn");
    QCOMPARE(gDialogResult, m_cook);
    QCOMPARE(Rows("RoleTypes WHERE Name = 'Cook' AND Status = 1"), 1);
}

/// On the screen of the person, in the dialog, and before it opens.
void TestRoles::DeletedMeanwhile()
{
    Give(m_driver);
    Give(m_tutor);
    const auto form = Editing();
    frmAddEditRoleTypes dialog;
    dialog.EditItem(m_tutor);
    dialog.show();
    ADO_Contact_DeleteRole(RoleTypeRef(m_tutor));
    Find<DateField>(*form, "EndDate")->SetDay(QDate(2027, 1, 31));
    m->dialogs.Expect("Roles", "Another user has deleted these meanwhile, and they are left out:\n    Tutor");
    Press(*form, "OKBtn");
    QCOMPARE(Lines(List(*form, "RolesInfo")).size(), 1);
    QCOMPARE(Rows("ContactRoles"), 1);
    m->dialogs.Expect("Update Role",
                      "Another user has deleted this role meanwhile. Nothing was stored for it.");
    Press(dialog, "AddBtn");
    QVERIFY(dialog.isVisible());
    dialog.EditItem(m_tutor);
    QVERIFY(!Find<QPushButton>(dialog, "AddBtn")->isEnabled());
    QVERIFY(IsShown(dialog, "Warn"));
}

QTEST_MAIN(TestRoles)
#include "test_roles.moc"
