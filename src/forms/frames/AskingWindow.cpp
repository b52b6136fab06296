#include "forms/frames/AskingWindow.h"

#include <QApplication>
#include <QWidget>

QWidget *AskingWindow()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    // A window that is closing stays the active one for a moment, and would be destroyed under the question.
    QWidget *active = QApplication::activeWindow();
    return active && active->isVisible() ? active : nullptr;
}
