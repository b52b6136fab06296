#include "contacts/ConcessionODBC.h"
#include "contacts/frmAddContact.h"
#include "core/Session.h"
#include "database/Security.h"
#include "database/System.h"
#include "forms/CaptionLabel.h"
#include "forms/ListView.h"
#include "forms/TypedCombo.h"
#include "organisations/Companies.h"
#include "organisations/OrganisationModule.h"
#include "organisations/frmAddOrg.h"
#include "organisations/frmAwardBoard.h"
#include "organisations/frmOrganisations.h"
#include "support/ModalDriver.h"
#include "support/RightsTable.h"
#include "support/ScriptedDialogs.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using Dialogs::Answer;

namespace
{
const QString changed = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");

ListModel &List(QWidget &form, const QString &name)
{
    return Find<ListView>(form, name)->Model();
}

QString Text(QWidget &form, const QString &field)
{
    return Find<QLineEdit>(form, field)->text();
}

QString Caption(QWidget &form, const QString &button)
{
    return Find<QPushButton>(form, button)->text();
}

bool IsShown(QWidget &form, const QString &name)
{
    return Find<QWidget>(form, name)->isVisibleTo(&form);
}

void ShowTab(QWidget &form, int tab)
{
    Find<QTabWidget>(form, QStringLiteral("SSActiveTabs1"))->setCurrentIndex(tab);
}
} // namespace

class TestOrganisationForms : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void AddEditAgain();
    void NameIsRequired();
    void CollisionKeepsTheData();
    void WalkingAndLeaving();
    void NewFromTheScreen();
    void DeletedElsewhere();
    void TownOfTheOneBefore();
    void PeoplePickedAndKept();
    void ViewingPeople();
    void PlacesAndCharacteristics();
    void RightsOnTheRecord();
    void RightsOnTheList();
    void TheList();
    void AwardBoards();
    void FromAPersonsRecord();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
    std::unique_ptr<ModalDriver> m_driver;
};

void TestOrganisationForms::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    m_driver = std::make_unique<ModalDriver>();
    gUserRights = RightsBlank();
    gShowIDs = 0;
    gDialogResult = 0;
    LoadSystemValues();
}

void TestOrganisationForms::cleanup()
{
    m_driver.reset();
    m_dialogs.reset();
    m_database.reset();
}

void TestOrganisationForms::AddEditAgain()
{
    const int york = Contact_AddItem(ContactSection::Cities, "York", "");
    int key = 0;
    {
        frmAddOrg form;
        QCOMPARE(form.windowTitle(), QStringLiteral("New Record"));
        QVERIFY(!IsShown(form, "NewBtn") && !IsShown(form, "NextBtn"));
        TypeInto(form, "OrgName", "O'Neil & Co");
        TypeInto(form, "Addr1", "1 Mill Lane");
        TypeInto(form, "CityList", "york");
        Find<TypedCombo>(form, "CityList")->Leave();
        Find<QCheckBox>(form, "AwardBoardChk")->setChecked(true);
        TypeInto(form, "Notes", "Closed in August.");
        Press(form, "OkBtn");
        QCOMPARE(form.windowTitle(), QStringLiteral("O'Neil & Co"));
        QCOMPARE(Caption(form, "OkBtn"), QStringLiteral("&Update Record"));
        QVERIFY(IsShown(form, "NewBtn"));
        Press(form, "EditBtn");
        QCOMPARE(form.windowTitle(), QStringLiteral("Editing O'Neil & Co"));
        TypeInto(form, "Telout", "01904");
        Press(form, "OkBtn");
        Press(form, "ExitBtn");
        key = gDialogResult;
    }
    QCOMPARE(Rows(u"Organisations WHERE OrganName = 'O''Neil & Co' AND TelOut = '01904' AND City = " %
                  SqlNumber(york) % u" AND Board = 1 AND OrganRef = " % SqlNumber(key)),
             1);
    frmAddOrg form;
    form.OpenRecords({Key(key)}, false);
    QCOMPARE(Find<QPlainTextEdit>(form, "Notes")->toPlainText(), QStringLiteral("Closed in August."));
    QCOMPARE(Find<TypedCombo>(form, "CityList")->currentText(), QStringLiteral("York"));
    QVERIFY(Find<QLineEdit>(form, "OrgName")->isReadOnly());
}

void TestOrganisationForms::NameIsRequired()
{
    frmAddOrg form;
    QVERIFY(Find<CaptionLabel>(form, "Label_0")->IsMissing());
    ShowTab(form, 1);
    m_dialogs->Expect("Form not complete", "The followings fields must be completed:\n    Name\n");
    Press(form, "OkBtn");
    QCOMPARE(Find<QTabWidget>(form, "SSActiveTabs1")->currentIndex(), 0);
    QCOMPARE(Rows("Organisations"), 1);
}

void TestOrganisationForms::CollisionKeepsTheData()
{
    Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int anna = Employee("Anna", "Bell", beta);
    frmAddOrg form;
    form.OpenRecords({Key(beta)}, true);
    TypeInto(form, "OrgName", "Acme");
    TypeInto(form, "Fax", "123");
    m_dialogs->Expect("Update Organisation", "Organisation already exists in database.");
    Press(form, "OkBtn");
    QCOMPARE(Text(form, "Fax"), QStringLiteral("123"));
    QCOMPARE(OrganisationOf(anna), beta);
    TypeInto(form, "RefName", "2nd");
    Press(form, "OkBtn");
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Acme' AND ReferenceID = '2nd' AND Fax = '123'"), 1);
}

void TestOrganisationForms::WalkingAndLeaving()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    frmAddOrg form;
    form.show();
    form.OpenRecords({Key(acme), Key(beta)}, false);
    QCOMPARE(form.windowTitle(), QStringLiteral("Acme (RECORD 1 OF 2)"));
    Press(form, "EditBtn");
    TypeInto(form, "Fax", "1");
    m_dialogs->Expect("Record Changed", "Okay to update record?", Answer::Yes);
    Press(form, "NextBtn");
    QCOMPARE(form.windowTitle(), QStringLiteral("Beta (RECORD 2 OF 2)"));
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Acme' AND Fax = '1'"), 1);
    Press(form, "EditBtn");
    TypeInto(form, "Fax", "2");
    m_dialogs->Expect("Warning", changed, Answer::Cancel);
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isVisible());
    m_dialogs->Expect("Warning", changed, Answer::No);
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
    QCOMPARE(gDialogResult, beta);
    QCOMPARE(Rows("Organisations WHERE Fax = '2'"), 0);
}

void TestOrganisationForms::NewFromTheScreen()
{
    const int acme = Organisation_Add(Company("Acme"));
    Employee("Anna", "Bell", acme);
    frmAddOrg form;
    form.OpenRecords({Key(acme)}, false);
    m_dialogs->Expect("New Record", "Clear forms?", Answer::No);
    Press(form, "NewBtn");
    QCOMPARE(Text(form, "OrgName"), QStringLiteral("Acme"));
    m_dialogs->Expect("New Record", "Clear forms?", Answer::Yes);
    Press(form, "NewBtn");
    QCOMPARE(form.windowTitle(), QStringLiteral("New Record"));
    QCOMPARE(Text(form, "OrgName"), QString());
    QCOMPARE(Caption(form, "OkBtn"), QStringLiteral("&Add Record"));
    QVERIFY(!IsShown(form, "PrevBtn") && List(form, "ContactInfo").IsEmpty());
}

void TestOrganisationForms::DeletedElsewhere()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int anna = Employee("Anna", "Bell", acme);
    frmAddOrg form;
    form.OpenRecords({Key(acme), Key(beta)}, true);
    TypeInto(form, "Fax", "1");
    Organisation_Delete(acme);
    Press(form, "OkBtn");
    QCOMPARE(Text(form, "OrgName"), QStringLiteral("#Organisation Deleted#"));
    QVERIFY(!Find<QTabWidget>(form, "SSActiveTabs1")->isEnabled() && !IsShown(form, "EditBtn"));
    QVERIFY(!Find<QPushButton>(form, "OkBtn")->isEnabled());
    QCOMPARE(OrganisationOf(anna), 1);
    Press(form, "NextBtn");
    QCOMPARE(Text(form, "OrgName"), QStringLiteral("Beta"));
    QVERIFY(Find<QTabWidget>(form, "SSActiveTabs1")->isEnabled());
}

void TestOrganisationForms::TownOfTheOneBefore()
{
    OrganisationRecord inYork = Company("Acme");
    inYork.city = Contact_AddItem(ContactSection::Cities, "York", "");
    const int acme = Organisation_Add(inYork);
    const int typed = Contact_AddItem(ContactSection::Organisations, "Typed", "");
    frmAddOrg form;
    form.OpenRecords({Key(acme), Key(typed)}, false);
    Press(form, "NextBtn");
    Press(form, "EditBtn");
    Press(form, "OkBtn");
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Typed' AND City = 1 AND County = 1 AND Country = 1"), 1);
}

void TestOrganisationForms::PeoplePickedAndKept()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int anna = Employee("Anna", "Bell", acme);
    const int ben = Employee("Ben", "Carter", beta);
    frmAddOrg form;
    form.OpenRecords({Key(acme)}, true);
    ShowTab(form, 2);
    m_driver->Expect("frmSelectContacts", [&](QDialog &picker) {
        QVERIFY(List(picker, "SelectedList").Contains(Key(anna)));
        Press(picker, "ExitBtn");
    });
    Press(form, "AddContactBtn");
    m_driver->Expect("frmSelectContacts", [&](QDialog &picker) {
        ListModel &people = List(picker, "ContactList");
        people.SelectOnly(people.Find(Key(ben)));
        Press(picker, "AddCBtn");
        Press(picker, "ExitBtn");
    });
    Press(form, "AddContactBtn");
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList({"Bell, Anna", "Carter, Ben"}));
    QCOMPARE(OrganisationOf(ben), beta); // until the save
    m_dialogs->Expect(
        "Change Contact Organisation",
        "Contact 'Carter, Ben' is already in Organisation 'Beta'\nWould you like to remove from "
        "'Beta' and add to this Organisation?",
        Answer::Yes);
    Press(form, "OkBtn");
    QCOMPARE(OrganisationOf(ben), acme);

    // A position is stored at once, and is no change of the record.
    Press(form, "EditBtn");
    List(form, "ContactInfo").SelectOnly(List(form, "ContactInfo").Find(Key(ben)));
    TypeInto(form, "JobTitle", "Head");
    m_dialogs->Expect("Update Job Title(s)", "Okay to update Contact(s) to Job Title 'Head'?", Answer::Yes);
    Press(form, "UpdateJTitleBtn");
    QCOMPARE(Rows("Contacts WHERE JobTitle = 'Head'"), 1);
    Press(form, "ExitBtn");
}

void TestOrganisationForms::ViewingPeople()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    Employee("Ben", "Carter", acme);
    frmAddOrg form;
    form.OpenRecords({Key(acme)}, false);
    ShowTab(form, 2);
    m_driver->Expect("frmAddContact", [&](QDialog &record) {
        QCOMPARE(record.windowTitle(), QStringLiteral("Bell, Anna (RECORD 1 OF 2)"));
        Sql(u"UPDATE Contacts SET Cust_Surname = 'Ash' WHERE ContactRef = " % SqlNumber(anna));
        Press(record, "ExitBtn");
    });
    Press(form, "ViewBtn");
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList({"Ash, Anna", "Carter, Ben"}));
    QVERIFY(!Find<QPushButton>(form, "AddContactBtn")->isEnabled());
}

void TestOrganisationForms::PlacesAndCharacteristics()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int hall = Venue("Hall", 1);
    const int lathe = Facility("Lathe", 1);
    Concession_Add("Member", 0, 0, "");
    frmAddOrg form;
    form.OpenRecords({Key(acme)}, true);
    const struct {
        int tab;
        const char *list;
        const char *button;
    } moves[] = {{1, "AvailCriteria", "AddCBtn"}, {3, "AvailFac", "AddFBtn"}, {3, "AvailVenues", "AddVBtn"}};
    for (const auto &move : moves) {
        ShowTab(form, move.tab);
        List(form, move.list).SelectFirst();
        Press(form, move.button);
    }
    Press(form, "OkBtn");
    QCOMPARE(Rows(u"Venues WHERE VenueRef = " % SqlNumber(hall) % u" AND OrganRef = " % SqlNumber(acme)), 1);
    QCOMPARE(
        Rows(u"Facilities WHERE FacilityRef = " % SqlNumber(lathe) % u" AND OrganRef = " % SqlNumber(acme)),
        1);
    QCOMPARE(Rows(u"OrganChars WHERE OrganRef = " % SqlNumber(acme)), 1);

    Press(form, "EditBtn");
    Press(form, "ClearBtn");
    QVERIFY(List(form, "UsedVenues").IsEmpty() && List(form, "UsedCriteria").IsEmpty());
    QCOMPARE(Texts(List(form, "AvailFac")), QStringList("Lathe"));
    QCOMPARE(Text(form, "OrgName"), QString());
    m_dialogs->Expect("Warning", changed, Answer::No);
    Press(form, "ExitBtn");
}

void TestOrganisationForms::RightsOnTheRecord()
{
    const int acme = Organisation_Add(Company("Acme"));
    const auto open = [acme]() -> std::unique_ptr<QWidget> {
        auto form = std::make_unique<frmAddOrg>();
        form->OpenRecords({Key(acme)}, true);
        return form;
    };
    CheckRights(open, {{25, 1, "NewBtn", Left::Hidden},
                       {25, 1, "EditBtn", Left::Hidden},
                       {25, 1, "OrgName", Left::Locked},
                       {25, 1, "OkBtn", Left::Disabled},
                       {25, 2, "NewBtn", Left::Enabled},
                       {25, 2, "EditBtn", Left::Hidden},
                       {25, 3, "EditBtn", Left::Enabled},
                       {25, 3, "OrgName", Left::Editable}});
    gUserRights = RightsWith(27, 2);
    frmAddOrg form;
    QVERIFY(!Find<TypedCombo>(form, "CityList")->isEditable());
    QVERIFY(Find<TypedCombo>(form, "CountyList")->isEditable());
}

void TestOrganisationForms::RightsOnTheList()
{
    Organisation_Add(Company("Acme"));
    const auto open = []() -> std::unique_ptr<QWidget> { return std::make_unique<frmOrganisations>(); };
    CheckRights(open, {{25, 1, "AddBtn", Left::Disabled},
                       {25, 1, "EditBtn", Left::Enabled},
                       {25, 2, "AddBtn", Left::Enabled},
                       {25, 3, "DelBtn", Left::Disabled},
                       {25, 9, "DelBtn", Left::Enabled}});
    for (const auto &[level, caption] : {std::pair(2, "&View"), std::pair(3, "&Edit")}) {
        gUserRights = RightsWith(25, level);
        frmOrganisations form;
        QCOMPARE(Caption(form, "EditBtn"), QString(caption));
    }
}

void TestOrganisationForms::TheList()
{
    const int acme = Organisation_Add(Company("Acme"));
    Organisation_Add(Company("Beta"));
    const int anna = Employee("Anna", "Bell", acme);
    frmOrganisations form;
    QCOMPARE(Texts(List(form, "MainList")), QStringList({"Acme", "Beta"}));
    m_driver->Expect("frmAddOrg", [](QDialog &record) {
        TypeInto(record, "OrgName", "Gamma");
        Press(record, "OkBtn");
        Press(record, "ExitBtn");
    });
    Press(form, "AddBtn");
    QCOMPARE(Texts(List(form, "MainList")), QStringList({"Acme", "Beta", "Gamma"}));
    m_driver->Expect("frmAddOrg", [](QDialog &record) {
        QCOMPARE(record.windowTitle(), QStringLiteral("Editing Gamma"));
        TypeInto(record, "OrgName", "Delta");
        Press(record, "OkBtn");
        Press(record, "ExitBtn");
    });
    Press(form, "EditBtn");
    QCOMPARE(Texts(List(form, "MainList")), QStringList({"Acme", "Beta", "Delta"}));

    List(form, "MainList").SelectAll();
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Acme'", Answer::Yes);
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Beta'", Answer::No);
    m_dialogs->Expect("Confirm Deletion", "Okay to delete item 'Delta'", Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Texts(List(form, "MainList")), QStringList("Beta"));
    QVERIFY(List(form, "MainList").SelectedRows().empty());
    QCOMPARE(OrganisationOf(anna), 1);
}

void TestOrganisationForms::AwardBoards()
{
    Organisation_Add(Company("Acme"));
    OrganisationRecord board = Company("City Board");
    board.board = true;
    Organisation_Add(board);
    frmAwardBoard form;
    form.show();
    auto *list = Find<ListView>(form, "MainList");
    list->setFocus();
    list->Model().SelectOnly(0);
    QTest::keyClick(list, Qt::Key_Space);
    QVERIFY(list->Model().At(0).checked);
    m_dialogs->Expect("Warning", changed, Answer::Cancel);
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isVisible());
    Press(form, "UpdateBtn");
    QVERIFY(!form.isVisible());
    QCOMPARE(Rows("Organisations WHERE Board = 1"), 2);
}

void TestOrganisationForms::FromAPersonsRecord()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    QVERIFY(!Find<QPushButton>(form, "EditOrgBtn")->isEnabled());
    Press(form, "EditBtn");
    m_driver->Expect("frmAddOrg", [](QDialog &record) {
        TypeInto(record, "OrgName", "Beta");
        TypeInto(record, "Telday", "01904");
        Press(record, "OkBtn");
        Press(record, "ExitBtn");
    });
    Press(form, "EditOrgBtn");
    QCOMPARE(Find<TypedCombo>(form, "OrganList")->currentText(), QStringLiteral("Beta"));
    QCOMPARE(Text(form, "Org_Tel"), QStringLiteral("01904"));
    Press(form, "ExitBtn"); // nothing of the person has changed
    gUserRights[25] = u'2';
    frmAddContact locked;
    QVERIFY(!Find<QPushButton>(locked, "EditOrgBtn")->isEnabled());
}

QTEST_MAIN(TestOrganisationForms)
#include "test_organisation_forms.moc"
