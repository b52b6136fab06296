#include "platform/connection/DataSourceRegistry.h"

#include <odbcinst.h>

#include <QByteArray>

#include <algorithm>
#include <optional>

namespace
{
constexpr char sourcesFile[] = "odbc.ini";
constexpr char driversFile[] = "odbcinst.ini";
const QString listOfSources = QStringLiteral("ODBC Data Sources");
const QString listOfDrivers = QStringLiteral("ODBC Drivers");
/// The manager cuts lines at a thousand bytes and would read the rest as a separate value.
constexpr qsizetype longestText = 900;

bool Same(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// Where a key is found in the manager's files: a section, and a prefix for the names in it. Keys below a
/// data source have no sections of their own, since each section counts as a source.
struct Place {
    bool isRoot = false; ///< the key above both files
    const char *file = nullptr;
    QString section;
    QString prefix;
};

std::optional<Place> PlaceOf(const QString &key)
{
    const QStringList parts = key.split(u'\\');
    if (parts.size() < 2 || !Same(parts[0], u"Software") || !Same(parts[1], u"ODBC"))
        return std::nullopt;
    if (parts.size() == 2)
        return Place{true, nullptr, {}, {}};
    const bool ofSources = Same(parts[2], u"odbc.ini");
    if (parts.size() == 3 || !(ofSources || Same(parts[2], u"odbcinst.ini")))
        return std::nullopt;
    Place place{false, ofSources ? sourcesFile : driversFile, parts[3], {}};
    for (int i = 4; i < parts.size(); ++i)
        place.prefix += parts[i] % u'\\';
    return place;
}

/// What the manager returns for a section and entry. Without a section it lists the sections, without an
/// entry the entries.
QByteArray Ask(const char *file, const QByteArray &section, const QByteArray &entry,
               const QByteArray &otherwise)
{
    QByteArray buffer(64 * 1024, '\0');
    const int size = SQLGetPrivateProfileString(
        section.isEmpty() ? nullptr : section.constData(), entry.isEmpty() ? nullptr : entry.constData(),
        otherwise.constData(), buffer.data(), static_cast<int>(buffer.size()), file);
    return buffer.left(qMax(size, 0));
}

QStringList AskForNames(const char *file, const QString &section)
{
    QStringList names;
    for (const QByteArray &name : Ask(file, section.toUtf8(), {}, {}).split('\0')) {
        if (!name.isEmpty())
            names.append(QString::fromUtf8(name));
    }
    return names;
}

/// The manager remembers answers for a while, by question and default. A new default for each question makes
/// it read the file again, which another program may have changed.
QString AskForValue(const char *file, const QString &section, const QString &entry)
{
    static int question = 0;
    if (section.isEmpty() || entry.isEmpty())
        return {};
    const QByteArray otherwise = '\1' + QByteArray::number(++question);
    const QByteArray value = Ask(file, section.toUtf8(), entry.toUtf8(), otherwise);
    return value == otherwise ? QString() : QString::fromUtf8(value);
}

/// Runs `body` on the sources of the user alone or of the machine alone.
template <typename Body>
auto WithSourcesOf(UWORD whose, Body &&body)
{
    SQLSetConfigMode(whose);
    const auto result = body();
    SQLSetConfigMode(ODBC_BOTH_DSN);
    return result;
}

bool WriteTo(UWORD whose, const Place &place, const QByteArray &name, const QByteArray &text)
{
    return WithSourcesOf(whose, [&] {
        return SQLWritePrivateProfileString(place.section.toUtf8().constData(), name.constData(),
                                            text.constData(), place.file) != 0;
    });
}

bool UserHas(const Place &place)
{
    return WithSourcesOf(ODBC_USER_DSN, [&] { return !AskForNames(place.file, place.section).isEmpty(); });
}

bool IsSource(const QString &name)
{
    return !name.isEmpty() && !Same(name, listOfSources) && !AskForNames(sourcesFile, name).isEmpty();
}

/// The name that a source's driver is installed under; the source may give the path of the driver's library
/// instead.
QString InstalledName(const QString &driver)
{
    if (!driver.contains(u'/') && !driver.endsWith(QStringLiteral(".so")))
        return driver;
    const QString library = driver.section(u'/', -1);
    for (const QString &installed : AskForNames(driversFile, {})) {
        if (AskForValue(driversFile, installed, QStringLiteral("Driver")).section(u'/', -1) == library)
            return installed;
    }
    return driver;
}

/// What the built-in driver says about itself.
QString ReadOfFileDriver(const Place &place, const QString &name)
{
    const bool listed = Same(place.section, listOfDrivers) && Same(name, DataSourceRegistry::FileDriver);
    const bool own = Same(place.section, DataSourceRegistry::FileDriver) && Same(name, u"Driver");
    if (listed)
        return QStringLiteral("Installed");
    return own ? QString::fromUtf16(DataSourceRegistry::FileDriver) : QString();
}
} // namespace

bool DataSourceRegistry::HasKey(const QString &key)
{
    const std::optional<Place> place = PlaceOf(key);
    if (!place)
        return false;
    if (place->isRoot || (place->file == sourcesFile && Same(place->section, listOfSources)))
        return true;
    if (place->file == driversFile &&
        (Same(place->section, listOfDrivers) || Same(place->section, FileDriver)))
        return true;
    const QStringList names =
        place->section.isEmpty() ? QStringList() : AskForNames(place->file, place->section);
    return std::any_of(names.begin(), names.end(), [&](const QString &name) {
        return name.startsWith(place->prefix, Qt::CaseInsensitive);
    });
}

QString DataSourceRegistry::Read(const QString &key, const QString &name)
{
    const std::optional<Place> place = PlaceOf(key);
    if (!place || place->isRoot)
        return {};
    if (place->file == sourcesFile && Same(place->section, listOfSources))
        return DriverName(name);
    if (place->file == driversFile) {
        if (QString own = ReadOfFileDriver(*place, name); !own.isEmpty())
            return own;
    }
    return AskForValue(place->file, place->section, place->prefix + name);
}

bool DataSourceRegistry::Write(const QString &key, const QString &name, const QString &text)
{
    const std::optional<Place> place = PlaceOf(key);
    if (!place || place->isRoot || place->section.isEmpty() || name.isEmpty())
        return false;
    const QByteArray value = text.toUtf8();
    if (value.size() > longestText || value.contains('\n') || value.contains('\r'))
        return false;
    const QByteArray entry = (place->prefix + name).toUtf8();
    if (!qEnvironmentVariableIsEmpty("ODBCINI") || UserHas(*place))
        return WriteTo(ODBC_USER_DSN, *place, entry, value);
    return WriteTo(ODBC_SYSTEM_DSN, *place, entry, value) || WriteTo(ODBC_USER_DSN, *place, entry, value);
}

QStringList DataSourceRegistry::ValueNames(const QString &key)
{
    const std::optional<Place> place = PlaceOf(key);
    if (!place || place->isRoot)
        return {};
    if (place->file == sourcesFile && Same(place->section, listOfSources))
        return AskForNames(sourcesFile, {});
    QStringList names;
    for (const QString &name : AskForNames(place->file, place->section)) {
        if (name.startsWith(place->prefix, Qt::CaseInsensitive))
            names.append(name.mid(place->prefix.size()));
    }
    return names;
}

QString DataSourceRegistry::DriverName(const QString &source)
{
    if (!IsSource(source))
        return {};
    const QString listed = AskForValue(sourcesFile, listOfSources, source);
    return listed.isEmpty() ? InstalledName(AskForValue(sourcesFile, source, QStringLiteral("Driver")))
                            : listed;
}

bool DataSourceRegistry::IsFileDriver(const QString &driver)
{
    return Same(driver, FileDriver) || Same(driver, u"Driver do Microsoft Access (*.mdb)");
}

bool DataSourceRegistry::IsServerDriver(const QString &driver)
{
    return driver.contains(QStringLiteral("SQL Server"), Qt::CaseInsensitive) ||
           driver.contains(QStringLiteral("FreeTDS"), Qt::CaseInsensitive) ||
           driver.contains(QStringLiteral("tdsodbc"), Qt::CaseInsensitive) ||
           driver.contains(QStringLiteral("PostgreSQL"), Qt::CaseInsensitive) ||
           driver.contains(QStringLiteral("psqlodbc"), Qt::CaseInsensitive);
}
