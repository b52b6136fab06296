#include "contacts/ContactForm.h"
#include "contacts/RoleModule.h"
#include "contacts/frmAddContact.h"
#include "contacts/frmAddEditRoleTypes.h"
#include "platform/Clock.h"

#include <QTest>

class TestContactRoles final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void GivesChangesTakes();
    void OneRowFillsTheFields();
    void RolesThatCannotBeRead();
    void NewPersonHasNone();
    void RightOfTheRate_data();
    void RightOfTheRate();
    void RoleDialog();
    void RoleDialogOnARoleThatIsGone();

private:
    std::unique_ptr<frmAddContact> Editing() const;
    QStringList Held() const;

    std::unique_ptr<ContactFixture> m;
    int m_anna = 0;
    int m_driver = 0;
    int m_tutor = 0;
    int m_cook = 0;
};

void TestContactRoles::init()
{
    m = std::make_unique<ContactFixture>();
    Clock::StopAt(QDateTime(QDate(2026, 3, 9), QTime(12, 0)));
    m_anna = Contact_Add(Person("Anna", "Bell"));
    m_driver = RoleType_Add({"Driver", "", 12.5, RoleStatus::Active, ""});
    m_tutor = RoleType_Add({"Tutor", "", 1500, RoleStatus::Active, ""});
    m_cook = RoleType_Add({"Cook", "", 9, RoleStatus::NotActive, ""});
}

void TestContactRoles::cleanup()
{
    Clock::StopAt({});
    m.reset();
}

/// Anna's record, free to be changed, with the roles in front.
std::unique_ptr<frmAddContact> TestContactRoles::Editing() const
{
    auto form = std::make_unique<frmAddContact>();
    form->OpenRecords({Key(m_anna)});
    Press(*form, "EditBtn");
    auto *tabs = Find<QTabWidget>(*form, "SSActiveTabs1");
    tabs->setCurrentWidget(Find<QWidget>(*form, "Roles"));
    form->show();
    return form;
}

QStringList TestContactRoles::Held() const
{
    return TestDatabase::Rows(
        u"SELECT RoleTypes.Name, ContactRoles.ChargeRate, StartDate, EndDate FROM ContactRoles "
        u"INNER JOIN RoleTypes ON ContactRoles.RoleTypeRef = RoleTypes.RoleTypeRef WHERE "
        u"ContactRef = " %
        QString::number(m_anna) % u" ORDER BY RoleTypes.Name");
}

void TestContactRoles::GivesChangesTakes()
{
    {
        const auto form = Editing();
        Choose(*form, "RoleList", "Tutor");
        QCOMPARE(Find<QLineEdit>(*form, "Rate")->text(), u"1,500.00"_qs);
        Find<QDateEdit>(*form, "EndDate")->setDate(QDate(2027, 1, 31));
        Press(*form, "AddRoleBtn");
        Choose(*form, "RoleList", "Driver");
        // Another role starts today again.
        QCOMPARE(Find<QDateEdit>(*form, "EndDate")->date(), QDate(2026, 3, 9));
        TypeInto(*form, "Rate", "13");
        Press(*form, "AddRoleBtn");
        QCOMPARE(Held(), QStringList());
        Press(*form, "OKBtn");
        QCOMPARE(Held(), QStringList({"Driver|13|20260309|20260309", "Tutor|1500|20260309|20270131"}));
    }
    const auto form = Editing();
    ListModel &roles = List(*form, "RolesInfo");
    QCOMPARE(roles.At(0).subItems, QStringList({"13.00", "09/03/2026", "09/03/2026"}));
    Sql(u"INSERT INTO CourseStaff (CourseRef, ContactRef, RoleTypeRef) VALUES (1," % QString::number(m_anna) %
        u',' % QString::number(m_tutor) % u')');
    roles.SelectAll();
    m->dialogs.Expect("Remove Role", "Remove Role Driver from this Contact?", Dialogs::Answer::Yes);
    m->dialogs.Expect("Remove Role", "Remove Role Tutor from this Contact?", Dialogs::Answer::Yes);
    m->dialogs.Expect(
        "Remove Role",
        "Contact has been appointed todo this Role!\nWould you like to sent the End Role Date to today?",
        Dialogs::Answer::Yes);
    Press(*form, "DeleteRoleBtn");
    QCOMPARE(roles.At(0).subItems.last(), u"9/3/2026"_qs);
    m->dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?",
                      Dialogs::Answer::Yes);
    Press(*form, "ExitBtn");
    QCOMPARE(Held(), QStringList("Tutor|1500|20260309|20260309"));
}

void TestContactRoles::OneRowFillsTheFields()
{
    for (const int role : {m_driver, m_cook})
        ADO_Contact_AddContactRole(m_anna, role, 7.25, 20260102, 20260304);
    const auto form = Editing();
    ListModel &roles = List(*form, "RolesInfo");
    roles.SelectOnly(roles.Find(u'?' % QString::number(m_driver)));
    QCOMPARE(Chosen(*form, "RoleList"), u"Driver"_qs);
    QCOMPARE(Find<QLineEdit>(*form, "Rate")->text(), u"7.25"_qs);
    QCOMPARE(Find<QDateEdit>(*form, "StartDate")->date(), QDate(2026, 1, 2));
    QCOMPARE(Find<QDateEdit>(*form, "EndDate")->date(), QDate(2026, 3, 4));
    TypeInto(*form, "Rate", "8");
    m->dialogs.Expect("Update Role", "Contact already on this role, Do you want to update?",
                      Dialogs::Answer::Yes);
    Press(*form, "AddRoleBtn");
    QCOMPARE(roles.At(roles.Find(u'?' % QString::number(m_driver))).subItems.first(), u"8.00"_qs);
    // A role out of use shows, and is offered no more.
    roles.SelectOnly(roles.Find(u'?' % QString::number(m_cook)));
    QCOMPARE(Chosen(*form, "RoleList"), QString());
    QVERIFY(!Find<QPushButton>(*form, "AddRoleBtn")->isEnabled());
    // Two rows at once say nothing about one role.
    Choose(*form, "RoleList", "Tutor");
    roles.SelectAll();
    QCOMPARE(Chosen(*form, "RoleList"), u"Tutor"_qs);
}

/// A save writes all roles anew: a record whose roles could not be read must not be saved.
void TestContactRoles::RolesThatCannotBeRead()
{
    ADO_Contact_AddContactRole(m_anna, m_driver, 7.25, 20260102, 20260304);
    Sql("ALTER TABLE ContactRoles RENAME TO Away");
    gConnection.OpenRecordset("SELECT * FROM ContactRoles");
    m->dialogs.Expect(gConnection.Errors().first().source,
                      "A number of errors have been detected, please seek technical support.");
    frmAddContact form;
    form.OpenRecords({Key(m_anna)});
    QVERIFY(!IsShown(form, "EditBtn"));
    QVERIFY(!Find<QPushButton>(form, "OKBtn")->isEnabled());
    Sql("ALTER TABLE Away RENAME TO ContactRoles");
    Press(form, "MainRefBtn");
    QCOMPARE(List(form, "RolesInfo").Count(), 1);
    QVERIFY(IsShown(form, "EditBtn"));
}

void TestContactRoles::NewPersonHasNone()
{
    ADO_Contact_AddContactRole(m_anna, m_driver, 7.25, 20260102, 20260304);
    const auto form = Editing();
    Press(*form, "NewBtn");
    TypeName(*form, "Carl", "Moor");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("ContactRoles"), 1);
    QVERIFY(List(*form, "RolesInfo").IsEmpty());
}

void TestContactRoles::RightOfTheRate_data()
{
    QTest::addColumn<int>("level");
    QTest::newRow("without") << 0;
    QTest::newRow("with") << 9;
}

void TestContactRoles::RightOfTheRate()
{
    QFETCH(int, level);
    gUserRights[36] = QChar(u'0' + level);
    QCOMPARE(IsReadOnly(*Editing(), "Rate"), level < 9);
    frmAddEditRoleTypes type;
    QVERIFY(!IsReadOnly(type, "Rate"));
    type.EditItem(m_tutor);
    QCOMPARE(IsReadOnly(type, "Rate"), level < 9);
    QVERIFY(!IsReadOnly(type, "RoleName"));
    frmAddContact looking;
    looking.OpenRecords({Key(m_anna)});
    for (const char *field : {"RoleList", "StartDate", "EndDate", "AddRoleBtn"})
        QVERIFY2(!Find<QWidget>(looking, field)->isEnabled(), field);
    QVERIFY(IsReadOnly(looking, "Rate"));
}

void TestContactRoles::RoleDialog()
{
    {
        frmAddEditRoleTypes form;
        form.show();
        QCOMPARE(Find<QLineEdit>(form, "Rate")->text(), u"0.00"_qs);
        QCOMPARE(Chosen(form, "ActiveList"), u"Yes"_qs);
        m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Role Name\n");
        Press(form, "AddBtn");
        for (const auto &[typed, shown] : {std::pair("free", "0.00"), {"", "0.00"}, {"7.255", "7.26"}}) {
            TypeInto(form, "Rate", typed);
            Find<MoneyField>(form, "Rate")->Leave();
            QCOMPARE(Find<QLineEdit>(form, "Rate")->text(), QString(shown));
        }
        TypeInto(form, "RoleName", "Tutor");
        m->dialogs.Expect("Add Role", "Role already exists in database.");
        Press(form, "AddBtn");
        QVERIFY(form.isVisible());
        TypeInto(form, "RefName", "E");
        Press(form, "AddBtn");
        QVERIFY(gDialogResult > m_cook);
        QCOMPARE(ADO_Contact_GetRoleChargeRate(gDialogResult), 7.26);
    }
    frmAddEditRoleTypes form;
    form.EditItem(m_cook);
    form.show();
    QCOMPARE(Caption(form, "AddBtn"), u"&Update"_qs);
    QCOMPARE(Chosen(form, "ActiveList"), u"No"_qs);
    Choose(form, "ActiveList", "Yes");
    TypeInto(form, "Description", "for the canteen");
    Press(form, "AddBtn");
    QCOMPARE(gDialogResult, m_cook);
    QCOMPARE(Rows("RoleTypes WHERE Name = 'Cook' AND Status = 1 AND Description = 'for the canteen'"), 1);
}

void TestContactRoles::RoleDialogOnARoleThatIsGone()
{
    frmAddEditRoleTypes form;
    form.EditItem(4711);
    form.show();
    QVERIFY(!Find<QPushButton>(form, "AddBtn")->isEnabled());
    QVERIFY(IsShown(form, "Warn"));
    Press(form, "CanBtn");
    QVERIFY(!form.isVisible());
}

QTEST_MAIN(TestContactRoles)
#include "test_contact_roles.moc"
