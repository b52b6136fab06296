#include "core/shell/Main.h"

#include "core/files/ErrorHandler.h"
#include "core/files/INIfile.h"
#include "core/session/Session.h"
#include "core/shell/frmMain.h"
#include "core/shell/frmSplash.h"
#include "database/connection/ConnectDatabase.h"
#include "platform/desktop/Directories.h"
#include "users/UsersModule.h"

#include <QPointer>

namespace
{
constexpr int fileDatabase = 1;

QPointer<frmMain> g_mainWindow;

/// True if the settings name a database that the program can try to open.
bool DatabaseIsNamed()
{
    if (!gDBQFilename.isEmpty() && !gDBQUseODBC && gDBQType == fileDatabase)
        return true;
    return !gDBQName.isEmpty() && !gDBQFilename.isEmpty();
}

void ForgetUser()
{
    gUserName.clear();
    gUserPassword.clear();
    gUserRights.clear();
}
} // namespace

void Main()
{
    LogStart();
    ReadSettings(Directories::WrittenFile(QStringLiteral("prog.ini")));
    ForgetUser();
    gDBValid = false;
    gDBValid = DatabaseIsNamed() && ConnectDatabase(false);

    // Its boxes may stay open for any length of time: no window opens before the logon is decided.
    auto *splash = new frmSplash;
    if (gDBValid && !CheckLogon({}, {}))
        splash->AskForLogon();
    splash->show();
}

void ShowMainWindow()
{
    g_mainWindow = new frmMain;
    g_mainWindow->show();
    g_mainWindow->Load();
}

void Restart()
{
    if (!g_mainWindow || g_mainWindow->Unload())
        Main();
}
