#pragma once

#include <QFocusEvent>

/// Whether a field that loses the focus is left. A user who opens a menu, a list or another window comes back
/// to what was half typed.
inline bool IsLeft(const QFocusEvent &event)
{
    switch (event.reason()) {
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
    case Qt::ActiveWindowFocusReason:
        return false;
    default:
        return true;
    }
}
