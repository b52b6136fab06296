#include "controls/ListModel.h"
#include "forms/ListPrint.h"
#include "forms/ListView.h"
#include "support/ModalDriver.h"

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
    void init();
    void Pages_data();
    void Pages();
    void Stopped();
    void AsksByKeyAndMenu();

private:
    ListModel m_list;
};

void TestListPrint::init()
{
    m_list.SetColumns({"Contact", "Address"});
    std::vector<ListItem> items;
    for (int i = 0; i < 500; ++i)
        items.push_back({u'?' % QString::number(i), "Somebody", {QString(400, u'w')}});
    m_list.Fill(std::move(items));
}

void TestListPrint::Pages_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("many");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("one") << 1 << false;
    QTest::newRow("five hundred") << 500 << true;
}

void TestListPrint::Pages()
{
    QFETCH(int, rows);
    QFETCH(bool, many);
    std::vector<int> printed(static_cast<size_t>(rows));
    std::iota(printed.begin(), printed.end(), 0);
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    int told = 0;
    {
        QPdfWriter writer(&pdf);
        QVERIFY(ListPrint::Print(m_list, printed, "Contacts", writer, [&](int page, int pages) {
            told = pages;
            return page < pages;
        }));
    }
    QCOMPARE(pdf.data().count("/Type /Page\n"), told);
    QCOMPARE(told > 5, many);
    QVERIFY(told >= 1 && told < 20);
}

void TestListPrint::Stopped()
{
    std::vector<int> rows(500);
    std::iota(rows.begin(), rows.end(), 0);
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&pdf);
        QVERIFY(!ListPrint::Print(m_list, rows, "Contacts", writer, [](int page, int) { return page < 2; }));
    }
    QCOMPARE(pdf.data().count("/Type /Page\n"), 2);
}

void TestListPrint::AsksByKeyAndMenu()
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

QTEST_MAIN(TestListPrint)
#include "test_listprint.moc"
