#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <algorithm>

/// A user without a mouse: every key goes to what has the focus.
class Keyboard final
{
public:
    explicit Keyboard(QWidget &form)
        : m_form(form)
    {
        form.show();
        TakeWindow();
    }

    void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) const
    {
        QWidget *at = m_form.focusWidget();
        QTest::keyClick(at ? at : &m_form, key, with);
    }
    /// A mnemonic, which holds its button down for a tenth of a second before it clicks.
    void Alt(Qt::Key key) const
    {
        TakeWindow();
        Press(key, Qt::AltModifier);
        const QList<QAbstractButton *> buttons = m_form.findChildren<QAbstractButton *>();
        const bool clicked = QTest::qWaitFor([&buttons] {
            return std::none_of(buttons.begin(), buttons.end(),
                                [](const QAbstractButton *button) { return button->isDown(); });
        });
        if (!clicked)
            qFatal("a button of %s stays down", qPrintable(m_form.objectName()));
    }
    void Type(const QString &text) const { QTest::keyClicks(m_form.focusWidget(), text); }
    /// Tab until the focus is there; a full round without it ends the test.
    void TabTo(const QString &name) const
    {
        for (int tab = 0; tab < 100; ++tab) {
            if (m_form.focusWidget() && m_form.focusWidget()->objectName() == name)
                return;
            Press(Qt::Key_Tab);
        }
        qFatal("Tab never comes to %s", qPrintable(name));
    }
    void TypeAt(const QString &name, const QString &text) const
    {
        TabTo(name);
        Type(text);
    }

private:
    /// A desktop gives the keyboard back to the window below one that closes; a test has none.
    void TakeWindow() const
    {
        m_form.activateWindow();
        QCoreApplication::processEvents();
        if (!QTest::qWaitForWindowActive(&m_form))
            qFatal("%s never got the keyboard", qPrintable(m_form.objectName()));
    }

    QWidget &m_form;
};
