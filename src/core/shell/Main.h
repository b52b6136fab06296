#pragma once

/// Starts a session: the log, the settings, the database and the splash screen. Called at the start of the
/// program and again after each log off; the event loop does the rest.
void Main();

/// Called when the splash screen is done: loads and shows the main window.
void ShowMainWindow();

/// Unloads the main window, which ends its session, and starts the next one with Main.
void Restart();
