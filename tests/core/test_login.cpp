#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "core/shell/RecentDatabases.h"
#include "core/shell/Screens.h"
#include "core/shell/frmMain.h"
#include "core/shell/frmUserMay.h"
#include "database/statements/Security.h"
#include "forms/fields/ModifiedMark.h"
#include "forms/lists/ListView.h"
#include "support/Files.h"
#include "support/TestDatabase.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QSet>
#include <QStatusTipEvent>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <memory>

using Names = QSet<QString>;

/// What each right leaves of the commands.
class TestLogin : public QObject
{
    Q_OBJECT

    Names Enabled() const
    {
        Names names;
        for (const QAction *tool : m_window->findChildren<QAction *>()) {
            if (tool->objectName().startsWith(u"ID_"_qs) && tool->isEnabled())
                names.insert(tool->objectName());
        }
        return names;
    }
    void Give(int right, int level) const
    {
        gUserRights = RightsBlank();
        if (right >= 0)
            gUserRights[right] = QChar(u'0' + level);
        m_window->Login();
    }
    QAction *Tool(const QString &id) const { return m_window->findChild<QAction *>(id); }
    QString Panel(int number) const
    {
        return m_window->findChild<QLabel *>(u"Panel_" % QString::number(number))->text();
    }

    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<frmMain> m_window;

private slots:
    void initTestCase()
    {
        Screens::Installed().chooseDatabase = [](QWidget *, const QString &) {};
        Screens::Installed().showProperties = [](QWidget *, const QString &, bool) {};
    }
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gDBQType = 1;
        gDocDir = m_database->Directory();
        m_window = std::make_unique<frmMain>();
    }
    void cleanup()
    {
        m_window.reset();
        m_database.reset();
    }

    void WithoutADatabaseLittleWorks()
    {
        gDBValid = false;
        QVERIFY(Enabled().isEmpty()); // before anybody is let in
        Give(-1, 9);
        QCOMPARE(Enabled(), Names({"ID_File", "ID_New", "ID_RegisterDB", "ID_SwitchDatabase", "ID_LogOff",
                                   "ID_Exit", "ID_Window", "ID_Tile", "ID_Cascade", "ID_ArrangeIcons",
                                   "ID_Help", "ID_Tools", "ID_About"}));
        for (const QAction *entry : Tool("ID_Tools")->menu()->actions())
            QVERIFY(entry->isSeparator() || !entry->isEnabled());
        QCOMPARE(Panel(3), u"No Database.  "_qs);
        const auto *area = m_window->findChild<QMdiArea *>();
        const auto *start = m_window->findChild<QWidget *>("StartPage");
        QVERIFY(start->isVisibleTo(m_window.get()) && !area->isVisibleTo(m_window.get()));
        gDBValid = true;
        Give(-1, 9);
        QVERIFY(!start->isVisibleTo(m_window.get()) && area->isVisibleTo(m_window.get()));
        Tool("ID_Exit")->showStatusText(m_window.get());
        QCOMPARE(Panel(1), u"Quit Program"_qs);
    }

    void ACsvFileIsDropped()
    {
        QStringList imported;
        Screens::Installed().importFile = [&](QWidget *, const QString &file) { imported.append(file); };
        const auto drop = [this](const QList<QUrl> &files) {
            QMimeData data;
            data.setUrls(files);
            QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
            enter.ignore();
            QApplication::sendEvent(m_window.get(), &enter);
            if (!enter.isAccepted())
                return false;
            QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(m_window.get(), &event);
            QCoreApplication::processEvents();
            return event.isAccepted();
        };
        const QUrl csv = QUrl::fromLocalFile("/tmp/people.CSV");
        Give(-1, 9);
        QVERIFY(drop({csv}) && !drop({csv, csv}) && !drop({QUrl::fromLocalFile("/tmp/a.pdf")}));
        Give(13, 0);
        QVERIFY(!drop({csv}));
        QCOMPARE(imported, QStringList("/tmp/people.CSV"));
    }

    void MenusHaveKeysOfTheirOwn()
    {
        Give(-1, 9);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyClick(m_window.get(), Qt::Key_5, Qt::AltModifier);
        QCOMPARE(m_window->menuBar()->activeAction(), Tool("ID_Tools"));
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        auto *window = Tool("ID_Window")->menu();
        emit window->aboutToShow();
        auto *refresh = window->findChild<QAction *>("ChildRefresh");
        QVERIFY(!refresh->isEnabled());
        Tool("ID_ContactManager")->trigger();
        emit window->aboutToShow();
        QVERIFY(refresh->isEnabled());
        TestDatabase::Run({"INSERT INTO Contacts (Cust_Surname, Cust_Forename) VALUES ('Bell','Anna')"});
        refresh->trigger();
        QCOMPARE(m_window->findChild<ListView *>("ContactList2")->Model().Count(), 1);
    }

    void TheStatusBarTellsOfTheUserAndOfASave()
    {
        gUserName = "Clerk";
        Give(-1, 9);
        QCOMPARE(m_window->findChild<QLabel *>("Panel_User")->text(), u"User: Clerk  "_qs);
        ModifiedMark(nullptr).Saved();
        QStatusTipEvent left{QString()};
        QCoreApplication::sendEvent(m_window.get(), &left);
        QCOMPARE(Panel(1), u"Saved"_qs);
        m_window->findChild<QTimer *>("SavedTimer")->setInterval(1);
        QTRY_COMPARE(Panel(1), QString());
        gUserName.clear();
    }

    /// A right below 9 takes its command, and nothing else.
    void ARightDisablesItsCommand()
    {
        Give(-1, 9);
        const Names all = Enabled();
        QVERIFY(all.contains("ID_Users"));
        const auto check = [&](int right, int level, const QString &disabled) {
            Give(right, level);
            Names expected = all;
            for (const QString &name : disabled.split(u'+'))
                expected.remove(name);
            const Names enabled = Enabled();
            QVERIFY2(enabled == expected,
                     qPrintable(QString::number(right) % u" at " % QString::number(level)));
        };
        const QString guarded =
            "0 ID_Security,1 ID_Contacts,2 ID_Courses,3 ID_ReportManager,4 ID_SwitchDatabase,5 ID_New,"
            "6 ID_RegisterDB,7 ID_IssueAwards,9 ID_Organisations,10 ID_ScheduleManager,11 ID_FastEnroll,"
            "12 ID_Options,13 ID_Import,14 ID_Export,16 ID_DBSecurity,20 ID_ContactManager+ID_QuickFilter,"
            "21 ID_ContactMaintenance,22 ID_ContactReports,45 ID_CourseManager,46 ID_CourseMaintenance,"
            "47 ID_CourseReports,90 ID_DatabaseOptions";
        for (const QString &entry : guarded.split(u',')) {
            const int right = entry.section(u' ', 0, 0).toInt();
            check(right, 0, entry.section(u' ', 1));
            check(right, 3, entry.section(u' ', 1));
        }
        check(15, 0, "ID_Users");
        check(15, 1, {});
        check(23, 0, {}); // guards no command
    }

    void RecentDatabasesAreForThoseWhoMaySwitch()
    {
        RecentDatabases::Add(u"/srv/other.mdb"_qs);
        for (const int level : {9, 0}) {
            Give(static_cast<int>(Right::SwitchDatabase), level);
            QCOMPARE(m_window->findChild<QMenu *>("RecentDatabases")->menuAction()->isEnabled(), level == 9);
        }
    }

    void WhatAUserMayDo()
    {
        QString rights = RightsBlank();
        for (const Right refused : {Right::CoursesMenu, Right::CourseMaintenance, Right::Import})
            rights[static_cast<int>(refused)] = u'0';
        rights[static_cast<int>(Right::Contacts)] = u'1';
        const frmUserMay form(u"Anna"_qs, rights);
        const ListModel &rows = form.findChild<ListView *>()->Model();
        QHash<QString, QString> may;
        for (int row = 0; row < rows.Count(); ++row) {
            const ListItem &item = rows.At(row);
            may.insert(item.text % u'/' % item.subItems.value(0), item.subItems.value(1));
        }
        QCOMPARE(may.value(u"File/Export Data"_qs), u"Open"_qs);
        QCOMPARE(may.value(u"File/Import Data"_qs), u"Closed"_qs);
        QCOMPARE(may.value(u"Courses/Course Manager"_qs), u"Open from the tool bar"_qs);
        QCOMPARE(may.value(u"Courses/Create Award Boards"_qs), u"Closed"_qs);
        QCOMPARE(may.value(u"Contacts/Contact records"_qs), u"View/Select Only"_qs);
        for (const QAction *menu : form.findChild<QMenuBar *>()->actions())
            QCOMPARE(menu->isEnabled(), menu->text() != u"C&ourses");
    }

    void WhatCannotBeDoneStaysDisabled()
    {
        Give(-1, 9);
        QVERIFY(Tool("ID_OnlineHelp") && !Tool("ID_OnlineHelp")->isEnabled());
        gDBQType = 2;
        Give(-1, 9);
        QVERIFY(!Tool("ID_DBSecurity")->isEnabled());
        QVERIFY(Tool("ID_Users")->isEnabled());

        WriteFile(m_database->Directory() % u"/veltrane.pdf", "%PDF");
        m_window = std::make_unique<frmMain>();
        Give(-1, 9);
        QVERIFY(Tool("ID_OnlineHelp")->isEnabled());
    }
};

QTEST_MAIN(TestLogin)
#include "test_login.moc"
