#include "tour/TourDriver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>

#include <cstdio>
#include <cstdlib>

namespace
{
[[noreturn]] void GiveUp(const QString &message)
{
    std::fprintf(stderr, "The tour failed: %s\n", qPrintable(message));
    std::exit(1);
}

QModelIndex RowStarting(const QAbstractItemView &view, const QString &text, const QModelIndex &below = {})
{
    const QAbstractItemModel &model = *view.model();
    for (int row = 0; row < model.rowCount(below); ++row) {
        const QModelIndex index = model.index(row, 0, below);
        if (index.data().toString().startsWith(text))
            return index;
        const QModelIndex inner = RowStarting(view, text, index);
        if (inner.isValid())
            return inner;
    }
    return {};
}

QAbstractItemView &ListOf(QWidget &screen, const QString &name)
{
    auto *view = qobject_cast<QAbstractItemView *>(&Hands::Control(screen, name));
    if (!view)
        GiveUp(name % u" of " % screen.objectName() % u" is not a list");
    return *view;
}

QPoint PointOfRow(QAbstractItemView &view, const QString &text)
{
    const QModelIndex index = RowStarting(view, text);
    if (!index.isValid())
        GiveUp(u"no row \"" % text % u"\" in " % view.objectName());
    view.scrollTo(index);
    return view.visualRect(index).center();
}
} // namespace

QWidget &Hands::Control(QWidget &screen, const QString &name)
{
    auto *control = screen.objectName() == name ? &screen : screen.findChild<QWidget *>(name);
    if (!control)
        GiveUp(screen.objectName() % u" has no " % name);
    if (!control->isVisible())
        GiveUp(name % u" of " % screen.objectName() % u" does not show");
    return *control;
}

void Hands::Type(QWidget &screen, const QString &name, const QString &text)
{
    QWidget &control = Control(screen, name);
    if (!control.isEnabled())
        GiveUp(name % u" of " % screen.objectName() % u" is disabled");
    QWidget *field = &control;
    if (auto *combo = qobject_cast<QComboBox *>(&control))
        field = combo->lineEdit();
    QTest::mouseClick(field, Qt::LeftButton);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
    if (!qobject_cast<QPlainTextEdit *>(field) && !qobject_cast<QTextEdit *>(field))
        QTest::keyClick(field, Qt::Key_Tab);
}

void Hands::Press(QWidget &screen, const QString &name)
{
    QWidget &button = Control(screen, name);
    if (!button.isEnabled())
        GiveUp(name % u" of " % screen.objectName() % u" is disabled");
    button.setFocus();
    if (auto *marked = qobject_cast<QAbstractButton *>(&button); marked && marked->isCheckable())
        QTest::keyClick(marked, Qt::Key_Space);
    else
        QTest::mouseClick(&button, Qt::LeftButton);
}

void Hands::Key(QWidget &screen, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : &screen, key, modifiers);
}

void Hands::Choose(QWidget &screen, const QString &name, const QString &text)
{
    auto *combo = qobject_cast<QComboBox *>(&Control(screen, name));
    const int row = combo ? combo->findText(text) : -1;
    if (row < 0)
        GiveUp(u"no row \"" % text % u"\" in " % name);
    combo->setFocus();
    QTest::keyClick(combo, row > combo->currentIndex() ? Qt::Key_Down : Qt::Key_Up);
    while (combo->currentIndex() != row) {
        const int before = combo->currentIndex();
        QTest::keyClick(combo, row > before ? Qt::Key_Down : Qt::Key_Up);
        if (combo->currentIndex() == before)
            GiveUp(name % u" does not follow the arrow keys");
    }
    QTest::keyClick(combo, Qt::Key_Tab);
}

void Hands::ClickRow(QWidget &screen, const QString &name, const QString &text,
                     Qt::KeyboardModifiers modifiers)
{
    QAbstractItemView &view = ListOf(screen, name);
    const QPoint point = PointOfRow(view, text);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, point);
}

void Hands::DoubleClickRow(QWidget &screen, const QString &name, const QString &text)
{
    QAbstractItemView &view = ListOf(screen, name);
    const QPoint point = PointOfRow(view, text);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, point);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, point);
}

QStringList Hands::Rows(QWidget &screen, const QString &name)
{
    const QAbstractItemModel &model = *ListOf(screen, name).model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells.append(model.index(row, column).data().toString());
        rows.append(cells.join(QLatin1String(" | ")));
    }
    return rows;
}

QString Hands::Text(QWidget &screen, const QString &name)
{
    const QWidget &control = Control(screen, name);
    if (const auto *edit = qobject_cast<const QLineEdit *>(&control))
        return edit->text();
    if (const auto *label = qobject_cast<const QLabel *>(&control))
        return label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&control))
        return button->text();
    if (const auto *combo = qobject_cast<const QComboBox *>(&control))
        return combo->currentText();
    if (const auto *notes = qobject_cast<const QPlainTextEdit *>(&control))
        return notes->toPlainText();
    GiveUp(name % u" shows no text");
}

void Hands::Tab(QWidget &screen, const QString &caption)
{
    for (QTabBar *bar : screen.findChildren<QTabBar *>()) {
        for (int tab = 0; tab < bar->count(); ++tab) {
            if (QString(bar->tabText(tab)).remove(u'&') == caption && bar->isVisible()) {
                QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
                return;
            }
        }
    }
    GiveUp(screen.objectName() % u" has no tab " % caption);
}

void Hands::Command(QWidget &mainWindow, const QString &identifier)
{
    auto *command = mainWindow.findChild<QAction *>(identifier);
    if (!command || !command->isEnabled())
        GiveUp(u"the command " % identifier % u" is not available");
    auto *bar = mainWindow.findChild<QMenuBar *>();
    for (QAction *heading : bar->actions()) {
        QMenu *menu = heading->menu();
        if (!menu || !menu->actions().contains(command))
            continue;
        menu->popup(bar->mapToGlobal(bar->actionGeometry(heading).bottomLeft()));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(command).center());
        return;
    }
    command->trigger();
}
