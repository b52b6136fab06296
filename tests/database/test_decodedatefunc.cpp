#include "database/DecodeDateFunc.h"

#include "platform/Clock.h"

#include <QTest>

class TestDecodeDateFunc : public QObject
{
    Q_OBJECT

private slots:
    void init() { Clock::StopAt(QDateTime(QDate(2026, 11, 2), QTime(9, 5, 7))); }
    void cleanup() { Clock::StopAt({}); }

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

QTEST_GUILESS_MAIN(TestDecodeDateFunc)
#include "test_decodedatefunc.moc"
