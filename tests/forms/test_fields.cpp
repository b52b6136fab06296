#include "controls/ComboModel.h"
#include "forms/FormBuilder.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

class test_fields final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QStringLiteral("en_GB"))); }
    void money_takes_key_by_key_data();
    void money_takes_key_by_key();
    void money_cleans_what_is_pasted_data();
    void money_cleans_what_is_pasted();
    void money_keeps_what_the_program_sets();
    void money_leaves_by_focus_and_by_enter();
    void typed_combo_leaves_data();
    void typed_combo_leaves();
    void typed_combo_shows_its_choice_when_nothing_was_added();
    void typed_combo_can_be_locked_to_its_items();
    void combo_follows_its_model_both_ways();
};

namespace
{
constexpr MoneyKeys DiscountKeys{6, 9};

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
    return {{QStringLiteral(" Select or Type New "), 1},
            {QStringLiteral("London"), 2},
            {QStringLiteral("York"), 3}};
}
} // namespace

void test_fields::money_takes_key_by_key_data()
{
    QTest::addColumn<int>("digitLimit");
    QTest::addColumn<int>("pointLimit");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("digits up to nine") << 9 << 9 << "12345678901"
                                       << "123456789";
    QTest::newRow("one point") << 9 << 9 << "1.2.3"
                               << "1.23";
    QTest::newRow("no point as the tenth character") << 9 << 9 << "123456789."
                                                     << "123456789";
    QTest::newRow("point as the ninth") << 9 << 9 << "12345678."
                                        << "12345678.";
    QTest::newRow("no sign, no letter, no blank") << 9 << 9 << "-1a 2e+,3"
                                                  << "123";
    QTest::newRow("discount: six digits") << 6 << 9 << "1234567"
                                          << "123456";
    QTest::newRow("discount: point behind the sixth digit") << 6 << 9 << "123456.7"
                                                            << "123456.";
    QTest::newRow("whole number") << 9 << 0 << "12.5"
                                  << "125";
}

void test_fields::money_takes_key_by_key()
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

void test_fields::money_cleans_what_is_pasted_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("text");
    QTest::newRow("grouped, with a sign of money") << "" << 0 << QStringLiteral("£1,234.50") << "1234.50";
    QTest::newRow("negative") << "" << 0 << "-5.00"
                              << "5.00";
    QTest::newRow("words and lines") << "" << 0 << "total:\n12\t.5"
                                     << "12.5";
    QTest::newRow("too long") << "" << 0 << "12345678901234567890"
                              << "123456789";
    QTest::newRow("second point, at the end") << "1.5" << 3 << ".25"
                                              << "1.525";
    QTest::newRow("second point, at the start") << "1.5" << 0 << "2."
                                                << "21.5";
    QTest::newRow("into the middle") << "10" << 1 << "x2.3"
                                     << "12.30";
    QTest::newRow("other digits") << "" << 0 << QStringLiteral("١٢3") << "3";
    QTest::newRow("nothing of use") << "7" << 1 << "abc"
                                    << "7";
}

void test_fields::money_cleans_what_is_pasted()
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

void test_fields::money_keeps_what_the_program_sets()
{
    Bench<MoneyField> bench(MoneyKeys{});
    bench.field->SetValue(-1234567.895);
    QCOMPARE(bench.field->text(), QStringLiteral("-1,234,567.90"));
    QCOMPARE(bench.field->Value(), -1234567.90);
    bench.field->selectAll();
    QTest::keyClick(bench.field, Qt::Key_5);
    QCOMPARE(bench.field->text(), QStringLiteral("5"));
}

void test_fields::money_leaves_by_focus_and_by_enter()
{
    Bench<MoneyField> bench(MoneyKeys{});
    QTest::keyClicks(bench.field, "12.345");
    bench.other->setFocus();
    QCOMPARE(bench.field->text(), QStringLiteral("12.35"));

    int left = 0;
    bench.field->SetLeaveHandler([&left] { ++left; });
    bench.field->setFocus();
    QTest::keyClick(bench.field, Qt::Key_Return);
    QCOMPARE(left, 1);
    bench.field->setReadOnly(true);
    QTest::keyClick(bench.field, Qt::Key_Return);
    QCOMPARE(left, 1);
}

void test_fields::typed_combo_leaves_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<int>("chosen");
    QTest::newRow("another case of an item") << "lonDON"
                                             << "" << 2;
    QTest::newRow("new text") << "Leeds"
                              << "Leeds" << 9;
    QTest::newRow("start of an item") << "Lon"
                                      << "Lon" << 9;
    QTest::newRow("with a reference") << "[L1] Leeds"
                                      << "[L1] Leeds" << 9;
    QTest::newRow("a reference alone") << "[L1]"
                                       << "" << 3;
    QTest::newRow("nothing") << ""
                             << "" << 1;
    QTest::newRow("blanks") << "   "
                            << "" << 1;
    QTest::newRow("the select row") << " Select or Type New "
                                    << "" << 1;
}

void test_fields::typed_combo_leaves()
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

void test_fields::typed_combo_shows_its_choice_when_nothing_was_added()
{
    ComboModel towns;
    towns.Fill(Towns());
    towns.SetCurrent(1);
    Bench<TypedCombo> bench(towns);
    int asked = 0;
    bench.field->SetNewTextHandler([&asked](const QString &) { ++asked; });
    bench.field->setEditText(QStringLiteral("Leeds"));
    QTest::keyClick(bench.field, Qt::Key_Return);
    QCOMPARE(asked, 1);
    QCOMPARE(bench.field->currentText(), QStringLiteral("London"));
    bench.other->setFocus();
    QCOMPARE(asked, 1);
}

void test_fields::typed_combo_can_be_locked_to_its_items()
{
    ComboModel towns;
    towns.Fill(Towns());
    towns.SetCurrent(1);
    Bench<TypedCombo> bench(towns);
    bench.field->AllowTyping(false);
    towns.Fill(Towns());
    towns.SetCurrent(1);
    QTest::keyClicks(bench.field, "Leeds");
    bench.other->setFocus();
    QCOMPARE(towns.CurrentText(), QStringLiteral("London"));
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    QTest::keyClicks(bench.field, "Y");
    QCOMPARE(towns.CurrentData(), 3);
}

void test_fields::combo_follows_its_model_both_ways()
{
    ComboModel towns;
    Bench<ComboBox> bench(towns);
    towns.Fill(Towns());
    QCOMPARE(towns.Current(), -1);
    QCOMPARE(bench.field->currentIndex(), -1);
    towns.ChooseData(3);
    QCOMPARE(bench.field->currentText(), QStringLiteral("York"));
    QTest::keyClick(bench.field, Qt::Key_Up);
    QCOMPARE(towns.CurrentData(), 2);
    towns.Fill(Towns());
    QCOMPARE(towns.Current(), -1);
    QCOMPARE(bench.field->currentIndex(), -1);
    towns.SetCurrent(0);
    QCOMPARE(bench.field->currentIndex(), 0);
}

QTEST_MAIN(test_fields)
#include "test_fields.moc"
