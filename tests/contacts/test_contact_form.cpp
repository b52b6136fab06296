#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/frmAddContact.h"
#include "forms/fields/DateField.h"
#include "organisations/record/OrganisationRecordODBC.h"
#include "platform/desktop/Clock.h"
#include "reports/OwnDesktop.h"
#include "support/Keyboard.h"

#include <QTest>

class TestContactForm final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void PersonBefore();
    void ChosenIsDeleted();
    void StrayMark();
    void AltReferences();
    void Addresses();
    void EveryFieldTakesAnyText();
    void CharacteristicsThatFail();
    void Hint();
    void HintIsQuiet();

private:
    std::unique_ptr<ContactFixture> m;
};

/// What the record before had must not show, nor be stored, where a person has nothing.
void TestContactForm::PersonBefore()
{
    ContactRecord first = Person("Anna", "Bell");
    first.notes = "Anna's notes";
    const int anna = Contact_Add(first);
    ContactRecord second = Person("Ben", "Carter");
    second.dob = 20051332;
    const int ben = Contact_Add(second);
    frmAddContact form;
    form.OpenRecords({Key(anna), Key(ben), "?4711"});
    // Another workstation adds a town that these lists do not have yet.
    const int leeds = Contact_AddItem(ContactSection::Cities, "Leeds", "");
    Sql(u"UPDATE Contacts SET Cust_City = " % SqlNumber(leeds) % u" WHERE ContactRef = " % SqlNumber(ben));
    Press(form, "NextBtn");
    QCOMPARE(Find<DateField>(form, "Dob")->Day(), Clock::Today());
    QCOMPARE(Chosen(form, "CityList"), u"Leeds"_qs);
    Press(form, "NextBtn");
    QCOMPARE(Find<QPlainTextEdit>(form, "Notes")->toPlainText(), QString());
    QCOMPARE(Chosen(form, "CityList"), u" Select or Type New "_qs);
}

/// A town and an organisation that another workstation deletes are stored for nobody, and the user is told.
void TestContactForm::ChosenIsDeleted()
{
    const int york = Contact_AddItem(ContactSection::Cities, "York", "");
    const int acme = Contact_AddItem(ContactSection::Organisations, "Acme", "");
    const int carer = Contact_Add(Person("Carer", "Good"));
    frmAddContact form;
    TypeName(form, "Anna", "Bell");
    for (const auto &[list, text] :
         {std::pair("CityList", "York"), {"OrganList", "Acme"}, {"ContactList", "Good, Carer"}})
        Choose(form, list, text);
    Contact_DeleteItem(ContactSection::Cities, york);
    ADO_Organisation_Delete(OrganRef(acme));
    ADO_Contact_Delete(ContactRef(carer));
    for (const char *gone : {"Good, Carer", "York", "Acme"})
        m->dialogs.Expect("Record Deleted",
                          u"Another user has deleted these meanwhile, and they are left out:\n    " %
                              QString(gone));
    Press(form, "OKBtn");
    QCOMPARE(Rows("Contacts WHERE Cust_Surname = 'Bell' AND Cust_City = 1 AND OrganRef = 1 AND "
                  "ContactContactRef = 1"),
             1);
    const ComboModel &people = Find<TypedCombo>(form, "ContactList")->Model();
    QCOMPARE(people.At(people.Count() - 1).data, 0);
}

/// Emptying the list of group types marks the forename, as it always did, until that is changed itself.
void TestContactForm::StrayMark()
{
    frmAddContact form;
    TypeName(form, "Anna", "Bell");
    const auto *label = Find<CaptionLabel>(form, "Label_1");
    emit Find<TypedCombo>(form, "LinkList")->lineEdit()->textEdited("");
    QVERIFY(label->IsMissing());
    TypeInto(form, "Forname", "Ann");
    QVERIFY(!label->IsMissing());
}

void TestContactForm::AltReferences()
{
    SetSystemValue(SystemRef::AltRefLabel + 1, "Union No");
    frmAddContact form;
    for (int i = 1; i <= 4; ++i)
        QCOMPARE(IsShown(form, u"RefID_" % QString::number(i)), i == 2);
    QCOMPARE(Find<QLabel>(form, "RefID_2_Label")->text(), u"Union No:"_qs);
}

void TestContactForm::Addresses()
{
    const QString directory = m->database.Directory();
    InstallDesktop(directory);
    const auto opened = [&directory] {
        QFile file(directory + "/opened");
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
    };
    frmAddContact form;
    Press(form, "EBtn");
    Press(form, "GoBtn");
    for (const auto &[field, text, button, address] :
         {std::tuple("email", "anna@bell.example", "EBtn", "mailto:anna@bell.example"),
          {"URL", "bell.example", "GoBtn", "http://bell.example"},
          {"URL", "http://bell.example/x", "GoBtn", "http://bell.example/x"},
          {"URL", "HTTPS://bell.example", "GoBtn", "HTTPS://bell.example"},
          {"URL", "file:///x?http://", "GoBtn", "http://file:///x?http://"}}) {
        TypeInto(form, field, text);
        Press(form, button);
        QTRY_COMPARE(opened(), QString(address));
    }
}

void TestContactForm::EveryFieldTakesAnyText()
{
    const QString text =
        QString::fromUtf8("'; DELETE FROM Contacts; -- \"%1\" 100% [x] \\ \U0001F469\u200D\U0001F393");
    const QString longText = QString("It's 10% ").repeated(1112).left(10000);
    frmAddContact form;
    ContactRecord expected;
    for (const QString &each : {text, longText}) {
        for (QLineEdit *field : form.findChildren<QLineEdit *>()) {
            const bool ownField =
                !qobject_cast<QComboBox *>(field->parentWidget()) && !qobject_cast<DateField *>(field);
            if (ownField && !field->objectName().startsWith("Org_"))
                field->setText(each);
        }
        auto *notes = Find<QPlainTextEdit>(form, "Notes");
        notes->selectAll();
        notes->insertPlainText(each);
        Press(form, "OKBtn");
        const QStringList fields =
            Fields(Stored(TestDatabase::Value("SELECT MAX(ContactRef) AS K FROM Contacts").toInt()));
        QVERIFY2(fields.count(each) == 20, qPrintable(fields.join('|').left(1500)));
        Press(form, "EditBtn");
    }
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), 1);
}

/// The person is stored, the characteristics are not: they stay on the screen, to be saved again.
void TestContactForm::CharacteristicsThatFail()
{
    Concession_Add("Student", 20, 0, "");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    Press(form, "EditBtn");
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentIndex(1);
    Press(form, "AddCBtn");
    Sql("ALTER TABLE ContactConcession RENAME TO Away");
    gConnection.OpenRecordset("SELECT * FROM ContactConcession");
    const QString source = gConnection.Errors().first().source;
    m->dialogs.Expect(source, "A number of errors have been detected, please seek technical support.");
    Press(form, "OKBtn");
    Sql("ALTER TABLE Away RENAME TO ContactConcession");
    QCOMPARE(Caption(form, "EditBtn"), u"&View"_qs);
    m->dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?",
                      Dialogs::Answer::Yes);
    form.reject();
    QCOMPARE(Rows("ContactConcession"), 1);
}

/// Who may be the one that is typed shows after a pause; the button opens them all to walk through.
void TestContactForm::Hint()
{
    ContactRecord known = Person("Anna", "Bell");
    known.email = "a.bell@example.org";
    Contact_Add(known);
    Contact_Add(Person("Alan", "bell"));
    Contact_Add(Person("Ben", "Bell"));
    frmAddContact form;
    const Keyboard keys(form);
    const auto *line = Find<QLabel>(form, "SimilarLine");
    TypeName(form, "Amy", "Bell");
    QCOMPARE(line->toolTip(), QString()); // not while keys come
    QTRY_COMPARE(line->toolTip(), u"On file already: bell, Alan (1 Mill Lane); Bell, Anna (1 Mill Lane)"_qs);
    m->driver.Expect("frmAddContact", [&](QDialog &record) {
        QCOMPARE(record.windowTitle(), u"bell, Alan (RECORD 1 OF 2)"_qs);
        QVERIFY(!IsShown(record, "SimilarHint"));
        Press(record, "ExitBtn");
    });
    keys.Alt(Qt::Key_V);
    QCOMPARE(gDialogResult, 0);
    QCOMPARE(Find<QLineEdit>(form, "Forname")->text(), u"Amy"_qs);

    TypeName(form, "Zoe", "Zimmer");
    TypeInto(form, "email", "A.Bell@example.org");
    QTRY_COMPARE(line->toolTip(), u"On file already: Bell, Anna (1 Mill Lane)"_qs);
    Press(form, "OKBtn");
    QVERIFY(!IsShown(form, "SimilarHint"));
}

/// A hint that cannot be read is none, and asks nothing of whoever is typing.
void TestContactForm::HintIsQuiet()
{
    for (int i = 0; i < 5; ++i)
        Contact_Add(Person(u"A" % QString::number(i), "O'Neil"));
    QCOMPARE(Contact_FindSimilar(" a ", " O'neil ", "").size(), size_t(4));
    for (const char *forename : {"", "%", "_", "1", "'"})
        QVERIFY(Contact_FindSimilar(forename, "O'Neil", "").empty());
    QVERIFY(Contact_FindSimilar("", "", " ").empty());
    Sql("ALTER TABLE Contacts RENAME TO ContactsAway");
    QVERIFY(Contact_FindSimilar("A", "O'Neil", "a@example.org").empty());
}

QTEST_MAIN(TestContactForm)
#include "test_contact_form.moc"
