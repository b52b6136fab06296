#include "core/Progress.h"
#include "platform/Dialogs.h"

#include <QTest>

class TestProgress final : public QObject
{
    Q_OBJECT

private slots:
    /// A window that waits for its events looks dead, one that is painted at every row slows the run.
    void ShowsBothEndsAndNowAndThen()
    {
        int served = 0;
        Dialogs::Installed().serveEvents = [&served] { ++served; };
        QStringList shown;
        Progress run([&shown](int done, int maximum) {
            shown.append(QString::number(done) % u'/' % QString::number(maximum));
        });
        run.Begin(100000);
        for (int done = 1; done <= 100000; ++done)
            run.SetValue(done);
        QCOMPARE(shown.first(), QStringLiteral("0/100000"));
        QCOMPARE(shown.last(), QStringLiteral("100000/100000"));
        QVERIFY2(shown.size() < 1000, qPrintable(QString::number(shown.size())));
        QCOMPARE(served, shown.size());
        QTest::qSleep(60);
        run.SetValue(7);
        QCOMPARE(shown.last(), QStringLiteral("7/100000"));
    }

    void StopsWhereItIsTold()
    {
        int last = 0;
        Progress *stopped = nullptr;
        Progress run(
            [&](int done, int) {
                if (done == 3)
                    stopped->Cancel();
            },
            0);
        stopped = &run;
        while (run(++last, 10)) {
        }
        QCOMPARE(last, 3);
        QVERIFY(run.IsCancelled() && run.Value() == 3 && run.Maximum() == 10);
    }
};

QTEST_GUILESS_MAIN(TestProgress)
#include "test_progress.moc"
