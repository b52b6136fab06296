#include "controls/ListModel.h"
#include "core/Progress.h"
#include "enrolment/EnrolmentModule.h"
#include "enrolment/School.h"
#include "enrolment/TransactionODBC.h"
#include "platform/Dialogs.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"

#include <QTest>

namespace
{
/// The payment screen, as the data layer sees it.
class FakeStudentView final : public StudentView
{
public:
    void ShowStudent(const StudentRecord &record) override { shown = record; }
    void ShowNotEnrolled() override { missing = true; }

    std::optional<StudentRecord> shown;
    bool missing = false;
};

StudentRecord Shown(int courseRef, int contactRef)
{
    FakeStudentView view;
    ADO_Course_StudentInfo(view, courseRef, contactRef);
    return view.shown.value_or(StudentRecord());
}

QStringList Enrolment(int courseRef)
{
    return TestDatabase::Rows(
        u"SELECT ContactRef,BasicFee,Discount,AmountPaid,ConcessionType,ReceiptNo,TaxName,"
        u"TaxRate FROM StudentsEnrolled WHERE CourseRef = " %
        SqlNumber(courseRef) % u" ORDER BY ContactRef");
}

QString Line(int contactRef, const QString &rest)
{
    return SqlNumber(contactRef) % u'|' % rest;
}

/// The list of the picker: people by their references.
void Select(ListModel &list, const QList<int> &people)
{
    std::vector<ListItem> items;
    for (const int person : people)
        items.push_back({u'?' % SqlNumber(person), {}});
    list.Fill(std::move(items));
}

QString ErrorSource()
{
    gConnection.OpenRecordset("SELECT * FROM NoSuchTable");
    return gConnection.Errors().first().source;
}

const QString errorText = "A number of errors have been detected, please seek technical support.";

/// Every enrolment's discount, by course.
QString Discounts()
{
    return TestDatabase::Rows("SELECT Courses.Title, StudentsEnrolled.Discount FROM Courses INNER JOIN "
                              "StudentsEnrolled ON Courses.CourseRef = StudentsEnrolled.CourseRef ORDER BY "
                              "Courses.Title")
        .join(u' ');
}
} // namespace

class TestEnrolment final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_database.reset(); }

    void Story();
    void EnrolsWithTheLargestDiscount_data();
    void EnrolsWithTheLargestDiscount();
    void EnrolsExactlyTheList();
    void StopsAtTheFailingStudent();
    void StopsBehindAWholeStudent();
    void PlacesLeft_data();
    void PlacesLeft();
    void ListsStatusWords();
    void ShowsRoundedBoxes();
    void WritesBackInOneStatement();
    void LogsThePayment();
    void RaisedPercentageCarriesOnToTheNextCourse();

private:
    std::unique_ptr<TestDatabase> m_database;
    Progress m_progress;
};

void TestEnrolment::init()
{
    m_database = std::make_unique<TestDatabase>();
    LoadSystemValues();
}

/// Enrol, list, pay, list again, remove: the payment outlives the enrolment.
void TestEnrolment::Story()
{
    School::SetTax("VAT", "20");
    const int course = School::AddCourse("Pottery", 100, 2);
    const int ada = School::AddPerson("Ada", "O'Neil");
    School::AddCharacteristic(ada, "Student", 25, 0);
    QVERIFY(!ADO_Course_IsEnrolled(course, ada));
    QVERIFY(ADO_Course_EnrollStudent(course, ada));
    QVERIFY(ADO_Course_IsEnrolled(course, ada));
    QCOMPARE(ADO_Course_PlacesLeft(course), 1);

    ListModel list;
    ADO_Course_ShowEnrolledStudents(course, list);
    QCOMPARE(list.At(0).key, u'?' % SqlNumber(ada));
    QCOMPARE(list.At(0).text, u"O'Neil, Ada"_qs);
    QCOMPARE(list.At(0).subItems, QStringList("No"));
    QVERIFY(list.IsSelected(0));

    StudentRecord record = Shown(course, ada);
    QCOMPARE(record.totalDue, 90.0);
    QCOMPARE(record.owed, 90.0);
    record.payments.cheque = 90;
    QVERIFY(Course_UpdateStudent(
        course, ada, {record.payments, "it's paid", 100, 25, record.concession, "R'1", record.taxName, 20}));
    QVERIFY(Course_LogTransaction(course, ada, QDate(2026, 11, 22), "R'1", record.payments, 0));
    ADO_Course_ShowEnrolledStudents(course, list);
    QCOMPARE(list.At(0).subItems.value(0), u"Yes"_qs);
    record = Shown(course, ada);
    QCOMPARE(record.notes, u"it's paid"_qs);
    QCOMPARE(record.receipt, u"R'1"_qs);
    QCOMPARE(record.owed, 0.0);

    ADO_Course_RemoveStudent(course, ada);
    FakeStudentView view;
    ADO_Course_StudentInfo(view, course, ada);
    QVERIFY(view.missing);
    QCOMPARE(TestDatabase::Value("SELECT ReceiptNo FROM Transactions"), u"R'1"_qs);
}

void TestEnrolment::EnrolsWithTheLargestDiscount_data()
{
    QTest::addColumn<double>("fee");
    QTest::addColumn<QString>("rest");
    QTest::newRow("the amount is more") << 100.0 << u"100|30|0|Member's|0||0"_qs;
    QTest::newRow("the percentage is more") << 200.0 << u"200|20|0|Student|0||0"_qs;
    QTest::newRow("the amount is above the fee") << 20.0 << u"20|100|0|Member's|0||0"_qs;
    QTest::newRow("a free course") << 0.0 << u"0|0|0||0||0"_qs;
}

void TestEnrolment::EnrolsWithTheLargestDiscount()
{
    QFETCH(double, fee);
    QFETCH(QString, rest);
    const int course = School::AddCourse("Pottery", fee);
    const int person = School::AddPerson("Ada", "Lovelace");
    School::AddCharacteristic(person, "Student", 20, 0);
    School::AddCharacteristic(person, "Member's", 5, 30);
    ADO_Course_EnrollStudent(course, person);
    QCOMPARE(Enrolment(course), QStringList(Line(person, rest)));
}

void TestEnrolment::EnrolsExactlyTheList()
{
    const int course = School::AddCourse("Pottery", 100);
    const int ada = School::AddPerson("Ada", "Lovelace");
    const int bob = School::AddPerson("Bob", "Jones");
    const int cleo = School::AddPerson("Cleo", "Adams");
    ListModel list;
    Select(list, {ada, bob});
    QVERIFY(ADO_Course_EnrollStudents(course, list, m_progress));
    TestDatabase::Run({u"UPDATE StudentsEnrolled SET AmountPaid = 40 WHERE ContactRef = " % SqlNumber(bob),
                       u"UPDATE Courses SET Fee = 150 WHERE CourseRef = " % SqlNumber(course)});

    // Bob keeps his payment and his old fee, Ada goes, Cleo comes at the new fee.
    Select(list, {cleo, bob});
    QVERIFY(ADO_Course_EnrollStudents(course, list, m_progress));
    QCOMPARE(Enrolment(course), QStringList({Line(bob, "100|0|40||0||0"), Line(cleo, "150|0|0||0||0")}));
    Select(list, {});
    QVERIFY(ADO_Course_EnrollStudents(course, list, m_progress));
    QVERIFY(Enrolment(course).isEmpty());

    // A second workstation has deleted the course meanwhile.
    School::SetTax("Duty's", "17.505");
    ADO_Course_EnrollStudent(course + 1, ada);
    QCOMPARE(Enrolment(course + 1), QStringList(Line(ada, "0|0|0||0|Duty's|17.51")));
}

void TestEnrolment::StopsAtTheFailingStudent()
{
    const int course = School::AddCourse("Pottery", 100);
    const int ada = School::AddPerson("Ada", "Lovelace");
    ADO_Course_EnrollStudent(course, ada);
    TestDatabase::Run({"DROP TABLE ContactConcession"});
    ListModel list;
    Select(list, {ada, ada + 1});
    ScriptedDialogs dialogs;
    dialogs.Expect(ErrorSource(), errorText);
    QVERIFY(!ADO_Course_EnrollStudents(course, list, m_progress));
    QCOMPARE(Enrolment(course).size(), 1);
}

/// Cancelled in the middle of the second student; the next run takes up the rest.
void TestEnrolment::StopsBehindAWholeStudent()
{
    const int course = School::AddCourse("Pottery", 100);
    ListModel list;
    Select(list, {2, 3, 4});
    Progress progress;
    int inserts = 0;
    gConnection.ObserveStatements([&](const QString &sql) {
        if (sql.startsWith("INSERT") && ++inserts == 2)
            progress.Cancel();
    });
    QVERIFY(!ADO_Course_EnrollStudents(course, list, progress));
    gConnection.ObserveStatements({});
    QCOMPARE(progress.Value(), 2);
    QCOMPARE(Enrolment(course).size(), 2);
    QVERIFY(ADO_Course_EnrollStudents(course, list, m_progress));
    QCOMPARE(Enrolment(course).size(), 3);
}

void TestEnrolment::PlacesLeft_data()
{
    QTest::addColumn<QString>("limit");
    QTest::addColumn<int>("enrolled");
    QTest::addColumn<int>("left");
    QTest::newRow("no limit") << u"0"_qs << 3 << 0;
    QTest::newRow("limit not known") << u"NULL"_qs << 3 << 0;
    QTest::newRow("limit below zero") << u"-4"_qs << 1 << 0;
    QTest::newRow("empty course") << u"4"_qs << 0 << 4;
    QTest::newRow("one place") << u"4"_qs << 3 << 1;
    QTest::newRow("full") << u"3"_qs << 3 << -3;
    QTest::newRow("more than full") << u"2"_qs << 3 << -1;
}

void TestEnrolment::PlacesLeft()
{
    QFETCH(QString, limit);
    QFETCH(int, enrolled);
    const int course = School::AddCourse("Pottery", 0);
    TestDatabase::Run({u"UPDATE Courses SET Limit = " % limit});
    for (int person = 2; person < enrolled + 2; ++person)
        ADO_Course_EnrollStudent(course, person);
    QTEST(ADO_Course_PlacesLeft(course), "left");
    QCOMPARE(ADO_Course_PlacesLeft(course + 1), 0);
}

void TestEnrolment::ListsStatusWords()
{
    const int course = School::AddCourse("Pottery", 66.67);
    const QList<std::pair<QString, QString>> cases = {
        {"Discount = 50", "No"},
        {"Discount = 50, AmountPaid = 33.34", "No"}, // the rest is NULL
        {"Discount = 50, AmountPaid = 33.34, ChequePaid = 0, CCardPaid = 0, Vouchers2 = 0, Vouchers3 = 0, "
         "Vouchers4 = 0, Vouchers5 = 0",
         "In Credit"},
        {"BasicFee = 8, AmountPaid = 1, ChequePaid = 1, CCardPaid = 1, Vouchers = 1, Vouchers2 = 1, "
         "Vouchers3 = 1, Vouchers4 = 1, Vouchers5 = 1",
         "Yes"},
        {"BasicFee = 8, TaxRate = 20, AmountPaid = 1, ChequePaid = 1, CCardPaid = 1, Vouchers = 1, Vouchers2 "
         "= 1, Vouchers3 = 1, Vouchers4 = 1, Vouchers5 = 1",
         "Part"},
        {"BasicFee = 0", "Yes"}};
    QStringList expected;
    for (const auto &[change, word] : cases) {
        const int person = School::AddPerson("P", QString::number(expected.size()));
        ADO_Course_EnrollStudent(course, person);
        TestDatabase::Run(
            {u"UPDATE StudentsEnrolled SET " % change % u" WHERE ContactRef = " % SqlNumber(person)});
        expected += QString::number(expected.size()) % u' ' % word;
    }
    ListModel list;
    ADO_Course_ShowEnrolledStudents(course, list);
    QStringList words;
    for (int row = 0; row < list.Count(); ++row)
        words += list.At(row).text.left(1) % u' ' % list.At(row).subItems.value(0);
    words.sort();
    QCOMPARE(words, expected);
}

/// 33.335 shows as 33.34, and so does the discount that is left.
void TestEnrolment::ShowsRoundedBoxes()
{
    const int course = School::AddCourse("Pottery", 66.67);
    const int person = School::AddPerson("Ada", "Lovelace");
    ADO_Course_EnrollStudent(course, person);
    TestDatabase::Run({"UPDATE StudentsEnrolled SET Discount = 50, TaxRate = 17.5, ReceiptNo = NULL, "
                       "AmountPaid = 0.1, ChequePaid = 0.2, Vouchers5 = 1000"});
    const StudentRecord record = Shown(course, person);
    QCOMPARE(record.netFee, 33.34);
    QCOMPARE(record.hardDiscount, 33.33);
    QCOMPARE(record.totalDue, 39.17);
    QCOMPARE(record.paid, 1000.3);
    QCOMPARE(record.owed, -961.13);
    QCOMPARE(record.receipt, QString());
}

void TestEnrolment::WritesBackInOneStatement()
{
    const int course = School::AddCourse("Pottery", 100);
    const int person = School::AddPerson("Ada", "Lovelace");
    ADO_Course_EnrollStudent(course, person);
    const StatementLog log;
    QVERIFY(Course_UpdateStudent(
        course, person,
        {{1.5, 2, 1234567.25, {4, 5, 6, 7, 8}}, "a'b`c %1;", 100, 12.5, "Student's", "0'1", "VAT", 17.5}));
    QCOMPARE(log.Statements(),
             QStringList(u"UPDATE StudentsEnrolled SET AmountPaid = 1.5 ,BasicFee = 100 ,Discount = 12.5 ,"
                         u"Vouchers = 4 ,Vouchers2 = 5 ,Vouchers3 = 6 ,Vouchers4 = 7 ,Vouchers5 = 8 ,"
                         u"ChequePaid = 2 ,CCardPaid = 1234567.25 ,ConcessionType = 'Student''s' ,"
                         u"ReceiptNo = '0''1' ,Notes = 'a''b``c %1;' ,TaxName = 'VAT' ,TaxRate = 17.5 WHERE "
                         u"CourseRef = " %
                         SqlNumber(course) % u" AND ContactRef = " % SqlNumber(person)));
    QCOMPARE(Shown(course, person).payments.vouchers.back(), 8.0);
}

/// Each act is a row of its own with the voucher names of its day; a kind without a name has its column.
void TestEnrolment::LogsThePayment()
{
    SetSystemValue(SystemRef::VoucherName, "Learner's Card");
    const Fees::Payments act{1.5, 2, 0, {4, 0, 0, 0, 0.25}};
    {
        const StatementLog log;
        QVERIFY(Course_LogTransaction(7, 9, QDate(2026, 11, 22), "R'1", act, 3));
        QCOMPARE(
            log.Statements(),
            QStringList("INSERT INTO Transactions "
                        "(CourseRef,ContactRef,DateTrn,ReceiptNo,MoneyPaid,ChequePaid,CCardPaid,"
                        "CreditCardRef,VouchersPaid,Vouchers2Paid,Vouchers3Paid,Vouchers4Paid,Vouchers5Paid,"
                        "Vouchers1Label,Vouchers2Label,Vouchers3Label,Vouchers4Label,Vouchers5Label) VALUES "
                        "(7,9,20261122,'R''1',1.5,2,0,3,4,0,0,0,0.25,'Learner''s Card','','','','')"));
    }
    SetSystemValue(SystemRef::VoucherName, "Gift");
    QVERIFY(Course_LogTransaction(7, 9, QDate(2026, 11, 22), "R'1", act, 3));
    QCOMPARE(TestDatabase::Rows("SELECT ReceiptNo,Vouchers1Label FROM Transactions"),
             QStringList({"R'1|Learner's Card", "R'1|Gift"}));
}

/// The percentage that the amount raised carries on: the cheapest course gives its discount to the dearer
/// ones behind it. All students of a course go by the fee of the first.
void TestEnrolment::RaisedPercentageCarriesOnToTheNextCourse()
{
    const int ada = School::AddPerson("Ada", "Lovelace");
    const int bob = School::AddPerson("Bob", "Jones");
    QList<int> courses;
    for (const auto &[title, fee] : {std::pair{"A", 400.0}, {"B", 100.0}, {"C", 1000.0}, {"D", 10.0}}) {
        courses += School::AddCourse(QString::fromLatin1(title), fee);
        for (const int person : {ada, bob})
            ADO_Course_EnrollStudent(courses.last(), person);
    }
    TestDatabase::Run({"UPDATE StudentsEnrolled SET ConcessionType = 'Member''s'"});

    ScriptedDialogs dialogs;
    Progress progress;
    Progress *running = nullptr;
    Course_ChangePercentage("Nobody's", 10, 30, progress);
    const QString question =
        "8 Course(s) have Students on this concession.\nWould you like to update them to "
        "the new conecession value?";
    dialogs.Expect("Concession Update", question, Dialogs::Answer::No);
    Course_ChangePercentage("Member's", 10, 30, progress);
    dialogs.Expect("Concession Update", question, Dialogs::Answer::Yes);
    dialogs.Expect("Concession Update", "3 Course(s) where updated.");
    QStringList offered;
    Dialogs::Installed().selectCourses = [&](const QStringList &titles) {
        offered = titles;
        return QList<int>{0, 3, 5}; // one of A, one of B, one of C
    };
    Course_ChangePercentage("Member's", 10, 30, progress);
    QCOMPARE(offered.join(u' '), u"A A B B C C D D"_qs);
    QCOMPARE(Discounts(), u"A|10 A|10 B|30 B|30 C|30 C|30 D|0 D|0"_qs);

    // Stopped behind the first course of two.
    Progress stopped([&](int done, int) { done > 0 ? running->Cancel() : void(); }, 0);
    running = &stopped;
    dialogs.Expect("Concession Update", question, Dialogs::Answer::Yes);
    dialogs.Expect("Concession Update", "1 Course(s) where updated.");
    Dialogs::Installed().selectCourses = [](const QStringList &) { return QList<int>{0, 7}; };
    Course_ChangePercentage("Member's", 5, 0, stopped);
    QCOMPARE(Discounts(), u"A|5 A|5 B|30 B|30 C|30 C|30 D|0 D|0"_qs);
}

QTEST_GUILESS_MAIN(TestEnrolment)
#include "test_enrolment.moc"
