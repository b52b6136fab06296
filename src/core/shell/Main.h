#pragma once

/// Starts a session: the log, the settings, the database and the splash screen. Runs at the start of the
/// program and again after each log off; the event loop does the rest.
void Main();

/// Ends the splash screen's turn: loads and shows the main window.
void ShowMainWindow();

/// Unloads the main window, which ends its session, and starts the next one with Main.
void Restart();
