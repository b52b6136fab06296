#include "core/Session.h"
#include "database/GlobalCode.h"

#include <QLocale>
#include <QTest>

class TestGlobalCode : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom)); }

    void AmountsAreRoundedAndGrouped();
    void ANumberIsFormatted_data();
    void ANumberIsFormatted();
    void AFormattedNumberReadsBackInAnyLocale_data();
    void AFormattedNumberReadsBackInAnyLocale();
    void AFieldsTextIsANumber_data();
    void AFieldsTextIsANumber();
    void TheDigitsOfATextAreANumber_data();
    void TheDigitsOfATextAreANumber();
    void TextIsMadeSafeForSql_data();
    void TextIsMadeSafeForSql();
    void ANumberIsWrittenForSql_data();
    void ANumberIsWrittenForSql();
    void ALabelIsParted_data();
    void ALabelIsParted();
    void AReferenceIsShownWhereItIsWanted();
    void LinesAreFlattened() { QCOMPARE(FlattenLines("a\r\nb\nc\rd"), QStringLiteral("a, b c,d")); }
};

namespace
{
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
} // namespace

void TestGlobalCode::AmountsAreRoundedAndGrouped()
{
    const auto check = [](qint64 thousandths) {
        const QString expected = MoneyOf(thousandths);
        const QString shown = FormatNumber(static_cast<double>(thousandths) / 1000, 2);
        if (shown != expected)
            QFAIL(qPrintable(QString::number(thousandths) % u"/1000: " % shown % u", not " % expected));
        const double value = CurrencyValue(shown);
        if (FormatNumber(value) != shown)
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

void TestGlobalCode::ANumberIsFormatted_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("places");
    QTest::addColumn<QString>("text");
    QTest::newRow("no decimals, half up") << 2.5 << 0 << "3";
    QTest::newRow("no decimals, half away from zero") << -2.5 << 0 << "-3";
    QTest::newRow("no decimals, all nines") << 999.5 << 0 << "1,000";
    QTest::newRow("a half that binary lies below") << 1.005 << 2 << "1.01";
    QTest::newRow("another") << 2.675 << 2 << "2.68";
    QTest::newRow("a sum of tenths") << 0.1 + 0.2 << 2 << "0.30";
    QTest::newRow("four places") << 1234.56785 << 4 << "1,234.5679";
    QTest::newRow("minus nothing") << -0.001 << 2 << "0.00";
    QTest::newRow("minus zero") << -0.0 << 2 << "0.00";
    QTest::newRow("tiny") << 1e-300 << 2 << "0.00";
    QTest::newRow("huge") << 1e21 << 2 << "1,000,000,000,000,000,000,000.00";
    QTest::newRow("no number") << qQNaN() << 2 << "0.00";
    QTest::newRow("no end") << qInf() << 2 << "0.00";
}

void TestGlobalCode::ANumberIsFormatted()
{
    QFETCH(double, value);
    QFETCH(int, places);
    QFETCH(QString, text);
    QCOMPARE(FormatNumber(value, places), text);
}

void TestGlobalCode::AFormattedNumberReadsBackInAnyLocale_data()
{
    QTest::addColumn<QString>("locale");
    for (const char *name : {"en_GB", "en_US", "de_DE", "fr_FR", "de_CH", "C"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestGlobalCode::AFormattedNumberReadsBackInAnyLocale()
{
    QFETCH(QString, locale);
    QLocale::setDefault(QLocale(locale));
    const double value = TextValue(FormatNumber(-1234567.89, 2));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    QCOMPARE(value, -1234567.89);
}

void TestGlobalCode::AFieldsTextIsANumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("blanks") << "  12.5  " << 12.5;
    QTest::newRow("grouped") << "1,234,567.895" << 1234567.9;
    QTest::newRow("negative") << "-1,000.005" << -1000.01;
    QTest::newRow("a word") << "ten" << 0.0;
    QTest::newRow("a number and a word") << "12.50 pounds" << 12.5;
    QTest::newRow("two points") << "1.2.3" << 1.2;
    QTest::newRow("a leading nought, as callers write it") << "012.5" << 12.5;
    QTest::newRow("just a sign") << "-" << 0.0;
    QTest::newRow("just a point") << "." << 0.0;
    QTest::newRow("other digits") << QStringLiteral("\u0661\u0662") << 0.0;
}

void TestGlobalCode::AFieldsTextIsANumber()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(CurrencyValue(text), value);
}

void TestGlobalCode::TheDigitsOfATextAreANumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("nothing") << "" << 0.0;
    QTest::newRow("no digit") << "abc" << 0.0;
    QTest::newRow("digits among text") << "a1b2" << 12.0;
    QTest::newRow("the first point counts") << "1.2.3" << 1.23;
    QTest::newRow("the sign is dropped") << "-5" << 5.0;
    QTest::newRow("a currency symbol and groups") << QStringLiteral("\u00a31,234.50") << 1234.5;
    QTest::newRow("only a point") << "." << 0.0;
}

void TestGlobalCode::TheDigitsOfATextAreANumber()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(ParseNumber(text), value);
}

void TestGlobalCode::TextIsMadeSafeForSql_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("safe");
    QTest::newRow("plain") << "Neil"
                           << "Neil";
    QTest::newRow("an apostrophe") << "O'Neil"
                                   << "O''Neil";
    QTest::newRow("a backtick") << "a`b"
                                << "a``b";
    QTest::newRow("nothing but") << "''`"
                                 << "''''``";
    QTest::newRow("other quotes stay") << QStringLiteral("\"\u2019\\") << QStringLiteral("\"\u2019\\");
}

void TestGlobalCode::TextIsMadeSafeForSql()
{
    QFETCH(QString, text);
    QFETCH(QString, safe);
    QCOMPARE(SqlSafeText(text), safe);
}

void TestGlobalCode::ANumberIsWrittenForSql_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 100.0 << "100";
    QTest::newRow("shortest") << 0.1 << "0.1";
    QTest::newRow("a sum of tenths") << 0.1 + 0.2 << "0.30000000000000004";
    QTest::newRow("no groups") << 1234567.5 << "1234567.5";
    QTest::newRow("negative") << -3.25 << "-3.25";
    QTest::newRow("no exponent") << 123456789012.0 << "123456789012";
    QTest::newRow("small, no exponent") << 0.00001 << "0.00001";
    QTest::newRow("no number is no statement") << qQNaN() << "0";
}

void TestGlobalCode::ANumberIsWrittenForSql()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(SqlNumber(value), text);
}

void TestGlobalCode::ALabelIsParted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reference");
    QTest::addColumn<QString>("name");
    QTest::newRow("both") << "[A1] Smith, John"
                          << "A1"
                          << "Smith, John";
    QTest::newRow("no reference") << "Smith, John"
                                  << ""
                                  << "Smith, John";
    QTest::newRow("nothing between the brackets") << "[] Smith"
                                                  << ""
                                                  << "[] Smith";
    QTest::newRow("never closed") << "[A1 Smith"
                                  << ""
                                  << "[A1 Smith";
    QTest::newRow("closed before it opens") << "]A1[ Smith"
                                            << ""
                                            << "]A1[ Smith";
    QTest::newRow("only the reference") << "[A1]"
                                        << "A1"
                                        << "";
    QTest::newRow("a bracket in the name") << "[A1]  x [y] "
                                           << "A1"
                                           << "x [y]";
    QTest::newRow("text before it is dropped") << "x [A1] y"
                                               << "A1"
                                               << "y";
    QTest::newRow("empty") << ""
                           << ""
                           << "";
}

void TestGlobalCode::ALabelIsParted()
{
    QFETCH(QString, text);
    QFETCH(QString, reference);
    QFETCH(QString, name);
    const RefLabel label = SplitRefLabel(text);
    QCOMPARE(label.reference, reference);
    QCOMPARE(label.name, name);
}

void TestGlobalCode::AReferenceIsShownWhereItIsWanted()
{
    gShowIDs = 1;
    QCOMPARE(FormatRefLabel("A1", "Smith"), QStringLiteral("[A1] Smith"));
    QCOMPARE(FormatRefLabel("", "Smith"), QStringLiteral("Smith"));
    gShowIDs = 0;
    QCOMPARE(FormatRefLabel("A1", "Smith"), QStringLiteral("Smith"));
    gShowIDs = 1;
}

QTEST_GUILESS_MAIN(TestGlobalCode)
#include "test_globalcode.moc"
