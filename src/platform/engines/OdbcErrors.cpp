#include "platform/engines/OdbcErrors.h"

#include <QStringList>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <array>

namespace
{
/// The Debian package of a driver, given the driver's name or its library's.
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

constexpr int truncatedBefore2019 = 8152;
constexpr int truncated = 2628;

/// What the driver and the manager report about one failure, in their order.
struct Records {
    QList<int> numbers{};
    QStringList texts{};
    QString sqlState; ///< of the first

    bool Have(int number) const { return numbers.contains(number); }
};

Records RecordsOf(short handleType, void *handle)
{
    Records records;
    std::array<char16_t, 6> state{};
    std::array<char16_t, 2048> text{};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    for (SQLSMALLINT i = 1; SQL_SUCCEEDED(SQLGetDiagRecW(
             handleType, handle, i, reinterpret_cast<SQLWCHAR *>(state.data()), &number,
             reinterpret_cast<SQLWCHAR *>(text.data()), static_cast<SQLSMALLINT>(text.size()), &length));
         ++i) {
        const QString told = QString::fromUtf16(text.data()).trimmed();
        if (records.numbers.isEmpty())
            records.sqlState = QString::fromUtf16(state.data());
        records.numbers.append(number);
        if (!records.texts.contains(told))
            records.texts.append(told);
    }
    return records;
}

/// PostgreSQL's driver has one number for every failure to connect.
bool IsRefusedLogon(const QString &text)
{
    return text.contains(QStringLiteral("password authentication failed"), Qt::CaseInsensitive) ||
           text.contains(QStringLiteral("no password supplied"), Qt::CaseInsensitive);
}

/// The one number for all records of a failure.
int NumberOf(const Records &records, const QString &text)
{
    for (const int known : {OdbcErrors::catalogueRefused, OdbcErrors::logonRefused}) {
        if (records.Have(known))
            return known;
    }
    if (IsRefusedLogon(text))
        return OdbcErrors::logonRefused;
    // The manager's own failures have no number. An error without a number would ask for a password, which
    // cures none of them.
    const auto isGiven = [](int number) { return number != 0; };
    const auto given = std::find_if(records.numbers.begin(), records.numbers.end(), isGiven);
    return given == records.numbers.end() ? OdbcErrors::unnumbered : *given;
}
} // namespace

EngineErrors OdbcErrors::ListOf(short handleType, void *handle)
{
    const Records records = RecordsOf(handleType, handle);
    const QString text = records.texts.join(u' ');
    if (text.contains(QStringLiteral("Can't open lib")))
        return DriverMissing(text);
    // SQL Server's own text speaks of "string or binary data", in the server's language.
    const bool isTooLong = records.Have(truncatedBefore2019) || records.Have(truncated);
    return One(NumberOf(records, text),
               isTooLong
                   ? QString(u"A text is longer than its column in the database allows. (" % text % u")")
                   : text,
               records.sqlState);
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
