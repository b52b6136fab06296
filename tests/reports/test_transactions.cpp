#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/System.h"
#include "enrolment/TransactionODBC.h"
#include "reports/courses/TransactionsReport.h"
#include "reports/writer/HTMLscript.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace
{
Progress onward;

QString Output()
{
    QFile file(HTML_OutputPath());
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

/// The texts of all cells in order, "<b>" before the bold ones.
QStringList Cells()
{
    static const QRegularExpression cell(
        QStringLiteral("<td[^>]*>\n<p class=MsoNormal>(<b>)?<span "
                       "style='font-size:8.0pt;mso-bidi-font-size:12.0pt'>(.*?)</span>"));
    QStringList found;
    for (auto match = cell.globalMatch(Output()); match.hasNext();) {
        const QRegularExpressionMatch one = match.next();
        found.append(QString(one.captured(1) % one.captured(2)));
    }
    return found;
}

void Pay(CourseRef course, ContactRef contact, int date, const Fees::Payments &act)
{
    ADO_Course_Log_Transaction(course, contact, date, QStringLiteral("R1"), act, {});
}
} // namespace

class test_transactions final : public QObject
{
    Q_OBJECT

private slots:

    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        TestDatabase::Run({
            QStringLiteral("DELETE FROM System"),
            QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (2,'£')"),
            QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (11,'Luncheon')"),
            QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (14,'Travel')"),
            QStringLiteral("INSERT INTO Designation (Title, ReferenceID) VALUES ('Ms','')"),
            QStringLiteral("INSERT INTO Courses (Title, Fee) VALUES ('Welding & <b>Arc</b>',100)"),
        });
        const QString title =
            TestDatabase::Value(QStringLiteral("SELECT Designation_ID FROM Designation WHERE Title = 'Ms'"));
        TestDatabase::Run(
            {QString(u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Designation, Cust_City, "
                     u"Cust_County, Cust_Country) VALUES ('Zoë','O''Neil'," %
                     title % u",1,1,1)")});
        LoadSystemValues();
        gDocDir = m_database->Directory();
        gHeaderFile.clear();
        const CourseRef course(TestDatabase::Value(QStringLiteral("SELECT CourseRef FROM Courses")).toInt());
        const ContactRef person(
            TestDatabase::Value(QStringLiteral("SELECT ContactRef FROM Contacts WHERE Cust_Forename = 'Zoë'"))
                .toInt());
        Fees::Payments first{};
        first[Fees::Cash] = Money::Of(10.10);
        first[Fees::Cheque] = Money::Of(0.2);
        first[Fees::FirstVoucher + 1] = Money::Of(5);
        Pay(course, person, 20260131, first);
        Fees::Payments second{};
        second[Fees::Cash] = Money::Of(1234.5);
        second[Fees::CreditCard] = Money::Of(7);
        second[Fees::FirstVoucher + 4] = Money::Of(3);
        Pay(course, person, 20260201, second);
        Pay(course, ContactRef(999), 20260201, second);
    }
    void cleanup() { m_database.reset(); }

    void payments_of_a_period_with_totals()
    {
        QCOMPARE(Transactions_HTML({false, 20260101, 20261231}, onward).held, 2);
        const QString text = Output();
        QVERIFY(text.contains(QStringLiteral("<title>Transactions,  01/01/2026 to 31/12/2026</title>")));
        const QString expected =
            "<b>Date|<b>Contact|<b>Course|<b>Cash|<b>Cheque|<b>Credit|<b>Luncheon|<b>Travel|<b>Total|"
            "31/01/2026|Ms Zoë O'Neil|Welding & <b>Arc</b>|£10.10|£0.20|£0.00|£5.00|£0.00|£15.30|"
            "01/02/2026|Ms Zoë O'Neil|Welding & <b>Arc</b>|£1,234.50|£0.00|£7.00|£0.00|£3.00|£1,244.50|"
            "<b>&nbsp;|<b>&nbsp;|<b>&nbsp;|<b>£1,244.60|<b>£0.20|<b>£7.00|<b>£5.00|<b>£3.00|<b>£1,259.80";
        QCOMPARE(Cells().join('|'), expected);
        QVERIFY(text.endsWith(QStringLiteral("</TABLE>\n</BODY>\n</HTML>\n")));
    }

    void the_present_voucher_names_make_the_columns()
    {
        SetSystemValue(SystemRef::VoucherName + 1, QStringLiteral("Meals"));
        SetSystemValue(SystemRef::VoucherName + 4, {});
        QVERIFY(Transactions_HTML({true}, onward).written);
        const QString text = Output();
        QVERIFY(text.contains(u"Meals"));
        QVERIFY(!text.contains(u"Luncheon") && !text.contains(u"Travel"));
        // What was paid with a kind that has no name now is in no sum.
        QVERIFY(text.contains(QStringLiteral("£1,256.80")));
    }

    void period_and_title_data()
    {
        const TestTable<bool, int, int, QString, int> row{"noDates", "from", "to", "title", "payments"};
        row("period", false, 20260201, 20260228, "Transactions,  01/02/2026 to 28/02/2026", 1);
        row("both ends count", false, 20260131, 20260201, "Transactions,  31/01/2026 to 01/02/2026", 2);
        row("no dates", true, 20260201, 20260228, "Transactions", 2);
        // Only the head.
        row("nothing paid", false, 20200101, 20200131, "Transactions,  01/01/2020 to 31/01/2020", 0);
    }
    void period_and_title()
    {
        QFETCH(bool, noDates);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QString, title);
        const StatementLog log;
        Progress progress;
        QVERIFY(Transactions_HTML({noDates, from, to}, progress).written);
        const int records = progress.Maximum();
        const QString dates = u" WHERE Transactions.DateTrn >= " % QString::number(from) %
                              u" AND Transactions.DateTrn <= " % QString::number(to);
        QCOMPARE(log.Statements().size(), 1);
        QCOMPARE(log.Statements().first().endsWith(u"County.County_ID" % dates), !noDates);
        QCOMPARE(log.Statements().first().contains(u" WHERE "), !noDates);
        QVERIFY(Output().contains(QString(u"'>" % title % u"</span></b></p>")));
        QTEST(records, "payments");
        QCOMPARE(Output().contains(u"<table"), records > 0);
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_GUILESS_MAIN(test_transactions)
#include "test_transactions.moc"
