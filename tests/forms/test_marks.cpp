#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "forms/fields/FieldLock.h"
#include "forms/fields/RequiredMarks.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormDialog.h"
#include "forms/frames/RecordNavigator.h"
#include "platform/desktop/Directories.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>

using Dialogs::Answer;

namespace
{
const QString changed = u"Some of the data has changed.\nOkay to update before exiting?"_qs;

/// A record form as the program has them: a name, a note, a list, and Update and Exit.
class Record final : public FormDialog
{
public:
    Record()
        : FormDialog(u"frmRecord"_qs, u"Record"_qs)
        , m_required(this)
    {
        list.SetColumns({u"One"_qs, u"Two"_qs});
        FormBuilder form(this);
        name = form.Text(u"Title"_qs, u"&Course Name:"_qs);
        m_required.Add(form.Label(u"Label_1"_qs), name);
        secret = form.Password(u"Secret"_qs, u"Password:"_qs);
        m_required.Add(form.Label(u"Label_2"_qs), secret);
        notes = form.Notes(u"Notes"_qs, u"Notes:"_qs);
        filter = form.Text(u"Filter"_qs, u"Show:"_qs);
        date = form.Date(u"Day"_qs, u"Day:"_qs);
        check = form.Check(u"Check"_qs, u"Check"_qs);
        view = form.List(u"Rows"_qs, u"Rows:"_qs, list);
        form.BeginButtons();
        save = form.DefaultButton(u"OkBtn"_qs, u"&Update"_qs);
        form.Button(u"ExitBtn"_qs, u"E&xit"_qs);
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
    DateField *date;
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
    void init()
    {
        Directories::SetProgram(m_directory.path());
        QFile::remove(Directories::WrittenFile(u"windows.dat"_qs));
    }

    void leaving_asks_data()
    {
        const TestTable<bool, bool, Answer, int, bool> row{"modified", "saveWorks", "answer", "saves",
                                                           "stays"};
        row("unmodified goes unasked", false, true, Answer::None, 0, false);
        row("yes saves and goes", true, true, Answer::Yes, 1, false);
        row("yes and a failed save stays", true, false, Answer::Yes, 1, true);
        row("no goes", true, true, Answer::No, 0, false);
        row("cancel stays", true, true, Answer::Cancel, 0, true);
    }
    void leaving_asks()
    {
        QFETCH(bool, modified);
        QFETCH(bool, saveWorks);
        QFETCH(Answer, answer);
        for (const bool byKey : {true, false}) {
            Record form;
            form.show();
            form.saveWorks = saveWorks;
            ScriptedDialogs user;
            if (modified) {
                form.name->setText("x");
                user.Expect("Warning", changed, answer);
            }
            byKey ? QTest::keyClick(&form, Qt::Key_Escape) : static_cast<void>(form.close());
            QVERIFY(user.AllCame());
            QTEST(form.isVisible(), "stays");
            QTEST(form.saves, "saves");
        }
    }

    void every_change_sets_the_flag()
    {
        Record form;
        const std::function<void()> changes[] = {
            [&] { form.name->setText("a"); },
            [&] { form.notes->setPlainText("a"); },
            [&] { form.date->SetDay(QDate(2026, 2, 3)); },
            [&] { form.check->toggle(); },
            [&] {
                form.list.Add({"?1", "a"});
            },
        };
        for (const auto &change : changes) {
            form.modified->Clear();
            change();
            QVERIFY(form.modified->IsSet());
        }
        form.modified->Clear();
        form.list.SelectFirst();
        form.filter->setText("a");
        QVERIFY(!form.modified->IsSet());
    }

    void the_save_button_is_painted_while_modified()
    {
        Record form;
        const auto painted = [&] {
            return form.save->palette().color(QPalette::Button) == form.palette().color(QPalette::Highlight);
        };
        form.modified->Set();
        QTRY_VERIFY(painted());
        form.modified->Clear();
        QTRY_VERIFY(!painted());
        // What is typed back to what it was leaves nothing to save, and the question on leaving stays.
        form.name->setText("a");
        QTRY_VERIFY(painted());
        form.name->clear();
        QTRY_VERIFY(!painted());
        QVERIFY(form.modified->IsSet());
        // A record that loads sets and clears the flag in one go.
        form.modified->Set();
        form.modified->Clear();
        QTest::qWait(300);
        QVERIFY(!painted());
    }

    void empty_required_fields_stop_the_save()
    {
        Record form;
        ScriptedDialogs user;
        form.name->setText("  ");
        user.Expect("Form not complete",
                    "The followings fields must be completed:\n    Course Name\n    Password\n");
        QVERIFY(!form.m_required.Complete());
        form.name->setText("Welding");
        form.secret->setText("  ");
        QVERIFY(form.m_required.Complete());
        form.m_required.Mark(form.findChild<CaptionLabel *>("Label_1"), true);
        QCOMPARE(form.m_required.MissingList(), u"    Course Name\n"_qs);
    }

    void a_missing_caption_is_readable_in_any_colour()
    {
        for (const int colour : {0xFFFFFF, 0x000000, 0xFF0000, 0xEFEFEF}) {
            gWarnColour = colour;
            CaptionLabel label("WWWW:");
            label.resize(label.sizeHint());
            const QSize plain = label.sizeHint();
            label.SetMissing(true);
            QCOMPARE(label.sizeHint(), plain);
            const QImage marked = label.grab().toImage();
            // White is nobody's choice, and gets an outline alone.
            const QColor plate = colour == 0xFFFFFF ? label.palette().color(QPalette::Window)
                                                    : QColor::fromRgb(static_cast<QRgb>(colour));
            bool hasPlate = false;
            bool hasInk = false;
            for (int x = 0; x < marked.width(); ++x) {
                const QColor here = marked.pixelColor(x, marked.height() / 2);
                hasPlate = hasPlate || here.rgb() == plate.rgb();
                hasInk = hasInk || qAbs(qGray(here.rgb()) - qGray(plate.rgb())) > 70;
            }
            QVERIFY2(hasPlate && hasInk, qPrintable(plate.name()));
        }
        gWarnColour = 0xFFFFFF;
    }

    void navigator_walks_and_asks()
    {
        QPushButton prev;
        QPushButton next;
        ModifiedMark modified(nullptr);
        QStringList did;
        RecordNavigator records(
            &prev, &next, modified, [&] { did.append("save"); },
            [&](const QString &key) { did.append(key); });
        QVERIFY(records.Position().isEmpty() && !next.isEnabled());
        records.SetKeys({"?4", "?7", "?9"});
        QVERIFY(!prev.isEnabled() && next.isEnabled());
        next.click();
        QCOMPARE(records.Position(), u" (RECORD 2 OF 3)"_qs);
        ScriptedDialogs user;
        modified.Set();
        user.Expect("Record Changed", "Okay to update record?", Answer::Yes);
        next.click();
        QVERIFY(!next.isEnabled());
        modified.Set();
        user.Expect("Record Changed", "Okay to update record?", Answer::No);
        prev.click();
        QCOMPARE(did.join(u' '), u"?7 save ?9 ?7"_qs);
        QVERIFY(!modified.IsSet());
    }

    void locked_fields_cannot_be_changed()
    {
        Record form;
        form.list.SetCheckable(true);
        form.list.Add({"?1", "a"});
        form.list.SelectFirst();
        form.modified->Clear();
        LockFields(&form, true);
        form.show();
        for (QWidget *field : form.findChildren<QWidget *>())
            QTest::keyClicks(field, "1 ");
        QVERIFY(!form.modified->IsSet() && !form.list.At(0).checked);
        QVERIFY(form.view->isEnabled());
        LockFields(&form, false);
        QTest::keyClicks(form.name, "1");
        QCOMPARE(form.name->text(), u"1"_qs);
        QCOMPARE(form.name->focusPolicy(), Qt::StrongFocus);
    }

    void a_form_remembers_its_size_and_columns()
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

private:
    QTemporaryDir m_directory;
};

QTEST_MAIN(test_marks)
#include "test_marks.moc"
