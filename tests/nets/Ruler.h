#pragma once

#include <QStringList>

class QWidget;

/// Measures the page that a form shows.
namespace Ruler
{
/// Captions that are not at one edge, buttons of a row that have several widths, and lists or texts side by
/// side that end on several lines.
QStringList Faults(const QWidget &form);
/// The height that all lists and texts of several lines take, 0 if the page has none.
int HeightOfLists(const QWidget &form);
/// The highest band without anything in it below the lowest of them.
int BandBelowLists(const QWidget &form);
} // namespace Ruler
