#include "core/Main.h"
#include "core/Screens.h"
#include "core/Session.h"
#include "core/frmMain.h"
#include "database/CredentialStore.h"
#include "platform/Connection.h"
#include "platform/Directories.h"
#include "platform/FileDatabase.h"
#include "support/ScriptedDialogs.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using Dialogs::Answer;

class TestSession : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void WithoutSettingsTheMainWindowAsksForADatabase();
    void WithoutUsersTheSplashEndsByItself();
    void WithUsersALogonIsAskedFor();
    void CancelEndsTheProgramAndLeavesTheSettings();
    void ExitStoresCredentialsSettingsAndLog();
    void LogOffStartsAnew();
    void ACancelledSwitchChangesNothing();
    void ASwitchRefreshesWhatIsOpen();
    void ASwitchToADatabaseWithoutTheUserAsksForALogon();
    void AFailedSwitchCanGoBack();
    void AFailedSwitchThatIsGivenUpStartsAnew();
    void TheScreensWidthDecides_data();
    void TheScreensWidthDecides();
    void TheManagersStandSideBySide();
    void AChildOpensOnce();

private:
    QString Path(const QString &name) const { return m_directory->filePath(name); }
    QString MakeDatabase(const QString &name, const QStringList &statements = {}) const;
    void Settle(const QString &database) const;
    QByteArray Read(const QString &name) const;
    static QWidget *Window(const QString &name);
    static frmMain *MainWindow() { return static_cast<frmMain *>(Window(QStringLiteral("frmMain"))); }
    static void EndSplash();
    frmMain *Start(const QString &database);
    /// The user's turns at the chooser of the database, one after the other.
    void Choose(std::initializer_list<QString> files);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<ScriptedDialogs> m_user;
    QStringList m_choices;
};

namespace
{
const QString oneUser = QStringLiteral(
    "INSERT INTO Users (UserName, Password, SecurityRights) VALUES ('Ann', 'O''Neil', '99999')");

QAction *Tool(const QWidget *window, const char *id)
{
    return window->findChild<QAction *>(QString::fromLatin1(id));
}

QString Panel(const QWidget *window, int number)
{
    return window->findChild<QLabel *>(u"Panel_" % QString::number(number))->text();
}

QMdiSubWindow *Child(const QWidget *window, const QString &name)
{
    for (QMdiSubWindow *frame : window->findChild<QMdiArea *>()->subWindowList()) {
        if (frame->widget() && frame->widget()->objectName() == name)
            return frame;
    }
    return nullptr;
}
} // namespace

void TestSession::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    Directories::SetProgram(m_directory->path());
    m_user = std::make_unique<ScriptedDialogs>();
    frmMain::AssumeScreenWidth(1280);
    Screens::Installed() = {};
    Screens::Installed().showProperties = [](QWidget *, const QString &, bool) {};
    Choose({});
    gDBPassword.clear();
    gDBUser.clear();
}

void TestSession::cleanup()
{
    if (frmMain *window = MainWindow())
        window->Unload();
    for (QWidget *window : QApplication::topLevelWidgets())
        window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    gConnection.Close();
    QVERIFY2(m_choices.isEmpty(), "the chooser of the database did not come");
    m_user.reset();
}

QString TestSession::MakeDatabase(const QString &name, const QStringList &statements) const
{
    Directories::Writable();
    const QString file = Path(u"database/" % name);
    QFile::copy(QCoreApplication::applicationDirPath() % u"/system/blank", file);
    const auto database = FileDatabase::OpenExclusive(file, QStringLiteral("marigold"));
    if (!database || !database->NewPassword({}) || !database->Run(statements.join(u';')))
        qFatal("no database %s", qPrintable(name));
    return file;
}

void TestSession::Settle(const QString &database) const
{
    QFile settings(Path(QStringLiteral("prog.ini")));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write(QString(u"[DBQFilename]=" % database % u"\n[DBQType]=1\n").toUtf8());
}

QByteArray TestSession::Read(const QString &name) const
{
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

QWidget *TestSession::Window(const QString &name)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name && window->isVisible())
            return window;
    }
    return nullptr;
}

void TestSession::EndSplash()
{
    QWidget *splash = Window(QStringLiteral("frmSplash"));
    QVERIFY(splash);
    auto *timer = splash->findChild<QTimer *>(QStringLiteral("Timer1"));
    QCOMPARE(timer->interval(), 2500);
    QVERIFY(timer->isActive());
    timer->setInterval(0);
    QTRY_VERIFY(Window(QStringLiteral("frmMain")));
    QVERIFY(!Window(QStringLiteral("frmSplash")));
}

frmMain *TestSession::Start(const QString &database)
{
    Settle(database);
    Main();
    EndSplash();
    return MainWindow();
}

void TestSession::Choose(std::initializer_list<QString> files)
{
    m_choices = files;
    Screens::Installed().chooseDatabase = [this](QWidget *) {
        gDialogResult = 0;
        if (m_choices.isEmpty())
            QFAIL("the chooser of the database was not expected");
        const QString file = m_choices.takeFirst();
        if (file.isEmpty())
            return;
        gDBQFilename = file;
        gDBQUseODBC = false;
        gDBQType = 1;
        gDialogResult = 1;
    };
}

void TestSession::WithoutSettingsTheMainWindowAsksForADatabase()
{
    Main();
    QVERIFY(!Window("frmSplash")->findChild<QWidget *>("txtUserName")->isVisible());
    QCOMPARE(Window("frmSplash")->findChild<QLabel *>("Label1")->text(),
             QStringLiteral("Version 1.20 (1020/0)"));
    m_user->Expect({}, QStringLiteral("Must select a valid datasource"));
    EndSplash();
    const frmMain *window = MainWindow();
    QCOMPARE(window->windowTitle(), QStringLiteral("Veltrane"));
    QCOMPARE(Panel(window, 3), QStringLiteral("No Database.  "));
    QVERIFY(!window->findChild<QLabel *>("Panel_3")->isEnabled());
    QVERIFY(gUserRights.isEmpty());
    QVERIFY(window->findChild<QMdiArea *>()->subWindowList().isEmpty());
}

void TestSession::WithoutUsersTheSplashEndsByItself()
{
    const QString file =
        MakeDatabase(QStringLiteral("a.mdb"),
                     {QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (1, 'Our school')")});
    Settle(file);
    Main();
    QCOMPARE(Window("frmSplash")->findChild<QLabel *>("Label1")->text(),
             QStringLiteral("Version 1.20 (1020/3)"));
    EndSplash();
    const frmMain *window = MainWindow();
    QVERIFY(gDBValid);
    QCOMPARE(gUserRights, QString(256, u'9'));
    QCOMPARE(window->windowTitle(), QString(u"Veltrane Microsoft Access with Datasource [" % file % u']'));
    QCOMPARE(Panel(window, 3), QStringLiteral("  Our school"));
    QVERIFY(Panel(window, 2).startsWith(QStringLiteral("Logged in at ")));
    QVERIFY(Child(window, "frmCourse"));
    QVERIFY(Child(window, "frmContact"));
}

void TestSession::WithUsersALogonIsAskedFor()
{
    Settle(MakeDatabase(QStringLiteral("a.mdb"), {oneUser}));
    Main();
    QWidget *splash = Window(QStringLiteral("frmSplash"));
    auto *user = splash->findChild<QLineEdit *>("txtUserName");
    QVERIFY(user->isVisible());
    QVERIFY(!splash->findChild<QTimer *>("Timer1")->isActive());

    m_user->Expect(QStringLiteral("Login"), QStringLiteral("Invalid Username or Password!"));
    QTest::keyClicks(user, QStringLiteral("Ann"));
    QTest::keyClick(user, Qt::Key_Return);
    QVERIFY(m_user->AllCame());
    QCOMPARE(user->selectedText(), QStringLiteral("Ann"));
    QVERIFY(gUserRights.isEmpty());

    auto *password = splash->findChild<QLineEdit *>("txtPassword");
    QTest::keyClicks(password, QStringLiteral("O'Neil"));
    QTest::keyClick(password, Qt::Key_Return);
    QTRY_VERIFY(MainWindow());
    QCOMPARE(gUserName, QStringLiteral("Ann"));
    QCOMPARE(gUserPassword, QStringLiteral("O'Neil"));
    QCOMPARE(gUserRights, QStringLiteral("99999"));
}

void TestSession::CancelEndsTheProgramAndLeavesTheSettings()
{
    Settle(MakeDatabase(QStringLiteral("a.mdb"), {oneUser}));
    const QByteArray before = Read(QStringLiteral("prog.ini"));
    Main();
    QTest::keyClick(Window(QStringLiteral("frmSplash")), Qt::Key_Escape);
    QVERIFY(!Window(QStringLiteral("frmSplash")));
    QVERIFY(!MainWindow());
    QVERIFY(!gConnection.IsOpen());
    QCOMPARE(Read(QStringLiteral("prog.ini")), before);
    QCOMPARE(Read(QStringLiteral("log.txt")).count('\n'), 1);
}

void TestSession::ExitStoresCredentialsSettingsAndLog()
{
    const QString file = MakeDatabase(QStringLiteral("a.mdb"));
    frmMain *window = Start(file);
    gDBUser = QStringLiteral("a@b");
    gDBPassword = QStringLiteral("x");
    gShowIDs = 0;
    Tool(window, "ID_Exit")->trigger();
    QVERIFY(!MainWindow());
    QVERIFY(!gConnection.IsOpen());
    QCOMPARE(FetchCredential(Path(QStringLiteral("key.dat")), file), QStringLiteral("a%40b@x"));
    QVERIFY(Read(QStringLiteral("prog.ini")).contains("[Switches]=1,0,"));
    const QByteArray log = Read(QStringLiteral("log.txt"));
    QCOMPARE(log.count('\n'), 2);
    QVERIFY(log.contains("\nError Log finished at "));
}

void TestSession::LogOffStartsAnew()
{
    frmMain *window = Start(MakeDatabase(QStringLiteral("a.mdb")));
    gUserName = QStringLiteral("Ann");
    gConnection.Execute(oneUser);
    Tool(window, "ID_LogOff")->trigger();
    QVERIFY(!MainWindow());
    QVERIFY(gDBValid);
    QVERIFY(gUserName.isEmpty());
    QVERIFY(Window(QStringLiteral("frmSplash"))->findChild<QLineEdit *>("txtUserName")->isVisible());
    QCOMPARE(Read(QStringLiteral("log.txt")).count('\n'), 1);
}

void TestSession::ACancelledSwitchChangesNothing()
{
    const QString file = MakeDatabase(QStringLiteral("a.mdb"));
    frmMain *window = Start(file);
    Choose({QString()});
    Tool(window, "ID_SwitchDatabase")->trigger();
    QVERIFY(gDBValid && gConnection.IsOpen());
    QCOMPARE(gDBQFilename, file);
    QVERIFY(MainWindow());
}

void TestSession::ASwitchRefreshesWhatIsOpen()
{
    const QString next =
        MakeDatabase(QStringLiteral("b.mdb"),
                     {QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (1, 'Other school')"),
                      QStringLiteral("INSERT INTO Contacts (Cust_Surname, Cust_Forename) VALUES "
                                     "('Brown', 'Bea')")});
    frmMain *window = Start(MakeDatabase(QStringLiteral("a.mdb")));
    auto *people = Child(window, "frmContact")->widget()->findChild<QAbstractItemView *>("ContactList2");
    QVERIFY(people);
    QCOMPARE(people->model()->rowCount(), 0);
    Choose({next});
    m_user->Expect(QStringLiteral("Database Changed"), QStringLiteral("Database switch confirmed."));
    Tool(window, "ID_SwitchDatabase")->trigger();
    QVERIFY(window->windowTitle().contains(QStringLiteral("b.mdb]")));
    QCOMPARE(Panel(window, 3), QStringLiteral("  Other school"));
    QCOMPARE(people->model()->rowCount(), 1);
}

void TestSession::ASwitchToADatabaseWithoutTheUserAsksForALogon()
{
    const QString next = MakeDatabase(QStringLiteral("b.mdb"), {oneUser});
    frmMain *window = Start(MakeDatabase(QStringLiteral("a.mdb")));
    Choose({next});
    m_user->Expect(QStringLiteral("Security"),
                   QStringLiteral("Must re-logon on this database, as invalid username/password detected."));
    Tool(window, "ID_SwitchDatabase")->trigger();
    QVERIFY(!MainWindow());
    QVERIFY(Window(QStringLiteral("frmSplash"))->findChild<QLineEdit *>("txtUserName")->isVisible());
    QCOMPARE(gDBQFilename, next);
}

void TestSession::AFailedSwitchCanGoBack()
{
    const QString file = MakeDatabase(QStringLiteral("a.mdb"));
    frmMain *window = Start(file);
    const QString gone = Path(QStringLiteral("gone.mdb"));
    Choose({gone, QString()});
    m_user->Expect(QStringLiteral("ODBC"),
                   u"Veltrane couldn't connect to an datasource.\nThe database file " % gone %
                       u" does not exist.");
    m_user->Expect(QStringLiteral("ODBC Connect"), QStringLiteral("Restore last valid Veltrane database?"),
                   Answer::Yes);
    m_user->Expect(QStringLiteral("Database Changed"), QStringLiteral("Database switch confirmed."));
    Tool(window, "ID_SwitchDatabase")->trigger();
    QVERIFY(gDBValid && gConnection.IsOpen());
    QCOMPARE(gDBQFilename, file);
    QVERIFY(MainWindow());
}

void TestSession::AFailedSwitchThatIsGivenUpStartsAnew()
{
    frmMain *window = Start(MakeDatabase(QStringLiteral("a.mdb")));
    const QString gone = Path(QStringLiteral("gone.mdb"));
    const QString cannot =
        u"Veltrane couldn't connect to an datasource.\nThe database file " % gone % u" does not exist.";
    Choose({gone, gone, QString()});
    m_user->Expect(QStringLiteral("ODBC"), cannot);
    m_user->Expect(QStringLiteral("ODBC"), cannot);
    m_user->Expect(QStringLiteral("ODBC Connect"), QStringLiteral("Restore last valid Veltrane database?"),
                   Answer::No);
    m_user->Expect(QStringLiteral("Database Changed"), QStringLiteral("No valid database selected!"));
    m_user->Expect(QStringLiteral("ODBC"), cannot);
    Tool(window, "ID_SwitchDatabase")->trigger();
    QVERIFY(!gDBValid);
    QVERIFY(!MainWindow());
    m_user->Expect({}, QStringLiteral("Must select a valid datasource"));
    EndSplash();
    QVERIFY(gDBQFilename.isEmpty());
}

void TestSession::TheScreensWidthDecides_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("warns");
    QTest::addColumn<int>("takenOff");
    QTest::newRow("below") << 1023 << true << 0;
    QTest::newRow("the least") << 1024 << false << 60;
    QTest::newRow("above") << 1280 << false << 0;
}

void TestSession::TheScreensWidthDecides()
{
    QFETCH(int, width);
    QFETCH(bool, warns);
    QFETCH(int, takenOff);
    frmMain::AssumeScreenWidth(width);
    if (warns)
        m_user->Expect(QStringLiteral("Screen Resolution Warning"),
                       QStringLiteral("Veltrane is best run in 1024x768 or higher."));
    const frmMain *window = Start(MakeDatabase(QStringLiteral("a.mdb")));
    const QSize room = window->findChild<QMdiArea *>()->viewport()->size();
    QCOMPARE(Child(window, "frmCourse")->width(), room.width() / 2 - takenOff);
}

void TestSession::TheManagersStandSideBySide()
{
    frmMain *window = Start(MakeDatabase(QStringLiteral("a.mdb")));
    QMdiSubWindow *courses = Child(window, "frmCourse");
    QMdiSubWindow *contacts = Child(window, "frmContact");
    const auto fillTheRoom = [&] {
        const QRect room = window->findChild<QMdiArea *>()->viewport()->rect();
        return courses->geometry() == QRect(0, 0, room.width() / 2, room.height()) &&
               contacts->geometry() ==
                   QRect(room.width() / 2, 0, room.width() - room.width() / 2, room.height());
    };
    QVERIFY(fillTheRoom());
    window->resize(window->size() + QSize(100, 50));
    QTRY_VERIFY(fillTheRoom());
    courses->showMinimized();
    Tool(window, "ID_Tile")->trigger();
    QCOMPARE(contacts->geometry(), window->findChild<QMdiArea *>()->viewport()->rect());
}

void TestSession::AChildOpensOnce()
{
    frmMain *window = Start(MakeDatabase(QStringLiteral("a.mdb")));
    Tool(window, "ID_Users")->trigger();
    const QMdiSubWindow *first = Child(window, "frmUsers");
    QVERIFY(first);
    Child(window, "frmContact")->setFocus();
    Tool(window, "ID_Users")->trigger();
    auto *area = window->findChild<QMdiArea *>();
    QCOMPARE(area->activeSubWindow(), first);
    QCOMPARE(area->subWindowList().size(), 3);
    Child(window, "frmUsers")->close();
    QTRY_COMPARE(area->subWindowList().size(), 2);
}

QTEST_MAIN(TestSession)
#include "test_session.moc"
