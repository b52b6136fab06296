#include "contacts/People.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/ContactRecordODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Clock.h"

#include <QTest>

namespace
{
const QString exists = "Contact already exists in database.";
} // namespace

class TestContactRecord : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<LogicFixture>(); }
    void cleanup() { m.reset(); }
    void AddShowUpdateDelete();
    void SamePerson_data();
    void SamePerson();
    void DeletesWhatHangsOnAPerson();
    void Show();
    void FillInfo();

private:
    std::unique_ptr<LogicFixture> m;
};

void TestContactRecord::AddShowUpdateDelete()
{
    ContactRecord record = FullPerson();
    const int anna = Contact_Add(record);
    QVERIFY(anna > 1);
    QVERIFY(Contact_Check(ContactRef(anna)));
    QCOMPARE(Fields(Stored(anna)), Fields(record));

    // Every field changes, so that none can be left out of the update.
    for (int *number : NumberFields(record))
        *number += 100;
    for (QString *text : TextFields(record))
        *text += u"'; -- %1";
    QCOMPARE(Update(anna, record), anna);
    QCOMPARE(Fields(Stored(anna)), Fields(record));
    record.surname = "a`b";
    QCOMPARE(Update(anna, record), anna);
    QCOMPARE(Stored(anna).surname, u"a``b"_qs);

    ADO_Contact_UpdateJobTitle(ContactRef(anna), "Head");
    QCOMPARE(Stored(anna).jobTitle, u"Head"_qs);
    QVERIFY(ADO_Contact_Delete(ContactRef(anna)));
    QVERIFY(!Contact_Check(ContactRef(anna)));
    // The next person must not inherit the payments that outlive the first.
    QVERIFY(Contact_Add(FullPerson()) > anna);
}

void TestContactRecord::SamePerson_data()
{
    QTest::addColumn<QString ContactRecord::*>("field");
    QTest::addColumn<QString>("change");
    QTest::addColumn<bool>("same");
    QTest::newRow("forename") << &ContactRecord::forename << u"x"_qs << false;
    QTest::newRow("surname") << &ContactRecord::surname << u"x"_qs << false;
    QTest::newRow("first address line") << &ContactRecord::addr1 << u"x"_qs << false;
    QTest::newRow("reference") << &ContactRecord::referenceId << u"x"_qs << false;
    QTest::newRow("case of the surname") << &ContactRecord::surname << QString() << true;
    QTest::newRow("postcode") << &ContactRecord::postcode << u"x"_qs << true;
    QTest::newRow("e-mail") << &ContactRecord::email << u"x"_qs << true;
}

void TestContactRecord::SamePerson()
{
    QFETCH(QString ContactRecord::*, field);
    QFETCH(QString, change);
    QFETCH(bool, same);
    const int first = Contact_Add(FullPerson());
    const int other = Contact_Add(Person("Ben", "Bell"));
    ContactRecord second = FullPerson();
    second.dob = 19700101; // counts for nothing
    second.*field = change.isEmpty() ? (second.*field).toUpper() : QString(second.*field % change);
    if (same) {
        m->dialogs.Expect("Update Contact", exists);
        m->dialogs.Expect("Add Contact", exists);
    }
    QCOMPARE(Update(other, second), same ? 0 : other);
    QCOMPARE(Stored(other).notes.isEmpty(), same);
    if (!same)
        ADO_Contact_Delete(ContactRef(other));
    QCOMPARE(Contact_Add(second) > first, !same);
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), 2);
    QCOMPARE(Update(first, FullPerson()), first); // its own row is no other person
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
    QVERIFY(!Contact_Check(ContactRef(anna)));
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

    ShownContact shown(anna);
    Clock::StopAt({});
    QVERIFY(shown.file->isWhole);
    QCOMPARE(shown.file->record.dob, 0);
    QCOMPARE(shown.file->record.city, -1);
    QCOMPARE(shown.file->record.sex, 0);
    QCOMPARE(shown.file->record.notes, QString());
    QCOMPARE(Keys(shown.usedCriteria), QStringList(u'?' % SqlNumber(student)));
    QCOMPARE(Texts(shown.availCriteria), QStringList("Member"));
    QCOMPARE(shown.availCriteria.SelectedKeys(), QStringList(u'?' % SqlNumber(member)));
    QCOMPARE(shown.usedCriteria.SelectedRows().size(), size_t(1));
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
    Contact_FillInfo(ContactRef(anna), list);
    Contact_FillInfo(ContactRef(anna), list);
    Contact_FillInfo(ContactRef(4711), list);
    QCOMPARE(list.Count(), 1);
    QCOMPARE(list.At(0).key, QString(u'?' % SqlNumber(anna)));
    QCOMPARE(list.At(0).text, u"Bell, Anna"_qs);
    QCOMPARE(list.At(0).subItems, QStringList({"1 Mill Lane", "York", "YO1"}));
    QVERIFY(list.IsSelected(0));
}

QTEST_GUILESS_MAIN(TestContactRecord)
#include "test_contact_record.moc"
