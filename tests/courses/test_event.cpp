#include "courses/booking/BookingODBC.h"
#include "courses/booking/StaffPicks.h"
#include "courses/events/AttendanceODBC.h"
#include "courses/events/EventFile.h"
#include "courses/events/EventPeople.h"
#include "courses/events/frmEvent.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "forms/lists/ListView.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QApplication>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <csignal>

namespace
{
constexpr int day = 20270301;

/// Presses a button, on whatever tab it is.
void PressOnTab(QWidget &form, const char *button)
{
    auto *tabs = Find<QTabWidget>(form, "TabStrip1");
    for (int tab = 0; tab < tabs->count(); ++tab) {
        if (tabs->widget(tab)->findChild<QPushButton *>(button))
            tabs->setCurrentIndex(tab);
    }
    Press(form, button);
}

QString Stored(const QString &table, const QString &column)
{
    return TestDatabase::Rows(u"SELECT " % column % u",EventNo,EDate,TimeFrom FROM " % table).join(u' ');
}

/// Moves the first event of a course by a day, and is killed at a statement of the save.
int MoveAndDie(const QStringList &arguments)
{
    EventFile file;
    if (!gConnection.Open(arguments.at(0)) ||
        Event_Show(file, CourseRef(arguments.at(1).toInt()), 1, {}) != EventRead::Found)
        return 1;
    ++file.event.hours.date;
    gConnection.ObserveStatements([&arguments](const QString &sql) {
        if (sql.startsWith(arguments.at(2)))
            std::raise(SIGKILL);
    });
    Event_Save(file);
    return 1;
}
} // namespace

class TestEvent final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = RightsBlank();
        m_course = School::AddCourse("Welding", 10);
        m_other = School::AddCourse("Pottery", 10);
        m_anna = School::AddPerson("Anna", "Able");
        m_bert = School::AddPerson("Bert", "Baker");
        ADO_Course_EnrollStudent(m_course, m_anna);
        m_event = ADO_Course_AddEvent(m_course, 1, {day, 900, 1000});
        ADO_Course_AddEvent(m_course, 2, {day + 1, 900, 1000});
        TestDatabase::Run({"INSERT INTO Venues (Description,ReferenceID) VALUES ('Hall','')",
                           "INSERT INTO Facilities (Name,ReferenceID) VALUES ('Torch','')",
                           "INSERT INTO RoleTypes (Name,ReferenceID) VALUES ('Tutor','')"});
        m_hall = School::LastKey("Venues", "VenueRef");
        m_torch = School::LastKey("Facilities", "FacilityRef");
        m_tutor = RoleTypeRef(School::LastKey("RoleTypes", "RoleTypeRef"));
        TestDatabase::Run({u"INSERT INTO ContactRoles (ContactRef,RoleTypeRef) VALUES (" % SqlNumber(m_bert) %
                           u',' % SqlNumber(m_tutor) % u')'});
    }
    void cleanup() { m_database.reset(); }

    /// By the screen: everything booked, moved by a day, and taken off again.
    void BooksMovesAndTakesOff()
    {
        frmEvent form(m_course, 1);
        form.show();
        QCOMPARE(form.windowTitle(), u"Edit Event: Welding"_qs);
        QCOMPARE((*Find<QLabel>(form, "EventLbl")).text(), u"Event 1/2"_qs);
        for (const char *list : {"VenueAvail", "FacAvail", "StaffAvail"})
            Find<ListView>(form, list)->Model().SelectAll();
        for (const char *button : {"AddVBtn", "AddCBtn", "AddTBtn", "AllBtn"})
            PressOnTab(form, button);
        TypeInto(form, "EDate", "02/03/2027");
        TypeInto(form, "TimeFrom", "1130");
        TypeInto(form, "TimeTo", "10:15");
        TypeInto(form, "Description", "It's `half` 50%");
        Press(form, "UpBtn");
        const QString at = u'|' % SqlNumber(m_event) % u"|20270302|1015"_qs;
        QCOMPARE(Stored("VenuesEmployed", "VenueRef"), SqlNumber(m_hall) % at);
        QCOMPARE(Stored("FacilitiesEmployed", "FacilityRef"), SqlNumber(m_torch) % at);
        QCOMPARE(Stored("StaffEmployed", "ContactRef"), SqlNumber(m_bert) % at);
        QCOMPARE(*ADO_Course_AttendedKeys(m_course, m_event), QStringList{u'?' % SqlNumber(m_anna)});
        QCOMPARE(ADO_Course_FindEvent(m_event)->hours, (EventHours{20270302, 1015, 1130}));
        for (const char *button : {"ClearVBtn", "ClearCBtn", "ClearTBtn", "AllBtn", "UpBtn"})
            PressOnTab(form, button);
        for (const char *table :
             {"VenuesEmployed", "FacilitiesEmployed", "StaffEmployed", "AttendanceRecord"})
            QVERIFY2(TestDatabase::Rows(u"SELECT CourseRef FROM "_qs % table).isEmpty(), table);
    }

    /// Beside each resource stands who holds it at the hours on the screen, before anything is stored.
    void ShowsWhoHoldsAResource()
    {
        CourseRef course = m_other;
        EventHours hours{day, 1100, 1200};
        QCOMPARE(BookEventResource(ResourceKind::Venue, course, EventRef(99), m_hall, hours), QString());
        frmEvent form(m_course, 1);
        form.show();
        const ListModel &venues = Find<ListView>(form, "VenueAvail")->Model();
        QCOMPARE(venues.At(0).subItems.at(0), u"Free"_qs);
        TypeInto(form, "TimeFrom", "1200");
        QTRY_COMPARE(venues.At(0).subItems.at(0), u"Pottery, 11:00 - 12:00"_qs);
        TypeInto(form, "TimeTo", "1300");
        Find<ListView>(form, "VenueAvail")->Model().SelectAll();
        PressOnTab(form, "AddVBtn");
        ScriptedDialogs user;
        user.Expect("Venue Event Booking", "Unable to book venue 'Hall' already booked in 'Pottery'.");
        Press(form, "UpBtn");
        QVERIFY(Find<ListView>(form, "VenueUsed")->Model().IsEmpty());
        QCOMPARE(ADO_Course_FindEvent(m_event)->hours.from, 1200);
    }

    void SpaceTicksAndGoesDown()
    {
        ADO_Course_EnrollStudent(m_course, m_bert);
        frmEvent form(m_course, 1, frmEvent::Tab::Attendance);
        form.show();
        QWidget &list = (*Find<QWidget>(form, "Students"));
        for (int i = 0; i < 2; ++i)
            QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(Find<ListView>(form, "Students")->Model().CheckedRows().size(), size_t(2));
        QTest::keyClick(&list, Qt::Key_Space);
        Press(form, "UpBtn");
        QCOMPARE(*ADO_Course_AttendedKeys(m_course, m_event), QStringList{u'?' % SqlNumber(m_anna)});
    }

    /// Whoever came without being on the course is shown, and stays.
    void AttendsWithoutBeingEnrolled()
    {
        for (int i = 0; i < 2; ++i)
            QVERIFY(ADO_Course_StudentAttended(m_course, m_event, m_bert));
        EventFile file;
        QCOMPARE(Event_Show(file, m_course, 1, m_tutor), EventRead::Found);
        const int row = file.students.Find(u'?' % SqlNumber(m_bert));
        QCOMPARE(file.students.At(row).subItems, QStringList{u"Not Enrolled"_qs});
        QCOMPARE(Event_Save(file).key, m_event.number);
        QCOMPARE(ADO_Course_AttendedKeys(m_course, m_event)->size(), 1);
    }

    /// What another workstation booked and noted meanwhile is kept.
    void JoinsWhatAnotherWorkstationStored()
    {
        EventFile here;
        QCOMPARE(Event_Show(here, m_course, 1, m_tutor), EventRead::Found);
        EventFile there;
        QCOMPARE(Event_Show(there, m_course, 1, m_tutor), EventRead::Found);
        there.venuesAvailable.MoveKeys(there.venuesAvailable.Keys(), there.venues);
        there.students.SetChecked(0, true);
        QVERIFY(Event_Save(there).isWhole);
        ADO_Course_AddEvent(m_course, 3, {day - 1, 900, 1000});
        QVERIFY(RenumberEvents(m_course));
        here.event.description = u"First"_qs;
        QVERIFY(Event_Save(here).isWhole);
        QCOMPARE(Stored("VenuesEmployed", "VenueRef").section(u'|', 0, 0), SqlNumber(m_hall));
        QCOMPARE(ADO_Course_AttendedKeys(m_course, m_event)->size(), 1);
        QCOMPARE(ADO_Course_FindEvent(m_event)->description, u"First"_qs);
        QCOMPARE(ADO_Course_FindEvent(m_event)->eventNo, 2);
    }

    void NothingIsWrittenForWhatIsGone()
    {
        EventFile file;
        QCOMPARE(Event_Show(file, m_course, 1, m_tutor), EventRead::Found);
        file.venuesAvailable.MoveKeys(file.venuesAvailable.Keys(), file.venues);
        TestDatabase::Run({"DELETE FROM Venues WHERE Description = 'Hall'"});
        ScriptedDialogs user;
        user.Expect("Edit Event",
                    "Another user has deleted these meanwhile, and they are left out:\n    Hall");
        QVERIFY(Event_Save(file).isWhole);
        QCOMPARE(Stored("VenuesEmployed", "VenueRef"), QString());
        file.staffAvailable.MoveKeys(file.staffAvailable.Keys(), file.staff);
        TestDatabase::Run({"DELETE FROM RoleTypes WHERE Name = 'Tutor'"});
        user.Expect("Edit Event",
                    "Another user has deleted these meanwhile, and they are left out:\n    Baker, Bert");
        QVERIFY(Event_Save(file).isWhole);
        QCOMPARE(Stored("StaffEmployed", "ContactRef"), QString());

        frmEvent form(m_course, 2);
        form.show();
        TestDatabase::Run({"DELETE FROM CourseEvents WHERE EventNo = 2"});
        PressOnTab(form, "AllBtn");
        Press(form, "UpBtn");
        QCOMPARE((*Find<QLabel>(form, "EventLbl")).text(), u"#Event Deleted#"_qs);
        QWidget picker;
        ListModel people;
        people.Add({u'?' % SqlNumber(m_anna), u"Able, Anna"_qs});
        user.Expect("", "Another user has deleted this event meanwhile. Nothing was stored for it.");
        QVERIFY(EventPeople::Attendees(m_course, EventRef(99)).take(&picker, people, {}));
        QVERIFY(TestDatabase::Rows("SELECT CourseRef FROM AttendanceRecord").isEmpty());
        QVERIFY(!(*Find<QPushButton>(form, "UpBtn")).isEnabled());
    }

    /// Wherever the program is killed while it moves an event, the event and its bookings are as they were.
    void KilledSaveChangesNothing_data()
    {
        const TestTable<QString> row{"statement"};
        row("while wiping", u"DELETE FROM AttendanceRecord"_qs);
        row("while moving", u"UPDATE CourseEvents"_qs);
        row("while booking", u"INSERT INTO VenuesEmployed"_qs);
        row("while noting who came", u"INSERT INTO AttendanceRecord"_qs);
    }
    void KilledSaveChangesNothing()
    {
        QFETCH(const QString, statement);
        CourseRef course = m_course;
        EventHours hours{day, 900, 1000};
        BookEventResource(ResourceKind::Venue, course, m_event, m_hall, hours);
        ADO_Course_StudentAttended(m_course, m_event, m_anna);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {u"moving"_qs, m_database->ConnectionText(), SqlNumber(m_course), statement});
        QVERIFY(process.waitForFinished(20000));
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(Stored("VenuesEmployed", "VenueRef"),
                 SqlNumber(m_hall) % u'|' % SqlNumber(m_event) % u"|20270301|900"_qs);
        QCOMPARE(ADO_Course_AttendedKeys(m_course, m_event)->size(), 1);
        QCOMPARE(ADO_Course_FindEvent(m_event)->hours, hours);
    }

    void AsksBeforeAnotherEventIsShown()
    {
        frmEvent form(m_course, 1);
        form.show();
        TypeInto(form, "Description", "Changed");
        ScriptedDialogs user;
        user.Expect("Event Changed", "Okay to update event?", Dialogs::Answer::Yes);
        Press(form, "NextBtn");
        QCOMPARE((*Find<QLabel>(form, "EventLbl")).text(), u"Event 2/2"_qs);
        QCOMPARE(ADO_Course_FindEvent(m_event)->description, u"Changed"_qs);
        QVERIFY(!(*Find<QPushButton>(form, "NextBtn")).isEnabled());
    }

    void PostsThatNobodyFills()
    {
        ListModel available;
        ListModel used;
        available.Fill({{u"-"_qs, u"[ To Be Appointed ]"_qs}, {u"!5"_qs, u"Able"_qs}});
        const UsedAvailable::Actions actions = StaffPicks::Actions(available, used);
        available.SelectAll();
        actions.add();
        available.SelectAll();
        actions.add();
        QCOMPARE(used.Keys(), (QStringList{u"--1"_qs, u"!5"_qs, u"--2"_qs}));
        used.SelectKeys({u"--1"_qs});
        actions.remove();
        actions.clear();
        QCOMPARE(available.Keys(), (QStringList{u"-"_qs, u"!5"_qs}));
        QVERIFY(used.IsEmpty());
    }

private:
    std::unique_ptr<TestDatabase> m_database;
    CourseRef m_course;
    CourseRef m_other;
    ContactRef m_anna;
    ContactRef m_bert;
    EventRef m_event;
    int m_hall = 0;
    int m_torch = 0;
    RoleTypeRef m_tutor;
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "moving") == 0)
        return MoveAndDie(QCoreApplication::arguments().mid(2));
    TestEvent test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_event.moc"
