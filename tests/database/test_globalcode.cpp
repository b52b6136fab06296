#include "core/Session.h"
#include "database/GlobalCode.h"

#include <QLocale>
#include <QTest>

namespace
{
const QLocale british(QLocale::English, QLocale::UnitedKingdom);

/// Thousandths as money, by whole-number arithmetic alone.
QString MoneyOf(qint64 thousandths)
{
    const qint64 cents = (std::abs(thousandths) + 5) / 10;
    QString whole;
    QString left = QString::number(cents / 100);
    while (left.size() > 3) {
        whole = u',' % left.right(3) % whole;
        left.chop(3);
    }
    const QString text = left % whole % u'.' % QString::number(cents % 100).rightJustified(2, u'0');
    return thousandths < 0 && cents > 0 ? u'-' % text : text;
}

/// Rows of a text and the number that it stands for.
using Numbers = std::initializer_list<std::tuple<const char *, QString, double>>;
void AddRows(const Numbers &numbers)
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    for (const auto &[name, text, value] : numbers)
        QTest::newRow(name) << text << value;
}
} // namespace

class TestGlobalCode : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(british); }

    void AmountsAreRoundedAndGrouped()
    {
        const auto check = [](qint64 thousandths) {
            const QString expected = MoneyOf(thousandths);
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

    void ANumberIsFormatted_data()
    {
        AddRows({
            {"half that binary lies below", "1.01", 1.005},
            {"another", "2.68", 2.675},
            {"a sum of tenths", "0.30", 0.1 + 0.2},
            {"minus nothing", "0.00", -0.001},
            {"minus zero", "0.00", -0.0},
            {"tiny", "0.00", 1e-300},
            {"huge", "1,000,000,000,000,000,000,000.00", 1e21},
            {"no number", "0.00", qQNaN()},
            {"no end", "0.00", qInf()},
        });
    }
    void ANumberIsFormatted()
    {
        QFETCH(double, value);
        QTEST(FormatNumber(value), "text");
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

    void AFieldsTextIsANumber_data()
    {
        AddRows({
            {"empty", "", 0},
            {"blanks", "  12.5  ", 12.5},
            {"grouped", "1,234,567.895", 1234567.9},
            {"negative", "-1,000.005", -1000.01},
            {"a word", "ten", 0},
            {"a number and a word", "12.50 pounds", 12.5},
            {"two points", "1.2.3", 1.2},
            {"a leading nought, as callers write it", "012.5", 12.5},
            {"just a sign", "-", 0},
            {"just a point", ".", 0},
            {"other digits", "\u0661\u0662", 0},
        });
    }
    void AFieldsTextIsANumber()
    {
        QFETCH(QString, text);
        QTEST(CurrencyValue(text), "value");
    }

    void TheDigitsOfATextAreANumber_data()
    {
        AddRows({
            {"no digit", "abc.", 0},
            {"digits among text", "a1b2", 12},
            {"the first point counts", "1.2.3", 1.23},
            {"the sign is dropped", "-5", 5},
            {"a currency symbol and groups", "\u00a31,234.50", 1234.5},
        });
    }
    void TheDigitsOfATextAreANumber()
    {
        QFETCH(QString, text);
        QTEST(ParseNumber(text), "value");
    }

    void ANumberIsWrittenForSql_data()
    {
        AddRows({
            {"whole", "100", 100},
            {"shortest", "0.1", 0.1},
            {"a sum of tenths", "0.30000000000000004", 0.1 + 0.2},
            {"no groups", "-1234567.5", -1234567.5},
            {"no exponent", "123456789012", 123456789012},
            {"small, no exponent", "0.00001", 0.00001},
            {"no number is no statement", "0", qQNaN()},
        });
    }
    void ANumberIsWrittenForSql()
    {
        QFETCH(double, value);
        QTEST(SqlNumber(value), "text");
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
};

QTEST_GUILESS_MAIN(TestGlobalCode)
#include "test_globalcode.moc"
