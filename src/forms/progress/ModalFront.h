#pragma once

class QObject;
class QWidget;

/// The modal window in front of all others.
namespace ModalFront
{
/// Whether `target` (a widget, an action, a shortcut or a native window) belongs to `front` or to a window
/// that it opened.
bool Holds(const QWidget *front, const QObject *target);
/// Whether a modal window is in front of the window that `target` belongs to.
bool Covers(const QObject *target);
} // namespace ModalFront
