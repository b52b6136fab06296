#pragma once

#include <QString>

#include <functional>

class QWidget;

/// A screen that a command opens.
struct Screen {
    /// Makes a child window; empty for a modal screen.
    std::function<QWidget *()> makeChild{};
    /// The object name of the child window.
    QString childName{};
    /// Fills a child window anew after a switch of the database; empty where the form has no Form_Refresh.
    std::function<void(QWidget *child)> refreshChild{};
    /// Shows a modal screen and returns when it closed.
    std::function<void(QWidget *parent)> runModal{};
};

/// The screens that stand, by the command that opens them. A command that has none, and that the main
/// window does not carry out by itself, stays disabled.
namespace Screens
{
/// Nothing where the command opens no screen.
const Screen *Of(const QString &command);
/// The child screen of that object name.
const Screen *OfChild(const QString &name);

/// The modal screens that the main window needs beside its commands. Tests put their own here.
struct Dialogues {
    /// The chooser of the database connection; its result is in gDialogResult.
    std::function<void(QWidget *parent)> chooseDatabase;
    /// The properties of the open database, with its name as it starts.
    std::function<void(QWidget *parent, const QString &name, bool nameCanChange)> showProperties;
};
Dialogues &Installed();

/// Installs the real screens, here and for the code below that asks for some.
void Install();
/// Of these the ones that screens open of each other, as of OtherScreens.h.
void InstallOpeners();
} // namespace Screens
