#include "core/session/Session.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Clock.h"
#include "support/Money.h"

#include <QLocale>
#include <QTest>

namespace
{
const QLocale british(QLocale::English, QLocale::UnitedKingdom);

/// A text, and the number that it stands for.
using Numbers = std::initializer_list<std::pair<QString, double>>;
} // namespace

/// Numbers, texts, dates and times as the program shows and stores them.
class TestGlobalCode final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(british); }
    void init() { Clock::StopAt(QDateTime(QDate(2026, 11, 2), QTime(9, 5, 7))); }
    void cleanup() { Clock::StopAt({}); }

    void AmountsAreRoundedAndGrouped()
    {
        const auto check = [](qint64 thousandths) {
            const qint64 hundredths = (std::abs(thousandths) + 5) / 10;
            const QString expected = Hundredths(thousandths < 0 ? -hundredths : hundredths);
            const QString shown = FormatNumber(static_cast<double>(thousandths) / 1000, 2);
            if (shown != expected)
                QFAIL(qPrintable(QString::number(thousandths) % u"/1000: " % shown % u", not " % expected));
            if (FormatNumber(CurrencyValue(shown)) != shown)
                QFAIL(qPrintable(shown % u" does not read back"));
        };
        for (qint64 thousandths = -12000; thousandths <= 12000; ++thousandths)
            check(thousandths);
        for (const qint64 base : {99994LL, 999994LL, 9999989LL, 999999994LL, 123456789012345LL}) {
            for (qint64 step = 0; step < 12; ++step) {
                check(base + step);
                check(-base - step);
            }
        }
    }

    void ANumberIsFormatted()
    {
        for (const auto &[text, value] : Numbers{
                 {"1.01", 1.005}, // halves that binary lies below
                 {"2.68", 2.675},
                 {"0.30", 0.1 + 0.2},
                 {"0.00", -0.001},
                 {"0.00", -0.0},
                 {"0.00", 1e-300},
                 {"1,000,000,000,000,000,000,000.00", 1e21},
                 {"0.00", qQNaN()},
                 {"0.00", qInf()},
             })
            QCOMPARE(FormatNumber(value), text);
    }

    void OtherPlacesAndLocales()
    {
        QCOMPARE(FormatNumber(2.5, 0), u"3"_qs);
        QCOMPARE(FormatNumber(-2.5, 0), u"-3"_qs);
        QCOMPARE(FormatNumber(999.5, 0), u"1,000"_qs);
        QCOMPARE(FormatNumber(1234.56785, 4), u"1,234.5679"_qs);
        for (const auto *name : {"en_GB", "de_DE", "fr_FR", "de_CH", "C"}) {
            QLocale::setDefault(QLocale(QString::fromLatin1(name)));
            const double value = TextValue(FormatNumber(-1234567.89, 2));
            QLocale::setDefault(british);
            QVERIFY2(value == -1234567.89, name);
        }
    }

    void AFieldsTextIsANumber()
    {
        for (const auto &[text, value] : Numbers{{"", 0},
                                                 {"  12.5  ", 12.5},
                                                 {"1,234,567.895", 1234567.9},
                                                 {"-1,000.005", -1000.01},
                                                 {"ten", 0},
                                                 {"12.50 pounds", 12.5},
                                                 {"1.2.3", 1.2},
                                                 {"012.5", 12.5}, // with the nought of its callers
                                                 {"-", 0},
                                                 {".", 0},
                                                 {u"\u0661\u0662"_qs, 0}})
            QCOMPARE(CurrencyValue(text), value);
    }

    void TheDigitsOfATextAreANumber()
    {
        for (const auto &[text, value] :
             Numbers{{"abc.", 0}, {"a1b2", 12}, {"1.2.3", 1.23}, {"-5", 5}, {u"\u00a31,234.50"_qs, 1234.5}})
            QCOMPARE(ParseNumber(text), value);
    }

    void ANumberIsWrittenForSql()
    {
        for (const auto &[text, value] : Numbers{{"100", 100},
                                                 {"0.1", 0.1},
                                                 {"0.30000000000000004", 0.1 + 0.2},
                                                 {"-1234567.5", -1234567.5},
                                                 {"123456789012", 123456789012},
                                                 {"0.00001", 0.00001},
                                                 {"0", qQNaN()}})
            QCOMPARE(SqlNumber(value), text);
    }

    void TextIsMadeSafeForSql()
    {
        QCOMPARE(SqlSafeText("O'Neil`s ''`"), u"O''Neil``s ''''``"_qs);
        QCOMPARE(SqlSafeText("\"\u2019\\"), u"\"\u2019\\"_qs);
        QCOMPARE(FlattenLines("a\r\nb\nc\rd"), u"a, b c,d"_qs);
    }

    void ALabelIsParted()
    {
        const QList<std::tuple<QString, QString, QString>> labels{
            {"[A1] Smith, John", "A1", "Smith, John"},
            {"Smith, John", "", "Smith, John"},
            {"[] Smith", "", "[] Smith"},
            {"[A1 Smith", "", "[A1 Smith"},
            {"]A1[ Smith", "", "]A1[ Smith"},
            {"[A1]", "A1", ""},
            {"[A1]  x [y] ", "A1", "x [y]"},
            {"x [A1] y", "A1", "y"},
            {"", "", ""},
        };
        for (const auto &[text, reference, name] : labels) {
            const RefLabel label = SplitRefLabel(text);
            QVERIFY2(label.reference == reference && label.name == name, qPrintable(text));
        }
        gShowIDs = 0;
        QCOMPARE(FormatRefLabel("A1", "Smith"), u"Smith"_qs);
        gShowIDs = 1;
        QCOMPARE(FormatRefLabel("A1", "Smith"), u"[A1] Smith"_qs);
        QCOMPARE(FormatRefLabel("", "Smith"), u"Smith"_qs);
    }

    void EveryDateGoesThereAndBack()
    {
        for (QDate date(1999, 12, 1); date < QDate(2005, 1, 31); date = date.addDays(1)) {
            int value = DateToInt(date);
            QCOMPARE(value, date.toString(u"yyyyMMdd"_qs).toInt());
            QCOMPARE(IntToDate(value), date);
            QCOMPARE(IntToDateText(value), date.toString(u"dd/MM/yyyy"_qs));
            QCOMPARE(QDate(DateYear(value), DateMonth(value), DateDay(value)), date);
        }
        QVERIFY(!IntToDate(20260230).isValid());
    }

    void NoDateBecomesTodayInTheCallersVariable()
    {
        QCOMPARE(IntToDateText(0), u"02/11/2026"_qs);
        int value = 0;
        QCOMPARE(IntToDateText(value), u"02/11/2026"_qs);
        for (int (*part)(int &) : {DateYear, DateMonth, DateDay}) {
            QCOMPARE(value, 20261102);
            value = 0;
            QVERIFY(part(value) > 0);
        }
        QCOMPARE(value, 20261102);
        QCOMPARE(DateToInt(QDate()), 0);
        QVERIFY(!IntToDate(0).isValid());
        QCOMPARE(GeneralDateText(Clock::Now()), u"02/11/2026 09:05:07"_qs);
    }

    /// Reports print a time in their own way, with the hour rounded to even at its half.
    void EveryTimeGoesThereAndBackAndIsPrinted()
    {
        QCOMPARE(TimeToInt(QTime()), 0);
        QCOMPARE(LongToTimeText(1451), u"15:-49"_qs);
        QCOMPARE(LongToTimeText(950), u"10:-50"_qs);
        QCOMPARE(LongToTimeText(1850), u"18:50"_qs);
        for (int hour = 0; hour < 24; ++hour) {
            for (int minute = 0; minute < 60; ++minute) {
                const int value = TimeToInt(QTime(hour, minute));
                QCOMPARE(QTime(TimeHours(value), TimeMinutes(value)), QTime(hour, minute));
                const bool up = minute > 50 || (minute == 50 && hour % 2 == 1);
                QCOMPARE(LongToTimeText(value), up ? QString::asprintf("%02d:%d", hour + 1, minute - 100)
                                                   : QString::asprintf("%02d:%02d", hour, minute));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestGlobalCode)
#include "test_globalcode.moc"
