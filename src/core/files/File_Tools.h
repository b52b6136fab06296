#pragma once

#include <QString>

#include <functional>

/// True if OpenDocument would find that file.
bool DocumentExists(const QString &file);
/// Opens a document or a web address with its associated program. A file is looked for by its bare name
/// in gDocDir and then in the program's directory, so that documents may be moved there from wherever they
/// were registered. A failure shows its box; if no program is set for the type, `withoutProgram` runs,
/// or else the user may pick one.
/// `arguments` goes to a file that is a program. True on success.
bool OpenDocument(const QString &file, const QString &arguments = {},
                  const std::function<void()> &withoutProgram = {});
