#pragma once

#include <QStringList>

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

/// Every command that is not a menu.
std::span<const Command> Commands();
/// The menu bar from left to right.
const std::vector<CommandMenu> &CommandMenus();
/// The sub-menu of `ID_Tools`.
const CommandMenu &OptionsMenu();
/// The commands on the tool bar; "" is a separator.
std::span<const char *const> ToolBarCommands();
/// The commands that work without a database.
std::span<const char *const> CommandsWithoutDatabase();
/// The tools that are disabled for a user with those rights, of menus and of commands.
QStringList ToolsClosedTo(const QString &rights);
