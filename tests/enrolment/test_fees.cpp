#include "enrolment/Fees.h"
#include "support/Money.h"
#include "support/TestTable.h"

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

constexpr qint64 percentScale = 100 * 100;

Money Of(qint64 hundredths)
{
    return Money::OfHundredths(hundredths);
}
} // namespace

using Characteristics = std::vector<Fees::Characteristic>;
Q_DECLARE_METATYPE(Characteristics)

class TestFees final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom)); }

    /// Every fee, discount and tax rate of a grid against whole hundredths.
    void Grid()
    {
        int cases = 0;
        for (const qint64 fee :
             {0LL, 1LL, 99LL, 333LL, 3335LL, 6667LL, 10000LL, 12345LL, 99999LL, 1234567LL, 99999999LL}) {
            for (qint64 discount = 0; discount <= 15000; discount += 125) {
                const qint64 net = RoundedQuotient(fee * (percentScale - discount), percentScale);
                const Money netFee = Fees::NetFee(Of(fee), discount / 100.0);
                QCOMPARE(netFee.Text(), Hundredths(net));
                for (const qint64 tax : {0LL, 1LL, 500LL, 825LL, 1750LL, 2000LL, 3333LL, 10000LL}) {
                    const qint64 total = RoundedQuotient(net * (percentScale + tax), percentScale);
                    QCOMPARE(Fees::TotalDue(netFee, tax / 100.0).Text(), Hundredths(total));
                    ++cases;
                }
            }
        }
        QVERIFY(cases > 10000);
    }

    /// A discount typed as an amount, and the percentage it makes.
    void AmountGrid()
    {
        for (const qint64 fee : {1LL, 300LL, 9000LL, 12345LL, 99999LL}) {
            for (qint64 amount = 0; amount <= fee; amount += std::max<qint64>(1, fee / 97)) {
                QCOMPARE(Money::Of(Fees::DiscountOfAmount(Of(fee), Of(amount))).Text(),
                         Hundredths(RoundedQuotient(amount * percentScale, fee)));
            }
        }
        QCOMPARE(Fees::DiscountOfAmount(Of(14041), Of(2500)), 17.8); // 17.80499...: rounded once
        QCOMPARE(Fees::DiscountOfAmount({}, Of(1000)), 0.0);
    }

    void Amounts()
    {
        for (const auto &[units, hundredths] : {std::pair{0.455, 46LL},
                                                {33.33499, 3333LL},
                                                {-33.335, -3334LL},
                                                {1234567.25, 123456725LL},
                                                {1e300, 100000000000000LL}})
            QCOMPARE(Money::Of(units).Hundredths(), hundredths);
        Fees::Payments payments;
        payments[Fees::Cash] = Money::Of(0.1);
        payments[Fees::Cheque] = Money::Of(0.2);
        payments[Fees::FirstVoucher + 4] = Money::Of(50000.55);
        QCOMPARE(payments.Total().Units(), 50000.85);
    }

    void Choice_data()
    {
        const TestTable<double, Characteristics, double, QString> row{"fee", "has", "percent", "name"};
        const auto twenty = Fees::Characteristic{"Student", 20, 0};
        const auto amount = [](double value) { return Fees::Characteristic{"Member", 0, value}; };

        row("none", 100.0, {}, 0.0, "");
        row("no discount in it", 100.0, {{"Staff", 0, 0}}, 0.0, "");
        row("amount is more", 100.0, {twenty, amount(30)}, 30.0, "Member");
        row("tie, percentage first", 100.0, {twenty, amount(20)}, 20.0, "Student");
        row("tie, amount first", 100.0, {amount(20), twenty}, 20.0, "Member");
        row("tie but for the noise", 100.0, {{"Seven", 7, 0}, amount(7)}, 7.0, "Seven");
        row("percentage is more", 200.0, {amount(30), twenty}, 20.0, "Student");
        row("both in one", 100.0, {{"Both", 40, 30}}, 40.0, "Both");
        row("amount above the fee", 20.0, {amount(30)}, 100.0, "Member");
        row("second amount above the fee", 20.0, {{"First", 0, 40}, amount(30)}, 100.0, "Member");
        row("percentage is not cut", 100.0, {{"Odd", 150, 0}}, 150.0, "Odd");
        row("more than an uncut percentage", 10.0, {{"Odd", 150, 0}, amount(20)}, 100.0, "Member");
        row("no fee", 0.0, {twenty, amount(30)}, 0.0, "");
        row("fee below zero", -5.0, {twenty}, 0.0, "");
    }
    void Choice()
    {
        QFETCH(double, fee);
        QFETCH(Characteristics, has);
        const Fees::DiscountChoice choice = Fees::ChooseDiscount(fee, has);
        QTEST(choice.percent, "percent");
        QTEST(choice.name, "name");
    }

    /// One percentage carried through courses of different fees only ever rises, and 100 ends it.
    void RunningMaximum()
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

    void StatusWords_data()
    {
        const TestTable<double, double, double, double, QString, QString> row{"fee",  "discount", "tax",
                                                                              "paid", "inList",   "onScreen"};
        row("nothing paid", 100.0, 0.0, 0.0, 0.0, "No", "No");
        row("part", 100.0, 0.0, 0.0, 99.99, "Part", "Part");
        row("all", 100.0, 10.0, 20.0, 108.0, "Yes", "Yes");
        row("more", 100.0, 0.0, 0.0, 100.01, "In Credit", "In Credit");
        row("free", 0.0, 0.0, 20.0, 0.0, "Yes", "No");
        row("free by discount", 80.0, 100.0, 20.0, 0.0, "Yes", "No");
        row("free, yet paid", 0.0, 0.0, 0.0, 5.0, "In Credit", "In Credit");
        row("rounded up on the screen", 66.67, 50.0, 0.0, 33.34, "In Credit", "Yes");
        row("rounded down on the screen", 0.33, 1.0, 0.0, 0.33, "In Credit", "Yes");
        row("tax rounded down", 10.01, 0.0, 17.5, 11.76, "Part", "Yes");
        row("a third off", 90.0, 30.0 / 90 * 100, 0.0, 60.0, "Yes", "Yes");
        row("a third off to two places", 90.0, 33.33, 0.0, 60.0, "Part", "Yes");
        row("less than the screen rounds", 100.01, 0.01, 0.01, 100.01, "In Credit", "Yes");
        row("the last bits of binary fractions", 33.3, 10.0, 0.0, 29.97, "Yes", "Yes");
        row("all off but for the last bits", 0.7, 100.0, 0.0, 0.0, "Yes", "No");
        row("more than all off", 100.0, 150.0, 0.0, 0.0, "In Credit", "No");
    }
    void StatusWords()
    {
        QFETCH(double, fee);
        QFETCH(double, discount);
        QFETCH(double, tax);
        QFETCH(double, paid);
        QTEST(Fees::ListStatusWord(fee, discount, tax, paid), "inList");
        const Money due = Fees::TotalDue(Fees::NetFee(Money::Of(fee), discount), tax);
        QTEST(Fees::ScreenStatusWord(Money::Of(paid), due), "onScreen");
        if (paid == 0)
            QTEST(Fees::ListStatusWord(fee, discount, tax, std::nullopt), "inList");
    }
};

QTEST_GUILESS_MAIN(TestFees)
#include "test_fees.moc"
