#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/record/frmAddContact.h"
#include "organisations/Companies.h"
#include "organisations/lists/OrganisationODBC.h"
#include "organisations/record/AwardBoardODBC.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/frmAddOrg.h"
#include "organisations/record/frmAwardBoard.h"
#include "organisations/record/frmOrganisations.h"
#include "support/RightsTable.h"

#include <QTest>
#include <QThread>

using Dialogs::Answer;

namespace
{
const QString changed = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");

QString Text(QWidget &form, const QString &field)
{
    return Find<QLineEdit>(form, field)->text();
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
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void EveryFieldIsStored();
    void PeoplePickedAndKept();
    void SavingCanBeStopped();
    void PeopleDeletedElsewhere();
    void ViewingPeople();
    void PlacesAndCharacteristics();
    void RightsOnTheList();
    void TheList();
    void AwardBoards();
    void FromAPersonsRecord();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestOrganisationForms::EveryFieldIsStored()
{
    const int york = Contact_AddItem(ContactSection::Cities, "York", "");
    frmAddOrg form;
    TypeInto(form, "CityList", "york");
    Find<TypedCombo>(form, "CityList")->Leave();
    const QStringList fields{"OrgName",  "RefName", "Addr1",  "Addr2", "Addr3", "Addr4",
                             "Postcode", "Telday",  "Telout", "Fax",   "email", "URL"};
    for (const QString &field : fields)
        TypeInto(form, field, field);
    Find<QCheckBox>(form, "AwardBoardChk")->setChecked(true);
    TypeInto(form, "Notes", "Closed in August.");
    Press(form, "OkBtn");
    QCOMPARE(
        TestDatabase::Rows("SELECT OrganName, ReferenceID, Addr1, Addr2, Addr3, Addr4, Postcode, TelDay, "
                           "TelOut, Fax, Email, URL, Notes, City, County, Country, Board FROM Organisations "
                           "WHERE OrganRef > 1"),
        QStringList(fields.join('|') % u"|Closed in August.|" % SqlNumber(york) % u"|1|1|1"));
    QCOMPARE(Chosen(form, "CityList"), u"York"_qs);
    QVERIFY(Find<QCheckBox>(form, "AwardBoardChk")->isChecked());

    // One made of a name alone has nothing of the one that was shown before it.
    const int typed = Contact_AddItem(ContactSection::Organisations, "Typed", "");
    form.OpenRecords({Key(gDialogResult), Key(typed)});
    Press(form, "NextBtn");
    Press(form, "EditBtn");
    Press(form, "OkBtn");
    QCOMPARE(
        Rows("Organisations WHERE OrganName = 'Typed' AND City = 1 AND County = 1 AND Country = 1 AND Fax "
             "= '' AND Notes = '' AND Board = 0"),
        1);
}

/// A save that is stopped stores nothing, and asks for another before the form goes.
void TestOrganisationForms::SavingCanBeStopped()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    const int ben = Employee("Ben", "Carter", acme);
    frmAddOrg form;
    form.show();
    form.OpenRecords({Key(acme)}, RecordForm::Open::Edit);
    TypeInto(form, "Fax", "99");
    Dialogs::Installed().serveEvents = [] { QApplication::processEvents(); };
    const QString gives = u"UPDATE Contacts SET OrganRef = " % SqlNumber(acme);
    gConnection.ObserveStatements([&](const QString &sql) {
        if (sql.startsWith(gives))
            QThread::msleep(400);
    });
    m->driver.Expect("ProgressBox", [](QDialog &box) { Press(box, "CancelBtn"); });
    m->dialogs.Expect("Update Organisation", "Stopped. Nothing on this screen was stored.");
    Press(form, "OkBtn");
    gConnection.ObserveStatements({});
    QCOMPARE(OrganisationOf(anna), acme);
    QCOMPARE(OrganisationOf(ben), acme);
    QCOMPARE(Rows("Organisations WHERE Fax = '99'"), 0);
    m->dialogs.Expect("Warning", changed, Answer::Yes);
    Press(form, "ExitBtn");
    QCOMPARE(Rows("Organisations WHERE Fax = '99'"), 1);
}

/// Somebody whom another workstation deleted is given nothing, and shows no position that is not stored.
void TestOrganisationForms::PeopleDeletedElsewhere()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    ADO_Organisation_AddConcession(OrganRef(acme), ConcessionRef(Concession_Add("Member", 0, 0, "")));
    frmAddOrg form;
    form.OpenRecords({Key(acme)}, RecordForm::Open::Edit);
    ShowTab(form, 2);
    ADO_Contact_Delete(ContactRef(anna));
    m->dialogs.Expect("Update Organisation",
                      "Another user has deleted these meanwhile, and they are left out:\n    Bell, Anna");
    Press(form, "OkBtn");
    QCOMPARE(Rows("ContactConcession"), 0);
    QVERIFY(List(form, "ContactInfo").IsEmpty());

    const int ben = Employee("Ben", "Carter", acme);
    form.OpenRecords({Key(acme)}, RecordForm::Open::Edit);
    ADO_Contact_Delete(ContactRef(ben));
    List(form, "ContactInfo").SelectFirst();
    TypeInto(form, "JobTitle", "Head");
    m->dialogs.Expect("Update Job Title(s)", "Okay to update Contact(s) to Job Title 'Head'?", Answer::Yes);
    QTest::keyClick(form.findChild<QWidget *>("JobTitle"), Qt::Key_Return);
    QVERIFY(List(form, "ContactInfo").IsEmpty());
}

void TestOrganisationForms::PeoplePickedAndKept()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int beta = Organisation_Add(Company("Beta"));
    const int anna = Employee("Anna", "Bell", acme);
    const int ben = Employee("Ben", "Carter", beta);
    Sql(u"UPDATE Contacts SET JobTitle = 'Tutor' WHERE ContactRef = " % SqlNumber(ben));
    frmAddOrg form;
    form.OpenRecords({Key(acme)}, RecordForm::Open::Edit);
    ShowTab(form, 2);
    m->driver.Expect("frmSelectContacts", [&](QDialog &picker) {
        QVERIFY(List(picker, "SelectedList").Contains(Key(anna)));
        Press(picker, "ExitBtn");
    });
    Press(form, "AddContactBtn");
    m->driver.Expect("frmSelectContacts", [&](QDialog &picker) {
        ListModel &people = List(picker, "ContactList");
        people.SelectOnly(people.Find(Key(ben)));
        Press(picker, "AddCBtn");
        Press(picker, "ExitBtn");
    });
    Press(form, "AddContactBtn");
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList({"Bell, Anna", "Carter, Ben"}));
    QCOMPARE(List(form, "ContactInfo").At(1).subItems, QStringList("Tutor"));
    QCOMPARE(OrganisationOf(ben), beta); // until the save
    m->dialogs.Expect(
        "Change Contact Organisation",
        "Contact 'Carter, Ben' is already in Organisation 'Beta'\nWould you like to remove from "
        "'Beta' and add to this Organisation?",
        Answer::Yes);
    Press(form, "OkBtn");
    QCOMPARE(OrganisationOf(ben), acme);
}

void TestOrganisationForms::ViewingPeople()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    Employee("Ben", "Carter", acme);
    frmAddOrg form;
    form.OpenRecords({Key(acme)});
    ShowTab(form, 2);
    m->driver.Expect("frmAddContact", [&](QDialog &record) {
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
    form.OpenRecords({Key(acme)}, RecordForm::Open::Edit);
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
    m->dialogs.Expect("Warning", changed, Answer::No);
    Press(form, "ExitBtn");
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
    for (const auto &[button, title, name] :
         {std::tuple("AddBtn", "New Record", "Gamma"), {"EditBtn", "Editing Gamma", "Delta"}}) {
        m->driver.Expect("frmAddOrg", [title, name](QDialog &record) {
            QCOMPARE(record.windowTitle(), QString(title));
            TypeInto(record, "OrgName", name);
            Press(record, "OkBtn");
            Press(record, "ExitBtn");
        });
        Press(form, button);
        QCOMPARE(Texts(List(form, "MainList")), QStringList({"Acme", "Beta", name}));
    }

    List(form, "MainList").SelectAll();
    m->dialogs.Expect("Confirm Deletion", "Okay to delete item 'Acme'\n1 person", Answer::Yes);
    m->dialogs.Expect("Confirm Deletion", "Okay to delete item 'Beta'", Answer::No);
    m->dialogs.Expect("Confirm Deletion", "Okay to delete item 'Delta'", Answer::Yes);
    Press(form, "DelBtn");
    QCOMPARE(Texts(List(form, "MainList")), QStringList("Beta"));
    QVERIFY(List(form, "MainList").SelectedRows().empty());
    QCOMPARE(OrganisationOf(anna), 1);
}

void TestOrganisationForms::AwardBoards()
{
    Organisation_Add(Company("Acme", "A"));
    OrganisationRecord board = Company("City Board", "CB");
    board.board = true;
    const int city = Organisation_Add(board);
    ComboModel boards;
    ADO_Organisation_FillListAwardBoard(boards);
    QCOMPARE(boards.CurrentData(), city);
    gShowIDs = 1;
    frmAwardBoard form;
    form.show();
    auto *list = Find<ListView>(form, "MainList");
    QCOMPARE(Texts(list->Model()), QStringList({"[A] Acme", "[CB] City Board"}));
    QVERIFY(!list->Model().At(0).checked && list->Model().At(1).checked);
    QVERIFY(list->Model().SelectedRows().empty());
    list->setFocus();
    for (const int row : {0, 1}) {
        list->Model().SelectOnly(row);
        QTest::keyClick(list, Qt::Key_Space);
    }
    m->dialogs.Expect("Warning", changed, Answer::Cancel);
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isVisible());
    Press(form, "UpdateBtn");
    QVERIFY(!form.isVisible());
    ADO_Organisation_FillListAwardBoard(boards);
    QCOMPARE(boards.Count(), 1);
    QCOMPARE(boards.CurrentText(), u"[A] Acme"_qs);
}

void TestOrganisationForms::FromAPersonsRecord()
{
    const int acme = Organisation_Add(Company("Acme"));
    const int anna = Employee("Anna", "Bell", acme);
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    QVERIFY(!Find<QPushButton>(form, "EditOrgBtn")->isEnabled());
    Press(form, "EditBtn");
    m->driver.Expect("frmAddOrg", [](QDialog &record) {
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
    locked.OpenRecords({Key(anna)}, RecordForm::Open::Edit);
    QVERIFY(!Find<QPushButton>(locked, "EditOrgBtn")->isEnabled());
}

QTEST_MAIN(TestOrganisationForms)
#include "test_organisation_forms.moc"
