#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

/// The text of bytes in windows-1252; its five unused bytes become the characters of the same number.
QString FromWindows1252(const char *bytes, qsizetype size);

/// `text` in windows-1252; a character outside it becomes a numeric reference of HTML ("&#9731;").
QByteArray ToWindows1252(const QString &text);
/// The same into `out`, which must have room for mostBytesInWindows1252 for each UTF-16 unit; returns the
/// position after it.
char *WriteWindows1252(char *out, QStringView text);
constexpr qsizetype mostBytesInWindows1252 = 8;
