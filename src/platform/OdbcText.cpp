#include "platform/OdbcText.h"

#include "platform/DataSourceRegistry.h"
#include "platform/OdbcErrors.h"

#include <QRegularExpression>

namespace
{
constexpr int defaultPort = 1433;
const QString freeTds = QStringLiteral("FreeTDS");

/// A value as the drivers read it: in braces where it holds a character of the text's own. They end it at
/// the first "};" and know no doubling.
QString Quoted(const QString &value)
{
    static const QRegularExpression special(QStringLiteral("[\\[\\]{}(),;?*=!@]|^\\s|\\s$"));
    return value.contains(special) ? u'{' + value + u'}' : value;
}

QString Entry(const QString &key, const QString &value)
{
    return value.isEmpty() ? QString() : QString(key % u'=' % Quoted(value) % u';');
}

/// "server", "server,port" or "server\instance".
QString ServerEntries(const QString &name)
{
    const qsizetype comma = name.lastIndexOf(u',');
    const QString host = (comma < 0 ? name : name.left(comma)).trimmed();
    const bool isHere =
        host == QStringLiteral(".") || host.compare(QStringLiteral("(local)"), Qt::CaseInsensitive) == 0;
    const QString server = isHere ? QStringLiteral("localhost") : host;
    if (server.contains(u'\\'))
        return Entry(QStringLiteral("SERVER"), server);
    const int port = comma < 0 ? defaultPort : name.mid(comma + 1).toInt();
    return Entry(QStringLiteral("SERVER"), server) % u"PORT=" % QString::number(port) % u';';
}

bool IsInstalled(const QString &driver)
{
    return driver.contains(u'/') ||
           DataSourceRegistry::HasKey(QStringLiteral("Software\\ODBC\\ODBCINST.INI\\") + driver);
}

std::optional<QString> ServerText(const ConnectionParts &parts, EngineErrors &errors)
{
    if (!IsInstalled(freeTds)) {
        errors = OdbcErrors::DriverMissing(freeTds);
        return std::nullopt;
    }
    return QString(u"DRIVER={FreeTDS};" % ServerEntries(parts.server) %
                   u"TDS_Version=7.4;ClientCharset=UTF-8;" %
                   Entry(QStringLiteral("DATABASE"), parts.catalogue) %
                   Entry(QStringLiteral("UID"), parts.user) % Entry(QStringLiteral("PWD"), parts.password));
}

QString OwnValue(const QString &source, const QStringList &names)
{
    for (const QString &name : names) {
        const QString value = DataSourceRegistry::Read(u"Software\\ODBC\\odbc.ini\\" % source, name);
        if (!value.isEmpty())
            return value;
    }
    return {};
}

/// The system's text names one fixed user without a password for every server; a user that the data
/// source names itself comes before it.
std::optional<QString> DataSourceText(const ConnectionParts &parts, EngineErrors &errors)
{
    const QString driver = DataSourceRegistry::DriverName(parts.dataSource);
    if (driver.isEmpty()) {
        errors =
            OdbcErrors::One(OdbcErrors::noDataSource,
                            u"The data source " % parts.dataSource % u" is not registered on this computer.",
                            QStringLiteral("IM002"));
        return std::nullopt;
    }
    if (!IsInstalled(driver)) {
        errors = OdbcErrors::DriverMissing(driver);
        return std::nullopt;
    }
    const QString ownUser = OwnValue(parts.dataSource, {QStringLiteral("UID"), QStringLiteral("Username"),
                                                        QStringLiteral("UserName"), QStringLiteral("User")});
    const QString ownPassword =
        OwnValue(parts.dataSource, {QStringLiteral("PWD"), QStringLiteral("Password")});
    QString text = u"DSN=" % parts.dataSource % u';' %
                   Entry(QStringLiteral("UID"), ownUser.isEmpty() ? parts.user : ownUser) %
                   Entry(QStringLiteral("PWD"), parts.password.isEmpty() ? ownPassword : parts.password);
    if (driver.contains(QStringLiteral("psqlodbc"), Qt::CaseInsensitive) ||
        driver.contains(QStringLiteral("PostgreSQL"), Qt::CaseInsensitive))
        // A statement that fails takes back itself alone, not what its transaction did before.
        text += QStringLiteral("Protocol=7.4-2;");
    else
        text += QStringLiteral("TDS_Version=7.4;ClientCharset=UTF-8;");
    return text;
}
} // namespace

std::optional<QString> OdbcDriverText(const ConnectionParts &parts, EngineErrors &errors)
{
    for (const QString &value : {parts.server, parts.catalogue, parts.user, parts.password}) {
        // What stands behind it would be read as further entries.
        if (value.contains(QStringLiteral("};"))) {
            errors =
                OdbcErrors::One(OdbcErrors::unnumbered,
                                QStringLiteral("A server's name, catalogue, user or password cannot hold "
                                               "\"};\": its driver has no way to be told."));
            return std::nullopt;
        }
    }
    return parts.way == ConnectionParts::Way::Server ? ServerText(parts, errors)
                                                     : DataSourceText(parts, errors);
}
