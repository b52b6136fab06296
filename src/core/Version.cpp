#include "core/Version.h"

#include "database/GlobalCode.h"
#include "database/MiscODBC.h"

QString VersionLine(const QString &caption)
{
    const QString buildMark = QStringLiteral("1020");
    return caption % u' ' % VersionString() % u" (" % buildMark % u'/' % SqlNumber(GetDBVersion()) % u')';
}
