#pragma once

class QWidget;

/// Every form remembers its size, and its lists the widths of their columns, on this workstation
/// (WindowMemory).
namespace FormSize
{
/// Restores them when `form` is first shown, and stores them each time it is hidden. Forms and lists are
/// identified by their object names.
void Remember(QWidget *form);
} // namespace FormSize
