#include "platform/OdbcErrors.h"

#include <QSqlError>
#include <QStringList>

namespace
{
/// The Debian package of a driver, by its name or its library's.
QString PackageOf(const QString &driver)
{
    const auto names = [&driver](const char *part) {
        return driver.contains(QLatin1String(part), Qt::CaseInsensitive);
    };
    if (names("PostgreSQL") || names("psqlodbc"))
        return QStringLiteral("odbc-postgresql");
    if (names("FreeTDS") || names("tdsodbc") || names("SQL Server"))
        return QStringLiteral("tdsodbc");
    return {};
}

bool IsRefusedLogon(const QStringList &numbers, const QString &text)
{
    return numbers.contains(QString::number(OdbcErrors::logonRefused)) ||
           text.contains(QStringLiteral("password authentication failed"), Qt::CaseInsensitive) ||
           text.contains(QStringLiteral("no password supplied"), Qt::CaseInsensitive) ||
           text.contains(QStringLiteral("Login failed for user"), Qt::CaseInsensitive);
}

/// The driver gives the number of the last record alone, which is a refused logon's here too.
bool IsRefusedCatalogue(const QString &text)
{
    return text.contains(QStringLiteral("Cannot open database"), Qt::CaseInsensitive) &&
           text.contains(QStringLiteral("requested by the login"), Qt::CaseInsensitive);
}

/// The number that stands for all records of a failure.
int NumberOf(const QStringList &numbers, const QString &text)
{
    if (IsRefusedCatalogue(text))
        return OdbcErrors::catalogueRefused;
    if (IsRefusedLogon(numbers, text))
        return OdbcErrors::logonRefused;
    // The manager's own failures have no number, and none of them is cured by a password, which is what
    // an error without a number asks for.
    const int given = numbers.first().toInt();
    return given == 0 ? OdbcErrors::unnumbered : given;
}

/// SQL Server calls it a truncation, and that of "string or binary data".
QString PlainText(const QString &text)
{
    if (text.contains(QStringLiteral("data would be truncated"), Qt::CaseInsensitive))
        return u"A text is longer than its column in the database takes. (" % text % u")";
    return text;
}
} // namespace

EngineErrors OdbcErrors::ListOf(const QSqlError &error)
{
    const QString text = error.databaseText().trimmed();
    if (text.contains(QStringLiteral("Can't open lib")))
        return DriverMissing(text);
    const QStringList numbers = error.nativeErrorCode().split(u';');
    return One(NumberOf(numbers, text), PlainText(text.isEmpty() ? error.text() : text));
}

EngineErrors OdbcErrors::DriverMissing(const QString &driver)
{
    const QString package = PackageOf(driver);
    const QString advice =
        package.isEmpty() ? QString() : QString(u" Install the Debian package " % package % u".");
    return One(noDriver, u"The ODBC driver of this database is not installed (" % driver % u")." % advice,
               QStringLiteral("IM003"));
}

EngineErrors OdbcErrors::One(int number, const QString &description, const QString &sqlState)
{
    return {{number, QStringLiteral("Veltrane Connection"), description, sqlState}};
}
