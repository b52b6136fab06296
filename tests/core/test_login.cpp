#include "core/Screens.h"
#include "core/Session.h"
#include "core/frmMain.h"
#include "database/Security.h"
#include "support/TestDatabase.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QTest>

#include <memory>

using Names = QSet<QString>;

/// What each right leaves of the commands.
class TestLogin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void WithoutADatabaseLittleWorks();
    void ARightDisablesItsCommand_data();
    void ARightDisablesItsCommand();
    void WhatHasNoScreenStaysDisabled_data();
    void WhatHasNoScreenStaysDisabled();
    void AServerHasNoDatabasePassword();
    void TheMenusHoldTheirCommands();
    void TheHintStandsInTheFirstPanel();

private:
    Names Enabled() const;
    void Give(int right, int level) const
    {
        gUserRights = RightsBlank();
        if (right >= 0)
            gUserRights[right] = QChar(u'0' + level);
        m_window->Login();
    }
    QAction *Tool(const QString &id) const { return m_window->findChild<QAction *>(id); }

    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<frmMain> m_window;
};

void TestLogin::initTestCase()
{
    Screens::Installed().chooseDatabase = [](QWidget *) {};
    Screens::Installed().showProperties = [](QWidget *, const QString &, bool) {};
}

void TestLogin::init()
{
    m_database = std::make_unique<TestDatabase>();
    gDBQType = 1;
    m_window = std::make_unique<frmMain>();
}

void TestLogin::cleanup()
{
    m_window.reset();
    m_database.reset();
}

Names TestLogin::Enabled() const
{
    Names names;
    for (const QAction *tool : m_window->findChildren<QAction *>()) {
        if (tool->objectName().startsWith(QStringLiteral("ID_")) && tool->isEnabled())
            names.insert(tool->objectName());
    }
    return names;
}

void TestLogin::WithoutADatabaseLittleWorks()
{
    gDBValid = false;
    Give(-1, 9);
    const Names possible{"ID_File", "ID_New",    "ID_RegisterDB", "ID_SwitchDatabase", "ID_LogOff",
                         "ID_Exit", "ID_Window", "ID_Tile",       "ID_Cascade",        "ID_ArrangeIcons",
                         "ID_Help", "ID_Tools",  "ID_OnlineHelp", "ID_About"};
    const Names enabled = Enabled();
    QVERIFY2((enabled - possible).isEmpty(),
             qPrintable(QStringList((enabled - possible).values()).join(u' ')));
    for (const QString &id : possible)
        QVERIFY2(enabled.contains(id) || !Screens::Of(id), qPrintable(id));
    QVERIFY(Tool("ID_Tools")->isEnabled());
    for (const QAction *entry : Tool("ID_Tools")->menu()->actions())
        QVERIFY(entry->isSeparator() || !entry->isEnabled());
    QCOMPARE(m_window->findChild<QLabel *>("Panel_3")->text(), QStringLiteral("No Database.  "));
}

void TestLogin::ARightDisablesItsCommand_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("disabled");
    const QList<std::pair<int, const char *>> whole{{0, "ID_Security"},
                                                    {1, "ID_Contacts"},
                                                    {2, "ID_Courses"},
                                                    {3, "ID_ReportManager"},
                                                    {4, "ID_SwitchDatabase"},
                                                    {5, "ID_New"},
                                                    {6, "ID_RegisterDB"},
                                                    {7, "ID_IssueAwards"},
                                                    {9, "ID_Organisations"},
                                                    {10, "ID_ScheduleManager"},
                                                    {11, "ID_FastEnroll"},
                                                    {12, "ID_Options"},
                                                    {13, "ID_Import"},
                                                    {14, "ID_Export"},
                                                    {16, "ID_DBSecurity"},
                                                    {20, "ID_ContactManager"},
                                                    {21, "ID_ContactMaintenance"},
                                                    {22, "ID_ContactReports"},
                                                    {45, "ID_CourseManager"},
                                                    {46, "ID_CourseMaintenance"},
                                                    {47, "ID_CourseReports"},
                                                    {90, "ID_DatabaseOptions"}};
    for (const auto &[right, id] : whole) {
        for (const int level : {0, 3})
            QTest::addRow("right %d at %d", right, level) << right << level << QString::fromLatin1(id);
        QTest::addRow("right %d in full", right) << right << 9 << QString();
    }
    QTest::newRow("users at 0") << 15 << 0 << "ID_Users";
    QTest::newRow("users at 1") << 15 << 1 << "";
    QTest::newRow("a right that guards no command") << 23 << 0 << "";
}

void TestLogin::ARightDisablesItsCommand()
{
    QFETCH(int, right);
    QFETCH(int, level);
    QFETCH(QString, disabled);
    Give(-1, 9);
    const Names all = Enabled();
    QVERIFY(all.contains("ID_Users"));
    Give(right, level);
    Names expected = all;
    expected.remove(disabled);
    const Names enabled = Enabled();
    QVERIFY2(enabled == expected,
             qPrintable(QStringList(((enabled - expected) + (expected - enabled)).values()).join(u' ')));
}

void TestLogin::WhatHasNoScreenStaysDisabled_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id :
         {"ID_FastEnroll", "ID_Export", "ID_ScheduleManager", "ID_ReportManager", "ID_Organisations",
          "ID_IssueAwards", "ID_CustomAttributes", "ID_CreditCardPayments", "ID_ContactMaintenance",
          "ID_CourseMaintenance", "ID_AwardBoard", "ID_ContactReports"})
        QTest::newRow(id) << QString::fromLatin1(id);
}

void TestLogin::WhatHasNoScreenStaysDisabled()
{
    QFETCH(QString, id);
    Give(-1, 9);
    QVERIFY(Tool(id));
    QVERIFY(!Tool(id)->isEnabled());
}

void TestLogin::AServerHasNoDatabasePassword()
{
    gDBQType = 2;
    Give(-1, 9);
    QVERIFY(!Tool("ID_DBSecurity")->isEnabled());
    QVERIFY(Tool("ID_Users")->isEnabled());
}

void TestLogin::TheMenusHoldTheirCommands()
{
    QStringList menus;
    for (const QAction *menu : m_window->menuBar()->actions()) {
        QStringList entries;
        for (const QAction *entry : menu->menu()->actions())
            entries.append(entry->isSeparator() ? QStringLiteral("-") : entry->text());
        menus.append(menu->text() % u": " % entries.join(u" | "));
    }
    QCOMPARE(
        menus,
        QStringList({
            "&File: &New Access Database | &Register Veltrane Database (Access)… | - | &Switch Database | "
            "&Log Off | - | &Update Database | &Properties… | - | &Import Data | &Export Data | - | E&xit "
            "...",
            "&Security: &Users | - | Database Password…",
            "&Contacts: &Contact Manager | &Fast Enrol Screen… | &Reports | - | Contact &Maintenance",
            "C&ourses: &Course Manager | &Fast Enrol Screen… | &Reports | - | Course &Maintenance | "
            "Create Award Boards…",
            "T&ools: &Custom Attributes | Credit Card &Payments | Issue &Awards | O&rganisations | "
            "&Document Manager | C&alendar | - | &Options ...",
            "&Window: &Tile | &Cascade | &Arrange Icons",
            "&Help: &User Guide… | - | &About Veltrane | Offical &Website",
        }));
}

void TestLogin::TheHintStandsInTheFirstPanel()
{
    Tool("ID_Exit")->hover();
    m_window->findChild<QAction *>("ID_Exit")->showStatusText(m_window.get());
    QCOMPARE(m_window->findChild<QLabel *>("Panel_1")->text(), QStringLiteral("Quit Program"));
}

QTEST_MAIN(TestLogin)
#include "test_login.moc"
