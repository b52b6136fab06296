#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "support/TestTable.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

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

class test_models final : public QObject
{
    Q_OBJECT

private slots:
    void key_numbers()
    {
        for (const auto &[key, number] :
             {std::pair{"?12", 12}, {"?-3", -3}, {"!7-9", 7}, {"?", 0}, {"", 0}, {"?abc", 0}})
            QVERIFY2(KeyNumber(key) == number, key);
    }

    void list_finds_its_rows_by_key()
    {
        ListModel list;
        const QAbstractItemModelTester tester(&list);
        Filled(list, 3);
        QCOMPARE(list.Find("?2"), 2);
        QVERIFY(!list.Contains("!2"));
        list.Add({u"!9"_qs, u"New"_qs});
        list.Remove(0);
        QCOMPARE(list.Find("!9"), 2);
        list.SetKey(0, "?7");
        QCOMPARE(list.Find("?7"), 0);
        QCOMPARE(list.Find("?1"), -1);
        list.RemoveKey(u"nobody"_qs);
        list.SelectOnly(2);
        list.Remove(0);
        QCOMPARE(list.SelectedKeys(), QStringList(u"!9"_qs));
        list.SetSubItem(0, 1, u"late"_qs);
        QCOMPARE(list.At(0).subItems, QStringList({QString(), u"late"_qs}));
    }

    void list_takes_rows_out_data()
    {
        const TestTable<QList<int>, QString, QString> row{"rows", "taken", "left"};
        row("none", {}, "", "01234");
        row("one", {2}, "2", "0134");
        row("runs and single rows", {0, 1, 3}, "013", "24");
        row("all", {0, 1, 2, 3, 4}, "01234", "");
    }
    void list_takes_rows_out()
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
        QCOMPARE(list.SelectedKeys(), list.Contains("?4") ? QStringList(u"?4"_qs) : QStringList());
    }

    /// Every second row of very many goes in one step, which tells views once.
    void list_gives_up_scattered_rows()
    {
        ListModel list;
        Filled(list, 1000);
        list.SelectKeys({u"?7"_qs, u"?8"_qs});
        std::vector<int> rows;
        for (int row = 1; row < 1000; row += 2)
            rows.push_back(row);
        QSignalSpy changed(&list, &ListModel::Changed);
        const std::vector<ListItem> taken = list.Take(rows);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(taken.size(), size_t(500));
        QCOMPARE(taken.back().key, u"?999"_qs);
        QCOMPARE(list.Count(), 500);
        QCOMPARE(list.Find(u"?998"_qs), 499);
        QCOMPARE(list.SelectedKeys(), QStringList(u"?8"_qs));
    }

    void list_sorts_by_what_a_column_holds_data()
    {
        const TestTable<QString> row{"sorted"};
        row("amounts", "|-2.00|9.50|100.00|1,500.00");
        row("days", "|31/12/2025|9/3/2026|10/03/2026|01/01/2027");
        row("texts", "10 Mill Lane|9 Mill Lane|York");
        row("numbers among texts", "10|9|York");
    }
    void list_sorts_by_what_a_column_holds()
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

    void tree_keeps_its_nodes_by_key()
    {
        TreeModel tree;
        const QAbstractItemModelTester tester(&tree);
        tree.Add({}, {"!1", "Folder"});
        tree.Add("!1", {"?1", "Course"});
        tree.Add("?1", {"#1", "Event"});
        tree.Add({}, {"!2", "Other"});
        QVERIFY(!tree.Add({}, {"?1", "twice"}));
        QVERIFY(!tree.Add("!9", {"?2", "nowhere"}));
        QStringList order;
        for (const TreeNode *node : tree.Nodes())
            order.append(node->key);
        QCOMPARE(order.join(u' '), u"!1 ?1 #1 !2"_qs);
        tree.Select(tree.Find("#1"));
        tree.Remove("!1");
        QVERIFY(tree.Count() == 1 && !tree.Find("#1"));
        tree.SelectFirst();
        QCOMPARE(tree.Selected()->key, u"!2"_qs);
    }
};

QTEST_GUILESS_MAIN(test_models)
#include "test_models.moc"
