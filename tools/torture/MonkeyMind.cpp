#include "torture/MonkeyMind.h"

#include "core/session/Session.h"
#include "core/shell/Commands.h"
#include "nets/FormRegistry.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabBar>
#include <QWidget>

namespace
{
constexpr const char *keys[] = {"Tab",         "Tab",
                                "Tab",         "Shift+Tab",
                                "Return",      "Return",
                                "Space",       "Space",
                                "Esc",         "Esc",
                                "Up",          "Down",
                                "Down",        "Left",
                                "Right",       "Home",
                                "End",         "PgUp",
                                "PgDown",      "Del",
                                "Backspace",   "F2",
                                "F4",          "F5",
                                "F10",         "Alt+Down",
                                "Ctrl+A",      "Ctrl+C",
                                "Ctrl+V",      "Ctrl+X",
                                "Ctrl+Z",      "Ctrl+Tab",
                                "Ctrl+P",      "Ctrl+F4",
                                "Ctrl+F",      "Ctrl+N",
                                "Ctrl+S",      "Ctrl+Shift+Tab",
                                "Shift+End",   "Shift+Home",
                                "Shift+Down",  "Ctrl+Space",
                                "Menu",        "Ctrl+W",
                                "Ctrl+PgDown", "Enter",
                                "Insert",      "+"};

const char16_t *const texts[] = {
    u"Ann",         u"O'Neil", u"12.50",    u"1",
    u"99999999999", u"-3",     u"1/2/1990", u"31.2.26",
    u"[R1] York",   u"Leeds",  u"%",        u"_[x]",
    u"\"`;--",      u"Zoë Łu", u"日本語",   u"a b c d e f g h i j k l m n o p q r s t",
    u" ",           u"x@y.zz", u"www.z.zz", u"Pens",
    u"secret",      u"0.00"};

QStringList MnemonicsOf(const QWidget *window)
{
    QStringList found;
    const auto add = [&found](const QString &text) {
        const QString key = QKeySequence::mnemonic(text).toString(QKeySequence::PortableText);
        if (!key.isEmpty())
            found.append(key);
    };
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisible())
            continue;
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            add(button->text());
        else if (const auto *label = qobject_cast<const QLabel *>(widget); label && label->buddy())
            add(label->text());
        else if (const auto *bar = qobject_cast<const QMenuBar *>(widget))
            for (const QAction *menu : bar->actions())
                add(menu->text());
    }
    return found;
}

QList<const QWidget *> VisibleIn(const QWidget *window)
{
    QList<const QWidget *> found{window};
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        if (widget->isVisible() && widget->window() == window && !widget->visibleRegion().isEmpty())
            found.append(widget);
    }
    return found;
}
} // namespace

int MonkeyMind::Below(int end)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(end));
}

MonkeyDeed MonkeyMind::Key()
{
    return {MonkeyDeed::Kind::Key, QString::fromLatin1(Any(keys))};
}

MonkeyDeed MonkeyMind::Mnemonic(const QWidget *window)
{
    const QStringList found = MnemonicsOf(window);
    if (found.isEmpty())
        return Key();
    MonkeyDeed deed{MonkeyDeed::Kind::Key, found.at(Below(static_cast<int>(found.size())))};
    // A practised user types ahead of the desktop.
    if (Below(8) == 0)
        deed.kind = MonkeyDeed::Kind::KeyMain;
    return deed;
}

MonkeyDeed MonkeyMind::AtWidget(const QWidget *window)
{
    const QList<const QWidget *> found = VisibleIn(window);
    const QWidget *widget = found.at(Below(static_cast<int>(found.size())));
    const QRect room = widget->visibleRegion().boundingRect();
    if (room.isEmpty())
        return Key();
    const QPoint in(room.left() + Below(room.width()), room.top() + Below(room.height()));
    const QPoint at = widget->mapTo(window, in);
    const QString place = QString::number(at.x()) % u' ' % QString::number(at.y());
    const int which = Below(10);
    if (which == 0)
        return {MonkeyDeed::Kind::Mouse, u"right " % place};
    if (which == 1)
        return {MonkeyDeed::Kind::Mouse, u"double " % place};
    if (which < 5)
        return {MonkeyDeed::Kind::Wheel, place % (Below(2) == 0 ? u" 120" : u" -120")};
    return {MonkeyDeed::Kind::Mouse, u"left " % place};
}

/// Nobody gets past a logon by chance.
MonkeyDeed MonkeyMind::Splash(const QWidget *window)
{
    const auto *user = window->findChild<QLineEdit *>(QStringLiteral("txtUserName"));
    const auto *password = window->findChild<QLineEdit *>(QStringLiteral("txtPassword"));
    if (!user->isVisible())
        return {MonkeyDeed::Kind::Key, QStringLiteral("Esc"), 200};
    if (Below(20) == 0)
        return Key();
    if (password->hasFocus() && password->text().isEmpty())
        return {MonkeyDeed::Kind::Text, QStringLiteral("secret")};
    if (user->hasFocus() && user->text().isEmpty())
        return {MonkeyDeed::Kind::Text, QStringLiteral("clerk")};
    return {MonkeyDeed::Kind::Key, password->hasFocus() ? QStringLiteral("Return") : QStringLiteral("Tab")};
}

MonkeyDeed MonkeyMind::Next()
{
    const QWidget *window = MonkeyWindow();
    if (!window)
        return {MonkeyDeed::Kind::Key, QStringLiteral("Esc"), 5};
    if (window->objectName() == u"frmSplash")
        return Splash(window);
    const int which = Below(100);
    MonkeyDeed deed;
    if (qobject_cast<const QMessageBox *>(window) && which < 70)
        deed = which < 50 ? Mnemonic(window) : Key();
    else if (which < 38)
        deed = Key();
    else if (which < 65)
        deed = Mnemonic(window);
    else if (which < 88)
        deed = AtWidget(window);
    else if (which < 96)
        deed = {MonkeyDeed::Kind::Text, QString::fromUtf16(Any(texts))};
    else if (which < 99 || !gDBValid)
        deed = {MonkeyDeed::Kind::Command, QString::fromLatin1(Any(Commands()).id)};
    else
        deed = {MonkeyDeed::Kind::Form, Any(FormRegistry()).name};
    if (Below(50) == 0)
        deed.delay = 20 + Below(400);
    return deed;
}
