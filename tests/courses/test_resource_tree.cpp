#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "courses/booking/ResourceTree.h"
#include "support/TestTable.h"

#include <QTest>

using ResourceTree::Kind;
using ResourceTree::Node;

namespace
{
constexpr EventRef first{7};
constexpr EventRef second{12};
constexpr RoleTypeRef tutor{3};

/// Two events: on the first are a hall, a torch, a tutor and somebody who came.
void Fill(TreeModel &tree)
{
    ResourceTree::AddEvent(tree, first, u"Event 1"_qs);
    ResourceTree::AddEvent(tree, second, u"Event 2"_qs);
    ResourceTree::AddItem(tree, {Kind::Venues, first, 5}, u"Hall"_qs);
    ResourceTree::AddItem(tree, {Kind::Facilities, first, 5}, u"Torch"_qs);
    ResourceTree::AddItem(tree, {Kind::Attendance, first, 9}, u"Able, Anna"_qs);
    ResourceTree::AddRole(tree, first, tutor, u"Tutor"_qs);
    ResourceTree::AddItem(tree, {Kind::Staff, first, 9, tutor}, u"Able, Anna"_qs);
}

void Select(TreeModel &tree, const QStringList &keys)
{
    std::vector<const TreeNode *> nodes;
    for (const QString &key : keys)
        nodes.push_back(tree.Find(key));
    tree.Select(nullptr);
    tree.SelectAll(nodes);
}

/// What is below the branches, one event after the other.
QString Items(const TreeModel &tree)
{
    QStringList keys;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->key.contains(u';'))
            keys.append(node->key);
    }
    return keys.join(u' ');
}

QString SelectedKeys(const TreeModel &tree)
{
    QStringList keys;
    for (const TreeNode *node : tree.SelectedNodes())
        keys.append(node->key);
    return keys.join(u' ');
}
} // namespace

class TestResourceTree final : public QObject
{
    Q_OBJECT

private slots:
    void Keys_data();
    void Keys();
    void AddsToEachBranchChosen_data();
    void AddsToEachBranchChosen();
    void RemovesWhatIsChosen_data();
    void RemovesWhatIsChosen();
    void SelectsAlike_data();
    void SelectsAlike();
    void ShowsOneKind();
};

void TestResourceTree::Keys_data()
{
    const TestTable<QString, Node> row{"key", "node"};
    row("event", u"?12"_qs, Node{Kind::Event, second});
    row("branch", u"V12"_qs, Node{Kind::Venues, second});
    row("branch of every event", u"F0"_qs, Node{Kind::Facilities, {}});
    row("role", u"R3;12"_qs, Node{Kind::Role, second, 0, tutor});
    row("attendee", u"A9;12"_qs, Node{Kind::Attendance, second, 9});
    row("staff", u"S9;3;12"_qs, Node{Kind::Staff, second, 9, tutor});
    row("post that nobody fills", u"S-1;3;12"_qs, Node{Kind::Staff, second, -1, tutor});
    row("nothing", {}, Node{});
}

void TestResourceTree::Keys()
{
    QFETCH(const QString, key);
    QFETCH(const Node, node);
    QCOMPARE(ResourceTree::Parse(key), node);
    QCOMPARE(ResourceTree::Key(node), key);
}

/// Key 5 is on the first event already, key 6 on none.
void TestResourceTree::AddsToEachBranchChosen_data()
{
    const TestTable<QStringList, Kind, QString> row{"selected", "kind", "items"};
    const QString before = u"A9;7 F5;7 R3;7 S9;3;7 V5;7"_qs;
    row("a branch", {u"V12"_qs}, Kind::Venues, QString(before % u" V5;12 V6;12"));
    row("an item and a branch", {u"V5;7"_qs, u"V12"_qs}, Kind::Venues,
        QString(before % u" V6;7 V5;12 V6;12"));
    row("a branch twice", {u"F7"_qs, u"F5;7"_qs}, Kind::Facilities, u"A9;7 F5;7 F6;7 R3;7 S9;3;7 V5;7"_qs);
    row("strays", {u"V12"_qs, u"F12"_qs, u"?7"_qs}, Kind::Facilities, QString(before % u" F5;12 F6;12"));
    row("a role", {u"R3;7"_qs}, Kind::Staff, u"A9;7 F5;7 R3;7 S9;3;7 S5;3;7 S6;3;7 V5;7"_qs);
    row("staff", {u"S9;3;7"_qs, u"S12"_qs}, Kind::Staff,
        u"A9;7 F5;7 R3;7 S9;3;7 S5;3;7 S6;3;7 V5;7 R3;12 S5;3;12 S6;3;12"_qs);
}

void TestResourceTree::AddsToEachBranchChosen()
{
    QFETCH(const QStringList, selected);
    QFETCH(const Kind, kind);
    TreeModel tree;
    Fill(tree);
    Select(tree, selected);
    ListModel items;
    items.Fill({{u"!5"_qs, u"Five"_qs}, {u"!6"_qs, u"Six"_qs}});
    if (kind == Kind::Staff)
        ResourceTree::AddStaffToChosen(tree, tutor, u"Tutor"_qs, items);
    else
        ResourceTree::AddToChosen(tree, kind, items);
    QTEST(Items(tree), "items");
    QCOMPARE(tree.Find(u"V5;7"_qs)->text, u"Hall"_qs);
}

void TestResourceTree::RemovesWhatIsChosen_data()
{
    const TestTable<QStringList, QString> row{"selected", "left"};
    row("an item", {u"V5;7"_qs}, u"A9;7 F5;7 R3;7 S9;3;7"_qs);
    row("all of a branch", {u"V7"_qs, u"V12"_qs}, u"A9;7 F5;7 R3;7 S9;3;7"_qs);
    row("the last of a role", {u"S9;3;7"_qs}, u"A9;7 F5;7 V5;7"_qs);
    row("all staff", {u"S7"_qs}, u"A9;7 F5;7 V5;7"_qs);
    row("a role", {u"R3;7"_qs}, u"A9;7 F5;7 V5;7"_qs);
    row("an event", {u"?7"_qs}, QString());
    row("not the strays", {u"V5;7"_qs, u"F5;7"_qs, u"?12"_qs}, u"A9;7 F5;7 R3;7 S9;3;7"_qs);
    row("nothing", {}, u"A9;7 F5;7 R3;7 S9;3;7 V5;7"_qs);
}

void TestResourceTree::RemovesWhatIsChosen()
{
    QFETCH(const QStringList, selected);
    TreeModel tree;
    Fill(tree);
    Select(tree, selected);
    ResourceTree::RemoveChosen(tree);
    QTEST(Items(tree), "left");
    QVERIFY(tree.Find(u"?12"_qs));
}

void TestResourceTree::SelectsAlike_data()
{
    const TestTable<QString, QString> row{"selected", "alike"};
    row("events", u"?7"_qs, u"?7 ?12"_qs);
    row("branches", u"V12"_qs, u"V7 V12"_qs);
    row("items", u"V5;7"_qs, u"V5;7"_qs);
    row("roles of that name", u"R3;7"_qs, u"R3;7 R3;12"_qs);
}

void TestResourceTree::SelectsAlike()
{
    QFETCH(const QString, selected);
    TreeModel tree;
    Fill(tree);
    ResourceTree::AddRole(tree, second, tutor, u"Tutor"_qs);
    ResourceTree::AddRole(tree, second, RoleTypeRef(4), u"Assistant"_qs);
    Select(tree, {selected});
    ResourceTree::SelectAlike(tree);
    QTEST(SelectedKeys(tree), "alike");
    QCOMPARE(tree.Selected()->key, selected);
}

void TestResourceTree::ShowsOneKind()
{
    TreeModel tree;
    Fill(tree);
    const auto shown = [&tree](Kind only) {
        QStringList keys;
        for (const TreeNode *node : tree.Nodes()) {
            if (ResourceTree::IsShown(*node, only))
                keys.append(node->key);
        }
        return keys.join(u' ');
    };
    QCOMPARE(shown(Kind::Staff), u"?7 S7 R3;7 S9;3;7 ?12 S12"_qs);
    QCOMPARE(shown(Kind::Attendance), u"?7 A7 A9;7 ?12 A12"_qs);
    QCOMPARE(shown(Kind::None).count(u' ') + 1, tree.Count());
}

QTEST_MAIN(TestResourceTree)
#include "test_resource_tree.moc"
