#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "enrolment/frmPercent.h"
#include "enrolment/frmStudentInfo.h"
#include "forms/fields/MoneyField.h"
#include "platform/desktop/Clock.h"
#include "reports/contacts/ContactHistory.h"
#include "support/ModalDriver.h"
#include "support/Money.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

using Dialogs::Answer;

namespace
{
const QString refusal = "Amount tendered exceeds the amount due\nNo Action Taken";
const QString leaving = "Some of the data has changed.\nOkay to update before exiting?";

bool IsLocked(QWidget &form, const QString &box)
{
    return Find<QLineEdit>(form, box)->isReadOnly();
}
} // namespace

class TestStudentInfo final : public QObject
{
    Q_OBJECT

private slots:
    /// One person on a course of 100 with 25 % off and 20 % tax: 90 are due.
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = RightsBlank();
        Clock::StopAt(QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
        LoadSystemValues();
        SetSystemValue(SystemRef::CurrencySymbol, "£");
        SetSystemValue(SystemRef::VoucherName, "Learning Card");
        SetSystemValue(SystemRef::VoucherName + 4, "Gift");
        School::SetTax("VAT", "20");
        m_course = School::AddCourse("Pottery", 100);
        m_person = School::AddPerson("Ada", "Lovelace");
        School::AddCharacteristic(m_person, "Student", 25, 0);
        ADO_Course_EnrollStudent(m_course, m_person);
        ADO_Course_ShowEnrolledStudents(m_course, m_list);
    }

    void cleanup()
    {
        m_database.reset();
        Clock::StopAt({});
    }

    void PaysInThreeWays()
    {
        auto form = Open();
        QCOMPARE(form->windowTitle(), u"Lovelace, Ada"_qs);
        QCOMPARE(Find<QLabel>(*form, "LblCourseFee")->text(), u"Course Fee £"_qs);
        QCOMPARE(TextIn(*form, "TotalAmountDue"), u"90.00"_qs);
        TypeInto(*form, "Payment", "10.5");
        TypeInto(*form, "ChequePayment", "20");
        TypeInto(*form, "VPayment_4", "5");
        TypeInto(*form, "Receipt", "R'1");
        Press(*form, "OkBtn");
        QVERIFY(!form->isVisible());
        QCOMPARE(Totals(), QStringList("10.5|20|5"));
        QCOMPARE(Log(), QStringList("R'1|20261122|10.5|20|0|5|Gift"));
        QCOMPARE(Word(), u"Part"_qs);

        // The next payment is a row of its own and adds to the totals.
        form = Open();
        QCOMPARE(TextIn(*form, "Paid"), u"35.50"_qs);
        QCOMPARE(TextIn(*form, "Payment"), u"0.00"_qs);
        TypeInto(*form, "Payment", "54.50");
        Press(*form, "OkBtn");
        QCOMPARE(Totals(), QStringList("65|20|5"));
        QCOMPARE(Log().size(), 2);
        QCOMPARE(Word(), u"Yes"_qs);

        // Without a payment the rest is saved, and nothing is logged.
        form = Open();
        Find<QPlainTextEdit>(*form, "Info")->setPlainText("50% off; %1 'soon'");
        Press(*form, "OkBtn");
        QCOMPARE(Log().size(), 2);
        QCOMPARE(TestDatabase::Value("SELECT Notes FROM StudentsEnrolled"), u"50% off; %1 'soon'"_qs);
    }

    void TakesWhatIsDueAndNoMore()
    {
        auto form = Open();
        TypeInto(*form, "Payment", "45");
        TypeInto(*form, "ChequePayment", "45.01");
        {
            ScriptedDialogs dialogs;
            dialogs.Expect("Warning", refusal);
            Press(*form, "OkBtn");
            QVERIFY(Log().isEmpty());
        }
        QVERIFY(form->isVisible());
        QCOMPARE(TextIn(*form, "Payment"), u"45.00"_qs);
        QCOMPARE(TextIn(*form, "Cash"), u"0.00"_qs);
        TypeInto(*form, "ChequePayment", "45");
        Press(*form, "OkBtn");
        QCOMPARE(Totals(), QStringList("45|45|0"));
    }

    /// A lower fee turns a payment into a credit, a corrected payment back into a debt. No payment is logged.
    void Overrides()
    {
        TestDatabase::Run({"UPDATE StudentsEnrolled SET AmountPaid = 60"});
        auto form = Open();
        QVERIFY(IsLocked(*form, "Discount") && IsLocked(*form, "Cash"));
        Press(*form, "EditBtn");
        QVERIFY(!IsLocked(*form, "Discount") && !IsLocked(*form, "TaxName"));
        QVERIFY(IsLocked(*form, "BasicFee") && IsLocked(*form, "NetFee"));

        Enter(*form, "HardDiscount", "60");
        QCOMPARE(TextIn(*form, "Discount"), u"60.00"_qs);
        QCOMPARE(TextIn(*form, "TotalAmountDue"), u"48.00"_qs);
        QCOMPARE(TextIn(*form, "Owed"), u"-12.00"_qs);
        QVERIFY(!Find<QGroupBox>(*form, "Frame1")->isVisible());
        Enter(*form, "Cash", "40");
        QCOMPARE(TextIn(*form, "Owed"), u"8.00"_qs);
        QVERIFY(Find<QGroupBox>(*form, "Frame1")->isVisible());
        Enter(*form, "Cash", "60");
        Press(*form, "EditBtn");
        QVERIFY(IsLocked(*form, "Discount"));
        Press(*form, "OkBtn");
        QCOMPARE(Word(), u"In Credit"_qs);
        QVERIFY(Log().isEmpty());
        QCOMPARE(TestDatabase::Value("SELECT Discount FROM StudentsEnrolled"), u"60"_qs);
    }

    void ClampsWhatIsTyped_data()
    {
        const TestTable<QString, QString, QString, QString> row{"box", "typed", "shown", "due"};
        row("discount", "Discount", "12.5", "12.50", "105.00");
        row("discount above 100", "Discount", "101", "100", "0.00");
        row("no discount", "Discount", "", "0.00", "120.00");
        row("discount to a third place", "Discount", "33.335", "33.34", "79.99");
        row("amount above the fee", "HardDiscount", "100.01", "100.00", "0.00");
        row("amount", "HardDiscount", "33.33", "33.33", "80.00");
        row("tax", "TaxRate", "17.5", "17.50", "88.13");
        row("tax above 100", "TaxRate", "1000", "100", "150.00");
        row("a point alone", "TaxRate", ".", "0.00", "75.00");
    }
    void ClampsWhatIsTyped()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        auto form = Open();
        Press(*form, "EditBtn");
        Enter(*form, box, typed);
        QTEST(TextIn(*form, box), "shown");
        QTEST(TextIn(*form, "TotalAmountDue"), "due");
    }

    /// A discount takes six digits, yet a point where a seventh could not be.
    void FiltersTheDiscount()
    {
        auto form = Open();
        Press(*form, "EditBtn");
        TypeInto(*form, "Discount", "1234567.8");
        QCOMPARE(TextIn(*form, "Discount"), u"123456."_qs);
        TypeInto(*form, "Payment", "-1234567890");
        QCOMPARE(TextIn(*form, "Payment"), u"123456789"_qs);
    }

    void AsksOnLeaving()
    {
        auto form = Open();
        form->reject();
        QVERIFY(!form->isVisible());

        form = Open();
        TypeInto(*form, "Payment", "10");
        ScriptedDialogs dialogs;
        dialogs.Expect("Warning", leaving, Answer::Cancel);
        form->reject();
        QVERIFY(form->isVisible());
        dialogs.Expect("Warning", leaving, Answer::Yes);
        TypeInto(*form, "ChequePayment", "99");
        dialogs.Expect("Warning", refusal);
        form->reject();
        QVERIFY(form->isVisible());
        dialogs.Expect("Warning", leaving, Answer::No);
        form->reject();
        QVERIFY(!form->isVisible());
        QVERIFY(Log().isEmpty());

        form = Open();
        TypeInto(*form, "Payment", "10");
        dialogs.Expect("Warning", leaving, Answer::Yes);
        form->reject();
        QVERIFY(!form->isVisible());
        QCOMPARE(Log().size(), 1);
    }

    /// A row that could not be read shows no amounts; one that is gone, none paid.
    void LocksWithoutARow()
    {
        auto form = Open();
        TypeInto(*form, "Payment", "90");
        Press(*form, "OkBtn");
        Break("StudentsEnrolled", true);
        ScriptedDialogs dialogs;
        dialogs.ExpectFailure();
        form = Open();
        Break("StudentsEnrolled", false);
        QCOMPARE(TextIn(*form, "Cash") % TextIn(*form, "Owed"), QString());
        QVERIFY(IsLocked(*form, "Receipt") && !Find<QWidget>(*form, "OkBtn")->isEnabled());

        ADO_Course_RemoveStudent(m_course, m_person);
        form = Open();
        QCOMPARE(Find<QPlainTextEdit>(*form, "Info")->toPlainText(),
                 u"This student as of current is not enrolled on this course!"_qs);
        QCOMPARE(TextIn(*form, "Owed"), u"0.00"_qs);
        for (const char *hidden : {"Frame1", "OkBtn", "EditBtn"})
            QVERIFY(!Find<QWidget>(*form, QString::fromLatin1(hidden))->isVisible());
        QVERIFY(IsLocked(*form, "Receipt"));
        form->reject();
        QVERIFY(!form->isVisible());
        QCOMPARE(Log().size(), 1); // the payment outlives the enrolment
    }

    void HidesWhatIsPaidOrUnnamed()
    {
        auto form = Open();
        QVERIFY(Find<QWidget>(*form, "Voucher_0")->isVisible());
        for (const char *name : {"Voucher_1", "VPayment_1", "LblVouchers_1", "LblVouchersName_1"})
            QVERIFY(!Find<QWidget>(*form, QString::fromLatin1(name))->isVisible());
        // A kind that lost its name still counts as paid.
        TestDatabase::Run({"UPDATE StudentsEnrolled SET Vouchers2 = 90"});
        form = Open();
        QCOMPARE(TextIn(*form, "Paid"), u"90.00"_qs);
        QVERIFY(!Find<QGroupBox>(*form, "Frame1")->isVisible());
    }

    void FollowsRights_data()
    {
        const TestTable<int, QString> row{"right", "state"};
        // Frame1, Info, Receipt, OkBtn, EditBtn; then after EditBtn: Discount, HardDiscount, Concession,
        // TaxName, TaxRate, Cash, Voucher(0). 1 = open.
        row("all", -1, "11111 1111111");
        row("no payments", 53, "00001 1111111");
        row("no override", 54, "11110 0000000");
        row("no discount", 32, "11111 0001111");
        row("no tax", 96, "11111 1110011");
    }
    void FollowsRights()
    {
        QFETCH(int, right);
        if (right >= 0)
            gUserRights[right] = u'3';
        const auto form = Open();
        const auto digit = [](bool set) { return QChar(set ? u'1' : u'0'); };
        auto *edit = Find<QPushButton>(*form, "EditBtn");
        QString state;
        state += digit(Find<QWidget>(*form, "Frame1")->isVisible());
        state += digit(!Find<QPlainTextEdit>(*form, "Info")->isReadOnly());
        state += digit(!IsLocked(*form, "Receipt"));
        state += digit(Find<QWidget>(*form, "OkBtn")->isEnabled());
        state += digit(edit->isEnabled());
        state += u' ';
        edit->click();
        for (const char *box :
             {"Discount", "HardDiscount", "Concession", "TaxName", "TaxRate", "Cash", "Voucher_0"})
            state += digit(!IsLocked(*form, box));
        QTEST(state, "state");
        QVERIFY(!Find<QWidget>(*form, "CCardPayment")->isEnabled());
    }

    void KeepsWork_data()
    {
        const TestTable<QString> row{"broken"};
        row("the log fails", "Transactions");
        row("the totals fail", "StudentsEnrolled");
    }
    /// However often Update is pressed while a record cannot be written, nothing is stored in the other
    /// either, and the payment is still to come.
    void KeepsWork()
    {
        QFETCH(QString, broken);
        auto form = Open();
        TypeInto(*form, "Payment", "90");
        Break(broken, true);
        for (int press = 0; press < 2; ++press) {
            ScriptedDialogs dialogs;
            dialogs.ExpectFailure();
            Press(*form, "OkBtn");
            QVERIFY(form->isVisible());
            QCOMPARE(TextIn(*form, "Payment"), u"90.00"_qs);
            QCOMPARE(TextIn(*form, "Cash"), u"0.00"_qs);
            QCOMPARE(Word(), u"No"_qs);
        }
        Break(broken, false);
        QVERIFY(Log().isEmpty());
        Press(*form, "OkBtn");
        QVERIFY(!form->isVisible());
        QCOMPARE(Totals(), QStringList("90|0|0"));
        QCOMPARE(Log(), QStringList("0|20261122|90|0|0|0|Gift"));
        QCOMPARE(Word(), u"Yes"_qs);
    }

    /// Another clerk takes 60 of the 90 due while the form is open.
    void PaysBesideAnotherClerk()
    {
        auto form = Open();
        Press(*form, "EditBtn");
        Enter(*form, "Cheque", "10");
        TypeInto(*form, "Payment", "25");
        Find<QPlainTextEdit>(*form, "Info")->setPlainText("mine");
        TestDatabase::Run({"UPDATE StudentsEnrolled SET AmountPaid = 60, TaxName = 'theirs'"});
        ScriptedDialogs dialogs;
        dialogs.Expect("Warning", refusal);
        Press(*form, "OkBtn");
        QVERIFY(form->isVisible() && Log().isEmpty());
        const auto shown = [&form] {
            QStringList texts;
            for (const char *box : {"Payment", "Cash", "Cheque", "Owed", "TaxName"})
                texts += TextIn(*form, QString::fromLatin1(box));
            return texts.join(u' ');
        };
        QCOMPARE(shown(), u"25.00 60.00 10.00 20.00 theirs"_qs);
        TypeInto(*form, "Payment", "20");
        Press(*form, "OkBtn");
        QVERIFY(!form->isVisible());
        QCOMPARE(Totals(), QStringList("80|10|0"));
        QCOMPARE(TestDatabase::Value("SELECT Notes FROM StudentsEnrolled"), u"mine"_qs);
        QCOMPARE(Word(), u"Yes"_qs);

        form = Open();
        Find<QPlainTextEdit>(*form, "Info")->setPlainText("later");
        TestDatabase::Run({"UPDATE StudentsEnrolled SET Notes = 'theirs', ReceiptNo = 'R1'"});
        dialogs.ExpectChanges("enrolment", {"Notes: later / theirs", "Receipt No: 0 / R1"}, std::nullopt);
        Press(*form, "OkBtn");
        QCOMPARE(Find<QPlainTextEdit>(*form, "Info")->toPlainText(), u"later"_qs);
        dialogs.ExpectChanges("enrolment", {"Notes: later / theirs", "Receipt No: 0 / R1"},
                              QStringList("Receipt No"));
        Press(*form, "OkBtn");
        QCOMPARE(TestDatabase::Rows("SELECT Notes, ReceiptNo FROM StudentsEnrolled"),
                 QStringList("later|R1"));

        form = Open();
        Find<QPlainTextEdit>(*form, "Info")->setPlainText("later still");
        ADO_Course_RemoveStudent(m_course, m_person);
        dialogs.Expect(
            "Warning",
            "Another user has removed this student from the course meanwhile.\nNothing was stored.");
        Press(*form, "OkBtn");
        QVERIFY(form->isVisible());
    }

    /// Fees, discounts and taxes of a grid, each paid to the hundredth by whole-number arithmetic: no screen,
    /// list or report says that anything else is due.
    void SaysTheSameEverywhere()
    {
        TestDatabase::Run({"DELETE FROM StudentsEnrolled"});
        const auto rounded = [](qint64 tenThousandths) { return (tenThousandths + 5000) / 10000; };
        QStringList due;
        for (const qint64 fee : {1, 1650, 3330, 14041, 9999999}) {
            for (const qint64 discount : {0, 1250, 3333, 5500, 9999}) {
                for (const qint64 tax : {0, 1750, 3333}) {
                    const qint64 total = rounded(rounded(fee * (10000 - discount)) * (10000 + tax));
                    const qint64 exact = fee * (10000 - discount) * (10000 + tax) - total * 100000000;
                    const CourseRef course = School::AddCourse(u"C"_qs, 0);
                    TestDatabase::Run(
                        {u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee,Discount,TaxRate,"
                         u"AmountPaid,ChequePaid,CCardPaid,Vouchers,Vouchers2,Vouchers3,Vouchers4,Vouchers5) "
                         u"VALUES (" %
                         SqlNumber(course) % u',' % SqlNumber(m_person) % u',' % SqlNumber(fee / 100.0) %
                         u',' % SqlNumber(discount / 100.0) % u',' % SqlNumber(tax / 100.0) % u',' %
                         SqlNumber(total / 100.0) % u",0,0,0,0,0,0,0)"});
                    ADO_Course_ShowEnrolledStudents(course, m_list);
                    QCOMPARE(Word(), total == 0 && exact > 0 ? u"No"_qs
                                     : exact > 0             ? u"Part"_qs
                                     : exact < 0             ? u"In Credit"_qs
                                                             : u"Yes"_qs);
                    frmStudentInfo form(course, m_list, m_list.At(0).key);
                    QCOMPARE(TextIn(form, "TotalAmountDue"), Hundredths(total));
                    QCOMPARE(TextIn(form, "Owed"), u"0.00"_qs);
                    due += Hundredths(total);
                }
            }
        }
        const auto courses = ContactHistory::CoursesAttended(m_person, true);
        QCOMPARE(courses.size(), static_cast<size_t>(due.size()));
        for (const ContactHistory::Attended &course : courses) {
            QCOMPARE(course.owing, Money());
            for (const ContactHistory::MoneyRow &row : course.money) {
                if (row.label == u"Amount Due:")
                    QVERIFY2(due.contains(row.value.mid(1)), qPrintable(row.value));
            }
        }
    }

    /// Another workstation writes for longer than the wait, on the file that both have open.
    void KeepsWorkUnderALock()
    {
        if (TestDatabase::IsOnServer())
            QSKIP("A server locks rows, not the database.");
        QString text = m_database->ConnectionText();
        QVERIFY(gConnection.Open(text.replace(";PWD=", ";LockWait=200;PWD=")));
        auto form = Open();
        TypeInto(*form, "Payment", "30");
        {
            Connection other;
            QVERIFY(other.Open(m_database->ConnectionText()));
            QVERIFY(other.Execute("BEGIN IMMEDIATE"));
            ScriptedDialogs dialogs;
            dialogs.ExpectFailure();
            Press(*form, "OkBtn");
            QCOMPARE(TextIn(*form, "Payment"), u"30.00"_qs);
        }
        Press(*form, "OkBtn");
        QVERIFY(!form->isVisible());
        QCOMPARE(Totals(), QStringList("30|0|0"));
        QCOMPARE(Log().size(), 1);
    }

    /// From a fresh form: the first payment box has the focus and its amount selected, Tab leads on, the
    /// mnemonic saves what is still being typed.
    void SavesByTheKeyboardAlone()
    {
        const auto form = Open();
        QVERIFY(QTest::qWaitForWindowActive(form.get()));
        QCOMPARE(form->focusWidget()->objectName(), u"Payment"_qs);
        QTest::keyClicks(form->focusWidget(), "50");
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
        QCOMPARE(form->focusWidget()->objectName(), u"ChequePayment"_qs);
        QTest::keyClicks(form->focusWidget(), "7");
        QTest::keyClick(form.get(), Qt::Key_U, Qt::AltModifier);
        QTRY_VERIFY(!form->isVisible());
        QCOMPARE(Totals(), QStringList("50|7|0"));
    }

    void ChoosesCourses()
    {
        ModalDriver driver;
        driver.Expect("frmPercent", [](QDialog &form) {
            auto *list = Find<QTreeView>(form, "CourseList");
            list->setCurrentIndex(list->model()->index(2, 0));
            list->selectionModel()->select(list->model()->index(0, 0), QItemSelectionModel::Select);
            Press(form, "OkBtn");
        });
        driver.Expect("frmPercent", [](QDialog &form) { form.reject(); });
        const QStringList titles{"A", "A", "B"};
        QCOMPARE(frmPercent::Choose(titles), QList<int>({0, 2}));
        QCOMPARE(frmPercent::Choose(titles), QList<int>());
    }

private:
    std::unique_ptr<frmStudentInfo> Open()
    {
        auto form = std::make_unique<frmStudentInfo>(m_course, m_list, u'?' % SqlNumber(m_person));
        form->show();
        form->activateWindow();
        return form;
    }

    QStringList Totals() const
    {
        return TestDatabase::Rows("SELECT AmountPaid,ChequePaid,Vouchers5 FROM StudentsEnrolled");
    }

    QStringList Log() const
    {
        return TestDatabase::Rows(
            "SELECT ReceiptNo,DateTrn,MoneyPaid,ChequePaid,CreditCardRef,Vouchers5Paid,Vouchers5Label FROM "
            "Transactions ORDER BY MoneyPaid");
    }
    QString Word() const { return m_list.At(0).subItems.value(0); }
    /// Makes every write to a table fail until it is mended.
    void Break(const QString &table, bool broken)
    {
        const QString hidden = table % u"_hidden";
        TestDatabase::Run(
            {u"ALTER TABLE " % (broken ? table : hidden) % u" RENAME TO " % (broken ? hidden : table)});
    }

    std::unique_ptr<TestDatabase> m_database;
    ListModel m_list;
    CourseRef m_course;
    ContactRef m_person;
};

QTEST_MAIN(TestStudentInfo)
#include "test_studentinfo.moc"
