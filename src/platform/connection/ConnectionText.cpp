#include "platform/connection/ConnectionText.h"

namespace
{
/// The text between `before` and the next, or the last, `after`; up to the end if `after` is empty or not
/// found.
QString Between(const QString &text, const QString &before, const QString &after, bool last = false)
{
    const qsizetype found = text.indexOf(before, 0, Qt::CaseInsensitive);
    if (found < 0)
        return {};
    const qsizetype begin = found + before.size();
    if (after.isEmpty())
        return text.mid(begin);
    const qsizetype end = last ? text.lastIndexOf(after, -1, Qt::CaseInsensitive)
                               : text.indexOf(after, begin, Qt::CaseInsensitive);
    return end < begin ? text.mid(begin) : text.mid(begin, end - begin);
}

ConnectionParts FileParts(const QString &text)
{
    ConnectionParts parts;
    parts.way = ConnectionParts::Way::File;
    parts.file = Between(text, QStringLiteral("DBQ="), QStringLiteral(";Driver="));
    parts.password = Between(text, QStringLiteral(";PWD="), QString());
    const QString wait = Between(text, QStringLiteral(";LockWait="), QStringLiteral(";"));
    if (!wait.isEmpty())
        parts.lockWait = wait.toInt();
    return parts;
}

ConnectionParts ServerParts(const QString &text)
{
    ConnectionParts parts;
    parts.way = ConnectionParts::Way::Server;
    parts.server = Between(text, QStringLiteral(";Data Source="), QStringLiteral(";Initial Catalog="));
    parts.catalogue = Between(text, QStringLiteral(";Initial Catalog="), QStringLiteral(";User id="));
    parts.user = Between(text, QStringLiteral(";User id="), QStringLiteral(";Password="));
    parts.password = Between(text, QStringLiteral(";Password="), QStringLiteral(";"), true);
    return parts;
}

ConnectionParts DataSourceParts(const QString &text)
{
    ConnectionParts parts;
    parts.way = ConnectionParts::Way::DataSource;
    parts.user = Between(text, QStringLiteral(";UID="), QStringLiteral(";PWD="));
    parts.password = Between(text, QStringLiteral(";PWD="), QStringLiteral(";DSN="), true);
    const qsizetype name = text.lastIndexOf(QStringLiteral(";DSN="), -1, Qt::CaseInsensitive);
    if (name >= 0)
        parts.dataSource = Between(text.mid(name), QStringLiteral(";DSN="), QStringLiteral(";"));
    return parts;
}
} // namespace

ConnectionParts TakeApart(const QString &connectionText)
{
    if (connectionText.startsWith(QStringLiteral("DBQ="), Qt::CaseInsensitive))
        return FileParts(connectionText);
    if (connectionText.startsWith(QStringLiteral("PROVIDER=SQLOLEDB;"), Qt::CaseInsensitive))
        return ServerParts(connectionText);
    if (connectionText.startsWith(QStringLiteral("ODBC;"), Qt::CaseInsensitive))
        return DataSourceParts(connectionText);
    return {};
}
