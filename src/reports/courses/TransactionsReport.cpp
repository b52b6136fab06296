#include "reports/courses/TransactionsReport.h"

#include "database/statements/MiscODBC.h"
#include "database/statements/System.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "reports/contacts/ReportFields.h"
#include "reports/writer/HTMLscript.h"

#include <vector>

namespace
{
constexpr int moneyWidth = 80;

/// A column of money: its title, the column of the table, and its sum so far.
struct MoneyColumn {
    QString title;
    QString field;
    Money sum{};
};

std::vector<MoneyColumn> MoneyColumns()
{
    std::vector<MoneyColumn> columns = {{QStringLiteral("Cash"), QStringLiteral("MoneyPaid")},
                                        {QStringLiteral("Cheque"), QStringLiteral("ChequePaid")},
                                        {QStringLiteral("Credit"), QStringLiteral("CCardPaid")}};
    for (int kind = 0; kind < 5; ++kind) {
        const QString name = SystemValue(SystemRef::VoucherName + kind);
        const QString number = kind == 0 ? QString() : QString::number(kind + 1);
        if (!name.isEmpty())
            columns.push_back({name, QString(u"Vouchers" % number % u"Paid")});
    }
    return columns;
}

QString Statement(const ReportPeriod &period)
{
    QString sql = QStringLiteral(
        "SELECT Transactions.*, Designation.Title as ContactTitle, Contacts.Cust_Forename, "
        "Contacts.Cust_Surname, Contacts.Cust_Addr1, Contacts.Cust_Addr2, Contacts.Cust_Addr3, "
        "Contacts.Cust_Addr4, Contacts.Cust_City, Contacts.Cust_Postcode, Contacts.Cust_Country, "
        "Courses.Title As CourseTitle FROM (((((Transactions INNER JOIN Contacts ON "
        "Transactions.ContactRef = Contacts.ContactRef) INNER JOIN Courses ON Transactions.CourseRef = "
        "Courses.CourseRef) INNER JOIN City ON Contacts.Cust_City = City.City_ID) INNER JOIN Country ON "
        "Contacts.Cust_Country = Country.Country_ID) INNER JOIN Designation ON Contacts.Cust_Designation = "
        "Designation.Designation_ID) INNER JOIN County ON Contacts.Cust_County = County.County_ID");
    if (!period.noDates)
        sql += u" WHERE Transactions.DateTrn >= " % SqlNumber(period.from) %
               u" AND Transactions.DateTrn <= " % SqlNumber(period.to);
    return sql;
}

QString Title(const ReportPeriod &period)
{
    if (period.noDates)
        return QStringLiteral("Transactions");
    return u"Transactions,  " % IntToDateText(int(period.from)) % u" to " % IntToDateText(int(period.to));
}

void TextCell(int mode, int width, const QString &text)
{
    HTML_Cell(0, mode, Html::left, 0, Html::textSize, width, text);
}

void MoneyCell(int mode, const QString &text)
{
    HTML_Cell(0, mode, Html::right, 0, Html::textSize, moneyWidth, text);
}

void WriteTitles(const std::vector<MoneyColumn> &columns)
{
    HTML_RowStart();
    TextCell(Html::bold, 80, QStringLiteral("Date"));
    TextCell(Html::bold, 200, QStringLiteral("Contact"));
    TextCell(Html::bold, 250, QStringLiteral("Course"));
    for (const MoneyColumn &column : columns)
        MoneyCell(Html::bold, column.title);
    MoneyCell(Html::bold, QStringLiteral("Total"));
    HTML_RowEnd();
}

void WritePayment(const Recordset::Row &row, std::vector<MoneyColumn> &columns)
{
    HTML_RowStart();
    TextCell(Html::plain, 80, IntToDateText(static_cast<int>(row.Long(u"DateTrn"))));
    TextCell(Html::plain, 200,
             row.Text(u"ContactTitle") % u' ' % row.Text(u"Cust_Forename") % u' ' %
                 row.Text(u"Cust_Surname"));
    TextCell(Html::plain, 250, row.Text(u"CourseTitle"));
    Money total;
    for (MoneyColumn &column : columns) {
        const Money paid = Money::Of(row.Double(column.field));
        MoneyCell(Html::plain, MoneyText(paid));
        column.sum += paid;
        total += paid;
    }
    MoneyCell(Html::plain, MoneyText(total));
    HTML_RowEnd();
}

void WriteTotals(const std::vector<MoneyColumn> &columns)
{
    HTML_RowStart();
    for (const int width : {80, 200, 250})
        TextCell(Html::bold, width, QStringLiteral("&nbsp;"));
    Money total;
    for (const MoneyColumn &column : columns) {
        MoneyCell(Html::bold, MoneyText(column.sum));
        total += column.sum;
    }
    MoneyCell(Html::bold, MoneyText(total));
    HTML_RowEnd();
}

std::optional<int> WriteTable(const ReportPeriod &period, Progress &progress)
{
    const Recordset payments = OpenRecordset(Statement(period));
    if (payments.IsEmpty())
        return 0;
    std::vector<MoneyColumn> columns = MoneyColumns();
    HTML_Table();
    WriteTitles(columns);
    const auto held = WriteRecords(payments, progress, [&columns](const Recordset::Row &row) {
        WritePayment(row, columns);
        return true;
    });
    WriteTotals(columns);
    HTML_TableEnd();
    return held;
}
} // namespace

ReportResult Transactions_HTML(const ReportPeriod &period, Progress &progress)
{
    return WriteReport(
        "Transactions_HTML", Title(period), [&] { return WriteTable(period, progress); }, HtmlEnd::Capitals);
}
