#include "tour/Keyboard.h"

#include "controls/ItemRoles.h"
#include "controls/TreeModel.h"
#include "tour/TourDriver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScopedValueRollback>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QWindow>

namespace
{
constexpr int mostTabs = 200; ///< more than any screen has fields

/// The letter of the caption that leads to a control, "" if there is none.
QString LetterOf(const QWidget &control)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(&control))
        return QKeySequence::mnemonic(button->text()).toString();
    for (const QLabel *label : control.window()->findChildren<QLabel *>()) {
        if (label->buddy() == &control && label->isVisible())
            return QKeySequence::mnemonic(label->text()).toString();
    }
    return {};
}

QString TickText(const QModelIndex &index)
{
    switch (static_cast<TreeTick>(index.data(TickRole).toInt())) {
    case TreeTick::On:
        return QStringLiteral(" (tick)");
    case TreeTick::Not:
        return QStringLiteral(" (cross)");
    default:
        return {};
    }
}

void ReadRows(const QAbstractItemModel &model, const QModelIndex &below, const QString &indent,
              QStringList &rows)
{
    for (int row = 0; row < model.rowCount(below); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(below); ++column)
            cells.append(model.index(row, column, below).data().toString());
        rows.append(indent % cells.join(QLatin1String(" | ")) % TickText(model.index(row, 0, below)));
        ReadRows(model, model.index(row, 0, below), indent % u"  ", rows);
    }
}

QAbstractItemView *FocusedList()
{
    return qobject_cast<QAbstractItemView *>(QApplication::focusWidget());
}
} // namespace

Keyboard::Keyboard(TourDriver &tour)
    : m_tour(tour)
{
}

void Keyboard::Watch()
{
    m_tour.When(
        QStringLiteral("nothing but keys"),
        [this] { return TourDriver::ScreenNamed(QStringLiteral("frmMain")); },
        [this](QWidget &) { QApplication::instance()->installEventFilter(this); });
}

void Keyboard::Release()
{
    m_tour.When(
        QStringLiteral("the mouse again"),
        [this] { return TourDriver::ScreenNamed(QStringLiteral("frmMain")); },
        [this](QWidget &) { QApplication::instance()->removeEventFilter(this); });
}

bool Keyboard::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick || type == QEvent::Wheel)
        m_tour.Fail(u"a mouse was used on " % watched->objectName());
    return false;
}

bool Keyboard::HasFocus(QWidget *screen) const
{
    if (!screen || screen->window()->windowHandle() != QGuiApplication::focusWindow())
        return false;
    auto *frame = qobject_cast<QMdiSubWindow *>(screen->parentWidget());
    return !frame || frame->mdiArea()->activeSubWindow() == frame;
}

void Keyboard::Queue(const QString &what, const std::function<QWidget *()> &found, Deeds deeds, bool picture)
{
    const auto ready = [this, found]() -> QWidget * {
        QWidget *screen = found();
        // If the desktop has put no window in front, Alt+Tab does it.
        if (screen && !QGuiApplication::focusWindow())
            screen->window()->activateWindow();
        return HasFocus(screen) ? screen : nullptr;
    };
    const auto act = [this, deeds = std::move(deeds)](QWidget &screen) {
        const QScopedValueRollback<QPointer<QWidget>> current(m_screen, &screen);
        if (deeds)
            deeds();
    };
    m_tour.When(what, ready, act, picture);
}

void Keyboard::On(const QString &screen, const QString &what, Deeds deeds)
{
    Queue(
        what, [screen] { return TourDriver::ScreenNamed(screen); }, std::move(deeds), false);
}

void Keyboard::See(const QString &screen, const QString &what, Deeds deeds)
{
    Queue(
        what, [screen] { return TourDriver::ScreenNamed(screen); }, std::move(deeds), true);
}

void Keyboard::SeeAt(const QString &screen, const QString &control, const QString &what, Deeds deeds)
{
    const auto found = [this, screen, control] {
        return Focus() == control ? TourDriver::ScreenNamed(screen) : nullptr;
    };
    Queue(what, found, std::move(deeds), true);
}

void Keyboard::Box(const QString &title, const QString &text, const QString &button)
{
    Box(
        title, [text] { return text; }, button);
}

void Keyboard::Box(const QString &title, const LateText &text, const QString &button)
{
    const auto press = [this, button] {
        for (QAbstractButton *one : m_screen->findChildren<QAbstractButton *>()) {
            if (QString(one->text()).remove(u'&') == button) {
                PressButton(*one);
                return;
            }
        }
        m_tour.Fail(u"no button " % button % u" in the box");
    };
    Queue(
        title, [this, title, text] { return m_tour.ExpectedBox(title, text()); }, press, true);
}

void Keyboard::ChooseFile(const QString &title, const QString &file)
{
    const auto name = [this, file] {
        Fill(QStringLiteral("fileNameEdit"), file);
        Tap(QStringLiteral("Return"));
    };
    Queue(
        title, [title] { return TourDriver::Chooser(title); }, name, true);
}

void Keyboard::Command(const QString &menu, int right, const QString &letter)
{
    // A button in the window in front may have the same letter as a menu, but none has that of the last menu.
    const int fromHelp = (menu == u"F" ? 6 : 4) - right;
    On(QStringLiteral("frmMain"), u"the menu " % menu, [this, fromHelp, letter] {
        Tap(QStringLiteral("Alt+H"));
        Expect(QApplication::activePopupWidget(), QStringLiteral("Alt+H opens no menu"));
        Tap(QStringLiteral("Left"), fromHelp);
        Tap(letter);
    });
}

void Keyboard::Tap(const QString &keys, int times)
{
    const QKeyCombination key = QKeySequence::fromString(keys)[0];
    for (int time = 0; time < times; ++time) {
        QWindow *window = QGuiApplication::focusWindow();
        Expect(window, u"no window has the focus for " % keys);
        QTest::keyClick(window, key.key(), key.keyboardModifiers());
    }
}

void Keyboard::Write(const QString &text)
{
    for (const QChar letter : text) {
        QWindow *window = QGuiApplication::focusWindow();
        Expect(window, u"no window has the focus for the text " % text);
        QTest::keyClick(window, letter.toLatin1());
    }
}

QWidget &Keyboard::Control(const QString &name) const
{
    Expect(m_screen, u"the screen of " % name % u" has closed");
    QWidget &control = Hands::Control(*m_screen, name);
    Expect(control.isEnabled(), name % u" of " % m_screen->objectName() % u" is disabled");
    return control;
}

bool Keyboard::IsAt(const QWidget &control) const
{
    const QWidget *focus = QApplication::focusWidget();
    return focus && (focus == &control || control.isAncestorOf(focus));
}

void Keyboard::TabTo(QWidget &control)
{
    for (int tabs = 0; tabs < mostTabs && !IsAt(control); ++tabs)
        Tap(QStringLiteral("Tab"));
    Expect(IsAt(control), u"Tab does not lead to " % control.objectName() % u" but stays at " % Focus());
}

void Keyboard::Go(const QString &name)
{
    QWidget &control = Control(name);
    const QString letter = LetterOf(control);
    if (IsAt(control))
        return;
    if (letter.isEmpty()) {
        TabTo(control);
        return;
    }
    Tap(letter);
    Expect(IsAt(control), letter % u" leads to " % Focus() % u" and not to " % name);
}

void Keyboard::Fill(const QString &name, const QString &text)
{
    Go(name);
    Tap(QStringLiteral("Ctrl+A"));
    Write(text);
}

void Keyboard::Press(const QString &name)
{
    auto *button = qobject_cast<QAbstractButton *>(&Control(name));
    Expect(button, name % u" is not a button");
    PressButton(*button);
}

void Keyboard::PressButton(QAbstractButton &button)
{
    const QString name = button.objectName() % u" \"" % button.text() % u'"';
    const QPointer<QAbstractButton> alive = &button;
    bool isPressed = false;
    const auto watch = connect(&button, &QAbstractButton::clicked, this, [&isPressed] { isPressed = true; });
    const QString letter = LetterOf(button);
    if (letter.isEmpty()) {
        TabTo(button);
        Tap(QStringLiteral("Space"));
    } else {
        Tap(letter);
    }
    // A button pressed by its letter is down for a moment first.
    const bool answered = QTest::qWaitFor([&] { return isPressed || !alive; });
    Expect(answered, letter % u" does not press " % name % u"; the focus is on " % Focus());
    disconnect(watch);
}

void Keyboard::Choose(const QString &name, const QString &text)
{
    Go(name);
    const auto *combo = qobject_cast<QComboBox *>(&Control(name));
    const int row = combo ? combo->findText(text, Qt::MatchStartsWith) : -1;
    Expect(row >= 0, name % u" offers no \"" % text % u'"');
    while (combo->currentIndex() != row) {
        const int before = combo->currentIndex();
        Tap(row > before ? QStringLiteral("Down") : QStringLiteral("Up"));
        Expect(combo->currentIndex() != before, name % u" does not follow the arrow keys");
    }
}

void Keyboard::Tick(const QString &name)
{
    Go(name);
    const auto *box = qobject_cast<QAbstractButton *>(&Control(name));
    if (!box->isChecked())
        Tap(QStringLiteral("Space"));
    Expect(box->isChecked(), name % u" cannot be ticked");
}

void Keyboard::ChooseFromMenu(const QString &caption)
{
    QWindow *window = QGuiApplication::focusWindow();
    Expect(window, QStringLiteral("no window has the focus for the menu key"));
    // The desktop makes this event of the key.
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, window->mapToGlobal(QPoint()));
    QApplication::sendEvent(window, &key);
    const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    Expect(menu, u"the menu key opens no menu at " % Focus());
    const auto isAt = [menu, &caption] {
        return menu->activeAction() && menu->activeAction()->text().section(u'\t', 0, 0) == caption;
    };
    for (qsizetype tried = 0; tried < menu->actions().size() && !isAt(); ++tried)
        Tap(QStringLiteral("Down"));
    Expect(isAt() && menu->activeAction()->isEnabled(), u"the menu does not offer " % caption);
    Tap(QStringLiteral("Return"));
}

bool Keyboard::Waited(const std::function<bool()> &holds)
{
    return QTest::qWaitFor(holds);
}

void Keyboard::ToRow(const QString &text)
{
    Walk(text, QStringLiteral("Home"), QStringLiteral("Down"));
}

void Keyboard::ToRowBelow(const QString &text)
{
    Tap(QStringLiteral("Down"));
    WalkOn(text, QStringLiteral("Down"));
}

void Keyboard::AddRow(const QString &text)
{
    Walk(text, QStringLiteral("Ctrl+Home"), QStringLiteral("Ctrl+Down"));
    Tap(QStringLiteral("Ctrl+Space"));
}

void Keyboard::Walk(const QString &text, const QString &firstKey, const QString &nextKey)
{
    const QAbstractItemView *list = FocusedList();
    Expect(list, u"the focus is on " % Focus() % u", which is not a list, for " % text);
    Tap(firstKey);
    WalkOn(text, nextKey);
}

void Keyboard::WalkOn(const QString &text, const QString &nextKey)
{
    const QAbstractItemView *list = FocusedList();
    while (!list->currentIndex().siblingAtColumn(0).data().toString().startsWith(text)) {
        const QModelIndex before = list->currentIndex();
        Tap(nextKey);
        Expect(list->currentIndex() != before, list->objectName() % u" has no row \"" % text % u'"');
    }
}

void Keyboard::OpenTab(const QString &caption)
{
    auto *tabs = m_screen->findChild<QTabWidget *>();
    if (!IsAt(*tabs))
        TabTo(*tabs->tabBar());
    for (int tried = 0; tried < tabs->count() && tabs->tabText(tabs->currentIndex()) != caption; ++tried)
        Tap(QStringLiteral("Ctrl+Tab"));
    Expect(tabs->tabText(tabs->currentIndex()) == caption,
           u"Ctrl+Tab does not lead to " % caption % u" but stays at " % Focus());
}

QString Keyboard::Title() const
{
    return m_screen->window()->windowTitle();
}

QString Keyboard::Focus() const
{
    const QWidget *focus = QApplication::focusWidget();
    if (!focus)
        return QStringLiteral("nothing");
    return focus->objectName().isEmpty() ? QString::fromLatin1(focus->metaObject()->className())
                                         : focus->objectName();
}

QString Keyboard::Text(const QString &name) const
{
    return Hands::Text(*m_screen, name);
}

QStringList Keyboard::Rows(const QString &name) const
{
    const auto *list = qobject_cast<QAbstractItemView *>(&Hands::Control(*m_screen, name));
    Expect(list, name % u" is not a list");
    QStringList rows;
    ReadRows(*list->model(), {}, {}, rows);
    return rows;
}

bool Keyboard::IsEnabled(const QString &name) const
{
    return Hands::Control(*m_screen, name).isEnabled();
}

void Keyboard::Expect(bool holds, const QString &message) const
{
    m_tour.Expect(holds, message);
}

void Keyboard::ExpectText(const QString &name, const QString &text) const
{
    Expect(Text(name) == text, name % u" shows \"" % Text(name) % u"\" and not \"" % text % u'"');
}

void Keyboard::ExpectRow(const QString &name, const QString &row) const
{
    Expect(Rows(name).contains(row),
           name % u" has no row \"" % row % u"\" among\n  " % Rows(name).mid(0, 20).join(u"\n  "));
}
