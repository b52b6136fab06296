#include "core/shell/DatabaseSwitch.h"

#include "core/session/Session.h"
#include "core/shell/Main.h"
#include "core/shell/Screens.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/CredentialStore.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "users/UsersModule.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QFocusEvent>
#include <QWidget>

namespace
{
constexpr int databaseFile = 1;

/// The database that the session was using, to go back to.
struct DatabaseChoice {
    QString name{};
    QString file{};
    int type = 0;
    bool useODBC = false;

    static DatabaseChoice OfSession()
    {
        return gDBValid ? DatabaseChoice{gDBQName, gDBQFilename, gDBQType, gDBQUseODBC} : DatabaseChoice{};
    }
    bool IsEmpty() const { return name.isEmpty() && file.isEmpty(); }
    void Restore() const
    {
        gDBQName = name;
        gDBQFilename = file;
        gDBQType = type;
        gDBQUseODBC = useODBC;
    }
};

bool Choose(QWidget *window, const QString &proposed)
{
    Screens::Installed().chooseDatabase(window, proposed);
    return gDialogResult == 1;
}

/// A half-typed value belongs to the database that is about to be closed.
void LeaveField(const QWidget *window)
{
    QFocusEvent left(QEvent::FocusOut, Qt::OtherFocusReason);
    if (QWidget *field = window->focusWidget())
        QCoreApplication::sendEvent(field, &left);
}

bool ReconnectUntilSettled(QWidget *window, const DatabaseChoice &last)
{
    while (!ConnectDatabase(false)) {
        gDBValid = false; // the chooser then has no current database to offer
        if (gDBQUseODBC) {
            gDBQName.clear();
            gDBQFilename.clear();
        }
        if (Choose(window, {}))
            continue;
        if (last.IsEmpty())
            return false;
        if (Dialogs::MsgBox(QStringLiteral("Restore last valid Veltrane database?"),
                            QStringLiteral("ODBC Connect"), Dialogs::Buttons::YesNo,
                            Dialogs::Icon::Question) != Dialogs::Answer::Yes)
            return false;
        last.Restore();
    }
    return true;
}

void StartAnew(const QString &text, const QString &title, Dialogs::Icon icon)
{
    Dialogs::MsgBox(text, title, Dialogs::Buttons::Ok, icon);
    Restart();
}

/// Connects to what the session names now; `last` is what it named before.
bool Reconnect(QWidget *window, const DatabaseChoice &last)
{
    LeaveField(window);
    gConnection.Close();
    gDBValid = ReconnectUntilSettled(window, last);
    if (!gDBValid) {
        StartAnew(QStringLiteral("No valid database selected!"), QStringLiteral("Database Changed"),
                  Dialogs::Icon::Exclamation);
        return false;
    }
    if (!CheckLogon(gUserName, gUserPassword)) {
        StartAnew(QStringLiteral("Must re-logon on this database, as invalid username/password detected."),
                  QStringLiteral("Security"), Dialogs::Icon::None);
        return false;
    }
    Dialogs::MsgBox(QStringLiteral("Database switch confirmed."), QStringLiteral("Database Changed"));
    return true;
}
} // namespace

bool DatabaseSwitch::ToChosen(QWidget *window, const QString &proposed)
{
    const DatabaseChoice last = DatabaseChoice::OfSession();
    return Choose(window, proposed) && Reconnect(window, last);
}

bool DatabaseSwitch::ToFile(QWidget *window, const QString &file)
{
    const DatabaseChoice last = DatabaseChoice::OfSession();
    if (gDBValid)
        StoreSessionCredential();
    gDBQType = databaseFile;
    gDBQUseODBC = false;
    gDBQFilename = file;
    return Reconnect(window, last);
}

bool DatabaseSwitch::IsFileGone()
{
    return gDBQType == databaseFile && !gDBQUseODBC && !gDBQFilename.isEmpty() &&
           !QFileInfo(gDBQFilename).isFile();
}
