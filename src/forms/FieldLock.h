#pragma once

class QWidget;

/// Locks a field, or every field and list below a page, against changes: texts stay readable and can be
/// copied, take the window's colour and leave the tab order; all else is disabled, but for lists and trees,
/// which can still be looked through. Buttons are left alone, since what they may do is the form's to say.
void LockFields(QWidget *root, bool locked);
