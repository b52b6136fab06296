#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

/// What a right leaves of a control.
enum class Left {
    Enabled,
    Disabled,
    Hidden,
    Locked,  ///< a field that shows its text and takes none
    Editable ///< a field that takes text
};

/// One line of the table of a screen's rights: with `right` at `level` and every other right full, `control`
/// is left so.
struct RightsRow {
    int right;
    int level;
    const char *control;
    Left left;
};

/// The rights text with one right at `level` and all others full.
QString RightsWith(int right, int level);

/// Opens the screen again for every line of its table, with the rights that the line states, and fails the
/// test for each control that is left otherwise. `open` gives the screen as it is when the right is
/// looked at: loaded, with the rows selected that its buttons need. All rights are full afterwards.
void CheckRights(const std::function<std::unique_ptr<QWidget>()> &open, const std::vector<RightsRow> &table);
