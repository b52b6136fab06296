#include "attributes/Attributes.h"
#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/roles/RoleODBC.h"
#include "courses/record/CourseModule.h"
#include "courses/record/frmAddCourse.h"
#include "forms/fields/FieldChanges.h"
#include "forms/frames/frmConflict.h"
#include "organisations/Companies.h"
#include "organisations/record/frmAddOrg.h"
#include "support/TestTable.h"

#include <QTest>
#include <QTreeView>

// A record that another workstation stored while it stood on a screen here.

namespace
{
/// What another workstation does to a person.
void Elsewhere(int contactRef, const std::function<void(ContactRecord &)> &change)
{
    ContactRecord record = Stored(contactRef);
    change(record);
    QCOMPARE(ADO_Contact_UpdateContact(ContactRef(contactRef), record), contactRef);
}

QStringList Held(int contactRef)
{
    return TestDatabase::Rows(
        u"SELECT Name FROM Concessions INNER JOIN ContactConcession ON Concessions.ConcessionRef = "
        u"ContactConcession.ConcessionRef WHERE ContactRef = " %
        SqlNumber(contactRef) % u" ORDER BY Name");
}

QStringList RolesOf(int contactRef)
{
    return TestDatabase::Rows(u"SELECT RoleTypeRef, ChargeRate FROM ContactRoles WHERE ContactRef = " %
                              SqlNumber(contactRef) % u" ORDER BY RoleTypeRef");
}

/// The next role cannot be written, until the user was told so.
void FailOnce()
{
    gConnection.ObserveStatements([failed = false](const QString &sql) mutable {
        if (failed || !sql.startsWith("INSERT INTO ContactRoles"))
            return;
        failed = true;
        Sql("ALTER TABLE ContactRoles RENAME TO Gone");
    });
    Dialogs::Installed().msgBox = [box = Dialogs::Installed().msgBox](const auto &text, const auto &title,
                                                                      auto buttons, auto icon, auto answer) {
        Sql("ALTER TABLE Gone RENAME TO ContactRoles");
        return box(text, title, buttons, icon, answer);
    };
}
} // namespace

class TestChangedElsewhere final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void DifferentFields();
    void TheSameField_data();
    void TheSameField();
    void ListsOfAPerson();
    void FailedHalfWay();
    void Organisation();
    void Course();
    void TheBoxByKeys();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestChangedElsewhere::DifferentFields()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int york = Contact_AddItem(ContactSection::Cities, "York", "");
    const auto form = EditingOn("Details", {Key(anna)});
    Elsewhere(anna, [york](ContactRecord &record) {
        record.telDay = "01904 1";
        record.city = york;
    });
    TypeInto(*form, "Fax", "01904 2");
    Press(*form, "OKBtn");
    QCOMPARE(TextIn(*form, "Telday"), u"01904 1"_qs);
    QCOMPARE(Chosen(*form, "CityList"), u"York"_qs);

    // The next save sets out from what was stored, not from what was read first.
    Press(*form, "EditBtn");
    Elsewhere(anna, [](ContactRecord &record) { record.email = "a@b.example"; });
    TypeInto(*form, "Telday", "01904 3");
    Press(*form, "OKBtn");
    const ContactRecord stored = Stored(anna);
    QCOMPARE(QStringList({stored.telDay, stored.fax, stored.email}),
             QStringList({"01904 3", "01904 2", "a@b.example"}));
    QCOMPARE(stored.city, york);
}

void TestChangedElsewhere::TheSameField_data()
{
    const TestTable<bool, QStringList, QString, QString> row{"keeps", "theirs", "fax", "town"};
    row("mine", true, {}, "mine", "Leeds");
    row("theirs", true, {"Fax", "Town/City"}, "theirs", "York");
    row("one of each", true, {"Town/City"}, "mine", "York");
    row("back to the record", false, {}, "theirs", "York");
}

void TestChangedElsewhere::TheSameField()
{
    QFETCH(bool, keeps);
    QFETCH(QStringList, theirs);
    QFETCH(QString, fax);
    QFETCH(QString, town);
    const int york = Contact_AddItem(ContactSection::Cities, "York", "");
    Contact_AddItem(ContactSection::Cities, "Leeds", "");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const auto form = EditingOn("Details", {Key(anna)});
    Elsewhere(anna, [york](ContactRecord &record) {
        record.fax = "theirs";
        record.city = york;
    });
    TypeInto(*form, "Fax", "mine");
    Choose(*form, "CityList", "Leeds");
    m->dialogs.ExpectChanges("contact", {"Fax: mine / theirs", "Town/City: Leeds / York"},
                             keeps ? std::optional(theirs) : std::nullopt);
    Press(*form, "OKBtn");
    QCOMPARE(Stored(anna).fax, fax);
    QCOMPARE(Stored(anna).city == york, town == "York");
    QCOMPARE(TextIn(*form, "Fax"), keeps ? fax : u"mine"_qs);
    QCOMPARE(Chosen(*form, "CityList"), keeps ? town : u"Leeds"_qs);
    QCOMPARE(Caption(*form, "EditBtn"), keeps ? u"&Edit"_qs : u"&View"_qs);
}

void TestChangedElsewhere::ListsOfAPerson()
{
    const int first = Concession_Add("First", 0, 0, "");
    const int second = Concession_Add("Second", 0, 0, "");
    const int third = Concession_Add("Third", 0, 0, "");
    const int tutor = ADO_Contact_AddRoleType({"Tutor", "", 0, RoleStatus::Active, ""});
    const SiteAttributes attributes;
    const int anna = Contact_Add(Person("Anna", "Bell"));
    ADO_Contact_AddContactConcession(ContactRef(anna), ConcessionRef(first));
    ADO_Contact_AddContactRole(ContactRef(anna), RoleTypeRef(tutor), 10, 20260101, 20260201);
    const auto form = EditingOn("NotesAndCharacteristics", {Key(anna)});

    Sql(u"DELETE FROM ContactConcession WHERE ContactRef = " % SqlNumber(anna));
    ADO_Contact_AddContactConcession(ContactRef(anna), ConcessionRef(second));
    Sql(u"UPDATE ContactRoles SET ChargeRate = 12 WHERE ContactRef = " % SqlNumber(anna));
    Give(anna, {"Red", "Halal"});

    List(*form, "AvailCriteria").MoveKeys({Key(third)}, List(*form, "UsedCriteria"));
    TreeModel &ticks = Find<TreeView>(*form, "AttribList")->Model();
    ticks.SetTick(NodeOf(ticks, "Vegan"), TreeTick::On);
    Press(*form, "OKBtn");
    QCOMPARE(Held(anna), QStringList({"Second", "Third"}));
    QCOMPARE(RolesOf(anna), QStringList(SqlNumber(tutor) % "|12"));
    QCOMPARE(SeenOf(anna),
             QStringList({"one of Colour", "o Blue", "x Red", "any of Diet", "x Halal", "x Vegan"}));
    QCOMPARE(Texts(List(*form, "UsedCriteria")).size(), 2);

    // Where both chose a value of which there is one alone, or gave a role another rate, the user settles it.
    Press(*form, "EditBtn");
    Give(anna, {"Halal", "Vegan"});
    Sql(u"UPDATE ContactRoles SET ChargeRate = 14 WHERE ContactRef = " % SqlNumber(anna));
    CustomAttrib_Toggle(ticks, NodeOf(ticks, "Blue"));
    List(*form, "RolesInfo").SetSubItem(0, 0, "13.00");
    m->dialogs.ExpectChanges("contact",
                             {"Attribute Colour: Blue / no",
                              "Role Tutor: 13.00, 01/01/2026, 01/02/2026 / 14.00, 01/01/2026, 01/02/2026"},
                             QStringList("Role Tutor"));
    Press(*form, "OKBtn");
    QCOMPARE(RolesOf(anna), QStringList(SqlNumber(tutor) % "|14"));
    QVERIFY(SeenOf(anna).contains("x Blue"));
}

/// What a failed save left is no other workstation's change: the next one stores what is shown.
void TestChangedElsewhere::FailedHalfWay()
{
    const int tutor = ADO_Contact_AddRoleType({"Tutor", "", 0, RoleStatus::Active, ""});
    const int anna = Contact_Add(Person("Anna", "Bell"));
    ADO_Contact_AddContactRole(ContactRef(anna), RoleTypeRef(tutor), 10, 20260101, 20260201);
    const auto form = EditingOn("Details", {Key(anna)});
    TypeInto(*form, "Fax", "01904");
    m->dialogs.ExpectFailure();
    FailOnce();
    Press(*form, "OKBtn");
    gConnection.ObserveStatements({});
    QCOMPARE(RolesOf(anna), QStringList());
    Press(*form, "OKBtn");
    QCOMPARE(Stored(anna).fax, u"01904"_qs);
    QCOMPARE(RolesOf(anna), QStringList(SqlNumber(tutor) % "|10"));
}

void TestChangedElsewhere::Organisation()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int mine = Employee("Anna", "Bell", 1);
    const int theirs = Employee("Bert", "Carter", 1);
    const int leaver = Employee("Carl", "Dean", acme);
    frmAddOrg form;
    form.OpenRecords({Key(acme)});
    Press(form, "EditBtn");
    Sql(u"UPDATE Contacts SET OrganRef = " % SqlNumber(acme) % u" WHERE ContactRef = " % SqlNumber(theirs));
    Sql(u"UPDATE Contacts SET OrganRef = 1 WHERE ContactRef = " % SqlNumber(leaver));
    Sql(u"UPDATE Organisations SET Fax = 'theirs', Email = 'a@b.example' WHERE OrganRef = " %
        SqlNumber(acme));
    List(form, "ContactInfo").Add({Key(mine), "Bell, Anna"});
    TypeInto(form, "Fax", "mine");
    m->dialogs.ExpectChanges("organisation",
                             {"Fax: mine / theirs", "Contact Bell, Anna: yes / no",
                              "Contact Carter, Bert: no / yes", "Contact Dean, Carl: yes / no",
                              "E-mail:  / a@b.example"},
                             QStringList({"Contact Carter, Bert", "Contact Dean, Carl", "E-mail"}));
    Press(form, "OkBtn");
    QCOMPARE(TestDatabase::Rows(u"SELECT Fax, Email FROM Organisations WHERE OrganRef = " % SqlNumber(acme)),
             QStringList("mine|a@b.example"));
    QCOMPARE(QList<int>({OrganisationOf(mine), OrganisationOf(theirs), OrganisationOf(leaver)}),
             QList<int>({acme, acme, 1}));
}

void TestChangedElsewhere::Course()
{
    TestDatabase::Run({"INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('Arts',0,'')",
                       "INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('Crafts',0,'')"});
    CourseRecord record;
    record.title = "Pottery";
    record.fee = 33.333;
    const int pottery = Course_Add(record);
    frmAddCourse form;
    QVERIFY(form.EditCourse(CourseRef(pottery)));
    TestDatabase::Run(
        {u"UPDATE Courses SET Description = 'Clay', Limit = 9 WHERE CourseRef = " % SqlNumber(pottery)});
    ADO_Course_AddCourseRelations(CourseRef(pottery), FolderRef(1));
    TypeInto(form, "Title", "Ceramics");
    TreeModel &folders = Find<TreeView>(form, "CatList")->Model();
    folders.SetTick(folders.Find("!2"), TreeTick::On);
    Press(form, "AddBtn");
    QCOMPARE(TestDatabase::Rows("SELECT Title, Description, Limit FROM Courses"),
             QStringList("Ceramics|Clay|9"));
    QCOMPARE(TestDatabase::Rows("SELECT CourseHierarchyRef FROM CoursesRelationships WHERE "
                                "CourseHierarchyRef > 0 ORDER BY CourseHierarchyRef"),
             QStringList({"1", "2"}));
    QCOMPARE(TextIn(form, "Limit"), u"9"_qs);
}

void TestChangedElsewhere::TheBoxByKeys()
{
    frmConflict form("contact", {{"Fax", "mine", "theirs", true, true},
                                 {"Notes", "short", "line\nline", true, true},
                                 {"E-mail", "", "a@b.example", false, true, true}});
    form.show();
    auto *list = Find<QTreeView>(form, "ChangeList");
    const auto kept = [&] {
        QString sides;
        for (const Dialogs::FieldChange &change : static_cast<FieldChanges *>(list->model())->Changes())
            sides += change.takesTheirs ? 'T' : 'M';
        return sides;
    };
    QCOMPARE(kept(), u"MMT"_qs);
    QTest::keyClick(list, Qt::Key_Right);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Space);
    QCOMPARE(Find<QPlainTextEdit>(form, "TheirsText")->toPlainText(), u"line\nline"_qs);
    QCOMPARE(kept(), u"TTT"_qs);
    QTest::keyClick(list, Qt::Key_Left);
    QCOMPARE(kept(), u"TMT"_qs);
    Press(form, "AllMineBtn");
    QCOMPARE(kept(), u"MMM"_qs);
    Press(form, "AllTheirsBtn");
    QCOMPARE(kept(), u"TTT"_qs);
}

QTEST_MAIN(TestChangedElsewhere)
#include "test_changed_elsewhere.moc"
