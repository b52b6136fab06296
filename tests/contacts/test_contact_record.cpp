#include "contacts/ContactModule.h"
#include "contacts/ContactRecordODBC.h"
#include "contacts/People.h"
#include "core/Session.h"
#include "database/GlobalCode.h"
#include "platform/Clock.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"

#include <QTest>

namespace
{
const QString reporter = QStringLiteral("Veltrane Connection");
const QString report =
    QStringLiteral("A number of errors have been detected, please seek technical support.");
const QString exists = QStringLiteral("Contact already exists in database.");

ContactRecord Stored(int contactRef)
{
    FakeContactView view;
    ADO_Contact_ShowContact(view, contactRef);
    return view.record;
}
} // namespace

class TestContactRecord : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void AddShowUpdateDelete();
    void SamePerson_data();
    void SamePerson();
    void UpdateLeavesItselfOut();
    void DeleteCascade();
    void DeleteClearsTheEmergencyContact();
    void Show();
    void ShowDeleted();
    void FillInfo();
    void AnyText_data();
    void AnyText();
    void LockedDatabase();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
};

void TestContactRecord::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
}

void TestContactRecord::cleanup()
{
    m_dialogs.reset();
    m_database.reset();
}

void TestContactRecord::AddShowUpdateDelete()
{
    ContactRecord record = FullPerson();
    const int anna = Contact_Add(record);
    QVERIFY(anna > 1);
    QVERIFY(Contact_Check(anna));
    QCOMPARE(Fields(Stored(anna)), Fields(record));

    // Every field changes, so that none can be left out of the update.
    for (int *number : {&record.designation, &record.dob, &record.county, &record.city, &record.country,
                        &record.ethnicGroup, &record.organRef, &record.contactContactRef})
        *number += 1;
    record.sex = 2;
    for (QString *text :
         {&record.forename,    &record.surname,   &record.addr1,     &record.addr2,     &record.addr3,
          &record.addr4,       &record.postcode,  &record.telEve,    &record.telDay,    &record.telExt,
          &record.fax,         &record.email,     &record.url,       &record.notes,     &record.jobTitle,
          &record.referenceId, &record.altRef[0], &record.altRef[1], &record.altRef[2], &record.altRef[3]})
        *text += u"!";
    QCOMPARE(Contact_Update(anna, record), anna);
    QCOMPARE(Fields(Stored(anna)), Fields(record));

    ADO_Contact_UpdateJobTitle(anna, QStringLiteral("Head"));
    QCOMPARE(Stored(anna).jobTitle, QStringLiteral("Head"));

    QVERIFY(ADO_Contact_Delete(anna));
    QVERIFY(!Contact_Check(anna));
    // The next person must not inherit the payments that outlive the first.
    QVERIFY(Contact_Add(FullPerson()) > anna);
}

void TestContactRecord::SamePerson_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("same");
    QTest::newRow("nothing changed") << "" << true;
    QTest::newRow("forename") << "forename" << false;
    QTest::newRow("surname") << "surname" << false;
    QTest::newRow("first address line") << "addr1" << false;
    QTest::newRow("reference") << "referenceId" << false;
    QTest::newRow("case of the surname") << "case" << true;
    QTest::newRow("date of birth") << "dob" << true;
    QTest::newRow("postcode") << "postcode" << true;
    QTest::newRow("e-mail") << "email" << true;
}

void TestContactRecord::SamePerson()
{
    QFETCH(QString, field);
    QFETCH(bool, same);
    const int first = Contact_Add(FullPerson());
    ContactRecord second = FullPerson();
    QHash<QString, QString *> texts{{"forename", &second.forename}, {"surname", &second.surname},
                                    {"addr1", &second.addr1},       {"referenceId", &second.referenceId},
                                    {"postcode", &second.postcode}, {"email", &second.email}};
    if (QString *text = texts.value(field))
        *text += u"x";
    if (field == "case")
        second.surname = second.surname.toUpper();
    if (field == "dob")
        second.dob = 19700101;

    if (same)
        m_dialogs->Expect("Add Contact", exists);
    const int added = Contact_Add(second);
    QCOMPARE(added > first, !same);
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), same ? 1 : 2);
    if (same)
        QCOMPARE(added, 0);
}

void TestContactRecord::UpdateLeavesItselfOut()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int ben = Contact_Add(Person("Ben", "Bell"));
    QCOMPARE(Contact_Update(anna, Person("Anna", "Bell")), anna);

    m_dialogs->Expect("Update Contact", exists);
    ContactRecord likeAnna = Person("Anna", "Bell");
    likeAnna.notes = QStringLiteral("must not be written");
    QCOMPARE(Contact_Update(ben, likeAnna), 0);
    QCOMPARE(Stored(ben).forename, QStringLiteral("Ben"));
    QCOMPARE(Stored(ben).notes, QString());
}

void TestContactRecord::DeleteCascade()
{
    StatementLog log;
    QVERIFY(Contact_DeleteItem(ContactSection::Contacts, 42));
    const QStringList expected{
        "DELETE FROM StudentsEnrolled WHERE ContactRef = 42",
        "DELETE FROM AttendanceRecord WHERE ContactRef = 42",
        "DELETE FROM StaffEmployed WHERE ContactRef = 42",
        "DELETE FROM CourseStaff WHERE ContactRef = 42",
        "DELETE FROM StudentExams WHERE ContactRef = 42",
        "DELETE FROM Groups WHERE ContactRef = 42",
        "DELETE FROM ContactConcession WHERE ContactRef = 42",
        "DELETE FROM ContactRoles WHERE ContactRef = 42",
        "UPDATE Contacts SET ContactContactRef = 1 WHERE ContactContactRef = 42",
        "DELETE FROM Contacts WHERE ContactRef = 42",
    };
    QCOMPARE(log.Statements(), expected);
}

void TestContactRecord::DeleteClearsTheEmergencyContact()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    ContactRecord child = Person("Ben", "Bell");
    child.contactContactRef = anna;
    const int ben = Contact_Add(child);
    for (const int who : {anna, ben}) {
        Sql(u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef) VALUES (1," % SqlNumber(who) % u")");
        Sql(u"INSERT INTO Transactions (CourseRef,ContactRef) VALUES (1," % SqlNumber(who) % u")");
    }
    QVERIFY(ADO_Contact_Delete(anna));
    QCOMPARE(Stored(ben).contactContactRef, 1);
    QCOMPARE(Rows("StudentsEnrolled"), 1);
    QCOMPARE(Rows("Transactions"), 2);
}

void TestContactRecord::Show()
{
    Clock::StopAt(QDateTime(QDate(2026, 3, 9), QTime(12, 0)));
    const int student = Concession_Add("Student", 20, 0, "");
    const int member = Concession_Add("Member", 0, 5, "");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    Sql(u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (" % SqlNumber(anna) % u',' %
        SqlNumber(student) % u')');
    Sql(u"UPDATE Contacts SET Cust_DOB = NULL, Cust_City = NULL, Cust_Notes = NULL, Cust_Sex = NULL "
        u"WHERE ContactRef = " %
        SqlNumber(anna));

    FakeContactView view;
    Contact_Show(view, anna);
    Clock::StopAt({});
    QCOMPARE(view.calls, QStringList({"Loading Contact Information", "record", "loaded"}));
    QCOMPARE(view.record.dob, 20260309);
    QCOMPARE(view.record.city, -1);
    QCOMPARE(view.record.sex, 0);
    QCOMPARE(view.record.notes, QString());
    QCOMPARE(Keys(view.used), QStringList(u'?' % SqlNumber(student)));
    QCOMPARE(Texts(view.available), QStringList("Member"));
    QCOMPARE(view.available.SelectedKeys(), QStringList(u'?' % SqlNumber(member)));
    QCOMPARE(view.used.SelectedRows().size(), size_t(1));
}

void TestContactRecord::ShowDeleted()
{
    FakeContactView view;
    view.used.Add({"?1", "left over"});
    Contact_Show(view, 4711);
    QCOMPARE(view.calls, QStringList({"Loading Contact Information", "#Contact Deleted#"}));
    QVERIFY(!Contact_Check(4711));
}

void TestContactRecord::FillInfo()
{
    const int york = Contact_AddItem(ContactSection::Cities, "York", "");
    ContactRecord record = Person("Anna", "Bell");
    record.city = york;
    record.postcode = QStringLiteral("YO1");
    const int anna = Contact_Add(record);
    ListModel list;
    list.SetColumns({"Contact", "Address", "City", "Postcode"});
    Contact_FillInfo(anna, list);
    Contact_FillInfo(anna, list);
    Contact_FillInfo(4711, list);
    QCOMPARE(list.Count(), 1);
    QCOMPARE(list.At(0).key, QString(u'?' % SqlNumber(anna)));
    QCOMPARE(list.At(0).text, QStringLiteral("Bell, Anna"));
    QCOMPARE(list.At(0).subItems, QStringList({"1 Mill Lane", "York", "YO1"}));
    QVERIFY(list.IsSelected(0));
}

void TestContactRecord::AnyText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("apostrophes") << "'O''Neil' 'x'";
    QTest::newRow("percent and brackets") << "100% [sic] {1} (2) <b>";
    QTest::newRow("semicolon and comment") << "'; DELETE FROM Contacts; --/*";
    QTest::newRow("placeholders") << "%1 %2 %L1 ? :a @b $1";
    QTest::newRow("quotes and backslashes") << "\"double\" \\' \\n C:\\temp\\";
    QTest::newRow("emoji and letters")
        << QString::fromUtf8("Zo\u00eb \u0141ukasz \U0001F469\u200D\U0001F393 \u4f60\u597d");
    QTest::newRow("line ends") << "one\r\ntwo\nthree\ttabbed";
    QTest::newRow("blanks around") << "  kept  ";
    QTest::newRow("long") << QString(QStringLiteral("It's 10% ")).repeated(1112).left(10000);
}

void TestContactRecord::AnyText()
{
    QFETCH(QString, text);
    ContactRecord record = FullPerson();
    for (QString *field :
         {&record.forename,    &record.surname,   &record.addr1,     &record.addr2,     &record.addr3,
          &record.addr4,       &record.postcode,  &record.telEve,    &record.telDay,    &record.telExt,
          &record.fax,         &record.email,     &record.url,       &record.notes,     &record.jobTitle,
          &record.referenceId, &record.altRef[0], &record.altRef[1], &record.altRef[2], &record.altRef[3]})
        *field = text;
    const int added = Contact_Add(record);
    QVERIFY(added > 1);
    QCOMPARE(Fields(Stored(added)), Fields(record));
    m_dialogs->Expect("Add Contact", exists);
    QCOMPARE(Contact_Add(record), 0);

    record.sex = 2;
    QCOMPARE(Contact_Update(added, record), added);
    QCOMPARE(Fields(Stored(added)), Fields(record));

    record.surname = QStringLiteral("a`b");
    QCOMPARE(Contact_Update(added, record), added);
    QCOMPARE(Stored(added).surname, QStringLiteral("a``b"));
}

void TestContactRecord::LockedDatabase()
{
    if (TestDatabase::IsOnServer())
        QSKIP("a server locks rows, not the database");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    QString impatient = m_database->ConnectionText();
    QVERIFY(gConnection.Open(impatient.replace(";PWD=", ";LockWait=50;PWD=")));
    Connection other;
    QVERIFY(other.Open(m_database->ConnectionText()));
    QVERIFY(other.Execute("BEGIN EXCLUSIVE"));
    for (int i = 0; i < 3; ++i)
        m_dialogs->Expect(reporter, report);
    QCOMPARE(Contact_Add(Person("Ben", "Carter")), -1);
    QCOMPARE(Contact_Update(anna, Person("Anna", "Changed")), -1);
    QVERIFY(!ADO_Contact_Delete(anna));
    QVERIFY(other.Execute("ROLLBACK"));
    QCOMPARE(Stored(anna).surname, QStringLiteral("Bell"));
}

QTEST_GUILESS_MAIN(TestContactRecord)
#include "test_contact_record.moc"
