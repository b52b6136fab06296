#pragma once

#include <QString>

#include <vector>

/// What an entry of the map of rights stands for.
enum class RightKind {
    Heading, ///< "!": a group, parent of the entries behind it
    Level,   ///< "?": a right with a level
    YesNo,   ///< "#": a right that is given or not
    Remark,  ///< any other mark: shown, but nothing to set
};

struct SecurityMapEntry {
    RightKind kind = RightKind::Remark;
    QString key;       ///< with its mark, as it stands in the file
    QString text;      ///< never empty
    int position = -1; ///< of the right in the rights text, 0 to 255; -1 for a heading and a remark
};

/// What the key of an entry, or of a node of the rights tree, stands for. The position is -1 for a heading, a
/// remark, and a right whose number is none of 0 to 255.
struct RightOfKey {
    RightKind kind = RightKind::Remark;
    int position = -1;

    explicit RightOfKey(const QString &key);
    bool IsRight() const { return kind == RightKind::Level || kind == RightKind::YesNo; }
};

/// The section of `language` in the map of rights, in the order of the file. Lines that are no entry, that
/// name no position of the rights text or repeat a key are passed over. A file that is missing or cannot be
/// read gives no entries.
std::vector<SecurityMapEntry> ReadSecurityMap(const QString &fileName, const QString &language);
