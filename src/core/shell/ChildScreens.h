#pragma once

#include "core/shell/Screens.h"

class ChildArea;
class QIcon;

/// The screens that are open in the main window, as its child windows and as records beside it.
class ChildScreens final
{
public:
    explicit ChildScreens(ChildArea *area)
        : m_area(area)
    {
    }

    /// Opens the child window of a command with that icon, or brings it to the front; nothing if the command
    /// has none.
    void Open(const QString &command, const QIcon &icon) const;
    /// Runs the hook of each open child window that has it, from the one opened last.
    void ForEach(std::function<void(QWidget *)> Screen::*refill) const;
    /// Closes the records that are open beside the main window, the last opened first; false if one stays
    /// open.
    bool CloseRecords() const;
    /// Closes the records, and then the child windows, the last opened first; false if one stays open. Child
    /// windows may still have something to store: close them while the database is open.
    bool CloseAll() const;

private:
    ChildArea *m_area;
};
