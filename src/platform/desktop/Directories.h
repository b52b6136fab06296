#pragma once

#include <QString>

/// Where the program's files lie. Paths come without a trailing separator.
namespace Directories
{
/// The directory of the executable, where the shipped files lie: `system`, the user guide, icons.
QString Program();
/// Where the program writes: its own directory or, where that cannot be written, the per-user data
/// directory.
QString Writable();
/// A file that the program writes, such as "prog.ini" or "temp/x.txt", as a full path.
QString WrittenFile(const QString &name);
/// A file of the shipped `system` folder: the one beside what the program writes if it stands there, else
/// the one beside the executable.
QString SystemFile(const QString &name);
/// Takes the place of the executable's directory (tests, the tour).
void SetProgram(const QString &directory);
/// `path` without the separators at its end.
QString WithoutTrailingSeparators(const QString &path);
} // namespace Directories
