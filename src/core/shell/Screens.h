#pragma once

#include <QString>

#include <functional>

class QWidget;

/// A screen that a command opens.
struct Screen {
    /// Creates a child window; empty for a modal screen.
    std::function<QWidget *()> makeChild{};
    /// The object name of the child window.
    QString childName{};
    /// Refills a child window after a switch of the database; empty if the form has no Form_Refresh.
    std::function<void(QWidget *child)> refreshChild{};
    /// Lists again what a child window shows, which keeps its selection; empty if it cannot.
    std::function<void(QWidget *child)> relistChild{};
    /// Shows a modal screen and returns when it is closed.
    std::function<void(QWidget *parent)> runModal{};
    /// The child windows list again after the modal screen, which may have changed what they show.
    bool changesLists = false;
};

/// The screens, by the command that opens them. A command that has none, and that the main window does not
/// carry out itself, stays disabled.
namespace Screens
{
/// Null if the command opens no screen.
const Screen *Of(const QString &command);
/// The child screen with that object name.
const Screen *OfChild(const QString &name);

/// The modal screens that the main window needs apart from its commands. Tests install their own here.
struct Dialogues {
    /// The chooser of the database connection; its result is in gDialogResult. `proposed` is the path that
    /// it starts with where the session has none.
    std::function<void(QWidget *parent, const QString &proposed)> chooseDatabase;
    /// The properties of the open database, with its name as it starts.
    std::function<void(QWidget *parent, const QString &name, bool nameCanChange)> showProperties;
    /// The import wizard with its file chosen.
    std::function<void(QWidget *parent, const QString &file)> importFile;
};
Dialogues &Installed();

/// Installs the real screens, here and for the lower layers that ask for some.
void Install();
/// Of these, installs only the screens that other screens open (OtherScreens.h).
void InstallOpeners();
} // namespace Screens
