#pragma once

#include <QString>

#include <optional>

class QWidget;

/// One thing that the monkey does, written as a line, so that a run can be played again.
struct MonkeyDeed {
    enum class Kind {
        Key,     ///< "Alt+N" to the window that has the focus
        KeyMain, ///< the same to the main window, whatever is in front of it
        Text,    ///< typed into what has the focus
        Mouse,   ///< "left 120 40": a click there in the window in front; "double" and "right" likewise
        Wheel,   ///< "120 40 -120": that many eighths of a degree
        Command, ///< of the main window, by its identifier
        Form,    ///< of the registry of forms, by its name
        Close    ///< the window in front, by its frame
    };
    Kind kind = Kind::Key;
    QString what;
    int delay = 1; ///< milliseconds until the next one

    QString Line() const;
    static std::optional<MonkeyDeed> OfLine(const QString &line);
    /// Does it, and returns when the program has handled it, which may be much later.
    void Do() const;
};

/// The window that a user would be working with: an open menu or list, or else the modal window in front, the
/// active window, or the first that is shown.
QWidget *MonkeyWindow();
/// Whether a run is under way, whether or not its box is shown yet.
bool MonkeyWaitsForRun();
