#include "controls/ListModel.h"
#include "core/session/Progress.h"
#include "database/statements/MiscODBC.h"
#include "enrolment/EnrolmentModule.h"
#include "enrolment/School.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestTable.h"

#include <QTest>

namespace
{
StudentRecord Shown(CourseRef courseRef, ContactRef contactRef)
{
    return *ADO_Course_StudentInfo(courseRef, contactRef);
}

QStringList Enrolment(CourseRef courseRef)
{
    return TestDatabase::Rows(
        u"SELECT ContactRef,BasicFee,Discount,AmountPaid,ConcessionType,ReceiptNo,TaxName,"
        u"TaxRate FROM StudentsEnrolled WHERE CourseRef = " %
        SqlNumber(courseRef) % u" ORDER BY ContactRef");
}

QString Line(ContactRef contactRef, const QString &rest)
{
    return SqlNumber(contactRef) % u'|' % rest;
}

Fees::Payments Paid(double cash, double cheque, double creditCard, const std::array<double, 5> &vouchers)
{
    Fees::Payments paid{{Money::Of(cash), Money::Of(cheque), Money::Of(creditCard)}};
    for (size_t i = 0; i < vouchers.size(); ++i)
        paid[Fees::FirstVoucher + i] = Money::Of(vouchers[i]);
    return paid;
}

/// As the picker calls it, which knows everybody and what they have paid.
EnrolmentChange Enrol(CourseRef courseRef, const ListModel &list, Progress &progress, int limit = 0)
{
    KnownStudents known;
    const auto students = ADO_Course_PaidStudents(courseRef).value_or(std::vector<PaidStudent>());
    for (const PaidStudent &student : students)
        known.insert(student.key, student.paid);
    return ADO_Course_EnrollStudents(courseRef, limit, list, known, progress);
}

/// The key of a row that is not there, after the last one.
template <typename Ref>
Ref After(Ref last)
{
    return Ref(last.number + 1);
}

/// The list of the picker: people by their references.
void Select(ListModel &list, const QList<ContactRef> &people)
{
    std::vector<ListItem> items;
    for (const ContactRef person : people)
        items.push_back({u'?' % SqlNumber(person), {}});
    list.Fill(std::move(items));
}
} // namespace

class TestEnrolment final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        LoadSystemValues();
    }
    void cleanup() { m_database.reset(); }

    void EnrolsWithTheLargestDiscount()
    {
        const ContactRef person = School::AddPerson("Ada", "Lovelace");
        School::AddCharacteristic(person, "Student", 20, 0);
        School::AddCharacteristic(person, "Member's", 5, 30);
        for (const auto &[fee, rest] : {std::pair{100, "100|30|0|Member's|0||0"},
                                        {200, "200|20|0|Student|0||0"},
                                        {20, "20|100|0|Member's|0||0"}, // more than the fee
                                        {0, "0|0|0||0||0"}}) {
            const CourseRef course = School::AddCourse(QString::number(fee), fee);
            ADO_Course_EnrollStudent(course, person);
            QCOMPARE(Enrolment(course), QStringList(Line(person, rest)));
            QVERIFY(ADO_Course_IsEnrolled(course, person) && !ADO_Course_IsEnrolled(course, After(person)));
        }
    }

    void EnrolsExactlyTheList()
    {
        const CourseRef course = School::AddCourse("Pottery", 100);
        const ContactRef ada = School::AddPerson("Ada", "Lovelace");
        const ContactRef bob = School::AddPerson("Bob", "Jones");
        const ContactRef cleo = School::AddPerson("Cleo", "Adams");
        ListModel list;
        Select(list, {ada, bob});
        QCOMPARE(Enrol(course, list, m_progress), EnrolmentChange::Done);
        TestDatabase::Run(
            {u"UPDATE StudentsEnrolled SET AmountPaid = 40 WHERE ContactRef = " % SqlNumber(bob),
             u"UPDATE Courses SET Fee = 150 WHERE CourseRef = " % SqlNumber(course)});

        // Bob keeps his payment and his old fee, Ada goes, Cleo comes at the new fee.
        Select(list, {cleo, bob});
        QCOMPARE(Enrol(course, list, m_progress), EnrolmentChange::Done);
        QCOMPARE(Enrolment(course), QStringList({Line(bob, "100|0|40||0||0"), Line(cleo, "150|0|0||0||0")}));
        Select(list, {});
        QCOMPARE(Enrol(course, list, m_progress), EnrolmentChange::Done);
        QVERIFY(Enrolment(course).isEmpty());

        // A second workstation has deleted the course meanwhile.
        School::SetTax("Duty's", "17.505");
        ADO_Course_EnrollStudent(After(course), ada);
        QCOMPARE(Enrolment(After(course)), QStringList(Line(ada, "0|0|0||0|Duty's|17.51")));
    }

    void StopsAtTheFailingStudent()
    {
        const CourseRef course = School::AddCourse("Pottery", 100);
        const ContactRef ada = School::AddPerson("Ada", "Lovelace");
        ADO_Course_EnrollStudent(course, ada);
        TestDatabase::Run({"DROP TABLE ContactConcession"});
        ListModel list;
        Select(list, {ada, After(ada)});
        ScriptedDialogs dialogs;
        dialogs.ExpectFailure();
        QCOMPARE(Enrol(course, list, m_progress), EnrolmentChange::Failed);
        QCOMPARE(Enrolment(course).size(), 1);
    }

    /// Cancelled in the middle of the second student; the next run takes up the rest.
    void StopsAfterAWholeStudent()
    {
        const CourseRef course = School::AddCourse("Pottery", 100);
        ListModel list;
        Select(list, {ContactRef(2), ContactRef(3), ContactRef(4)});
        Progress progress;
        int inserts = 0;
        gConnection.ObserveStatements([&](const QString &sql) {
            if (sql.startsWith("INSERT") && ++inserts == 2)
                progress.Cancel();
        });
        QCOMPARE(Enrol(course, list, progress), EnrolmentChange::Failed);
        gConnection.ObserveStatements({});
        QCOMPARE(progress.Value(), 2);
        QCOMPARE(Enrolment(course).size(), 2);
        QCOMPARE(Enrol(course, list, m_progress), EnrolmentChange::Done);
        QCOMPARE(Enrolment(course).size(), 3);
    }

    void PlacesLeft_data()
    {
        const TestTable<QString, int, int> row{"limit", "enrolled", "left"};
        row("no limit", "0", 3, 0);
        row("limit not known", "NULL", 3, 0);
        row("limit below zero", "-4", 1, 0);
        row("empty course", "4", 0, 4);
        row("one place", "4", 3, 1);
        row("full", "3", 3, -3);
        row("more than full", "2", 3, -1);
    }
    void PlacesLeft()
    {
        QFETCH(QString, limit);
        QFETCH(int, enrolled);
        const CourseRef course = School::AddCourse("Pottery", 0);
        TestDatabase::Run({u"UPDATE Courses SET Limit = " % limit});
        for (int person = 2; person < enrolled + 2; ++person)
            ADO_Course_EnrollStudent(course, ContactRef(person));
        QTEST(ADO_Course_PlacesLeft(course), "left");
        QCOMPARE(ADO_Course_PlacesLeft(After(course)), 0);
    }

    void ListsStatusWords()
    {
        const CourseRef course = School::AddCourse("Pottery", 66.67);
        const QString ones = "AmountPaid = 1, ChequePaid = 1, CCardPaid = 1, Vouchers = 1, Vouchers2 = 1, "
                             "Vouchers3 = 1, Vouchers4 = 1, Vouchers5 = 1";
        const std::pair<QString, QString> cases[] = {
            {"Discount = 50", "No"},
            {"Discount = 50, AmountPaid = 33.34", "No"}, // the rest is NULL
            {u"Discount = 50, " %
                 QString(ones).replace("= 1", "= 0").replace("AmountPaid = 0", "AmountPaid = 33.34"),
             "In Credit"},
            {u"BasicFee = 8, " % ones, "Yes"},
            {u"BasicFee = 8, TaxRate = 20, " % ones, "Part"},
            {"BasicFee = 0", "Yes"},
        };
        QStringList expected;
        for (const auto &[change, word] : cases) {
            const ContactRef person = School::AddPerson("O'P", QString::number(expected.size()));
            ADO_Course_EnrollStudent(course, person);
            TestDatabase::Run(
                {u"UPDATE StudentsEnrolled SET " % change % u" WHERE ContactRef = " % SqlNumber(person)});
            expected += QString::number(expected.size()) % u' ' % word;
        }
        ListModel list;
        ADO_Course_ShowEnrolledStudents(course, list);
        QCOMPARE(list.At(0).text, u"0, O'P"_qs);
        QVERIFY(list.IsSelected(0));
        QStringList words;
        for (int row = 0; row < list.Count(); ++row)
            words += list.At(row).text.left(1) % u' ' % list.At(row).subItems.value(0);
        words.sort();
        QCOMPARE(words, expected);
    }

    /// Everything of a payment in its order: the card's row, the log with the voucher names of its day (a
    /// kind without a name has its column), the totals.
    void PaysInOrder()
    {
        SetSystemValue(SystemRef::VoucherName, "Learner's Card");
        Clock::StopAt(QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
        const CourseRef course = School::AddCourse("Pottery", 5000000);
        const ContactRef person = School::AddPerson("Ada", "Lovelace");
        ADO_Course_EnrollStudent(course, person);
        StudentRecord left = Shown(course, person);
        left.payments = Paid(0, 0, 1234567.25, {0, 5, 6, 7, 7.75});
        left.notes = "a'b`c %1;";
        left.basicFee = Money::Of(5000001);
        left.discount = 12.5;
        left.concession = "Student's";
        left.receipt = "0'1";
        left.taxName = "VAT";
        left.taxRate = 17.5;
        const QString card = u"UPDATE Courses SET Title = 'card' WHERE CourseRef = " % SqlNumber(course);
        const auto logCard = [&card] {
            Execute(card);
            return 3;
        };
        const StatementLog log;
        const StudentPayment payment{Shown(course, person), left, Paid(1.5, 2, 0, {4, 0, 0, 0, 0.25}),
                                     logCard};
        QCOMPARE(Course_Pay(course, person, payment).outcome, PaymentOutcome::Stored);
        const QString c = SqlNumber(course);
        const QString k = SqlNumber(person);
        const QString ofStudent = u" WHERE CourseRef = " % c % u" AND ContactRef = " % k;
        QCOMPARE(
            log.Statements().mid(1),
            QStringList(
                {u"SELECT * FROM StudentsEnrolled" % ofStudent, card,
                 u"INSERT INTO Transactions "
                 u"(CourseRef,ContactRef,DateTrn,ReceiptNo,MoneyPaid,ChequePaid,CCardPaid,"
                 u"CreditCardRef,VouchersPaid,Vouchers2Paid,Vouchers3Paid,Vouchers4Paid,Vouchers5Paid,"
                 u"Vouchers1Label,Vouchers2Label,Vouchers3Label,Vouchers4Label,Vouchers5Label) VALUES (" %
                     c % u',' % k % u",20261122,'0''1',1.5,2,0,3,4,0,0,0,0.25,'Learner''s Card','','','','')",
                 u"UPDATE StudentsEnrolled SET AmountPaid = 1.5 ,BasicFee = 5000001 ,Discount = 12.5 ,"
                 u"Vouchers = 4 ,Vouchers2 = 5 ,Vouchers3 = 6 ,Vouchers4 = 7 ,Vouchers5 = 8 ,"
                 u"ChequePaid = 2 ,CCardPaid = 1234567.25 ,ConcessionType = 'Student''s' ,"
                 u"ReceiptNo = '0''1' ,Notes = 'a''b``c %1;' ,TaxName = 'VAT' ,TaxRate = 17.5" %
                     ofStudent}));
        QCOMPARE(Shown(course, person).Paid().Units(), 1234600.75);
        Clock::StopAt({});
    }

    void KeepsWhatOthersStored_data()
    {
        const TestTable<double, double, double, double> row{"shown", "left", "stored", "kept"};
        row("nobody touched it", 50, 50, 50, 50);
        row("paid elsewhere", 50, 50, 70, 70);
        row("corrected elsewhere", 50, 50, 30, 30);
        row("corrected here", 50, 40, 50, 40);
        row("corrected here, paid elsewhere", 50, 40, 70, 60);
        row("raised here, paid elsewhere", 50, 60, 60, 70);
        row("the same correction", 50, 40, 40, 40);
        row("corrected on both, the later one holds", 50, 40, 30, 40);
    }
    /// A running total that the clerk was shown, as he left it, and as another workstation stored it since;
    /// he takes 5 more.
    void KeepsWhatOthersStored()
    {
        QFETCH(double, shown);
        QFETCH(double, left);
        QFETCH(double, stored);
        QFETCH(double, kept);
        const CourseRef course = School::AddCourse("Pottery", 100);
        const ContactRef person = School::AddPerson("Ada", "Lovelace");
        ADO_Course_EnrollStudent(course, person);
        TestDatabase::Run({u"UPDATE StudentsEnrolled SET Vouchers3 = " % SqlNumber(shown)});
        StudentPayment payment{Shown(course, person), Shown(course, person), Paid(0, 0, 0, {0, 0, 5}), {}};
        payment.left.payments[Fees::FirstVoucher + 2] = Money::Of(left);
        payment.left.taxName = "VAT";
        TestDatabase::Run({u"UPDATE StudentsEnrolled SET Notes = 'theirs', Discount = 10, Vouchers3 = " %
                           SqlNumber(stored)});
        QCOMPARE(Course_Pay(course, person, payment).outcome, PaymentOutcome::Stored);
        QCOMPARE(TestDatabase::Rows("SELECT Vouchers3,Notes,Discount,TaxName FROM StudentsEnrolled"),
                 QStringList(SqlNumber(kept + 5) % u"|theirs|10|VAT"));
        QCOMPARE(TestDatabase::Value("SELECT SUM(Vouchers3Paid) AS S FROM Transactions"), u"5"_qs);
    }

    /// Nobody goes unseen: not who was enrolled elsewhere since, not who has paid since. Nobody comes beyond
    /// the limit.
    void EnrolsBesideAnotherWorkstation()
    {
        const CourseRef course = School::AddCourse("Pottery", 100);
        const ContactRef two(2), three(3), four(4), five(5), six(6);
        ListModel list;
        Select(list, {two, three});
        Enrol(course, list, m_progress);
        KnownStudents known{{u"?2"_qs, Money()}, {u"?3"_qs, Money()}};
        ADO_Course_EnrollStudent(course, four);
        TestDatabase::Run({"UPDATE StudentsEnrolled SET ChequePaid = 0.01 WHERE ContactRef = 2"});
        const auto enrol = [&](const QList<ContactRef> &people, int limit) {
            Select(list, people);
            return ADO_Course_EnrollStudents(course, limit, list, known, m_progress);
        };
        QCOMPARE(enrol({three}, 0), EnrolmentChange::Paid);
        QCOMPARE(enrol({three, five}, 0), EnrolmentChange::Paid);
        QCOMPARE(Enrolment(course).size(), 3);
        known[u"?2"_qs] = Money::Of(0.01);
        QCOMPARE(enrol({five, six}, 2), EnrolmentChange::Full); // 4 is there, 5 comes
        QCOMPARE(enrol({}, 0), EnrolmentChange::Done);
        QCOMPARE(TestDatabase::Rows("SELECT ContactRef FROM StudentsEnrolled ORDER BY ContactRef"),
                 QStringList({"4", "5"}));
    }

    /// The percentage that the amount raised carries on: the cheapest course gives its discount to the dearer
    /// ones after it. All students of a course go by the fee of the first.
    void RaisedPercentageCarriesOnToTheNextCourse()
    {
        const ContactRef ada = School::AddPerson("Ada", "Lovelace");
        const ContactRef bob = School::AddPerson("Bob", "Jones");
        for (const auto &[title, fee] : {std::pair{"A", 400.0}, {"B", 100.0}, {"C", 1000.0}, {"D", 10.0}}) {
            const CourseRef course = School::AddCourse(title, fee);
            for (const ContactRef person : {ada, bob})
                ADO_Course_EnrollStudent(course, person);
        }
        TestDatabase::Run({"UPDATE StudentsEnrolled SET ConcessionType = 'Member''s'"});
        const auto discounts = [] {
            return TestDatabase::Rows("SELECT Courses.Title, StudentsEnrolled.Discount FROM Courses "
                                      "INNER JOIN StudentsEnrolled ON Courses.CourseRef = "
                                      "StudentsEnrolled.CourseRef ORDER BY Courses.Title")
                .join(u' ');
        };

        ScriptedDialogs dialogs;
        Course_ChangePercentage("Nobody's", 10, 30, m_progress);
        const QString question =
            "8 Course(s) have Students on this concession.\nWould you like to update them to "
            "the new conecession value?";
        dialogs.Expect("Concession Update", question, Dialogs::Answer::No);
        Course_ChangePercentage("Member's", 10, 30, m_progress);
        dialogs.Expect("Concession Update", question, Dialogs::Answer::Yes);
        dialogs.Expect("Concession Update", "3 Course(s) where updated.");
        QStringList offered;
        Dialogs::Installed().selectCourses = [&](const QStringList &titles) {
            offered = titles;
            return QList<int>{0, 3, 5}; // one of A, one of B, one of C
        };
        Course_ChangePercentage("Member's", 10, 30, m_progress);
        QCOMPARE(offered.join(u' '), u"A A B B C C D D"_qs);
        QCOMPARE(discounts(), u"A|10 A|10 B|30 B|30 C|30 C|30 D|0 D|0"_qs);

        // Stopped after the first course of two.
        Progress *running = nullptr;
        Progress stopped([&](int done, int) { done > 0 ? running->Cancel() : void(); }, 0);
        running = &stopped;
        dialogs.Expect("Concession Update", question, Dialogs::Answer::Yes);
        dialogs.Expect("Concession Update", "1 Course(s) where updated.");
        Dialogs::Installed().selectCourses = [](const QStringList &) { return QList<int>{0, 7}; };
        Course_ChangePercentage("Member's", 5, 0, stopped);
        QCOMPARE(discounts(), u"A|5 A|5 B|30 B|30 C|30 C|30 D|0 D|0"_qs);
    }

private:
    std::unique_ptr<TestDatabase> m_database;
    Progress m_progress;
};

QTEST_GUILESS_MAIN(TestEnrolment)
#include "test_enrolment.moc"
