#pragma once

#include <QString>

#include <vector>

/// The kinds of entries in the map of rights.
enum class RightKind {
    Heading, ///< "!": a group, parent of the entries after it
    Level,   ///< "?": a right with a level
    YesNo,   ///< "#": a right that is given or not
    Remark,  ///< any other mark: shown, but nothing to set
};

struct SecurityMapEntry {
    RightKind kind = RightKind::Remark;
    QString key;       ///< with its mark, as in the file
    QString text;      ///< never empty
    int position = -1; ///< of the right in the rights text, 0 to 255; -1 for a heading and a remark
};

/// What the key of an entry, or of a node in the rights tree, means. The position is -1 for a heading, a
/// remark, and a right whose number is not in 0 to 255.
struct RightOfKey {
    RightKind kind = RightKind::Remark;
    int position = -1;

    explicit RightOfKey(const QString &key);
    bool IsRight() const { return kind == RightKind::Level || kind == RightKind::YesNo; }
};

/// The section of `language` in the map of rights, in the order of the file. Lines that are not an entry,
/// that name no position of the rights text or that repeat a key are skipped. A file that is missing or
/// cannot be read gives no entries.
std::vector<SecurityMapEntry> ReadSecurityMap(const QString &fileName, const QString &language);
