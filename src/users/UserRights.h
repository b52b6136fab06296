#pragma once

#include "database/statements/Security.h"
#include "users/SecurityMap.h"

#include <QString>

class TreeModel;

/// The levels of a right, as digits.
namespace RightLevel
{
constexpr QChar none = u'0';
constexpr QChar view = u'1';
constexpr QChar add = u'2';
constexpr QChar edit = u'3';
constexpr QChar full = u'9';
} // namespace RightLevel

/// The rights of a user while they are edited: a digit for each position, all "9" at first. An administrator
/// has every right; the previous digits are remembered and come back afterwards.
class UserRights final
{
public:
    /// Takes over `rights` position by position; positions after its end keep their digit. A character that
    /// is not a digit counts as no access.
    void Load(const QString &rights);
    /// Sets one position; one outside the rights is ignored.
    void Set(int position, QChar digit);
    /// Sets a right to a level. One that is only yes or no is given with full access and, if all it does is
    /// to open a screen, with any other.
    void Grant(const RightOfKey &right, QChar level);
    QChar Digit(int position) const { return m_digits.at(position); }
    /// True if every right is full.
    bool IsFull() const;
    /// Grants every right after remembering the current digits, or restores the remembered ones.
    void SetAdministrator(bool administrator);
    bool IsAdministrator() const { return m_administrator; }
    /// The digits joined, 256 characters.
    QString Text() const { return m_digits; }

private:
    QString m_digits = RightsBlank();
    QString m_noted = m_digits;
    bool m_administrator = false;
};

/// What the tree shows for a right of that kind and digit; "" for no access to a right with levels.
QString RightLevelText(RightKind kind, QChar digit);

/// Builds the tree of rights: headings at the top, expanded, each right below the heading before it; the
/// first node is selected, and the texts show `rights`.
void FillRightsTree(TreeModel &tree, const std::vector<SecurityMapEntry> &map, const UserRights &rights);
/// Puts the level of each right after its name, " [Full Access]", in place of the previous one.
void RefreshRightTexts(TreeModel &tree, const UserRights &rights);
