// The main job from end to end on the real screens: veltrane_tour PICTURE_FOLDER PEOPLE_CSV.
// With --show FILE PICTURE it is the browser that the tour's desktop opens reports with.

#include "core/shell/Main.h"
#include "core/shell/Screens.h"
#include "exchange/csv/CsvReader.h"
#include "forms/frames/FormStyle.h"
#include "forms/frames/StandardDialogs.h"
#include "platform/desktop/Directories.h"
#include "tour/Keyboard.h"
#include "tour/TourDriver.h"
#include "tour/TourPlan.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTextBrowser>
#include <QTimer>

namespace
{
constexpr int lookAtReport = 400; ///< milliseconds

/// Shows the report until the tour has removed "opened.txt".
int ShowReport(const QString &file, const QString &pictureFolder)
{
    QTextBrowser browser;
    QFile report(file);
    QFile opened(pictureFolder + QStringLiteral("/program/opened.txt"));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &browser, [&opened] {
        if (!opened.exists())
            QApplication::quit();
    });
    if (!report.open(QIODevice::ReadOnly))
        return 1;
    browser.setHtml(QString::fromLatin1(report.readAll()));
    browser.setWindowTitle(QStringLiteral("Report"));
    browser.resize(1100, 500);
    browser.show();
    QTimer::singleShot(lookAtReport, &browser, [&] {
        browser.grab().save(pictureFolder + QStringLiteral("/report.png"));
        QFile::copy(file, pictureFolder + QStringLiteral("/report.htm"));
        opened.open(QIODevice::WriteOnly);
        look.start(50);
    });
    return QApplication::exec();
}

bool WriteText(const QString &file, const QString &text)
{
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    return out.open(QIODevice::WriteOnly) && out.write(text.toUtf8()) > 0;
}

/// Sets up a desktop of the tour's own, so that it changes nothing of the user's: the data sources, the
/// settings, and the program that opens reports.
bool MakeDesktop(const QString &folder)
{
    const QString home = folder % u"/desktop";
    qputenv("ODBCINI", QFile::encodeName(home % u"/odbc.ini"));
    qputenv("XDG_DATA_HOME", QFile::encodeName(home % u"/share"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home % u"/config"));
    return WriteText(home % u"/odbc.ini", QStringLiteral("\n")) &&
           WriteText(home % u"/share/applications/tour.desktop",
                     u"[Desktop Entry]\nType=Application\nName=Tour\nMimeType=text/html;\nExec=" %
                         QCoreApplication::applicationFilePath() % u" --show %f " % folder % u"\n") &&
           WriteText(home % u"/config/mimeapps.list",
                     QStringLiteral("[Default Applications]\ntext/html=tour.desktop\n"));
}

bool MakeProgramFolder(const QString &folder)
{
    const QString system = Directories::Program() % u"/system";
    QDir().mkpath(folder % u"/system");
    for (const QString &name : QDir(system).entryList(QDir::Files)) {
        if (!QFile::copy(system % u'/' % name, folder % u"/system/" % name))
            return false;
    }
    Directories::SetProgram(folder);
    // The tree of courses keeps what is open in the folder that the program was started in.
    return QDir::setCurrent(folder);
}

int PeopleIn(const QString &file)
{
    CsvReader reader;
    CsvLine header;
    return reader.Open(file) && reader.Next(header) ? reader.CountRest() : 0;
}
} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veltrane"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 4 && arguments.at(1) == QLatin1String("--show"))
        return ShowReport(arguments.at(2), arguments.at(3));
    if (arguments.size() != 3)
        return 2;

    const QString folder = QFileInfo(arguments.at(1)).absoluteFilePath();
    TourPlan plan;
    plan.programFolder = folder % u"/program";
    plan.databaseFile = plan.programFolder % u"/database/provider.mdb";
    plan.peopleFile = QFileInfo(arguments.at(2)).absoluteFilePath();
    plan.people = PeopleIn(plan.peopleFile);
    if (!MakeDesktop(folder) || !MakeProgramFolder(plan.programFolder))
        return 1;
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    InstallFormStyle();
    InstallStandardDialogs();
    Screens::Install();

    TourDriver tour(folder);
    Keyboard keys(tour);
    AddFirstStart(tour, plan);
    AddUser(tour);
    AddDatabaseOptions(tour);
    AddImport(tour, plan);
    AddCharacteristics(tour, plan);
    AddCourse(tour);
    AddEnrolment(tour, plan);
    AddPayments(tour, plan);
    AddReport(tour, plan);
    keys.Watch();
    AddReferenceLists(keys);
    AddRoleTypes(keys);
    AddGroupTypes(keys);
    AddAttributes(keys);
    AddGroup(keys, plan);
    AddRoles(keys, plan);
    AddPersonsAttributes(keys, plan);
    AddSecondGroupType(keys, plan);
    AddOrganisation(keys, plan);
    AddSearch(keys, plan);
    AddLetterheadReports(tour, keys, plan);
    AddExchange(keys, plan);
    AddCourseLists(keys);
    AddVenuesAndFacilities(keys, plan);
    AddFreeDates(keys);
    AddFolders(keys);
    AddClipboard(keys);
    AddDuplicate(keys, plan);
    keys.Release();
    AddSecondStart(tour, plan);
    Main();
    return tour.Run();
}
