#include "core/Main.h"

#include "core/ErrorHandler.h"
#include "core/INIfile.h"
#include "core/Session.h"
#include "core/frmMain.h"
#include "core/frmSplash.h"
#include "database/ConnectDatabase.h"
#include "platform/Directories.h"
#include "users/UsersModule.h"

#include <QPointer>

namespace
{
constexpr int fileDatabase = 1;

QPointer<frmMain> g_mainWindow;

/// True if the settings name a database that a connection can be tried to.
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

    // Its boxes may stand for any time: no window opens before the logon is decided.
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
