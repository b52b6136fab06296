#pragma once

#include <QString>

#include <optional>

class QWidget;

/// One thing that the monkey does, written as a line, so that a run can be played again.
struct MonkeyDeed {
    enum class Kind {
        Key,     ///< "Alt+N" to the window that has the focus
        KeyMain, ///< the same to the main window, whatever stands in front of it
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
    /// Does it, and returns when the program has dealt with it, which may be long after.
    void Do() const;
};

/// The window that a user would have before him: an open menu or list, else the modal one in front, else the
/// active one, else the first that is shown.
QWidget *MonkeyWindow();
/// Whether a run is under way, be its box shown yet or not.
bool MonkeyWaitsForRun();
