#include "forms/fields/CaptionLabel.h"
#include "forms/fields/DateField.h"
#include "platform/desktop/Clock.h"
#include "support/ScriptedDialogs.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

namespace
{
/// A date with a neighbour on each side, the first of which has the focus.
struct Bench {
    QWidget window;
    QLineEdit *before = new QLineEdit(&window);
    DateField *date = new DateField(&window);
    QLineEdit *after = new QLineEdit(&window);
    CaptionLabel *caption = new CaptionLabel("&When:", &window);

    Bench()
    {
        date->SetDay(QDate(2026, 11, 23));
        caption->setBuddy(date);
        window.show();
        QApplication::setActiveWindow(&window);
        before->setFocus();
    }
    void Tab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }
};
} // namespace

class TestDateField final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Clock::StopAt(QDateTime(QDate(2026, 11, 23), QTime(9, 0))); }
    void cleanupTestCase() { Clock::StopAt({}); }
    void TakesADayAsStaffTypeIt_data();
    void TakesADayAsStaffTypeIt();
    void WalksByTheArrows();
    void KeepsWhatIsNoDay_data();
    void KeepsWhatIsNoDay();
};

void TestDateField::TakesADayAsStaffTypeIt_data()
{
    QTest::addColumn<bool>("past");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QDate>("day");
    QTest::newRow("with strokes") << false << u"01/02/1990"_qs << QDate(1990, 2, 1);
    QTest::newRow("with points") << false << u"31.12.1990"_qs << QDate(1990, 12, 31);
    QTest::newRow("with dashes") << false << u"05-06-2027"_qs << QDate(2027, 6, 5);
    QTest::newRow("digits alone") << false << u"01021990"_qs << QDate(1990, 2, 1);
    QTest::newRow("one digit each") << false << u"1/2/1990"_qs << QDate(1990, 2, 1);
    QTest::newRow("the day alone") << false << u"7"_qs << QDate(2026, 11, 7);
    QTest::newRow("without the year") << false << u"3/2"_qs << QDate(2026, 2, 3);
    QTest::newRow("six digits") << true << u"010290"_qs << QDate(1990, 2, 1);
    QTest::newRow("a leap day") << false << u"29/02/2024"_qs << QDate(2024, 2, 29);
    QTest::newRow("short year of a role") << false << u"01/09/30"_qs << QDate(2030, 9, 1);
    QTest::newRow("short year of long ago") << false << u"1/9/85"_qs << QDate(1985, 9, 1);
    QTest::newRow("short year of a birth") << true << u"01/09/30"_qs << QDate(1930, 9, 1);
    QTest::newRow("of a child") << true << u"1/9/07"_qs << QDate(2007, 9, 1);
}

void TestDateField::TakesADayAsStaffTypeIt()
{
    QFETCH(bool, past);
    QFETCH(QString, keys);
    Bench bench;
    if (past)
        bench.date->TakeShortYearsAsPast();
    bench.Tab();
    QVERIFY(bench.date->hasFocus());
    for (const QChar key : keys)
        QTest::keyClick(bench.date, key.toLatin1());
    bench.Tab();
    QVERIFY2(bench.after->hasFocus(), "one Tab leaves the field");
    QTEST(bench.date->Day(), "day");
}

void TestDateField::WalksByTheArrows()
{
    Bench bench;
    bench.Tab();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown})
        QTest::keyClick(bench.date, key);
    QCOMPARE(bench.date->text(), u"24/10/2026"_qs);
    QTest::keyClick(bench.date, Qt::Key_Down, Qt::AltModifier);
    QWidget *calendar = QApplication::activePopupWidget();
    QVERIFY(calendar);
    QTest::keyClick(calendar->focusWidget(), Qt::Key_Right);
    QTest::keyClick(calendar->focusWidget(), Qt::Key_Return);
    QCOMPARE(bench.date->text(), u"25/10/2026"_qs);

    bench.date->setReadOnly(true);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(bench.date, &escape);
    QVERIFY2(!escape.isAccepted(), "Escape closes the form around a locked date");
    QTest::keyClick(bench.date, Qt::Key_Up);
    QTest::keyClick(bench.date, Qt::Key_F4);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(bench.date->text(), u"25/10/2026"_qs);
}

void TestDateField::KeepsWhatIsNoDay_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("left");
    QTest::newRow("no such day") << u"31/02/1990"_qs << u"'31/02/1990'"_qs;
    QTest::newRow("no leap year") << u"29.02.2023"_qs << u"'29/02/2023'"_qs;
    QTest::newRow("a month too many") << u"1/13/90"_qs << u"'1/13/90'"_qs;
    QTest::newRow("a year too short") << u"1/1/199"_qs << u"'1/1/199'"_qs;
}

/// It is neither put right in silence nor stored.
void TestDateField::KeepsWhatIsNoDay()
{
    QFETCH(QString, typed);
    QFETCH(QString, left);
    Bench bench;
    bench.Tab();
    QTest::keyClicks(bench.date, typed);
    bench.Tab();
    ScriptedDialogs dialogs;
    dialogs.Expect({}, u"When: " % left % u" is not a date. Type day, month and year, such as 1/2/1990.");
    QVERIFY(!DaysAreReadable(&bench.window));
    QVERIFY(bench.date->hasFocus());
    QCOMPARE(bench.date->Day(), QDate(2026, 11, 23));
    bench.date->clear();
    QVERIFY(DaysAreReadable(&bench.window));
    bench.Tab();
    QCOMPARE(bench.date->text(), u"23/11/2026"_qs);
}

QTEST_MAIN(TestDateField)
#include "test_datefield.moc"
