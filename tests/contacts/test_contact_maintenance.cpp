#include "contacts/ContactModule.h"
#include "contacts/People.h"
#include "contacts/RoleODBC.h"
#include "contacts/frmAddContact.h"
#include "contacts/frmContactMain.h"
#include "core/Session.h"
#include "database/Security.h"
#include "database/System.h"
#include "forms/ListView.h"
#include "forms/TypedCombo.h"
#include "support/ModalDriver.h"
#include "support/RightsTable.h"
#include "support/ScriptedDialogs.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using Dialogs::Answer;

namespace
{
ListModel &Items(QWidget &form)
{
    return Find<ListView>(form, QStringLiteral("MainList"))->Model();
}

void Choose(QWidget &form, ContactSection section)
{
    ListModel &sections = Find<ListView>(form, QStringLiteral("SecList"))->Model();
    sections.SelectOnly(sections.Find(u'?' % QString::number(static_cast<int>(section))));
}

/// Adds one item of any kind, as its own code does.
int AddItem(ContactSection section, const QString &name, const QString &reference = {})
{
    return section == ContactSection::Characteristics ? Concession_Add(name, 0, 0, reference)
                                                      : Contact_AddItem(section, name, reference);
}
} // namespace

class TestContactMaintenance : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void EverySection_data();
    void EverySection();
    void AddChangeDelete_data();
    void AddChangeDelete();
    void GroupsAndRoles_data();
    void GroupsAndRoles();
    void RoleInUse();
    void TownInUse();
    void NewOrganisation();
    void Sentinel();
    void References();
    void Deleting();
    void Rights_data();
    void Rights();
    void TypedOrganisation_data();
    void TypedOrganisation();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
    std::unique_ptr<ModalDriver> m_driver;
};

void TestContactMaintenance::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    m_driver = std::make_unique<ModalDriver>();
    gUserRights = RightsBlank();
    gShowIDs = 0;
    gDialogResult = 0;
    LoadSystemValues();
}

void TestContactMaintenance::cleanup()
{
    gShowIDs = 0;
    m_driver.reset();
    m_dialogs.reset();
    m_database.reset();
}

void TestContactMaintenance::EverySection_data()
{
    QTest::addColumn<ContactSection>("section");
    for (const ContactSectionInfo &section : ContactSections())
        QTest::newRow(qPrintable(section.caption)) << section.code;
}

void TestContactMaintenance::EverySection()
{
    QFETCH(ContactSection, section);
    AddItem(section, "Zulu");
    AddItem(section, "Alpha", "ref");
    frmContactMain form;
    Choose(form, section);
    const ListModel &items = Items(form);
    QCOMPARE(items.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
             QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(Texts(items).indexOf("Alpha") >= 0);
    QVERIFY(Texts(items).indexOf("Alpha") < Texts(items).indexOf("Zulu"));
}

void TestContactMaintenance::AddChangeDelete_data()
{
    QTest::addColumn<ContactSection>("section");
    for (const ContactSectionInfo &section : ContactSections().first(7))
        QTest::newRow(qPrintable(section.caption)) << section.code;
}

void TestContactMaintenance::AddChangeDelete()
{
    QFETCH(ContactSection, section);
    const QString title = QString::fromLatin1(QTest::currentDataTag());
    frmContactMain form;
    Choose(form, section);
    const int before = Items(form).Count();
    m_driver->Expect("frmContactMainAddEdit", [&](QDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), title);
        TypeInto(dialog, "CatName", "O'Brien's");
        TypeInto(dialog, "RefName", "OB");
        Press(dialog, "AddBtn");
    });
    Press(form, "AddBtn");
    QCOMPARE(Items(form).Count(), before + 1);
    QCOMPARE(Items(form).At(before).text, QStringLiteral("O'Brien's"));
    QVERIFY(Items(form).At(before).key.startsWith('!') && Items(form).IsSelected(before));

    m_driver->Expect("frmContactMainAddEdit", [&](QDialog &dialog) {
        QCOMPARE(Find<QPushButton>(dialog, "AddBtn")->text(), QStringLiteral("&Update"));
        QCOMPARE(Find<QLineEdit>(dialog, "RefName")->text(), QStringLiteral("OB"));
        TypeInto(dialog, "CatName", "Changed");
        Press(dialog, "AddBtn");
    });
    Press(form, "EditBtn");
    QCOMPARE(Items(form).At(before).text, QStringLiteral("Changed"));
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Changed'", Answer::Yes);
    Press(form, "DelBtn");
    Press(form, "RefBtn");
    QCOMPARE(Items(form).Count(), before);
}

void TestContactMaintenance::GroupsAndRoles_data()
{
    QTest::addColumn<ContactSection>("section");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("field");
    QTest::newRow("groups") << ContactSection::Groups << "frmGroupName"
                            << "GroupName";
    QTest::newRow("roles") << ContactSection::Roles << "frmAddEditRoleTypes"
                           << "RoleName";
}

void TestContactMaintenance::GroupsAndRoles()
{
    QFETCH(ContactSection, section);
    QFETCH(QString, dialog);
    QFETCH(QString, field);
    AddItem(ContactSection::GroupTypes, "Family");
    frmContactMain form;
    Choose(form, section);
    m_driver->Expect(dialog, [&](QDialog &opened) {
        if (auto *types = opened.findChild<TypedCombo *>("LinkList"))
            types->setCurrentIndex(types->findText("Family"));
        TypeInto(opened, field, "First");
        Press(opened, "AddBtn");
    });
    Press(form, "AddBtn");
    QCOMPARE(Texts(Items(form)), QStringList("First"));
    m_driver->Expect(dialog, [&](QDialog &opened) {
        QCOMPARE(Find<QLineEdit>(opened, field)->text(), QStringLiteral("First"));
        TypeInto(opened, field, "Second");
        Press(opened, "AddBtn");
    });
    Press(form, "EditBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Second"));
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Second'", Answer::Yes);
    Press(form, "DelBtn");
    Press(form, "RefBtn");
    QVERIFY(Items(form).IsEmpty());
}

void TestContactMaintenance::RoleInUse()
{
    const int tutor = AddItem(ContactSection::Roles, "Tutor");
    AddItem(ContactSection::Roles, "Usher");
    Sql(u"INSERT INTO CourseStaff (CourseRef,ContactRef,RoleTypeRef) VALUES (1,2," % SqlNumber(tutor) % u")");
    frmContactMain form;
    Choose(form, ContactSection::Roles);
    Items(form).SelectAll();
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Tutor'", Answer::Yes);
    m_dialogs->Expect("Role Deletion", "Unable to delete Role 'Tutor' already in use!");
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Usher'", Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Tutor"));
}

void TestContactMaintenance::TownInUse()
{
    ContactRecord record = Person("Anna", "Bell");
    record.city = AddItem(ContactSection::Cities, "York");
    Contact_Add(record);
    Sql(u"INSERT INTO Organisations (OrganName,City) VALUES ('Acme'," % SqlNumber(record.city) % u")");
    frmContactMain form;
    Choose(form, ContactSection::Cities);
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'York'", Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Rows("Contacts WHERE Cust_Surname = 'Bell' AND Cust_City = 1"), 1);
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Acme' AND City = 1"), 1);
}

/// A new organisation opens once more behind the dialog that added it.
void TestContactMaintenance::NewOrganisation()
{
    frmContactMain form;
    Choose(form, ContactSection::Organisations);
    m_driver->Expect("frmAddOrg", [](QDialog &dialog) {
        TypeInto(dialog, "OrgName", "Acme");
        Press(dialog, "OkBtn");
        Press(dialog, "ExitBtn");
    });
    m_driver->Expect("frmAddOrg", [](QDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Editing Acme"));
        TypeInto(dialog, "OrgName", "Acme & Sons");
        Press(dialog, "OkBtn");
        Press(dialog, "ExitBtn");
    });
    Press(form, "AddBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Acme & Sons"));
    m_driver->Expect("frmAddOrg", [](QDialog &dialog) { Press(dialog, "ExitBtn"); });
    Press(form, "EditBtn");
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Acme & Sons'", Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Rows("Organisations"), 1);
}

void TestContactMaintenance::Sentinel()
{
    frmContactMain form;
    for (const ContactSectionInfo &section : ContactSections().first(5)) {
        Choose(form, section.code);
        QVERIFY2(!Items(form).Contains("?1"), qPrintable(section.caption));
    }
}

void TestContactMaintenance::References()
{
    gShowIDs = 1;
    AddItem(ContactSection::Cities, "York");
    frmContactMain form;
    Choose(form, ContactSection::Cities);
    m_driver->Expect("frmContactMainAddEdit", [](QDialog &dialog) {
        TypeInto(dialog, "CatName", "York");
        TypeInto(dialog, "RefName", "US");
        Press(dialog, "AddBtn");
    });
    Press(form, "AddBtn");
    QCOMPARE(Texts(Items(form)), QStringList({"York", "[US] York"}));
}

void TestContactMaintenance::Deleting()
{
    for (const char *town : {"Acomb", "Bath", "Crewe"})
        AddItem(ContactSection::Cities, town);
    frmContactMain form;
    Choose(form, ContactSection::Cities);
    Items(form).SelectAll();
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Acomb'", Answer::No);
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Bath'", Answer::Yes);
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Crewe'", Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Acomb"));

    // Where another workstation deleted one, changing it only shows that.
    const int york = AddItem(ContactSection::Cities, "York");
    Press(form, "RefBtn");
    Items(form).SelectOnly(Items(form).Find(u'?' % SqlNumber(york)));
    Contact_DeleteItem(ContactSection::Cities, york);
    Press(form, "EditBtn");
    QCOMPARE(Texts(Items(form)), QStringList("Acomb"));

    // A deletion that fails ends the walk.
    AddItem(ContactSection::Cities, "Dover");
    Press(form, "RefBtn");
    Items(form).SelectAll();
    Sql("ALTER TABLE Organisations RENAME TO OrganisationsAway");
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Acomb'", Answer::Yes);
    m_dialogs->Expect("Veltrane Connection",
                      "A number of errors have been detected, please seek technical support.");
    Press(form, "DelBtn");
    QCOMPARE(Items(form).Count(), 2);
    Sql("ALTER TABLE OrganisationsAway RENAME TO Organisations");
}

void TestContactMaintenance::Rights_data()
{
    QTest::addColumn<ContactSection>("section");
    for (const ContactSectionInfo &section : ContactSections())
        QTest::newRow(qPrintable(section.caption)) << section.code;
}

void TestContactMaintenance::Rights()
{
    QFETCH(ContactSection, section);
    AddItem(section, "Item");
    const int right = ContactSectionOf(section).right;
    const auto open = [section]() -> std::unique_ptr<QWidget> {
        auto form = std::make_unique<frmContactMain>();
        Choose(*form, section);
        const bool mayEdit = UserRight(ContactSectionOf(section).right) >= 3;
        if (Find<QPushButton>(*form, "EditBtn")->text() != (mayEdit ? QString("&Edit") : QString("&View")))
            QTest::qFail("EditBtn has the wrong caption", __FILE__, __LINE__);
        return form;
    };
    CheckRights(open, {{right, 1, "AddBtn", Left::Disabled},
                       {right, 1, "EditBtn", Left::Disabled},
                       {right, 2, "AddBtn", Left::Enabled},
                       {right, 2, "EditBtn", Left::Disabled},
                       {right, 3, "EditBtn", Left::Enabled},
                       {right, 3, "DelBtn", Left::Disabled},
                       {right, 9, "DelBtn", Left::Enabled}});
}

void TestContactMaintenance::TypedOrganisation_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("stored");
    QTest::newRow("new") << "Beta"
                         << "Beta" << 2;
    QTest::newRow("known in another case") << "aCME"
                                           << "Acme" << 1;
    QTest::newRow("with a reference") << "[B2] Beta"
                                      << "Beta" << 2;
    QTest::newRow("known under another reference") << "[A2] Acme"
                                                   << "Acme" << 2;
    QTest::newRow("reference without a name") << "[A2] "
                                              << " Select or Type New " << 1;
}

void TestContactMaintenance::TypedOrganisation()
{
    QFETCH(QString, typed);
    QFETCH(QString, chosen);
    QFETCH(int, stored);
    AddItem(ContactSection::Organisations, "Acme");
    frmAddContact form;
    form.show();
    auto *list = Find<TypedCombo>(form, "OrganList");
    list->lineEdit()->selectAll();
    QTest::keyClicks(list, typed);
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(list->currentText(), chosen);
    QCOMPARE(Rows("Organisations WHERE OrganRef > 1"), stored);
    QCOMPARE(Rows("Organisations WHERE Addr1 <> ''"), 0);
    m_dialogs->Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?", Answer::No);
    if (chosen == SelectOrTypeNewText())
        Find<QLineEdit>(form, "Forname")->setText("x");
    QTest::keyClick(&form, Qt::Key_Escape);
}

QTEST_MAIN(TestContactMaintenance)
#include "test_contact_maintenance.moc"
