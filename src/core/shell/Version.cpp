#include "core/shell/Version.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

QString VersionLine(const QString &caption)
{
    const QString buildMark = QStringLiteral("1020");
    return caption % u' ' % VersionString() % u" (" % buildMark % u'/' % SqlNumber(GetDBVersion()) % u')';
}
