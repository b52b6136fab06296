#pragma once

#include <QObject>

class QKeySequence;
class QMdiArea;

/// The mnemonics of the active child window come before those of the menu bar: if both have an S, Alt+S
/// presses the child's "&Search", and the menu is reached with F10. The toolkit alone would open neither, and
/// only move the focus from one to the other.
class ChildKeys final : public QObject
{
    Q_OBJECT

public:
    explicit ChildKeys(QMdiArea *children);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// False if the active child has no such key, or has it twice.
    bool Press(const QKeySequence &key) const;

    QMdiArea *m_children;
};
