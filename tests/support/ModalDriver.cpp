#include "support/ModalDriver.h"

#include "core/shell/Screens.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

namespace
{
constexpr int longestStepMs = 5000;

void Fail(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}
} // namespace

ModalDriver::ModalDriver()
{
    qApp->installEventFilter(this);
    Screens::InstallOpeners();
}

ModalDriver::~ModalDriver()
{
    for (const Expected &expected : m_expected)
        Fail(u"Form never opened: " % expected.name);
}

void ModalDriver::Expect(const QString &name, Step step)
{
    m_expected.push_back({name, std::move(step)});
}

bool ModalDriver::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        auto *form = qobject_cast<QDialog *>(watched);
        if (form && form->isModal()) {
            QTimer::singleShot(0, this, [this, shown = QPointer<QDialog>(form)] { OnShown(shown); });
        }
    }
    return QObject::eventFilter(watched, event);
}

void ModalDriver::OnShown(QPointer<QDialog> form)
{
    if (!form || !form->isVisible())
        return;
    if (m_expected.empty() || m_expected.front().name != form->objectName()) {
        Fail(u"Unexpected form: " % form->objectName() % u" (" % form->windowTitle() % u')');
        form->done(QDialog::Rejected);
        return;
    }
    const Expected expected = m_expected.front();
    m_expected.pop_front();
    expected.step(*form);
    QTimer::singleShot(longestStepMs, form, [form] {
        if (!form->isVisible())
            return;
        Fail(u"Form stayed open: " % form->objectName());
        form->done(QDialog::Rejected);
    });
}

QString TextIn(QWidget &form, const QString &field)
{
    return Find<QLineEdit>(form, field)->text();
}

void Press(QWidget &form, const QString &button)
{
    auto *found = Find<QAbstractButton>(form, button);
    if (!found->isEnabled() || !found->isVisibleTo(&form)) {
        Fail(u"Button cannot be pressed: " % button);
        return;
    }
    QTest::mouseClick(found, Qt::LeftButton);
}

void TypeInto(QWidget &form, const QString &field, const QString &text)
{
    auto *found = Find<QWidget>(form, field);
    found->setFocus();
    if (auto *line = qobject_cast<QLineEdit *>(found))
        line->selectAll();
    else if (auto *notes = qobject_cast<QPlainTextEdit *>(found))
        notes->selectAll();
    else if (auto *combo = qobject_cast<QComboBox *>(found); combo && combo->lineEdit())
        combo->lineEdit()->selectAll();
    QTest::keyClick(found, Qt::Key_Delete);
    QTest::keyClicks(found, text);
}

void Enter(QWidget &form, const QString &field, const QString &text)
{
    TypeInto(form, field, text);
    QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(Find<QWidget>(form, field), &left);
}
