#pragma once

class QWidget;

/// Every form remembers its size, and its lists the widths of their columns, in the memory that this
/// workstation has of its windows.
namespace FormSize
{
/// Restores when `form` is first shown and stores each time it goes. Forms and lists are known by their
/// object names.
void Remember(QWidget *form);
} // namespace FormSize
