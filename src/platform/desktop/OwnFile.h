#pragma once

#include <QIODevice>

class QFile;

/// Opens a file of the program's own for writing, and never what a symbolic link of its name leads to: the
/// link could be anybody's, and lead to a file that only this user may write. False if it cannot be opened.
bool OpenOwnFile(QFile &file, QIODevice::OpenMode mode);
