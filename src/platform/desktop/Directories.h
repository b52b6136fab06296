#pragma once

#include <QString>

/// Where the program's files are. Paths have no trailing separator.
namespace Directories
{
/// The directory of the executable, which contains the shipped files: `system`, the user guide, icons.
QString Program();
/// Where the program writes: its own directory or, if that is not writable, the per-user data directory.
QString Writable();
/// A file that the program writes, such as "prog.ini" or "temp/x.txt", as a full path.
QString WrittenFile(const QString &name);
/// A file of the `system` folder: the one in the directory that the program writes to if it exists, otherwise
/// the one beside the executable.
QString SystemFile(const QString &name);
/// Replaces the executable's directory (for tests and the tour).
void SetProgram(const QString &directory);
/// `path` without the separators at its end.
QString WithoutTrailingSeparators(const QString &path);
} // namespace Directories
