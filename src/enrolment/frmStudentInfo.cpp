#include "enrolment/frmStudentInfo.h"

#include "controls/ListModel.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentVersion.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"

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

frmStudentInfo::frmStudentInfo(CourseRef courseRef, ListModel &students, const QString &key, QWidget *parent)
    : FormDialog(QStringLiteral("frmStudentInfo"), students.At(students.Find(key)).text, parent)
    , m_courseRef(courseRef)
    , m_contactRef(KeyNumber(key))
    , m_students(students)
    , m_key(key)
{
    Build();
    SetLeaveHandlers();
    LockFee(true);
    for (QWidget *field : std::initializer_list<QWidget *>{m_basicFee, m_netFee, m_info, m_receipt})
        LockFields(field, true);
    // Card payments need the card screen, which takes the card's details.
    m_payment.CreditCard()->setEnabled(false);

    m_payment.Show({});
    m_newPayment->hide();
    m_ok->setEnabled(false);
    m_edit->setEnabled(false);
    if (const ReadRow<StudentRecord> student = ADO_Course_StudentInfo(courseRef, m_contactRef))
        ShowStudent(*student);
    else if (student.IsMissing())
        ShowNotEnrolled();
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
    m_info->setPlainText(record.notes);
    m_receipt->setText(record.receipt);
    m_concession->setText(record.concession);
    m_taxName->setText(record.taxName);
    m_basicFee->SetValue(record.basicFee.Units());
    m_discount->SetValue(record.discount);
    m_netFee->SetValue(record.netFee.Units());
    m_hardDiscount->SetValue(record.HardDiscount().Units());
    m_taxRate->SetValue(record.taxRate);
    m_previous.Show(record.payments);
    m_read = OnScreen();
    ShowTotals(record.TotalDue(), record.Paid());
    ApplyRights();
}

void frmStudentInfo::ShowNotEnrolled()
{
    for (MoneyField *box : {m_basicFee, m_discount, m_netFee, m_hardDiscount, m_taxRate})
        box->SetValue(0);
    m_previous.Show({});
    ShowTotals({}, {});
    m_ok->hide();
    m_edit->hide();
    m_info->setPlainText(QStringLiteral("This student as of current is not enrolled on this course!"));
}

void frmStudentInfo::ShowTotals(Money totalDue, Money paid)
{
    const Money owed = totalDue - paid;
    m_totalDue->SetValue(totalDue.Units());
    m_paid->SetValue(paid.Units());
    m_owed->SetValue(owed.Units());
    // What was typed as a payment is never hidden: it would still count when the form is saved.
    const bool pays = owed > Money() || m_payment.Values().Total() > Money();
    m_newPayment->setVisible(m_read && pays && UserMay(Right::TakePayments, Level::Full));
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
    if (const Money fee = AmountIn(m_basicFee); fee > Money()) {
        const Money netFee = Fees::NetFee(fee, m_discount->Value());
        m_netFee->SetValue(netFee.Units());
        m_hardDiscount->SetValue((fee - netFee).Units());
    }
    Recalculate();
}

void frmStudentInfo::LeaveHardDiscount()
{
    const Money fee = AmountIn(m_basicFee);
    m_hardDiscount->Normalise();
    if (AmountIn(m_hardDiscount) > fee)
        m_hardDiscount->SetValue(fee.Units());
    if (m_hardDiscount->Value() < 0)
        m_hardDiscount->setText(QStringLiteral("0"));
    if (fee > Money()) {
        const Money discount = AmountIn(m_hardDiscount);
        m_netFee->SetValue((fee - discount).Units());
        m_discount->SetValue(Fees::DiscountOfAmount(fee, discount));
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
    ShowTotals(Fees::TotalDue(AmountIn(m_netFee), m_taxRate->Value()), m_previous.Values().Total());
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

    StudentRecord shown = *m_read;
    StudentRecord left = OnScreen();
    if (!Course_MeetStudent(m_courseRef, m_contactRef, shown, left))
        return false;
    const PaymentResult result = Course_Pay(m_courseRef, m_contactRef, {shown, left, m_payment.Values(), {}});
    if (result.outcome == PaymentOutcome::Refused)
        ShowNow(result);
    if (result.outcome != PaymentOutcome::Stored)
        return false;
    ShowWord(result.student);
    m_modified->Saved();
    return true;
}

StudentRecord frmStudentInfo::OnScreen() const
{
    return {m_previous.Values(), m_info->toPlainText(), AmountIn(m_basicFee),
            m_discount->Value(), m_concession->text(),  m_receipt->text(),
            m_taxName->text(),   m_taxRate->Value(),    AmountIn(m_netFee)};
}

// Shown twice, so that what the clerk has changed still counts as his when he tries again.
void frmStudentInfo::ShowNow(const PaymentResult &refused)
{
    ShowStudent(refused.stored);
    const std::optional<StudentRecord> read = m_read;
    ShowStudent(refused.student);
    m_read = read;
}

void frmStudentInfo::ShowWord(const StudentRecord &student)
{
    if (const int row = m_students.Find(m_key); row >= 0)
        m_students.SetSubItem(row, 0, Fees::ScreenStatusWord(student.Paid(), student.TotalDue()));
}
