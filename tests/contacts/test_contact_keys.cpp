#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/manager/frmContact.h"
#include "contacts/manager/frmSelectContacts.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/frmAddContact.h"
#include "support/Keyboard.h"

// One whole task on each of the screens of people, without a mouse.

class TestContactKeys final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void AddsAPerson();
    void ManagesPeople();
    void PicksPeople();

private:
    std::unique_ptr<ContactFixture> m;
};

/// A new person in a new town, then a characteristic and a note.
void TestContactKeys::AddsAPerson()
{
    Concession_Add("Student", 20, 0, "");
    frmAddContact form;
    const Keyboard keys(form);
    keys.TypeAt("Forname", "Ada");
    keys.TypeAt("Surname", "Lovelace");
    keys.TypeAt("CityList", "Leeds");
    keys.Press(Qt::Key_Return);
    QCOMPARE(Rows("Contacts INNER JOIN City ON Contacts.Cust_City = City.City_ID WHERE City.City = 'Leeds'"),
             1);

    keys.Alt(Qt::Key_E);
    keys.TypeAt("Forname", " B");
    keys.Press(Qt::Key_Tab, Qt::ControlModifier);
    keys.TypeAt("Notes", "no nuts");
    keys.TabTo("AvailCriteria");
    keys.Press(Qt::Key_Home);
    keys.Press(Qt::Key_Return);
    keys.Alt(Qt::Key_U);
    QCOMPARE(Rows("ContactConcession"), 1);
    QCOMPARE(Rows("Contacts WHERE Cust_Forename LIKE '%B' AND Cust_Notes = 'no nuts'"), 1);
    keys.Press(Qt::Key_Escape);
    QVERIFY(!form.isVisible());
    QVERIFY(gDialogResult > 1);
}

/// Find, select, look at the record, give a characteristic, delete.
void TestContactKeys::ManagesPeople()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int ben = Contact_Add(Person("Ben", "Carter"));
    frmContact form;
    const Keyboard keys(form);
    keys.TypeAt("SearchBox", "ca");
    keys.TabTo("AddCBtn");
    keys.Press(Qt::Key_Space);
    QCOMPARE(Keys(List(form, "ContactInfo")), QStringList(Key(ben)));
    keys.Alt(Qt::Key_V);
    Keyboard(*form.findChild<frmAddContact *>()).Press(Qt::Key_Escape);
    // What Tab leaves enables the button that it goes to.
    keys.TypeAt("CharList", "Member");
    keys.Press(Qt::Key_Tab);
    QCOMPARE(form.focusWidget()->objectName(), "AddToConBtn");
    keys.Press(Qt::Key_Space);
    QCOMPARE(Rows(u"ContactConcession WHERE ContactRef = " % SqlNumber(ben)), 1);

    keys.TabTo("ContactList2");
    keys.Press(Qt::Key_Home);
    m->dialogs.Expect("Confirm Deletion", "Okay to delete record 'Bell, Anna'", Dialogs::Answer::Yes);
    keys.TabTo("DelCBtn");
    keys.Press(Qt::Key_Space);
    QVERIFY(!Contact_Check(ContactRef(anna)) && Contact_Check(ContactRef(ben)));
    keys.Alt(Qt::Key_X);
    QVERIFY(!form.isVisible());
}

/// Type a name, Enter takes the person; Delete takes one out again.
void TestContactKeys::PicksPeople()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    Contact_Add(Person("Ben", "Carter"));
    ListModel target;
    frmSelectContacts form;
    form.Configure(frmSelectContacts::Mode::AddToList, target);
    const Keyboard keys(form);
    for (const char *name : {"bell", "carter"}) {
        keys.TypeAt("SearchBox", name);
        keys.Press(Qt::Key_Return);
    }
    keys.TabTo("SelectedList");
    keys.Press(Qt::Key_End);
    keys.Press(Qt::Key_Delete);
    keys.Alt(Qt::Key_X);
    QVERIFY(!form.isVisible());
    QCOMPARE(Keys(target), QStringList(Key(anna)));
}

QTEST_MAIN(TestContactKeys)
#include "test_contact_keys.moc"
