#include "controls/ComboModel.h"
#include "forms/frames/FormBuilder.h"
#include "support/TestTable.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

namespace
{
/// A field with a neighbour to leave to, in a window that has the focus.
template <typename Field>
struct Bench {
    QWidget window;
    QLineEdit *other = new QLineEdit(&window);
    Field *field;

    template <typename... Arguments>
    explicit Bench(Arguments &&...arguments)
        : field(new Field(std::forward<Arguments>(arguments)..., &window))
    {
        window.show();
        QApplication::setActiveWindow(&window);
        field->setFocus();
    }
};

std::vector<ComboItem> Towns()
{
    return {{u" Select or Type New "_qs, 1}, {u"London"_qs, 2}, {u"York"_qs, 3}};
}
} // namespace

class test_fields final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(u"en_GB"_qs)); }

    void money_takes_key_by_key_data()
    {
        const TestTable<int, int, QString, QString> row{"digitLimit", "pointLimit", "keys", "text"};
        row("digits up to nine", 9, 9, "12345678901", "123456789");
        row("one point", 9, 9, "1.2.3", "1.23");
        row("no point as the tenth character", 9, 9, "123456789.", "123456789");
        row("point as the ninth", 9, 9, "12345678.", "12345678.");
        row("no sign, no letter, no blank", 9, 9, "-1a 2e+,3", "123");
        row("discount: six digits", 6, 9, "1234567", "123456");
        row("discount: point after the sixth digit", 6, 9, "123456.7", "123456.");
        row("whole number", 9, 0, "12.5", "125");
    }
    void money_takes_key_by_key()
    {
        QFETCH(int, digitLimit);
        QFETCH(int, pointLimit);
        QFETCH(QString, keys);
        Bench<MoneyField> bench(MoneyKeys{digitLimit, pointLimit});
        QTest::keyClicks(bench.field, keys);
        QTEST(bench.field->text(), "text");
        QTest::keyClick(bench.field, Qt::Key_Backspace);
        QFETCH(QString, text);
        QCOMPARE(bench.field->text(), text.chopped(1));
    }

    void money_cleans_what_is_pasted_data()
    {
        const TestTable<QString, int, QString, QString> row{"before", "cursor", "pasted", "text"};
        row("grouped, with a sign of money", "", 0, "£1,234.50", "1234.50");
        row("negative", "", 0, "-5.00", "5.00");
        row("words and lines", "", 0, "total:\n12\t.5", "12.5");
        row("too long", "", 0, "12345678901234567890", "123456789");
        row("second point, at the end", "1.5", 3, ".25", "1.525");
        row("second point, at the start", "1.5", 0, "2.", "21.5");
        row("into the middle", "10", 1, "x2.3", "12.30");
        row("other digits", "", 0, "١٢3", "3");
        row("nothing of use", "7", 1, "abc", "7");
    }
    void money_cleans_what_is_pasted()
    {
        QFETCH(QString, before);
        QFETCH(int, cursor);
        QFETCH(QString, pasted);
        Bench<MoneyField> bench(MoneyKeys{});
        bench.field->setText(before);
        bench.field->setCursorPosition(cursor);
        QApplication::clipboard()->setText(pasted);
        bench.field->paste();
        QTEST(bench.field->text(), "text");
        QCOMPARE(bench.field->cursorPosition(),
                 cursor + static_cast<int>(bench.field->text().size() - before.size()));
    }

    void money_keeps_what_the_program_sets()
    {
        Bench<MoneyField> bench(MoneyKeys{});
        bench.field->SetValue(-1234567.895);
        QCOMPARE(bench.field->text(), u"-1,234,567.90"_qs);
        QCOMPARE(bench.field->Value(), -1234567.90);
        bench.field->selectAll();
        QTest::keyClick(bench.field, Qt::Key_5);
        QCOMPARE(bench.field->text(), u"5"_qs);
    }

    void money_leaves_by_focus_and_by_enter()
    {
        Bench<MoneyField> bench(MoneyKeys{});
        QTest::keyClicks(bench.field, "12.345");
        bench.other->setFocus();
        QCOMPARE(bench.field->text(), u"12.35"_qs);

        int left = 0;
        bench.field->SetLeaveHandler([&left] { ++left; });
        bench.field->setFocus();
        QTest::keyClick(bench.field, Qt::Key_Return);
        QCOMPARE(left, 1);
        bench.field->setReadOnly(true);
        QTest::keyClick(bench.field, Qt::Key_Return);
        QCOMPARE(left, 1);
    }

    void a_menu_is_no_other_place_data()
    {
        const TestTable<Qt::FocusReason, bool> row{"reason", "isLeft"};
        row("the menu bar", Qt::MenuBarFocusReason, false);
        row("a menu", Qt::PopupFocusReason, false);
        row("another window", Qt::ActiveWindowFocusReason, false);
        row("Tab", Qt::TabFocusReason, true);
        row("mouse", Qt::MouseFocusReason, true);
    }
    void a_menu_is_no_other_place()
    {
        QFETCH(Qt::FocusReason, reason);
        ComboModel towns;
        towns.Fill(Towns());
        QWidget window;
        TypedCombo combo(towns, &window);
        MoneyField money({}, &window);
        DateField date(&window);
        int added = 0;
        combo.SetNewTextHandler([&added](const QString &) { ++added; });
        combo.setEditText(u"Yor"_qs);
        money.setText(u"5"_qs);
        date.setText(u"1/2/1990"_qs);
        for (QWidget *field : std::initializer_list<QWidget *>{&combo, &money, &date}) {
            QFocusEvent event(QEvent::FocusOut, reason);
            QApplication::sendEvent(field, &event);
        }
        const QStringList texts{QString::number(added), money.text(), date.text()};
        QFETCH(bool, isLeft);
        QCOMPARE(texts, isLeft ? QStringList({u"1"_qs, u"5.00"_qs, u"01/02/1990"_qs})
                               : QStringList({u"0"_qs, u"5"_qs, u"1/2/1990"_qs}));
    }

    void typed_combo_leaves_data()
    {
        const TestTable<QString, QString, int> row{"typed", "asked", "chosen"};
        row("another case of an item", "lonDON", "", 2);
        row("new text", "Leeds", "Leeds", 9);
        row("start of an item", "Lon", "Lon", 9);
        row("with a reference", "[L1] Leeds", "[L1] Leeds", 9);
        row("a reference alone", "[L1]", "", 3);
        row("nothing", "", "", 1);
        row("blanks", "   ", "", 1);
        row("the select row", " Select or Type New ", "", 1);
    }
    void typed_combo_leaves()
    {
        QFETCH(QString, typed);
        ComboModel towns;
        towns.Fill(Towns());
        towns.SetCurrent(2);
        Bench<TypedCombo> bench(towns);
        QString asked;
        bench.field->SetNewTextHandler([&](const QString &text) {
            asked = text;
            auto items = Towns();
            items.push_back({text, 9});
            towns.Fill(items);
            towns.ChooseData(9);
        });
        bench.field->setEditText(typed);
        bench.other->setFocus();
        QTEST(asked, "asked");
        QTEST(towns.CurrentData(), "chosen");
        QCOMPARE(bench.field->currentText(), towns.CurrentText());
    }

    void typed_combo_completes_in_the_field_data()
    {
        const TestTable<QString, QList<int>, QString, QString, int> row{"keys", "then", "shown", "note",
                                                                        "chosen"};
        row("the first that begins so", "yo", {}, "york", "", 3);
        row("nothing typed after the tail", "lo", {Qt::Key_End}, "london", "", 2);
        row("Enter takes it", "lond", {Qt::Key_Return}, "London", "", 2);
        row("Delete drops the tail", "Lon", {Qt::Key_Delete}, "Lon", "new town", 9);
        row("so does Backspace", "Lon", {Qt::Key_Backspace}, "Lon", "new town", 9);
        row("an item stays though another is longer", "York", {}, "York", "", 3);
        row("longer than the item", "yorks", {}, "yorkshire", "", 4);
        row("no item", "Leeds", {}, "Leeds", "new town", 9);
        row("a middle that changes", "ork", {Qt::Key_Home, Qt::Key_Y}, "york", "", 3);
        row("blanks", "  ", {}, "  ", "", 1);
    }
    void typed_combo_completes_in_the_field()
    {
        ComboModel towns;
        auto items = Towns();
        items.push_back({u"Yorkshire"_qs, 4});
        towns.Fill(items);
        towns.SetCurrent(0);
        Bench<TypedCombo> bench(towns);
        bench.field->SetNewTextHandler(
            [&](const QString &text) {
                items.push_back({text, 9});
                towns.Fill(items);
                towns.ChooseData(9);
            },
            u"town"_qs);
        bench.field->lineEdit()->selectAll();
        QFETCH(QString, keys);
        QFETCH(QList<int>, then);
        // The list of suggestions has the keys while it is open.
        const auto press = [&](int key, const QString &text) {
            QWidget *popup = QApplication::activePopupWidget();
            QTest::sendKeyEvent(QTest::Click, popup ? popup : bench.field, static_cast<Qt::Key>(key), text,
                                {});
        };
        for (const QChar letter : keys)
            press(QTest::asciiToKey(letter.toLatin1()), letter);
        for (const int key : then)
            press(key, key == Qt::Key_Y ? u"y"_qs : QString());
        QTEST(bench.field->currentText(), "shown");
        QTEST(bench.field->findChild<QLabel *>("FieldNote")->text(), "note");
        press(Qt::Key_Tab, {});
        QTEST(towns.CurrentData(), "chosen");
        QCOMPARE(bench.field->findChild<QLabel *>("FieldNote")->text(), QString());
    }

    void typed_combo_shows_its_choice_when_nothing_was_added()
    {
        ComboModel towns;
        Bench<TypedCombo> bench(towns);
        towns.Fill(Towns());
        towns.SetCurrent(1);
        int asked = 0;
        bench.field->SetNewTextHandler([&asked](const QString &) { ++asked; });
        bench.field->setEditText("Leeds");
        QTest::keyClick(bench.field, Qt::Key_Return);
        bench.other->setFocus();
        QCOMPARE(asked, 1);
        QCOMPARE(bench.field->currentText(), u"London"_qs);

        // Locked to its items, it is a list that letters walk.
        bench.field->AllowTyping(false);
        towns.Fill(Towns());
        towns.SetCurrent(1);
        bench.field->setFocus();
        QTest::keyClicks(bench.field, "Leeds");
        bench.other->setFocus();
        QCOMPARE(towns.CurrentText(), u"London"_qs);
        QTest::qWait(QApplication::keyboardInputInterval() + 50);
        QTest::keyClicks(bench.field, "Y");
        QCOMPARE(towns.CurrentData(), 3);
    }

    void combo_follows_its_model_both_ways()
    {
        ComboModel towns;
        Bench<ComboBox> bench(towns);
        towns.Fill(Towns());
        towns.ChooseData(3);
        QCOMPARE(bench.field->currentText(), u"York"_qs);
        QTest::keyClick(bench.field, Qt::Key_Up);
        QCOMPARE(towns.CurrentData(), 2);
        towns.Fill(Towns());
        QCOMPARE(towns.Current(), -1);
        QCOMPARE(bench.field->currentIndex(), -1);
        towns.SetCurrent(0);
        QCOMPARE(bench.field->currentIndex(), 0);
    }

    /// Out of a note too, which has a use of its own for the tab; closed pages are passed by.
    void pages_turn_by_the_keyboard()
    {
        QWidget window;
        QTabWidget *tabs = nullptr;
        {
            FormBuilder form(&window);
            tabs = form.Tabs(u"Pages"_qs);
        }
        for (const QString &page : {u"1"_qs, u"2"_qs, u"3"_qs})
            FormBuilder(FormBuilder::AddTab(tabs, page, page)).Notes(u"Notes"_qs, {});
        tabs->setTabEnabled(1, false);
        window.show();
        QApplication::setActiveWindow(&window);
        const auto turn = [&](Qt::KeyboardModifiers with) {
            tabs->currentWidget()->findChild<QPlainTextEdit *>()->setFocus();
            QTest::keyClick(QApplication::focusWidget(),
                            with & Qt::ShiftModifier ? Qt::Key_Backtab : Qt::Key_Tab, with);
            return tabs->currentIndex();
        };
        QCOMPARE(turn(Qt::ControlModifier), 2);
        QCOMPARE(turn(Qt::ControlModifier), 0);
        QCOMPARE(turn(Qt::ControlModifier | Qt::ShiftModifier), 2);
    }
};

QTEST_MAIN(test_fields)
#include "test_fields.moc"
