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

#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

using Dialogs::Answer;

namespace
{
const QString refusal = QStringLiteral("Amount tendered exceeds the amount due\nNo Action Taken");
const QString leaving = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");
const QString failure =
    QStringLiteral("A number of errors have been detected, please seek technical support.");

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
    void SavesWithoutAPayment();
    void Overrides();
    void ClampsWhatIsTyped_data();
    void ClampsWhatIsTyped();
    void FiltersKeysAndPastes_data();
    void FiltersKeysAndPastes();
    void AsksOnLeaving();
    void ShowsAMissingRow();
    void HidesWhatIsPaidOrUnnamed();
    void FollowsRights_data();
    void FollowsRights();
    void KeepsWorkWhenNothingIsStored();
    void KeepsWorkUnderALock();
    void KeepsWorkWhenOnlyTheLogFails();
    void KeepsWorkWhenOnlyTheTotalsFail();
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
    SetSystemValue(SystemRef::CurrencySymbol, QStringLiteral("£"));
    SetSystemValue(SystemRef::VoucherName, QStringLiteral("Learning Card"));
    SetSystemValue(SystemRef::VoucherName + 4, QStringLiteral("Gift"));
    School::SetTax(QStringLiteral("VAT"), QStringLiteral("20"));
    m_course = School::AddCourse(QStringLiteral("Pottery"), 100);
    m_person = School::AddPerson(QStringLiteral("Ada"), QStringLiteral("Lovelace"));
    School::AddCharacteristic(m_person, QStringLiteral("Student"), 25, 0);
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
    return TestDatabase::Value(QStringLiteral("SELECT AmountPaid FROM StudentsEnrolled")) % u' ' %
           TestDatabase::Value(QStringLiteral("SELECT ChequePaid FROM StudentsEnrolled")) % u' ' %
           TestDatabase::Value(QStringLiteral("SELECT Vouchers5 FROM StudentsEnrolled"));
}

QStringList TestStudentInfo::Log() const
{
    return TestDatabase::Rows(
        QStringLiteral("SELECT ReceiptNo,DateTrn,MoneyPaid,ChequePaid,CreditCardRef,"
                       "Vouchers5Paid,Vouchers5Label FROM Transactions ORDER BY MoneyPaid"));
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
    QCOMPARE(form->windowTitle(), QStringLiteral("Lovelace, Ada"));
    QCOMPARE(Find<QLabel>(*form, QStringLiteral("LblCourseFee"))->text(), QStringLiteral("Course Fee £"));
    QCOMPARE(BoxText(*form, QStringLiteral("TotalAmountDue")), QStringLiteral("90.00"));
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("10.5"));
    TypeInto(*form, QStringLiteral("ChequePayment"), QStringLiteral("20"));
    TypeInto(*form, QStringLiteral("VPayment_4"), QStringLiteral("5"));
    TypeInto(*form, QStringLiteral("Receipt"), QStringLiteral("R'1"));
    Press(*form, QStringLiteral("OkBtn"));
    QVERIFY(!form->isVisible());
    QCOMPARE(Totals(), QStringLiteral("10.5 20 5"));
    QCOMPARE(Log(), QStringList(QStringLiteral("R'1|20261122|10.5|20|0|5|Gift")));
    QCOMPARE(Word(), QStringLiteral("Part"));

    // The next payment is a row of its own and adds to the totals.
    form = Open();
    QCOMPARE(BoxText(*form, QStringLiteral("Paid")), QStringLiteral("35.50"));
    QCOMPARE(BoxText(*form, QStringLiteral("Payment")), QStringLiteral("0.00"));
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("54.50"));
    Press(*form, QStringLiteral("OkBtn"));
    QCOMPARE(Totals(), QStringLiteral("65 20 5"));
    QCOMPARE(Log().size(), 2);
    QCOMPARE(Word(), QStringLiteral("Yes"));
}

void TestStudentInfo::TakesWhatIsDueAndNoMore()
{
    auto form = Open();
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("45"));
    TypeInto(*form, QStringLiteral("ChequePayment"), QStringLiteral("45.01"));
    {
        ScriptedDialogs dialogs;
        dialogs.Expect(QStringLiteral("Warning"), refusal);
        const StatementLog log;
        Press(*form, QStringLiteral("OkBtn"));
        QCOMPARE(log.Statements(), QStringList());
    }
    QVERIFY(form->isVisible());
    QCOMPARE(BoxText(*form, QStringLiteral("Payment")), QStringLiteral("45.00"));
    QCOMPARE(BoxText(*form, QStringLiteral("Cash")), QStringLiteral("0.00"));
    TypeInto(*form, QStringLiteral("ChequePayment"), QStringLiteral("45"));
    Press(*form, QStringLiteral("OkBtn"));
    QCOMPARE(Totals(), QStringLiteral("45 45 0"));
}

void TestStudentInfo::SavesWithoutAPayment()
{
    auto form = Open();
    Find<QPlainTextEdit>(*form, QStringLiteral("Info"))->setPlainText(QStringLiteral("50% off; %1 'soon'"));
    Press(*form, QStringLiteral("OkBtn"));
    QVERIFY(Log().isEmpty());
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT Notes FROM StudentsEnrolled")),
             QStringLiteral("50% off; %1 'soon'"));
    QCOMPARE(Word(), QStringLiteral("No"));
}

/// A lower fee turns a payment into a credit, a corrected payment back into a debt. No payment is logged.
void TestStudentInfo::Overrides()
{
    TestDatabase::Run({QStringLiteral("UPDATE StudentsEnrolled SET AmountPaid = 60")});
    auto form = Open();
    QVERIFY(IsLocked(*form, QStringLiteral("Discount")) && IsLocked(*form, QStringLiteral("Cash")));
    Press(*form, QStringLiteral("EditBtn"));
    QVERIFY(!IsLocked(*form, QStringLiteral("Discount")) && !IsLocked(*form, QStringLiteral("TaxName")));
    QVERIFY(IsLocked(*form, QStringLiteral("BasicFee")) && IsLocked(*form, QStringLiteral("NetFee")));

    Enter(*form, QStringLiteral("HardDiscount"), QStringLiteral("60"));
    QCOMPARE(BoxText(*form, QStringLiteral("Discount")), QStringLiteral("60.00"));
    QCOMPARE(BoxText(*form, QStringLiteral("TotalAmountDue")), QStringLiteral("48.00"));
    QCOMPARE(BoxText(*form, QStringLiteral("Owed")), QStringLiteral("-12.00"));
    QVERIFY(!Find<QGroupBox>(*form, QStringLiteral("Frame1"))->isVisible());
    Enter(*form, QStringLiteral("Cash"), QStringLiteral("40"));
    QCOMPARE(BoxText(*form, QStringLiteral("Owed")), QStringLiteral("8.00"));
    QVERIFY(Find<QGroupBox>(*form, QStringLiteral("Frame1"))->isVisible());
    Enter(*form, QStringLiteral("Cash"), QStringLiteral("60"));
    Press(*form, QStringLiteral("EditBtn"));
    QVERIFY(IsLocked(*form, QStringLiteral("Discount")));
    Press(*form, QStringLiteral("OkBtn"));
    QCOMPARE(Word(), QStringLiteral("In Credit"));
    QVERIFY(Log().isEmpty());
    QCOMPARE(TestDatabase::Value(QStringLiteral("SELECT Discount FROM StudentsEnrolled")),
             QStringLiteral("60"));
}

void TestStudentInfo::ClampsWhatIsTyped_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("due");
    QTest::newRow("discount") << "Discount"
                              << "12.5"
                              << "12.50"
                              << "105.00";
    QTest::newRow("discount above 100") << "Discount"
                                        << "101"
                                        << "100"
                                        << "0.00";
    QTest::newRow("no discount") << "Discount"
                                 << ""
                                 << "0.00"
                                 << "120.00";
    QTest::newRow("discount to a third place") << "Discount"
                                               << "33.335"
                                               << "33.34"
                                               << "79.99";
    QTest::newRow("amount above the fee") << "HardDiscount"
                                          << "100.01"
                                          << "100.00"
                                          << "0.00";
    QTest::newRow("amount") << "HardDiscount"
                            << "33.33"
                            << "33.33"
                            << "80.00";
    QTest::newRow("tax") << "TaxRate"
                         << "17.5"
                         << "17.50"
                         << "88.13";
    QTest::newRow("tax above 100") << "TaxRate"
                                   << "1000"
                                   << "100"
                                   << "150.00";
    QTest::newRow("a point alone") << "TaxRate"
                                   << "."
                                   << "0.00"
                                   << "75.00";
}

void TestStudentInfo::ClampsWhatIsTyped()
{
    QFETCH(QString, box);
    QFETCH(QString, typed);
    auto form = Open();
    Press(*form, QStringLiteral("EditBtn"));
    Enter(*form, box, typed);
    QTEST(BoxText(*form, box), "shown");
    QTEST(BoxText(*form, QStringLiteral("TotalAmountDue")), "due");
}

void TestStudentInfo::FiltersKeysAndPastes_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<bool>("pasted");
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("taken");
    for (const bool pasted : {false, true}) {
        const auto row = [&](const char *name, const char *box, const char *given, const char *taken) {
            QTest::addRow("%s %s", pasted ? "pasted" : "typed", name)
                << QString::fromLatin1(box) << pasted << QString::fromLatin1(given)
                << QString::fromLatin1(taken);
        };
        row("nine digits", "Payment", "1234567890", "123456789");
        row("no minus", "Payment", "-12.50", "12.50");
        row("one point", "ChequePayment", "1.2.3", "1.23");
        row("words", "VPayment_0", "12 pounds 50p'; DROP", "1250");
        row("grouped", "Payment", "1,234.50", "1234.50");
        row("six digits", "Discount", "1234567.8", "123456.");
        row("a point behind six", "Discount", "123456.7", "123456.");
    }
}

void TestStudentInfo::FiltersKeysAndPastes()
{
    QFETCH(QString, box);
    QFETCH(bool, pasted);
    QFETCH(QString, given);
    auto form = Open();
    Press(*form, QStringLiteral("EditBtn"));
    auto *field = Find<QLineEdit>(*form, box);
    field->selectAll();
    if (pasted) {
        QGuiApplication::clipboard()->setText(given);
        field->paste();
    } else {
        QTest::keyClicks(field, given);
    }
    QTEST(field->text(), "taken");
}

void TestStudentInfo::AsksOnLeaving()
{
    auto form = Open();
    form->reject();
    QVERIFY(!form->isVisible());

    form = Open();
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("10"));
    ScriptedDialogs dialogs;
    Answer offered = Answer::None;
    const auto script = Dialogs::Installed().msgBox;
    Dialogs::Installed().msgBox = [&](const auto &text, const auto &title, auto buttons, auto icon,
                                      Answer byEnter) {
        offered = byEnter;
        return script(text, title, buttons, icon, byEnter);
    };
    dialogs.Expect(QStringLiteral("Warning"), leaving, Answer::Cancel);
    form->reject();
    QVERIFY(form->isVisible());
    QCOMPARE(offered, Answer::No);
    dialogs.Expect(QStringLiteral("Warning"), leaving, Answer::Yes);
    TypeInto(*form, QStringLiteral("ChequePayment"), QStringLiteral("99"));
    dialogs.Expect(QStringLiteral("Warning"), refusal);
    form->reject();
    QVERIFY(form->isVisible());
    dialogs.Expect(QStringLiteral("Warning"), leaving, Answer::No);
    form->reject();
    QVERIFY(!form->isVisible());
    QVERIFY(Log().isEmpty());

    form = Open();
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("10"));
    dialogs.Expect(QStringLiteral("Warning"), leaving, Answer::Yes);
    form->reject();
    QVERIFY(!form->isVisible());
    QCOMPARE(Log().size(), 1);
}

void TestStudentInfo::ShowsAMissingRow()
{
    ADO_Course_RemoveStudent(m_course, m_person);
    const auto form = Open();
    QCOMPARE(Find<QPlainTextEdit>(*form, QStringLiteral("Info"))->toPlainText(),
             QStringLiteral("This student as of current is not enrolled on this course!"));
    QCOMPARE(BoxText(*form, QStringLiteral("Owed")), QStringLiteral("0.00"));
    for (const char *hidden : {"Frame1", "OkBtn", "EditBtn"})
        QVERIFY(!Find<QWidget>(*form, QString::fromLatin1(hidden))->isVisible());
    QVERIFY(IsLocked(*form, QStringLiteral("Receipt")));
    form->reject();
    QVERIFY(!form->isVisible());
}

void TestStudentInfo::HidesWhatIsPaidOrUnnamed()
{
    auto form = Open();
    QVERIFY(Find<QWidget>(*form, QStringLiteral("Voucher_0"))->isVisible());
    for (const char *name : {"Voucher_1", "VPayment_1", "LblVouchers_1", "LblVouchersName_1"})
        QVERIFY(!Find<QWidget>(*form, QString::fromLatin1(name))->isVisible());
    // A kind that lost its name still counts as paid.
    TestDatabase::Run({QStringLiteral("UPDATE StudentsEnrolled SET Vouchers2 = 90")});
    form = Open();
    QCOMPARE(BoxText(*form, QStringLiteral("Paid")), QStringLiteral("90.00"));
    QVERIFY(!Find<QGroupBox>(*form, QStringLiteral("Frame1"))->isVisible());
}

void TestStudentInfo::FollowsRights_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QString>("state");
    // Frame1, Info, Receipt, OkBtn, EditBtn; then after EditBtn: Discount, HardDiscount, Concession, TaxName,
    // TaxRate, Cash, Voucher(0). 1 = open.
    QTest::newRow("all") << -1 << "11111 1111111";
    QTest::newRow("no payments") << 53 << "00001 1111111";
    QTest::newRow("no override") << 54 << "11110 0000000";
    QTest::newRow("no discount") << 32 << "11111 0001111";
    QTest::newRow("no tax") << 96 << "11111 1110011";
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
    state += Find<QWidget>(*form, QStringLiteral("Frame1"))->isVisible() ? u'1' : u'0';
    state += Find<QPlainTextEdit>(*form, QStringLiteral("Info"))->isReadOnly() ? u'0' : u'1';
    state += open("Receipt");
    state += Find<QWidget>(*form, QStringLiteral("OkBtn"))->isEnabled() ? u'1' : u'0';
    auto *edit = Find<QPushButton>(*form, QStringLiteral("EditBtn"));
    state += edit->isEnabled() ? u'1' : u'0';
    state += u' ';
    edit->click();
    for (const char *box :
         {"Discount", "HardDiscount", "Concession", "TaxName", "TaxRate", "Cash", "Voucher_0"})
        state += open(box);
    QTEST(state, "state");
    QVERIFY(!Find<QWidget>(*form, QStringLiteral("CCardPayment"))->isEnabled());
}

/// Neither record took the payment: it is still a payment to come, and counts once when it goes through.
void TestStudentInfo::KeepsWorkWhenNothingIsStored()
{
    auto form = Open();
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("30"));
    gConnection.Close();
    gConnection.OpenRecordset(QStringLiteral("SELECT * FROM Courses"));
    const QString source = gConnection.Errors().first().source;
    for (int press = 0; press < 2; ++press) {
        ScriptedDialogs dialogs;
        dialogs.Expect(source, failure);
        dialogs.Expect(source, failure);
        Press(*form, QStringLiteral("OkBtn"));
        QVERIFY(form->isVisible());
        QCOMPARE(BoxText(*form, QStringLiteral("Payment")), QStringLiteral("30.00"));
        QCOMPARE(BoxText(*form, QStringLiteral("Cash")), QStringLiteral("0.00"));
        QCOMPARE(Word(), QStringLiteral("No"));
    }
    QVERIFY(m_database->Reconnect());
    Press(*form, QStringLiteral("OkBtn"));
    QVERIFY(!form->isVisible());
    QCOMPARE(Totals(), QStringLiteral("30 0 0"));
    QCOMPARE(Log().size(), 1);
}

/// Another workstation writes for longer than the wait, on the file that both have open.
void TestStudentInfo::KeepsWorkUnderALock()
{
    if (TestDatabase::IsOnServer())
        QSKIP("A server locks rows, not the database.");
    QString text = m_database->ConnectionText();
    QVERIFY(gConnection.Open(text.replace(QStringLiteral(";PWD="), QStringLiteral(";LockWait=200;PWD="))));
    auto form = Open();
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("30"));
    {
        Connection other;
        QVERIFY(other.Open(m_database->ConnectionText()));
        QVERIFY(other.Execute(QStringLiteral("BEGIN IMMEDIATE")));
        QVERIFY(!gConnection.Execute(QStringLiteral("DELETE FROM Ref")));
        const QString source = gConnection.Errors().first().source;
        ScriptedDialogs dialogs;
        dialogs.Expect(source, failure);
        dialogs.Expect(source, failure);
        Press(*form, QStringLiteral("OkBtn"));
        QCOMPARE(BoxText(*form, QStringLiteral("Payment")), QStringLiteral("30.00"));
    }
    Press(*form, QStringLiteral("OkBtn"));
    QVERIFY(!form->isVisible());
    QCOMPARE(Totals(), QStringLiteral("30 0 0"));
    QCOMPARE(Log().size(), 1);
}

void TestStudentInfo::KeepsWorkWhenOnlyTheLogFails()
{
    auto form = Open();
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("30"));
    Break(QStringLiteral("Transactions"), true);
    gConnection.OpenRecordset(QStringLiteral("SELECT * FROM Transactions"));
    const QString source = gConnection.Errors().first().source;
    for (int press = 0; press < 2; ++press) {
        ScriptedDialogs dialogs;
        dialogs.Expect(source, failure);
        Press(*form, QStringLiteral("OkBtn"));
        QVERIFY(form->isVisible());
        QCOMPARE(Totals(), QStringLiteral("30 0 0"));
        QVERIFY(IsLocked(*form, QStringLiteral("Payment")));
    }
    Break(QStringLiteral("Transactions"), false);
    Press(*form, QStringLiteral("OkBtn"));
    QVERIFY(!form->isVisible());
    QCOMPARE(Totals(), QStringLiteral("30 0 0"));
    QCOMPARE(Log(), QStringList(QStringLiteral("0|20261122|30|0|0|0|Gift")));
}

void TestStudentInfo::KeepsWorkWhenOnlyTheTotalsFail()
{
    auto form = Open();
    TypeInto(*form, QStringLiteral("Payment"), QStringLiteral("90"));
    Break(QStringLiteral("StudentsEnrolled"), true);
    gConnection.OpenRecordset(QStringLiteral("SELECT * FROM StudentsEnrolled"));
    const QString source = gConnection.Errors().first().source;
    for (int press = 0; press < 2; ++press) {
        ScriptedDialogs dialogs;
        dialogs.Expect(source, failure);
        Press(*form, QStringLiteral("OkBtn"));
        QVERIFY(form->isVisible());
        QCOMPARE(BoxText(*form, QStringLiteral("Cash")), QStringLiteral("90.00"));
        QCOMPARE(BoxText(*form, QStringLiteral("Payment")), QStringLiteral("0.00"));
        QCOMPARE(Word(), QStringLiteral("No"));
    }
    Break(QStringLiteral("StudentsEnrolled"), false);
    Press(*form, QStringLiteral("OkBtn"));
    QCOMPARE(Totals(), QStringLiteral("90 0 0"));
    QCOMPARE(Log().size(), 1);
    QCOMPARE(Word(), QStringLiteral("Yes"));
}

/// From a fresh form: the first payment box has the focus and its amount selected, Tab leads on, Enter
/// finishes an amount, the mnemonic saves what is still being typed.
void TestStudentInfo::SavesByTheKeyboardAlone()
{
    const auto form = Open();
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    QCOMPARE(form->focusWidget()->objectName(), QStringLiteral("Payment"));
    QTest::keyClicks(form->focusWidget(), QStringLiteral("50"));
    QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
    QCOMPARE(form->focusWidget()->objectName(), QStringLiteral("ChequePayment"));
    QTest::keyClicks(form->focusWidget(), QStringLiteral("7"));
    QTest::keyClick(form.get(), Qt::Key_U, Qt::AltModifier);
    QTRY_VERIFY(!form->isVisible());
    QCOMPARE(Totals(), QStringLiteral("50 7 0"));
}

void TestStudentInfo::ChoosesCourses()
{
    ModalDriver driver;
    driver.Expect(QStringLiteral("frmPercent"), [](QDialog &form) {
        auto *list = Find<QTreeView>(form, QStringLiteral("CourseList"));
        list->setCurrentIndex(list->model()->index(2, 0));
        list->selectionModel()->select(list->model()->index(0, 0), QItemSelectionModel::Select);
        Press(form, QStringLiteral("OkBtn"));
    });
    driver.Expect(QStringLiteral("frmPercent"), [](QDialog &form) { form.reject(); });
    const QStringList titles{QStringLiteral("A"), QStringLiteral("A"), QStringLiteral("B")};
    QCOMPARE(frmPercent::Choose(titles), QList<int>({0, 2}));
    QCOMPARE(frmPercent::Choose(titles), QList<int>());
}

QTEST_MAIN(TestStudentInfo)
#include "test_studentinfo.moc"
