#pragma once

#include <QFocusEvent>

class QWidget;

/// Whether a field that loses the focus is really left. A user who only opens a menu, a list or another
/// window comes back to the half-typed value.
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

/// Takes the user to the field at fault: on its tab, with its text selected, so that it can be typed over.
void FocusField(QWidget *field);
