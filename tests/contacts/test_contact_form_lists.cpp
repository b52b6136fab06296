#include "contacts/ConcessionODBC.h"
#include "contacts/ContactForm.h"
#include "contacts/frmAddContact.h"
#include "contacts/frmContactMainAddEdit.h"

#include <QTest>

namespace
{
/// Types into a drop-down list and leaves it with Enter.
void TypeInList(QWidget &form, const QString &list, const QString &text)
{
    auto *combo = Find<TypedCombo>(form, list);
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo, text);
    QTest::keyClick(combo, Qt::Key_Return);
}
} // namespace

class TestContactFormLists final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void TitleAndGender();
    void TypedTown_data();
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

void TestContactFormLists::TypedTown_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("towns");
    QTest::newRow("new") << u"Leeds"_qs << u"Leeds"_qs << 2;
    QTest::newRow("known in another case") << u"yORK"_qs << u"York"_qs << 1;
    QTest::newRow("with a reference") << u"[LS] Leeds"_qs << u"Leeds"_qs << 2;
    QTest::newRow("apostrophe") << u"King's Lynn"_qs << u"King's Lynn"_qs << 2;
    QTest::newRow("the select row") << u" Select or Type New "_qs << u" Select or Type New "_qs << 1;
}

void TestContactFormLists::TypedTown()
{
    QFETCH(QString, typed);
    QFETCH(QString, chosen);
    QFETCH(int, towns);
    Contact_AddItem(ContactSection::Cities, "York", "");
    frmAddContact form;
    form.show();
    TypeInList(form, "CityList", typed);
    QCOMPARE(Chosen(form, "CityList"), chosen);
    QCOMPARE(Rows("City WHERE City_ID > 1"), towns);
    QCOMPARE(Rows("City WHERE City = 'Leeds' AND ReferenceID = 'LS'"), typed.startsWith("[") ? 1 : 0);
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

    TypeName(form, "Child", "Small");
    const int carer = people.CurrentData();
    Press(form, "OKBtn");
    form.reject();
    QCOMPARE(Stored(gDialogResult).contactContactRef, carer);

    // The row for a new person stands for nobody when it is saved.
    frmAddContact another;
    auto *anotherList = Find<TypedCombo>(another, "ContactList");
    anotherList->Model().SetCurrent(anotherList->Model().Count() - 1);
    TypeName(another, "Lone", "One");
    Press(another, "OKBtn");
    another.reject();
    QCOMPARE(Stored(gDialogResult).contactContactRef, 1);
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
    QCOMPARE(ADO_Contact_GetConcesionDiscount(gDialogResult), 7.26);
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
    QCOMPARE(ADO_Contact_GetConcessionPercent(student), 25.0);

    gUserRights[31] = u'3';
    frmContactMainAddEdit locked(ContactSection::Characteristics);
    locked.EditItem(student);
    QVERIFY(IsReadOnly(locked, "Percentage") && IsReadOnly(locked, "HardDiscount"));
    QVERIFY(!IsReadOnly(locked, "CatName"));
}

QTEST_MAIN(TestContactFormLists)
#include "test_contact_form_lists.moc"
