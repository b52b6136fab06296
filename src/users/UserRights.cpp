#include "users/UserRights.h"

#include "controls/TreeModel.h"

#include <algorithm>

namespace
{
/// The rights that open a screen or a menu and allow no change by themselves.
constexpr Right openings[] = {
    Right::SecurityMenu,   Right::ContactsMenu,       Right::CoursesMenu,    Right::DocumentManager,
    Right::Calendar,       Right::OptionsMenu,        Right::ContactReports, Right::OrganisationsScreen,
    Right::ContactManager, Right::ContactMaintenance, Right::CourseManager,  Right::CourseMaintenance,
    Right::CourseReports,
};

bool OnlyOpens(int position)
{
    return std::find(std::begin(openings), std::end(openings), static_cast<Right>(position)) !=
           std::end(openings);
}
} // namespace

void UserRights::Load(const QString &rights)
{
    const qsizetype count = std::min<qsizetype>(rights.size(), RightsCount);
    for (qsizetype i = 0; i < count; ++i)
        m_digits[i] = rights.at(i) >= u'0' && rights.at(i) <= u'9' ? rights.at(i) : RightLevel::none;
}

void UserRights::Set(int position, QChar digit)
{
    if (position >= 0 && position < RightsCount)
        m_digits[position] = digit;
}

void UserRights::Grant(const RightOfKey &right, QChar level)
{
    const bool isPart = level != RightLevel::none && level != RightLevel::full;
    if (right.kind == RightKind::YesNo && isPart)
        Set(right.position, OnlyOpens(right.position) ? RightLevel::full : RightLevel::none);
    else
        Set(right.position, level);
}

bool UserRights::IsFull() const
{
    return m_digits == RightsBlank();
}

void UserRights::SetAdministrator(bool administrator)
{
    if (administrator == m_administrator)
        return;
    m_administrator = administrator;
    if (administrator)
        m_noted = m_digits;
    m_digits = administrator ? RightsBlank() : m_noted;
}

QString RightLevelText(RightKind kind, QChar digit)
{
    if (kind == RightKind::YesNo)
        return digit == RightLevel::full ? QStringLiteral("Yes") : QStringLiteral("No");
    switch (digit.unicode()) {
    case u'1':
        return QStringLiteral("View/Select Only");
    case u'2':
        return QStringLiteral("Add Only");
    case u'3':
        return QStringLiteral("Add and Edit Only");
    case u'9':
        return QStringLiteral("Full Access");
    default:
        return {};
    }
}

void FillRightsTree(TreeModel &tree, const std::vector<SecurityMapEntry> &map, const UserRights &rights)
{
    tree.Clear();
    QString heading;
    for (const SecurityMapEntry &entry : map) {
        const bool isHeading = entry.kind == RightKind::Heading;
        tree.Add(isHeading ? QString() : heading,
                 {.key = entry.key, .text = entry.text, .expanded = isHeading});
        if (isHeading)
            heading = entry.key;
    }
    RefreshRightTexts(tree, rights);
    tree.SelectFirst();
}

void RefreshRightTexts(TreeModel &tree, const UserRights &rights)
{
    const QString opening = QStringLiteral("  [");
    for (TreeNode *node : tree.Nodes()) {
        const RightOfKey right(node->key);
        if (right.position < 0)
            continue;
        const QString name = node->text.left(node->text.indexOf(opening));
        const QString level = RightLevelText(right.kind, rights.Digit(right.position));
        const QString text = name % opening % level % u']';
        if (text != node->text)
            tree.SetText(node, text);
    }
}
