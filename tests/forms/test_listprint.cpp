#include "controls/ListModel.h"
#include "forms/ListPrint.h"
#include "forms/ListView.h"
#include "support/ModalDriver.h"
#include "support/TestTable.h"

#include <QBuffer>
#include <QMenu>
#include <QPdfWriter>
#include <QTest>
#include <QTimer>

#include <numeric>

class TestListPrint final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_list.SetColumns({"Contact", "Address"});
        std::vector<ListItem> items;
        for (int i = 0; i < 500; ++i)
            items.push_back({u'?' % QString::number(i), "Somebody", {QString(400, u'w')}});
        m_list.Fill(std::move(items));
    }

    void Pages_data()
    {
        const TestTable<int, int, int, int> row{"rows", "until", "least", "most"};
        row("none", 0, 99, 1, 1);
        row("one", 1, 99, 1, 1);
        row("five hundred", 500, 99, 6, 19);
        row("stopped", 500, 2, 2, 2);
    }
    void Pages()
    {
        QFETCH(int, rows);
        QFETCH(int, until);
        QFETCH(int, least);
        QFETCH(int, most);
        std::vector<int> printed(static_cast<size_t>(rows));
        std::iota(printed.begin(), printed.end(), 0);
        QBuffer pdf;
        pdf.open(QIODevice::WriteOnly);
        int expected = 0;
        {
            QPdfWriter writer(&pdf);
            const auto shown = [&](int page, int pages) {
                expected = std::min(pages, until);
                return page < until;
            };
            QCOMPARE(ListPrint::Print(m_list, printed, "Contacts", writer, shown), until == 99);
        }
        QCOMPARE(pdf.data().count("/Type /Page\n"), expected);
        QVERIFY2(expected >= least && expected <= most, qPrintable(QString::number(expected)));
    }

    void AsksByKeyAndMenu()
    {
        ModalDriver driver;
        ListView view(m_list, ListView::Choice::Multi);
        view.show();
        driver.Expect("PrintDialog", [](QDialog &chooser) { chooser.reject(); });
        QTest::keyClick(&view, Qt::Key_P, Qt::ControlModifier);

        driver.Expect("PrintDialog", [](QDialog &chooser) { chooser.reject(); });
        QTimer::singleShot(0, &view, [&view] {
            auto *menu = Find<QMenu>(view, "ListMenu");
            QCOMPARE(menu->actions().size(), 3);
            QVERIFY(!menu->actions().first()->isEnabled());
            menu->actions().last()->trigger();
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), view.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(view.viewport(), &event);

        // An empty list asks for nothing.
        m_list.Clear();
        QTest::keyClick(&view, Qt::Key_P, Qt::ControlModifier);
    }

private:
    ListModel m_list;
};

QTEST_MAIN(TestListPrint)
#include "test_listprint.moc"
