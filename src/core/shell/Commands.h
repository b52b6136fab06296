#pragma once

#include "database/statements/Rights.h"

#include <QString>

#include <span>
#include <vector>

/// A command of the main window. Its identifier is the object name of its action.
struct Command {
    const char *id;
    const char *caption;
    const char *icon;
    const char *hint = "";
    const char *shortcut = "";
};

/// A menu: its own tool, and the identifiers of what it holds; "" is a separator.
struct CommandMenu {
    const char *id;
    const char *caption;
    std::vector<const char *> entries;
};

/// A right, and the tool that a level below Full on it disables.
struct CommandRight {
    Right right;
    const char *id;
};

/// Every command that is no menu.
std::span<const Command> Commands();
/// The menu bar from left to right.
const std::vector<CommandMenu> &CommandMenus();
/// The sub-menu of `ID_Tools`.
const CommandMenu &OptionsMenu();
/// What stands on the tool bar beside the menus; "" is a separator.
std::span<const char *const> ToolBarCommands();
/// What a session without a database may use.
std::span<const char *const> CommandsWithoutDatabase();
/// The rights below the headings, in the order in which they are applied.
std::span<const CommandRight> CommandRights();
