// Makes the demo database through the program's own import and data functions, and the settings that open
// it. Leaves both alone if they already exist.

#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "controls/ListModel.h"
#include "core/files/INIfile.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "courses/record/CourseModule.h"
#include "courses/record/CourseRecordODBC.h"
#include "database/connection/BlankTemplate.h"
#include "database/connection/ConnectDatabase.h"
#include "database/statements/System.h"
#include "enrolment/EnrolmentODBC.h"
#include "exchange/import/ImportState.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>

#include <cstdio>

namespace
{
Dialogs::Answer TellOnConsole(const QString &text, const QString &title, Dialogs::Buttons, Dialogs::Icon,
                              Dialogs::Answer)
{
    std::printf("%s: %s\n", qPrintable(title), qPrintable(text));
    return Dialogs::Answer::Cancel;
}

bool ImportPeople(const QString &csvFile)
{
    ImportState import(CsvMap::Installed());
    Progress progress;
    return import.ChooseDataSet() && import.ChooseFile(csvFile) && import.CheckMapping() &&
           import.Run(progress);
}

void SetOptions()
{
    SetSystemValue(SystemRef::DatabaseName, QStringLiteral("Demonstration"));
    SetSystemValue(SystemRef::CurrencySymbol, QStringLiteral("£"));
    SetSystemValue(SystemRef::TaxName, QStringLiteral("VAT"));
    SetSystemValue(SystemRef::TaxRate, QStringLiteral("20.00"));
    SetSystemValue(SystemRef::VoucherName, QStringLiteral("Learning Voucher"));
    SetSystemValue(SystemRef::VoucherName + 1, QStringLiteral("Employer Voucher"));
}

/// Three courses with the first people of the list on them, every fourth a student, every seventh a
/// pensioner.
bool MakeCourses()
{
    const int student = Concession_Add(QStringLiteral("Student"), 25, 0, QString());
    const int pensioner = Concession_Add(QStringLiteral("Pensioner"), 0, 30, QString());
    ListModel people;
    ADO_Contact_Fill(people);
    for (int row = 0; row < people.Count(); ++row) {
        if (row % 4 == 0)
            ADO_Contact_AddContactConcession(ContactRef(KeyNumber(people.At(row).key)),
                                             ConcessionRef(student));
        if (row % 7 == 0)
            ADO_Contact_AddContactConcession(ContactRef(KeyNumber(people.At(row).key)),
                                             ConcessionRef(pensioner));
    }

    const CourseRecord courses[] = {
        {CourseRef(0), QStringLiteral("Bookkeeping for Beginners"), QStringLiteral("BK1"),
         QStringLiteral("Ten evenings; double entry, VAT returns, year end."), 180, 12},
        {CourseRef(0), QStringLiteral("First Aid at Work"), QStringLiteral("FA3"),
         QStringLiteral("Three days, with the certificate."), 245.5, 10},
        {CourseRef(0), QStringLiteral("Spanish, Improvers"), QString(), QStringLiteral("Monday mornings."),
         96, 0},
    };
    int person = 0;
    for (const CourseRecord &course : courses) {
        const int courseRef = Course_Add(course);
        if (courseRef < 1)
            return false;
        for (int i = 0; i < 8 && person < people.Count(); ++i, ++person)
            ADO_Course_EnrollStudent(CourseRef(courseRef), ContactRef(KeyNumber(people.At(person).key)));
    }
    return true;
}

bool MakeDemo(const QString &file, const QString &csvFile)
{
    if (!CopyOver(Directories::SystemFile(QStringLiteral("blank")), file) || !OpenUpTemplate(file)) {
        std::fprintf(stderr, "The database %s could not be made.\n", qPrintable(file));
        return false;
    }
    if (!ConnectDatabase(false) || !ImportPeople(csvFile))
        return false;
    LoadSystemValues();
    SetOptions();
    return MakeCourses();
}
} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veltrane"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    if (argc != 2) {
        std::fprintf(stderr, "usage: veltrane_demo people.csv\n");
        return 2;
    }
    Dialogs::Installed().msgBox = TellOnConsole;

    const QString settings = Directories::WrittenFile(QStringLiteral("prog.ini"));
    const QString file = Directories::WrittenFile(QStringLiteral("database/demo.mdb"));
    const bool hasSettings = QFile::exists(settings);
    ReadSettings(settings);
    if (QFile::exists(file) || (hasSettings && !gDBQFilename.isEmpty()))
        return 0;

    gDBQUseODBC = false;
    gDBQType = 1;
    gDBQFilename = file;
    if (!MakeDemo(file, QString::fromLocal8Bit(argv[1]))) {
        gConnection.Close();
        QFile::remove(file);
        return 1;
    }
    gConnection.Close();
    WriteSettings(settings);
    std::printf("The demo database is in %s.\n", qPrintable(file));
    return 0;
}
