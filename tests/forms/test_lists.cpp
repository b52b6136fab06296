#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "forms/fields/SearchBox.h"
#include "forms/fields/UsedAvailable.h"
#include "forms/lists/ListPrint.h"
#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"
#include "support/ModalDriver.h"
#include "support/TestTable.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPdfWriter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <numeric>

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
    list.SetColumns({"Contact", "City"});
    list.Fill({{"?1", "Moss", {"York"}}, {"?2", "adams", {"Leeds"}}, {"?3", "Zed", {"Bath"}}});
}

/// A list of 500 people with long addresses.
void FillPages(ListModel &list)
{
    list.SetColumns({"Contact", "Address"});
    std::vector<ListItem> items;
    for (int i = 0; i < 500; ++i)
        items.push_back({u'?' % QString::number(i), "Somebody", {QString(400, u'w')}});
    list.Fill(std::move(items));
}

void ClickTitle(const ListView &list, int column)
{
    const QHeaderView *header = list.header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 5, header->height() / 2});
}

/// The people of a form's list.
struct People {
    ListModel list;
    ListView view{list, ListView::Choice::Multi};

    People()
    {
        FillPeople(list);
        view.show();
    }
};

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

    Pair() { available.Fill({{"?1", "Ann"}, {"?2", "Bob"}, {"?3", "Cid"}}); }
};
} // namespace

class test_lists final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(u"en_GB"_qs)); }

    void sort_keeps_the_selection_and_outlives_a_refill()
    {
        People people;
        people.list.SelectOnly(0);
        people.list.Select(2);
        ClickTitle(people.view, 0);
        QCOMPARE(TextsOf(people.list), u"?2adams ?1Moss ?3Zed"_qs);
        QCOMPARE(people.list.SelectedKeys(), QStringList({"?1", "?3"}));
        QCOMPARE(people.list.CurrentRow(), 1);
        ClickTitle(people.view, 1);
        FillPeople(people.list);
        QCOMPARE(TextsOf(people.list), u"?3Zed ?2adams ?1Moss"_qs);
        QCOMPARE(people.list.Find("?1"), 2);
    }

    void keys_and_clicks_reach_the_form()
    {
        People people;
        people.list.SelectOnly(1);
        QSignalSpy opened(&people.view, &ListView::Opened);
        QSignalSpy deleted(&people.view, &ListView::DeletePressed);
        QTest::keyClick(&people.view, Qt::Key_Return);
        QCOMPARE(opened.takeFirst().first().toInt(), 1);
        QWidget *rows = people.view.viewport();
        const QPoint third = people.view.visualRect(people.list.index(2, 0)).center();
        QTest::mouseClick(rows, Qt::LeftButton, {}, third);
        QTest::mouseDClick(rows, Qt::LeftButton, {}, third);
        QCOMPARE(opened.takeFirst().first().toInt(), 2);
        QTest::keyClick(&people.view, Qt::Key_Delete);
        QCOMPARE(deleted.count(), 1);
        QTest::mouseDClick(rows, Qt::LeftButton, {}, rows->rect().bottomLeft() + QPoint(3, -3));
        QCOMPARE(opened.count(), 0);
    }

    /// The focus makes the first row the current one, which is not yet a choice.
    void the_first_row_is_chosen_by_key()
    {
        for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Up}) {
            People people;
            QApplication::setActiveWindow(&people.view);
            people.view.setFocus(Qt::TabFocusReason);
            QVERIFY(!people.list.Selection()->hasSelection());
            QTest::keyClick(&people.view, key);
            QCOMPARE(people.list.SelectedRows(), std::vector<int>{0});
        }
    }

    void copies_and_counts_the_selected_rows()
    {
        People people;
        QLabel count;
        people.view.CountOn(&count);
        people.list.Select(0);
        people.list.Select(2);
        QTest::keyClick(&people.view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"Moss\tYork\nZed\tBath"_qs);
        QCOMPARE(count.text(), u"3 rows, 2 selected"_qs);
        people.list.Fill(std::vector<ListItem>(1234));
        QCOMPARE(count.text(), u"1,234 rows"_qs);
        people.list.Fill(std::vector<ListItem>(1));
        QCOMPARE(count.text(), u"1 row"_qs);
    }

    void columns_share_the_width_until_the_user_sets_one()
    {
        People people;
        people.view.SetColumnChars({60, 40});
        people.view.resize(500, 200);
        const int width = people.view.viewport()->width();
        QCOMPARE(people.view.columnWidth(0), width * 60 / 100);
        QCOMPARE(people.view.columnWidth(0) + people.view.columnWidth(1), width);
        people.view.header()->resizeSection(0, 77);
        people.view.resize(700, 200);
        QCOMPARE(people.view.columnWidth(0), 77);
    }

    void a_cut_text_is_the_tool_tip()
    {
        People people;
        people.list.Fill({{"?1", "/srv/<b>/college.mdb", {"No"}}});
        people.view.header()->resizeSection(0, 30);
        const auto tipOf = [&people](int column) {
            const QPoint at = people.view.visualRect(people.list.index(0, column)).center();
            QHelpEvent help(QEvent::ToolTip, at, people.view.viewport()->mapToGlobal(at));
            QApplication::sendEvent(people.view.viewport(), &help);
            return QToolTip::text();
        };
        QCOMPARE(tipOf(0), u"<span>/srv/&lt;b&gt;/college.mdb</span>"_qs);
        QToolTip::hideText();
        QTRY_COMPARE(tipOf(1), QString());
    }

    void search_moves_from_the_second_character_data()
    {
        const TestTable<int, QString, int> row{"from", "entry", "row"};
        row("one character does nothing", 2, "a", 2);
        row("case aside", -1, "AD", 1);
        row("the current row is a match itself", 1, "ada", 1);
        row("from the current row down", 2, "ad", 3);
        row("from the top when there is none below", 3, "mo", 0);
        row("start of the text only", 0, "dams", 0);
        row("nobody", 2, "xx", 2);
        row("the name after a label", 0, "zim", 5);
        row("the label itself", 0, "[ref1", 5);
        row("a letter that grows in capitals", 0, "straß", 4);
    }
    void search_moves_from_the_second_character()
    {
        QFETCH(int, from);
        QFETCH(QString, entry);
        People people;
        people.list.Add({"?4", "adamson"});
        people.list.Add({"?5", "STRASSER"});
        people.list.Add({"?6", "[REF1] Zimmer"});
        if (from >= 0)
            people.list.SelectOnly(from);
        QLineEdit box(&people.view);
        BindSearchBox(&box, &people.view, [] {});
        box.setText(entry);
        QTEST(people.list.CurrentRow(), "row");
    }

    void search_by_keys_alone()
    {
        QWidget window;
        ListModel list;
        FillPeople(list);
        auto *box = new QLineEdit(&window);
        auto *view = new ListView(list, ListView::Choice::Multi, &window);
        QStringList opened;
        const auto open = [&] { opened += list.SelectedKeys(); };
        BindSearchBox(box, view, open);
        view->SetEnterHandler(open);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        view->setFocus();
        QTest::keyClick(view, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(box->hasFocus());
        QTest::keyClicks(box, "ze");
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClick(box, Qt::Key_X);
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(opened, QStringList("?3"));
        QCOMPARE(box->findChild<QLabel *>("FieldNote")->text(), "no match");
        QTest::keyClick(view, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(box, "Mo");
        QTest::keyClick(box, Qt::Key_Down);
        QVERIFY(view->hasFocus());
        QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Return);
        QCOMPARE(opened, QStringList({"?3", "?2"}));
    }

    void rows_move_between_the_lists()
    {
        Pair pair;
        for (const QPushButton *button : {pair.add, pair.remove, pair.clear})
            QVERIFY(!button->isEnabled());
        pair.available.Select(0);
        pair.available.Select(2);
        QTest::mouseClick(pair.add, Qt::LeftButton);
        QCOMPARE(TextsOf(pair.available), u"?2Bob"_qs);
        QCOMPARE(TextsOf(pair.used), u"?1Ann ?3Cid"_qs);
        pair.used.SelectOnly(0);
        QTest::keyClick(pair.right, Qt::Key_Delete);
        QCOMPARE(TextsOf(pair.available), u"?1Ann ?2Bob"_qs);
        pair.available.SelectOnly(1);
        QTest::keyClick(pair.left, Qt::Key_Return);
        QCOMPARE(TextsOf(pair.used), u"?3Cid ?2Bob"_qs);
        QTest::mouseClick(pair.clear, Qt::LeftButton);
        QCOMPARE(TextsOf(pair.available), u"?1Ann ?2Bob ?3Cid"_qs);
        QVERIFY(pair.used.IsEmpty() && !pair.clear->isEnabled());
    }

    void rows_are_dragged_between_the_lists()
    {
        Pair pair;
        const auto drop = [](ListView *from, ListView *onto) {
            const std::unique_ptr<QMimeData> data(from->Model().mimeData({}));
            QDragEnterEvent enter({5, 5}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
            QApplication::sendEvent(onto->viewport(), &enter);
            QDropEvent end({5, 5}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
            QApplication::sendEvent(onto->viewport(), &end);
            QCoreApplication::processEvents();
            return end.isAccepted();
        };
        pair.available.Select(0);
        QVERIFY(!drop(pair.left, pair.left));
        QVERIFY(drop(pair.left, pair.right));
        QCOMPARE(TextsOf(pair.used), u"?1Ann"_qs);
        pair.used.SelectOnly(0);
        QVERIFY(drop(pair.right, pair.left));
        QCOMPARE(TextsOf(pair.available), u"?1Ann ?2Bob ?3Cid"_qs);

        // A drag starts from a selected row; from another, the pointer selects.
        pair.window.show();
        pair.available.SelectOnly(0);
        const auto press = [&pair](int row) {
            const QPoint at = pair.left->visualRect(pair.available.index(row, 0)).center();
            QTest::mouseClick(pair.left->viewport(), Qt::LeftButton, {}, at);
            return pair.left->dragEnabled();
        };
        QVERIFY(press(0) && !press(1) && press(1));
    }

    void the_key_that_adds_never_removes()
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
        QCOMPARE(TextsOf(pair.used), u"?3Cid ?1Ann"_qs);
        pair.used.SelectOnly(1);
        pressTwice(pair.remove);
        QCOMPARE(TextsOf(pair.used), u"?3Cid"_qs);
    }

    void pair_obeys_rights_and_own_actions()
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

    void hundred_thousand_rows()
    {
        Pair pair;
        std::vector<ListItem> people;
        for (int i = 0; i < 100000; ++i)
            people.push_back({u'?' % QString::number(i), u"Person " % QString::number(i)});
        pair.available.Fill(std::move(people));
        pair.window.show();
        pair.available.SelectAll();
        const QSignalSpy taken(&pair.available, &ListModel::rowsRemoved);
        const QSignalSpy given(&pair.used, &ListModel::rowsInserted);
        pair.moves->Add();
        QCOMPARE(pair.used.Count(), 100000);
        // Row by row the views would take minutes.
        QVERIFY(taken.count() <= 1 && given.count() <= 1);
    }

    void tree_expands_both_ways_and_asks_for_ticks()
    {
        TreeModel tree;
        tree.Add({}, {.key = "a", .text = "A", .tick = TreeTick::Off, .expanded = true});
        tree.Add("a", {.key = "b", .text = "B"});
        tree.Add("b", {.key = "c", .text = "C"});
        TreeView view(tree);
        view.show();
        const auto at = [&](const char *key) { return tree.IndexOf(tree.Find(QString::fromLatin1(key))); };
        QVERIFY(view.isExpanded(at("a")));
        view.ShowNode(tree.Find("c"));
        QVERIFY(view.isExpanded(at("b")));
        view.collapse(at("b"));
        QVERIFY(!tree.Find("b")->expanded);

        QSignalSpy asked(&view, &TreeView::TickAsked);
        tree.Select(tree.Find("b"));
        QTest::keyClick(&view, Qt::Key_Space);
        QCOMPARE(asked.count(), 0);
        tree.Select(tree.Find("a"));
        QTest::keyClick(&view, Qt::Key_Space);
        QCOMPARE(asked.count(), 1);
        const QRect row = view.visualRect(at("a"));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, {row.left() + 6, row.center().y()});
        QCOMPARE(asked.count(), 2);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, {row.right() - 2, row.center().y()});
        QCOMPARE(asked.count(), 2);
    }

    void empty_ones_say_so()
    {
        People people;
        people.list.Clear();
        const auto say = [&](const QString &text) {
            people.view.SetEmptyText(text);
            return people.view.grab().toImage();
        };
        QVERIFY(say("Nobody here.") != say({}));
        FillPeople(people.list);
        QCOMPARE(say("Nobody here."), say({}));
    }

    void prints_pages_data()
    {
        const TestTable<int, int, int, int> row{"rows", "until", "least", "most"};
        row("none", 0, 99, 1, 1);
        row("one", 1, 99, 1, 1);
        row("five hundred", 500, 99, 6, 19);
        row("stopped", 500, 2, 2, 2);
    }
    void prints_pages()
    {
        QFETCH(int, rows);
        QFETCH(int, until);
        QFETCH(int, least);
        QFETCH(int, most);
        ListModel list;
        FillPages(list);
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
            QCOMPARE(ListPrint::Print(list, printed, "Contacts", writer, shown), until == 99);
        }
        QCOMPARE(pdf.data().count("/Type /Page\n"), expected);
        QVERIFY2(expected >= least && expected <= most, qPrintable(QString::number(expected)));
    }

    void prints_into_no_file_without_a_name()
    {
        QTest::failOnWarning(QRegularExpression("No file name"));
        const QTemporaryDir directory;
        const QString pdf = directory.filePath("people.pdf");
        ModalDriver driver;
        People people;
        driver.Expect("PrintDialog", [&](QDialog &chooser) {
            auto *print = chooser.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
            for (const QString &name : {QString(), QString("  ")}) {
                TypeInto(chooser, "filename", name);
                QTest::keyClick(chooser.focusWidget(), Qt::Key_Return);
                QVERIFY(chooser.isVisible() && !print->isEnabled());
            }
            TypeInto(chooser, "filename", pdf);
            print->click();
        });
        QTest::keyClick(&people.view, Qt::Key_P, Qt::ControlModifier);
        QVERIFY(QFileInfo(pdf).size() > 1000);
    }

    void asks_to_print_by_key_and_menu()
    {
        ModalDriver driver;
        People people;
        ListView &view = people.view;
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
        people.list.Clear();
        QTest::keyClick(&view, Qt::Key_P, Qt::ControlModifier);
    }
};

QTEST_MAIN(test_lists)
#include "test_lists.moc"
