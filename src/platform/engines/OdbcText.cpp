#include "platform/engines/OdbcText.h"

#include "platform/connection/DataSourceRegistry.h"
#include "platform/engines/OdbcErrors.h"
#include "platform/engines/SqlServerBrowser.h"

#include <QRegularExpression>

namespace
{
constexpr int defaultPort = 1433;
const QString freeTds = QStringLiteral("FreeTDS");

/// A value as the drivers read it: in braces if it contains a character with a meaning in the text. They end
/// it at the first "};" and know no doubling.
QString Quoted(const QString &value)
{
    static const QRegularExpression special(QStringLiteral("[\\[\\]{}(),;?*=!@]|^\\s|\\s$"));
    return value.contains(special) ? u'{' + value + u'}' : value;
}

QString Entry(const QString &key, const QString &value)
{
    return value.isEmpty() ? QString() : QString(key % u'=' % Quoted(value) % u';');
}

/// "server", "server,port" or "server\instance". The driver itself would spend a quarter of a minute looking
/// for an instance's port.
bool ServerEntries(const QString &name, QString &entries, EngineErrors &errors)
{
    const qsizetype comma = name.lastIndexOf(u',');
    const QString whole = (comma < 0 ? name : name.left(comma)).trimmed();
    const QString instance = whole.section(u'\\', 1);
    const QString host = whole.section(u'\\', 0, 0);
    const bool isHere =
        host == QStringLiteral(".") || host.compare(QStringLiteral("(local)"), Qt::CaseInsensitive) == 0;
    const QString server = isHere ? QStringLiteral("localhost") : host;
    int port = comma < 0 ? defaultPort : name.mid(comma + 1).toInt();
    if (!instance.isEmpty() && comma < 0)
        port = InstancePort(server, instance);
    if (port < 0) {
        errors =
            OdbcErrors::One(OdbcErrors::unreachable,
                            u"The server " % server % u" does not tell the port of its instance " % instance %
                                u": no browser service answers there. Ask which port it has, "
                                u"and name that instead: " %
                                server % u",1433");
        return false;
    }
    entries = Entry(QStringLiteral("SERVER"), server) % u"PORT=" % QString::number(port) % u';';
    return true;
}

bool IsInstalled(const QString &driver)
{
    return driver.contains(u'/') ||
           DataSourceRegistry::HasKey(QStringLiteral("Software\\ODBC\\ODBCINST.INI\\") + driver);
}

/// Without a user the driver tries Kerberos, which nobody has set up here; what is really missing is a logon.
bool ServerText(const ConnectionParts &parts, QString &text, EngineErrors &errors)
{
    if (!IsInstalled(freeTds)) {
        errors = OdbcErrors::DriverMissing(freeTds);
        return false;
    }
    if (parts.user.isEmpty()) {
        errors = OdbcErrors::One(OdbcErrors::logonRefused,
                                 u"No user is named for the server " % parts.server % u'.');
        return false;
    }
    QString server;
    if (!ServerEntries(parts.server, server, errors))
        return false;
    text = u"DRIVER={FreeTDS};" % server % u"TDS_Version=7.4;ClientCharset=UTF-8;" %
           Entry(QStringLiteral("DATABASE"), parts.catalogue) % Entry(QStringLiteral("UID"), parts.user) %
           Entry(QStringLiteral("PWD"), parts.password);
    return true;
}

QString OwnValue(const QString &source, const QStringList &names)
{
    for (const QString &name : names) {
        QString value = DataSourceRegistry::Read(u"Software\\ODBC\\odbc.ini\\" % source, name);
        if (!value.isEmpty())
            return value;
    }
    return {};
}

QString FirstOf(const QStringList &values)
{
    for (const QString &value : values) {
        if (!value.isEmpty())
            return value;
    }
    return {};
}

/// The system's text names one fixed user without a password for every server. A user named in the data
/// source takes precedence over it, and one that the user was asked for over both.
bool DataSourceText(const ConnectionParts &parts, QString &text, EngineErrors &errors)
{
    const QString driver = DataSourceRegistry::DriverName(parts.dataSource);
    if (driver.isEmpty()) {
        errors =
            OdbcErrors::One(OdbcErrors::noDataSource,
                            u"The data source " % parts.dataSource % u" is not registered on this computer.",
                            QStringLiteral("IM002"));
        return false;
    }
    if (!IsInstalled(driver)) {
        errors = OdbcErrors::DriverMissing(driver);
        return false;
    }
    const QString ownUser = OwnValue(parts.dataSource, {QStringLiteral("UID"), QStringLiteral("Username"),
                                                        QStringLiteral("UserName"), QStringLiteral("User")});
    const QString ownPassword =
        OwnValue(parts.dataSource, {QStringLiteral("PWD"), QStringLiteral("Password")});
    text = u"DSN=" % parts.dataSource % u';' %
           Entry(QStringLiteral("UID"), FirstOf({parts.logon.user, ownUser, parts.user})) %
           Entry(QStringLiteral("PWD"), FirstOf({parts.logon.password, parts.password, ownPassword}));
    if (driver.contains(QStringLiteral("psqlodbc"), Qt::CaseInsensitive) ||
        driver.contains(QStringLiteral("PostgreSQL"), Qt::CaseInsensitive))
        // Makes a failing statement undo only itself, not what its transaction did before.
        text += QStringLiteral("Protocol=7.4-2;");
    else
        text += QStringLiteral("TDS_Version=7.4;ClientCharset=UTF-8;");
    return true;
}
} // namespace

bool OdbcDriverText(const ConnectionParts &parts, QString &text, EngineErrors &errors)
{
    for (const QString &value : {parts.server, parts.catalogue, parts.user, parts.password, parts.logon.user,
                                 parts.logon.password}) {
        // What follows it would be read as further entries.
        if (value.contains(QStringLiteral("};"))) {
            errors =
                OdbcErrors::One(OdbcErrors::unnumbered,
                                QStringLiteral("A server's name, catalogue, user or password cannot hold "
                                               "\"};\": its driver has no way to be told."));
            return false;
        }
    }
    return parts.way == ConnectionParts::Way::Server ? ServerText(parts, text, errors)
                                                     : DataSourceText(parts, text, errors);
}
