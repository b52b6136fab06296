#pragma once

#include "database/values/Keys.h"
#include "enrolment/EnrolmentModule.h"
#include "enrolment/PaymentBoxes.h"
#include "forms/frames/FormDialog.h"

#include <optional>

class FormBuilder;
class ListModel;
class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

/// One student's fee and payments on one course. A payment is logged and added to the running totals at
/// once, when the user presses Update.
class frmStudentInfo final : public FormDialog
{
    Q_OBJECT

public:
    /// Opens on the row `key` of the opener's list, whose status word is kept up to date.
    frmStudentInfo(CourseRef courseRef, ListModel &students, const QString &key, QWidget *parent = nullptr);

protected:
    bool MayLeave() override;

private:
    void ShowStudent(const StudentRecord &record);
    void ShowNotEnrolled();

    void Build();
    void BuildFee(FormBuilder &form);
    void BuildPreviousPayments(FormBuilder &form);
    void BuildNewPayment(FormBuilder &form);
    void SetLeaveHandlers();
    void ShowTotals(Money totalDue, Money paid);

    void ApplyRights();
    void LockFee(bool locked);
    void ToggleEdit();
    void LeaveDiscount();
    void LeaveHardDiscount();
    void LeaveTaxRate();
    void Recalculate();

    bool Save();
    StudentRecord OnScreen() const;
    void ShowNow(const PaymentResult &refused);
    void ShowWord(const StudentRecord &student);

    CourseRef m_courseRef;
    ContactRef m_contactRef;
    ListModel &m_students;
    QString m_key;
    std::optional<StudentRecord> m_read; ///< the enrolment as the form was shown it

    MoneyField *m_basicFee = nullptr;
    MoneyField *m_discount = nullptr;
    MoneyField *m_hardDiscount = nullptr;
    MoneyField *m_netFee = nullptr;
    QLineEdit *m_concession = nullptr;
    QLineEdit *m_taxName = nullptr;
    MoneyField *m_taxRate = nullptr;
    MoneyField *m_totalDue = nullptr;
    PaymentBoxes m_previous;
    MoneyField *m_paid = nullptr;
    MoneyField *m_owed = nullptr;
    QGroupBox *m_newPayment = nullptr;
    PaymentBoxes m_payment;
    QPlainTextEdit *m_info = nullptr;
    QLineEdit *m_receipt = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_exit = nullptr;
    QPushButton *m_edit = nullptr;
    ModifiedMark *m_modified = nullptr;
};
