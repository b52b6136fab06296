#include "core/shell/frmMain.h"

#include "core/files/ErrorHandler.h"
#include "core/files/File_Tools.h"
#include "core/files/INIfile.h"
#include "core/icons/Icons.h"
#include "core/session/Session.h"
#include "core/session/WebSite.h"
#include "core/shell/ChildArea.h"
#include "core/shell/ChildCommands.h"
#include "core/shell/CommandSet.h"
#include "core/shell/Commands.h"
#include "core/shell/CsvDrop.h"
#include "core/shell/DatabaseSwitch.h"
#include "core/shell/Main.h"
#include "core/shell/RecentDatabases.h"
#include "core/shell/StartPage.h"
#include "core/shell/StatusPanels.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/CredentialStore.h"
#include "database/connection/NewDatabase.h"
#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "forms/frames/WindowMemory.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStatusTipEvent>

namespace
{
constexpr int serverDatabase = 2;
constexpr int narrowScreen = 1024;
/// 900 twips, taken off the course manager if the screen is exactly as wide as the minimum.
constexpr int narrowCorrection = 60;

int g_assumedScreenWidth = 0;

const QString userGuide = QStringLiteral("veltrane.pdf");

QString Id(const char *id)
{
    return QString::fromLatin1(id);
}

/// Whether the program can work with the database. At present it can with every one.
bool CheckDB()
{
    return true;
}
} // namespace

frmMain::frmMain()
    : m_children(new ChildArea(this))
    , m_screens(m_children)
    , m_start(new StartPage(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Veltrane"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    auto *pages = new QStackedWidget(this);
    pages->addWidget(m_children);
    pages->addWidget(m_start);
    setCentralWidget(pages);
    m_commands = new CommandSet(this, [](const QString &id) {
        if (id == u"ID_OnlineHelp")
            return DocumentExists(userGuide);
        return OwnActions().contains(id) || Screens::Of(id);
    });
    // The window is visible before the first box of a session is answered, and only Login knows what the user
    // may do.
    m_commands->EnableAll(false);
    connect(m_commands, &CommandSet::Chosen, this, &frmMain::Choose);
    new ChildCommands(m_commands->Tool(Id("ID_Window"))->menu(), m_children);
    new CsvDrop(
        this, [this] { return m_commands->Tool(Id("ID_Import"))->isEnabled(); },
        [this](const QString &file) {
            Screens::Installed().importFile(this, file);
            m_screens.ForEach(&Screen::relistChild);
        });
    m_status = new StatusPanels(statusBar());
    BuildRecent();
    RestoreWindow();
}

void frmMain::AssumeScreenWidth(int pixels)
{
    g_assumedScreenWidth = pixels;
}

void frmMain::BuildRecent()
{
    m_recent = new QMenu(QStringLiteral("Re&cent Databases"), this);
    m_recent->setObjectName(QStringLiteral("RecentDatabases"));
    QMenu *file = m_commands->Tool(Id("ID_File"))->menu();
    const QList<QAction *> entries = file->actions();
    file->insertMenu(entries.value(entries.indexOf(m_commands->Tool(Id("ID_SwitchDatabase"))) + 1), m_recent);
    connect(m_start, &StartPage::FileAsked, this, &frmMain::OpenRecent);
    connect(m_start, &StartPage::NewAsked, m_commands->Tool(Id("ID_New")), &QAction::trigger);
    connect(m_start, &StartPage::OpenAsked, m_commands->Tool(Id("ID_SwitchDatabase")), &QAction::trigger);
}

/// The open database is not among those offered.
void frmMain::OfferRecent()
{
    QStringList files = RecentDatabases::Files();
    if (gDBValid)
        files.removeAll(QFileInfo(gDBQFilename).absoluteFilePath());
    m_recent->clear();
    for (int i = 0; i < files.size(); ++i)
        m_recent->addAction(RecentDatabases::Caption(i, files.at(i)), this,
                            [this, file = files.at(i)] { OpenRecent(file); });
    const bool maySwitch = m_commands->Tool(Id("ID_SwitchDatabase"))->isEnabled();
    m_recent->menuAction()->setEnabled(maySwitch && !files.isEmpty());
    m_start->Offer(files);
}

void frmMain::OpenRecent(const QString &file)
{
    if (QFileInfo(file).isFile()) {
        if (m_screens.CloseRecords() && DatabaseSwitch::ToFile(this, file))
            ShowOtherDatabase();
        return;
    }
    Dialogs::MsgBox(QDir::toNativeSeparators(file) %
                        QStringLiteral(" does not exist any more, and is taken off the list."),
                    QStringLiteral("Recent Databases"), Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
    RecentDatabases::Remove(file);
    OfferRecent();
}

void frmMain::RestoreWindow()
{
    const QVariantMap settings = WindowMemory::Recall(objectName());
    const QSize room = screen()->availableSize();
    if (!restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray()))
        resize(room.width() * 9 / 10, room.height() * 9 / 10);
    // It may have been left on a larger screen.
    if (width() > room.width() || height() > room.height())
        setWindowState(windowState() | Qt::WindowMaximized);
    restoreState(settings.value(QStringLiteral("state")).toByteArray());
}

void frmMain::StoreWindow() const
{
    WindowMemory::Store(
        objectName(), {{QStringLiteral("geometry"), saveGeometry()}, {QStringLiteral("state"), saveState()}});
}

void frmMain::Load()
{
    m_commands->Tool(Id("ID_OnlineHelp"))->setIcon(Icons::OfFileType(QStringLiteral(".pdf")));
    m_commands->Tool(Id("ID_ReportManager"))
        ->setIcon(Icons::OfFileType(QStringLiteral(".rpt"), QStringLiteral(".doc")));
    if (gDBValid) {
        SetTitle();
        WarnOfNarrowScreen();
        OpenManagers();
    } else {
        // The failure to connect has already named a file that is gone.
        if (DatabaseSwitch::IsFileGone())
            m_missing = gDBQFilename;
        else
            Dialogs::MsgBox(QStringLiteral("Must select a valid datasource"), {}, Dialogs::Buttons::Ok,
                            Dialogs::Icon::Exclamation);
        gDBQFilename.clear();
        gDBQName.clear();
    }
    Login();
}

void frmMain::SetTitle()
{
    setWindowTitle(u"Veltrane" % DatabaseTitle());
    m_commands->Enable(Id("ID_DBSecurity"), gDBQType != serverDatabase);
}

int frmMain::ScreenWidth() const
{
    return g_assumedScreenWidth > 0 ? g_assumedScreenWidth : screen()->size().width();
}

void frmMain::WarnOfNarrowScreen() const
{
    if (ScreenWidth() < narrowScreen)
        Dialogs::MsgBox(QStringLiteral("Veltrane is best run in 1024x768 or higher."),
                        QStringLiteral("Screen Resolution Warning"), Dialogs::Buttons::Ok,
                        Dialogs::Icon::Exclamation);
}

void frmMain::OpenManagers()
{
    OpenChild(Id("ID_CourseManager"));
    OpenChild(Id("ID_ContactManager"));
    m_children->Tile();
    if (QMdiSubWindow *courses = m_children->Child(QStringLiteral("frmCourse"));
        courses && ScreenWidth() == narrowScreen)
        courses->resize(courses->width() - narrowCorrection, courses->height());
}

void frmMain::Login()
{
    m_commands->HoldDrawing(true);
    m_loginComplete = false;
    m_status->ShowLogon();
    m_commands->EnableAll(false);
    for (const char *id : CommandsWithoutDatabase())
        m_commands->Enable(Id(id));
    if (gDBValid && !CheckDB()) {
        m_commands->Enable(Id("ID_Properties"));
        m_status->ShowDatabase(QStringLiteral("Invalid Database.  "));
    } else if (gDBValid) {
        m_commands->EnableAll(true);
        ApplyRights();
        m_loginComplete = true;
    }
    m_commands->HoldDrawing(false);
    ShowWhatToDo();
    if (!m_loginComplete)
        return;
    LoadSystemValues();
    m_status->ShowDatabase(u"  " % SystemValue(SystemRef::DatabaseName));
    if (gDBQType != serverDatabase && QFileInfo(gDBQFilename).isFile())
        RecentDatabases::Add(gDBQFilename);
}

void frmMain::ShowWhatToDo()
{
    OfferRecent();
    auto *pages = static_cast<QStackedWidget *>(centralWidget());
    pages->setCurrentWidget(gDBValid ? static_cast<QWidget *>(m_children) : m_start);
    if (!gDBValid)
        m_start->setFocus();
}

void frmMain::ApplyRights()
{
    if (gDBQType == serverDatabase)
        m_commands->Enable(Id("ID_DBSecurity"), false);
    for (const QString &id : ToolsClosedTo(gUserRights))
        m_commands->Enable(id, false);
}

bool frmMain::event(QEvent *event)
{
    if (event->type() == QEvent::StatusTip) {
        m_status->ShowHint(static_cast<QStatusTipEvent *>(event)->tip());
        return true;
    }
    return QMainWindow::event(event);
}

void frmMain::Choose(const QString &id)
{
    // The second click of a double click may still reach this window; two sessions would then be started.
    if (m_unloaded)
        return;
    const auto own = OwnActions().constFind(id);
    const Screen *target = Screens::Of(id);
    if (own != OwnActions().constEnd())
        (*own)(*this);
    else if (target && target->makeChild)
        OpenChild(id);
    else if (target)
        RunModal(*target);
}

void frmMain::RunModal(const Screen &screen)
{
    screen.runModal(this);
    if (screen.changesLists)
        m_screens.ForEach(&Screen::relistChild);
}

const QHash<QString, frmMain::Action> &frmMain::OwnActions()
{
    static const QHash<QString, Action> actions{
        {Id("ID_New"), [](frmMain &) { NewDatabase(); }},
        {Id("ID_SwitchDatabase"), [](frmMain &main) { main.SwitchDatabase(); }},
        {Id("ID_LogOff"), [](frmMain &) { Restart(); }},
        // The patch of the schema has already run when the database was opened.
        {Id("ID_TestDB"), [](frmMain &) {}},
        {Id("ID_Properties"), [](frmMain &main) { main.ShowProperties(); }},
        {Id("ID_Exit"), [](frmMain &main) { main.close(); }},
        {Id("ID_Tile"), [](frmMain &main) { main.m_children->Tile(); }},
        {Id("ID_Cascade"), [](frmMain &main) { main.m_children->cascadeSubWindows(); }},
        {Id("ID_ArrangeIcons"), [](frmMain &main) { main.m_children->ArrangeIcons(); }},
        {Id("ID_OnlineHelp"), [](frmMain &) { OpenDocument(userGuide); }},
        {Id("ID_Web"), [](frmMain &) { OpenDocument(WebSite()); }},
    };
    return actions;
}

void frmMain::OpenChild(const QString &command)
{
    m_screens.Open(command, m_commands->Tool(command)->icon());
}

void frmMain::ShowProperties()
{
    Screens::Installed().showProperties(this, m_status->Database(), m_loginComplete);
    if (m_loginComplete)
        m_status->ShowDatabase(u"  " % SystemValue(SystemRef::DatabaseName));
}

void frmMain::SwitchDatabase()
{
    if (m_screens.CloseRecords() && DatabaseSwitch::ToChosen(this, m_missing))
        ShowOtherDatabase();
}

void frmMain::ShowOtherDatabase()
{
    SetTitle();
    Login();
    m_screens.ForEach(&Screen::refreshChild);
    OpenManagers();
}

bool frmMain::Unload()
{
    if (m_unloaded)
        return true;
    // Without a database there is nothing to stay open for.
    if (!m_screens.CloseAll() && gDBValid)
        return false;
    m_unloaded = true;
    StoreWindow();
    if (gDBValid)
        StoreSessionCredential();
    gConnection.Close();
    WriteSettings(Directories::WrittenFile(QStringLiteral("prog.ini")));
    LogFinish();
    hide();
    deleteLater();
    return true;
}

void frmMain::closeEvent(QCloseEvent *event)
{
    if (m_unloaded)
        return;
    const bool isOver = Unload();
    event->setAccepted(isOver);
    if (isOver)
        QCoreApplication::quit();
}
