#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

/// The text of bytes in windows-1252; its five unused places stand for themselves.
QString FromWindows1252(const char *bytes, qsizetype size);

/// `text` in windows-1252; a character outside it becomes a numeric reference of HTML ("&#9731;").
QByteArray ToWindows1252(const QString &text);
/// The same into `out`, which takes mostBytesInWindows1252 for each UTF-16 unit; gives the place behind it.
char *WriteWindows1252(char *out, QStringView text);
constexpr qsizetype mostBytesInWindows1252 = 8;
