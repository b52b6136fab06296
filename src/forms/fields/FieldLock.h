#pragma once

class QAbstractButton;
class QWidget;

/// Locks a field, or every field and list below a page, against changes: texts stay readable and can be
/// copied, take the window's colour and leave the tab order; lists and trees can still be looked through;
/// everything else is disabled. Buttons are left alone, since the form decides about them.
void LockFields(QWidget *root, bool locked);

/// Enables or disables a button. A button that is disabled while it has the focus passes it to `next`: the
/// toolkit would pass it to the following button, which the same key would then press.
void EnableButton(QAbstractButton *button, bool enabled, QWidget *next);
