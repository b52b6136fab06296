#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/frmContactMainAddEdit.h"
#include "contacts/record/frmAddContact.h"

#include <QTest>

class TestContactFormLists final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void TitleAndGender();
    void TypedTown();
    void EmergencyContact();
    void Characteristics();
    void OrganisationCharacteristics();
    void CharacteristicDialog();
    void ChangedPercentage();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestContactFormLists::TitleAndGender()
{
    const std::pair<const char *, const char *> titles[] = {
        {"Mr", "Male"}, {"Miss", "Female"}, {"Mrs", "Female"}, {"Ms", "Female"}, {"Dr", "Not Specified"}};
    for (const auto &[title, gender] : titles) {
        ContactRecord record = Person("Anna", title);
        record.designation = Contact_AddItem(ContactSection::Titles, title, "");
        const int anna = Contact_Add(record);
        frmAddContact form;
        Choose(form, "DesList", title);
        QCOMPARE(Chosen(form, "SexList"), QString(gender));
        // Showing a record changes nothing of it.
        form.OpenRecords({Key(anna)});
        QCOMPARE(Chosen(form, "DesList"), QString(title));
        QCOMPARE(Chosen(form, "SexList"), u"Not Specified"_qs);
    }
}

void TestContactFormLists::TypedTown()
{
    Contact_AddItem(ContactSection::Cities, "York", "");
    frmAddContact form;
    form.show();
    auto *combo = Find<TypedCombo>(form, "CityList");
    int towns = 1;
    for (const auto &[typed, chosen, added] :
         {std::tuple("yORK", "York", 0), {"[LS] Leeds", "Leeds", 1}, {"King's Lynn", "King's Lynn", 1}}) {
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo, typed);
        QTest::keyClick(combo, Qt::Key_Tab);
        QCOMPARE(Chosen(form, "CityList"), QString(chosen));
        QCOMPARE(Rows("City WHERE City_ID > 1"), towns += added);
    }
    QCOMPARE(Rows("City WHERE City = 'Leeds' AND ReferenceID = 'LS'"), 1);
}

void TestContactFormLists::EmergencyContact()
{
    Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.show();
    auto *list = Find<TypedCombo>(form, "ContactList");
    ComboModel &people = list->Model();
    QCOMPARE(people.At(people.Count() - 1).text, u" [ Press ENTER to add a new Contact ] "_qs);
    people.SetCurrent(people.Count() - 1);
    m->driver.Expect("frmAddContact", [](QDialog &inner) {
        TypeName(inner, "Carer", "Good");
        Press(inner, "OKBtn");
        Press(inner, "ExitBtn");
    });
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(people.CurrentText(), u"Good, Carer"_qs);
    QCOMPARE(people.At(people.Count() - 1).text, u" [ New Contact ] "_qs);

    // The row for a new person stands for nobody when it is saved.
    const int carer = people.CurrentData();
    for (const auto &[row, stored] : {std::pair(people.Current(), carer), {people.Count() - 1, 1}}) {
        people.SetCurrent(row);
        TypeName(form, "Child", "Small");
        Press(form, "OKBtn");
        QCOMPARE(Rows(u"Contacts WHERE Cust_Forename = 'Child' AND ContactContactRef = " %
                      QString::number(stored)),
                 1);
        Press(form, "EditBtn");
    }
}

void TestContactFormLists::Characteristics()
{
    const int student = Concession_Add("Student", 20, 0, "");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentIndex(1);
    Press(form, "EditBtn");
    Press(form, "AddCBtn");
    m->driver.Expect("frmContactMainAddEdit", [](QDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), u"Characteristics"_qs);
        TypeInto(dialog, "CatName", "Member");
        TypeInto(dialog, "Percentage", "12.5");
        Press(dialog, "AddBtn");
    });
    Press(form, "NewCBtn");
    QCOMPARE(Texts(Find<ListView>(form, "UsedCriteria")->Model()), QStringList({"Student", "Member"}));
    TypeInto(form, "Notes", "no nuts");
    Press(form, "OKBtn");
    const QString held = u"ContactConcession WHERE ContactRef = " % QString::number(anna);
    QCOMPARE(Rows(held), 2);
    QCOMPARE(Stored(anna).notes, u"no nuts"_qs);

    Press(form, "EditBtn");
    Find<ListView>(form, "UsedCriteria")->Model().SelectOnly(0);
    Press(form, "RemCBtn");
    Press(form, "OKBtn");
    QCOMPARE(Rows(held % u" AND ConcessionRef <> " % QString::number(student)), 1);
    QCOMPARE(Rows(held), 1);
}

void TestContactFormLists::OrganisationCharacteristics()
{
    const int member = Concession_Add("Member", 10, 0, "");
    const int acme = Contact_AddItem(ContactSection::Organisations, "Acme", "");
    Sql(u"INSERT INTO OrganChars (OrganRef,ConcessionRef) VALUES (" % QString::number(acme) % u',' %
        QString::number(member) % u')');
    frmAddContact form;
    TypeName(form, "Anna", "Bell");
    Choose(form, "OrganList", "Acme");
    const QString question = "Would you like to apply the Organisation Characteristics to this Contact?";
    m->dialogs.Expect("Organisation Characteristics", question, Dialogs::Answer::No);
    Press(form, "OKBtn");
    QCOMPARE(Rows("ContactConcession"), 0);
    // It is asked again as long as one is missing, and no more once it is there.
    Press(form, "EditBtn");
    m->dialogs.Expect("Organisation Characteristics", question, Dialogs::Answer::Yes);
    Press(form, "OKBtn");
    QCOMPARE(Texts(Find<ListView>(form, "UsedCriteria")->Model()), QStringList("Member"));
    QVERIFY(IsReadOnly(form, "Surname"));
    Press(form, "EditBtn");
    Press(form, "OKBtn");
    QCOMPARE(Rows("ContactConcession"), 1);
}

void TestContactFormLists::CharacteristicDialog()
{
    const int student = Concession_Add("Student", 20, 0, "S");
    frmContactMainAddEdit form(ContactSection::Characteristics);
    form.show();
    m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Description\n");
    Press(form, "AddBtn");
    for (const auto &[typed, shown] : {std::pair("100.5", "0.00"), {"100", "100.00"}, {"", "0.00"}}) {
        TypeInto(form, "Percentage", typed);
        Find<MoneyField>(form, "Percentage")->Leave();
        QCOMPARE(Find<QLineEdit>(form, "Percentage")->text(), QString(shown));
    }
    TypeInto(form, "CatName", "Student");
    TypeInto(form, "RefName", "S");
    m->dialogs.Expect("Add Concession", "Concession already exists in database.");
    Press(form, "AddBtn");
    QVERIFY(form.isVisible());
    TypeInto(form, "RefName", "T");
    TypeInto(form, "HardDiscount", "7.255");
    Press(form, "AddBtn");
    QVERIFY(!form.isVisible());
    QVERIFY(gDialogResult > student);
    QCOMPARE(form.Item().name, u"Student"_qs);
    QCOMPARE(*ADO_Contact_GetConcesionDiscount(ConcessionRef(gDialogResult)), 7.26);
}

void TestContactFormLists::ChangedPercentage()
{
    const int student = Concession_Add("Student", 20, 0, "");
    Sql("INSERT INTO Courses (Title, Fee) VALUES ('Welding', 200)");
    Sql("INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee,Discount,ConcessionType) VALUES "
        "(1,7,200,20,'Student')");
    {
        frmContactMainAddEdit form(ContactSection::Characteristics);
        form.EditItem(student);
        QCOMPARE(Find<QLineEdit>(form, "Percentage")->text(), u"20.00"_qs);
        Press(form, "AddBtn"); // nothing changed, so nothing is asked
    }
    frmContactMainAddEdit form(ContactSection::Characteristics);
    form.EditItem(student);
    TypeInto(form, "Percentage", "25");
    m->dialogs.Expect("Concession Update",
                      "1 Course(s) have Students on this concession.\nWould you like to update them to the "
                      "new conecession value?",
                      Dialogs::Answer::No);
    Press(form, "AddBtn");
    QCOMPARE(*ADO_Contact_GetConcessionPercent(ConcessionRef(student)), 25.0);

    gUserRights[31] = u'3';
    frmContactMainAddEdit locked(ContactSection::Characteristics);
    locked.EditItem(student);
    QVERIFY(IsReadOnly(locked, "Percentage") && IsReadOnly(locked, "HardDiscount"));
    QVERIFY(!IsReadOnly(locked, "CatName"));
}

QTEST_MAIN(TestContactFormLists)
#include "test_contact_form_lists.moc"
