#include "database/connection/ConnectDatabase.h"

#include "core/session/Session.h"
#include "database/connection/CredentialStore.h"
#include "database/connection/ReferenceRepair.h"
#include "database/connection/Registry.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"

#include <QDir>
#include <QFileInfo>

namespace
{
constexpr int wrongFilePassword = -1905;
constexpr int serverLogonFailed = 18456;
constexpr int fileType = 1;
constexpr int serverType = 2;

bool FileExists(const QString &file)
{
    return QFileInfo(file).isFile();
}

/// A file given by its bare name and not found is looked for in a folder of the program's directory.
QString FileOrIn(const QString &folder, const QString &file)
{
    const bool isBare = !file.isEmpty() && QDir::isRelativePath(file);
    return FileExists(file) || !isBare ? file : Directories::WrittenFile(folder % file);
}

bool GeneralFailure()
{
    const EngineErrors &errors = gConnection.Errors();
    const QString description = errors.isEmpty() ? QString() : errors.first().description;
    Dialogs::MsgBox(u"Veltrane couldn't connect to an datasource.\n" % description, QStringLiteral("ODBC"),
                    Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
    return false;
}

bool Connect(bool retry, bool knowsLogon);

bool TryStoredCredential()
{
    FetchSessionCredential();
    if (!Connect(true, true))
        return false;
    gDialogResult = 1;
    return true;
}

bool AskForCredential(const QString &message)
{
    Dialogs::MsgBox(message);
    gDialogResult = 0;
    Dialogs::Installed().databaseLogon();
    // A data source tries the credential store again, a direct connection asks again at once.
    return gDialogResult == 1 && Connect(!gDBQUseODBC, true);
}

/// After a failed open: the first error's native number tells whether a password is missing.
bool OnFailedOpen(bool retry)
{
    const int number = gConnection.Errors().isEmpty() ? 0 : gConnection.Errors().first().number;
    QString message;
    if (number == wrongFilePassword)
        message = QStringLiteral("Access Database requires a password");
    else if (number == serverLogonFailed || (number == 0 && !gDBQUseODBC))
        message = QStringLiteral("SQL server requires password");
    else
        return GeneralFailure();
    return retry ? AskForCredential(message) : TryStoredCredential();
}

/// Registers a vanished data source again, with the file that the session remembers.
bool RegisterVanishedSource()
{
    gDBQFilename = FileOrIn(QStringLiteral("database/"), gDBQFilename);
    return FileExists(gDBQFilename) && RegisterAccessDSN(gDBQName, gDBQFilename, gDBQDescription, {}, {});
}

/// True if the connection led to another file than the registered one, and the registry has been corrected.
bool CorrectedSourceFile()
{
    const QString registered = DSNFile(gDBQName);
    gDBQFilename = ConnectionStringValue(QStringLiteral("DBQ"));
    if (registered.startsWith(gDBQFilename % u';')) // a path may hold a semicolon too
        gDBQFilename = registered;
    const bool differs = gDBQFilename.compare(registered, Qt::CaseInsensitive) != 0;
    return differs && FileExists(gDBQFilename) && SetDSNFile(gDBQName, gDBQFilename);
}

/// A stored password may since have been removed from the database, or belong to the database used before a
/// switch. A password that the text contains whole is kept, since its value in the text would end at its
/// first semicolon.
void TakePasswordOfConnection()
{
    if (!gConnection.ConnectionText().contains(u"PWD=" % gDBPassword))
        gDBPassword = ConnectionStringValue(QStringLiteral("PWD"));
}

bool BroughtUpToDate()
{
    UpgradeDatabase();
    RepairReferences();
    return true;
}

QString SourceText(const QString &credentials)
{
    return u"ODBC;DATABASE=" % gDBQName % credentials % u";DSN=" % gDBQName % u";EXCLUSIVE=00";
}

/// Connects a data source; the text for a server's is the same for everybody. `knowsLogon`: gDBUser and
/// gDBPassword come from the store or the user after this database refused a logon, and are not those of
/// another database.
bool ConnectSource(bool retry, bool knowsLogon)
{
    const ServerLogon logon = knowsLogon ? ServerLogon{gDBUser, gDBPassword} : ServerLogon{};
    while (!gDBQName.isEmpty()) {
        if (DSNMissing(gDBQName) && !RegisterVanishedSource())
            return false;
        gDBQType = DSNType(gDBQName);
        if (gDBQType < fileType) {
            Dialogs::MsgBox(QStringLiteral("Only Microsoft Access and SQL Server databases are supported!"),
                            QStringLiteral("Invalid Data Source"), Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
            return false;
        }
        if (gDBQType == serverType)
            gDBQFilename = DSNDatabase(gDBQName);
        const QString credentials =
            gDBQType == fileType ? QString(u";PWD=" % gDBPassword) : QStringLiteral(";UID=sa;PWD=");
        if (!gConnection.Open(SourceText(credentials), logon))
            return OnFailedOpen(retry);
        if (gDBQType == serverType || !CorrectedSourceFile()) {
            TakePasswordOfConnection();
            return BroughtUpToDate();
        }
        gConnection.Close();
    }
    return false;
}

bool ConnectDirectly(bool retry)
{
    QString text;
    if (gDBQType == serverType) {
        text = u"PROVIDER=SQLOLEDB;Data Source=" % gDBQName % u";Initial Catalog=" % gDBQFilename %
               u";User id=" % gDBUser % u";Password=" % gDBPassword % u';';
    } else {
        gDBQFilename = FileOrIn(QString(), gDBQFilename);
        text = u"DBQ=" % gDBQFilename %
               u";Driver={Microsoft Access Driver (*.mdb)};DriverId=25;MaxBufferSize=8192;Threads=20;PWD=" %
               gDBPassword;
    }
    if (!gConnection.Open(text))
        return OnFailedOpen(retry);
    if (gDBQType != serverType)
        TakePasswordOfConnection();
    return BroughtUpToDate();
}

bool Connect(bool retry, bool knowsLogon)
{
    const bool connected = gDBQUseODBC ? ConnectSource(retry, knowsLogon) : ConnectDirectly(retry);
    if (!connected)
        gConnection.Close();
    return connected;
}
} // namespace

bool ConnectDatabase(bool retry)
{
    return Connect(retry, false);
}

QString ConnectionStringValue(const QString &key)
{
    const QString text = gConnection.ConnectionText();
    const QString mark = key % u'=';
    const qsizetype found = text.indexOf(mark);
    if (found < 0)
        return {};
    const qsizetype begin = found + mark.size();
    const qsizetype end = text.indexOf(u';', begin);
    return end < 0 ? text.mid(begin) : text.mid(begin, end - begin);
}

void UpgradeDatabase()
{
    TryExecute(QStringLiteral("ALTER TABLE AwardNames DROP COLUMN ExamBoard"));
    TryExecute(QStringLiteral("ALTER TABLE AwardNames ADD Board INT"));
    TryExecute(QStringLiteral("ALTER TABLE Organisations ADD Board BIT"));
    TryExecute(QStringLiteral("CREATE TABLE [Version]"));
    TryExecute(QStringLiteral("ALTER TABLE [Version] ADD DBVersion FLOAT"));
    TryExecute(QStringLiteral("ALTER TABLE [GroupNames] ADD LinkRef INT"));
    if (gDBQType == serverType)
        TryExecute(QStringLiteral("ALTER TABLE [CreditCardTransaction] ADD VCode nvarchar(255) null"));
    else
        TryExecute(QStringLiteral("ALTER TABLE [CreditCardTransaction] ADD VCode Text(255)"));
    TryExecute(QStringLiteral("UPDATE [Version] SET DBVersion=3"));
}

QString DatabaseTitle()
{
    QString kind = QStringLiteral(" Microsoft Access");
    if (gDBQType == serverType)
        kind = gConnection.Kind() == DatabaseKind::PostgreSql ? QStringLiteral(" using PostgreSQL")
                                                              : QStringLiteral(" using SQL Server");
    const QString via = gDBQUseODBC ? QStringLiteral(" via ODBC") : QString();
    return kind % u" with Datasource [" % gDBQFilename % u']' % via;
}
