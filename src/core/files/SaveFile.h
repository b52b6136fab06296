#pragma once

#include <QSaveFile>

/// "Unable to write 'name': why." for a file that was not written.
QString UnableToWrite(const QSaveFile &file);
