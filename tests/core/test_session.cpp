#include "core/session/Session.h"
#include "core/shell/Main.h"
#include "core/shell/Screens.h"
#include "core/shell/frmMain.h"
#include "database/connection/CredentialStore.h"
#include "forms/frames/StandardDialogs.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Directories.h"
#include "platform/engines/FileDatabase.h"
#include "support/Files.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDebug>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <memory>

using Dialogs::Answer;

namespace
{
const QString oneUser =
    u"INSERT INTO Users (UserName, Password, SecurityRights) VALUES ('Ann', 'O''Neil', '99999')"_qs;

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
    return Window(u"frmSplash"_qs);
}

frmMain *MainWindow()
{
    return static_cast<frmMain *>(Window(u"frmMain"_qs));
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
    auto *timer = Splash()->findChild<QTimer *>("Timer1");
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
        TestDatabase::MakeFile(file);
        FileDatabase::OpenExclusive(file, {})->Run(statements.join(u';'));
        return file;
    }
    void Settle(const QString &database) const
    {
        WriteFile(Path("prog.ini"), QString(u"[DBQFilename]=" % database % u"\n[DBQType]=1\n").toUtf8());
    }
    /// A session on a database without users; its file.
    QString Start() const
    {
        const QString file = MakeDatabase("a.mdb");
        Settle(file);
        Main();
        EndSplash();
        return file;
    }
    /// The user's turns at the chooser of the database, one after the other; "" = cancelled.
    void Choose(std::initializer_list<QString> files)
    {
        m_choices = files;
        m_offered.clear();
        Screens::Installed().chooseDatabase = [this](QWidget *, const QString &proposed) {
            gDialogResult = 0;
            m_offered.append(gDBValid ? gDBQFilename : proposed);
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
    QStringList m_offered; ///< to go on with, each time the chooser came

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
        QCOMPARE(Splash()->findChild<QLabel *>("Label1")->text(), u"Version 1.20 (1020/0)"_qs);
        m_user->Expect({}, u"Must select a valid datasource"_qs);
        QTest::keyClick(Splash(), Qt::Key_Space);
        QVERIFY(MainWindow() && !Splash());
        QCOMPARE(MainWindow()->windowTitle(), u"Veltrane"_qs);
        QCOMPARE(Panel(3), u"No Database.  "_qs);
        QVERIFY(gUserRights.isEmpty());
        QVERIFY(Room()->subWindowList().isEmpty());
    }

    void WithoutUsersTheSplashEndsByItself()
    {
        const QString file =
            MakeDatabase("a.mdb", {u"INSERT INTO System (Ref, SystemValue) VALUES (1, 'Our school')"_qs});
        Settle(file);
        Main();
        QCOMPARE(Splash()->findChild<QLabel *>("Label1")->text(), u"Version 1.20 (1020/3)"_qs);
        EndSplash();
        QVERIFY(gDBValid);
        QCOMPARE(gUserRights, QString(256, u'9'));
        QCOMPARE(MainWindow()->windowTitle(),
                 QString(u"Veltrane Microsoft Access with Datasource [" % file % u']'));
        QCOMPARE(Panel(3), u"  Our school"_qs);
        QVERIFY(Panel(2).startsWith(u"Logged in at "_qs));
    }

    void WithUsersALogonIsAskedFor()
    {
        Settle(MakeDatabase("a.mdb", {oneUser}));
        Main();
        QLineEdit *user = LogonField("txtUserName");
        QVERIFY(user);
        QVERIFY(!Splash()->findChild<QTimer *>("Timer1")->isActive());

        m_user->Expect("Login", "Invalid Username or Password!");
        QTest::keyClicks(user, u"Ann"_qs);
        QTest::keyClick(user, Qt::Key_Return);
        QVERIFY(m_user->AllCame());
        QCOMPARE(user->selectedText(), u"Ann"_qs);
        QVERIFY(gUserRights.isEmpty());

        QLineEdit *password = LogonField("txtPassword");
        QTest::keyClicks(password, u"O'Neil"_qs);
        QTest::keyClick(password, Qt::Key_Return);
        QTRY_VERIFY(MainWindow());
        QCOMPARE(gUserName % u'/' % gUserPassword, u"Ann/O'Neil"_qs);
        QCOMPARE(gUserRights, u"99999"_qs);
    }

    void CancelEndsTheProgramAndLeavesTheSettings()
    {
        Settle(MakeDatabase("a.mdb", {oneUser}));
        const QByteArray before = Read("prog.ini");
        Main();
        QTest::keyClick(Splash(), Qt::Key_Escape);
        QVERIFY(!Splash() && !MainWindow() && !gConnection.IsOpen());
        QCOMPARE(Read("prog.ini"), before);
        QCOMPARE(Read("log.txt").count('\n'), 1);
    }

    void ExitStoresCredentialsSettingsAndLog()
    {
        const QString file = Start();
        gDBUser = "a@b";
        gDBPassword = "x";
        gShowIDs = 0;
        Command("ID_Exit");
        QVERIFY(!MainWindow() && !gConnection.IsOpen());
        QCOMPARE(FetchCredential(Path("key.dat"), file), u"a%40b@x"_qs);
        QVERIFY(Read("prog.ini").contains("[Switches]=1,0,"));
        const QByteArray log = Read("log.txt");
        QVERIFY(log.count('\n') == 2 && log.contains("\nError Log finished at "));
    }

    /// The desktop's users leave in the middle of a word: what they typed is kept as on leaving the field,
    /// since its database is still open.
    void LeavingWithAWordHalfTyped_data()
    {
        const TestTable<QString> row{"command"};
        row("exit", "ID_Exit");
        row("log off", "ID_LogOff");
        row("a switch that fails", "ID_SwitchDatabase");
    }
    void LeavingWithAWordHalfTyped()
    {
        QFETCH(QString, command);
        const QString file = Start();
        QApplication::setActiveWindow(MainWindow());
        auto *apply = Child("frmContact")->widget()->findChild<QComboBox *>("CharList");
        apply->setFocus();
        QTest::keyClicks(apply, "Pensioner");
        if (command == "ID_SwitchDatabase") {
            Choose({Path("gone.mdb"), QString()});
            const QString failure = u"Veltrane couldn't connect to an datasource.\nThe database file " %
                                    Path("gone.mdb") % u" does not exist.";
            m_user->Expect("ODBC", failure);
            m_user->Expect("ODBC Connect", "Restore last valid Veltrane database?", Answer::No);
            m_user->Expect("Database Changed", "No valid database selected!");
            m_user->Expect("ODBC", failure);
        }
        Command(command.toLatin1());
        QVERIFY(!MainWindow() && m_user->AllCame());
        Connection other;
        QVERIFY(other.Open(u"DBQ=" % file % u";Driver={Microsoft Access Driver (*.mdb)};"));
        QCOMPARE(other.OpenRecordset("SELECT * FROM Concessions WHERE Name = 'Pensioner'")->RowCount(), 1);
    }

    void EachChangedRecordIsAskedAbout_data()
    {
        const TestTable<QString> row{"command"};
        row("exit", "ID_Exit");
        row("log off", "ID_LogOff");
        row("switch", "ID_SwitchDatabase");
    }
    void EachChangedRecordIsAskedAbout()
    {
        QFETCH(QString, command);
        const QString file = Start();
        for (const char *name : {"Bell", "Carter"}) {
            Child("frmContact")->widget()->findChild<QPushButton *>("AddBtn")->click();
            auto *record = MainWindow()->findChildren<QDialog *>("frmAddContact").last();
            record->findChild<QLineEdit *>("Forname")->setText("Ann");
            record->findChild<QLineEdit *>("Surname")->setText(name);
        }
        const QString question = "Some of the data has changed.\nOkay to update before exiting?";
        m_user->Expect("Warning", question, Answer::Yes);
        m_user->Expect("Warning", question, Answer::Cancel);
        Command(command.toLatin1());
        QVERIFY(MainWindow() && m_user->AllCame());
        m_user->Expect("Warning", question, Answer::No);
        if (command == "ID_SwitchDatabase")
            Choose({QString()});
        Command(command.toLatin1());
        QVERIFY(m_user->AllCame());
        Connection other;
        QVERIFY(other.Open(u"DBQ=" % file % u";Driver={Microsoft Access Driver (*.mdb)};"));
        QCOMPARE(other.OpenRecordset("SELECT * FROM Contacts WHERE Cust_Surname = 'Carter'")->RowCount(), 1);
        QCOMPARE(other.OpenRecordset("SELECT * FROM Contacts WHERE Cust_Surname = 'Bell'")->RowCount(), 0);
    }

    /// Its box may be longer than a splash.
    void UsersThatCannotBeReadAreToldBeforeAnyWindow()
    {
        Settle(
            MakeDatabase("a.mdb", {"DROP TABLE Users", "CREATE VIEW Users AS SELECT nothing FROM Version"}));
        int windows = -1;
        Dialogs::Installed().msgBox = [&](auto &&...) {
            QTest::qWait(2700);
            windows = 0;
            for (const QWidget *window : QApplication::topLevelWidgets())
                windows += window->isVisible() ? 1 : 0;
            return Answer::Cancel;
        };
        Main();
        QCOMPARE(windows, 0);
        EndSplash();
    }

    void LogOffStartsAnew()
    {
        Start();
        gUserName = "Ann";
        gConnection.Execute(oneUser);
        auto *logOff = MainWindow()->findChild<QAction *>("ID_LogOff");
        logOff->trigger();
        logOff->trigger(); // the second click of a double one, which is for the window that went
        const QWidgetList windows = QApplication::topLevelWidgets();
        QVERIFY(std::count_if(windows.begin(), windows.end(), [](auto *w) { return w->isVisible(); }) == 1);
        QVERIFY(!MainWindow() && gDBValid && gUserName.isEmpty());
        QVERIFY(LogonField("txtUserName"));
        QCOMPARE(Read("log.txt").count('\n'), 1);
    }

    void ASwitchRefreshesWhatIsOpen()
    {
        const QString next =
            MakeDatabase("b.mdb", {u"INSERT INTO System (Ref, SystemValue) VALUES (1, 'Other school')"_qs,
                                   u"INSERT INTO Contacts (Cust_Surname, Cust_Forename) VALUES "
                                   "('Brown', 'Bea')"_qs});
        const QString file = Start();
        Choose({QString()});
        Command("ID_SwitchDatabase");
        QVERIFY(gDBValid && gConnection.IsOpen() && MainWindow());
        QCOMPARE(gDBQFilename, file);

        auto *people = Child("frmContact")->widget()->findChild<QAbstractItemView *>("ContactList2");
        QCOMPARE(people->model()->rowCount(), 0);
        Choose({next});
        m_user->Expect("Database Changed", "Database switch confirmed.");
        Command("ID_SwitchDatabase");
        QVERIFY(MainWindow()->windowTitle().contains(u"b.mdb]"_qs));
        QCOMPARE(Panel(3), u"  Other school"_qs);
        QCOMPARE(people->model()->rowCount(), 1);

        delete Child("frmCourse");
        Choose({file});
        m_user->Expect("Database Changed", "Database switch confirmed.");
        Command("ID_SwitchDatabase");
        QVERIFY(Child("frmCourse") && people->model()->rowCount() == 0);

        // The one before is offered again, and no longer once it is gone.
        const QMenu *recent = MainWindow()->findChild<QMenu *>("RecentDatabases");
        QCOMPARE(recent->actions().size(), 1);
        m_user->Expect("Database Changed", "Database switch confirmed.");
        recent->actions().first()->trigger();
        QCOMPARE(gDBQFilename, next);
        QVERIFY(QFile::remove(file));
        m_user->Expect("Recent Databases",
                       QString(file % u" does not exist any more, and is taken off the list."));
        recent->actions().first()->trigger();
        QVERIFY(recent->isEmpty() && gDBQFilename == next);
    }

    void ASwitchToADatabaseWithoutTheUserAsksForALogon()
    {
        const QString next = MakeDatabase("b.mdb", {oneUser});
        Start();
        Choose({next});
        m_user->Expect("Security", "Must re-logon on this database, as invalid username/password detected.");
        Command("ID_SwitchDatabase");
        QVERIFY(!MainWindow() && LogonField("txtUserName"));
        QCOMPARE(gDBQFilename, next);
    }

    void AFailedSwitchGoesBackOrStartsAnew_data()
    {
        const TestTable<Answer, QString, bool> row{"answer", "told", "goesBack"};
        row("back", Answer::Yes, "Database switch confirmed.", true);
        row("given up", Answer::No, "No valid database selected!", false);
    }
    void AFailedSwitchGoesBackOrStartsAnew()
    {
        QFETCH(Answer, answer);
        QFETCH(QString, told);
        QFETCH(bool, goesBack);
        const QString file = Start();
        const QString gone = Path("gone.mdb");
        const QString failure =
            u"Veltrane couldn't connect to an datasource.\nThe database file " % gone % u" does not exist.";
        Choose({gone, gone, QString()});
        m_user->Expect("ODBC", failure);
        m_user->Expect("ODBC", failure);
        m_user->Expect("ODBC Connect", "Restore last valid Veltrane database?", answer);
        m_user->Expect("Database Changed", told);
        if (!goesBack)
            m_user->Expect("ODBC", failure);
        Command("ID_SwitchDatabase");
        QCOMPARE(m_offered, QStringList({file, {}, {}}));
        QCOMPARE(gDBValid && gConnection.IsOpen() && MainWindow(), goesBack);
        if (!goesBack) {
            EndSplash(); // the file that is gone has been named
            Choose({QString()});
            Command("ID_SwitchDatabase");
            QCOMPARE(m_offered, QStringList(gone));
        }
        QCOMPARE(gDBQFilename, goesBack ? file : QString());
    }

    void TheScreensWidthDecides_data()
    {
        const TestTable<int, int> row{"width", "takenOff"};
        row("below", 1023, 0);
        row("the least", 1024, 60);
        row("above", 1280, 0);
    }
    void TheScreensWidthDecides()
    {
        QFETCH(int, width);
        QFETCH(int, takenOff);
        frmMain::AssumeScreenWidth(width);
        if (width < 1024)
            m_user->Expect("Screen Resolution Warning", "Veltrane is best run in 1024x768 or higher.");
        Start();
        QCOMPARE(Child("frmCourse")->width(), Room()->viewport()->width() / 2 - takenOff);
        if (takenOff > 0)
            return;
        MainWindow()->resize(MainWindow()->size() + QSize(100, 50));
        const auto besideEachOther = [] {
            const QSize room = Room()->viewport()->size();
            const int half = room.width() / 2;
            return Child("frmCourse")->geometry() == QRect(0, 0, half, room.height()) &&
                   Child("frmContact")->geometry() == QRect(half, 0, room.width() - half, room.height());
        };
        QTRY_VERIFY(besideEachOther());
    }

    void BothManagersFitTheirHalfOfASmallDesktop()
    {
        Start();
        MainWindow()->resize(1280, 680);
        for (const char *name : {"frmCourse", "frmContact"}) {
            const QMdiSubWindow *child = Child(name);
            QTRY_COMPARE(child->width(), Room()->viewport()->width() / 2);
            QVERIFY2(child->minimumSizeHint().width() <= child->width(), name);
        }
    }

    void AMessageBoxOpensOverTheFormThatAsks()
    {
        Start();
        Child("frmContact")->setFocus();
        const QScopedValueRollback scripted(Dialogs::Installed());
        InstallStandardDialogs();
        QPoint middle;
        QTimer::singleShot(0, this, [&middle] {
            QWidget *box = QApplication::activeModalWidget();
            middle = box->pos() + box->rect().center();
            QTest::keyClick(box, Qt::Key_Escape);
        });
        Dialogs::MsgBox(u"A question?"_qs, u"Contact Update"_qs);
        const QMdiSubWindow *asker = Child("frmContact");
        const QPoint aside = middle - asker->mapToGlobal(asker->rect().center());
        QVERIFY2(aside.manhattanLength() <= 2, qPrintable(QDebug::toString(aside)));
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

    void ADialogOfAChildKeepsItsKeys()
    {
        Start();
        QDialog dialog(Child("frmContact")->widget());
        QTabWidget tabs(&dialog);
        for (const auto &caption : {u"Details"_qs, u"Notes"_qs})
            tabs.addTab(new QWidget, caption);
        dialog.show();
        tabs.setFocus();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs.currentIndex(), 1);
    }
};

QTEST_MAIN(TestSession)
#include "test_session.moc"
