#pragma once

class QObject;
class QWidget;

/// The modal window in front of all others.
namespace ModalFront
{
/// Whether `target`, a widget, an action, a shortcut or a window of the desktop, belongs to `front` or to a
/// window that it opened.
bool Holds(const QWidget *front, const QObject *target);
/// Whether a modal window stands in front of what `target` belongs to.
bool Covers(const QObject *target);
} // namespace ModalFront
