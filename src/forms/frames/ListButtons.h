#pragma once

#include "database/statements/Rights.h"

class FormBuilder;
class ListView;
class QPushButton;

/// The row of buttons below the list of a maintenance screen. Enter on a row edits it, the Delete key
/// deletes the selected ones; what the buttons do is the form's to connect.
class ListButtons final
{
public:
    ListButtons(FormBuilder &form, ListView *list);

    /// Shows what a level of the list's right allows; below Edit, rows can be looked at only. `chosen` tells
    /// that rows are selected.
    void Apply(Level level, bool chosen) const;

    QPushButton *add;
    QPushButton *edit;
    QPushButton *del;
    QPushButton *refresh;
    QPushButton *exit;
};
