#include "core/shell/ChildArea.h"

#include "forms/frames/ButtonKeys.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

/// A main window with a "&Security" menu and two child windows that have that letter too.
class TestChildKeys final : public QObject
{
    Q_OBJECT

    QWidget *AddChild(const QList<QWidget *> &contents)
    {
        auto *form = new QWidget;
        auto *layout = new QVBoxLayout(form);
        for (QWidget *widget : contents)
            layout->addWidget(widget);
        m_area->Open(form);
        return form;
    }
    void PressAltS() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::AltModifier); }
    bool MenuIsOpen() const { return QApplication::activePopupWidget(); }

    std::unique_ptr<QMainWindow> m_window;
    ChildArea *m_area = nullptr;

private slots:
    void init()
    {
        ButtonKeys::Serve();
        m_window = std::make_unique<QMainWindow>();
        m_area = new ChildArea(m_window.get());
        m_window->setCentralWidget(m_area);
        m_window->menuBar()->addMenu(u"&Security"_qs)->addAction(u"&Users"_qs);
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
    }
    void cleanup() { m_window.reset(); }

    void ThePressedButtonIsThatOfTheActiveChild()
    {
        auto *search = new QPushButton(u"&Search"_qs);
        auto *other = new QPushButton(u"&Save"_qs);
        AddChild({new QLineEdit, search});
        AddChild({new QLineEdit, other});
        const QSignalSpy searched(search, &QPushButton::clicked);
        const QSignalSpy saved(other, &QPushButton::clicked);
        PressAltS();
        QCOMPARE(saved.size(), 1);
        m_area->activatePreviousSubWindow();
        PressAltS();
        QCOMPARE(searched.size(), 1);
        QCOMPARE(saved.size(), 1);
        QVERIFY(!MenuIsOpen());
    }

    /// Two mnemonics one straight after the other: the second finds what the first has done.
    void FastHands()
    {
        auto *open = new QPushButton(u"&New"_qs);
        auto *exit = new QPushButton(u"E&xit"_qs);
        auto *find = new QPushButton(u"Fin&d"_qs);
        auto *grey = new QPushButton(u"&Grey"_qs);
        QWidget *form = AddChild({new QLineEdit, open, exit, find, grey});
        const QSignalSpy exits(exit, &QPushButton::clicked);
        const QSignalSpy finds(find, &QPushButton::clicked);
        const auto alt = [form](Qt::Key key) { QTest::keyClick(form->focusWidget(), key, Qt::AltModifier); };
        connect(grey, &QPushButton::clicked, find, [find] { find->setEnabled(false); });
        connect(open, &QPushButton::clicked, form, [&] {
            QDialog dialog(form);
            QTimer::singleShot(0, &dialog, [&] {
                // The desktop has not moved the focus to the dialog yet.
                QApplication::setActiveWindow(m_window.get());
                alt(Qt::Key_X);
                QVERIFY(!form->parentWidget()->close());
                QTimer::singleShot(150, &dialog, &QDialog::reject);
            });
            dialog.exec();
        });
        alt(Qt::Key_N);
        QVERIFY(exits.isEmpty() && form->isVisible());
        QApplication::setActiveWindow(m_window.get());
        alt(Qt::Key_X);
        QCOMPARE(exits.size(), 1);
        alt(Qt::Key_G);
        alt(Qt::Key_D);
        QTest::qWait(150);
        QVERIFY(finds.isEmpty());
    }

    void ACaptionLeadsToItsField()
    {
        auto *caption = new QLabel(u"&Surname:"_qs);
        auto *surname = new QLineEdit;
        caption->setBuddy(surname);
        AddChild({new QLineEdit, caption, surname});
        PressAltS();
        QVERIFY(surname->hasFocus());
    }

    void ClosingLeadsBackToTheWindowBefore()
    {
        AddChild({new QLineEdit});
        QWidget *before = AddChild({new QLineEdit});
        QWidget *last = AddChild({new QLineEdit});
        last->parentWidget()->close();
        QCOMPARE(m_area->activeSubWindow()->widget(), before);
    }

    void ALetterThatNobodyHasIsNotTyped()
    {
        auto *telephone = new QLineEdit(u"01835"_qs);
        AddChild({telephone});
        telephone->selectAll();
        QTest::keyClick(telephone, Qt::Key_J, Qt::AltModifier);
        QCOMPARE(telephone->text(), u"01835"_qs);
    }

    void TheMenuOpensWhereTheChildCannot()
    {
        auto *search = new QPushButton(u"&Search"_qs);
        AddChild({new QLineEdit, search});
        search->setEnabled(false);
        PressAltS();
        QTRY_VERIFY(MenuIsOpen());
        QApplication::activePopupWidget()->close();
    }
};

QTEST_MAIN(TestChildKeys)
#include "test_childkeys.moc"
