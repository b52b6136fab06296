#pragma once

#include "database/statements/Rights.h"

class FormBuilder;
class ListView;
class QPushButton;

/// The row of buttons below the list of a maintenance screen. Enter on a row edits it, the Delete key
/// deletes the selected ones; the form connects the buttons.
class ListButtons final
{
public:
    ListButtons(FormBuilder &form, ListView *list);

    /// Shows the buttons that a level of the list's right allows; below Edit, rows can only be looked at.
    /// `chosen` is whether rows are selected.
    void Apply(Level level, bool chosen) const;

    QPushButton *add;
    QPushButton *edit;
    QPushButton *del;
    QPushButton *refresh;
    QPushButton *exit;
};
