#pragma once

#include <QLatin1String>

class QString;

/// The password of the blank database that ships with the program; no user ever sees it.
constexpr QLatin1String TemplatePassword("marigold");

/// Copies a file over another, which stays unchanged if that fails. The copy will hold people's data, so only
/// its owner and group may read it.
bool CopyOver(const QString &from, const QString &to);

/// Removes the template's password from a copy of it. False if the file is not such a template; a file that
/// opens without a password is not one.
bool OpenUpTemplate(const QString &file);
