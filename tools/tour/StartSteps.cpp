#include "core/session/Session.h"
#include "core/shell/Main.h"
#include "tour/TourDriver.h"
#include "tour/TourPlan.h"

#include <QFile>

namespace
{
const QString sourceName = QStringLiteral("New Blank Veltrane Database");
const QString userName = QStringLiteral("Dana O'Neil");
const QString password = QStringLiteral("p'a`ss;word");

void LogOn(QWidget &splash, const QString &secret)
{
    Hands::Type(splash, QStringLiteral("txtUserName"), userName);
    Hands::Type(splash, QStringLiteral("txtPassword"), secret);
    Hands::Press(splash, QStringLiteral("OkBtn"));
}
} // namespace

void AddFirstStart(TourDriver &tour, TourPlan &plan)
{
    tour.See(QStringLiteral("frmSplash"), QStringLiteral("splash"));
    tour.Box(QStringLiteral("Veltrane"), QStringLiteral("Must select a valid datasource"),
             QStringLiteral("OK"));
    tour.See(QStringLiteral("frmMain"), QStringLiteral("no database yet"), [&tour](QWidget &screen) {
        tour.Expect(!gDBValid, QStringLiteral("there is a database at the first start"));
        Hands::Command(screen, QStringLiteral("ID_New"));
    });
    tour.ChooseFile(QStringLiteral("New Veltrane Database Location"), plan.databaseFile);
    tour.See(QStringLiteral("frmRegisterDB"), QStringLiteral("register the data source"),
             [&tour, &plan](QWidget &screen) {
                 tour.Expect(Hands::Text(screen, QStringLiteral("DSN")) == sourceName,
                             QStringLiteral("the data source has no name to start with"));
                 tour.Expect(QFile::exists(plan.databaseFile), plan.databaseFile % u" was not made");
                 Hands::Press(screen, QStringLiteral("OKBtn"));
             });
    tour.Box(QStringLiteral("ODBC-32"), QStringLiteral("Successfully created and registered Database."),
             QStringLiteral("OK"));
    tour.On(QStringLiteral("frmMain"), QStringLiteral("switch"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_SwitchDatabase")); });
    tour.On(QStringLiteral("frmODBCLogon"), QStringLiteral("choose the data source"), [](QWidget &screen) {
        Hands::Press(screen, QStringLiteral("Opt_1"));
        Hands::ClickRow(screen, QStringLiteral("ODBClist"), sourceName);
        Hands::Key(screen, Qt::Key_Space);
    });
    tour.See(QStringLiteral("frmODBCLogon"), QStringLiteral("switch database"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("OKBtn")); });
    tour.Box(QStringLiteral("Database Changed"), QStringLiteral("Database switch confirmed."),
             QStringLiteral("OK"));
}

void AddUser(TourDriver &tour)
{
    tour.See(QStringLiteral("frmMain"), QStringLiteral("new database open"), [&tour](QWidget &screen) {
        tour.Expect(gDBValid && screen.windowTitle().endsWith(QLatin1String("via ODBC")),
                    u"the title reads " % screen.windowTitle());
        Hands::Command(screen, QStringLiteral("ID_Users"));
    });
    tour.On(QStringLiteral("frmUsers"), QStringLiteral("users"),
            [](QWidget &screen) { Hands::Press(screen, QStringLiteral("AddBtn")); });
    tour.On(QStringLiteral("frmAddEditUser"), QStringLiteral("new user"), [](QWidget &screen) {
        Hands::Type(screen, QStringLiteral("UserName"), userName);
        Hands::Type(screen, QStringLiteral("NewPass1"), password);
        Hands::Type(screen, QStringLiteral("NewPass2"), password);
        Hands::Press(screen, QStringLiteral("AdminChk"));
    });
    tour.See(QStringLiteral("frmAddEditUser"), QStringLiteral("new user"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("AddBtn")); });
    tour.See(QStringLiteral("frmUsers"), QStringLiteral("users"), [&tour](QWidget &screen) {
        tour.Expect(Hands::Rows(screen, QStringLiteral("MainList")) == QStringList{userName},
                    QStringLiteral("the list of users does not hold the new one"));
        Hands::Press(screen, QStringLiteral("ExitBtn"));
    });
    tour.On(QStringLiteral("frmMain"), QStringLiteral("log off"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_LogOff")); });
    tour.On(QStringLiteral("frmSplash"), QStringLiteral("a wrong password"),
            [](QWidget &screen) { LogOn(screen, QStringLiteral("wrong")); });
    tour.Box(QStringLiteral("Login"), QStringLiteral("Invalid Username or Password!"), QStringLiteral("OK"));
    tour.See(QStringLiteral("frmSplash"), QStringLiteral("log on"),
             [](QWidget &screen) { LogOn(screen, password); });
    tour.See(QStringLiteral("frmMain"), QStringLiteral("logged on"), [&tour](QWidget &) {
        tour.Expect(gUserName == userName, QStringLiteral("the session does not know who logged on"));
    });
}

void AddDatabaseOptions(TourDriver &tour)
{
    tour.On(QStringLiteral("frmMain"), QStringLiteral("database options"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_DatabaseOptions")); });
    tour.On(QStringLiteral("frmDBOptions"), QStringLiteral("currency and tax"), [](QWidget &screen) {
        Hands::Type(screen, QStringLiteral("CSymbol"), QStringLiteral("£"));
        Hands::Type(screen, QStringLiteral("TaxLabel"), QStringLiteral("VAT"));
        Hands::Type(screen, QStringLiteral("TaxRate"), QStringLiteral("20"));
    });
    tour.See(QStringLiteral("frmDBOptions"), QStringLiteral("database options"), [](QWidget &screen) {
        Hands::Tab(screen, QStringLiteral("Voucher Labels"));
        Hands::Type(screen, QStringLiteral("VoucherLabel_0"), QStringLiteral("Learning Voucher"));
        Hands::Type(screen, QStringLiteral("VoucherLabel_1"), QStringLiteral("Employer Voucher"));
    });
    tour.See(QStringLiteral("frmDBOptions"), QStringLiteral("voucher labels"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("OKBtn")); });
}

void AddSecondStart(TourDriver &tour, TourPlan &plan)
{
    tour.On(QStringLiteral("frmMain"), QStringLiteral("exit"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_Exit")); });
    tour.WhenClosed(QStringLiteral("the end of the program"), [&tour, &plan] {
        tour.Expect(QFile::exists(plan.programFolder % u"/prog.ini"),
                    QStringLiteral("prog.ini was not kept"));
        QFile log(plan.programFolder % u"/log.txt");
        tour.Expect(log.open(QIODevice::ReadOnly) && log.readAll().count('\n') == 2,
                    QStringLiteral("the log holds errors"));
        Main();
    });
    tour.On(QStringLiteral("frmSplash"), QStringLiteral("log on again"),
            [](QWidget &screen) { LogOn(screen, password); });
    tour.See(QStringLiteral("frmMain"), QStringLiteral("started again"), [&tour, &plan](QWidget &screen) {
        tour.Expect(gDBValid && gDBQFilename == plan.databaseFile,
                    u"the second start has the database " % gDBQFilename);
        Hands::Command(screen, QStringLiteral("ID_Exit"));
    });
    tour.WhenClosed(QStringLiteral("the last exit"), [] {});
}
