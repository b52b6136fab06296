#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "forms/ListView.h"
#include "forms/SearchBox.h"
#include "forms/TreeView.h"
#include "forms/UsedAvailable.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

class test_lists final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QStringLiteral("en_GB"))); }
    void sort_keeps_the_selection();
    void sort_of_the_user_outlives_a_refill();
    void keys_and_clicks_reach_the_form();
    void copies_the_selected_rows();
    void count_tells_rows_and_selection();
    void columns_share_the_width_until_the_user_sets_one();
    void a_cut_text_is_the_tool_tip();
    void locked_check_boxes_stay();
    void search_moves_from_the_second_character_data();
    void search_moves_from_the_second_character();
    void rows_move_between_the_lists();
    void the_key_that_adds_never_removes();
    void pair_obeys_rights_and_own_actions();
    void hundred_thousand_rows();
    void tree_expands_both_ways();
    void tree_asks_for_ticks();
    void empty_ones_say_so_data();
    void empty_ones_say_so();
};

namespace
{
QString TextsOf(const ListModel &list)
{
    QStringList texts;
    for (int row = 0; row < list.Count(); ++row)
        texts.append(list.At(row).key % list.At(row).text);
    return texts.join(u' ');
}

void FillPeople(ListModel &list)
{
    list.SetColumns({QStringLiteral("Contact"), QStringLiteral("City")});
    list.Fill({{QStringLiteral("?1"), QStringLiteral("Moss"), {QStringLiteral("York")}},
               {QStringLiteral("?2"), QStringLiteral("adams"), {QStringLiteral("Leeds")}},
               {QStringLiteral("?3"), QStringLiteral("Zed"), {QStringLiteral("Bath")}}});
}

void ClickTitle(const ListView &list, int column)
{
    const QHeaderView *header = list.header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 5, header->height() / 2});
}

/// Two lists with their buttons, "?1Ann ?2Bob ?3Cid" against nothing.
struct Pair {
    ListModel available;
    ListModel used;
    QWidget window;
    ListView *left = new ListView(available, ListView::Choice::Multi, &window);
    ListView *right = new ListView(used, ListView::Choice::Multi, &window);
    QPushButton *add = new QPushButton(&window);
    QPushButton *remove = new QPushButton(&window);
    QPushButton *clear = new QPushButton(&window);
    UsedAvailable *moves = new UsedAvailable(left, right, add, remove, clear);

    Pair()
    {
        available.Fill({{QStringLiteral("?1"), QStringLiteral("Ann")},
                        {QStringLiteral("?2"), QStringLiteral("Bob")},
                        {QStringLiteral("?3"), QStringLiteral("Cid")}});
    }
};
} // namespace

void test_lists::sort_keeps_the_selection()
{
    ListModel list;
    FillPeople(list);
    ListView view(list, ListView::Choice::Multi);
    view.show();
    list.SelectOnly(0);
    list.Select(2);
    ClickTitle(view, 0);
    QCOMPARE(TextsOf(list), QStringLiteral("?2adams ?1Moss ?3Zed"));
    QCOMPARE(list.SelectedKeys(), QStringList({QStringLiteral("?1"), QStringLiteral("?3")}));
    QCOMPARE(list.CurrentRow(), 1);
    ClickTitle(view, 1);
    QCOMPARE(TextsOf(list), QStringLiteral("?3Zed ?2adams ?1Moss"));
    QCOMPARE(list.Find(QStringLiteral("?1")), 2);
}

void test_lists::sort_of_the_user_outlives_a_refill()
{
    ListModel list;
    FillPeople(list);
    ListView view(list);
    QCOMPARE(TextsOf(list), QStringLiteral("?1Moss ?2adams ?3Zed"));
    view.show();
    ClickTitle(view, 0);
    FillPeople(list);
    QCOMPARE(TextsOf(list), QStringLiteral("?2adams ?1Moss ?3Zed"));
    list.SelectFirst();
    QCOMPARE(list.SelectedKeys(), QStringList(QStringLiteral("?2")));
}

void test_lists::keys_and_clicks_reach_the_form()
{
    ListModel list;
    FillPeople(list);
    ListView view(list);
    view.show();
    list.SelectOnly(1);
    QSignalSpy opened(&view, &ListView::Opened);
    QSignalSpy deleted(&view, &ListView::DeletePressed);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(opened.takeFirst().first().toInt(), 1);
    const QPoint third = view.visualRect(list.index(2, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, third);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, third);
    QCOMPARE(opened.takeFirst().first().toInt(), 2);
    QTest::keyClick(&view, Qt::Key_Delete);
    QCOMPARE(deleted.count(), 1);
    const QPoint below = view.viewport()->rect().bottomLeft() - QPoint(-3, 3);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, below);
    QCOMPARE(opened.count(), 0);
}

void test_lists::copies_the_selected_rows()
{
    ListModel list;
    FillPeople(list);
    ListView view(list, ListView::Choice::Multi);
    list.Select(0);
    list.Select(2);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Moss\tYork\nZed\tBath"));
}

void test_lists::count_tells_rows_and_selection()
{
    ListModel list;
    QLabel count;
    ListView view(list, ListView::Choice::Multi);
    view.CountOn(&count);
    QCOMPARE(count.text(), QString());
    list.Add({QStringLiteral("?1"), QStringLiteral("Ann")});
    QCOMPARE(count.text(), QStringLiteral("1 row"));
    list.Fill(std::vector<ListItem>(1234));
    QCOMPARE(count.text(), QStringLiteral("1,234 rows"));
    list.SelectAll();
    QCOMPARE(count.text(), QStringLiteral("1,234 rows, 1,234 selected"));
}

void test_lists::columns_share_the_width_until_the_user_sets_one()
{
    ListModel list;
    list.SetColumns({QStringLiteral("Contact"), QStringLiteral("City"), QStringLiteral("Paid")});
    ListView view(list);
    view.SetColumnChars({60, 30, 10});
    view.resize(500, 200);
    view.show();
    const int width = view.viewport()->width();
    QCOMPARE(view.columnWidth(0), width * 60 / 100);
    QCOMPARE(view.columnWidth(0) + view.columnWidth(1) + view.columnWidth(2), width);

    view.header()->resizeSection(1, 77);
    view.resize(700, 200);
    QCOMPARE(view.columnWidth(0), width * 60 / 100);
    QCOMPARE(view.columnWidth(1), 77);
}

void test_lists::locked_check_boxes_stay()
{
    ListModel list;
    FillPeople(list);
    list.SetCheckable(true);
    ListView view(list);
    view.show();
    list.SelectOnly(0);
    QTest::keyClick(&view, Qt::Key_Space);
    QVERIFY(list.At(0).checked);
    view.SetLocked(true);
    QTest::keyClick(&view, Qt::Key_Space);
    QVERIFY(list.At(0).checked);
}

void test_lists::a_cut_text_is_the_tool_tip()
{
    ListModel list;
    list.SetColumns({QStringLiteral("Location"), QStringLiteral("Paid")});
    list.Fill({{QStringLiteral("?1"), QStringLiteral("/srv/<b>/college.mdb"), {QStringLiteral("No")}}});
    ListView view(list);
    view.header()->resizeSection(0, 30);
    view.show();
    const auto tipOf = [&view, &list](int column) {
        const QPoint at = view.visualRect(list.index(0, column)).center();
        QHelpEvent help(QEvent::ToolTip, at, view.viewport()->mapToGlobal(at));
        QApplication::sendEvent(view.viewport(), &help);
        return QToolTip::text();
    };
    QCOMPARE(tipOf(0), QStringLiteral("<span>/srv/&lt;b&gt;/college.mdb</span>"));
    QToolTip::hideText();
    view.header()->resizeSection(0, 300);
    QTRY_COMPARE(tipOf(1), QString());
}

void test_lists::search_moves_from_the_second_character_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("row");
    QTest::newRow("one character does nothing") << 2 << "a" << 2;
    QTest::newRow("case aside") << -1 << "AD" << 1;
    QTest::newRow("the current row is a match itself") << 1 << "ada" << 1;
    QTest::newRow("from the current row down") << 2 << "ad" << 3;
    QTest::newRow("from the top when there is none below") << 3 << "mo" << 0;
    QTest::newRow("start of the text only") << 0 << "dams" << 0;
    QTest::newRow("nobody") << 2 << "xx" << 2;
    QTest::newRow("a letter that grows in capitals") << 0 << QStringLiteral("straß") << 4;
}

void test_lists::search_moves_from_the_second_character()
{
    QFETCH(int, from);
    QFETCH(QString, entry);
    ListModel list;
    list.Fill({{QStringLiteral("?1"), QStringLiteral("Moss")},
               {QStringLiteral("?2"), QStringLiteral("Adams")},
               {QStringLiteral("?3"), QStringLiteral("Zed")},
               {QStringLiteral("?4"), QStringLiteral("adamson")},
               {QStringLiteral("?5"), QStringLiteral("STRASSER")}});
    if (from >= 0)
        list.SelectOnly(from);
    ListView view(list);
    QLineEdit box;
    BindSearchBox(&box, &view);
    box.setText(entry);
    QTEST(list.CurrentRow(), "row");
}

void test_lists::rows_move_between_the_lists()
{
    Pair pair;
    QVERIFY(!pair.add->isEnabled());
    QVERIFY(!pair.remove->isEnabled());
    QVERIFY(!pair.clear->isEnabled());
    pair.available.Select(0);
    pair.available.Select(2);
    QTest::mouseClick(pair.add, Qt::LeftButton);
    QCOMPARE(TextsOf(pair.available), QStringLiteral("?2Bob"));
    QCOMPARE(TextsOf(pair.used), QStringLiteral("?1Ann ?3Cid"));

    pair.used.SelectOnly(0);
    QTest::keyClick(pair.right, Qt::Key_Delete);
    QCOMPARE(TextsOf(pair.available), QStringLiteral("?1Ann ?2Bob"));
    pair.available.SelectOnly(1);
    QTest::keyClick(pair.left, Qt::Key_Return);
    QCOMPARE(TextsOf(pair.used), QStringLiteral("?3Cid ?2Bob"));
    QTest::mouseClick(pair.clear, Qt::LeftButton);
    QCOMPARE(TextsOf(pair.available), QStringLiteral("?1Ann ?2Bob ?3Cid"));
    QVERIFY(pair.used.IsEmpty());
    QVERIFY(!pair.clear->isEnabled());
}

void test_lists::the_key_that_adds_never_removes()
{
    Pair pair;
    pair.window.show();
    QApplication::setActiveWindow(&pair.window);
    const auto pressTwice = [&pair](QPushButton *button) {
        button->setFocus();
        for (int press = 0; press < 2; ++press)
            QTest::keyClick(pair.window.focusWidget(), Qt::Key_Space);
    };
    pair.used.AddAll(pair.available.Take({2}));
    pair.used.SelectOnly(0);
    pair.available.SelectOnly(0);
    pressTwice(pair.add);
    QCOMPARE(TextsOf(pair.used), QStringLiteral("?3Cid ?1Ann"));
    pair.used.SelectOnly(1);
    pressTwice(pair.remove);
    QCOMPARE(TextsOf(pair.used), QStringLiteral("?3Cid"));
}

void test_lists::pair_obeys_rights_and_own_actions()
{
    Pair pair;
    pair.moves->Allow(false);
    pair.available.Select(0);
    QVERIFY(!pair.add->isEnabled());
    QTest::keyClick(pair.left, Qt::Key_Return);
    QVERIFY(pair.used.IsEmpty());

    int added = 0;
    pair.moves->Allow(true, false, false);
    pair.moves->SetActions({[&added] { ++added; }, {}, {}});
    QTest::mouseClick(pair.add, Qt::LeftButton);
    QCOMPARE(added, 1);
    QVERIFY(pair.used.IsEmpty());
}

void test_lists::hundred_thousand_rows()
{
    Pair pair;
    std::vector<ListItem> people;
    for (int i = 0; i < 100000; ++i)
        people.push_back({u'?' % QString::number(i), u"Person " % QString::number(i)});
    pair.available.Fill(std::move(people));
    pair.window.show();
    pair.available.SelectAll();
    pair.moves->Add();
    pair.moves->Clear();
    // Row by row these moves would outlast the test's time limit.
    QCOMPARE(pair.available.Count(), 100000);
}

void test_lists::tree_expands_both_ways()
{
    TreeModel tree;
    TreeNode root{QStringLiteral("a"), QStringLiteral("A")};
    root.expanded = true;
    tree.Add({}, std::move(root));
    tree.Add(QStringLiteral("a"), {QStringLiteral("b"), QStringLiteral("B")});
    tree.Add(QStringLiteral("b"), {QStringLiteral("c"), QStringLiteral("C")});
    TreeView view(tree);
    const auto at = [&](const char *key) { return tree.IndexOf(tree.Find(QString::fromLatin1(key))); };
    QVERIFY(view.isExpanded(at("a")));
    view.ShowNode(tree.Find(QStringLiteral("c")));
    QVERIFY(view.isExpanded(at("b")));
    view.collapse(at("b"));
    QVERIFY(!tree.Find(QStringLiteral("b"))->expanded);
}

void test_lists::tree_asks_for_ticks()
{
    TreeModel tree;
    TreeNode ticked{QStringLiteral("a"), QStringLiteral("A")};
    ticked.tick = TreeTick::Off;
    tree.Add({}, std::move(ticked));
    tree.Add({}, {QStringLiteral("b"), QStringLiteral("B")});
    TreeView view(tree);
    view.show();
    QSignalSpy asked(&view, &TreeView::TickAsked);
    tree.Select(tree.Find(QStringLiteral("b")));
    QTest::keyClick(&view, Qt::Key_Space);
    QCOMPARE(asked.count(), 0);
    tree.Select(tree.Find(QStringLiteral("a")));
    QTest::keyClick(&view, Qt::Key_Space);
    QCOMPARE(asked.count(), 1);
    const QRect row = view.visualRect(tree.IndexOf(tree.Find(QStringLiteral("a"))));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(row.left() + 6, row.center().y()));
    QCOMPARE(asked.count(), 2);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(row.right() - 2, row.center().y()));
    QCOMPARE(asked.count(), 2);
}

void test_lists::empty_ones_say_so_data()
{
    QTest::addColumn<bool>("isTree");
    QTest::newRow("list") << false;
    QTest::newRow("tree") << true;
}

void test_lists::empty_ones_say_so()
{
    QFETCH(bool, isTree);
    ListModel list;
    TreeModel tree;
    ListView listView(list);
    TreeView treeView(tree);
    QTreeView &view = isTree ? static_cast<QTreeView &>(treeView) : listView;
    const auto say = [&](const QString &text) {
        isTree ? treeView.SetEmptyText(text) : listView.SetEmptyText(text);
        return view.grab().toImage();
    };
    QVERIFY(say(QStringLiteral("Nobody here.")) != say({}));
    list.Add({QStringLiteral("?1"), QStringLiteral("Ann")});
    tree.Add({}, {QStringLiteral("a"), QStringLiteral("A")});
    QCOMPARE(say(QStringLiteral("Nobody here.")), say({}));
}

QTEST_MAIN(test_lists)
#include "test_lists.moc"
