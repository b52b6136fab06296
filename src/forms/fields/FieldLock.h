#pragma once

class QAbstractButton;
class QWidget;

/// Locks a field, or every field and list below a page, against changes: texts stay readable and can be
/// copied, take the window's colour and leave the tab order; all else is disabled, but for lists and trees,
/// which can still be looked through. Buttons are left alone, since what they may do is the form's to say.
void LockFields(QWidget *root, bool locked);

/// Takes a button into use or out of it. One that goes out of use while it has the focus hands it to `next`:
/// the toolkit would hand it to the button behind it, which the same key would then press.
void EnableButton(QAbstractButton *button, bool enabled, QWidget *next);
