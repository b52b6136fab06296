#pragma once

class QWidget;

/// Returns the window that a question belongs to: the modal one, or else the active one; nullptr if neither
/// is on the screen. A question without a window would leave the focus nowhere when it closes.
QWidget *AskingWindow();
