#include "database/GlobalCode.h"
#include "enrolment/Fees.h"

#include <QLocale>
#include <QTest>

namespace
{
/// A quotient rounded half away from zero, in whole numbers only.
qint64 RoundedQuotient(qint64 dividend, qint64 divisor)
{
    const qint64 half = divisor / 2;
    return dividend < 0 ? -((-dividend + half) / divisor) : (dividend + half) / divisor;
}

/// A whole number of hundredths as money text, without the code under test.
QString Hundredths(qint64 value)
{
    const qint64 size = std::abs(value);
    QString whole = QString::number(size / 100);
    for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
        whole.insert(i, u',');
    return QString::fromLatin1(value < 0 ? "-" : "") % whole % u'.' %
           QString::number(size % 100).rightJustified(2, u'0');
}

constexpr qint64 percentScale = 100 * 100;

Fees::Payments Cash(double amount)
{
    Fees::Payments payments;
    payments.cash = amount;
    return payments;
}
} // namespace

class TestFees final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom)); }

    void Grid();
    void AmountGrid();
    void Rounding_data();
    void Rounding();
    void Paid();
    void Choice_data();
    void Choice();
    void RunningMaximum();
    void StatusWords_data();
    void StatusWords();
};

/// Every fee, discount and tax rate of a grid against whole hundredths.
void TestFees::Grid()
{
    int cases = 0;
    for (const qint64 fee :
         {0LL, 1LL, 99LL, 333LL, 3335LL, 6667LL, 10000LL, 12345LL, 99999LL, 1234567LL, 99999999LL}) {
        for (qint64 discount = 0; discount <= 15000; discount += 125) {
            const qint64 net = RoundedQuotient(fee * (percentScale - discount), percentScale);
            const double netFee = Fees::NetFee(fee / 100.0, discount / 100.0);
            QCOMPARE(Fees::MoneyText(netFee), Hundredths(net));
            QCOMPARE(Fees::MoneyText(Fees::HardDiscount(fee / 100.0, netFee)), Hundredths(fee - net));
            for (const qint64 tax : {0LL, 1LL, 500LL, 825LL, 1750LL, 2000LL, 3333LL, 10000LL}) {

                const qint64 total = RoundedQuotient(net * (percentScale + tax), percentScale);
                QCOMPARE(Fees::MoneyText(Fees::TotalDue(netFee, tax / 100.0)), Hundredths(total));
                QCOMPARE(Fees::MoneyText(Fees::Owed(total / 100.0, net / 100.0)), Hundredths(total - net));
                ++cases;
            }
        }
    }
    QVERIFY(cases > 10000);
}

/// A discount typed as an amount, and the percentage it makes.
void TestFees::AmountGrid()
{
    for (const qint64 fee : {1LL, 300LL, 9000LL, 12345LL, 99999LL}) {
        for (qint64 amount = 0; amount <= fee; amount += std::max<qint64>(1, fee / 97)) {
            QCOMPARE(Fees::MoneyText(Fees::NetFeeAfterAmount(fee / 100.0, amount / 100.0)),
                     Hundredths(fee - amount));
            QCOMPARE(Fees::MoneyText(Fees::DiscountOfAmount(fee / 100.0, amount / 100.0)),
                     Hundredths(RoundedQuotient(amount * percentScale, fee)));
        }
    }
    QCOMPARE(Fees::DiscountOfAmount(0, 10), 0.0);
}

void TestFees::Rounding_data()
{
    QTest::addColumn<double>("amount");
    QTest::addColumn<QString>("text");
    QTest::newRow("half a hundredth") << 33.335 << u"33.34"_qs;
    QTest::newRow("half a hundredth below zero") << -33.335 << u"-33.34"_qs;
    QTest::newRow("a product just below its half") << 1.005 * 100 / 100 << u"1.01"_qs;
    QTest::newRow("noise below a half") << 66.67 - 0.6667 * 50 << u"33.34"_qs;
    QTest::newRow("really below a half") << 33.33499 << u"33.33"_qs;
    QTest::newRow("grouped") << 1234567.5 << u"1,234,567.50"_qs;
    QTest::newRow("no minus zero") << -0.001 << u"0.00"_qs;
    QTest::newRow("a sum of dimes") << 0.1 + 0.2 << u"0.30"_qs;
}

void TestFees::Rounding()
{
    QFETCH(double, amount);
    QTEST(Fees::MoneyText(amount), "text");
    QCOMPARE(Fees::Rounded(amount), TextValue(Fees::MoneyText(amount)));
}

void TestFees::Paid()
{
    Fees::Payments payments;
    payments.cash = 0.1;
    payments.cheque = 0.2;
    payments.creditCard = 100;
    payments.vouchers = {1, 20, 300, 4000, 50000.55};
    QCOMPARE(payments.Total(), 54421.85);
    QCOMPARE(Cash(-0.0).Total(), 0.0);
}

using Characteristics = std::vector<Fees::Characteristic>;
Q_DECLARE_METATYPE(Characteristics)

void TestFees::Choice_data()
{
    QTest::addColumn<double>("fee");
    QTest::addColumn<Characteristics>("has");
    QTest::addColumn<double>("percent");
    QTest::addColumn<QString>("name");
    const auto twenty = Fees::Characteristic{"Student", 20, 0};
    const auto amount = [](double value) { return Fees::Characteristic{"Member", 0, value}; };

    QTest::newRow("none") << 100.0 << Characteristics{} << 0.0 << u""_qs;
    QTest::newRow("no discount in it") << 100.0 << Characteristics{{"Staff", 0, 0}} << 0.0 << u""_qs;
    QTest::newRow("amount is more") << 100.0 << Characteristics{twenty, amount(30)} << 30.0 << u"Member"_qs;
    QTest::newRow("tie, percentage first")
        << 100.0 << Characteristics{twenty, amount(20)} << 20.0 << u"Student"_qs;
    QTest::newRow("tie, amount first")
        << 100.0 << Characteristics{amount(20), twenty} << 20.0 << u"Member"_qs;
    QTest::newRow("tie but for the noise")
        << 100.0 << Characteristics{{"Seven", 7, 0}, amount(7)} << 7.0 << u"Seven"_qs;
    QTest::newRow("percentage is more")
        << 200.0 << Characteristics{amount(30), twenty} << 20.0 << u"Student"_qs;
    QTest::newRow("both in one") << 100.0 << Characteristics{{"Both", 40, 30}} << 40.0 << u"Both"_qs;
    QTest::newRow("amount above the fee") << 20.0 << Characteristics{amount(30)} << 100.0 << u"Member"_qs;
    QTest::newRow("second amount above the fee")
        << 20.0 << Characteristics{{"First", 0, 40}, amount(30)} << 100.0 << u"Member"_qs;
    QTest::newRow("percentage is not cut") << 100.0 << Characteristics{{"Odd", 150, 0}} << 150.0 << u"Odd"_qs;
    QTest::newRow("more than an uncut percentage")
        << 10.0 << Characteristics{{"Odd", 150, 0}, amount(20)} << 100.0 << u"Member"_qs;
    QTest::newRow("no fee") << 0.0 << Characteristics{twenty, amount(30)} << 0.0 << u""_qs;
    QTest::newRow("fee below zero") << -5.0 << Characteristics{twenty} << 0.0 << u""_qs;
}

void TestFees::Choice()
{
    QFETCH(double, fee);
    QFETCH(Characteristics, has);
    const Fees::DiscountChoice choice = Fees::ChooseDiscount(fee, has);
    QTEST(choice.percent, "percent");
    QTEST(choice.name, "name");
}

/// One percentage carried through courses of different fees only ever rises, and 100 ends it.
void TestFees::RunningMaximum()
{
    double percent = 10;
    const std::vector<std::pair<double, double>> steps = {{0, 10},  {400, 10}, {100, 30},  {200, 30},
                                                          {40, 75}, {20, 100}, {1000, 100}};
    for (const auto &[fee, expected] : steps) {
        percent = Fees::RaisedByAmount(percent, fee, 30);
        QCOMPARE(percent, expected);
    }
    QCOMPARE(Fees::RaisedByAmount(10, 100, 0), 10.0);
}

void TestFees::StatusWords_data()
{
    QTest::addColumn<double>("fee");
    QTest::addColumn<double>("discount");
    QTest::addColumn<double>("tax");
    QTest::addColumn<double>("paid");
    QTest::addColumn<QString>("inList");
    QTest::addColumn<QString>("onScreen");
    QTest::newRow("nothing paid") << 100.0 << 0.0 << 0.0 << 0.0 << u"No"_qs << u"No"_qs;
    QTest::newRow("part") << 100.0 << 0.0 << 0.0 << 99.99 << u"Part"_qs << u"Part"_qs;
    QTest::newRow("all") << 100.0 << 10.0 << 20.0 << 108.0 << u"Yes"_qs << u"Yes"_qs;
    QTest::newRow("more") << 100.0 << 0.0 << 0.0 << 100.01 << u"In Credit"_qs << u"In Credit"_qs;
    QTest::newRow("free") << 0.0 << 0.0 << 20.0 << 0.0 << u"Yes"_qs << u"No"_qs;
    QTest::newRow("free by discount") << 80.0 << 100.0 << 20.0 << 0.0 << u"Yes"_qs << u"No"_qs;
    QTest::newRow("free, yet paid") << 0.0 << 0.0 << 0.0 << 5.0 << u"In Credit"_qs << u"In Credit"_qs;
    QTest::newRow("rounded up on the screen")
        << 66.67 << 50.0 << 0.0 << 33.34 << u"In Credit"_qs << u"Yes"_qs;
    QTest::newRow("rounded down on the screen") << 0.33 << 1.0 << 0.0 << 0.33 << u"In Credit"_qs << u"Yes"_qs;
    QTest::newRow("tax rounded down") << 10.01 << 0.0 << 17.5 << 11.76 << u"Part"_qs << u"Yes"_qs;
    QTest::newRow("a third off") << 90.0 << 30.0 / 90 * 100 << 0.0 << 60.0 << u"Yes"_qs << u"Yes"_qs;
    QTest::newRow("more than all off") << 100.0 << 150.0 << 0.0 << 0.0 << u"In Credit"_qs << u"No"_qs;
}

void TestFees::StatusWords()
{
    QFETCH(double, fee);
    QFETCH(double, discount);
    QFETCH(double, tax);
    QFETCH(double, paid);
    QTEST(Fees::ListStatusWord(fee, discount, tax, paid), "inList");
    const double due = Fees::TotalDue(Fees::NetFee(fee, discount), tax);
    QTEST(Fees::ScreenStatusWord(paid, due), "onScreen");
    if (paid == 0)
        QTEST(Fees::ListStatusWord(fee, discount, tax, std::nullopt), "inList");
}

QTEST_GUILESS_MAIN(TestFees)
#include "test_fees.moc"
