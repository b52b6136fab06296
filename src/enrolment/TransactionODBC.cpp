#include "enrolment/TransactionODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/statements/System.h"
#include "database/values/GlobalCode.h"

bool ADO_Course_Log_Transaction(CourseRef courseRef, ContactRef contactRef, int date,
                                const QString &receiptNo, const Fees::Payments &act,
                                CreditCardRef creditCardRef)
{
    const auto paid = [&act](size_t kind) { return SqlNumber(act[kind].Units()); };
    QString vouchers;
    QString labels;
    for (int i = 0; i < Fees::VoucherKinds; ++i) {
        vouchers += u',' % paid(Fees::FirstVoucher + static_cast<size_t>(i));
        labels += u",'" % DoubledApostrophes(SystemValue(SystemRef::VoucherName + i)) % u'\'';
    }
    return Reported("ADO_Course_Log_Transaction", false, [&] {
        Execute(u"INSERT INTO Transactions (CourseRef,ContactRef,DateTrn,ReceiptNo,MoneyPaid,ChequePaid,"
                u"CCardPaid,CreditCardRef,VouchersPaid,Vouchers2Paid,Vouchers3Paid,Vouchers4Paid,"
                u"Vouchers5Paid,Vouchers1Label,Vouchers2Label,Vouchers3Label,Vouchers4Label,Vouchers5Label) "
                u"VALUES (" %
                SqlNumber(courseRef) % u',' % SqlNumber(contactRef) % u',' % SqlNumber(date) % u",'" %
                receiptNo % u"'," % paid(Fees::Cash) % u',' % paid(Fees::Cheque) % u',' %
                paid(Fees::CreditCard) % u',' % SqlNumber(creditCardRef) % vouchers % labels % u')');
        return true;
    });
}
