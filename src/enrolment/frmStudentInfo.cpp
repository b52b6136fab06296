#include "enrolment/frmStudentInfo.h"

#include "controls/ListModel.h"
#include "database/Security.h"
#include "enrolment/EnrolmentModule.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"
#include "platform/Clock.h"

namespace
{
void MakeTotal(MoneyField *field, CaptionLabel *label)
{
    LockFields(field, true);
    QFont font = field->font();
    font.setBold(true);
    label->setFont(font);
    field->setFont(font);
}

/// As high as a field, so that the rows of groups with a heading and without one share their lines.
void Heading(FormBuilder &form, const QString &name, const QString &text)
{
    QLabel *heading = form.Line(name, text);
    const int air = QLineEdit().sizeHint().height() - heading->sizeHint().height();
    heading->setContentsMargins(0, air / 2, 0, air - air / 2);
}

void CutToPercent(MoneyField *field)
{
    if (field->Value() > 100)
        field->setText(QStringLiteral("100"));
    if (field->Value() < 0)
        field->setText(QStringLiteral("0"));
}
} // namespace

frmStudentInfo::frmStudentInfo(int courseRef, ListModel &students, const QString &key, QWidget *parent)
    : FormDialog(QStringLiteral("frmStudentInfo"), students.At(students.Find(key)).text, parent)
    , m_courseRef(courseRef)
    , m_contactRef(KeyNumber(key))
    , m_students(students)
    , m_key(key)
{
    Build();
    SetLeaveHandlers();
    LockFee(true);
    LockFields(m_basicFee, true);
    LockFields(m_netFee, true);
    // Card payments need the card screen, which takes the card's details.
    m_payment.CreditCard()->setEnabled(false);

    m_previous.Show({});
    m_payment.Show({});
    m_newPayment->hide();
    m_ok->setEnabled(false);
    m_edit->setEnabled(false);
    ADO_Course_StudentInfo(*this, courseRef, m_contactRef);
    m_modified = new ModifiedMark(m_ok, this);
    m_modified->Watch(this);
}

void frmStudentInfo::Build()
{
    FormBuilder form(this);
    form.BeginColumns();
    BuildFee(form);
    form.NextColumn();
    BuildPreviousPayments(form);
    form.NextColumn();
    BuildNewPayment(form);
    form.EndColumns();
    m_receipt = form.Text(QStringLiteral("Receipt"), QStringLiteral("Receipt No:"));
    m_info = form.Notes(QStringLiteral("Info"), QStringLiteral("Notes:"));
    form.BeginButtons();
    m_ok = form.DefaultButton(QStringLiteral("OkBtn"), QStringLiteral("&Update"));
    m_exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("&Cancel"));
    m_edit = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Overide"));
    form.EndButtons();
    connect(m_ok, &QPushButton::clicked, this, [this] {
        if (Save())
            accept();
    });
    connect(m_exit, &QPushButton::clicked, this, &frmStudentInfo::reject);
    connect(m_edit, &QPushButton::clicked, this, &frmStudentInfo::ToggleEdit);
}

void frmStudentInfo::BuildFee(FormBuilder &form)
{
    form.BeginGroup(QStringLiteral("Fee"));
    m_basicFee = form.Money(QStringLiteral("BasicFee"), WithSymbol(QStringLiteral("Course Fee")));
    form.Label(QStringLiteral("LblCourseFee"));
    constexpr MoneyField::KeyRule percentKeys{6, 9};
    m_discount = form.Money(QStringLiteral("Discount"), WithSymbol(QStringLiteral("Discount")), percentKeys);
    form.Label(QStringLiteral("LblDiscount"));
    form.Beside();
    m_hardDiscount = form.Money(QStringLiteral("HardDiscount"), QStringLiteral("% ="));
    m_concession = form.Text(QStringLiteral("Concession"), QStringLiteral("Concession Type:"), 255);
    m_netFee = form.Money(QStringLiteral("NetFee"), WithSymbol(QStringLiteral("Net Course Fee")));
    form.Label(QStringLiteral("LblNetFee"));
    m_taxName = form.Text(QStringLiteral("TaxName"), QStringLiteral("Tax Type:"));
    m_taxRate = form.Money(QStringLiteral("TaxRate"), QStringLiteral("Tax Rate in %:"));
    m_totalDue = form.Money(QStringLiteral("TotalAmountDue"), WithSymbol(QStringLiteral("Course Fee Total")));
    MakeTotal(m_totalDue, form.Label(QStringLiteral("lblTotalDue")));
    form.Stretch();
    form.EndGroup();
}

void frmStudentInfo::BuildPreviousPayments(FormBuilder &form)
{
    form.BeginGroup(QStringLiteral("Account"));
    Heading(form, QStringLiteral("LblPreviousPayments"), QStringLiteral("Previous Payments:"));
    m_previous.Build(form,
                     {.boxes = {QStringLiteral("Cash"), QStringLiteral("Cheque"), QStringLiteral("CCard")},
                      .labels = {QStringLiteral("LblCashPayments"), QStringLiteral("LblCheque"),
                                 QStringLiteral("LblCCard")},
                      .voucher = QStringLiteral("Voucher"),
                      .voucherLabel = QStringLiteral("LblVouchers")});
    m_paid = form.Money(QStringLiteral("Paid"), WithSymbol(QStringLiteral("Total Paid")));
    MakeTotal(m_paid, form.Label(QStringLiteral("LblTotal")));
    m_owed = form.Money(QStringLiteral("Owed"), WithSymbol(QStringLiteral("Amount Owed")));
    MakeTotal(m_owed, form.Label(QStringLiteral("LblOwed")));
    form.Stretch();
    form.EndGroup();
}

void frmStudentInfo::BuildNewPayment(FormBuilder &form)
{
    m_newPayment = form.BeginGroup(QStringLiteral("New Payment"), QStringLiteral("Frame1"));
    Heading(form, QStringLiteral("LblMakePayment"), QStringLiteral("Make Payment:"));
    m_payment.Build(form, {.boxes = {QStringLiteral("Payment"), QStringLiteral("ChequePayment"),
                                     QStringLiteral("CCardPayment")},
                           .labels = {QStringLiteral("LblNewPayment_0"), QStringLiteral("LblNewPayment_1"),
                                      QStringLiteral("LblNewPayment_2")},
                           .voucher = QStringLiteral("VPayment"),
                           .voucherLabel = QStringLiteral("LblVouchersName")});
    form.Stretch();
    form.EndGroup();
}

void frmStudentInfo::SetLeaveHandlers()
{
    m_discount->SetLeaveHandler([this] { LeaveDiscount(); });
    m_hardDiscount->SetLeaveHandler([this] { LeaveHardDiscount(); });
    m_taxRate->SetLeaveHandler([this] { LeaveTaxRate(); });
    for (const PaymentBoxes *boxes : {&m_previous, &m_payment}) {
        for (MoneyField *box : boxes->All())
            box->SetLeaveHandler([this, box] {
                box->Normalise();
                Recalculate();
            });
    }
}

void frmStudentInfo::ShowStudent(const StudentRecord &record)
{
    m_shown = true;
    m_info->setPlainText(record.notes);
    m_receipt->setText(record.receipt);
    m_concession->setText(record.concession);
    m_taxName->setText(record.taxName);
    m_basicFee->SetValue(record.basicFee);
    m_discount->SetValue(record.discount);
    m_netFee->SetValue(record.netFee);
    m_hardDiscount->SetValue(record.hardDiscount);
    m_taxRate->SetValue(record.taxRate);
    m_previous.Show(record.payments);
    ShowTotals(record.totalDue, record.paid);
    ApplyRights();
}

void frmStudentInfo::ShowNotEnrolled()
{
    for (MoneyField *box : {m_basicFee, m_discount, m_netFee, m_hardDiscount, m_taxRate})
        box->SetValue(0);
    ShowTotals(0, 0);
    m_ok->hide();
    m_edit->hide();
    m_info->setPlainText(QStringLiteral("This student as of current is not enrolled on this course!"));
    LockFields(m_info, true);
    LockFields(m_receipt, true);
}

void frmStudentInfo::ShowTotals(double totalDue, double paid)
{
    m_totalDue->SetValue(totalDue);
    m_paid->SetValue(paid);
    m_owed->SetValue(Fees::Owed(totalDue, paid));
    // What was typed as a payment is never hidden: it would still count when the form is saved.
    const bool pays = m_owed->Value() > 0 || m_payment.Values().Total() > 0;
    m_newPayment->setVisible(m_shown && pays && UserMay(Right::TakePayments, Level::Full));
}

void frmStudentInfo::ApplyRights()
{
    const bool mayPay = UserMay(Right::TakePayments, Level::Full);
    LockFields(m_info, !mayPay);
    LockFields(m_receipt, !mayPay);
    m_ok->setEnabled(mayPay);
    m_edit->setEnabled(UserMay(Right::OverrideFees, Level::Full));
}

void frmStudentInfo::LockFee(bool locked)
{
    if (locked || UserMay(Right::Discounts, Level::Full)) {
        LockFields(m_discount, locked);
        LockFields(m_hardDiscount, locked);
        LockFields(m_concession, locked);
    }
    if (locked || UserMay(Right::Tax, Level::Full)) {
        LockFields(m_taxName, locked);
        LockFields(m_taxRate, locked);
    }
    for (MoneyField *box : m_previous.All())
        LockFields(box, locked);
}

void frmStudentInfo::ToggleEdit()
{
    LockFee(!m_discount->isReadOnly());
}

void frmStudentInfo::LeaveDiscount()
{
    m_discount->Normalise();
    CutToPercent(m_discount);
    if (const double fee = m_basicFee->Value(); fee > 0) {
        m_netFee->SetValue(Fees::NetFee(fee, m_discount->Value()));
        m_hardDiscount->SetValue(Fees::HardDiscount(fee, m_netFee->Value()));
    }
    Recalculate();
}

void frmStudentInfo::LeaveHardDiscount()
{
    const double fee = m_basicFee->Value();
    m_hardDiscount->Normalise();
    if (m_hardDiscount->Value() > fee)
        m_hardDiscount->SetValue(fee);
    if (m_hardDiscount->Value() < 0)
        m_hardDiscount->setText(QStringLiteral("0"));
    if (fee > 0) {
        m_netFee->SetValue(Fees::NetFeeAfterAmount(fee, m_hardDiscount->Value()));
        m_discount->SetValue(Fees::DiscountOfAmount(fee, m_hardDiscount->Value()));
    }
    Recalculate();
}

void frmStudentInfo::LeaveTaxRate()
{
    m_taxRate->Normalise();
    CutToPercent(m_taxRate);
    Recalculate();
}

void frmStudentInfo::Recalculate()
{
    if (m_receipt->isReadOnly())
        return;
    ShowTotals(Fees::TotalDue(m_netFee->Value(), m_taxRate->Value()), m_previous.Values().Total());
    ApplyRights();
}

bool frmStudentInfo::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); }, Dialogs::Answer::No);
}

bool frmStudentInfo::Save()
{
    if (!m_ok->isEnabled())
        return false;
    LeaveMoneyField(this);
    for (MoneyField *box : m_payment.All())
        box->Normalise();

    const Fees::Payments before = m_previous.Values();
    const Fees::Payments act = m_payment.Values();
    bool logged = true;
    if (act.Total() != 0) {
        if (!m_onlyToLog && !AddToRunningTotals(act))
            return false;
        logged = Course_LogTransaction(m_courseRef, m_contactRef, Clock::Today(), m_receipt->text(), act, 0);
    }
    const bool stored = StoreStudent();
    if (!logged || !stored) {
        KeepWork(logged, stored, before);
        return false;
    }
    m_modified->Clear();
    return true;
}

bool frmStudentInfo::AddToRunningTotals(const Fees::Payments &act)
{
    if (m_totalDue->Value() < Fees::Rounded(m_paid->Value() + act.Total())) {
        Dialogs::MsgBox(QStringLiteral("Amount tendered exceeds the amount due\nNo Action Taken"),
                        QStringLiteral("Warning"));
        return false;
    }
    const auto running = m_previous.All();
    const auto added = m_payment.All();
    for (size_t kind = 0; kind < running.size(); ++kind)
        running[kind]->SetValue(Fees::Rounded(running[kind]->Value() + added[kind]->Value()));
    Recalculate();
    return true;
}

bool frmStudentInfo::StoreStudent()
{
    const int row = m_students.Find(m_key);
    const QString oldWord = row < 0 ? QString() : m_students.At(row).subItems.value(0);
    if (row >= 0)
        m_students.SetSubItem(row, 0, Fees::ScreenStatusWord(m_paid->Value(), m_totalDue->Value()));
    const StudentUpdate student{m_previous.Values(), m_info->toPlainText(), m_basicFee->Value(),
                                m_discount->Value(), m_concession->text(),  m_receipt->text(),
                                m_taxName->text(),   m_taxRate->Value()};
    if (Course_UpdateStudent(m_courseRef, m_contactRef, student))
        return true;
    if (row >= 0)
        m_students.SetSubItem(row, 0, oldWord);
    return false;
}

// Nothing may count twice when the user presses Update again. A payment that is logged has moved to the
// running totals for good; one that is only in the totals still has to be logged, as it was made; one that
// reached neither is a payment still to come.
void frmStudentInfo::KeepWork(bool logged, bool stored, const Fees::Payments &before)
{
    if (logged) {
        m_payment.Show({});
        m_onlyToLog = false;
    } else if (stored) {
        m_onlyToLog = true;
        LockFields(m_newPayment, true);
    } else if (!m_onlyToLog) {
        m_previous.Show(before);
    }
    Recalculate();
}
