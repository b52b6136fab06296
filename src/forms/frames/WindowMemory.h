#pragma once

#include <QVariantMap>

/// What this workstation remembers about its windows, in "windows.dat" among the files that the program
/// writes. The file is read and replaced as a whole and never locked: a copy of the program that was killed
/// leaves no lock for others to wait for, and of two copies the last writer wins. A file that cannot be read
/// counts as empty; failure to write it is ignored.
namespace WindowMemory
{
/// What was stored for the window with that object name; empty if nothing was.
QVariantMap Recall(const QString &window);
/// Replaces what is stored for one window.
void Store(const QString &window, const QVariantMap &values);
} // namespace WindowMemory
