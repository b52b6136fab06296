#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <malloc.h>

class test_models final : public QObject
{
    Q_OBJECT

private slots:
    void key_numbers_data();
    void key_numbers();
    void list_finds_its_rows_by_key();
    void list_takes_rows_out_data();
    void list_takes_rows_out();
    void list_sorts_by_what_a_column_holds_data();
    void list_sorts_by_what_a_column_holds();
    void list_checks_one_at_a_time_where_exclusive();
    void list_of_100000_people_stays_small();
    void combo_chooses_by_data_and_text();
    void tree_keeps_its_nodes_by_key();
};

namespace
{
ListModel &Filled(ListModel &list, int rows)
{
    std::vector<ListItem> items;
    for (int i = 0; i < rows; ++i)
        items.push_back({u'?' % QString::number(i), u"Surname" % QString::number(i) % u", Forename"});
    list.Fill(std::move(items));
    return list;
}

QString Keys(const ListModel &list)
{
    QString keys;
    for (int row = 0; row < list.Count(); ++row)
        keys += list.At(row).key.mid(1);
    return keys;
}
} // namespace

void test_models::key_numbers_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("number");
    QTest::newRow("contact") << "?12" << 12;
    QTest::newRow("unfilled post") << "?-3" << -3;
    QTest::newRow("digits up to the rest") << "!7-9" << 7;
    QTest::newRow("mark alone") << "?" << 0;
    QTest::newRow("nothing") << "" << 0;
    QTest::newRow("no number") << "?abc" << 0;
}

void test_models::key_numbers()
{
    QFETCH(QString, key);
    QTEST(KeyNumber(key), "number");
}

void test_models::list_finds_its_rows_by_key()
{
    ListModel list;
    const QAbstractItemModelTester tester(&list);
    Filled(list, 3);
    QCOMPARE(list.Find(QStringLiteral("?2")), 2);
    QVERIFY(!list.Contains(QStringLiteral("!2")));
    list.Add({QStringLiteral("!9"), QStringLiteral("New")});
    list.Remove(0);
    QCOMPARE(list.Find(QStringLiteral("!9")), 2);
    list.SetKey(0, QStringLiteral("?7"));
    QCOMPARE(list.Find(QStringLiteral("?7")), 0);
    QCOMPARE(list.Find(QStringLiteral("?1")), -1);
    list.RemoveKey(QStringLiteral("nobody"));
    list.SelectOnly(2);
    list.Remove(0);
    QCOMPARE(list.SelectedKeys(), QStringList(QStringLiteral("!9")));
    list.SetSubItem(0, 1, QStringLiteral("late"));
    QCOMPARE(list.At(0).subItems, QStringList({QString(), QStringLiteral("late")}));
}

void test_models::list_takes_rows_out_data()
{
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QString>("taken");
    QTest::addColumn<QString>("left");
    QTest::newRow("none") << QList<int>{} << ""
                          << "01234";
    QTest::newRow("one") << QList<int>{2} << "2"
                         << "0134";
    QTest::newRow("runs and single rows") << QList<int>{0, 1, 3} << "013"
                                          << "24";
    QTest::newRow("all") << QList<int>{0, 1, 2, 3, 4} << "01234"
                         << "";
}

void test_models::list_takes_rows_out()
{
    QFETCH(QList<int>, rows);
    ListModel list;
    const QAbstractItemModelTester tester(&list);
    Filled(list, 5);
    list.Select(4);
    ListModel other;
    other.AddAll(list.Take({rows.begin(), rows.end()}));
    QTEST(Keys(other), "taken");
    QTEST(Keys(list), "left");
    QCOMPARE(list.SelectedKeys(),
             list.Contains(QStringLiteral("?4")) ? QStringList(QStringLiteral("?4")) : QStringList());
}

void test_models::list_sorts_by_what_a_column_holds_data()
{
    QTest::addColumn<QString>("sorted");
    QTest::newRow("amounts") << "|-2.00|9.50|100.00|1,500.00";
    QTest::newRow("days") << "|31/12/2025|9/3/2026|10/03/2026|01/01/2027";
    QTest::newRow("texts") << "10 Mill Lane|9 Mill Lane|York";
    QTest::newRow("numbers among texts") << "10|9|York";
}

void test_models::list_sorts_by_what_a_column_holds()
{
    QFETCH(QString, sorted);
    const QStringList expected = sorted.split('|');
    ListModel list;
    list.SetColumns({"Name", "Value"});
    for (const QString &cell : expected)
        list.Add({"?" + cell, "x", {cell}});
    for (const Qt::SortOrder order : {Qt::DescendingOrder, Qt::AscendingOrder}) {
        list.sort(1, order);
        QStringList cells;
        for (int row = 0; row < list.Count(); ++row)
            cells.append(list.At(row).subItems.first());
        if (order == Qt::DescendingOrder)
            std::reverse(cells.begin(), cells.end());
        QCOMPARE(cells, expected);
    }
}

void test_models::list_checks_one_at_a_time_where_exclusive()
{
    ListModel list;
    Filled(list, 3);
    list.SetCheckable(true, true);
    list.SetChecked(0, true);
    QVERIFY(list.setData(list.index(2, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(list.CheckedRows(), std::vector<int>{2});
}

void test_models::list_of_100000_people_stays_small()
{
    const auto used = [] { return static_cast<qint64>(mallinfo2().uordblks + mallinfo2().hblkhd); };
    const qint64 before = used();
    ListModel list;
    Filled(list, 100000);
    QCOMPARE(list.Find(QStringLiteral("?99999")), 99999);
    list.SelectAll();
    const qint64 bytes = used() - before;
    QVERIFY2(bytes < 40 * 1000 * 1000, qPrintable(QString::number(bytes)));
    qInfo("%lld bytes", bytes);
}

void test_models::combo_chooses_by_data_and_text()
{
    ComboModel combo;
    const QAbstractItemModelTester tester(&combo);
    combo.Fill({{QStringLiteral("London"), 2}, {QStringLiteral("York"), 3}});
    QCOMPARE(combo.Current(), -1);
    QCOMPARE(combo.CurrentData(), 0);
    QSignalSpy changed(&combo, &ComboModel::CurrentChanged);
    combo.ChooseData(3);
    combo.ChooseData(99);
    QCOMPARE(combo.CurrentText(), QStringLiteral("York"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(combo.FindText(QStringLiteral("lonDON")), 0);
    QCOMPARE(combo.FindText(QStringLiteral("Lon")), -1);
    combo.SetCurrent(5);
    QCOMPARE(combo.Current(), -1);
}

void test_models::tree_keeps_its_nodes_by_key()
{
    TreeModel tree;
    const QAbstractItemModelTester tester(&tree);
    tree.Add({}, {QStringLiteral("!1"), QStringLiteral("Folder")});
    tree.Add(QStringLiteral("!1"), {QStringLiteral("?1"), QStringLiteral("Course")});
    tree.Add(QStringLiteral("?1"), {QStringLiteral("#1"), QStringLiteral("Event")});
    tree.Add({}, {QStringLiteral("!2"), QStringLiteral("Other")});
    QVERIFY(!tree.Add({}, {QStringLiteral("?1"), QStringLiteral("twice")}));
    QVERIFY(!tree.Add(QStringLiteral("!9"), {QStringLiteral("?2"), QStringLiteral("nowhere")}));
    QStringList order;
    for (const TreeNode *node : tree.Nodes())
        order.append(node->key);
    QCOMPARE(order.join(u' '), QStringLiteral("!1 ?1 #1 !2"));
    tree.Select(tree.Find(QStringLiteral("#1")));
    tree.SetTick(tree.Find(QStringLiteral("!2")), TreeTick::On);
    tree.Remove(QStringLiteral("!1"));
    QCOMPARE(tree.Count(), 1);
    QVERIFY(!tree.Find(QStringLiteral("#1")));
    tree.SelectFirst();
    QCOMPARE(tree.Selected()->key, QStringLiteral("!2"));
}

QTEST_GUILESS_MAIN(test_models)
#include "test_models.moc"
