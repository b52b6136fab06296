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
const QString exists = "Contact already exists in database.";
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
    void DeletesWhatHangsOnAPerson();
    void Show();
    void ShowDeleted();
    void FillInfo();

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
    for (int *number : NumberFields(record))
        *number += 100;
    for (QString *text : TextFields(record))
        *text += u"'; -- %1";
    QCOMPARE(Contact_Update(anna, record), anna);
    QCOMPARE(Fields(Stored(anna)), Fields(record));
    record.surname = "a`b";
    QCOMPARE(Contact_Update(anna, record), anna);
    QCOMPARE(Stored(anna).surname, u"a``b"_qs);

    ADO_Contact_UpdateJobTitle(anna, "Head");
    QCOMPARE(Stored(anna).jobTitle, u"Head"_qs);
    QVERIFY(ADO_Contact_Delete(anna));
    QVERIFY(!Contact_Check(anna));
    // The next person must not inherit the payments that outlive the first.
    QVERIFY(Contact_Add(FullPerson()) > anna);
}

void TestContactRecord::SamePerson_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("same");
    QTest::newRow("nothing changed") << u""_qs << true;
    QTest::newRow("forename") << u"forename"_qs << false;
    QTest::newRow("surname") << u"surname"_qs << false;
    QTest::newRow("first address line") << u"addr1"_qs << false;
    QTest::newRow("reference") << u"referenceId"_qs << false;
    QTest::newRow("case of the surname") << u"case"_qs << true;
    QTest::newRow("date of birth") << u"dob"_qs << true;
    QTest::newRow("postcode") << u"postcode"_qs << true;
    QTest::newRow("e-mail") << u"email"_qs << true;
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
    likeAnna.notes = "must not be written";
    QCOMPARE(Contact_Update(ben, likeAnna), 0);
    QCOMPARE(Stored(ben).forename, u"Ben"_qs);
    QCOMPARE(Stored(ben).notes, QString());
}

/// What hangs on the person goes, what hangs on others and every payment stays.
void TestContactRecord::DeletesWhatHangsOnAPerson()
{
    const QStringList go{"StudentsEnrolled", "AttendanceRecord", "StaffEmployed",     "CourseStaff",
                         "StudentExams",     "Groups",           "ContactConcession", "ContactRoles"};
    const QStringList outlive{"Transactions", "CreditCardTransaction", "WaitingList", "IssuedAwards"};
    const int anna = Contact_Add(Person("Anna", "Bell"));
    ContactRecord child = Person("Ben", "Bell");
    child.contactContactRef = anna;
    const int ben = Contact_Add(child);
    for (const QString &table : go + outlive) {
        for (const int who : {anna, ben})
            Sql(u"INSERT INTO " % table % u" (ContactRef) VALUES (" % SqlNumber(who) % u')');
    }
    QVERIFY(Contact_DeleteItem(ContactSection::Contacts, anna));
    QVERIFY(!Contact_Check(anna));
    QCOMPARE(Stored(ben).contactContactRef, 1);
    for (const QString &table : go)
        QCOMPARE(TestDatabase::Rows(u"SELECT ContactRef FROM " % table), QStringList(SqlNumber(ben)));
    for (const QString &table : outlive)
        QCOMPARE(Rows(table), 2);
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
    record.postcode = "YO1";
    const int anna = Contact_Add(record);
    ListModel list;
    list.SetColumns({"Contact", "Address", "City", "Postcode"});
    Contact_FillInfo(anna, list);
    Contact_FillInfo(anna, list);
    Contact_FillInfo(4711, list);
    QCOMPARE(list.Count(), 1);
    QCOMPARE(list.At(0).key, QString(u'?' % SqlNumber(anna)));
    QCOMPARE(list.At(0).text, u"Bell, Anna"_qs);
    QCOMPARE(list.At(0).subItems, QStringList({"1 Mill Lane", "York", "YO1"}));
    QVERIFY(list.IsSelected(0));
}

QTEST_GUILESS_MAIN(TestContactRecord)
#include "test_contact_record.moc"
