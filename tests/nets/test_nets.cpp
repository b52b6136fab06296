#include "core/session/Session.h"
#include "database/statements/System.h"
#include "forms/fields/CaptionLabel.h"
#include "forms/fields/FormKeys.h"
#include "forms/fields/MoneyField.h"
#include "forms/frames/FormDialog.h"
#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"
#include "nets/FormRegistry.h"
#include "nets/Ruler.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QFont>
#include <QLineEdit>
#include <QMenu>
#include <QMultiMap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QSet>
#include <QShortcut>
#include <QStackedWidget>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace
{
bool IsPartOfAField(const QWidget *widget)
{
    for (const QWidget *at = widget->parentWidget(); at; at = at->parentWidget()) {
        if (qobject_cast<const QComboBox *>(at) || qobject_cast<const QLineEdit *>(at) ||
            qobject_cast<const QAbstractItemView *>(at))
            return true;
    }
    return false;
}

/// In these, Enter opens what was looked for, or a new person.
const QStringList fieldsWithATaskForEnter{"SearchBox", "ContactList"};

bool IsField(const QWidget *widget)
{
    const bool kind = qobject_cast<const QLineEdit *>(widget) ||
                      qobject_cast<const QPlainTextEdit *>(widget) || qobject_cast<const QComboBox *>(widget);
    return kind && !IsPartOfAField(widget);
}

bool IsList(const QWidget *widget)
{
    return qobject_cast<const ListView *>(widget) || qobject_cast<const TreeView *>(widget);
}

bool HasRows(const QWidget *widget)
{
    return IsList(widget) && qobject_cast<const QAbstractItemView *>(widget)->model()->rowCount() > 0;
}

/// What every field and list of a form shows, a line for each.
QStringList Contents(const QWidget &form)
{
    QStringList lines;
    for (const QWidget *widget : form.findChildren<QWidget *>()) {
        QString shown;
        if (IsPartOfAField(widget) || widget->objectName().isEmpty())
            continue;
        if (const auto *text = qobject_cast<const QLineEdit *>(widget))
            shown = text->text();
        else if (const auto *notes = qobject_cast<const QPlainTextEdit *>(widget))
            shown = notes->toPlainText();
        else if (const auto *choice = qobject_cast<const QComboBox *>(widget))
            shown = choice->currentText();
        else if (HasRows(widget))
            shown = QString::number(qobject_cast<const QAbstractItemView *>(widget)->model()->rowCount());
        if (!shown.isEmpty())
            lines.append(widget->objectName() % u": " % shown);
    }
    return lines;
}

bool IsLocked(const QWidget *field)
{
    if (!field->isEnabled())
        return true;
    if (const auto *text = qobject_cast<const QLineEdit *>(field))
        return text->isReadOnly();
    if (const auto *notes = qobject_cast<const QPlainTextEdit *>(field))
        return notes->isReadOnly();
    return false;
}

/// Runs `look` on each page of the form's tab panels or of its wizard, or once where it has one page.
void OnEveryPage(QWidget &form, const std::function<void()> &look)
{
    const auto panels = form.findChildren<QStackedWidget *>();
    if (panels.isEmpty())
        look();
    for (QStackedWidget *panel : panels) {
        const auto *tabs = qobject_cast<QTabWidget *>(panel->parentWidget());
        for (int page = 0; page < panel->count(); ++page) {
            if (tabs && !tabs->isTabEnabled(page))
                continue;
            panel->setCurrentIndex(page);
            QApplication::processEvents();
            look();
        }
    }
}

QWidget *Focus(QWidget &form)
{
    return form.focusWidget() ? form.focusWidget() : &form;
}

/// Fields, lists and buttons that the user can work with now, those of tool bars left out. Texts that can
/// only be read are no work.
std::vector<QWidget *> Workable(const QWidget &form)
{
    std::vector<QWidget *> found;
    for (QWidget *widget : form.findChildren<QWidget *>()) {
        const bool isButton = qobject_cast<QAbstractButton *>(widget) && !qobject_cast<QToolButton *>(widget);
        if (widget->isVisible() && widget->isEnabled() && !IsPartOfAField(widget) &&
            (isButton || IsList(widget) || (IsField(widget) && !IsLocked(widget))))
            found.push_back(widget);
    }
    return found;
}

/// What a row of Tab presses stops at, with the other choices of a row of options, which the arrows reach.
QSet<const QWidget *> ReachedByTab(QWidget &form)
{
    constexpr int fieldsOfADate = 3;
    QSet<const QWidget *> reached;
    const auto presses = form.findChildren<QWidget *>().size() * fieldsOfADate;
    for (qsizetype i = 0; i < presses; ++i) {
        QTest::keyClick(Focus(form), Qt::Key_Tab);
        reached.insert(Focus(form));
    }
    for (const QRadioButton *option : form.findChildren<QRadioButton *>()) {
        for (const QRadioButton *other : option->parentWidget()->findChildren<QRadioButton *>()) {
            if (reached.contains(option))
                reached.insert(other);
        }
    }
    return reached;
}

/// The command has a shortcut or is in a menu.
bool IsCommandForKeys(const QAction *command)
{
    const QList<QObject *> places = command->associatedObjects();
    return !command->shortcut().isEmpty() ||
           std::any_of(places.begin(), places.end(), [](QObject *at) { return qobject_cast<QMenu *>(at); });
}

/// Every mnemonic that works on the page shown, with what it leads to.
QMultiMap<QString, QWidget *> Mnemonics(const QWidget &form)
{
    QMultiMap<QString, QWidget *> found;
    const auto add = [&found](const QString &text, QWidget *target) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (!key.isEmpty() && target->isEnabled())
            found.insert(key.right(1), target);
    };
    for (QWidget *widget : form.findChildren<QWidget *>()) {
        if (!widget->isVisible())
            continue;
        if (auto *button = qobject_cast<QAbstractButton *>(widget))
            add(button->text(), button);
        else if (auto *label = qobject_cast<QLabel *>(widget); label && label->buddy())
            add(label->text(), label->buddy());
        else if (auto *tabs = qobject_cast<QTabBar *>(widget))
            for (int tab = 0; tab < tabs->count(); ++tab)
                add(tabs->tabText(tab), tabs);
    }
    return found;
}

QRect Place(const QWidget &form, const QWidget *widget)
{
    return {widget->mapTo(&form, QPoint(0, 0)), widget->size()};
}

QString Describe(const QWidget *widget)
{
    return QString::fromLatin1(widget->metaObject()->className()) % u' ' % widget->objectName();
}
} // namespace

/// What must hold for every form of the program.
class test_nets final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data()
    {
        QTest::addColumn<int>("form");
        for (size_t i = 0; i < FormRegistry().size(); ++i)
            QTest::newRow(qPrintable(FormRegistry()[i].name)) << static_cast<int>(i);
    }
    void initTestCase()
    {
        QApplication::setStyle(u"Fusion"_qs);
        // Whatever else is installed, the measures are those of the font that the tests bring along.
        QApplication::setFont(QFont(u"DejaVu Sans"_qs, QApplication::font().pointSize()));
        m_database = std::make_unique<TestDatabase>();
        m_user = std::make_unique<ScriptedDialogs>();
        FillForms();
        LoadSystemValues();
    }

    void opens()
    {
        const auto form = Shown();
        QVERIFY(form->isVisible());
        QCOMPARE(form->objectName(), Entry().name.section(u' ', 0, 0));
        QVERIFY(!form->windowTitle().isEmpty());
        // The smallest screens that the program is meant for, 1024 wide or 720 high, less what the desktop
        // keeps.
        const QSize needed = form->minimumSizeHint();
        QVERIFY2(needed.width() <= 1024 && needed.height() <= 650,
                 qPrintable(QString::number(needed.width()) % u'x' % QString::number(needed.height())));
    }

    void names_are_unique()
    {
        const auto form = Shown();
        QSet<QString> seen{form->objectName()};
        for (const QWidget *widget : form->findChildren<QWidget *>()) {
            const QString name = widget->objectName();
            if (IsField(widget) || IsList(widget) || qobject_cast<const QAbstractButton *>(widget))
                QVERIFY2(!name.isEmpty() || IsPartOfAField(widget) || widget->inherits("QToolButton"),
                         qPrintable(QString(u"no name: " % Describe(widget))));
            if (name.isEmpty() || name.startsWith(u"qt_") || IsPartOfAField(widget))
                continue;
            QVERIFY2(!seen.contains(name), qPrintable(name));
            seen.insert(name);
        }
    }

    void every_input_has_a_label()
    {
        const auto form = Shown();
        QSet<const QWidget *> labelled;
        for (const QLabel *label : form->findChildren<QLabel *>()) {
            if (label->buddy() && !label->text().isEmpty())
                labelled.insert(label->buddy());
        }
        for (const QWidget *widget : form->findChildren<QWidget *>()) {
            if (!IsField(widget) && !IsList(widget))
                continue;
            QVERIFY2(labelled.contains(widget) || !widget->accessibleName().isEmpty(),
                     qPrintable(Describe(widget)));
        }
        for (const QAbstractButton *button : form->findChildren<QAbstractButton *>()) {
            if (IsPartOfAField(button) || button->inherits("QToolButton"))
                continue;
            QVERIFY2(!button->text().isEmpty() || labelled.contains(button) ||
                         !button->accessibleName().isEmpty(),
                     qPrintable(Describe(button)));
        }
    }

    void tab_walks_as_one_reads()
    {
        const auto form = Shown();
        OnEveryPage(*form, [&] {
            const QWidget *before = nullptr;
            for (QWidget *at = form->nextInFocusChain(); at != form.get(); at = at->nextInFocusChain()) {
                const bool stops = at->focusPolicy() & Qt::TabFocus && at->isVisible() && at->isEnabled() &&
                                   !IsPartOfAField(at) && !at->inherits("QTabBar") &&
                                   !at->inherits("QTabWidget") && form->isAncestorOf(at);
                if (!stops)
                    continue;
                if (before) {
                    const QRect from = Place(*form, before);
                    const QRect to = Place(*form, at);
                    const bool sameRow = from.top() <= to.center().y() && to.center().y() <= from.bottom();
                    const bool onward = to.left() >= from.right() || (!sameRow && to.top() > from.top());
                    QVERIFY2(onward, qPrintable(QString(Describe(before) % u" -> " % Describe(at))));
                }
                before = at;
            }
        });
    }

    void keyboard_reaches_everything()
    {
        const auto form = Shown();
        OnEveryPage(*form, [&] {
            const QSet<const QWidget *> reached = ReachedByTab(*form);
            const QList<QWidget *> called = Mnemonics(*form).values();
            for (QWidget *widget : Workable(*form)) {
                const auto *button = qobject_cast<QAbstractButton *>(widget);
                const bool hasKey = called.contains(widget) || (button && !button->shortcut().isEmpty());
                QVERIFY2(hasKey || reached.contains(widget), qPrintable(Describe(widget)));
            }
            for (const QTabWidget *panel : form->findChildren<QTabWidget *>())
                QVERIFY2(panel->count() < 2 || reached.contains(panel->tabBar()),
                         qPrintable(Describe(panel)));
        });
        for (const QToolBar *bar : form->findChildren<QToolBar *>()) {
            for (const QAction *command : bar->actions())
                QVERIFY2(command->isSeparator() || IsCommandForKeys(command),
                         qPrintable(command->objectName()));
        }
    }

    void standard_keys_have_one_holder()
    {
        const auto form = Shown();
        QSet<QKeySequence> keys;
        for (const QShortcut *shortcut : form->findChildren<QShortcut *>(Qt::FindDirectChildrenOnly)) {
            QVERIFY2(!keys.contains(shortcut->key()), qPrintable(shortcut->key().toString()));
            keys.insert(shortcut->key());
        }
        const bool lists = !form->findChildren<ListView *>().isEmpty() && form->objectName() != u"frmMain";
        QVERIFY(!lists || keys.contains(QKeySequence::Print));
        for (const auto *button : form->findChildren<QPushButton *>(Qt::FindDirectChildrenOnly)) {
            const QKeySequence key = FormKeys::StandardKey(button->text().remove(u'&'));
            QVERIFY2(key.isEmpty() || keys.contains(key), qPrintable(Describe(button)));
        }
    }

    void mnemonics_are_unique()
    {
        const QString shared = Entry().sharedMnemonics;
        const auto form = Shown();
        OnEveryPage(*form, [&] {
            const QMultiMap<QString, QWidget *> mnemonics = Mnemonics(*form);
            for (const QString &letter : mnemonics.uniqueKeys()) {
                QStringList holders;
                for (const QWidget *holder : mnemonics.values(letter))
                    holders.append(Describe(holder));
                QVERIFY2(holders.size() == 1 || shared.contains(letter),
                         qPrintable(QString(letter % u": " % holders.join(u", "))));
            }
        });
    }

    /// The first key goes to something that takes it, if only as a row or a choice.
    void opens_with_the_focus_in_the_first_input()
    {
        const auto form = Shown();
        for (QWidget *at = form->nextInFocusChain(); at != form.get(); at = at->nextInFocusChain()) {
            const bool takesWords = at->isVisible() && at->isEnabled() && at->focusPolicy() & Qt::TabFocus &&
                                    (HasRows(at) || (IsField(at) && !IsLocked(at)));
            if (!takesWords)
                continue;
            const QWidget *focus = Focus(*form);
            QVERIFY2(IsField(focus) || IsPartOfAField(focus) || IsList(focus) ||
                         qobject_cast<const QRadioButton *>(focus),
                     qPrintable(QString(Describe(at) % u", not " % Describe(focus))));
            return;
        }
    }

    /// A discount of the person before would be charged to the new one.
    void new_starts_like_a_fresh_form()
    {
        const auto form = Shown();
        auto *button = form->findChild<QPushButton *>(u"NewBtn"_qs);
        if (!button || !button->isEnabled())
            QSKIP("makes no records");
        const auto fresh =
            std::find_if(FormRegistry().begin(), FormRegistry().end(),
                         [&form](const auto &entry) { return entry.name == form->objectName() % u" new"; });
        ScriptedDialogs user;
        if (form->objectName() == u"frmAddOrg")
            user.Expect(u"New Record"_qs, u"Clear forms?"_qs, Dialogs::Answer::Yes);
        button->click();
        const std::unique_ptr<QWidget> other = fresh->open();
        QCOMPARE(Contents(*form), Contents(*other));
    }

    void enter_presses_the_default_button_alone()
    {
        const auto form = Shown();
        if (!qobject_cast<QDialog *>(form.get()))
            QSKIP("is no dialog");
        QStringList pressed;
        QStringList expected;
        for (QPushButton *button : form->findChildren<QPushButton *>()) {
            // What the button does is not at stake here.
            disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
            connect(button, &QAbstractButton::clicked, form.get(),
                    [&pressed, button] { pressed.append(button->objectName()); });
            if (button->isDefault() && button->isVisible() && button->isEnabled())
                expected.append(button->objectName());
        }
        QVERIFY(expected.size() <= 1);
        QVERIFY2(!expected.isEmpty() || Entry().recordField.isEmpty(), "a record is saved by Enter");
        QTest::keyClick(form.get(), Qt::Key_Return);
        QCOMPARE(pressed, expected);
        // An amount, or what is typed in a list, is taken first; a few fields have a task for Enter.
        for (QWidget *widget : Workable(*form)) {
            const bool isField = qobject_cast<QLineEdit *>(widget) || qobject_cast<QComboBox *>(widget);
            if (!isField || fieldsWithATaskForEnter.contains(widget->objectName()))
                continue;
            pressed.clear();
            QTest::keyClick(widget, Qt::Key_Return);
            QVERIFY2(pressed == expected, qPrintable(Describe(widget)));
        }
    }

    void the_focus_goes_to_the_field_that_is_missing()
    {
        const auto form = Shown();
        QList<QWidget *> missing;
        for (const CaptionLabel *label : form->findChildren<CaptionLabel *>()) {
            if (label->IsMissing())
                missing.append(label->buddy());
        }
        const auto buttons = form->findChildren<QPushButton *>();
        const auto save = std::find_if(buttons.begin(), buttons.end(), [](const QPushButton *button) {
            return button->isDefault() && button->isVisible() && button->isEnabled();
        });
        if (missing.isEmpty() || save == buttons.end())
            QSKIP("nothing is missing");
        int boxes = 0;
        const QScopedValueRollback<decltype(Dialogs::Hooks::msgBox)> scripted(
            Dialogs::Installed().msgBox, [&boxes](const QString &, const QString &title, auto &&...) {
                boxes += title == u"Form not complete" ? 1 : 0;
                return Dialogs::Answer::Ok;
            });
        (*save)->click();
        QCOMPARE(boxes, 1);
        QVERIFY2(missing.contains(form->focusWidget()) && form->focusWidget()->isVisible(),
                 form->focusWidget() ? qPrintable(Describe(form->focusWidget())) : "nothing");
    }

    void enter_presses_the_button_that_has_the_focus()
    {
        const auto form = Shown();
        QStringList pressed;
        const auto buttons = form->findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
            connect(button, &QAbstractButton::clicked, form.get(),
                    [&pressed, button] { pressed.append(button->objectName()); });
        }
        OnEveryPage(*form, [&] {
            for (QPushButton *button : buttons) {
                if (!button->isVisible() || !button->isEnabled())
                    continue;
                button->setFocus();
                pressed.clear();
                QTest::keyClick(button, Qt::Key_Return);
                QCOMPARE(pressed, QStringList(button->objectName()));
            }
        });
    }

    void rights_to_look_lock_every_field()
    {
        const FormEntry &entry = Entry();
        if (!entry.freeFields)
            QSKIP("rights do not reach into this form");
        const QString all = gUserRights;
        gUserRights = QString(all.size(), u'1');
        const auto form = Shown();
        gUserRights = all;
        for (const QWidget *widget : form->findChildren<QWidget *>()) {
            if (IsField(widget) && widget->isVisibleTo(form.get()) &&
                !entry.freeFields->contains(widget->objectName()))
                QVERIFY2(IsLocked(widget), qPrintable(Describe(widget)));
        }
    }

    void escape_leaves_and_asks_where_modified()
    {
        const FormEntry &entry = Entry();
        const auto unchanged = Shown();
        if (!qobject_cast<QDialog *>(unchanged.get()))
            QSKIP("is no dialog");
        QTest::keyClick(Focus(*unchanged), Qt::Key_Escape);
        QVERIFY(!unchanged->isVisible());
        if (entry.recordField.isEmpty())
            return;

        const auto form = Shown();
        auto *field = form->findChild<QWidget *>(entry.recordField);
        QVERIFY(field);
        QTest::keyClicks(field, "x");
        for (const Dialogs::Answer answer : {Dialogs::Answer::Cancel, Dialogs::Answer::No}) {
            ScriptedDialogs user;
            user.Expect(u"Warning"_qs, u"Some of the data has changed.\nOkay to update before exiting?"_qs,
                        answer);
            QTest::keyClick(field, Qt::Key_Escape);
            QVERIFY(user.AllCame());
            QCOMPARE(form->isVisible(), answer == Dialogs::Answer::Cancel);
        }
    }

    void the_first_escape_closes_an_open_list()
    {
        const auto form = Shown();
        if (!qobject_cast<QDialog *>(form.get()))
            QSKIP("is no dialog");
        int lists = 0;
        for (QWidget *widget : Workable(*form)) {
            auto *combo = qobject_cast<QComboBox *>(widget);
            if (!combo || combo->count() == 0)
                continue;
            combo->setFocus();
            QWidget *list = combo->isEditable() ? combo->completer()->popup() : combo->view();
            if (combo->isEditable())
                QTest::keyClicks(combo, combo->itemText(combo->count() - 1).trimmed().left(1));
            else
                combo->showPopup();
            if (!list->isVisible())
                continue;
            ++lists;
            QTest::keyClick(list, Qt::Key_Escape);
            QVERIFY2(!list->isVisible() && form->isVisible(), qPrintable(Describe(combo)));
        }
        if (lists == 0)
            QSKIP("has no list that opens");
    }

    void edges_and_heights_are_ruled()
    {
        const auto form = Shown();
        std::vector<int> heights; // of the lists on each page
        OnEveryPage(*form, [&] {
            QVERIFY2(Ruler::Faults(*form).isEmpty(), qPrintable(Ruler::Faults(*form).join(u'\n')));
            heights.push_back(Ruler::HeightOfLists(*form));
        });
        form->resize(form->size() * 1.4);
        auto height = heights.cbegin();
        OnEveryPage(*form, [&] {
            if (height == heights.cend())
                return; // a fault was found before, which has been told
            QVERIFY2(Ruler::Faults(*form).isEmpty(), qPrintable(Ruler::Faults(*form).join(u'\n')));
            const int before = *height++;
            if (before == 0)
                return;
            const int band = Ruler::BandBelowLists(*form);
            QVERIFY2(band <= 5 * form->fontMetrics().height(), qPrintable(QString::number(band)));
            QVERIFY2(Ruler::HeightOfLists(*form) > before, qPrintable(QString::number(before)));
        });
    }

    void nothing_is_clipped()
    {
        const auto form = Shown();
        form->resize(form->minimumSizeHint());
        QApplication::processEvents(); // a wrapped text asks for its height when it has its width
        OnEveryPage(*form, [&] {
            for (const QWidget *widget : form->findChildren<QWidget *>()) {
                if (!widget->isVisible() || IsPartOfAField(widget))
                    continue;
                const auto *label = qobject_cast<const QLabel *>(widget);
                const bool hasText = (label && !label->wordWrap()) || IsField(widget) ||
                                     qobject_cast<const QAbstractButton *>(widget);
                if (!hasText)
                    continue;
                const QSize needed = widget->minimumSizeHint();
                QVERIFY2(widget->width() >= needed.width() && widget->height() >= needed.height(),
                         qPrintable(Describe(widget)));
                QVERIFY2(widget->visibleRegion().boundingRect().size() == widget->size(),
                         qPrintable(QString(u"covered: " % Describe(widget))));
            }
        });
    }

private:
    static const FormEntry &Entry()
    {
        QFETCH_GLOBAL(int, form);
        return FormRegistry()[static_cast<size_t>(form)];
    }

    static std::unique_ptr<QWidget> Shown()
    {
        std::unique_ptr<QWidget> form = Entry().open();
        form->show();
        QApplication::setActiveWindow(form.get());
        QApplication::processEvents();
        return form;
    }
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_user; ///< no form may ask anything by being opened
};

QTEST_MAIN(test_nets)
#include "test_nets.moc"
