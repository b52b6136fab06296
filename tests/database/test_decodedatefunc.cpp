#include "database/DecodeDateFunc.h"

#include "platform/Clock.h"

#include <QTest>

#include <cmath>

class TestDecodeDateFunc : public QObject
{
    Q_OBJECT

private slots:
    void init() { Clock::StopAt(QDateTime(QDate(2026, 11, 2), QTime(9, 5, 7))); }
    void cleanup() { Clock::StopAt({}); }

    void EveryDateGoesThereAndBack();
    void NoDateBecomesTodayInTheCallersVariable();
    void NoDateIsZero();
    void ATimeGoesThereAndBack();
    void ReportsPrintATimeTheirOwnWay_data();
    void ReportsPrintATimeTheirOwnWay();
    void EveryTimeOfReportsHasItsRoundedHour();
    void TheMomentIsWrittenInFull();
};

void TestDecodeDateFunc::EveryDateGoesThereAndBack()
{
    for (QDate date(1999, 12, 1); date < QDate(2005, 1, 31); date = date.addDays(1)) {
        int value = DateToInt(date);
        QCOMPARE(value, date.toString(QStringLiteral("yyyyMMdd")).toInt());
        QCOMPARE(IntToDate(value), date);
        QCOMPARE(IntToDateText(value), date.toString(QStringLiteral("dd/MM/yyyy")));
        QCOMPARE(DateYear(value), date.year());
        QCOMPARE(DateMonth(value), date.month());
        QCOMPARE(DateDay(value), date.day());
    }
}

void TestDecodeDateFunc::NoDateBecomesTodayInTheCallersVariable()
{
    const int today = 20261102;
    int value = 0;
    QCOMPARE(IntToDateText(value), QStringLiteral("02/11/2026"));
    QCOMPARE(value, today);
    QCOMPARE(IntToDateText(0), QStringLiteral("02/11/2026"));
    QCOMPARE(DateYear(value = 0), 2026);
    QCOMPARE(value, today);
    QCOMPARE(DateMonth(value = 0), 11);
    QCOMPARE(value, today);
    QCOMPARE(DateDay(value = 0), 2);
    QCOMPARE(value, today);
}

void TestDecodeDateFunc::NoDateIsZero()
{
    QCOMPARE(DateToInt(QDate()), 0);
    QCOMPARE(TimeToInt(QTime()), 0);
    QVERIFY(!IntToDate(0).isValid());
    QVERIFY(!IntToDate(20260230).isValid());
}

void TestDecodeDateFunc::ATimeGoesThereAndBack()
{
    for (int minute = 0; minute < 24 * 60; ++minute) {
        const QTime time = QTime(0, 0).addSecs(minute * 60);
        const int value = TimeToInt(time);
        QCOMPARE(QTime(TimeHours(value), TimeMinutes(value)), time);
    }
}

void TestDecodeDateFunc::ReportsPrintATimeTheirOwnWay_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("midnight") << 0 << "00:00";
    QTest::newRow("the first half of an hour") << 1449 << "14:49";
    QTest::newRow("the second half") << 1451 << "15:-49";
    QTest::newRow("half past an odd hour, rounded to even") << 950 << "10:-50";
    QTest::newRow("half past an even hour") << 1850 << "18:50";
    QTest::newRow("half past another odd hour") << 1950 << "20:-50";
    QTest::newRow("one digit each") << 905 << "09:05";
    QTest::newRow("a negative minute of one digit") << 995 << "10:-5";
}

void TestDecodeDateFunc::ReportsPrintATimeTheirOwnWay()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    QCOMPARE(LongToTimeText(value), text);
}

void TestDecodeDateFunc::EveryTimeOfReportsHasItsRoundedHour()
{
    for (int hour = 0; hour < 24; ++hour) {
        for (int minute = 0; minute < 60; ++minute) {
            const bool up = minute > 50 || (minute == 50 && hour % 2 == 1);
            const QString text = up ? QString::asprintf("%02d:%d", hour + 1, minute - 100)
                                    : QString::asprintf("%02d:%02d", hour, minute);
            QCOMPARE(LongToTimeText(hour * 100 + minute), text);
        }
    }
}

void TestDecodeDateFunc::TheMomentIsWrittenInFull()
{
    QCOMPARE(GeneralDateText(Clock::Now()), QStringLiteral("02/11/2026 09:05:07"));
}

QTEST_GUILESS_MAIN(TestDecodeDateFunc)
#include "test_decodedatefunc.moc"
