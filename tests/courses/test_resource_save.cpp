#include "courses/booking/BookingODBC.h"
#include "courses/booking/ResourceTree.h"
#include "courses/booking/frmSelectStaff.h"
#include "courses/events/AttendanceODBC.h"
#include "courses/events/EventODBC.h"
#include "courses/record/CourseModule.h"
#include "courses/record/ResourceVersion.h"
#include "courses/record/frmAddCourse.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/School.h"
#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"
#include "support/Keyboard.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestTable.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

// The events of a course with what is booked on them and who came, edited as a tree and stored with the
// course.

using ResourceTree::Kind;
using ResourceTree::Node;

namespace
{
constexpr int day = 20270301;

/// A course as a screen holds it.
struct Shown {
    explicit Shown(CourseRef courseRef)
    {
        record = ADO_Course_ShowCourse(courseRef)->course;
        ADO_Course_ShowStaffEvents(courseRef, resources);
        seen = Course_Values(record, Lists());
    }
    CourseLists Lists() { return {characteristics, folders, resources}; }
    RecordSaved Save() { return Course_Save(record, Lists(), seen, progress); }
    void Add(const Node &node, const QString &name) { ResourceTree::AddItem(resources.tree, node, name); }
    void Remove(const Node &node) { ResourceTree::Remove(resources.tree, ResourceTree::Key(node)); }

    CourseRecord record;
    ListModel characteristics;
    TreeModel folders;
    CourseResources resources;
    FieldValues seen;
    Progress progress;
};

/// Everything that is stored of the events of all courses.
QString Stored()
{
    QStringList rows;
    for (const QString &query :
         {u"SELECT EventRef,EventNo FROM CourseEvents ORDER BY EventRef"_qs,
          u"SELECT EventNo,ContactRef FROM AttendanceRecord ORDER BY EventNo,ContactRef"_qs,
          u"SELECT EventNo,FacilityRef FROM FacilitiesEmployed ORDER BY EventNo,FacilityRef"_qs,
          u"SELECT EventNo,ContactRef,RoleTypeRef FROM StaffEmployed ORDER BY EventNo,ContactRef"_qs,
          u"SELECT EventNo,VenueRef,EDate,TimeFrom,TimeTo FROM VenuesEmployed ORDER BY EventNo,VenueRef"_qs})
        rows.append(TestDatabase::Rows(query).join(u' '));
    return rows.join(u'/');
}

QString Texts(const TreeModel &tree)
{
    QStringList texts;
    for (const TreeNode *node : tree.Nodes())
        texts.append(node->text);
    return texts.join(u'|');
}

QString Captions(QWidget &form)
{
    QStringList captions;
    for (const char *name : {"AddResourceBtn", "DeleteResourceBtn", "SelectAllResourceBtn", "ViewResourceBtn",
                             "MiscResourceBtn"}) {
        const auto *button = Find<QPushButton>(form, name);
        captions.append(!button->isVisible()   ? u"-"_qs
                        : !button->isEnabled() ? u"("_qs % button->text().remove(u'&') % u')'
                                               : button->text().remove(u'&'));
    }
    return captions.join(u'|');
}
} // namespace

class TestResourceSave final : public QObject
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
        m_second = ADO_Course_AddEvent(m_course, 99999, {day + 1, 900, 1000});
        m_first = ADO_Course_AddEvent(m_course, 100000, {day, 900, 1000});
        TestDatabase::Run({"INSERT INTO Venues (Description,ReferenceID) VALUES ('Hall','')",
                           "INSERT INTO Venues (Description,ReferenceID) VALUES ('Attic','')",
                           "INSERT INTO Facilities (Name,ReferenceID) VALUES ('Torch','')",
                           "INSERT INTO RoleTypes (Name,ReferenceID,Status) VALUES ('Tutor','',1)"});
        m_attic = School::LastKey("Venues", "VenueRef");
        m_hall = m_attic - 1;
        m_torch = School::LastKey("Facilities", "FacilityRef");
        m_tutor = RoleTypeRef(School::LastKey("RoleTypes", "RoleTypeRef"));
        TestDatabase::Run({u"INSERT INTO ContactRoles (ContactRef,RoleTypeRef) VALUES (" % SqlNumber(m_bert) %
                           u',' % SqlNumber(m_tutor) % u')'});
    }
    void cleanup() { m_database.reset(); }

    void ReadsTheTree();
    void SavesByTheScreen();
    void SendsItsStatementsInOrder();
    void TellsClashesAndKeepsTheRest();
    void AFailureChangesNothing_data();
    void AFailureChangesNothing();
    void JoinsWhatOthersStored_data();
    void JoinsWhatOthersStored();
    void AnEventThatOthersChanged_data();
    void AnEventThatOthersChanged();
    void LeavesOutWhatIsGone();
    void NamesTheOtherRole();
    void Buttons_data();
    void Buttons();
    void AsksBeforeTheEventsAreReadAgain();
    void AddsEvents();
    void SpaceGoesDownTheTerm();

private:
    Node Venue(EventRef event, int venue) const { return {Kind::Venues, event, venue}; }
    Node Guest(EventRef event, ContactRef who) const { return {Kind::Attendance, event, who.number}; }
    /// Books directly, as another workstation does.
    static void Book(CourseRef course, EventRef event, int venue)
    {
        EventHours hours;
        QCOMPARE(BookEventResource(ResourceKind::Venue, course, event, venue, hours), QString());
    }

    std::unique_ptr<TestDatabase> m_database;
    CourseRef m_course;
    CourseRef m_other;
    ContactRef m_anna;
    ContactRef m_bert;
    EventRef m_first; ///< by date
    EventRef m_second;
    int m_hall = 0;
    int m_attic = 0;
    int m_torch = 0;
    RoleTypeRef m_tutor;
};

void TestResourceSave::ReadsTheTree()
{
    Book(m_course, m_first, m_hall);
    Book(m_course, m_first, m_attic);
    ADO_Course_StudentAttended(m_course, m_second, m_bert);
    ADO_Course_StudentAttended(m_course, m_second, m_anna);
    for (const int contact : {m_bert.number, -2}) {
        EventHours hours;
        CourseRef course = m_course;
        ADO_Course_StaffBooking(course, m_first, contact, m_tutor, hours);
    }
    TestDatabase::Run({u"UPDATE CourseEvents SET EDate = 0 WHERE EventRef = " % SqlNumber(m_second)});
    Shown shown(m_course);
    QCOMPARE(Texts(shown.resources.tree),
             u"Event 1|Attendance|Able, Anna|Baker, Bert [not enrolled]|Facilities|Staff|Venues|"
             u"Event 2 on 01/03/2027|Attendance|Facilities|Staff|Tutor|[ To Be Appointed 2 ]|Baker, Bert|"
             u"Venues|Attic|Hall"_qs);
    QCOMPARE(shown.resources.tree.Nodes().front()->key, u'?' % SqlNumber(m_second));
    const QString before = Stored();
    QVERIFY(shown.Save().isWhole);
    Shown again(m_course);
    QCOMPARE(Stored(), before);
}

/// Two events, one venue on both; a tutor and the students on the first, which then goes with all of it.
void TestResourceSave::SavesByTheScreen()
{
    frmAddCourse form;
    QVERIFY(form.EditCourse(m_course));
    form.show();
    Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(3);
    TreeModel &tree = Find<TreeView>(form, "ResourceList")->Model();
    ModalDriver driver;
    driver.Expect("frmSelectVenues", [this](QDialog &dialog) {
        ListModel &venues = Find<ListView>(dialog, "VenueAvail")->Model();
        QCOMPARE(venues.columnCount(), 1);
        venues.SelectKeys({u'!' % SqlNumber(m_hall)});
        Press(dialog, "AddVBtn");
        ScriptedDialogs user;
        user.Expect("Select Venues", "Leave without adding what was chosen?", Dialogs::Answer::No);
        dialog.reject();
        Press(dialog, "ExitBtn");
    });
    tree.Select(tree.Find(u'V' % SqlNumber(m_first)));
    Press(form, "SelectAllResourceBtn");
    Press(form, "AddResourceBtn");
    driver.Expect("frmSelectStaff", [](QDialog &dialog) {
        QCOMPARE(Find<ListView>(dialog, "StaffAvail")->Model().At(0).subItems, QStringList{"Free"});
        QCOMPARE(Find<QLabel>(dialog, "Label3")->text(), u"Tutor(s) to employe:"_qs);
        Press(dialog, "AddTBtn");
        Press(dialog, "ExitBtn");
    });
    tree.Select(tree.Find(u'S' % SqlNumber(m_first)));
    Press(form, "AddResourceBtn");
    tree.Select(tree.Find(u'A' % SqlNumber(m_first)));
    Press(form, "MiscResourceBtn");
    QCOMPARE(Find<QPushButton>(form, "MiscResourceBtn")->text(), u"None a&ttended"_qs);
    QVERIFY(TestDatabase::Rows("SELECT VenueRef FROM VenuesEmployed").isEmpty());
    Press(form, "AddBtn");
    const QString one = SqlNumber(m_first);
    const QString two = SqlNumber(m_second);
    const QString hall = SqlNumber(m_hall);
    const QString bert = SqlNumber(m_bert) % u'|' % SqlNumber(m_tutor);
    QCOMPARE(Stored(), two % u"|2 "_qs % one % u"|1/"_qs % one % u'|' % SqlNumber(m_anna) % u"//"_qs % one %
                           u'|' % bert % u'/' % two % u'|' % hall % u"|20270302|900|1000 "_qs % one % u'|' %
                           hall % u"|20270301|900|1000"_qs);
    tree.Select(tree.Find(u'?' % one));
    Press(form, "DeleteResourceBtn");
    QCOMPARE(tree.Selected()->key, u'?' % two);
    Press(form, "AddBtn");
    QCOMPARE(Stored(), two % u"|1////"_qs % two % u'|' % hall % u"|20270302|900|1000"_qs);
}

void TestResourceSave::SendsItsStatementsInOrder()
{
    Shown shown(m_course);
    shown.Add(Venue(m_first, m_hall), u"Hall"_qs);
    shown.Add(Guest(m_first, m_anna), u"Able, Anna"_qs);
    std::vector<BookingClash> clashes;
    Progress progress;
    const StatementLog log;
    QVERIFY(SaveResourceTree(m_course, shown.resources.tree, clashes, progress));
    QStringList starts;
    for (const QString &sql : log.Statements())
        starts.append(sql.section(u" WHERE"_qs, 0, 0).section(u" ("_qs, 0, 0));
    QCOMPARE(starts, QStringList({"UPDATE CourseEvents SET EventNo = 0", "DELETE FROM AttendanceRecord",
                                  "DELETE FROM StaffEmployed", "DELETE FROM FacilitiesEmployed",
                                  "DELETE FROM VenuesEmployed", "UPDATE CourseEvents SET EventNo = 1",
                                  "SELECT ContactRef FROM AttendanceRecord", "INSERT INTO AttendanceRecord",
                                  "SELECT * FROM CourseEvents", "SELECT * FROM VenuesEmployed",
                                  "INSERT INTO VenuesEmployed", "UPDATE CourseEvents SET EventNo = 8",
                                  "DELETE FROM CourseEvents"}));
}

void TestResourceSave::TellsClashesAndKeepsTheRest()
{
    const EventRef theirs = ADO_Course_AddEvent(m_other, 1, {day, 800, 900});
    Book(m_other, theirs, m_hall);
    Shown shown(m_course);
    shown.Add(Venue(m_first, m_hall), u"Hall"_qs);
    shown.Add(Venue(m_first, m_attic), u"Attic"_qs);
    ScriptedDialogs user;
    user.Expect("Event Booking", "Unable to book venue 'Hall' already booked in 'Pottery'.");
    QVERIFY(shown.Save().isWhole);
    QCOMPARE(
        TestDatabase::Rows(u"SELECT VenueRef FROM VenuesEmployed WHERE CourseRef = " % SqlNumber(m_course)),
        QStringList(SqlNumber(m_attic)));
}

/// Whatever stops the save in its middle, the bookings and the course are as they were.
void TestResourceSave::AFailureChangesNothing_data()
{
    const TestTable<QString> row{"failing"};
    row("while wiping", u"DELETE FROM VenuesEmployed"_qs);
    row("while noting who came", u"INSERT INTO AttendanceRecord"_qs);
    row("while booking", u"INSERT INTO VenuesEmployed"_qs);
    row("at the end", u"DELETE FROM CourseEvents"_qs);
    row("stopped by the user", QString());
}

void TestResourceSave::AFailureChangesNothing()
{
    QFETCH(const QString, failing);
    Book(m_course, m_first, m_hall);
    ADO_Course_StudentAttended(m_course, m_first, m_anna);
    Shown shown(m_course);
    const QString before = Stored();
    shown.record.title = u"Renamed"_qs;
    shown.Remove({Kind::Event, m_second});
    ScriptedDialogs user;
    if (failing.isEmpty()) {
        shown.progress.Cancel();
    } else {
        user.ExpectFailure();
        // In the same transaction, so that it is undone with the rest.
        gConnection.ObserveStatements([&failing](const QString &sql) {
            const QString table = failing.section(u' ', 2);
            if (sql.startsWith(failing))
                TestDatabase::Run({u"ALTER TABLE " % table % u" RENAME TO Gone"});
        });
    }
    const RecordSaved saved = shown.Save();
    gConnection.ObserveStatements({});
    QVERIFY(saved.key < 1);
    QCOMPARE(Stored(), before);
    QCOMPARE(ADO_Course_ShowCourse(m_course)->course.title, u"Welding"_qs);
}

/// Another workstation stored something while the tree was on the screen here, where a venue was added.
void TestResourceSave::JoinsWhatOthersStored_data()
{
    const TestTable<std::function<void(TestResourceSave &)>> row{"elsewhere"};
    row("a venue", [](TestResourceSave &t) { Book(t.m_course, t.m_second, t.m_hall); });
    row("an attendee",
        [](TestResourceSave &t) { ADO_Course_StudentAttended(t.m_course, t.m_second, t.m_bert); });
    row("a venue taken off",
        [](TestResourceSave &t) { WipeEventRows(EventRows::Venues, t.m_first, t.m_course); });
    row("an event with a venue", [](TestResourceSave &t) {
        Book(t.m_course, ADO_Course_AddEvent(t.m_course, 99999, {day + 2, 900, 1000}), t.m_hall);
    });
    row("an event moved", [](TestResourceSave &t) {
        ADO_Course_UpdateEvent(t.m_second, 2, {}, {day + 5, 800, 900});
    });
}

void TestResourceSave::JoinsWhatOthersStored()
{
    QFETCH(const std::function<void(TestResourceSave &)>, elsewhere);
    Book(m_course, m_first, m_hall);
    Shown shown(m_course);
    elsewhere(*this);
    RenumberEvents(m_course);
    const QString theirs = Stored();
    shown.Add(Venue(m_second, m_attic), u"Attic"_qs);
    QVERIFY(shown.Save().isWhole);
    QVERIFY(shown.resources.tree.Find(ResourceTree::Key(Venue(m_second, m_attic))));
    QVERIFY(Stored().contains(SqlNumber(m_second) % u'|' % SqlNumber(m_attic)));
    TestDatabase::Run({u"DELETE FROM VenuesEmployed WHERE VenueRef = " % SqlNumber(m_attic)});
    RenumberEvents(m_course);
    QCOMPARE(Stored(), theirs);
}

/// The second event was removed here, and another workstation booked a venue on it or moved it.
void TestResourceSave::AnEventThatOthersChanged_data()
{
    const TestTable<bool, QString, QString> row{"moved", "kept", "venues"};
    row("booked, theirs", false, u"theirs"_qs, u"1 2"_qs);
    row("booked, mine", false, u"mine"_qs, u"1"_qs);
    row("moved, theirs", true, u"theirs"_qs, u"1 2"_qs);
    row("back to the course", false, u"nothing"_qs, u"1 2"_qs);
}

void TestResourceSave::AnEventThatOthersChanged()
{
    QFETCH(const bool, moved);
    QFETCH(const QString, kept);
    Book(m_course, m_first, m_attic);
    if (moved)
        Book(m_course, m_second, m_hall);
    Shown shown(m_course);
    shown.Remove({Kind::Event, m_second});
    if (moved)
        ADO_Course_UpdateEvent(m_second, 2, {}, {day + 5, 800, 900});
    else
        Book(m_course, m_second, m_hall);
    const QString event = u"Event 2 on "_qs % (moved ? u"06/03/2027"_qs : u"02/03/2027"_qs);
    const QString hours = moved ? u"06/03/2027, 08:00 - 09:00"_qs : u"02/03/2027, 09:00 - 10:00"_qs;
    ScriptedDialogs user;
    user.ExpectChanges("course", {event % u": no / " % hours},
                       kept == u"nothing"
                           ? std::nullopt
                           : std::optional(kept == u"theirs" ? QStringList(event) : QStringList()));
    QCOMPARE(shown.Save().isWhole, kept != u"nothing");
    QString events;
    for (const QString &stored :
         TestDatabase::Rows("SELECT EventNo FROM VenuesEmployed ORDER BY EventNo DESC"))
        events += (events.isEmpty() ? u""_qs : u" "_qs) % (stored == SqlNumber(m_first) ? u"1"_qs : u"2"_qs);
    QTEST(events, "venues");
}

void TestResourceSave::LeavesOutWhatIsGone()
{
    Shown shown(m_course);
    shown.Add(Venue(m_first, m_hall), u"Hall"_qs);
    shown.Add(Venue(m_first, m_attic), u"Attic"_qs);
    shown.Add(Guest(m_second, m_anna), u"Able, Anna"_qs);
    TestDatabase::Run({u"DELETE FROM Venues WHERE VenueRef = " % SqlNumber(m_hall),
                       u"DELETE FROM CourseEvents WHERE EventRef = " % SqlNumber(m_second)});
    const QString leftOut = u"Another user has deleted these meanwhile, and they are left out:\n    "_qs;
    ScriptedDialogs user;
    user.Expect("Update Course", leftOut % u"Hall");
    user.Expect("Update Course", leftOut % u"Event 2 on 02/03/2027");
    QVERIFY(shown.Save().isWhole);
    QCOMPARE(TestDatabase::Rows("SELECT VenueRef FROM VenuesEmployed"), QStringList(SqlNumber(m_attic)));
    QVERIFY(TestDatabase::Rows("SELECT ContactRef FROM AttendanceRecord").isEmpty());

    TestDatabase::Run(
        {u"DELETE FROM Courses WHERE CourseRef = " % SqlNumber(m_course), u"DELETE FROM VenuesEmployed"_qs});
    user.Expect("Courses", "Course has been deleted.");
    QCOMPARE(shown.Save().key, 0);
    QVERIFY(TestDatabase::Rows("SELECT VenueRef FROM VenuesEmployed").isEmpty());
}

/// Nobody can be booked in two roles of one event, stored or not.
void TestResourceSave::NamesTheOtherRole()
{
    TestDatabase::Run({"INSERT INTO RoleTypes (Name,ReferenceID,Status) VALUES ('Helper','',1)"});
    const RoleTypeRef helper(m_tutor.number + 1);
    Shown shown(m_course);
    ResourceTree::AddRole(shown.resources.tree, m_first, helper, u"Helper"_qs);
    shown.Add({Kind::Staff, m_first, m_bert.number, helper}, u"Baker, Bert"_qs);
    for (const EventRef event : {m_first, m_second}) {
        frmSelectStaff dialog({shown.resources.tree, event, shown.resources.hours.value(event)}, m_tutor);
        QCOMPARE(Find<ListView>(dialog, "StaffAvail")->Model().At(0).subItems,
                 QStringList(event == m_first ? u"Helper, 09:00 - 10:00"_qs : u"Free"_qs));
    }
}

void TestResourceSave::Buttons_data()
{
    const TestTable<QStringList, QString> row{"selected", "captions"};
    row("nothing", {}, u"Add Events|(Remove Events)|(Select All Events)|(Event Info)|-"_qs);
    row("an event", {u"?1"_qs}, u"Add Events|Remove Event|Select All Events|Event Info|-"_qs);
    row("events", {u"?1"_qs, u"?2"_qs}, u"Add Events|Remove Events|Select All Events|Event Info|-"_qs);
    row("attendance", {u"A1"_qs},
        u"Add Other|Remove Attendees|Select All Attendees|(Contact Info)|All attended"_qs);
    row("an attendee", {u"A%1;2"_qs},
        u"Add Other|Remove Attendees|Select All Attendees|Contact Info|None attended"_qs);
    row("facilities", {u"F1"_qs}, u"Add Facilities|Remove Facilities|Select All Facilities|-|-"_qs);
    row("staff", {u"S1"_qs}, u"Add Staff|Remove Staff|Select All Staff|(Contact Info)|-"_qs);
    row("a role", {u"R%2;2"_qs}, u"Add Tutor|Remove Tutor|Select All Tutor|-|-"_qs);
    row("a member of staff", {u"S%1;%2;2"_qs}, u"Add Staff|Remove Staff|Select All Staff|Contact Info|-"_qs);
    row("venues", {u"V1"_qs}, u"Add Venues|Remove Venues|Select All Venues|-|-"_qs);
}

void TestResourceSave::Buttons()
{
    QFETCH(const QStringList, selected);
    ADO_Course_StudentAttended(m_course, m_second, m_anna);
    EventHours hours;
    CourseRef course = m_course;
    ADO_Course_StaffBooking(course, m_second, m_anna.number, m_tutor, hours);
    frmAddCourse form;
    QVERIFY(form.EditCourse(m_course));
    form.show();
    Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(3);
    TreeModel &tree = Find<TreeView>(form, "ResourceList")->Model();
    tree.Select(nullptr);
    std::vector<const TreeNode *> nodes;
    for (QString key : selected) {
        key.replace(u"%1"_qs, SqlNumber(m_anna)).replace(u"%2"_qs, SqlNumber(m_tutor));
        // The keys of the table are those of the places of the events.
        const QString event = SqlNumber(key.endsWith(u'1') ? m_first : m_second);
        nodes.push_back(tree.Find(key.chopped(1) % event));
        QVERIFY2(nodes.back(), qPrintable(key));
    }
    tree.SelectAll(nodes);
    QTEST(Captions(form), "captions");
}

void TestResourceSave::AsksBeforeTheEventsAreReadAgain()
{
    frmAddCourse form;
    QVERIFY(form.EditCourse(m_course));
    form.show();
    Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(3);
    TreeModel &tree = Find<TreeView>(form, "ResourceList")->Model();
    const QString key = u'A' % SqlNumber(m_first);
    const auto open = [&](std::optional<Dialogs::Answer> answer, bool opens) {
        tree.Select(tree.Find(u'?' % SqlNumber(m_first)));
        ModalDriver driver;
        if (opens)
            driver.Expect("frmEvent", [](QDialog &event) {
                QCOMPARE(Find<QLabel>(event, "EventLbl")->text(), u"Event 1/2"_qs);
                Press(event, "ExitBtn");
            });
        ScriptedDialogs user;
        if (answer)
            user.Expect(
                "Warning",
                "Opening the event reads the events again, and what was changed in their tree without "
                "being stored is lost.\nOkay to update the course before?",
                *answer);
        Press(form, "ViewResourceBtn");
        return tree.Find(key)->children.size();
    };
    QCOMPARE(open(std::nullopt, true), size_t(0));
    const auto attend = [&] {
        tree.Select(tree.Find(key));
        Press(form, "MiscResourceBtn");
    };
    attend();
    QCOMPARE(open(Dialogs::Answer::Cancel, false), size_t(1));
    QCOMPARE(open(Dialogs::Answer::No, true), size_t(0));
    // Nothing is left to be stored.
    form.reject();
    QVERIFY(!form.isVisible());
    form.show();
    attend();
    QCOMPARE(open(Dialogs::Answer::Yes, true), size_t(1));
    QCOMPARE(TestDatabase::Rows("SELECT ContactRef FROM AttendanceRecord"), QStringList(SqlNumber(m_anna)));
}

/// The series is in the tree at once; what else is not stored yet is asked about before.
void TestResourceSave::AddsEvents()
{
    frmAddCourse form;
    QVERIFY(form.EditCourse(m_course));
    form.show();
    Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(3);
    TreeModel &tree = Find<TreeView>(form, "ResourceList")->Model();
    ModalDriver driver;
    driver.Expect("frmAddEvents", [](QDialog &series) {
        TypeInto(series, "EventNo", "3");
        ScriptedDialogs user;
        user.Expect("Question", "Delete all current events?", Dialogs::Answer::No);
        Press(series, "DoBtn");
    });
    Press(form, "AddResourceBtn");
    QCOMPARE(tree.rowCount(), 5);
    form.reject();
    QVERIFY(!form.isVisible());
}

void TestResourceSave::SpaceGoesDownTheTerm()
{
    frmAddCourse form;
    QVERIFY(form.EditCourse(m_course));
    const Keyboard keys(form);
    Find<QTabWidget>(form, "TabStrip1")->setCurrentIndex(3);
    keys.TabTo("ResourceList");
    keys.Press(Qt::Key_Right);
    keys.Press(Qt::Key_Down);
    for (int i = 0; i < 2; ++i)
        keys.Press(Qt::Key_Space);
    keys.Alt(Qt::Key_U);
    QCOMPARE(TestDatabase::Rows("SELECT ContactRef FROM AttendanceRecord").size(), 2);
}

QTEST_MAIN(TestResourceSave)
#include "test_resource_save.moc"
