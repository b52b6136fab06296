#pragma once

class QWidget;

/// Every form remembers its size, and its lists the widths of their columns, in "windows.ini" among the
/// files that the program writes.
namespace FormSize
{
/// Restores when `form` is first shown and stores each time it goes. Forms and lists are known by their
/// object names.
void Remember(QWidget *form);
} // namespace FormSize
