#pragma once

#include <QIODevice>

class QFile;

/// Opens one of the program's own files for writing, but never follows a symbolic link of that name: somebody
/// else could have put the link there, pointing to a file that only this user may write. False if the file
/// cannot be opened.
bool OpenOwnFile(QFile &file, QIODevice::OpenMode mode);
