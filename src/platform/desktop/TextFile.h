#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The text of a file that some editor saved: by its byte-order mark, or by the form of `first`, the
/// character that the file is known to begin with; else as UTF-8; else as windows-1252.
QString TextOf(const QByteArray &bytes, char16_t first = 0);

/// A line "[key]=value" of a settings file or a map.
struct KeyLine {
    QString key;
    QString value; ///< trimmed
};
/// The key and the value of a line, by its first "[" and its first "]="; nothing where one is missing.
std::optional<KeyLine> KeyLineOf(QStringView line);
