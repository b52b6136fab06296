#include "torture/MonkeyHome.h"

#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactRecordODBC.h"
#include "contacts/record/ContactVersion.h"
#include "core/session/Session.h"
#include "courses/record/CourseModule.h"
#include "courses/record/CourseRecordODBC.h"
#include "database/values/GlobalCode.h"
#include "enrolment/EnrolmentODBC.h"
#include "nets/FormRegistry.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/OrganisationRecordODBC.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "torture/Torture.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>
#include <QToolButton>

#include <type_traits>
#include <utility>

namespace
{
constexpr size_t people = 60;
constexpr int courses = 4;

/// References whose row must exist.
constexpr std::pair<const char *, const char *> references[] = {
    {"Contacts WHERE OrganRef", "OrganRef FROM Organisations"},
    {"Contacts WHERE Cust_City", "City_ID FROM City"},
    {"Contacts WHERE Cust_County", "County_ID FROM County"},
    {"Contacts WHERE Cust_Country", "Country_ID FROM Country"},
    {"Contacts WHERE Cust_Designation", "Designation_ID FROM Designation"},
    {"Contacts WHERE Cust_Ethnicgroup", "Ethnic_ID FROM EthnicGroup"},
    {"Contacts WHERE ContactContactRef", "ContactRef FROM Contacts"},
    {"Organisations WHERE City", "City_ID FROM City"},
    {"StudentsEnrolled WHERE ContactRef", "ContactRef FROM Contacts"}};

constexpr const char *sentinels[] = {
    "Contacts WHERE ContactRef = 1 AND Cust_Surname = '' AND Cust_Forename = ''",
    "Organisations WHERE OrganRef = 1 AND OrganName = ''",
    "City WHERE City_ID = 1 AND City = ''",
    "County WHERE County_ID = 1 AND County = ''",
    "Country WHERE Country_ID = 1 AND Country = ''",
    "Designation WHERE Designation_ID = 1 AND Title = ''",
    "EthnicGroup WHERE Ethnic_ID = 1 AND Type = ''"};

/// Keeps what the monkey prints inside its home: the toolkit's print dialog would let it write anywhere, and
/// its file chooser delete anything.
class PrintFence final : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Show || !watched->inherits("QPrintDialog"))
            return false;
        auto *fileName = watched->findChild<QLineEdit *>(u"filename"_qs);
        auto *browser = watched->findChild<QToolButton *>(u"fileBrowser"_qs);
        Torture::Require(fileName && browser, u"The monkey could print anywhere"_qs);
        fileName->setText(u"list.pdf"_qs);
        fileName->setValidator(new QRegularExpressionValidator(QRegularExpression(u"[^/]*"_qs), fileName));
        browser->hide();
        return false;
    }
};

/// Nobody is there to answer while the home is made.
Dialogs::Answer RefuseToAsk(const QString &text, const QString &, Dialogs::Buttons, Dialogs::Icon,
                            Dialogs::Answer)
{
    Torture::Require(false, u"The monkey's home asks: " % text);
    return Dialogs::Answer::Cancel;
}
} // namespace

MonkeyHome::MonkeyHome()
{
    ShutDoors();
    {
        auto &box = Dialogs::Installed().msgBox;
        const QScopedValueRollback alone(box, std::decay_t<decltype(box)>(RefuseToAsk));
        FillForms();
        FillDatabase();
    }
    gConnection.Close();
    QFile list(File(u"people.csv"_qs));
    list.open(QIODevice::WriteOnly);
    list.write("Surname,Forename,Town\nLee,Ann,York\nDale,Eve,\"Hull\"\nFox,,\n");
    list.close();
    Torture::Require(QFile::copy(File(u"test.mdb"_qs), File(u"first.mdb"_qs)),
                     u"No database for the monkey"_qs);
}

/// Plays the file chooser: returns one of a few files in the directory, or none as if cancelled.
QString MonkeyHome::NextOf(const QStringList &files)
{
    return files.at(++m_filesChosen % files.size());
}

void MonkeyHome::ShutDoors()
{
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "ODBCSYSINI"})
        qputenv(name, QFile::encodeName(m_database.Directory()));
    qputenv("ODBCINI", QFile::encodeName(File(u"odbc.ini"_qs)));
    qputenv("PATH", "");
    qputenv("CUPS_SERVER", "localhost:1"); // where there is no printer
    qApp->installEventFilter(new PrintFence(qApp));
    QDir::setCurrent(m_database.Directory());
    Dialogs::Hooks &hooks = Dialogs::Installed();
    hooks.openFile = [this](const auto &question) {
        return question.title.startsWith(u"Open ") && question.title.endsWith(u" with")
                   ? QString()
                   : NextOf({File(u"people.csv"_qs), QString(), File(u"test.mdb"_qs), File(u"new1.mdb"_qs)});
    };
    hooks.saveFile = [this](const auto &question) {
        return NextOf({File(u"new1." % question.defaultExtension), QString(), File(u"new2.mdb"_qs)});
    };
    hooks.chooseColour = [](int colour) { return std::optional(colour ^ 0xFF00); };
}

void MonkeyHome::FillDatabase()
{
    const int student = Concession_Add(u"Apprentice"_qs, 25, 0, {});
    std::vector<int> towns;
    for (const auto &town : {u"York"_qs, u"Leeds"_qs, u"Hull"_qs})
        towns.push_back(Contact_AddItem(ContactSection::Cities, town, {}));
    std::vector<int> organisations;
    for (const auto &name : {u"Mill"_qs, u"Bank"_qs}) {
        OrganisationRecord organisation;
        organisation.name = name;
        organisation.city = organisation.county = organisation.country = 1;
        organisations.push_back(Organisation_Add(organisation));
    }
    std::vector<int> given;
    for (int i = 0; i < courses; ++i)
        given.push_back(Course_Add({{}, u"Course " % QString::number(i), {}, {}, 50.0 + i, 20}));
    for (size_t i = 0; i < people; ++i) {
        ContactRecord person;
        person.forename = u"Pat " % QString::number(i);
        person.surname = u"Dale " % QString::number(i % 7);
        person.designation = person.county = person.country = person.ethnicGroup = 1;
        person.contactContactRef = 1;
        person.city = towns[i % towns.size()];
        person.organRef = i % 3 == 0 ? organisations[i % organisations.size()] : 1;
        const int added = Contact_Add(person);
        if (i % 4 == 0)
            ADO_Contact_AddContactConcession(ContactRef(added), ConcessionRef(student));
        if (i % 2 == 0)
            ADO_Course_EnrollStudent(CourseRef(given[i % given.size()]), ContactRef(added));
    }
}

void MonkeyHome::TidyUp()
{
    m_filesChosen = 0;
    for (const QString &file : QDir(m_database.Directory()).entryList(QDir::Files)) {
        if (file != u"first.mdb" && file != u"people.csv")
            QFile::remove(File(file));
    }
    QFile::copy(File(u"first.mdb"_qs), File(u"test.mdb"_qs));
    QFile settings(File(u"prog.ini"_qs));
    settings.open(QIODevice::WriteOnly);
    settings.write(QString(u"[DBQFilename]=" % File(u"test.mdb"_qs) % u"\n[DBQType]=1\n").toUtf8());
}

QString MonkeyHome::FaultOfDatabase()
{
    const auto rows = [](const QString &condition) {
        const auto found = gConnection.OpenRecordset(u"SELECT COUNT(*) AS N FROM " % condition);
        return found && !found->IsEmpty() ? found->First().Long(u"N") : -1;
    };
    const auto whole = gConnection.OpenRecordset(u"PRAGMA integrity_check"_qs);
    if (!whole || whole->IsEmpty() || whole->First().Text(0) != u"ok")
        return u"the file is damaged"_qs;
    for (const char *sentinel : sentinels) {
        if (rows(QString::fromLatin1(sentinel)) != 1)
            return u"no longer: " % QString::fromLatin1(sentinel);
    }
    for (const auto &[from, to] : references) {
        if (rows(QString::fromLatin1(from) % u" NOT IN (SELECT " % QString::fromLatin1(to) % u')') != 0)
            return u"refers to nothing: " % QString::fromLatin1(from);
    }
    return {};
}
