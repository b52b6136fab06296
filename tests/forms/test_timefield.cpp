#include "forms/fields/TimeField.h"
#include "support/ScriptedDialogs.h"

#include <QTest>
#include <QVBoxLayout>

class TestTimeField final : public QObject
{
    Q_OBJECT

private slots:
    void TakesATimeAsStaffTypeIt_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("time");
        const std::pair<const char *, int> typed[] = {
            {"09:30", 930}, {"9.30", 930},  {"930", 930}, {"0905", 905}, {"14", 1400}, {"9:", 900},
            {"0", 0},       {"2359", 2359}, {"", 1000},   {"25", -1},    {"960", -1},  {"12345", -1}};
        for (const auto &[keys, time] : typed)
            QTest::newRow(keys) << QString::fromLatin1(keys) << time;
    }
    /// -1: it is no time, and stays as it was typed for the user to correct.
    void TakesATimeAsStaffTypeIt()
    {
        QFETCH(QString, keys);
        QFETCH(int, time);
        QWidget form;
        auto *field = new TimeField(&form);
        field->SetTime(1000);
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, keys);
        QTest::keyClick(field, Qt::Key_Return);
        ScriptedDialogs user;
        if (time < 0)
            user.Expect(QString(), u'\'' % keys % u"' is not a time. Type hours and minutes, such as 9:30.");
        QCOMPARE(TimesAreReadable(&form), time >= 0);
        QCOMPARE(field->Time(), time < 0 ? 1000 : time);
        QCOMPARE(field->text(),
                 time < 0 ? keys : QString(field->text().left(2) % u':' % field->text().right(2)));
    }

    void WalksByTheArrows()
    {
        TimeField field;
        field.SetTime(2355);
        QTest::keyClick(&field, Qt::Key_Up);
        QCOMPARE(field.Time(), 0);
        QTest::keyClick(&field, Qt::Key_PageDown);
        QCOMPARE(field.Time(), 2300);
    }

    void PutsTimesInOrder()
    {
        TimeField from;
        TimeField to;
        from.SetTime(1030);
        to.SetTime(930);
        PutInOrder(&from, &to);
        PutInOrder(&from, &to);
        QCOMPARE(from.Time(), 930);
        QCOMPARE(to.Time(), 1030);
    }
};

QTEST_MAIN(TestTimeField)
#include "test_timefield.moc"
