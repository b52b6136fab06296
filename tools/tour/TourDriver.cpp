#include "tour/TourDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int pollEvery = 40;
constexpr int patience = 20000;
constexpr int settling = 150; ///< milliseconds for a screen to paint before its picture

/// The screen of a step that waits for something else.
QWidget *NoScreen()
{
    static QWidget none;
    return &none;
}

QWidget *ModalOrNull()
{
    return QApplication::activeModalWidget();
}

QString WhatIsOnScreen()
{
    QStringList seen;
    for (const QWidget *top : QApplication::topLevelWidgets()) {
        if (!top->isVisible())
            continue;
        const auto *box = qobject_cast<const QMessageBox *>(top);
        seen.append(top->objectName() % u" [" % top->windowTitle() % u"]" %
                    (box ? QString(u" " % box->text()) : QString()));
    }
    return seen.join(u"; ");
}
} // namespace

QWidget *TourDriver::ScreenNamed(const QString &name)
{
    if (QWidget *modal = ModalOrNull())
        return modal->objectName() == name ? modal : nullptr;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (top->objectName() == name && top->isVisible())
            return top;
        for (QWidget *child : top->findChildren<QWidget *>(name)) {
            if (child->isVisible() && qobject_cast<QMdiSubWindow *>(child->parentWidget()))
                return child;
        }
    }
    return nullptr;
}

TourDriver::TourDriver(QString pictureFolder)
    : m_folder(std::move(pictureFolder))
{
    QDir().mkpath(m_folder);
}

void TourDriver::When(const QString &what, std::function<QWidget *()> ready, Hands hands, bool picture)
{
    m_steps.push_back({what, std::move(ready), std::move(hands), picture});
}

void TourDriver::On(const QString &screen, const QString &what, Hands hands)
{
    When(
        what, [screen] { return ScreenNamed(screen); }, std::move(hands));
}

void TourDriver::See(const QString &screen, const QString &what, Hands hands)
{
    When(
        what, [screen] { return ScreenNamed(screen); }, std::move(hands), true);
}

void TourDriver::Box(const QString &title, const QString &text, const QString &button)
{
    const auto hands = [this, button](QWidget &screen) {
        const auto buttons = screen.findChildren<QAbstractButton *>();
        for (QAbstractButton *one : buttons) {
            if (QString(one->text()).remove(u'&') == button) {
                QTest::mouseClick(one, Qt::LeftButton);
                return;
            }
        }
        Expect(false, u"no button " % button % u" in the box");
    };
    When(
        title.isEmpty() ? text.left(40) : title, [this, title, text] { return ExpectedBox(title, text); },
        hands, true);
}

QWidget *TourDriver::ExpectedBox(const QString &title, const QString &text)
{
    auto *box = qobject_cast<QMessageBox *>(ModalOrNull());
    if (!box || !box->isVisible())
        return nullptr;
    Expect(box->windowTitle() == title && box->text() == text, u"expected the box [" % title % u"] " % text %
                                                                   u"\n  but there came [" %
                                                                   box->windowTitle() % u"] " % box->text());
    return box;
}

QWidget *TourDriver::Chooser(const QString &title)
{
    auto *chooser = qobject_cast<QFileDialog *>(ModalOrNull());
    return chooser && chooser->isVisible() && chooser->windowTitle() == title ? chooser : nullptr;
}

void TourDriver::ChooseFile(const QString &title, const QString &file)
{
    const auto hands = [file](QWidget &screen) {
        auto *name = screen.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, file);
        QTest::keyClick(name, Qt::Key_Enter);
    };
    When(
        title, [title] { return Chooser(title); }, hands, true);
}

void TourDriver::SeeFile(const QString &file, const QString &what, std::function<void()> look)
{
    const auto hands = [file, look = std::move(look)](QWidget &) {
        look();
        QFile::remove(file);
    };
    When(
        what, [file] { return QFile::exists(file) ? NoScreen() : nullptr; }, hands, true);
}

void TourDriver::WhenClosed(const QString &what, std::function<void()> action)
{
    const auto ready = []() -> QWidget * {
        for (const QWidget *top : QApplication::topLevelWidgets()) {
            if (top->isVisible())
                return nullptr;
        }
        return NoScreen();
    };
    When(what, ready, [action](QWidget &) { action(); });
}

int TourDriver::Run()
{
    QApplication::setQuitOnLastWindowClosed(false);
    m_waitingSince = QDateTime::currentMSecsSinceEpoch();
    QTimer::singleShot(0, [this] { Poll(); });
    // The program ends its event loop at Exit, but the tour goes on to its own last step.
    while (!m_done)
        QApplication::exec();
    return 0;
}

void TourDriver::Poll()
{
    if (m_steps.empty()) {
        std::printf("The tour went as it should: %d pictures in %s\n", m_pictures, qPrintable(m_folder));
        m_done = true;
        QApplication::quit();
        return;
    }
    QWidget *screen = m_atWork.contains(ModalOrNull()) ? nullptr : m_steps.front().ready();
    if (!screen || !MayGoOn(screen)) {
        if (QDateTime::currentMSecsSinceEpoch() - m_waitingSince > patience)
            Fail(u"waited in vain for: " % m_steps.front().what % u"\n  on screen: " % WhatIsOnScreen());
        QTimer::singleShot(pollEvery, [this] { Poll(); });
        return;
    }

    const Step step = std::move(m_steps.front());
    m_steps.pop_front();
    if (step.picture)
        Picture(step.what);
    m_waitingSince = QDateTime::currentMSecsSinceEpoch();
    // Scheduled before the hands act: a press may open a modal screen, whose own loop runs the next step.
    QTimer::singleShot(pollEvery, [this] { Poll(); });
    const QScopedValueRollback<QWidgetList> atWork(m_atWork, m_atWork + QWidgetList{screen});
    if (step.hands)
        step.hands(*screen);
}

bool TourDriver::MayGoOn(QWidget *screen) const
{
    return m_atWork.isEmpty() || screen == NoScreen() || (screen->isModal() && !m_atWork.contains(screen));
}

void TourDriver::Picture(const QString &what)
{
    QTest::qWait(settling);
    ++m_pictures;
    QString name = QString::number(m_pictures).rightJustified(3, u'0') % u'-';
    for (const QChar c : what)
        name += c.isLetterOrNumber() ? c.toLower() : QChar(u'-');
    QApplication::primaryScreen()->grabWindow(0).save(m_folder % u'/' % name % u".png");
}

void TourDriver::Expect(bool holds, const QString &message)
{
    if (!holds)
        Fail(message);
}

void TourDriver::Fail(const QString &message)
{
    Picture(QStringLiteral("failed"));
    std::fprintf(stderr, "The tour failed: %s\n", qPrintable(message));
    std::exit(1);
}
