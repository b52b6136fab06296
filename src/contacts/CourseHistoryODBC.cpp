#include "contacts/CourseHistoryODBC.h"

#include "database/GlobalCode.h"
#include "database/MiscODBC.h"

namespace
{
CourseHistoryEntry ReadEntry(const Recordset::Row &row)
{
    const auto amount = [&row](QStringView column) { return Fees::ColumnAmount(row.Text(column)); };
    CourseHistoryEntry entry;
    entry.title = row.Text(u"Title");
    entry.basicFee = amount(u"BasicFee");
    entry.discount = amount(u"Discount");
    entry.concession = row.Text(u"ConcessionType");
    entry.taxName = row.Text(u"TaxName");
    entry.taxRate = amount(u"TaxRate");
    entry.paid.cash = amount(u"AmountPaid");
    entry.paid.cheque = amount(u"ChequePaid");
    entry.paid.creditCard = amount(u"CCardPaid");
    entry.paid.vouchers = {amount(u"Vouchers"), amount(u"Vouchers2"), amount(u"Vouchers3"),
                           amount(u"Vouchers4"), amount(u"Vouchers5")};
    return entry;
}
} // namespace

std::vector<CourseHistoryEntry> ADO_Contact_CourseHistory(int contactRef)
{
    return Reported("ADO_Contact_CourseHistory", std::vector<CourseHistoryEntry>(), [&] {
        std::vector<CourseHistoryEntry> entries;
        const Recordset enrolments = OpenRecordset(
            u"SELECT StudentsEnrolled.*,Courses.Title FROM StudentsEnrolled INNER JOIN Courses ON "
            u"StudentsEnrolled.CourseRef = Courses.CourseRef WHERE StudentsEnrolled.ContactRef = " %
            SqlNumber(contactRef));
        for (const Recordset::Row row : enrolments)
            entries.push_back(ReadEntry(row));
        return entries;
    });
}
