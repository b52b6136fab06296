#include "database/Security.h"

#include "core/Session.h"

int UserRight(int index)
{
    // Rights written by an older version may be fewer than there are now. What they do not tell of is
    // refused.
    if (index < 0 || index >= gUserRights.size())
        return 0;
    const int digit = gUserRights.at(index).digitValue();
    return digit < 0 ? 0 : digit;
}

QString RightsBlank()
{
    return QString(RightsCount, u'9');
}
