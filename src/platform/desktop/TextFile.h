#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Decodes a file that some editor saved. The encoding is taken from its byte-order mark, or from the form of
/// `first`, the character that the file is known to begin with; otherwise it is UTF-8 if that fits, and else
/// windows-1252.
QString TextOf(const QByteArray &bytes, char16_t first = 0);

/// A line "[key]=value" in a settings file or a map.
struct KeyLine {
    QString key;
    QString value; ///< trimmed
};
/// The key and the value of a line, found by its first "[" and its first "]="; nullopt if either is missing.
std::optional<KeyLine> KeyLineOf(QStringView line);
