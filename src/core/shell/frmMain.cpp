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
#include "core/shell/Main.h"
#include "core/shell/RecentDatabases.h"
#include "core/shell/Screens.h"
#include "core/shell/StartPage.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/CredentialStore.h"
#include "database/connection/NewDatabase.h"
#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/fields/ModifiedMark.h"
#include "forms/frames/RecordForm.h"
#include "forms/frames/WindowMemory.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "users/UsersModule.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFocusEvent>
#include <QHash>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStatusTipEvent>

#include <algorithm>

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

namespace
{
constexpr int databaseFile = 1;
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

/// Whether the session names a database file that is not in its place.
bool IsFileGone()
{
    return gDBQType == databaseFile && !gDBQUseODBC && !gDBQFilename.isEmpty() &&
           !QFileInfo(gDBQFilename).isFile();
}

/// Whether the program can work with the database. At present it can with every one.
bool CheckDB()
{
    return true;
}
} // namespace

frmMain::frmMain()
    : m_children(new ChildArea(this))
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
            ForEachChild(&Screen::relistChild);
        });
    BuildStatusBar();
    BuildRecent();
    RestoreWindow();
}

void frmMain::AssumeScreenWidth(int pixels)
{
    g_assumedScreenWidth = pixels;
}

void frmMain::BuildStatusBar()
{
    m_user = new QLabel(this);
    m_user->setObjectName(QStringLiteral("Panel_User"));
    m_user->setTextFormat(Qt::PlainText);
    statusBar()->addPermanentWidget(m_user);
    for (int i = 0; i < 3; ++i) {
        m_panels[i] = new QLabel(this);
        m_panels[i]->setObjectName(u"Panel_" % QString::number(i + 1));
        m_panels[i]->setTextFormat(Qt::PlainText);
        if (i == 0)
            statusBar()->addWidget(m_panels[i], 1);
        else
            statusBar()->addPermanentWidget(m_panels[i]);
    }
    constexpr int howLong = 4000; // milliseconds
    m_saved.setObjectName(QStringLiteral("SavedTimer"));
    m_saved.setSingleShot(true);
    m_saved.setInterval(howLong);
    connect(&m_saved, &QTimer::timeout, this, [this] { m_panels[0]->clear(); });
    ModifiedMark::WhenSaved() = [window = QPointer(this)] {
        if (window)
            window->ShowSaved();
    };
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
        SwitchDatabase([&file] {
            if (gDBValid)
                StoreSessionCredential();
            gDBQType = databaseFile;
            gDBQUseODBC = false;
            gDBQFilename = file;
            return true;
        });
        return;
    }
    Dialogs::MsgBox(QDir::toNativeSeparators(file) %
                        QStringLiteral(" does not exist any more, and is taken off the list."),
                    QStringLiteral("Recent Databases"), Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
    RecentDatabases::Remove(file);
    OfferRecent();
}

void frmMain::ShowSaved()
{
    m_panels[0]->setText(QStringLiteral("Saved"));
    m_saved.start();
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
        if (IsFileGone())
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
    m_user->setText(gUserName.isEmpty() ? QString() : QString(u"User: " % gUserName % u"  "));
    m_panels[1]->setText(u"Logged in at " % GeneralDateText(Clock::Now()) % u"  ");
    m_panels[2]->setText(QStringLiteral("No Database.  "));
    m_panels[2]->setEnabled(false);
    m_commands->EnableAll(false);
    for (const char *id : CommandsWithoutDatabase())
        m_commands->Enable(Id(id));
    if (gDBValid && !CheckDB()) {
        m_commands->Enable(Id("ID_Properties"));
        m_panels[2]->setText(QStringLiteral("Invalid Database.  "));
        m_panels[2]->setEnabled(true);
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
    m_panels[2]->setText(u"  " % SystemValue(SystemRef::DatabaseName));
    m_panels[2]->setEnabled(true);
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
        // The pointer that leaves a button takes its hint away, and not the word of a save.
        const QString &tip = static_cast<QStatusTipEvent *>(event)->tip();
        if (tip.isEmpty() && m_saved.isActive())
            return true;
        m_saved.stop();
        m_panels[0]->setText(tip);
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
        ForEachChild(&Screen::relistChild);
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
    const Screen *screenOf = Screens::Of(command);
    if (!screenOf)
        return;
    QMdiSubWindow *frame = m_children->Child(screenOf->childName);
    if (!frame) {
        QWidget *form = screenOf->makeChild();
        form->setWindowIcon(m_commands->Tool(command)->icon());
        frame = m_children->Open(form);
    }
    if (frame->isMinimized())
        frame->showNormal();
    m_children->setActiveSubWindow(frame);
}

void frmMain::ShowProperties()
{
    Screens::Installed().showProperties(this, m_panels[2]->text().trimmed(), m_loginComplete);
    if (m_loginComplete)
        m_panels[2]->setText(u"  " % SystemValue(SystemRef::DatabaseName));
}

/// A half-typed value belongs to the database that is about to be closed.
void frmMain::LeaveField()
{
    QFocusEvent left(QEvent::FocusOut, Qt::OtherFocusReason);
    if (QWidget *field = focusWidget())
        QCoreApplication::sendEvent(field, &left);
}

bool frmMain::ReconnectUntilSettled(const DatabaseChoice &last)
{
    while (!ConnectDatabase(false)) {
        gDBValid = false; // the chooser then has no current database to offer
        if (gDBQUseODBC) {
            gDBQName.clear();
            gDBQFilename.clear();
        }
        Screens::Installed().chooseDatabase(this, {});
        if (gDialogResult == 1)
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

void frmMain::StartAnew(const QString &text, const QString &title, bool exclamation)
{
    Dialogs::MsgBox(text, title, Dialogs::Buttons::Ok,
                    exclamation ? Dialogs::Icon::Exclamation : Dialogs::Icon::None);
    Restart();
}

void frmMain::SwitchDatabase()
{
    SwitchDatabase([this] {
        Screens::Installed().chooseDatabase(this, m_missing);
        return gDialogResult == 1;
    });
}

void frmMain::SwitchDatabase(const std::function<bool()> &choose)
{
    if (!CloseRecords())
        return;
    const DatabaseChoice last = DatabaseChoice::OfSession();
    if (!choose())
        return;
    LeaveField();
    gConnection.Close();
    gDBValid = ReconnectUntilSettled(last);
    if (gDBValid && !CheckLogon(gUserName, gUserPassword)) {
        StartAnew(QStringLiteral("Must re-logon on this database, as invalid username/password detected."),
                  QStringLiteral("Security"), false);
        return;
    }
    if (!gDBValid) {
        StartAnew(QStringLiteral("No valid database selected!"), QStringLiteral("Database Changed"), true);
        return;
    }
    Dialogs::MsgBox(QStringLiteral("Database switch confirmed."), QStringLiteral("Database Changed"));
    SetTitle();
    Login();
    ForEachChild(&Screen::refreshChild);
    OpenManagers();
}

void frmMain::ForEachChild(std::function<void(QWidget *)> Screen::*refill)
{
    const QList<QMdiSubWindow *> frames = m_children->subWindowList(QMdiArea::CreationOrder);
    std::for_each(frames.rbegin(), frames.rend(), [refill](QMdiSubWindow *frame) {
        QWidget *form = frame->widget();
        const Screen *screenOf = form ? Screens::OfChild(form->objectName()) : nullptr;
        if (screenOf && screenOf->*refill)
            (screenOf->*refill)(form);
    });
}

/// The records that are open beside the main window, the last opened first; false if one stays open.
bool frmMain::CloseRecords()
{
    const QList<RecordForm *> records = findChildren<RecordForm *>();
    return std::all_of(records.rbegin(), records.rend(),
                       [](RecordForm *record) { return !record->isVisible() || record->close(); });
}

/// Child windows may still have something to store, so they are closed while the database is open. The last
/// opened goes first; false if one stays open.
bool frmMain::CloseChildren()
{
    if (!CloseRecords())
        return false;
    const QList<QMdiSubWindow *> frames = m_children->subWindowList(QMdiArea::CreationOrder);
    return std::all_of(frames.rbegin(), frames.rend(), [](QMdiSubWindow *frame) { return frame->close(); });
}

bool frmMain::Unload()
{
    if (m_unloaded)
        return true;
    // Without a database there is nothing to stay open for.
    if (!CloseChildren() && gDBValid)
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
