#include "database/connection/Registry.h"

#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "platform/connection/DataSourceRegistry.h"
#include "platform/desktop/Dialogs.h"

namespace
{
const QString odbcKey = QStringLiteral("Software\\ODBC");
const QString driversKey = QStringLiteral("Software\\ODBC\\ODBCINST.INI\\ODBC Drivers");
const QString sourcesKey = QStringLiteral("Software\\ODBC\\odbc.ini\\ODBC Data Sources");
const QString accessDriver = QString::fromUtf16(DataSourceRegistry::FileDriver);

QString KeyOf(const QString &source)
{
    return u"Software\\ODBC\\odbc.ini\\" % source;
}

/// The path of the installed driver for database files; "" if it is not installed.
QString AccessDriverPath()
{
    const QString driverKey = u"Software\\ODBC\\ODBCINST.INI\\" % accessDriver;
    if (!DataSourceRegistry::HasKey(odbcKey) || !DataSourceRegistry::HasKey(driversKey))
        return {};
    if (RegReadString(driversKey, accessDriver).compare(u"INSTALLED", Qt::CaseInsensitive) != 0)
        return {};
    return DataSourceRegistry::HasKey(driverKey) ? RegReadString(driverKey, QStringLiteral("Driver"))
                                                 : QString();
}

bool WriteUnlessEmpty(const QString &key, const QString &valueName, const QString &text)
{
    return text.isEmpty() || RegWriteString(key, valueName, text);
}

bool WriteSource(const QString &name, const QString &driver, const QString &file, const QString &description,
                 const QString &user, const QString &password)
{
    const QString key = KeyOf(name);
    const QString jet = key % u"\\Engines\\Jet";
    // The engine values differ on purpose from those of a direct connection.
    return RegWriteString(sourcesKey, name, accessDriver) &&
           RegWriteString(key, QStringLiteral("DBQ"), file) &&
           RegWriteString(key, QStringLiteral("Driver"), driver) &&
           WriteUnlessEmpty(key, QStringLiteral("Description"), description) &&
           WriteUnlessEmpty(key, QStringLiteral("UID"), user) &&
           WriteUnlessEmpty(key, QStringLiteral("PWD"), password) &&
           RegWriteString(key, QStringLiteral("FIL"), QStringLiteral("MS Access;")) &&
           RegWriteLong(key, QStringLiteral("DriverId"), 25) &&
           RegWriteLong(key, QStringLiteral("SafeTransactions"), 0) &&
           RegWriteString(jet, QStringLiteral("ImplicitCommitSync"), QStringLiteral("Yes")) &&
           RegWriteString(jet, QStringLiteral("UserCommitSync"), QStringLiteral("Yes")) &&
           RegWriteLong(jet, QStringLiteral("MaxBufferSize"), 512) &&
           RegWriteLong(jet, QStringLiteral("PageTimeout"), 5) &&
           RegWriteLong(jet, QStringLiteral("Threads"), 3);
}
} // namespace

QString RegReadString(const QString &key, const QString &valueName)
{
    return DataSourceRegistry::Read(key, valueName);
}

bool RegWriteString(const QString &key, const QString &valueName, const QString &text)
{
    return DataSourceRegistry::Write(key, valueName, text);
}

bool RegWriteLong(const QString &key, const QString &valueName, int number)
{
    return DataSourceRegistry::Write(key, valueName, QString::number(number));
}

bool DSNMissing(const QString &name)
{
    return name.isEmpty() || !DataSourceRegistry::HasKey(KeyOf(name));
}

int DSNType(const QString &name)
{
    const QString driver = RegReadString(sourcesKey, name);
    if (DataSourceRegistry::IsFileDriver(driver))
        return 1;
    return DataSourceRegistry::IsServerDriver(driver) ? 2 : 0;
}

QString DSNFile(const QString &name)
{
    return RegReadString(KeyOf(name), QStringLiteral("DBQ"));
}

QString DSNDatabase(const QString &name)
{
    return RegReadString(KeyOf(name), QStringLiteral("Database"));
}

QString DSNDescription(const QString &name)
{
    return RegReadString(KeyOf(name), QStringLiteral("Description"));
}

bool SetDSNFile(const QString &name, const QString &file)
{
    return RegWriteString(KeyOf(name), QStringLiteral("DBQ"), file);
}

void FillDSNList(ListModel &list)
{
    std::vector<ListItem> items;
    for (const QString &name : DataSourceRegistry::ValueNames(sourcesKey)) {
        ListItem item{u'?' % QString::number(items.size() + 1), name, {DSNDescription(name), DSNFile(name)}};
        item.checked = name.compare(gDBQName, Qt::CaseInsensitive) == 0;
        items.push_back(std::move(item));
    }
    list.Fill(std::move(items));
    list.SelectFirst();
}

bool RegisterAccessDSN(const QString &name, const QString &file, const QString &description,
                       const QString &user, const QString &password)
{
    const QString driver = AccessDriverPath();
    if (!driver.isEmpty() && WriteSource(name, driver, file, description, user, password))
        return true;
    Dialogs::MsgBox(QStringLiteral("ODBC32 registration error"), QStringLiteral("ODBC32 Connect"),
                    Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
    return false;
}
