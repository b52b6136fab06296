#include "contacts/Keyboard.h"
#include "controls/ListModel.h"
#include "core/Session.h"
#include "database/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "enrolment/frmPercent.h"
#include "enrolment/frmStudentInfo.h"
#include "forms/MoneyField.h"
#include "platform/Clock.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"

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
const QString failure = "A number of errors have been detected, please seek technical support.";

QString BoxText(QWidget &form, const QString &box)
{
    return Find<QLineEdit>(form, box)->text();
}

/// Types into an amount and leaves it by Enter.
void Enter(QWidget &form, const QString &box, const QString &amount)
{
    TypeInto(form, box, amount);
    QTest::keyClick(Find<QWidget>(form, box), Qt::Key_Return);
}

bool IsLocked(QWidget &form, const QString &box)
{
    return Find<QLineEdit>(form, box)->isReadOnly();
}

void SetRight(int right, QChar level)
{
    gUserRights[right] = level;
}
} // namespace

class TestStudentInfo final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void PaysInThreeWays();
    void TakesWhatIsDueAndNoMore();
    void Overrides();
    void ClampsWhatIsTyped_data();
    void ClampsWhatIsTyped();
    void FiltersTheDiscount();
    void AsksOnLeaving();
    void ShowsAMissingRow();
    void HidesWhatIsPaidOrUnnamed();
    void FollowsRights_data();
    void FollowsRights();
    void KeepsWork_data();
    void KeepsWork();
    void KeepsWorkUnderALock();
    void SavesByTheKeyboardAlone();
    void ChoosesCourses();

private:
    std::unique_ptr<frmStudentInfo> Open();
    QString Totals() const;
    QStringList Log() const;
    QString Word() const { return m_list.At(0).subItems.value(0); }
    /// Makes every write to a table fail until it is mended.
    void Break(const QString &table, bool broken);

    std::unique_ptr<TestDatabase> m_database;
    ListModel m_list;
    int m_course = 0;
    int m_person = 0;
};

/// One person on a course of 100 with 25 % off and 20 % tax: 90 are due.
void TestStudentInfo::init()
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

void TestStudentInfo::cleanup()
{
    m_database.reset();
    Clock::StopAt({});
}

std::unique_ptr<frmStudentInfo> TestStudentInfo::Open()
{
    auto form = std::make_unique<frmStudentInfo>(m_course, m_list, u'?' % SqlNumber(m_person));
    form->show();
    form->activateWindow();
    return form;
}

QString TestStudentInfo::Totals() const
{
    return TestDatabase::Value("SELECT AmountPaid FROM StudentsEnrolled") % u' ' %
           TestDatabase::Value("SELECT ChequePaid FROM StudentsEnrolled") % u' ' %
           TestDatabase::Value("SELECT Vouchers5 FROM StudentsEnrolled");
}

QStringList TestStudentInfo::Log() const
{
    return TestDatabase::Rows(
        "SELECT ReceiptNo,DateTrn,MoneyPaid,ChequePaid,CreditCardRef,Vouchers5Paid,Vouchers5Label FROM "
        "Transactions ORDER BY MoneyPaid");
}

void TestStudentInfo::Break(const QString &table, bool broken)
{
    const QString hidden = table % u"_hidden";
    TestDatabase::Run(
        {u"ALTER TABLE " % (broken ? table : hidden) % u" RENAME TO " % (broken ? hidden : table)});
}

void TestStudentInfo::PaysInThreeWays()
{
    auto form = Open();
    QCOMPARE(form->windowTitle(), u"Lovelace, Ada"_qs);
    QCOMPARE(Find<QLabel>(*form, "LblCourseFee")->text(), u"Course Fee £"_qs);
    QCOMPARE(BoxText(*form, "TotalAmountDue"), u"90.00"_qs);
    TypeInto(*form, "Payment", "10.5");
    TypeInto(*form, "ChequePayment", "20");
    TypeInto(*form, "VPayment_4", "5");
    TypeInto(*form, "Receipt", "R'1");
    Press(*form, "OkBtn");
    QVERIFY(!form->isVisible());
    QCOMPARE(Totals(), u"10.5 20 5"_qs);
    QCOMPARE(Log(), QStringList("R'1|20261122|10.5|20|0|5|Gift"));
    QCOMPARE(Word(), u"Part"_qs);

    // The next payment is a row of its own and adds to the totals.
    form = Open();
    QCOMPARE(BoxText(*form, "Paid"), u"35.50"_qs);
    QCOMPARE(BoxText(*form, "Payment"), u"0.00"_qs);
    TypeInto(*form, "Payment", "54.50");
    Press(*form, "OkBtn");
    QCOMPARE(Totals(), u"65 20 5"_qs);
    QCOMPARE(Log().size(), 2);
    QCOMPARE(Word(), u"Yes"_qs);

    // Without a payment the rest is saved, and nothing is logged.
    form = Open();
    Find<QPlainTextEdit>(*form, "Info")->setPlainText("50% off; %1 'soon'");
    Press(*form, "OkBtn");
    QCOMPARE(Log().size(), 2);
    QCOMPARE(TestDatabase::Value("SELECT Notes FROM StudentsEnrolled"), u"50% off; %1 'soon'"_qs);
}

void TestStudentInfo::TakesWhatIsDueAndNoMore()
{
    auto form = Open();
    TypeInto(*form, "Payment", "45");
    TypeInto(*form, "ChequePayment", "45.01");
    {
        ScriptedDialogs dialogs;
        dialogs.Expect("Warning", refusal);
        const StatementLog log;
        Press(*form, "OkBtn");
        QCOMPARE(log.Statements(), QStringList());
    }
    QVERIFY(form->isVisible());
    QCOMPARE(BoxText(*form, "Payment"), u"45.00"_qs);
    QCOMPARE(BoxText(*form, "Cash"), u"0.00"_qs);
    TypeInto(*form, "ChequePayment", "45");
    Press(*form, "OkBtn");
    QCOMPARE(Totals(), u"45 45 0"_qs);
}

/// A lower fee turns a payment into a credit, a corrected payment back into a debt. No payment is logged.
void TestStudentInfo::Overrides()
{
    TestDatabase::Run({"UPDATE StudentsEnrolled SET AmountPaid = 60"});
    auto form = Open();
    QVERIFY(IsLocked(*form, "Discount") && IsLocked(*form, "Cash"));
    Press(*form, "EditBtn");
    QVERIFY(!IsLocked(*form, "Discount") && !IsLocked(*form, "TaxName"));
    QVERIFY(IsLocked(*form, "BasicFee") && IsLocked(*form, "NetFee"));

    Enter(*form, "HardDiscount", "60");
    QCOMPARE(BoxText(*form, "Discount"), u"60.00"_qs);
    QCOMPARE(BoxText(*form, "TotalAmountDue"), u"48.00"_qs);
    QCOMPARE(BoxText(*form, "Owed"), u"-12.00"_qs);
    QVERIFY(!Find<QGroupBox>(*form, "Frame1")->isVisible());
    Enter(*form, "Cash", "40");
    QCOMPARE(BoxText(*form, "Owed"), u"8.00"_qs);
    QVERIFY(Find<QGroupBox>(*form, "Frame1")->isVisible());
    Enter(*form, "Cash", "60");
    Press(*form, "EditBtn");
    QVERIFY(IsLocked(*form, "Discount"));
    Press(*form, "OkBtn");
    QCOMPARE(Word(), u"In Credit"_qs);
    QVERIFY(Log().isEmpty());
    QCOMPARE(TestDatabase::Value("SELECT Discount FROM StudentsEnrolled"), u"60"_qs);
}

void TestStudentInfo::ClampsWhatIsTyped_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("due");
    QTest::newRow("discount") << u"Discount"_qs << u"12.5"_qs << u"12.50"_qs << u"105.00"_qs;
    QTest::newRow("discount above 100") << u"Discount"_qs << u"101"_qs << u"100"_qs << u"0.00"_qs;
    QTest::newRow("no discount") << u"Discount"_qs << u""_qs << u"0.00"_qs << u"120.00"_qs;
    QTest::newRow("discount to a third place")
        << u"Discount"_qs << u"33.335"_qs << u"33.34"_qs << u"79.99"_qs;
    QTest::newRow("amount above the fee") << u"HardDiscount"_qs << u"100.01"_qs << u"100.00"_qs << u"0.00"_qs;
    QTest::newRow("amount") << u"HardDiscount"_qs << u"33.33"_qs << u"33.33"_qs << u"80.00"_qs;
    QTest::newRow("tax") << u"TaxRate"_qs << u"17.5"_qs << u"17.50"_qs << u"88.13"_qs;
    QTest::newRow("tax above 100") << u"TaxRate"_qs << u"1000"_qs << u"100"_qs << u"150.00"_qs;
    QTest::newRow("a point alone") << u"TaxRate"_qs << u"."_qs << u"0.00"_qs << u"75.00"_qs;
}

void TestStudentInfo::ClampsWhatIsTyped()
{
    QFETCH(QString, box);
    QFETCH(QString, typed);
    auto form = Open();
    Press(*form, "EditBtn");
    Enter(*form, box, typed);
    QTEST(BoxText(*form, box), "shown");
    QTEST(BoxText(*form, "TotalAmountDue"), "due");
}

/// A discount takes six digits, yet a point where a seventh could not stand.
void TestStudentInfo::FiltersTheDiscount()
{
    auto form = Open();
    Press(*form, "EditBtn");
    TypeInto(*form, "Discount", "1234567.8");
    QCOMPARE(BoxText(*form, "Discount"), u"123456."_qs);
    TypeInto(*form, "Payment", "-1234567890");
    QCOMPARE(BoxText(*form, "Payment"), u"123456789"_qs);
}

void TestStudentInfo::AsksOnLeaving()
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

void TestStudentInfo::ShowsAMissingRow()
{
    ADO_Course_RemoveStudent(m_course, m_person);
    const auto form = Open();
    QCOMPARE(Find<QPlainTextEdit>(*form, "Info")->toPlainText(),
             u"This student as of current is not enrolled on this course!"_qs);
    QCOMPARE(BoxText(*form, "Owed"), u"0.00"_qs);
    for (const char *hidden : {"Frame1", "OkBtn", "EditBtn"})
        QVERIFY(!Find<QWidget>(*form, QString::fromLatin1(hidden))->isVisible());
    QVERIFY(IsLocked(*form, "Receipt"));
    form->reject();
    QVERIFY(!form->isVisible());
}

void TestStudentInfo::HidesWhatIsPaidOrUnnamed()
{
    auto form = Open();
    QVERIFY(Find<QWidget>(*form, "Voucher_0")->isVisible());
    for (const char *name : {"Voucher_1", "VPayment_1", "LblVouchers_1", "LblVouchersName_1"})
        QVERIFY(!Find<QWidget>(*form, QString::fromLatin1(name))->isVisible());
    // A kind that lost its name still counts as paid.
    TestDatabase::Run({"UPDATE StudentsEnrolled SET Vouchers2 = 90"});
    form = Open();
    QCOMPARE(BoxText(*form, "Paid"), u"90.00"_qs);
    QVERIFY(!Find<QGroupBox>(*form, "Frame1")->isVisible());
}

void TestStudentInfo::FollowsRights_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QString>("state");
    // Frame1, Info, Receipt, OkBtn, EditBtn; then after EditBtn: Discount, HardDiscount, Concession, TaxName,
    // TaxRate, Cash, Voucher(0). 1 = open.
    QTest::newRow("all") << -1 << u"11111 1111111"_qs;
    QTest::newRow("no payments") << 53 << u"00001 1111111"_qs;
    QTest::newRow("no override") << 54 << u"11110 0000000"_qs;
    QTest::newRow("no discount") << 32 << u"11111 0001111"_qs;
    QTest::newRow("no tax") << 96 << u"11111 1110011"_qs;
}

void TestStudentInfo::FollowsRights()
{
    QFETCH(int, right);
    if (right >= 0)
        SetRight(right, u'3');
    const auto form = Open();
    const auto open = [&](const char *name) {
        const auto *line = form->findChild<QLineEdit *>(QString::fromLatin1(name));
        return line && !line->isReadOnly() ? u'1' : u'0';
    };
    QString state;
    state += Find<QWidget>(*form, "Frame1")->isVisible() ? u'1' : u'0';
    state += Find<QPlainTextEdit>(*form, "Info")->isReadOnly() ? u'0' : u'1';
    state += open("Receipt");
    state += Find<QWidget>(*form, "OkBtn")->isEnabled() ? u'1' : u'0';
    auto *edit = Find<QPushButton>(*form, "EditBtn");
    state += edit->isEnabled() ? u'1' : u'0';
    state += u' ';
    edit->click();
    for (const char *box :
         {"Discount", "HardDiscount", "Concession", "TaxName", "TaxRate", "Cash", "Voucher_0"})
        state += open(box);
    QTEST(state, "state");
    QVERIFY(!Find<QWidget>(*form, "CCardPayment")->isEnabled());
}

void TestStudentInfo::KeepsWork_data()
{
    QTest::addColumn<QStringList>("broken");
    QTest::addColumn<QString>("payment");
    QTest::addColumn<QString>("cash");
    QTest::addColumn<bool>("locked");
    QTest::addColumn<QString>("word");
    const QString log = "Transactions";
    const QString totals = "StudentsEnrolled";
    QTest::newRow("nothing is stored")
        << QStringList{log, totals} << u"90.00"_qs << u"0.00"_qs << false << u"No"_qs;
    QTest::newRow("the log fails") << QStringList{log} << u"90.00"_qs << u"90.00"_qs << true << u"Yes"_qs;
    QTest::newRow("the totals fail") << QStringList{totals} << u"0.00"_qs << u"90.00"_qs << false << u"No"_qs;
}

/// However often Update is pressed while a record cannot be written, the payment counts once in each.
void TestStudentInfo::KeepsWork()
{
    QFETCH(QStringList, broken);
    auto form = Open();
    TypeInto(*form, "Payment", "90");
    for (const QString &table : broken)
        Break(table, true);
    gConnection.OpenRecordset("SELECT * FROM NoSuchTable");
    const QString source = gConnection.Errors().first().source;
    for (int press = 0; press < 2; ++press) {
        ScriptedDialogs dialogs;
        for (qsizetype i = 0; i < broken.size(); ++i)
            dialogs.Expect(source, failure);
        Press(*form, "OkBtn");
        QVERIFY(form->isVisible());
        QTEST(BoxText(*form, "Payment"), "payment");
        QTEST(BoxText(*form, "Cash"), "cash");
        QTEST(IsLocked(*form, "Payment"), "locked");
        QTEST(Word(), "word");
    }
    for (const QString &table : broken)
        Break(table, false);
    Press(*form, "OkBtn");
    QVERIFY(!form->isVisible());
    QCOMPARE(Totals(), u"90 0 0"_qs);
    QCOMPARE(Log(), QStringList("0|20261122|90|0|0|0|Gift"));
    QCOMPARE(Word(), u"Yes"_qs);
}

/// Another workstation writes for longer than the wait, on the file that both have open.
void TestStudentInfo::KeepsWorkUnderALock()
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
        QVERIFY(!gConnection.Execute("DELETE FROM Ref"));
        const QString source = gConnection.Errors().first().source;
        ScriptedDialogs dialogs;
        dialogs.Expect(source, failure);
        dialogs.Expect(source, failure);
        Press(*form, "OkBtn");
        QCOMPARE(BoxText(*form, "Payment"), u"30.00"_qs);
    }
    Press(*form, "OkBtn");
    QVERIFY(!form->isVisible());
    QCOMPARE(Totals(), u"30 0 0"_qs);
    QCOMPARE(Log().size(), 1);
}

/// From a fresh form: the first payment box has the focus and its amount selected, Tab leads on, Enter
/// finishes an amount, the mnemonic saves what is still being typed.
void TestStudentInfo::SavesByTheKeyboardAlone()
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
    QCOMPARE(Totals(), u"50 7 0"_qs);

    // A discount by override, a receipt and the rest of the payment.
    const auto next = Open();
    const Keyboard keys(*next);
    keys.Alt(Qt::Key_O);
    keys.TypeAt("Discount", "50");
    keys.Press(Qt::Key_Return);
    QCOMPARE(BoxText(*next, "Owed"), u"3.00"_qs);
    keys.TypeAt("VPayment_4", "3");
    keys.TypeAt("Receipt", "7");
    keys.Alt(Qt::Key_U);
    QTRY_VERIFY(!next->isVisible());
    QCOMPARE(Totals(), u"50 7 3"_qs);
    QCOMPARE(Word(), u"Yes"_qs);
}

void TestStudentInfo::ChoosesCourses()
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

QTEST_MAIN(TestStudentInfo)
#include "test_studentinfo.moc"
