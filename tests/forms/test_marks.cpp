#include "controls/ListModel.h"
#include "core/Session.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"
#include "forms/FormDialog.h"
#include "forms/RecordNavigator.h"
#include "forms/RequiredMarks.h"
#include "platform/Directories.h"
#include "support/ScriptedDialogs.h"

#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>

using Dialogs::Answer;

namespace
{
const QString changed = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");

/// A record form as the program has them: a name, a note, a list, and Update and Exit.
class Record final : public FormDialog
{
public:
    Record()
        : FormDialog(QStringLiteral("frmRecord"), QStringLiteral("Record"))
        , m_required(this)
    {
        list.SetColumns({QStringLiteral("One"), QStringLiteral("Two")});
        FormBuilder form(this);
        name = form.Text(QStringLiteral("Title"), QStringLiteral("&Course Name:"));
        m_required.Add(form.Label(QStringLiteral("Label_1")), name);
        secret = form.Password(QStringLiteral("Secret"), QStringLiteral("Password:"));
        m_required.Add(form.Label(QStringLiteral("Label_2")), secret);
        notes = form.Notes(QStringLiteral("Notes"), QStringLiteral("Notes:"));
        filter = form.Text(QStringLiteral("Filter"), QStringLiteral("Show:"));
        date = form.Date(QStringLiteral("Day"), QStringLiteral("Day:"));
        check = form.Check(QStringLiteral("Check"), QStringLiteral("Check"));
        view = form.List(QStringLiteral("Rows"), QStringLiteral("Rows:"), list);
        form.BeginButtons();
        save = form.DefaultButton(QStringLiteral("OkBtn"), QStringLiteral("&Update"));
        form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
        form.EndButtons();
        modified = new ModifiedMark(save, this);
        modified->Ignore(filter);
        modified->Watch(this);
        modified->Watch(list);
    }

    bool MayLeave() override
    {
        return modified->AskToSave([this] {
            ++saves;
            if (saveWorks)
                modified->Clear();
        });
    }

    ListModel list;
    QLineEdit *name;
    QLineEdit *secret;
    QPlainTextEdit *notes;
    QLineEdit *filter;
    QDateEdit *date;
    QCheckBox *check;
    ListView *view;
    QPushButton *save;
    ModifiedMark *modified;
    RequiredMarks m_required;
    int saves = 0;
    bool saveWorks = true;
};
} // namespace

class test_marks final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void leaving_asks_data();
    void leaving_asks();
    void every_change_sets_the_flag();
    void the_save_button_is_painted_while_modified();
    void empty_required_fields_stop_the_save();
    void a_missing_caption_is_readable_in_any_colour_data();
    void a_missing_caption_is_readable_in_any_colour();
    void navigator_walks_and_asks();
    void locked_fields_cannot_be_changed();
    void a_form_remembers_its_size_and_columns();

private:
    QTemporaryDir m_directory;
};

void test_marks::init()
{
    Directories::SetProgram(m_directory.path());
    QFile::remove(Directories::WrittenFile(QStringLiteral("windows.dat")));
}

void test_marks::leaving_asks_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<bool>("modified");
    QTest::addColumn<bool>("saveWorks");
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("saves");
    QTest::addColumn<bool>("stays");
    const auto row = [](const char *name, bool modified, bool saveWorks, Answer answer, int saves,
                        bool stays) {
        for (const bool byKey : {true, false})
            QTest::addRow("%s, %s", name, byKey ? "Escape" : "window closed")
                << byKey << modified << saveWorks << static_cast<int>(answer) << saves << stays;
    };
    row("unmodified goes unasked", false, true, Answer::None, 0, false);
    row("yes saves and goes", true, true, Answer::Yes, 1, false);
    row("yes and a failed save stays", true, false, Answer::Yes, 1, true);
    row("no goes", true, true, Answer::No, 0, false);
    row("cancel stays", true, true, Answer::Cancel, 0, true);
}

void test_marks::leaving_asks()
{
    QFETCH(bool, byKey);
    QFETCH(bool, modified);
    QFETCH(bool, saveWorks);
    QFETCH(int, answer);
    Record form;
    form.show();
    form.saveWorks = saveWorks;
    if (modified)
        form.name->setText(QStringLiteral("x"));
    ScriptedDialogs user;
    if (modified)
        user.Expect(QStringLiteral("Warning"), changed, static_cast<Answer>(answer));
    if (byKey)
        QTest::keyClick(&form, Qt::Key_Escape);
    else
        form.close();
    QVERIFY(user.AllCame());
    QTEST(form.isVisible(), "stays");
    QTEST(form.saves, "saves");
}

void test_marks::every_change_sets_the_flag()
{
    Record form;
    const std::vector<std::pair<const char *, std::function<void()>>> changes = {
        {"text", [&] { form.name->setText(QStringLiteral("a")); }},
        {"notes", [&] { form.notes->setPlainText(QStringLiteral("a")); }},
        {"date",
         [&] {
             form.date->setDate({2026, 2, 3});
         }},
        {"check", [&] { form.check->toggle(); }},
        {"list",
         [&] {
             form.list.Add({QStringLiteral("?1"), QStringLiteral("a")});
         }},
    };
    for (const auto &[what, change] : changes) {
        form.modified->Clear();
        change();
        QVERIFY2(form.modified->IsSet(), what);
    }
    form.modified->Clear();
    form.list.SelectFirst();
    form.filter->setText(QStringLiteral("a"));
    QVERIFY(!form.modified->IsSet());
}

void test_marks::the_save_button_is_painted_while_modified()
{
    Record form;
    const auto painted = [&] {
        return form.save->palette().color(QPalette::Button) == form.palette().color(QPalette::Highlight);
    };
    form.modified->Set();
    QTRY_VERIFY(painted());
    form.modified->Clear();
    QTRY_VERIFY(!painted());
    // A record that loads sets and clears the flag in one go.
    form.modified->Set();
    form.modified->Clear();
    QTest::qWait(300);
    QVERIFY(!painted());
}

void test_marks::empty_required_fields_stop_the_save()
{
    Record form;
    form.name->setText(QStringLiteral("  "));
    {
        ScriptedDialogs user;
        user.Expect(
            QStringLiteral("Form not complete"),
            QStringLiteral("The followings fields must be completed:\n    Course Name\n    Password\n"));
        QVERIFY(!form.m_required.Complete());
    }
    form.name->setText(QStringLiteral("Welding"));
    form.secret->setText(QStringLiteral("  "));
    const ScriptedDialogs nobody;
    QVERIFY(form.m_required.Complete());
    form.m_required.Mark(form.findChild<CaptionLabel *>(QStringLiteral("Label_1")), true);
    QCOMPARE(form.m_required.MissingList(), QStringLiteral("    Course Name\n"));
}

void test_marks::a_missing_caption_is_readable_in_any_colour_data()
{
    QTest::addColumn<int>("colour");
    QTest::newRow("white") << 0xFFFFFF;
    QTest::newRow("black") << 0x000000;
    QTest::newRow("red") << 0xFF0000;
    QTest::newRow("grey like the window") << 0xEFEFEF;
}

void test_marks::a_missing_caption_is_readable_in_any_colour()
{
    QFETCH(int, colour);
    gWarnColour = colour;
    CaptionLabel label(QStringLiteral("WWWW:"));
    label.resize(label.sizeHint());
    const QImage plain = label.grab().toImage();
    label.SetMissing(true);
    const QImage marked = label.grab().toImage();
    QVERIFY(plain != marked);
    QCOMPARE(label.sizeHint(), plain.size());
    bool hasPlate = false;
    bool hasInk = false;
    const QColor plate = QColor::fromRgb(static_cast<QRgb>(colour));
    for (int x = 0; x < marked.width(); ++x) {
        const QColor here = marked.pixelColor(x, marked.height() / 2);
        hasPlate = hasPlate || here.rgb() == plate.rgb();
        hasInk = hasInk || qAbs(qGray(here.rgb()) - qGray(plate.rgb())) > 70;
    }
    QVERIFY(hasPlate);
    QVERIFY(hasInk);
    gWarnColour = 0xFFFFFF;
}

void test_marks::navigator_walks_and_asks()
{
    QPushButton prev;
    QPushButton next;
    ModifiedMark modified(nullptr);
    QStringList did;
    RecordNavigator records(
        &prev, &next, modified, [&] { did.append(QStringLiteral("save")); },
        [&](const QString &key) { did.append(key); });
    QVERIFY(!prev.isEnabled() && !next.isEnabled());
    QCOMPARE(records.Position(), QString());
    records.SetKeys({QStringLiteral("?4"), QStringLiteral("?7"), QStringLiteral("?9")});
    QVERIFY(!prev.isEnabled() && next.isEnabled());

    next.click();
    QCOMPARE(records.Position(), QStringLiteral(" (RECORD 2 OF 3)"));
    ScriptedDialogs user;
    modified.Set();
    user.Expect(QStringLiteral("Record Changed"), QStringLiteral("Okay to update record?"), Answer::Yes);
    next.click();
    QVERIFY(!next.isEnabled());
    modified.Set();
    user.Expect(QStringLiteral("Record Changed"), QStringLiteral("Okay to update record?"), Answer::No);
    prev.click();
    QCOMPARE(did.join(u' '), QStringLiteral("?7 save ?9 ?7"));
    QVERIFY(!modified.IsSet());
}

void test_marks::locked_fields_cannot_be_changed()
{
    Record form;
    form.list.SetCheckable(true);
    form.list.Add({QStringLiteral("?1"), QStringLiteral("a")});
    form.modified->Clear();
    LockFields(&form, true);
    form.show();
    for (QWidget *field : form.findChildren<QWidget *>())
        QTest::keyClicks(field, "1 ");
    QVERIFY(!form.modified->IsSet());
    QVERIFY(form.view->isEnabled());
    LockFields(&form, false);
    QTest::keyClicks(form.name, "1");
    QCOMPARE(form.name->text(), QStringLiteral("1"));
    QCOMPARE(form.name->focusPolicy(), Qt::StrongFocus);
}

void test_marks::a_form_remembers_its_size_and_columns()
{
    {
        Record form;
        form.show();
        form.resize(640, 555);
        form.view->header()->resizeSection(0, 123);
        form.modified->Clear();
        form.close();
    }
    Record form;
    form.show();
    QCOMPARE(form.size(), QSize(640, 555));
    QCOMPARE(form.view->header()->sectionSize(0), 123);
}

QTEST_MAIN(test_marks)
#include "test_marks.moc"
