#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "database/statements/RecordLists.h"
#include "support/TestTable.h"

#include <QTest>

namespace
{
/// "a=1 b=2"; a field that is not named is not there.
FieldValues Version(const QString &text)
{
    FieldValues values;
    for (const QString &field : text.split(u' ', Qt::SkipEmptyParts))
        values[field.section(u'=', 0, 0)] = field.section(u'=', 1);
    return values;
}

void FillTree(TreeModel &tree, const QStringList &ticked)
{
    tree.Clear();
    tree.Add({}, {"!1", "Colour", "single"});
    tree.Add({}, {"!2", "Diet", "several"});
    for (const auto &[parent, key] : {std::pair("!1", "?1!1"), {"!1", "?2!1"}, {"!2", "?3!2"}}) {
        TreeNode node{key, key};
        node.tick = ticked.contains(key) ? TreeTick::On : TreeTick::Off;
        tree.Add(parent, std::move(node));
    }
}

QStringList Ticked(const TreeModel &tree)
{
    QStringList keys;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->tick == TreeTick::On)
            keys.append(node->key);
    }
    return keys;
}
} // namespace

class TestRecordMerge final : public QObject
{
    Q_OBJECT

private slots:
    void Merges_data()
    {
        const TestTable<QString, QString, QString, QString, QString> row{"base", "yours", "theirs", "merged",
                                                                         "disputed"};
        row("nothing", "a=1 b=1", "a=1 b=1", "a=1 b=1", "a=1 b=1", "");
        row("different fields", "a=1 b=1 c=1", "a=2 b=1 c=1", "a=1 b=2 c=1", "a=2 b=2 c=1", "");
        row("alike", "a=1", "a=2", "a=2", "a=2", "");
        row("the same field", "a=1 b=1", "a=2 b=1", "a=3 b=2", "a=2 b=2", "a");
        row("emptied there", "a=1", "a=1", "a=", "a=", "");
        row("rows added on both sides", "", "x=", "y=", "x= y=", "");
        row("removed here, added there", "x=", "", "x= y=", "y=", "");
        row("removed there", "x= y=", "x= y= z=", "y=", "y= z=", "");
        row("removed here, changed there", "x=1", "", "x=2", "", "x");
        row("changed here, removed there", "x=1", "x=2", "", "x=2", "x");
        row("a backtick goes back as it came", "a=1", "a=1", "a=5``", "a=5`", "");
    }
    void Merges()
    {
        QFETCH(QString, base);
        QFETCH(QString, yours);
        QFETCH(QString, theirs);
        QFETCH(QString, merged);
        QFETCH(QString, disputed);
        const FieldMerge merge = MergeFields(Version(base), Version(yours), Version(theirs));
        QCOMPARE(merge.values, Version(merged));
        QCOMPARE(merge.disputed.join(u' '), disputed);
    }

    void ListsOfAScreen()
    {
        ListModel available;
        ListModel yours;
        ListModel theirs;
        available.Fill({{"?1", "One"}, {"?2", "Two"}});
        yours.Fill({{"?3", "Three", {"10.00"}}, {"?4", "Four", {"5.00"}}});
        theirs.Fill({{"?1", "One", {"1.00"}}, {"?3", "Three", {"12.00"}}, {"?5", "Five", {"7.00"}}});
        RecordLists lists;
        lists.Add(RecordLists::List{"Role", yours, theirs, &available, true});
        FieldValues stored;
        lists.AddTheirs(stored);
        lists.Take(stored);
        FieldValues shown;
        lists.AddYours(shown);
        QCOMPARE(shown["Role?3"], u"12.00"_qs);
        QCOMPARE(shown["Role?5"], u"7.00"_qs);
        QCOMPARE(yours.At(yours.Find("?1")).text, u"One"_qs);
        QCOMPARE(available.Find("?1"), -1);
        QVERIFY(available.Contains("?4") && !yours.Contains("?4"));
    }

    /// Below an attribute of which one value alone may be chosen, two sides never leave two.
    void TicksOfATree()
    {
        TreeModel yours;
        TreeModel theirs;
        FillTree(yours, {"?1!1"});
        FillTree(theirs, {"?2!1", "?3!2"});
        TreeNode made{"?9!3", "Made there"};
        made.tick = TreeTick::On;
        theirs.Add({}, {"!3", "Of theirs"});
        theirs.Add("!3", std::move(made));
        RecordLists lists;
        lists.Add(RecordLists::Ticks{"Attribute", yours, theirs, "single"});
        FieldValues base;
        FieldValues mine;
        FieldValues stored;
        lists.AddYours(mine);
        lists.AddTheirs(stored);
        const FieldMerge merge = MergeFields(base, mine, stored);
        QCOMPARE(merge.disputed, QStringList("Attribute!1"));
        QCOMPARE(lists.Shown("Attribute!1", stored["Attribute!1"]), u"?2!1"_qs);
        lists.Take(merge.values);
        QCOMPARE(Ticked(yours), QStringList({"?1!1", "?3!2", "?9!3"}));
    }
};

QTEST_GUILESS_MAIN(TestRecordMerge)
#include "test_recordmerge.moc"
