#include "contacts/ConcessionODBC.h"
#include "contacts/ContactModule.h"
#include "contacts/People.h"
#include "contacts/frmAddContact.h"
#include "contacts/frmContactMainAddEdit.h"
#include "controls/ComboModel.h"
#include "core/Session.h"
#include "database/System.h"
#include "forms/FormBuilder.h"
#include "platform/Clock.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QScopeGuard>
#include <QTest>

namespace
{
const QString duplicate = QStringLiteral("Contact already exists in database.");
const QString changed = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");

QString Caption(QWidget &form, const QString &button)
{
    return Find<QPushButton>(form, button)->text();
}

bool IsShown(QWidget &form, const QString &name)
{
    return Find<QWidget>(form, name)->isVisibleTo(&form);
}

bool IsReadOnly(QWidget &form, const QString &field)
{
    return Find<QLineEdit>(form, field)->isReadOnly();
}

void Choose(QWidget &form, const QString &list, const QString &text)
{
    auto *combo = Find<ComboBox>(form, list);
    const int row = combo->Model().FindText(text);
    QVERIFY2(row >= 0, qPrintable(text));
    combo->setCurrentIndex(row);
}

QString Chosen(QWidget &form, const QString &list)
{
    return Find<ComboBox>(form, list)->Model().CurrentText();
}

/// Types into a drop-down list and leaves it with Enter.
void TypeInList(QWidget &form, const QString &list, const QString &text)
{
    auto *combo = Find<TypedCombo>(form, list);
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo, text);
    QTest::keyClick(combo, Qt::Key_Return);
}

ContactRecord Stored(int contactRef)
{
    FakeContactView view;
    ADO_Contact_ShowContact(view, contactRef);
    return view.record;
}

QString Key(int contactRef)
{
    return u'?' % QString::number(contactRef);
}
} // namespace

class TestContactForms : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void AddEditAgain();
    void RequiredFields_data();
    void RequiredFields();
    void DuplicateKeepsTheData();
    void LockedDatabaseKeepsTheData();
    void Leaving_data();
    void Leaving();
    void Walking();
    void Rights_data();
    void Rights();
    void TitleAndGender_data();
    void TitleAndGender();
    void TypedTown_data();
    void TypedTown();
    void EmergencyContact();
    void Characteristics();
    void CharacteristicsThatFail();
    void OrganisationCharacteristics();
    void AltReferences();
    void Addresses();
    void EveryFieldTakesAnyText();
    void CharacteristicDialog();
    void ChangedPercentage();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
    std::unique_ptr<ModalDriver> m_driver;
};

void TestContactForms::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    m_driver = std::make_unique<ModalDriver>();
    gUserRights = QString(256, u'9');
    gShowIDs = 0;
    gDialogResult = 0;
    LoadSystemValues();
}

void TestContactForms::cleanup()
{
    m_driver.reset();
    m_dialogs.reset();
    m_database.reset();
}

void TestContactForms::AddEditAgain()
{
    Clock::StopAt(QDateTime(QDate(2026, 3, 9), QTime(12, 0)));
    int key = 0;
    {
        frmAddContact form;
        QCOMPARE(form.windowTitle(), QStringLiteral("New Record"));
        QCOMPARE(Find<QDateEdit>(form, "Dob")->date(), QDate(2026, 3, 9));
        QVERIFY(!Find<QTabWidget>(form, "SSActiveTabs1")->isTabEnabled(1));
        TypeInto(form, "Forname", "Anna");
        TypeInto(form, "Surname", "O'Neil");
        TypeInto(form, "Addr1", "1 Mill Lane");
        Press(form, "OKBtn");
        QCOMPARE(form.windowTitle(), QStringLiteral("O'Neil, Anna"));
        QCOMPARE(Caption(form, "OKBtn"), QStringLiteral("&Update Record"));
        QVERIFY(IsReadOnly(form, "Surname"));
        QVERIFY(Find<QTabWidget>(form, "SSActiveTabs1")->isTabEnabled(1));

        Press(form, "EditBtn");
        QCOMPARE(form.windowTitle(), QStringLiteral("Editing O'Neil, Anna"));
        QCOMPARE(Caption(form, "EditBtn"), QStringLiteral("&View"));
        TypeInto(form, "Surname", "Bell");
        Press(form, "OKBtn");
        QCOMPARE(form.windowTitle(), QStringLiteral("Bell, Anna"));
        Press(form, "ExitBtn");
        key = gDialogResult;
    }
    Clock::StopAt({});
    QCOMPARE(Stored(key).surname, QStringLiteral("Bell"));
    QCOMPARE(Stored(key).dob, 20260309);
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), 1);
}

void TestContactForms::RequiredFields_data()
{
    QTest::addColumn<QString>("forename");
    QTest::addColumn<QString>("surname");
    QTest::addColumn<QString>("missing");
    QTest::newRow("both") << ""
                          << ""
                          << "    Forename\n    Surname\n";
    QTest::newRow("surname") << "Anna"
                             << ""
                             << "    Surname\n";
    QTest::newRow("forename") << ""
                              << "Bell"
                              << "    Forename\n";
}

void TestContactForms::RequiredFields()
{
    QFETCH(QString, forename);
    QFETCH(QString, surname);
    QFETCH(QString, missing);
    frmAddContact form;
    Find<QLineEdit>(form, "Forname")->setText(forename);
    Find<QLineEdit>(form, "Surname")->setText(surname);
    QCOMPARE(Find<CaptionLabel>(form, "Label_1")->IsMissing(), forename.isEmpty());
    m_dialogs->Expect("Form not complete", u"The followings fields must be completed:\n" % missing);
    Press(form, "OKBtn");
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), 0);
    QCOMPARE(Caption(form, "OKBtn"), QStringLiteral("&Add Record"));
}

void TestContactForms::DuplicateKeepsTheData()
{
    Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    TypeInto(form, "Forname", "Anna");
    TypeInto(form, "Surname", "Bell");
    TypeInto(form, "Addr1", "1 Mill Lane");
    TypeInto(form, "Telday", "01904");
    m_dialogs->Expect("Add Contact", duplicate);
    Press(form, "OKBtn");
    QCOMPARE(Caption(form, "OKBtn"), QStringLiteral("&Add Record"));
    QCOMPARE(Find<QLineEdit>(form, "Telday")->text(), QStringLiteral("01904"));
    TypeInto(form, "RefID_0", "2nd");
    Press(form, "OKBtn");
    QCOMPARE(Rows("Contacts WHERE ReferenceID = '2nd' AND Cust_TelDay = '01904'"), 1);
}

void TestContactForms::LockedDatabaseKeepsTheData()
{
    if (TestDatabase::IsOnServer())
        QSKIP("a server locks rows, not the database");
    QString impatient = m_database->ConnectionText();
    QVERIFY(gConnection.Open(impatient.replace(";PWD=", ";LockWait=50;PWD=")));
    frmAddContact form;
    TypeInto(form, "Forname", "Anna");
    TypeInto(form, "Surname", "Bell");
    Connection other;
    QVERIFY(other.Open(m_database->ConnectionText()));
    QVERIFY(other.Execute("BEGIN EXCLUSIVE"));
    m_dialogs->Expect("Veltrane Connection",
                      "A number of errors have been detected, please seek technical support.");
    Press(form, "OKBtn");
    QCOMPARE(Find<QLineEdit>(form, "Surname")->text(), QStringLiteral("Bell"));
    QVERIFY(!IsReadOnly(form, "Surname"));
    QVERIFY(other.Execute("ROLLBACK"));
    Press(form, "OKBtn");
    QCOMPARE(Rows("Contacts WHERE Cust_Surname = 'Bell'"), 1);
}

void TestContactForms::Leaving_data()
{
    QTest::addColumn<bool>("complete");
    QTest::addColumn<Dialogs::Answer>("answer");
    QTest::addColumn<bool>("leaves");
    QTest::addColumn<int>("stored");
    QTest::newRow("save and go") << true << Dialogs::Answer::Yes << true << 1;
    QTest::newRow("save that fails") << false << Dialogs::Answer::Yes << false << 0;
    QTest::newRow("drop and go") << true << Dialogs::Answer::No << true << 0;
    QTest::newRow("stay") << true << Dialogs::Answer::Cancel << false << 0;
}

void TestContactForms::Leaving()
{
    QFETCH(bool, complete);
    QFETCH(Dialogs::Answer, answer);
    QFETCH(bool, leaves);
    QFETCH(int, stored);
    frmAddContact form;
    form.show();
    TypeInto(form, "Forname", "Anna");
    if (complete)
        TypeInto(form, "Surname", "Bell");
    m_dialogs->Expect("Warning", changed, answer);
    if (!complete)
        m_dialogs->Expect("Form not complete", "The followings fields must be completed:\n    Surname\n");
    gDialogResult = -7;
    QTest::keyClick(&form, Qt::Key_Escape);
    QCOMPARE(form.isVisible(), !leaves);
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), stored);
    if (leaves)
        QCOMPARE(gDialogResult > 1, stored == 1);
    if (leaves && stored == 0)
        QCOMPARE(gDialogResult, 0);
}

void TestContactForms::Walking()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    ContactRecord second = Person("Ben", "Carter");
    second.dob = 20051332;
    const int ben = Contact_Add(second);
    frmAddContact form;
    form.OpenRecords({Key(anna), Key(ben), "?4711"});
    QCOMPARE(form.windowTitle(), QStringLiteral("Bell, Anna (RECORD 1 OF 3)"));
    QVERIFY(!Find<QPushButton>(form, "PrevBtn")->isEnabled());

    Press(form, "EditBtn");
    TypeInto(form, "Forname", "Ben");
    TypeInto(form, "Surname", "Carter");
    m_dialogs->Expect("Record Changed", "Okay to update record?", Dialogs::Answer::Yes);
    m_dialogs->Expect("Update Contact", duplicate);
    Press(form, "NextBtn");
    QCOMPARE(form.windowTitle(), QStringLiteral("Carter, Ben (RECORD 2 OF 3)"));
    QVERIFY(IsReadOnly(form, "Surname"));
    QCOMPARE(Stored(anna).forename, QStringLiteral("Anna"));
    // A birthday that is no date must not show that of the person before.
    QCOMPARE(Find<QDateEdit>(form, "Dob")->date(), Clock::Today());

    Press(form, "EditBtn");
    TypeInto(form, "Addr2", "dropped");
    m_dialogs->Expect("Record Changed", "Okay to update record?", Dialogs::Answer::No);
    Press(form, "NextBtn");
    QCOMPARE(Stored(ben).addr2, QString());
    QCOMPARE(Find<QLineEdit>(form, "Forname")->text(), QStringLiteral("#Contact Deleted#"));
    QVERIFY(!Find<QTabWidget>(form, "SSActiveTabs1")->isEnabled());
    QVERIFY(!Find<QPushButton>(form, "NextBtn")->isEnabled());
    QVERIFY(!IsShown(form, "EditBtn"));
    Press(form, "PrevBtn");
    QCOMPARE(Find<QLineEdit>(form, "Surname")->text(), QStringLiteral("Carter"));
    QVERIFY(Find<QTabWidget>(form, "SSActiveTabs1")->isEnabled());

    Press(form, "NewBtn");
    QCOMPARE(form.windowTitle(), QStringLiteral("New Record"));
    for (const char *button : {"PrevBtn", "NextBtn", "EditBtn", "MainRefBtn"})
        QVERIFY2(!IsShown(form, button), button);
    QCOMPARE(Find<QLineEdit>(form, "Surname")->text(), QString());
}

void TestContactForms::Rights_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("mayAdd");
    QTest::addColumn<bool>("mayEdit");
    QTest::newRow("look") << 1 << false << false;
    QTest::newRow("add") << 2 << true << false;
    QTest::newRow("change") << 3 << true << true;
    QTest::newRow("all") << 9 << true << true;
}

void TestContactForms::Rights()
{
    QFETCH(int, level);
    QFETCH(bool, mayAdd);
    QFETCH(bool, mayEdit);
    const int anna = Contact_Add(Person("Anna", "Bell"));
    gUserRights[23] = QChar(u'0' + level);
    gUserRights[27] = QChar(u'0' + level);
    gUserRights[31] = QChar(u'0' + level);
    frmAddContact form;
    QCOMPARE(Find<TypedCombo>(form, "CityList")->isEditable(), mayEdit);
    QVERIFY(Find<TypedCombo>(form, "CountyList")->isEditable());
    form.OpenRecords({Key(anna)});
    QCOMPARE(IsShown(form, "NewBtn"), mayAdd);
    QCOMPARE(IsShown(form, "EditBtn"), mayEdit);
    QVERIFY(!Find<QPushButton>(form, "OKBtn")->isEnabled());
    QVERIFY(!Find<QPushButton>(form, "NewCBtn")->isEnabled());
    QVERIFY(IsReadOnly(form, "Surname") && !Find<QWidget>(form, "CountyList")->isEnabled());
    if (mayEdit) {
        Press(form, "EditBtn");
        QVERIFY(Find<QPushButton>(form, "NewCBtn")->isEnabled());
    }
}

void TestContactForms::TitleAndGender_data()
{
    QTest::addColumn<QString>("gender");
    QTest::newRow("Mr") << "Male";
    QTest::newRow("Miss") << "Female";
    QTest::newRow("Mrs") << "Female";
    QTest::newRow("Ms") << "Female";
    QTest::newRow("Dr") << "Not Specified";
}

void TestContactForms::TitleAndGender()
{
    QFETCH(QString, gender);
    const QString title = QString::fromLatin1(QTest::currentDataTag());
    Contact_AddItem(ContactSection::Titles, title, "");
    ContactRecord record = Person("Anna", "Bell");
    {
        frmAddContact form;
        Choose(form, "DesList", title);
        QCOMPARE(Chosen(form, "SexList"), gender);
        record.designation = Find<ComboBox>(form, "DesList")->Model().CurrentData();
    }
    // Showing a record changes nothing of it.
    const int anna = Contact_Add(record);
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    QCOMPARE(Chosen(form, "DesList"), title);
    QCOMPARE(Chosen(form, "SexList"), QStringLiteral("Not Specified"));
}

void TestContactForms::TypedTown_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("towns");
    QTest::newRow("new") << "Leeds"
                         << "Leeds" << 2;
    QTest::newRow("known in another case") << "yORK"
                                           << "York" << 1;
    QTest::newRow("with a reference") << "[LS] Leeds"
                                      << "Leeds" << 2;
    QTest::newRow("apostrophe") << "King's Lynn"
                                << "King's Lynn" << 2;
    QTest::newRow("the select row") << " Select or Type New "
                                    << " Select or Type New " << 1;
}

void TestContactForms::TypedTown()
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

void TestContactForms::EmergencyContact()
{
    Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.show();
    auto *list = Find<TypedCombo>(form, "ContactList");
    ComboModel &people = list->Model();
    QCOMPARE(people.At(people.Count() - 1).text, QStringLiteral(" [ Press ENTER to add a new Contact ] "));
    people.SetCurrent(people.Count() - 1);
    m_driver->Expect("frmAddContact", [](QDialog &inner) {
        TypeInto(inner, "Forname", "Carer");
        TypeInto(inner, "Surname", "Good");
        Press(inner, "OKBtn");
        Press(inner, "ExitBtn");
    });
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(people.CurrentText(), QStringLiteral("Good, Carer"));
    QCOMPARE(people.At(people.Count() - 1).text, QStringLiteral(" [ New Contact ] "));

    TypeInto(form, "Forname", "Child");
    TypeInto(form, "Surname", "Small");
    const int carer = people.CurrentData();
    Press(form, "OKBtn");
    form.reject();
    QCOMPARE(Stored(gDialogResult).contactContactRef, carer);

    // The row for a new person stands for nobody when it is saved.
    frmAddContact another;
    auto *anotherList = Find<TypedCombo>(another, "ContactList");
    anotherList->Model().SetCurrent(anotherList->Model().Count() - 1);
    TypeInto(another, "Forname", "Lone");
    TypeInto(another, "Surname", "One");
    Press(another, "OKBtn");
    another.reject();
    QCOMPARE(Stored(gDialogResult).contactContactRef, 1);
}

void TestContactForms::Characteristics()
{
    const int student = Concession_Add("Student", 20, 0, "");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentIndex(1);
    Press(form, "EditBtn");
    Press(form, "AddCBtn");
    m_driver->Expect("frmContactMainAddEdit", [](QDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Characteristics"));
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
    QCOMPARE(Stored(anna).notes, QStringLiteral("no nuts"));

    Press(form, "EditBtn");
    Find<ListView>(form, "UsedCriteria")->Model().SelectOnly(0);
    Press(form, "RemCBtn");
    Press(form, "OKBtn");
    QCOMPARE(Rows(held % u" AND ConcessionRef <> " % QString::number(student)), 1);
    QCOMPARE(Rows(held), 1);
}

/// The person is stored, the characteristics are not: they stay on the screen, to be saved again.
void TestContactForms::CharacteristicsThatFail()
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
    m_dialogs->Expect(source, "A number of errors have been detected, please seek technical support.");
    Press(form, "OKBtn");
    Sql("ALTER TABLE Away RENAME TO ContactConcession");
    QCOMPARE(Caption(form, "EditBtn"), QStringLiteral("&View"));
    m_dialogs->Expect("Warning", changed, Dialogs::Answer::Yes);
    form.reject();
    QCOMPARE(Rows("ContactConcession"), 1);
}

void TestContactForms::OrganisationCharacteristics()
{
    const int member = Concession_Add("Member", 10, 0, "");
    const int acme = Contact_AddItem(ContactSection::Organisations, "Acme", "");
    Sql(u"INSERT INTO OrganChars (OrganRef,ConcessionRef) VALUES (" % QString::number(acme) % u',' %
        QString::number(member) % u')');
    frmAddContact form;
    TypeInto(form, "Forname", "Anna");
    TypeInto(form, "Surname", "Bell");
    Choose(form, "OrganList", "Acme");
    const QString question =
        QStringLiteral("Would you like to apply the Organisation Characteristics to this Contact?");
    m_dialogs->Expect("Organisation Characteristics", question, Dialogs::Answer::No);
    Press(form, "OKBtn");
    QCOMPARE(Rows("ContactConcession"), 0);
    // It is asked again as long as one is missing, and no more once it is there.
    Press(form, "EditBtn");
    m_dialogs->Expect("Organisation Characteristics", question, Dialogs::Answer::Yes);
    Press(form, "OKBtn");
    QCOMPARE(Texts(Find<ListView>(form, "UsedCriteria")->Model()), QStringList("Member"));
    QVERIFY(IsReadOnly(form, "Surname"));
    Press(form, "EditBtn");
    Press(form, "OKBtn");
    QCOMPARE(Rows("ContactConcession"), 1);
}

void TestContactForms::AltReferences()
{
    SetSystemValue(SystemRef::AltRefLabel + 1, "Union No");
    frmAddContact form;
    for (int i = 1; i <= 4; ++i)
        QCOMPARE(IsShown(form, u"RefID_" % QString::number(i)), i == 2);
    QCOMPARE(Find<QLabel>(form, "RefID_2_Label")->text(), QStringLiteral("Union No:"));
}

void TestContactForms::Addresses()
{
    // The desktop's opener, which only notes what it was given.
    const QString bin = m_database->Directory() + "/bin";
    const QString opened = bin + "/opened";
    QDir().mkpath(bin);
    for (const auto &[name, line] : {std::pair(QString("xdg-open"), QString(u"echo \"$1\" >> " % opened)),
                                     {"xdg-mime", "echo x.desktop"}}) {
        QFile program(bin + "/" + name);
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write(QString(u"#!/bin/sh\n" % line % u"\n").toUtf8());
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QByteArray path = qgetenv("PATH");
    const auto restore = qScopeGuard([&path] { qputenv("PATH", path); });
    qputenv("PATH", bin.toUtf8() + ":" + path);
    const auto lines = [&opened] {
        QFile file(opened);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };

    frmAddContact form;
    Press(form, "EBtn");
    Press(form, "GoBtn");
    QString expected;
    for (const auto &[field, text, button, address] :
         {std::tuple("email", "anna@bell.example", "EBtn", "mailto:anna@bell.example"),
          {"URL", "bell.example", "GoBtn", "http://bell.example"},
          {"URL", "http://bell.example/x", "GoBtn", "http://bell.example/x"},
          {"URL", "https://bell.example", "GoBtn", "https://bell.example"}}) {
        TypeInto(form, field, text);
        Press(form, button);
        expected += address % QString("\n");
        QTRY_COMPARE(lines(), expected);
    }
}

void TestContactForms::EveryFieldTakesAnyText()
{
    const QString text =
        QString::fromUtf8("'; DELETE FROM Contacts; -- \"%1\" 100% [x] \\ \U0001F469\u200D\U0001F393");
    const QString longText = QString(QStringLiteral("It's 10% ")).repeated(1112).left(10000);
    frmAddContact form;
    ContactRecord expected;
    for (const QString &each : {text, longText}) {
        for (QLineEdit *field : form.findChildren<QLineEdit *>()) {
            const bool ownField = !qobject_cast<QComboBox *>(field->parentWidget()) &&
                                  !qobject_cast<QAbstractSpinBox *>(field->parentWidget());
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

void TestContactForms::CharacteristicDialog()
{
    const int student = Concession_Add("Student", 20, 0, "S");
    frmContactMainAddEdit form(ContactSection::Characteristics);
    form.show();
    m_dialogs->Expect("Form not complete", "The followings fields must be completed:\n    Description\n");
    Press(form, "AddBtn");
    for (const auto &[typed, shown] : {std::pair("100.5", "0.00"), {"100", "100.00"}, {"", "0.00"}}) {
        TypeInto(form, "Percentage", typed);
        Find<MoneyField>(form, "Percentage")->Leave();
        QCOMPARE(Find<QLineEdit>(form, "Percentage")->text(), QString(shown));
    }
    TypeInto(form, "CatName", "Student");
    TypeInto(form, "RefName", "S");
    m_dialogs->Expect("Add Concession", "Concession already exists in database.");
    Press(form, "AddBtn");
    QVERIFY(form.isVisible());
    TypeInto(form, "RefName", "T");
    TypeInto(form, "HardDiscount", "7.255");
    Press(form, "AddBtn");
    QVERIFY(!form.isVisible());
    QVERIFY(gDialogResult > student);
    QCOMPARE(form.Item().name, QStringLiteral("Student"));
    QCOMPARE(ADO_Contact_GetConcesionDiscount(gDialogResult), 7.26);
}

void TestContactForms::ChangedPercentage()
{
    const int student = Concession_Add("Student", 20, 0, "");
    Sql("INSERT INTO Courses (Title, Fee) VALUES ('Welding', 200)");
    Sql("INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee,Discount,ConcessionType) VALUES "
        "(1,7,200,20,'Student')");
    {
        frmContactMainAddEdit form(ContactSection::Characteristics);
        form.EditItem(student);
        QCOMPARE(Find<QLineEdit>(form, "Percentage")->text(), QStringLiteral("20.00"));
        Press(form, "AddBtn"); // nothing changed, so nothing is asked
    }
    frmContactMainAddEdit form(ContactSection::Characteristics);
    form.EditItem(student);
    TypeInto(form, "Percentage", "25");
    m_dialogs->Expect("Concession Update",
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

QTEST_MAIN(TestContactForms)
#include "test_contact_forms.moc"
