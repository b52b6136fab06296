#pragma once

#include <QPoint>

class QSize;
class QWidget;

/// Where a window of a size goes to open over the middle of the window that holds `opener`, which may be one
/// within the main window: as far as it can be on the desktop, and `steps` title bars further down and to the
/// right. Steps that would leave the desktop start again from its edge.
QPoint PlaceOver(const QWidget *opener, QSize size, int steps = 0);
