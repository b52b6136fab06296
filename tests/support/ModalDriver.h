#pragma once

#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>

/// The hands of a test on real modal forms: a queue of the forms that must open, in order, each with what
/// to do on it. A modal form that nobody expected fails the test and is closed, and so does one that stays
/// open after its step; a step whose form never opened fails at the end.
class ModalDriver final : public QObject
{
    Q_OBJECT

public:
    using Step = std::function<void(QDialog &form)>;

    ModalDriver();
    ~ModalDriver() override;

    /// The next modal form has that object name. `step` runs once it is shown and has to close it; forms
    /// that it opens meanwhile are the next ones of the queue.
    void Expect(const QString &name, Step step);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void OnShown(QPointer<QDialog> form);

    struct Expected {
        QString name;
        Step step;
    };
    std::deque<Expected> m_expected;
};

/// The child of that object name, which must be there.
template <typename Widget>
Widget *Find(QWidget &form, const QString &name)
{
    auto *found = form.findChild<Widget *>(name);
    if (!found)
        qFatal("no %s in %s", qPrintable(name), qPrintable(form.objectName()));
    return found;
}
/// The text of a field.
QString TextIn(QWidget &form, const QString &field);
/// Clicks a button that is enabled and shown; a test fails on one that is not.
void Press(QWidget &form, const QString &button);
/// Types into a field as a user does: what it held goes first.
void TypeInto(QWidget &form, const QString &field, const QString &text);
/// The same, and leaves the field as Tab does.
void Enter(QWidget &form, const QString &field, const QString &text);
