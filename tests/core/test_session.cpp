#include "core/Main.h"
#include "core/Screens.h"
#include "core/Session.h"
#include "core/frmMain.h"
#include "database/BlankTemplate.h"
#include "database/CredentialStore.h"
#include "platform/Connection.h"
#include "platform/Directories.h"
#include "platform/FileDatabase.h"
#include "support/Files.h"
#include "support/ScriptedDialogs.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using Dialogs::Answer;

namespace
{
const QString oneUser = QStringLiteral(
    "INSERT INTO Users (UserName, Password, SecurityRights) VALUES ('Ann', 'O''Neil', '99999')");

QWidget *Window(const QString &name)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name && window->isVisible())
            return window;
    }
    return nullptr;
}

QWidget *Splash()
{
    return Window(QStringLiteral("frmSplash"));
}

frmMain *MainWindow()
{
    return static_cast<frmMain *>(Window(QStringLiteral("frmMain")));
}

/// The main window's command of that name, chosen.
void Command(const char *id)
{
    MainWindow()->findChild<QAction *>(QString::fromLatin1(id))->trigger();
}

QString Panel(int number)
{
    return MainWindow()->findChild<QLabel *>(u"Panel_" % QString::number(number))->text();
}

QMdiArea *Room()
{
    return MainWindow()->findChild<QMdiArea *>();
}

QMdiSubWindow *Child(const QString &name)
{
    for (QMdiSubWindow *frame : Room()->subWindowList()) {
        if (frame->widget() && frame->widget()->objectName() == name)
            return frame;
    }
    return nullptr;
}

/// The splash without a logon, whose time is over.
void EndSplash()
{
    auto *timer = Splash()->findChild<QTimer *>(QStringLiteral("Timer1"));
    QCOMPARE(timer->interval(), 2500);
    QVERIFY(timer->isActive());
    timer->setInterval(0);
    QTRY_VERIFY(MainWindow());
    QVERIFY(!Splash());
}

QLineEdit *LogonField(const char *name)
{
    auto *field = Splash()->findChild<QLineEdit *>(QString::fromLatin1(name));
    return field->isVisible() ? field : nullptr;
}
} // namespace

class TestSession : public QObject
{
    Q_OBJECT

    QString Path(const QString &name) const { return m_directory->filePath(name); }
    QByteArray Read(const QString &name) const { return ContentOf(Path(name)); }
    QString MakeDatabase(const QString &name, const QStringList &statements = {}) const
    {
        Directories::Writable(); // makes the folders
        const QString file = Path(u"database/" % name);
        if (!CopyOver(QCoreApplication::applicationDirPath() % u"/system/blank", file) ||
            !OpenUpTemplate(file) || !FileDatabase::OpenExclusive(file, {})->Run(statements.join(u';')))
            qFatal("no database %s", qPrintable(name));
        return file;
    }
    void Settle(const QString &database) const
    {
        WriteFile(Path(QStringLiteral("prog.ini")),
                  QString(u"[DBQFilename]=" % database % u"\n[DBQType]=1\n").toUtf8());
    }
    /// A session on a database without users; its file.
    QString Start() const
    {
        const QString file = MakeDatabase(QStringLiteral("a.mdb"));
        Settle(file);
        Main();
        EndSplash();
        return file;
    }
    /// The user's turns at the chooser of the database, one after the other; "" = cancelled.
    void Choose(std::initializer_list<QString> files)
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

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<ScriptedDialogs> m_user;
    QStringList m_choices;

private slots:
    void init()
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
    void cleanup()
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

    void WithoutSettingsTheMainWindowAsksForADatabase()
    {
        Main();
        QVERIFY(!LogonField("txtUserName"));
        QCOMPARE(Splash()->findChild<QLabel *>("Label1")->text(), QStringLiteral("Version 1.20 (1020/0)"));
        m_user->Expect({}, QStringLiteral("Must select a valid datasource"));
        EndSplash();
        QCOMPARE(MainWindow()->windowTitle(), QStringLiteral("Veltrane"));
        QCOMPARE(Panel(3), QStringLiteral("No Database.  "));
        QVERIFY(gUserRights.isEmpty());
        QVERIFY(Room()->subWindowList().isEmpty());
    }

    void WithoutUsersTheSplashEndsByItself()
    {
        const QString file =
            MakeDatabase(QStringLiteral("a.mdb"),
                         {QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (1, 'Our school')")});
        Settle(file);
        Main();
        QCOMPARE(Splash()->findChild<QLabel *>("Label1")->text(), QStringLiteral("Version 1.20 (1020/3)"));
        EndSplash();
        QVERIFY(gDBValid);
        QCOMPARE(gUserRights, QString(256, u'9'));
        QCOMPARE(MainWindow()->windowTitle(),
                 QString(u"Veltrane Microsoft Access with Datasource [" % file % u']'));
        QCOMPARE(Panel(3), QStringLiteral("  Our school"));
        QVERIFY(Panel(2).startsWith(QStringLiteral("Logged in at ")));
    }

    void WithUsersALogonIsAskedFor()
    {
        Settle(MakeDatabase(QStringLiteral("a.mdb"), {oneUser}));
        Main();
        QLineEdit *user = LogonField("txtUserName");
        QVERIFY(user);
        QVERIFY(!Splash()->findChild<QTimer *>("Timer1")->isActive());

        m_user->Expect(QStringLiteral("Login"), QStringLiteral("Invalid Username or Password!"));
        QTest::keyClicks(user, QStringLiteral("Ann"));
        QTest::keyClick(user, Qt::Key_Return);
        QVERIFY(m_user->AllCame());
        QCOMPARE(user->selectedText(), QStringLiteral("Ann"));
        QVERIFY(gUserRights.isEmpty());

        QLineEdit *password = LogonField("txtPassword");
        QTest::keyClicks(password, QStringLiteral("O'Neil"));
        QTest::keyClick(password, Qt::Key_Return);
        QTRY_VERIFY(MainWindow());
        QCOMPARE(gUserName % u'/' % gUserPassword, QStringLiteral("Ann/O'Neil"));
        QCOMPARE(gUserRights, QStringLiteral("99999"));
    }

    void CancelEndsTheProgramAndLeavesTheSettings()
    {
        Settle(MakeDatabase(QStringLiteral("a.mdb"), {oneUser}));
        const QByteArray before = Read(QStringLiteral("prog.ini"));
        Main();
        QTest::keyClick(Splash(), Qt::Key_Escape);
        QVERIFY(!Splash() && !MainWindow());
        QVERIFY(!gConnection.IsOpen());
        QCOMPARE(Read(QStringLiteral("prog.ini")), before);
        QCOMPARE(Read(QStringLiteral("log.txt")).count('\n'), 1);
    }

    void ExitStoresCredentialsSettingsAndLog()
    {
        const QString file = Start();
        gDBUser = QStringLiteral("a@b");
        gDBPassword = QStringLiteral("x");
        gShowIDs = 0;
        Command("ID_Exit");
        QVERIFY(!MainWindow());
        QVERIFY(!gConnection.IsOpen());
        QCOMPARE(FetchCredential(Path(QStringLiteral("key.dat")), file), QStringLiteral("a%40b@x"));
        QVERIFY(Read(QStringLiteral("prog.ini")).contains("[Switches]=1,0,"));
        const QByteArray log = Read(QStringLiteral("log.txt"));
        QCOMPARE(log.count('\n'), 2);
        QVERIFY(log.contains("\nError Log finished at "));
    }

    void LogOffStartsAnew()
    {
        Start();
        gUserName = QStringLiteral("Ann");
        gConnection.Execute(oneUser);
        Command("ID_LogOff");
        QVERIFY(!MainWindow());
        QVERIFY(gDBValid);
        QVERIFY(gUserName.isEmpty());
        QVERIFY(LogonField("txtUserName"));
        QCOMPARE(Read(QStringLiteral("log.txt")).count('\n'), 1);
    }

    void ASwitchRefreshesWhatIsOpen()
    {
        const QString next =
            MakeDatabase(QStringLiteral("b.mdb"),
                         {QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (1, 'Other school')"),
                          QStringLiteral("INSERT INTO Contacts (Cust_Surname, Cust_Forename) VALUES "
                                         "('Brown', 'Bea')")});
        const QString file = Start();
        Choose({QString()});
        Command("ID_SwitchDatabase");
        QVERIFY(gDBValid && gConnection.IsOpen() && MainWindow());
        QCOMPARE(gDBQFilename, file);

        auto *people = Child("frmContact")->widget()->findChild<QAbstractItemView *>("ContactList2");
        QCOMPARE(people->model()->rowCount(), 0);
        Choose({next});
        m_user->Expect(QStringLiteral("Database Changed"), QStringLiteral("Database switch confirmed."));
        Command("ID_SwitchDatabase");
        QVERIFY(MainWindow()->windowTitle().contains(QStringLiteral("b.mdb]")));
        QCOMPARE(Panel(3), QStringLiteral("  Other school"));
        QCOMPARE(people->model()->rowCount(), 1);
    }

    void ASwitchToADatabaseWithoutTheUserAsksForALogon()
    {
        const QString next = MakeDatabase(QStringLiteral("b.mdb"), {oneUser});
        Start();
        Choose({next});
        m_user->Expect(
            QStringLiteral("Security"),
            QStringLiteral("Must re-logon on this database, as invalid username/password detected."));
        Command("ID_SwitchDatabase");
        QVERIFY(!MainWindow());
        QVERIFY(LogonField("txtUserName"));
        QCOMPARE(gDBQFilename, next);
    }

    void AFailedSwitchGoesBackOrStartsAnew_data()
    {
        QTest::addColumn<bool>("goesBack");
        QTest::newRow("back") << true;
        QTest::newRow("given up") << false;
    }
    void AFailedSwitchGoesBackOrStartsAnew()
    {
        QFETCH(bool, goesBack);
        const QString file = Start();
        const QString gone = Path(QStringLiteral("gone.mdb"));
        const auto expectFailure = [&] {
            m_user->Expect(QStringLiteral("ODBC"),
                           u"Veltrane couldn't connect to an datasource.\nThe database file " % gone %
                               u" does not exist.");
        };
        Choose({gone, gone, QString()});
        expectFailure();
        expectFailure();
        m_user->Expect(QStringLiteral("ODBC Connect"),
                       QStringLiteral("Restore last valid Veltrane database?"),
                       goesBack ? Answer::Yes : Answer::No);
        m_user->Expect(QStringLiteral("Database Changed"),
                       goesBack ? QStringLiteral("Database switch confirmed.")
                                : QStringLiteral("No valid database selected!"));
        if (!goesBack)
            expectFailure();
        Command("ID_SwitchDatabase");
        QCOMPARE(gDBValid && gConnection.IsOpen(), goesBack);
        QCOMPARE(MainWindow() != nullptr, goesBack);
        if (goesBack) {
            QCOMPARE(gDBQFilename, file);
            return;
        }
        m_user->Expect({}, QStringLiteral("Must select a valid datasource"));
        EndSplash();
        QVERIFY(gDBQFilename.isEmpty());
    }

    void TheScreensWidthDecides_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<bool>("warns");
        QTest::addColumn<int>("takenOff");
        QTest::newRow("below") << 1023 << true << 0;
        QTest::newRow("the least") << 1024 << false << 60;
        QTest::newRow("above") << 1280 << false << 0;
    }
    void TheScreensWidthDecides()
    {
        QFETCH(int, width);
        QFETCH(bool, warns);
        QFETCH(int, takenOff);
        frmMain::AssumeScreenWidth(width);
        if (warns)
            m_user->Expect(QStringLiteral("Screen Resolution Warning"),
                           QStringLiteral("Veltrane is best run in 1024x768 or higher."));
        Start();
        QCOMPARE(Child("frmCourse")->width(), Room()->viewport()->width() / 2 - takenOff);
    }

    void TheManagersStandSideBySide()
    {
        Start();
        QMdiSubWindow *courses = Child("frmCourse");
        QMdiSubWindow *contacts = Child("frmContact");
        const auto fillTheRoom = [&] {
            const QSize room = Room()->viewport()->size();
            const int half = room.width() / 2;
            return courses->geometry() == QRect(0, 0, half, room.height()) &&
                   contacts->geometry() == QRect(half, 0, room.width() - half, room.height());
        };
        QVERIFY(fillTheRoom());
        MainWindow()->resize(MainWindow()->size() + QSize(100, 50));
        QTRY_VERIFY(fillTheRoom());
        courses->showMinimized();
        Command("ID_Tile");
        QCOMPARE(contacts->geometry(), Room()->viewport()->rect());
    }

    void AChildOpensOnce()
    {
        Start();
        Command("ID_Users");
        const QMdiSubWindow *first = Child("frmUsers");
        QVERIFY(first);
        Child("frmContact")->setFocus();
        Command("ID_Users");
        QCOMPARE(Room()->activeSubWindow(), first);
        QCOMPARE(Room()->subWindowList().size(), 3);
        Child("frmUsers")->close();
        QTRY_COMPARE(Room()->subWindowList().size(), 2);
    }
};

QTEST_MAIN(TestSession)
#include "test_session.moc"
