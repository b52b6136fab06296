#include "database/statements/Security.h"

#include "core/session/Session.h"

Level UserRight(Right right)
{
    return RightIn(gUserRights, right);
}

Level RightIn(const QString &rights, Right right)
{
    // An older version may have written fewer rights than there are now. Those that are missing are refused.
    const auto position = static_cast<qsizetype>(right);
    if (position >= rights.size())
        return Level::None;
    const int digit = rights.at(position).digitValue();
    return digit < 0 ? Level::None : static_cast<Level>(digit);
}

bool UserMay(Right right, Level level)
{
    return UserRight(right) >= level;
}

QString RightsBlank()
{
    return QString(RightsCount, u'9');
}
