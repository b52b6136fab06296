#pragma once

#include <QLatin1String>

class QString;

/// The password of the blank database that ships with the program; no user ever sees it.
constexpr QLatin1String TemplatePassword("marigold");

/// Copies a file over another, which stays as it is if that fails. The copy holds people's data one day, and
/// is read by its owner and group alone.
bool CopyOver(const QString &from, const QString &to);

/// Takes the template's password off a copy of it. False if the file is no such template; one that opens
/// without a password is none.
bool OpenUpTemplate(const QString &file);
