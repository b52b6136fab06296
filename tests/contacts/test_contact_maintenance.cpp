#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/maintenance/frmContactMain.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/frmAddContact.h"
#include "forms/fields/TypedCombo.h"
#include "support/RightsTable.h"
#include "support/TestTable.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using Dialogs::Answer;
using Section = ContactSection;

namespace
{
const QString confirm = "Confirm Deletion";

ListModel &Items(QWidget &form)
{
    return List(form, "MainList");
}

void Choose(QWidget &form, Section section)
{
    ListModel &sections = List(form, "SecList");
    sections.SelectOnly(sections.Find(Key(static_cast<int>(section))));
}

/// Adds one item of any kind, as its own code does.
int AddItem(Section section, const QString &name, const QString &reference = {})
{
    return section == Section::Characteristics ? Concession_Add(name, 0, 0, reference)
                                               : Contact_AddItem(section, name, reference);
}

QString Deletes(const QString &name)
{
    return u"Okay to delete item '" % name % u'\'';
}
} // namespace

class TestContactMaintenance : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void EverySection_data();
    void EverySection();
    void AddChangeDelete_data();
    void AddChangeDelete();
    void RoleInUse();
    void NewOrganisation();
    void Deleting();
    void DeletedElsewhere();
    void UnreadDiscountCannotBeStored();
    void TypedOrganisation_data();
    void TypedOrganisation();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestContactMaintenance::EverySection_data()
{
    QTest::addColumn<Section>("section");
    for (const ContactSectionInfo &section : ContactSections())
        QTest::newRow(qPrintable(section.caption)) << section.code;
}

/// Each shows its rows by name under its caption, never the one that stands for none, and goes by its right.
void TestContactMaintenance::EverySection()
{
    QFETCH(Section, section);
    AddItem(section, "Zulu");
    AddItem(section, "Alpha", "ref");
    const auto open = [section]() -> std::unique_ptr<QWidget> {
        auto form = std::make_unique<frmContactMain>();
        Choose(*form, section);
        const bool mayEdit = UserMay(ContactSectionOf(section).right, Level::Edit);
        if (Caption(*form, "EditBtn") != (mayEdit ? QString("&Edit") : QString("&View")))
            QTest::qFail("EditBtn has the wrong caption", __FILE__, __LINE__);
        return form;
    };
    {
        const std::unique_ptr<QWidget> form = open();
        const ListModel &items = Items(*form);
        QCOMPARE(items.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(Texts(items).indexOf("Alpha") >= 0);
        QVERIFY(Texts(items).indexOf("Alpha") < Texts(items).indexOf("Zulu"));
        QVERIFY(!Texts(items).contains(""));
    }
    const int right = static_cast<int>(ContactSectionOf(section).right);
    CheckRights(open, {{right, 1, "AddBtn", Left::Disabled},
                       {right, 1, "EditBtn", Left::Disabled},
                       {right, 2, "AddBtn", Left::Enabled},
                       {right, 2, "EditBtn", Left::Disabled},
                       {right, 3, "EditBtn", Left::Enabled},
                       {right, 3, "DelBtn", Left::Disabled},
                       {right, 9, "DelBtn", Left::Enabled}});
}

void TestContactMaintenance::AddChangeDelete_data()
{
    const TestTable<Section, QString, QString> row{"section", "dialog", "field"};
    for (const ContactSectionInfo &section : ContactSections().first(7))
        row(qPrintable(section.caption), section.code, "frmContactMainAddEdit", "CatName");
    row("Groups", Section::Groups, "frmGroupName", "GroupName");
    row("Roles", Section::Roles, "frmAddEditRoleTypes", "RoleName");
}

void TestContactMaintenance::AddChangeDelete()
{
    QFETCH(Section, section);
    QFETCH(QString, dialog);
    QFETCH(QString, field);
    const QString title = QString::fromLatin1(QTest::currentDataTag());
    if (section == Section::Groups)
        AddItem(Section::GroupTypes, "Family");
    frmContactMain form;
    Choose(form, section);
    Items(form).Add({u"?9000"_qs, u"Zz"_qs});
    const int before = Items(form).Count();
    m->driver.Expect(dialog, [&](QDialog &opened) {
        if (dialog == "frmContactMainAddEdit")
            QCOMPARE(opened.windowTitle(), title);
        if (section == Section::Groups)
            ::Choose(opened, "LinkList", "Family");
        TypeInto(opened, field, "O'Brien's");
        Press(opened, "AddBtn");
    });
    Press(form, "AddBtn");
    QCOMPARE(Items(form).Count(), before + 1);
    const int row = before - 1; // before the last by name
    QCOMPARE(Items(form).At(row).text, QStringLiteral("O'Brien's"));
    QVERIFY(Items(form).At(row).key.startsWith('!') && Items(form).IsSelected(row));

    m->driver.Expect(dialog, [&](QDialog &opened) {
        QCOMPARE(Find<QLineEdit>(opened, field)->text(), QStringLiteral("O'Brien's"));
        TypeInto(opened, field, "Changed");
        Press(opened, "AddBtn");
    });
    Press(form, "EditBtn");
    QCOMPARE(Items(form).At(row).text, QStringLiteral("Changed"));
    m->dialogs.Expect(confirm, Deletes("Changed"), Answer::Yes);
    Press(form, "DelBtn");
    Press(form, "RefBtn");
    QCOMPARE(Items(form).Count(), before - 1);
}

void TestContactMaintenance::RoleInUse()
{
    const int tutor = AddItem(Section::Roles, "Tutor");
    AddItem(Section::Roles, "Usher");
    Sql(u"INSERT INTO CourseStaff (CourseRef,ContactRef,RoleTypeRef) VALUES (1,2," % SqlNumber(tutor) % u")");
    frmContactMain form;
    Choose(form, Section::Roles);
    Items(form).SelectAll();
    m->dialogs.Expect(confirm, Deletes("Tutor"), Answer::Yes);
    m->dialogs.Expect("Role Deletion", "Unable to delete Role 'Tutor' already in use!");
    m->dialogs.Expect(confirm, Deletes("Usher"), Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Tutor"));
}

/// A new organisation opens once more after the dialog that added it.
void TestContactMaintenance::NewOrganisation()
{
    frmContactMain form;
    Choose(form, Section::Organisations);
    const auto save = [this](const QString &name, const QString &title) {
        m->driver.Expect("frmAddOrg", [=](QDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), title);
            TypeInto(dialog, "OrgName", name);
            Press(dialog, "OkBtn");
            Press(dialog, "ExitBtn");
        });
    };
    save("Acme", "New Record");
    save("Acme & Sons", "Editing Acme");
    Press(form, "AddBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Acme & Sons"));
    m->driver.Expect("frmAddOrg", [](QDialog &dialog) { Press(dialog, "ExitBtn"); });
    Press(form, "EditBtn");
    m->dialogs.Expect(confirm, Deletes("Acme & Sons"), Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Rows("Organisations"), 1);
}

/// A No keeps one row and goes on; a deletion that fails ends the walk.
void TestContactMaintenance::Deleting()
{
    for (const char *town : {"Acomb", "Bath", "Crewe"})
        AddItem(Section::Cities, town);
    frmContactMain form;
    Choose(form, Section::Cities);
    Items(form).SelectAll();
    m->dialogs.Expect(confirm, Deletes("Acomb"), Answer::No);
    m->dialogs.Expect(confirm, Deletes("Bath"), Answer::Yes);
    m->dialogs.Expect(confirm, Deletes("Crewe"), Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Acomb"));

    AddItem(Section::Cities, "Dover");
    Press(form, "RefBtn");
    Items(form).SelectAll();
    m->dialogs.Expect(confirm, Deletes("Acomb"), Answer::Yes);
    m->dialogs.Expect(FailureTitle(), engineFailure);
    Sql("ALTER TABLE Organisations RENAME TO OrganisationsAway");
    Press(form, "DelBtn");
    QCOMPARE(Items(form).Count(), 2);
    Sql("ALTER TABLE OrganisationsAway RENAME TO Organisations");
}

/// Before it is opened a row leaves the list; once it is open, nothing is written and the user is told.
void TestContactMaintenance::DeletedElsewhere()
{
    const int york = AddItem(Section::Cities, "York");
    const int bath = AddItem(Section::Cities, "Bath");
    frmContactMain form;
    Choose(form, Section::Cities);
    Items(form).SelectKeys({Key(york)});
    Contact_DeleteItem(Section::Cities, york);
    Press(form, "EditBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Bath"));

    Items(form).SelectAll();
    m->dialogs.Expect("Update Item",
                      "Another user has deleted this item meanwhile. Nothing was stored for it.");
    m->dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?", Answer::No);
    m->driver.Expect("frmContactMainAddEdit", [bath](QDialog &dialog) {
        Contact_DeleteItem(Section::Cities, bath);
        TypeInto(dialog, "CatName", "Bristol");
        Press(dialog, "AddBtn");
        Press(dialog, "CanBtn");
    });
    Press(form, "EditBtn");
    QVERIFY(Items(form).IsEmpty());
}

/// A discount that could not be read is not one of 0, which the next save would make of it.
void TestContactMaintenance::UnreadDiscountCannotBeStored()
{
    AddItem(Section::Characteristics, "Student");
    frmContactMain form;
    Choose(form, Section::Characteristics);
    TestDatabase::Run({"ALTER TABLE Concessions RENAME COLUMN HardDiscount TO Elsewhere"});
    m->dialogs.ExpectFailure();
    m->driver.Expect("frmContactMainAddEdit", [](QDialog &dialog) {
        QVERIFY(!Find<QPushButton>(dialog, "AddBtn")->isEnabled());
        QVERIFY(Find<QLabel>(dialog, "Warn")->isVisible());
        Press(dialog, "CanBtn");
    });
    Press(form, "EditBtn");
}

void TestContactMaintenance::TypedOrganisation_data()
{
    const TestTable<QString, QString, int> row{"typed", "chosen", "stored"};
    row("new", "Beta", "Beta", 2);
    row("known in another case", "aCME", "Acme", 1);
    row("with a reference", "[B2] Beta", "Beta", 2);
    row("known under another reference", "[A2] Acme", "Acme", 2);
    row("reference without a name", "[A2] ", " Select or Type New ", 1);
}

void TestContactMaintenance::TypedOrganisation()
{
    QFETCH(QString, typed);
    QFETCH(QString, chosen);
    QFETCH(int, stored);
    AddItem(Section::Organisations, "Acme");
    frmAddContact form;
    form.show();
    auto *list = Find<TypedCombo>(form, "OrganList");
    list->lineEdit()->selectAll();
    QTest::keyClicks(list, typed);
    QTest::keyClick(list, Qt::Key_Tab);
    QCOMPARE(list->currentText(), chosen);
    QCOMPARE(Rows("Organisations WHERE OrganRef > 1"), stored);
    QCOMPARE(Rows("Organisations WHERE Addr1 <> ''"), 0);
}

QTEST_MAIN(TestContactMaintenance)
#include "test_contact_maintenance.moc"
