#pragma once

class FormBuilder;
class ListView;
class QPushButton;

/// The row of buttons below the list of a maintenance screen. Enter on a row edits it, the Delete key
/// deletes the selected ones; what the buttons do is the form's to connect.
class ListButtons final
{
public:
    ListButtons(FormBuilder &form, ListView *list);

    /// Shows what a level of the list's right allows: 2 adds, 3 changes, 9 deletes; below 3 rows can be
    /// looked at only. `chosen` tells that rows are selected.
    void Apply(int level, bool chosen) const;

    QPushButton *add;
    QPushButton *edit;
    QPushButton *del;
    QPushButton *refresh;
    QPushButton *exit;
};
